#include "tsql/run/key_exchange.h"

#include "tsql/run/key_conflict.h"
#include "tsql/values/decimal.h"

#include <map>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

/** A pragma that is on for the life of the object. */
class Setting
{
public:
    Setting(const SqliteHandle &handle, const char *name) : m_handle(handle), m_name(name)
    {
        m_handle.Execute("PRAGMA " + m_name + " = ON");
    }
    ~Setting() { sqlite3_exec(m_handle.Get(), ("PRAGMA " + m_name + " = OFF").constData(), nullptr, nullptr, nullptr); }
    Setting(const Setting &) = delete;
    Setting &operator=(const Setting &) = delete;

private:
    const SqliteHandle &m_handle;
    const QByteArray m_name;
};

struct Row
{
    qint64 number; ///< its present row number
    std::vector<Value> values;
};

using Rows = std::map<qint64, Row>; // a join may find a row several times

QString Quoted(QString name)
{
    return u'"' + name.replace(u'"', u"\"\""_s) + u'"';
}

std::shared_ptr<const Table> TableOf(const QString &sqliteName, const Catalogue &catalogue)
{
    for (const ObjectName &name : catalogue.TableNames()) {
        if (auto table = catalogue.FindTable(name); table->sqliteName == sqliteName)
            return table;
    }
    return {};
}

bool IsIn(const std::vector<QString> &names, const QString &name)
{
    return std::any_of(names.begin(), names.end(),
                       [&name](const QString &one) { return one.compare(name, Qt::CaseInsensitive) == 0; });
}

/** The columns of the table that a unique key has. */
std::vector<QString> KeyColumns(const SqliteHandle &handle, const Table &table)
{
    const bool plain = table.sqliteName.startsWith(u'"');
    const QString schema = plain ? u"main"_s : table.sqliteName.section(u'.', 0, 0);
    const QString name = plain ? table.sqliteName : table.sqliteName.section(u'.', 1);
    std::vector<QString> columns{table.rowidColumn};
    const PreparedStatement list = handle.Prepare("SELECT i.name FROM pragma_index_list(?1, ?2) AS l, "
                                                  "pragma_index_info(l.name, ?2) AS i WHERE l.\"unique\"");
    BindValue(list.get(), 1, Value::OfText(name.sliced(1).chopped(1).replace(u"\"\""_s, u"\""_s)));
    BindValue(list.get(), 2, Value::OfText(schema));
    while (handle.Step(list.get()))
        columns.push_back(QString::fromUtf8(ColumnValue(list.get(), 0).bytes));
    return columns;
}

/** A value of the column that no row has: the n-th beyond what its type can hold, or below the lowest number. */
Value ParkedValue(const SqlType &type, qint64 lowest, qint64 n)
{
    if (type.IsInteger())
        return Value::OfInteger(lowest - 1 - n);
    if (type.IsDecimal())
        return Value::OfBlob(Decimal{-Decimal::Power10(Decimal::MaxPrecision) - 1 - n, 0}.ToBlob());
    if (type.IsReal())
        return Value::OfReal(-1e300 * (1 + double(n) * 1e-12));
    const QByteArray text = '\x1f' + QByteArray::number(n);
    return type.IsBinary() ? Value::OfBlob(text) : Value::OfText(text);
}

/** One UPDATE by row number, run for each row. */
class RowUpdate
{
public:
    RowUpdate(const SqliteHandle &handle, const Table &table, const std::vector<QString> &columns) : m_handle(handle)
    {
        QStringList list;
        for (const QString &column : columns)
            list += Quoted(column) + u" = ?%1"_s.arg(list.size() + 2);
        m_statement =
            handle.Prepare(u"UPDATE %1 SET %2 WHERE _rowid_ = ?1"_s.arg(table.sqliteName, list.join(u", "_s)).toUtf8());
    }

    void Run(qint64 row, const std::vector<Value> &values) const
    {
        const StatementUse use(m_statement.get());
        BindValue(m_statement.get(), 1, Value::OfInteger(row));
        for (size_t i = 0; i < values.size(); ++i)
            BindValue(m_statement.get(), int(i) + 2, values[i]);
        m_handle.Step(m_statement.get());
    }

private:
    const SqliteHandle &m_handle;
    PreparedStatement m_statement;
};

/** The rows give up the keys that they are about to change. */
void Park(const SqliteHandle &handle, const Table &table, const std::vector<QString> &assigned, Rows &rows)
{
    const Setting unchecked(handle, "ignore_check_constraints");
    const std::vector<QString> keys = KeyColumns(handle, table);
    std::vector<QString> columns;
    std::vector<qint64> lowest;
    for (const QString &name : assigned) {
        if (!IsIn(keys, name))
            continue;
        columns.push_back(name);
        lowest.push_back(
            qMin(qint64(0), handle.ScalarInteger(
                                u"SELECT min(%1) FROM %2"_s.arg(Quoted(name), table.sqliteName).toUtf8().constData())));
        if (lowest.back() < std::numeric_limits<qint64>::min() + qint64(rows.size()) + 1)
            throw Error(wording::LowestNumbersExchanged, {name});
    }
    const RowUpdate update(handle, table, columns);
    qint64 n = 0;
    for (auto &[found, row] : rows) {
        std::vector<Value> parked;
        for (size_t i = 0; i < columns.size(); ++i)
            parked.push_back(ParkedValue(table.columns[size_t(table.IndexOf(columns[i]))].type, lowest[i], n));
        update.Run(found, parked);
        for (size_t i = 0; i < columns.size(); ++i) {
            if (columns[i].compare(table.rowidColumn, Qt::CaseInsensitive) == 0)
                row.number = parked[i].integer;
        }
        ++n;
    }
}

/** Keys that others follow by losing theirs would lose them on the way. */
void RefuseLosing(const Table &table, const Catalogue &catalogue)
{
    for (const ObjectName &name : catalogue.TableNames()) {
        for (const Reference &reference : catalogue.FindTable(name)->references) {
            const KeyAction action = reference.key.onUpdate;
            if (reference.key.table.KeyText() == table.name.KeyText() &&
                (action == KeyAction::SetNull || action == KeyAction::SetDefault))
                throw Error(wording::ReferredExchange, {table.name.Display(), name.Display()});
        }
    }
}

} // namespace

qint64 ExchangeKeys(const SqliteHandle &handle, sqlite3_stmt *values, const Compiled &found, const Catalogue &catalogue)
{
    const auto table = TableOf(found.target, catalogue);
    std::vector<QString> assigned;
    for (const ResultColumn &column : found.columns)
        assigned.push_back(column.name);
    Rows rows;
    while (handle.Step(values)) {
        const qint64 number = sqlite3_column_int64(values, 0);
        Row row{number, {}};
        for (size_t i = 0; i < assigned.size(); ++i)
            row.values.push_back(ColumnValue(values, int(i) + 1));
        rows.insert_or_assign(number, std::move(row));
    }
    sqlite3_reset(values);
    RefuseLosing(*table, catalogue);
    const Setting deferred(handle, "defer_foreign_keys");
    Park(handle, *table, assigned, rows);
    const RowUpdate update(handle, *table, assigned);
    for (const auto &[number, row] : rows)
        update.Run(row.number, row.values);
    int open = 0;
    int highest = 0;
    sqlite3_db_status(handle.Get(), SQLITE_DBSTATUS_DEFERRED_FKS, &open, &highest, 0);
    if (open != 0)
        throw PresentConflict(handle, found.target, u"UPDATE"_s, catalogue);
    return qint64(rows.size());
}

} // namespace tsql
