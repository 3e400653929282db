// INFORMATION_SCHEMA: what an administrator asks a database about itself.

#include "tsql/write/writer_impl.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

const SqlType name128 = SqlType::text(Kind::NVarChar, 128);
const SqlType number{Kind::Int};

QString RowOf(const QStringList &fields)
{
    return u'(' + fields.join(u", "_s) + u')';
}

QString SchemaOf(const ObjectName &name)
{
    return QuotedText(name.schema.isEmpty() ? u"dbo"_s : name.schema);
}

bool IsLasting(const ObjectName &name)
{
    return !name.name.startsWith(u'#') && !name.name.startsWith(u'@');
}

void AddNames(const std::vector<ObjectName> &names, const QString &kind, QStringList &rows)
{
    for (const ObjectName &name : names) {
        if (IsLasting(name))
            rows += RowOf({SchemaOf(name), QuotedText(name.name), QuotedText(kind)});
    }
}

QString DataType(Kind kind)
{
    return QuotedText(kind == Kind::Decimal ? u"decimal"_s : KindName(kind));
}

QString PrecisionOf(const SqlType &type)
{
    switch (type.kind) {
    case Kind::TinyInt:
        return u"3"_s;
    case Kind::SmallInt:
        return u"5"_s;
    case Kind::Int:
        return u"10"_s;
    case Kind::BigInt:
        return u"19"_s;
    case Kind::Real:
        return u"24"_s;
    case Kind::Float:
        return u"53"_s;
    default:
        return type.IsDecimal() ? QString::number(type.precision) : u"NULL"_s;
    }
}

QString ScaleOf(const SqlType &type)
{
    const bool counts = type.IsDecimal() || (type.IsInteger() && type.kind != Kind::Bit);
    return counts ? QString::number(type.scale) : u"NULL"_s;
}

QStringList ColumnRows(const Table &table)
{
    QStringList rows;
    int position = 0;
    for (const Column &column : table.columns) {
        const bool sized = column.type.IsText() || column.type.IsBinary();
        rows += RowOf({SchemaOf(table.name), QuotedText(table.name.name), QuotedText(column.name),
                       QString::number(++position), QuotedText(column.nullable ? u"YES"_s : u"NO"_s),
                       DataType(column.type.kind), sized ? QString::number(column.type.length) : u"NULL"_s,
                       PrecisionOf(column.type), ScaleOf(column.type)});
    }
    return rows;
}

} // namespace

/// The rows and columns of one of the schema's views; no columns when there is none of that name.
QueryText Writer::SchemaView(const QString &view) const
{
    QueryText result;
    QStringList rows;
    const auto column = [&result](const QString &name, const SqlType &type) {
        result.columns.push_back({name, type, true, {}});
    };
    if (SameName(view, u"TABLES") || SameName(view, u"ROUTINES")) {
        const bool tables = SameName(view, u"TABLES");
        const QString what = tables ? u"TABLE"_s : u"ROUTINE"_s;
        for (const QString &part : {u"_SCHEMA"_s, u"_NAME"_s, u"_TYPE"_s})
            column(what + part, name128);
        AddNames(tables ? m_catalogue.TableNames() : m_catalogue.ProcedureNames(),
                 tables ? u"BASE TABLE"_s : u"PROCEDURE"_s, rows);
        AddNames(tables ? m_catalogue.ViewNames() : m_catalogue.FunctionNames(), tables ? u"VIEW"_s : u"FUNCTION"_s,
                 rows);
    } else if (SameName(view, u"COLUMNS")) {
        for (const QString &name : {u"TABLE_SCHEMA"_s, u"TABLE_NAME"_s, u"COLUMN_NAME"_s})
            column(name, name128);
        column(u"ORDINAL_POSITION"_s, number);
        column(u"IS_NULLABLE"_s, name128);
        column(u"DATA_TYPE"_s, name128);
        for (const QString &name : {u"CHARACTER_MAXIMUM_LENGTH"_s, u"NUMERIC_PRECISION"_s, u"NUMERIC_SCALE"_s})
            column(name, number);
        for (const ObjectName &name : m_catalogue.TableNames()) {
            if (IsLasting(name))
                rows += ColumnRows(*m_catalogue.FindTable(name));
        }
    }
    rows.sort(Qt::CaseInsensitive);
    QStringList names;
    for (std::size_t i = 1; i <= result.columns.size(); ++i) {
        const bool text = result.columns[i - 1].type.IsText();
        const QString value = rows.isEmpty() ? u"NULL"_s : u"column%1"_s.arg(i);
        names += u"%1%2 AS \"c%3\""_s.arg(value, text ? u" COLLATE TSQL_CI"_s : QString()).arg(i);
    }
    result.sql = u"SELECT "_s + names.join(u", "_s) +
                 (rows.isEmpty() ? u" WHERE 0"_s : u" FROM (VALUES %1)"_s.arg(rows.join(u", "_s)));
    return result;
}

} // namespace tsql
