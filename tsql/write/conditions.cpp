#include "tsql/values/collation.h"
#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

QString Writer::ConditionText(const Expression &node, const Scope &scope)
{
    switch (node.kind) {
    case ExpressionKind::And:
    case ExpressionKind::Or:
        return JoinedConditions(node, scope);
    case ExpressionKind::Not:
        return u"(NOT %1)"_s.arg(ConditionText(*node.args[0], scope));
    case ExpressionKind::Compare: {
        Operand left = WriteValue(*node.args[0], scope);
        Operand right = WriteValue(*node.args[1], scope);
        return Compare(node.name, left, right);
    }
    case ExpressionKind::IsNull: {
        Operand operand = WriteValue(*node.args[0], scope);
        return u"(%1 IS %2)"_s.arg(text(operand), node.negated ? u"NOT NULL"_s : u"NULL"_s);
    }
    case ExpressionKind::Like:
        return Like(node, scope);
    case ExpressionKind::Between:
        return Between(node, scope);
    case ExpressionKind::In:
        return node.query ? InQuery(node, scope) : InList(node, scope);
    case ExpressionKind::Exists:
        RefuseOrder(*node.query);
        return u"EXISTS (%1)"_s.arg(WriteQuery(*node.query, &scope).sql);
    case ExpressionKind::Quantified:
        return Quantified(node, scope);
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
QString Writer::JoinedConditions(const Expression &node, const Scope &scope)
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
        texts += ConditionText(**condition, scope);
        if (conditions.size() > GroupSize && texts.size() == GroupSize)
            groups += u'(' + std::exchange(texts, {}).join(word) + u')';
    }
    return u'(' + (groups + texts).join(word) + u')';
}

/// The type both sides are brought to. A literal adapts to the other side's scale where it can, so that the column
/// stays bare and its index usable.
SqlType Writer::ComparisonType(Operand &left, Operand &right)
{
    const bool numbers = left.type.IsNumber() && right.type.IsNumber();
    if (!numbers || !(left.type.IsDecimal() || right.type.IsDecimal()) || left.type.IsReal() || right.type.IsReal())
        return CommonType(left.type, right.type);
    for (Operand *operand : {&left, &right}) {
        if (operand->pending && operand->type.IsDecimal())
            Need(*operand->pending, false);
    }
    return SqlType::DecimalOf(SqlType::MaxPrecision, qMax(AsDecimal(left.type).scale, AsDecimal(right.type).scale));
}

QString Writer::Compare(const QString &op, Operand &left, Operand &right)
{
    if (left.IsNull() || right.IsNull())
        return u"(NULL %1 NULL)"_s.arg(op);
    SqlType type = ComparisonType(left, right);
    if (type.IsText() || type.IsBinary())
        type.length = SqlType::Max; // nothing is cut or padded for a comparison
    if (type.IsFixedText())
        type.kind = type.IsUnicode() ? Kind::NVarChar : Kind::VarChar;
    const bool textual = type.IsText() || type.kind == Kind::UniqueIdentifier;
    const bool collate = textual && !left.column && !right.column;
    const auto side = [&](Operand &operand) {
        // Two texts compare as they are stored.
        return textual && operand.type.IsText() && !operand.pending ? operand.sql
                                                                    : Convert(operand, {type, {}, {}, {}});
    };
    const QString a = side(left);
    const QString b = side(right);
    return u"(%1%2 %3 %4)"_s.arg(a, collate ? u" COLLATE TSQL_CI"_s : QString(), op, b);
}

QString Writer::InList(const Expression &node, const Scope &scope)
{
    Operand left = WriteValue(*node.args[0], scope);
    std::vector<Operand> items;
    SqlType type = left.type;
    for (std::size_t i = 1; i < node.args.size(); ++i) {
        items.push_back(WriteValue(*node.args[i], scope));
        Operand probe = left;
        SqlType pair = ComparisonType(probe, items.back());
        if (pair.IsDecimal() && type.IsDecimal())
            pair.scale = qMax(pair.scale, type.scale);
        type = pair.IsDecimal() && !type.IsReal() ? pair : CommonType(type, pair);
    }
    if (type.IsText())
        type.length = SqlType::Max;
    const bool textual = type.IsText();
    const QString first = textual && left.type.IsText() ? Collated(left) : Convert(left, {type, {}, {}, {}});
    QString list;
    for (Operand &item : items)
        list += (list.isEmpty() ? QString() : u", "_s) + Convert(item, {type, {}, {}, {}});
    return u"(%1 %2IN (%3))"_s.arg(first, node.negated ? u"NOT "_s : QString(), list);
}

QString Writer::InQuery(const Expression &node, const Scope &scope)
{
    Operand left = WriteValue(*node.args[0], scope);
    // The subquery is written once to learn its type and again, converted, when the types differ.
    const Compiled before = m_out;
    RefuseOrder(*node.query);
    QueryText inner = WriteQuery(*node.query, &scope);
    if (inner.columns.size() != 1)
        throw Error(116, {}, node.line);
    const SqlType right = inner.columns.front().type;
    if (right.kind == Kind::Null || left.IsNull())
        return u"(NULL = 1)"_s;
    Operand probe = Made({}, right);
    SqlType type = ComparisonType(left, probe);
    const bool textual = type.IsText();
    if (textual)
        type.length = SqlType::Max;
    const bool sameStorage = (textual && right.IsText()) || (type.IsInteger() && right.IsInteger()) ||
                             (type.IsDecimal() && right.IsDecimal() && right.scale == type.scale) ||
                             (type.IsReal() && right.IsReal()) || type == right;
    if (!sameStorage) {
        m_out = before;
        if (left.pending)
            ComparisonType(left, probe);
        const std::vector<Target> targets{{type, {}, {}, {}}};
        inner = WriteQuery(*node.query, &scope, &targets);
    }
    const QString first = textual && left.type.IsText() ? Collated(left) : Convert(left, {type, {}, {}, {}});
    return u"(%1 %2IN (%3))"_s.arg(first, node.negated ? u"NOT "_s : QString(), inner.sql);
}

void RefuseCollation(const Expression &node, const QString &where)
{
    if (node.kind == ExpressionKind::Collate && CollationNamed(node.name) != Collation::Plain)
        throw NotSupported(u"%1 with COLLATE %2"_s.arg(where, node.name), node.line);
}

QString Writer::Like(const Expression &node, const Scope &scope)
{
    const SqlType wide = SqlType::text(Kind::NVarChar, SqlType::Max);
    QStringList list;
    bool unicode = false;
    for (const ExpressionPtr &argument : node.args) {
        RefuseCollation(*argument, u"LIKE"_s);
        Operand operand = WriteValue(*argument, scope);
        unicode = unicode || operand.type.IsUnicode();
        const bool textual = operand.type.IsText() && !operand.pending;
        list += textual ? operand.sql : Convert(operand, {wide, {}, {}, {}});
    }
    // Where no side is Unicode, blanks at the end of the value may go unmatched.
    const QString function = unicode ? u"tsql_like"_s : u"tsql_like_padded"_s;
    return u"(%1%2(%3))"_s.arg(node.negated ? u"NOT "_s : QString(), function, list.join(u", "_s));
}

QString Writer::Between(const Expression &node, const Scope &scope)
{
    // x BETWEEN a AND b is x >= a AND x <= b, each pair with its own type.
    Operand value1 = WriteValue(*node.args[0], scope);
    Operand value2 = Repeated(*node.args[0], scope);
    Operand low = WriteValue(*node.args[1], scope);
    Operand high = WriteValue(*node.args[2], scope);
    const QString lower = Compare(u">="_s, value1, low);
    const QString upper = Compare(u"<="_s, value2, high);
    return u"(%1(%2 AND %3))"_s.arg(node.negated ? u"NOT "_s : QString(), lower, upper);
}

/// x op ANY (query) and x op ALL (query) as the existence of a row that agrees or disagrees.
QString Writer::Quantified(const Expression &node, const Scope &scope)
{
    Operand left = WriteValue(*node.args[0], scope);
    RefuseOrder(*node.query);
    const QueryText inner = WriteQuery(*node.query, &scope);
    if (inner.columns.size() != 1)
        throw Error(116, {}, node.line);
    Operand right = Made(u"\"c1\""_s, inner.columns.front().type);
    const QString condition = Compare(node.name, left, right);
    if (node.all)
        return u"(NOT EXISTS (SELECT 1 FROM (%1) WHERE %2 IS NOT TRUE))"_s.arg(inner.sql, condition);
    return u"(EXISTS (SELECT 1 FROM (%1) WHERE %2))"_s.arg(inner.sql, condition);
}

} // namespace tsql
