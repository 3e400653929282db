#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

bool Writer::HasAggregate(const Expression &node)
{
    if (IsAggregate(node))
        return true;
    for (const ExpressionPtr &argument : node.args) {
        if (HasAggregate(*argument))
            return true;
    }
    return false;
}

QString Writer::WindowText(const Window &window, const Scope &scope)
{
    QStringList partition;
    for (const ExpressionPtr &item : window.partition) {
        Operand operand = WriteValue(*item, scope);
        partition += Collated(operand);
    }
    QStringList order;
    for (const OrderItem &item : window.order) {
        Operand operand = WriteValue(*item.value, scope);
        order += Collated(operand) + (item.descending ? u" DESC"_s : QString());
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

Operand Writer::WriteRanking(const Expression &node, const Scope &scope)
{
    if (!node.over || node.over->order.empty())
        throw Error(4112, {node.name}, node.line);
    if (node.over->rows)
        throw Error(10752, {node.name}, node.line);
    return Made(u"%1()%2"_s.arg(node.name.toLower(), WindowText(*node.over, scope)), {Kind::BigInt});
}

Operand Writer::WriteAggregate(const Expression &node, const Scope &scope)
{
    if (!node.over && !scope.aggregatesAllowed)
        throw Error(147, {}, node.line);
    Scope inner = scope;
    inner.inAggregate = !node.over || scope.inAggregate;
    inner.aggregatesAllowed = node.over && scope.aggregatesAllowed;
    const QString window = node.over ? WindowText(*node.over, scope) : QString();
    const QString distinct = node.distinct ? u"DISTINCT "_s : QString();
    if (node.args[0]->kind == ExpressionKind::Star) {
        if (node.distinct || (node.name != u"COUNT" && node.name != u"COUNT_BIG"))
            throw Error(102, {u'*'}, node.line);
        return Made(u"count(*)"_s + window, {node.name == u"COUNT" ? Kind::Int : Kind::BigInt});
    }
    Operand argument = WriteValue(*node.args[0], inner);
    if (argument.IsNull())
        throw Error(8117, {u"NULL"_s, node.name.toLower()}, node.line);
    if (node.name == u"STRING_AGG") {
        const SqlType wide = SqlType::text(Kind::NVarChar, SqlType::Max);
        const QString piece =
            argument.type.IsText() && !argument.pending ? argument.sql : Convert(argument, {wide, {}, {}, {}});
        return Made(u"tsql_string_agg(%1, %2)"_s.arg(piece, ArgumentAs(*node.args[1], inner, wide)), wide);
    }
    if (node.name.startsWith(u"COUNT"))
        return Made(u"count(%1%2)%3"_s.arg(distinct, Collated(argument), window),
                    {node.name == u"COUNT" ? Kind::Int : Kind::BigInt});
    if (node.distinct && !(node.name == u"MIN" || node.name == u"MAX")) {
        // SQLite's DISTINCT takes aggregates of one argument only.
        if (argument.type.IsInteger() && argument.type.kind != Kind::Bit && node.name == u"SUM") {
            const Kind kind = argument.type.kind == Kind::BigInt ? Kind::BigInt : Kind::Int;
            return Made(u"int_fit(sum(DISTINCT %1), %2)"_s.arg(text(argument), KindNumber(kind)), {kind});
        }
        if (argument.type.IsDecimal() && node.name == u"AVG")
            throw Error(wording::AverageOfDistinct, {}, node.line);
        argument.sql = distinct + text(argument);
        argument.pending.reset();
    }
    return AggregateOf(node, argument, window);
}

Operand Writer::AggregateOf(const Expression &node, Operand &argument, const QString &window)
{
    const SqlType type = argument.type;
    const QString name = node.name.toLower();
    if (name == u"min" || name == u"max") {
        if (type.kind == Kind::Bit)
            throw Error(8117, {u"bit"_s, name}, node.line);
        return Made(u"%1(%2)%3"_s.arg(name, Collated(argument), window), type);
    }
    const QString sql = text(argument);
    const bool sum = name == u"sum";
    if (type.IsInteger() && type.kind != Kind::Bit) {
        const Kind kind = type.kind == Kind::BigInt ? Kind::BigInt : Kind::Int;
        if (sum)
            return Made(window.isEmpty() ? u"int_sum(%1, %2)"_s.arg(sql, KindNumber(kind))
                                         : u"int_fit(sum(%1)%2, %3)"_s.arg(sql, window, KindNumber(kind)),
                        {kind});
        return Made(window.isEmpty() ? u"int_avg(%1)"_s.arg(sql) : u"(sum(%1)%2 / count(%1)%2)"_s.arg(sql, window),
                    {kind});
    }
    if (type.IsDecimal()) {
        const int scale = sum ? type.scale : qMax(type.scale, 6);
        const SqlType result =
            type.kind == Kind::Money && sum ? SqlType::Money() : SqlType::DecimalOf(SqlType::MaxPrecision, scale);
        return Made(sum ? u"dec_sum(%1)%2"_s.arg(sql, window)
                        : u"dec_avg(%1, %2)%3"_s.arg(sql, QString::number(type.scale), window),
                    result);
    }
    if (type.IsReal())
        return Made(u"real_fit(%1(%2)%3)"_s.arg(name, sql, window), {Kind::Float});
    throw Error(8117, {KindName(type.kind), name}, node.line);
}

} // namespace tsql
