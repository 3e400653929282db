#include "tsql/run/sqlite_errors.h"

#include "tsql/write/catalogue.h"
#include "tsql/write/storage.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

constexpr int LockTimeout = 1222;
constexpr int ReadOnly = 3906;

int numberOf(int code)
{
    switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return LockTimeout;
    case SQLITE_FULL:
        return NoSpaceNumber;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return ReadOnly;
    case SQLITE_IOERR:
    case SQLITE_CORRUPT:
    case SQLITE_CANTOPEN:
    case SQLITE_NOTADB:
    case SQLITE_PROTOCOL:
        return DeviceErrorNumber;
    default:
        return 50000;
    }
}

QString textOf(int code, const QString &message)
{
    switch (numberOf(code)) {
    case LockTimeout:
        return u"Lock request time out period exceeded."_s;
    case NoSpaceNumber:
        return u"Could not allocate space in the database because the disk is full."_s;
    case ReadOnly:
        return u"Failed to update the database because it is read-only."_s;
    case DeviceErrorNumber:
        return u"The database file cannot be used: %1."_s.arg(message);
    default:
        return message;
    }
}

/** "GoodInf.Code, GoodInf.Row" of a message: the table and its columns. */
struct Key
{
    QString table;
    std::vector<QString> columns;
};

Key keyIn(const QString &message)
{
    Key key;
    const QString list = message.section(u": "_s, 1);
    const QStringList parts = list.split(u", "_s);
    for (const QString &part : parts) {
        key.table = part.section(u'.', 0, -2);
        key.columns.push_back(part.section(u'.', -1));
    }
    return key;
}

bool sameColumns(const std::vector<QString> &a, const std::vector<QString> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const QString &x, const QString &y) { return x.compare(y, Qt::CaseInsensitive) == 0; });
}

std::shared_ptr<const Table> tableNamed(const Catalogue &catalogue, const QString &name)
{
    ObjectName object;
    object.schema = name.contains(u'.') ? name.section(u'.', 0, 0) : QString();
    object.name = name.contains(u'.') ? name.section(u'.', 1) : name;
    return catalogue.table(object);
}

Error duplicate(const QString &message, const Catalogue &catalogue)
{
    if (message.contains(u": index '"_s)) {
        QString index = message.section(u'\'', 1, 1);
        if (index.endsWith(QLatin1String(NullsSuffix)))
            index.chop(qsizetype(sizeof NullsSuffix) - 1);
        return {2601, u"Cannot insert duplicate key row in object '%1' with unique index '%2'. The duplicate key value "
                      "contains NULL."_s.arg(index.section(u'.', 0, -2), index.section(u'.', -1))};
    }
    const Key key = keyIn(message);
    const auto table = tableNamed(catalogue, key.table);
    if (table && sameColumns(table->primaryKey, key.columns))
        return {2627,
                u"Violation of PRIMARY KEY constraint. Cannot insert duplicate key in object '%1'."_s.arg(key.table)};
    const QStringList names(key.columns.begin(), key.columns.end());
    return {2601, u"Cannot insert duplicate key row in object '%1' with a unique index on %2."_s.arg(
                      key.table, names.join(u", "_s))};
}

Error missingValue(const QString &message, const QString &verb)
{
    const Key key = keyIn(message);
    return {515,
            u"Cannot insert the value NULL into column '%1', table '%2'; column does not allow nulls. %3 fails."_s.arg(
                key.columns.empty() ? QString() : key.columns.front(), key.table, verb)};
}

/// The server names the column of a check that stands at a column.
Error refusedCheck(const QString &name, const QString &verb, const Catalogue &catalogue)
{
    QString where;
    for (const ObjectName &object : catalogue.tableNames()) {
        const auto table = catalogue.table(object);
        for (const Check &check : table->checks) {
            if (check.name.compare(name, Qt::CaseInsensitive) != 0)
                continue;
            where = u" The conflict occurred in table \"%1\""_s.arg(table->name.display());
            where += check.column.isEmpty() ? u"."_s : u", column '%1'."_s.arg(check.column);
        }
    }
    return {547, u"The %1 statement conflicted with the CHECK constraint \"%2\"."_s.arg(verb, name) + where};
}

} // namespace

SqliteError::SqliteError(int code, const QString &message) : Error(numberOf(code), textOf(code, message)), m_code(code)
{}

bool SqliteError::concernsFile() const
{
    return number() == DeviceErrorNumber || number() == NoSpaceNumber;
}

QString verbOf(const Statement &statement)
{
    switch (statement.kind) {
    case StatementKind::Insert:
        return u"INSERT"_s;
    case StatementKind::Update:
        return u"UPDATE"_s;
    case StatementKind::Delete:
        return u"DELETE"_s;
    default:
        return statement.text.section(u' ', 0, 0).toUpper();
    }
}

bool isDuplicate(int code)
{
    return code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY || code == SQLITE_CONSTRAINT_ROWID;
}

Error translated(const SqliteError &error, const QString &verb, const Catalogue &catalogue)
{
    switch (error.code()) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        return duplicate(error.message(), catalogue);
    case SQLITE_CONSTRAINT_NOTNULL:
        return missingValue(error.message(), verb);
    case SQLITE_CONSTRAINT_CHECK:
        return refusedCheck(error.message().section(u": "_s, 1), verb, catalogue);
    case SQLITE_CONSTRAINT_FOREIGNKEY:
        return {547, u"The %1 statement conflicted with a %2 constraint."_s.arg(
                         verb, verb == u"DELETE"_s ? u"REFERENCE"_s : u"FOREIGN KEY"_s)};
    default:
        return error;
    }
}

} // namespace tsql
