#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

bool Writer::hasAggregate(const Expression &node)
{
    if (isAggregate(node))
        return true;
    for (const ExpressionPtr &argument : node.args) {
        if (hasAggregate(*argument))
            return true;
    }
    return false;
}

QString Writer::windowText(const Window &window, const Scope &scope)
{
    QStringList partition;
    for (const ExpressionPtr &item : window.partition) {
        Operand operand = value(*item, scope);
        partition += collated(operand);
    }
    QStringList order;
    for (const OrderItem &item : window.order) {
        Operand operand = value(*item.value, scope);
        order += collated(operand) + (item.descending ? u" DESC"_s : QString());
    }
    QString text = u" OVER ("_s;
    if (!partition.isEmpty())
        text += u"PARTITION BY "_s + partition.join(u", "_s);
    if (!order.isEmpty())
        text += u" ORDER BY "_s + order.join(u", "_s);
    if (window.rows)
        text += u" ROWS UNBOUNDED PRECEDING"_s;
    return text + u')';
}

Operand Writer::ranking(const Expression &node, const Scope &scope)
{
    if (!node.over || node.over->order.empty())
        throw Error(4112, {node.name}, node.line);
    if (node.over->rows)
        throw Error(10752, {node.name}, node.line);
    return made(u"%1()%2"_s.arg(node.name.toLower(), windowText(*node.over, scope)), {Kind::BigInt});
}

Operand Writer::aggregate(const Expression &node, const Scope &scope)
{
    if (!node.over && !scope.aggregatesAllowed)
        throw Error(147, {}, node.line);
    Scope inner = scope;
    inner.inAggregate = !node.over || scope.inAggregate;
    inner.aggregatesAllowed = node.over && scope.aggregatesAllowed;
    const QString window = node.over ? windowText(*node.over, scope) : QString();
    const QString distinct = node.distinct ? u"DISTINCT "_s : QString();
    if (node.args[0]->kind == ExpressionKind::Star) {
        if (node.distinct || (node.name != u"COUNT" && node.name != u"COUNT_BIG"))
            throw Error(102, {u'*'}, node.line);
        return made(u"count(*)"_s + window, {node.name == u"COUNT" ? Kind::Int : Kind::BigInt});
    }
    Operand argument = value(*node.args[0], inner);
    if (argument.isNull())
        throw Error(8117, {u"NULL"_s, node.name.toLower()}, node.line);
    if (node.name == u"STRING_AGG") {
        const SqlType wide = SqlType::text(Kind::NVarChar, SqlType::Max);
        const QString piece =
            argument.type.isText() && !argument.pending ? argument.sql : convert(argument, {wide, {}, {}, {}});
        return made(u"tsql_string_agg(%1, %2)"_s.arg(piece, argumentAs(*node.args[1], inner, wide)), wide);
    }
    if (node.name.startsWith(u"COUNT"))
        return made(u"count(%1%2)%3"_s.arg(distinct, collated(argument), window),
                    {node.name == u"COUNT" ? Kind::Int : Kind::BigInt});
    if (node.distinct && !(node.name == u"MIN" || node.name == u"MAX")) {
        // SQLite's DISTINCT takes aggregates of one argument only.
        if (argument.type.isInteger() && argument.type.kind != Kind::Bit && node.name == u"SUM") {
            const Kind kind = argument.type.kind == Kind::BigInt ? Kind::BigInt : Kind::Int;
            return made(u"int_fit(sum(DISTINCT %1), %2)"_s.arg(text(argument), kindNumber(kind)), {kind});
        }
        if (argument.type.isDecimal() && node.name == u"AVG")
            throw Error(wording::AverageOfDistinct, {}, node.line);
        argument.sql = distinct + text(argument);
        argument.pending.reset();
    }
    return aggregateOf(node, argument, window);
}

Operand Writer::aggregateOf(const Expression &node, Operand &argument, const QString &window)
{
    const SqlType type = argument.type;
    const QString name = node.name.toLower();
    if (name == u"min" || name == u"max") {
        if (type.kind == Kind::Bit)
            throw Error(8117, {u"bit"_s, name}, node.line);
        return made(u"%1(%2)%3"_s.arg(name, collated(argument), window), type);
    }
    const QString sql = text(argument);
    const bool sum = name == u"sum";
    if (type.isInteger() && type.kind != Kind::Bit) {
        const Kind kind = type.kind == Kind::BigInt ? Kind::BigInt : Kind::Int;
        if (sum)
            return made(window.isEmpty() ? u"int_sum(%1, %2)"_s.arg(sql, kindNumber(kind))
                                         : u"int_fit(sum(%1)%2, %3)"_s.arg(sql, window, kindNumber(kind)),
                        {kind});
        return made(window.isEmpty() ? u"int_avg(%1)"_s.arg(sql) : u"(sum(%1)%2 / count(%1)%2)"_s.arg(sql, window),
                    {kind});
    }
    if (type.isDecimal()) {
        const int scale = sum ? type.scale : qMax(type.scale, 6);
        const SqlType result =
            type.kind == Kind::Money && sum ? SqlType::money() : SqlType::decimal(SqlType::MaxPrecision, scale);
        return made(sum ? u"dec_sum(%1)%2"_s.arg(sql, window)
                        : u"dec_avg(%1, %2)%3"_s.arg(sql, QString::number(type.scale), window),
                    result);
    }
    if (type.isReal())
        return made(u"real_fit(%1(%2)%3)"_s.arg(name, sql, window), {Kind::Float});
    throw Error(8117, {kindName(type.kind), name}, node.line);
}

} // namespace tsql
