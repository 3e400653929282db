#include "tsql/values/collation.h"
#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

constexpr int MostRepeated = 20'000;

} // namespace

Operand Writer::made(QString sql, const SqlType &type) const
{
    Operand operand;
    operand.sql = std::move(sql);
    operand.type = type;
    return operand;
}

Operand Writer::value(const Expression &node, const Scope &scope)
{
    try {
        Operand operand = valueNode(node, scope);
        if (operand.type.kind == Kind::Condition)
            throw Error(wording::ConditionAsValue, {}, node.line);
        return operand;
    } catch (Error &error) {
        if (error.line() == 0 && !m_constants)
            error.setLine(node.line);
        throw;
    }
}

/// An expression that is written more than once (x in NULLIF and BETWEEN): nested, it doubles with each level.
Operand Writer::repeated(const Expression &node, const Scope &scope)
{
    if (++m_repeated > MostRepeated)
        throw nestedTooDeeply(node.line);
    return value(node, scope);
}

/// Whether the expression as a whole is one of the grouped ones, so that its columns need not be.
bool Writer::isGrouped(const Expression &node, const Scope &scope)
{
    const bool whole = node.kind == ExpressionKind::Arithmetic || node.kind == ExpressionKind::Case ||
                       node.kind == ExpressionKind::Cast || node.kind == ExpressionKind::Function ||
                       node.kind == ExpressionKind::Negate;
    if (!scope.grouped || scope.inAggregate || scope.groupBy == nullptr || !whole)
        return false;
    for (const ExpressionPtr &item : *scope.groupBy) {
        if (sameExpression(*item, node))
            return true;
    }
    return false;
}

Operand Writer::valueNode(const Expression &node, const Scope &scope)
{
    if (isGrouped(node, scope)) {
        Scope inner = scope;
        inner.inAggregate = true;
        return valueNode(node, inner);
    }
    if (const auto row = m_rowValues.constFind(&node); row != m_rowValues.cend())
        return variableOf(*row, m_variables.value(*row));
    switch (node.kind) {
    case ExpressionKind::Literal:
        return literal(node);
    case ExpressionKind::Null:
        return {};
    case ExpressionKind::Column:
        return column(node, scope);
    case ExpressionKind::Variable:
        return variable(node);
    case ExpressionKind::Negate:
        return negate(node, scope);
    case ExpressionKind::BitNot: {
        Operand operand = value(*node.args[0], scope);
        if (!operand.type.isInteger())
            throw Error(8117, {kindName(operand.type.kind), u"'~'"_s});
        const QString form = operand.type.kind == Kind::Bit       ? u"(1 - %1)"_s
                             : operand.type.kind == Kind::TinyInt ? u"(255 - %1)"_s
                                                                  : u"(~%1)"_s;
        return made(form.arg(text(operand)), operand.type);
    }
    case ExpressionKind::Arithmetic:
        return arithmetic(node, scope);
    case ExpressionKind::Scalar:
        return scalarSubquery(node, scope);
    case ExpressionKind::Case:
        return caseValue(node, scope);
    case ExpressionKind::Cast:
        return cast(node, scope);
    case ExpressionKind::Function:
        return function(node, scope);
    case ExpressionKind::Collate:
        return collate(node, scope);
    case ExpressionKind::Star:
        throw Error(102, {u'*'}, node.line);
    case ExpressionKind::Default:
        throw Error(156, {u"DEFAULT"_s}, node.line);
    case ExpressionKind::And:
    case ExpressionKind::Or:
    case ExpressionKind::Not:
    case ExpressionKind::Compare:
    case ExpressionKind::IsNull:
    case ExpressionKind::Like:
    case ExpressionKind::Between:
    case ExpressionKind::In:
    case ExpressionKind::Exists:
    case ExpressionKind::Quantified:
        throw Error(wording::ConditionAsValue, {}, node.line);
    }
    Q_UNREACHABLE();
}

Operand Writer::collate(const Expression &node, const Scope &scope)
{
    Operand operand = value(*node.args[0], scope);
    if (!operand.type.isText())
        throw Error(447, {kindName(operand.type.kind)});
    const QLatin1String name(collationName(collationNamed(node.name)));
    Operand result = made(u"(%1 COLLATE %2)"_s.arg(text(operand), name), operand.type);
    result.column = true;
    return result;
}

namespace {

bool namesSource(const Source &source, const QString &qualifier)
{
    return sameName(source.name, qualifier) || (!source.table.isEmpty() && sameName(source.table, qualifier));
}

} // namespace

Operand Writer::column(const Expression &node, const Scope &scope)
{
    for (const Scope *level = &scope; level != nullptr; level = level->outer) {
        const SourceColumn *found = nullptr;
        for (const Source &source : level->sources) {
            if (!node.qualifier.isEmpty() && !namesSource(source, node.qualifier))
                continue;
            for (const SourceColumn &candidate : source.columns) {
                if (!sameName(candidate.name, node.name))
                    continue;
                if (found != nullptr)
                    throw Error(209, {node.name}, node.line);
                found = &candidate;
            }
        }
        if (found == nullptr)
            continue;
        if (level->grouped && !level->inAggregate && !groupedAway(node, *level))
            throw Error(8120, {node.name}, node.line);
        Operand operand = made(found->sql, found->type);
        operand.column = true;
        operand.nullable = found->nullable;
        operand.table = found->table;
        return operand;
    }
    if (node.qualifier.isEmpty())
        throw Error(207, {node.name}, node.line);
    throw Error(4104, {node.qualifier, node.name}, node.line);
}

/// Whether the column is one of the grouped ones of its level.
bool Writer::groupedAway(const Expression &node, const Scope &scope)
{
    if (scope.groupBy == nullptr)
        return false;
    for (const ExpressionPtr &item : *scope.groupBy) {
        if (item->kind == ExpressionKind::Column && sameName(item->name, node.name) &&
            (item->qualifier.isEmpty() || node.qualifier.isEmpty() || sameName(item->qualifier, node.qualifier)))
            return true;
    }
    return false;
}

bool Writer::sameExpression(const Expression &left, const Expression &right)
{
    if (left.kind != right.kind || left.args.size() != right.args.size() || !sameName(left.name, right.name) ||
        left.query || right.query || left.type != right.type)
        return false;
    const bool qualified = !left.qualifier.isEmpty() && !right.qualifier.isEmpty();
    if (qualified && !sameName(left.qualifier, right.qualifier))
        return false;
    if (left.kind == ExpressionKind::Literal) {
        const Literal &a = literalOf(left);
        const Literal &b = literalOf(right);
        if (a.kind != b.kind || a.text != b.text)
            return false;
        if (!m_constants && left.literal >= 0 && left.literal != right.literal) {
            m_out.needs.push_back({left.literal, true});
            m_out.needs.push_back({right.literal, true});
        }
    }
    for (std::size_t i = 0; i < left.args.size(); ++i) {
        if (!sameExpression(*left.args[i], *right.args[i]))
            return false;
    }
    return true;
}

Operand Writer::negate(const Expression &node, const Scope &scope)
{
    Operand operand = value(*node.args[0], scope);
    const bool literal = operand.pending &&
                         (operand.pending->source == Parameter::Source::Literal ||
                          operand.pending->source == Parameter::Source::Constant) &&
                         operand.type.isNumber();
    if (literal) {
        operand.pending->negate = !operand.pending->negate;
        return operand;
    }
    if (operand.isNull())
        return operand;
    // Behind a sign stands a blank: the constants of a definition may begin with one too, and two begin a comment.
    if (operand.type.isDecimal())
        return made(u"dec_neg(%1)"_s.arg(text(operand)), operand.type);
    if (operand.type.isReal())
        return made(u"(- %1)"_s.arg(text(operand)), operand.type);
    if (operand.type.isInteger() && operand.type.kind != Kind::Bit) {
        const Kind kind = operand.type.kind == Kind::TinyInt ? Kind::SmallInt : operand.type.kind;
        return made(u"int_fit(- %1, %2)"_s.arg(text(operand), kindNumber(kind)), {kind});
    }
    throw Error(8117, {kindName(operand.type.kind), u"minus"_s});
}

Operand Writer::caseValue(const Expression &node, const Scope &scope)
{
    const std::size_t first = node.hasOperand ? 1 : 0;
    const std::size_t pairs = (node.args.size() - first) / 2;
    const bool hasElse = (node.args.size() - first) % 2 != 0;
    std::vector<QString> conditions;
    std::vector<Operand> results;
    for (std::size_t i = 0; i < pairs; ++i) {
        const Expression &when = *node.args[first + 2 * i];
        if (node.hasOperand) {
            Operand operand = repeated(*node.args[0], scope);
            Operand candidate = value(when, scope);
            conditions.push_back(compare(u"="_s, operand, candidate));
        } else {
            conditions.push_back(conditionText(when, scope));
        }
        results.push_back(value(*node.args[first + 2 * i + 1], scope));
    }
    if (hasElse)
        results.push_back(value(*node.args.back(), scope));
    SqlType type;
    for (Operand &result : results) {
        if (result.pending && result.type.isDecimal())
            need(*result.pending, false);
        type = commonType(type, result.type);
    }
    if (type.kind == Kind::Null)
        throw Error(8133, {}, node.line);
    QString sql = u"CASE"_s;
    for (std::size_t i = 0; i < pairs; ++i)
        sql += u" WHEN %1 THEN %2"_s.arg(conditions[i], convert(results[i], {type, {}, {}, {}}));
    if (hasElse)
        sql += u" ELSE %1"_s.arg(convert(results.back(), {type, {}, {}, {}}));
    return made(sql + u" END"_s, type);
}

Operand Writer::cast(const Expression &node, const Scope &scope)
{
    SqlType type = node.type;
    if ((type.isText() || type.isBinary()) && type.length == 0)
        type.length = 30;
    Operand operand = value(*node.args[0], scope);
    if (operand.isNull())
        return made(u"NULL"_s, type);
    if (node.args.size() > 1 && operand.type.isDate() && type.isText()) {
        Operand style = value(*node.args[1], scope);
        const QString kind = kindNumber(operand.type.kind);
        const QString shown =
            u"date_text(%1, %2, %3)"_s.arg(text(operand), kind, convert(style, {{Kind::Int}, {}, {}, {}}));
        return made(fitted(shown, SqlType::text(Kind::VarChar, 30), {type, {}, {}, {}}), type);
    }
    QString style;
    if (node.args.size() > 1) {
        const bool toDate = operand.type.isText() && type.isDate();
        const bool styled = operand.type.kind == Kind::Money || operand.type.isReal() || operand.type.isBinary() ||
                            (operand.type.isText() && type.isBinary());
        if (styled && !isWhole(*node.args[1], 0))
            throw notSupported(
                u"CONVERT of %1 to %2 with a style"_s.arg(kindName(operand.type.kind), kindName(type.kind)), node.line);
        if (styled && node.args[1]->literal >= 0 && !m_constants)
            m_out.needs.push_back({node.args[1]->literal, true});
        if (toDate)
            style = u", "_s + argumentAs(*node.args[1], scope, {Kind::Int});
    }
    if (!style.isEmpty()) {
        const QString kind = kindNumber(type.kind);
        const QString sql = text(operand);
        const QString date = u"date_of_text(%1, %2, %3%4)"_s.arg(sql, kind, kindNumber(operand.type.kind), style);
        return made(node.tryCast ? u"CASE WHEN can_convert(%1, %2, 0, 0%3) THEN %4 END"_s.arg(sql, kind, style, date)
                                 : date,
                    type);
    }
    if (node.tryCast) {
        // Conversions raise errors from within; a try asks first whether the text is such a value.
        if (!operand.type.isText() || type.isText())
            return made(convert(operand, {type, {}, {}, {}}), type);
        const QString sql = text(operand);
        return made(u"CASE WHEN can_convert(%1, %2, %3, %4) THEN %5 END"_s.arg(
                        sql, kindNumber(type.kind), QString::number(type.precision), QString::number(type.scale),
                        converted(made(sql, operand.type), {type, {}, {}, {}})),
                    type);
    }
    return made(convert(operand, {type, {}, {}, {}}), type);
}

Operand Writer::scalarSubquery(const Expression &node, const Scope &scope)
{
    refuseOrder(*node.query);
    const QueryText inner = query(*node.query, &scope);
    if (inner.columns.size() != 1)
        throw Error(116, {}, node.line);
    const ResultColumn &column = inner.columns.front();
    if (singleRow(*node.query))
        return made(u"(%1)"_s.arg(inner.sql), column.type);
    return made(u"(SELECT tsql_single(%1) FROM (%2))"_s.arg(quotedName(u"c1"_s), inner.sql), column.type);
}

} // namespace tsql
