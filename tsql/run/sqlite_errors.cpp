#include "tsql/run/sqlite_errors.h"

#include "tsql/write/catalogue.h"
#include "tsql/write/storage.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

constexpr int LockTimeout = 1222;
constexpr int ReadOnly = 3906;
constexpr int Unexpected = 50000;

int NumberOf(int code)
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
        return Unexpected;
    }
}

Error ErrorOf(int code, const QString &message)
{
    const int number = NumberOf(code);
    return number == Unexpected ? Error::Worded(number, message) : Error(number, {message});
}

/** "GoodInf.Code, GoodInf.Row" of a message: the table and its columns. */
struct Key
{
    QString table;
    std::vector<QString> columns;
};

Key KeyIn(const QString &message)
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

bool SameColumns(const std::vector<QString> &a, const std::vector<QString> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const QString &x, const QString &y) { return x.compare(y, Qt::CaseInsensitive) == 0; });
}

std::shared_ptr<const Table> TableNamed(const Catalogue &catalogue, const QString &name)
{
    ObjectName object;
    object.schema = name.contains(u'.') ? name.section(u'.', 0, 0) : QString();
    object.name = name.contains(u'.') ? name.section(u'.', 1) : name;
    return catalogue.FindTable(object);
}

Error Duplicate(const QString &message, const Catalogue &catalogue)
{
    if (message.contains(u": index '"_s)) {
        QString index = message.section(u'\'', 1, 1);
        if (index.endsWith(QLatin1String(NullsSuffix)))
            index.chop(qsizetype(sizeof NullsSuffix) - 1);
        return {wording::SecondNull, {index.section(u'.', 0, -2), index.section(u'.', -1)}};
    }
    const Key key = KeyIn(message);
    const auto table = TableNamed(catalogue, key.table);
    if (table && SameColumns(table->primaryKey, key.columns))
        return {2627, {key.table}};
    const QStringList names(key.columns.begin(), key.columns.end());
    return {2601, {key.table, names.join(u", "_s)}};
}

Error MissingValue(const QString &message, const QString &verb)
{
    const Key key = KeyIn(message);
    return {515, {key.columns.empty() ? QString() : key.columns.front(), key.table, verb}};
}

/// The server names the column of a check that stands at a column.
Error RefusedCheck(const QString &name, const QString &verb, const Catalogue &catalogue)
{
    Error refusal(wording::CheckConflict, {verb, name});
    for (const ObjectName &object : catalogue.TableNames()) {
        const auto table = catalogue.FindTable(object);
        for (const Check &check : table->checks) {
            if (check.name.compare(name, Qt::CaseInsensitive) != 0)
                continue;
            if (check.column.isEmpty())
                refusal = {wording::CheckConflictOfTable, {verb, name, table->name.Display()}};
            else
                refusal = {wording::CheckConflictOfColumn, {verb, name, table->name.Display(), check.column}};
        }
    }
    return refusal;
}

} // namespace

SqliteError::SqliteError(int code, const QString &message) : Error(ErrorOf(code, message)), m_code(code)
{}

bool SqliteError::ConcernsFile() const
{
    return Number() == DeviceErrorNumber || Number() == NoSpaceNumber;
}

QString VerbOf(const Statement &statement)
{
    // A change may begin with its common tables.
    if (statement.kind == StatementKind::Insert)
        return u"INSERT"_s;
    if (statement.kind == StatementKind::Update)
        return u"UPDATE"_s;
    if (statement.kind == StatementKind::Delete)
        return u"DELETE"_s;
    return statement.text.section(u' ', 0, 0).toUpper();
}

bool IsDuplicate(int code)
{
    return code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY || code == SQLITE_CONSTRAINT_ROWID;
}

Error Translated(const SqliteError &error, const QString &verb, const Catalogue &catalogue)
{
    switch (error.Code()) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        return Duplicate(error.Text(), catalogue);
    case SQLITE_CONSTRAINT_NOTNULL:
        return MissingValue(error.Text(), verb);
    case SQLITE_CONSTRAINT_CHECK:
        return RefusedCheck(error.Text().section(u": "_s, 1), verb, catalogue);
    case SQLITE_CONSTRAINT_FOREIGNKEY:
        return {547, {verb, verb == u"DELETE"_s ? u"REFERENCE"_s : u"FOREIGN KEY"_s}};
    default:
        return error;
    }
}

} // namespace tsql
