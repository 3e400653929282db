#include "tsql/run/key_conflict.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

/** What a statement does is seen, then undone. */
class Rehearsal
{
public:
    explicit Rehearsal(const SqliteHandle &handle) : m_handle(handle)
    {
        m_handle.Execute("SAVEPOINT rehearsal");
        m_handle.Execute("PRAGMA defer_foreign_keys = ON");
    }
    ~Rehearsal()
    {
        try {
            m_handle.Execute("ROLLBACK TO rehearsal");
            m_handle.Execute("RELEASE rehearsal");
            m_handle.Execute("PRAGMA defer_foreign_keys = OFF");
        } catch (const Error &error) {
            qWarning("taking back a refused statement: %s", error.what());
        }
    }
    Rehearsal(const Rehearsal &) = delete;
    Rehearsal &operator=(const Rehearsal &) = delete;

private:
    const SqliteHandle &m_handle;
};

QString ColumnText(sqlite3_stmt *statement, int index)
{
    return QString::fromUtf8(ColumnValue(statement, index).bytes);
}

/** The columns of key number `id` of the table, as SQLite numbers them. */
std::vector<QString> KeyColumns(const SqliteHandle &handle, const Table &table, qint64 id)
{
    std::vector<QString> columns;
    const PreparedStatement list = handle.Prepare(u"PRAGMA main.foreign_key_list(%1)"_s.arg(table.sqliteName).toUtf8());
    while (handle.Step(list.get())) {
        if (sqlite3_column_int64(list.get(), 0) == id)
            columns.push_back(ColumnText(list.get(), 3));
    }
    return columns;
}

/** The first key of the table that a row of it offends; null when there is none. */
const Reference *OffendedKey(const SqliteHandle &handle, const Table &table)
{
    const PreparedStatement check =
        handle.Prepare(u"PRAGMA main.foreign_key_check(%1)"_s.arg(table.sqliteName).toUtf8());
    if (!handle.Step(check.get()))
        return nullptr;
    const std::vector<QString> columns = KeyColumns(handle, table, sqlite3_column_int64(check.get(), 3));
    const auto found = std::find_if(table.references.begin(), table.references.end(), [&](const Reference &reference) {
        return std::equal(columns.begin(), columns.end(), reference.key.columns.begin(), reference.key.columns.end(),
                          [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) == 0; });
    });
    return found == table.references.end() ? nullptr : &*found;
}

/** The server names the other side: the table looked into for a new row, the table that still refers to an old one. */
Error Refusal(const QString &verb, const Table &table, const Reference &reference, bool refersToOld,
              const Catalogue &catalogue)
{
    const auto referenced = catalogue.FindTable(reference.key.table);
    const std::vector<QString> &targets =
        reference.key.targets.empty() && referenced ? referenced->primaryKey : reference.key.targets;
    const bool own = refersToOld || targets.empty();
    return {wording::KeyConflict,
            {verb, refersToOld ? u"REFERENCE"_s : u"FOREIGN KEY"_s, reference.name,
             own ? table.name.Display() : reference.key.table.Display(),
             own ? reference.key.columns.front() : targets.front()}};
}

} // namespace

Error KeyConflict(const SqliteHandle &handle, sqlite3_stmt *statement, const Compiled &compiled, const QString &verb,
                  const Catalogue &catalogue)
{
    sqlite3_reset(statement);
    const Rehearsal rehearsal(handle);
    while (handle.Step(statement)) {
    }
    sqlite3_reset(statement);
    return PresentConflict(handle, compiled.target, verb, catalogue);
}

Error PresentConflict(const SqliteHandle &handle, const QString &target, const QString &verb,
                      const Catalogue &catalogue)
{
    for (const ObjectName &name : catalogue.TableNames()) {
        const auto table = catalogue.FindTable(name);
        if (table->references.empty() || name.IsTemporary())
            continue;
        if (const Reference *reference = OffendedKey(handle, *table)) {
            const bool refersToOld = verb == u"DELETE"_s || (verb == u"UPDATE"_s && table->sqliteName != target);
            return Refusal(verb, *table, *reference, refersToOld, catalogue);
        }
    }
    return {547, {verb, u"FOREIGN KEY"_s}};
}

} // namespace tsql
