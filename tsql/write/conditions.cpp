#include "tsql/values/collation.h"
#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

QString Writer::conditionText(const Expression &node, const Scope &scope)
{
    switch (node.kind) {
    case ExpressionKind::And:
    case ExpressionKind::Or:
        return joinedConditions(node, scope);
    case ExpressionKind::Not:
        return u"(NOT %1)"_s.arg(conditionText(*node.args[0], scope));
    case ExpressionKind::Compare: {
        Operand left = value(*node.args[0], scope);
        Operand right = value(*node.args[1], scope);
        return compare(node.name, left, right);
    }
    case ExpressionKind::IsNull: {
        Operand operand = value(*node.args[0], scope);
        return u"(%1 IS %2)"_s.arg(text(operand), node.negated ? u"NOT NULL"_s : u"NULL"_s);
    }
    case ExpressionKind::Like:
        return like(node, scope);
    case ExpressionKind::Between:
        return between(node, scope);
    case ExpressionKind::In:
        return node.query ? inQuery(node, scope) : inList(node, scope);
    case ExpressionKind::Exists:
        refuseOrder(*node.query);
        return u"EXISTS (%1)"_s.arg(query(*node.query, &scope).sql);
    case ExpressionKind::Quantified:
        return quantified(node, scope);
    case ExpressionKind::Literal:
    case ExpressionKind::Null:
    case ExpressionKind::Default:
    case ExpressionKind::Column:
    case ExpressionKind::Star:
    case ExpressionKind::Variable:
    case ExpressionKind::Negate:
    case ExpressionKind::BitNot:
    case ExpressionKind::Arithmetic:
    case ExpressionKind::Scalar:
    case ExpressionKind::Case:
    case ExpressionKind::Cast:
    case ExpressionKind::Function:
    case ExpressionKind::Collate:
        throw Error(4145, {}, node.line);
    }
    Q_UNREACHABLE();
}

/// Conditions joined by AND or by OR, side by side; many of them in groups, because SQLite counts each as a level.
QString Writer::joinedConditions(const Expression &node, const Scope &scope)
{
    constexpr std::size_t GroupSize = 64;
    const QString word = node.kind == ExpressionKind::And ? u" AND "_s : u" OR "_s;
    std::vector<const Expression *> conditions;
    const Expression *left = &node;
    for (; left->kind == node.kind; left = left->args[0].get())
        conditions.push_back(left->args[1].get());
    conditions.push_back(left);
    QStringList groups;
    QStringList texts;
    for (auto condition = conditions.rbegin(); condition != conditions.rend(); ++condition) {
        texts += conditionText(**condition, scope);
        if (conditions.size() > GroupSize && texts.size() == GroupSize)
            groups += u'(' + std::exchange(texts, {}).join(word) + u')';
    }
    return u'(' + (groups + texts).join(word) + u')';
}

/// The type both sides are brought to. A literal adapts to the other side's scale where it can, so that the column
/// stays bare and its index usable.
SqlType Writer::comparisonType(Operand &left, Operand &right)
{
    const bool numbers = left.type.isNumber() && right.type.isNumber();
    if (!numbers || !(left.type.isDecimal() || right.type.isDecimal()) || left.type.isReal() || right.type.isReal())
        return commonType(left.type, right.type);
    for (Operand *operand : {&left, &right}) {
        if (operand->pending && operand->type.isDecimal())
            need(*operand->pending, false);
    }
    return SqlType::decimal(SqlType::MaxPrecision, qMax(asDecimal(left.type).scale, asDecimal(right.type).scale));
}

QString Writer::compare(const QString &op, Operand &left, Operand &right)
{
    if (left.isNull() || right.isNull())
        return u"(NULL %1 NULL)"_s.arg(op);
    SqlType type = comparisonType(left, right);
    if (type.isText() || type.isBinary())
        type.length = SqlType::Max; // nothing is cut or padded for a comparison
    if (type.isFixedText())
        type.kind = type.isUnicode() ? Kind::NVarChar : Kind::VarChar;
    const bool textual = type.isText() || type.kind == Kind::UniqueIdentifier;
    const bool collate = textual && !left.column && !right.column;
    const auto side = [&](Operand &operand) {
        // Two texts compare as they are stored.
        return textual && operand.type.isText() && !operand.pending ? operand.sql
                                                                    : convert(operand, {type, {}, {}, {}});
    };
    const QString a = side(left);
    const QString b = side(right);
    return u"(%1%2 %3 %4)"_s.arg(a, collate ? u" COLLATE TSQL_CI"_s : QString(), op, b);
}

QString Writer::inList(const Expression &node, const Scope &scope)
{
    Operand left = value(*node.args[0], scope);
    std::vector<Operand> items;
    SqlType type = left.type;
    for (std::size_t i = 1; i < node.args.size(); ++i) {
        items.push_back(value(*node.args[i], scope));
        Operand probe = left;
        SqlType pair = comparisonType(probe, items.back());
        if (pair.isDecimal() && type.isDecimal())
            pair.scale = qMax(pair.scale, type.scale);
        type = pair.isDecimal() && !type.isReal() ? pair : commonType(type, pair);
    }
    if (type.isText())
        type.length = SqlType::Max;
    const bool textual = type.isText();
    const QString first = textual && left.type.isText() ? collated(left) : convert(left, {type, {}, {}, {}});
    QString list;
    for (Operand &item : items)
        list += (list.isEmpty() ? QString() : u", "_s) + convert(item, {type, {}, {}, {}});
    return u"(%1 %2IN (%3))"_s.arg(first, node.negated ? u"NOT "_s : QString(), list);
}

QString Writer::inQuery(const Expression &node, const Scope &scope)
{
    Operand left = value(*node.args[0], scope);
    // The subquery is written once to learn its type and again, converted, when the types differ.
    const Compiled before = m_out;
    refuseOrder(*node.query);
    QueryText inner = query(*node.query, &scope);
    if (inner.columns.size() != 1)
        throw Error(116, {}, node.line);
    const SqlType right = inner.columns.front().type;
    if (right.kind == Kind::Null || left.isNull())
        return u"(NULL = 1)"_s;
    Operand probe = made({}, right);
    SqlType type = comparisonType(left, probe);
    const bool textual = type.isText();
    if (textual)
        type.length = SqlType::Max;
    const bool sameStorage = (textual && right.isText()) || (type.isInteger() && right.isInteger()) ||
                             (type.isDecimal() && right.isDecimal() && right.scale == type.scale) ||
                             (type.isReal() && right.isReal()) || type == right;
    if (!sameStorage) {
        m_out = before;
        if (left.pending)
            comparisonType(left, probe);
        const std::vector<Target> targets{{type, {}, {}, {}}};
        inner = query(*node.query, &scope, &targets);
    }
    const QString first = textual && left.type.isText() ? collated(left) : convert(left, {type, {}, {}, {}});
    return u"(%1 %2IN (%3))"_s.arg(first, node.negated ? u"NOT "_s : QString(), inner.sql);
}

void refuseCollation(const Expression &node, const QString &where)
{
    if (node.kind == ExpressionKind::Collate && collationNamed(node.name) != Collation::Plain)
        throw notSupported(u"%1 with COLLATE %2"_s.arg(where, node.name), node.line);
}

QString Writer::like(const Expression &node, const Scope &scope)
{
    const SqlType wide = SqlType::text(Kind::NVarChar, SqlType::Max);
    QStringList list;
    bool unicode = false;
    for (const ExpressionPtr &argument : node.args) {
        refuseCollation(*argument, u"LIKE"_s);
        Operand operand = value(*argument, scope);
        unicode = unicode || operand.type.isUnicode();
        const bool textual = operand.type.isText() && !operand.pending;
        list += textual ? operand.sql : convert(operand, {wide, {}, {}, {}});
    }
    // Where no side is Unicode, blanks at the end of the value may go unmatched.
    const QString function = unicode ? u"tsql_like"_s : u"tsql_like_padded"_s;
    return u"(%1%2(%3))"_s.arg(node.negated ? u"NOT "_s : QString(), function, list.join(u", "_s));
}

QString Writer::between(const Expression &node, const Scope &scope)
{
    // x BETWEEN a AND b is x >= a AND x <= b, each pair with its own type.
    Operand value1 = value(*node.args[0], scope);
    Operand value2 = repeated(*node.args[0], scope);
    Operand low = value(*node.args[1], scope);
    Operand high = value(*node.args[2], scope);
    const QString lower = compare(u">="_s, value1, low);
    const QString upper = compare(u"<="_s, value2, high);
    return u"(%1(%2 AND %3))"_s.arg(node.negated ? u"NOT "_s : QString(), lower, upper);
}

/// x op ANY (query) and x op ALL (query) as the existence of a row that agrees or disagrees.
QString Writer::quantified(const Expression &node, const Scope &scope)
{
    Operand left = value(*node.args[0], scope);
    refuseOrder(*node.query);
    const QueryText inner = query(*node.query, &scope);
    if (inner.columns.size() != 1)
        throw Error(116, {}, node.line);
    Operand right = made(u"\"c1\""_s, inner.columns.front().type);
    const QString condition = compare(node.name, left, right);
    if (node.all)
        return u"(NOT EXISTS (SELECT 1 FROM (%1) WHERE %2 IS NOT TRUE))"_s.arg(inner.sql, condition);
    return u"(EXISTS (SELECT 1 FROM (%1) WHERE %2))"_s.arg(inner.sql, condition);
}

} // namespace tsql
