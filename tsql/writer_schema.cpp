// INFORMATION_SCHEMA: what an administrator asks a database about itself.

#include "tsql/writer_impl.h"

#include <algorithm>

namespace tsql {

namespace {

const SqlType name128 = SqlType::text(Kind::NVarChar, 128);
const SqlType number{Kind::Int};

QString rowOf(const QStringList &fields)
{
    return u'(' + fields.join(u", "_qs) + u')';
}

QString schemaOf(const ObjectName &name)
{
    return quotedText(name.schema.isEmpty() ? u"dbo"_qs : name.schema);
}

bool isLasting(const ObjectName &name)
{
    return !name.name.startsWith(u'#') && !name.name.startsWith(u'@');
}

void addNames(const std::vector<ObjectName> &names, const QString &kind, QStringList &rows)
{
    for (const ObjectName &name : names) {
        if (isLasting(name))
            rows += rowOf({schemaOf(name), quotedText(name.name), quotedText(kind)});
    }
}

QString dataType(Kind kind)
{
    return quotedText(kind == Kind::Decimal ? u"decimal"_qs : kindName(kind));
}

QString precisionOf(const SqlType &type)
{
    switch (type.kind) {
    case Kind::TinyInt:
        return u"3"_qs;
    case Kind::SmallInt:
        return u"5"_qs;
    case Kind::Int:
        return u"10"_qs;
    case Kind::BigInt:
        return u"19"_qs;
    case Kind::Real:
        return u"24"_qs;
    case Kind::Float:
        return u"53"_qs;
    default:
        return type.isDecimal() ? QString::number(type.precision) : u"NULL"_qs;
    }
}

QString scaleOf(const SqlType &type)
{
    const bool counts = type.isDecimal() || (type.isInteger() && type.kind != Kind::Bit);
    return counts ? QString::number(type.scale) : u"NULL"_qs;
}

QStringList columnRows(const Table &table)
{
    QStringList rows;
    int position = 0;
    for (const Column &column : table.columns) {
        const bool sized = column.type.isText() || column.type.isBinary();
        rows += rowOf({schemaOf(table.name), quotedText(table.name.name), quotedText(column.name),
                       QString::number(++position), quotedText(column.nullable ? u"YES"_qs : u"NO"_qs),
                       dataType(column.type.kind), sized ? QString::number(column.type.length) : u"NULL"_qs,
                       precisionOf(column.type), scaleOf(column.type)});
    }
    return rows;
}

} // namespace

/// The rows and columns of one of the schema's views; no columns when there is none of that name.
QueryText Writer::schemaView(const QString &view) const
{
    QueryText result;
    QStringList rows;
    const auto column = [&result](const QString &name, const SqlType &type) {
        result.columns.push_back({name, type, true, {}});
    };
    if (sameName(view, u"TABLES") || sameName(view, u"ROUTINES")) {
        const bool tables = sameName(view, u"TABLES");
        const QString what = tables ? u"TABLE"_qs : u"ROUTINE"_qs;
        for (const QString &part : {u"_SCHEMA"_qs, u"_NAME"_qs, u"_TYPE"_qs})
            column(what + part, name128);
        addNames(tables ? m_catalogue.tableNames() : m_catalogue.procedureNames(),
                 tables ? u"BASE TABLE"_qs : u"PROCEDURE"_qs, rows);
        addNames(tables ? m_catalogue.viewNames() : m_catalogue.functionNames(), tables ? u"VIEW"_qs : u"FUNCTION"_qs,
                 rows);
    } else if (sameName(view, u"COLUMNS")) {
        for (const QString &name : {u"TABLE_SCHEMA"_qs, u"TABLE_NAME"_qs, u"COLUMN_NAME"_qs})
            column(name, name128);
        column(u"ORDINAL_POSITION"_qs, number);
        column(u"IS_NULLABLE"_qs, name128);
        column(u"DATA_TYPE"_qs, name128);
        for (const QString &name : {u"CHARACTER_MAXIMUM_LENGTH"_qs, u"NUMERIC_PRECISION"_qs, u"NUMERIC_SCALE"_qs})
            column(name, number);
        for (const ObjectName &name : m_catalogue.tableNames()) {
            if (isLasting(name))
                rows += columnRows(*m_catalogue.table(name));
        }
    }
    rows.sort(Qt::CaseInsensitive);
    QStringList names;
    for (std::size_t i = 1; i <= result.columns.size(); ++i) {
        const bool text = result.columns[i - 1].type.isText();
        names += u"column%1%2 AS \"c%1\""_qs.arg(i).arg(text ? u" COLLATE TSQL_CI"_qs : QString());
    }
    result.sql = rows.isEmpty() ? u"SELECT NULL"_qs + u", NULL"_qs.repeated(names.size() - 1) + u" WHERE 0"_qs
                                : u"SELECT %1 FROM (VALUES %2)"_qs.arg(names.join(u", "_qs), rows.join(u", "_qs));
    return result;
}

} // namespace tsql
