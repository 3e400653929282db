#include "tsql/values/collation.h"
#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

constexpr int MostRepeated = 20'000;

} // namespace

Operand Writer::Made(QString sql, const SqlType &type) const
{
    Operand operand;
    operand.sql = std::move(sql);
    operand.type = type;
    return operand;
}

Operand Writer::WriteValue(const Expression &node, const Scope &scope)
{
    try {
        Operand operand = ValueNode(node, scope);
        if (operand.type.kind == Kind::Condition)
            throw Error(wording::ConditionAsValue, {}, node.line);
        return operand;
    } catch (Error &error) {
        if (error.Line() == 0 && !m_constants)
            error.setLine(node.line);
        throw;
    }
}

/// An expression that is written more than once (x in NULLIF and BETWEEN): nested, it doubles with each level.
Operand Writer::Repeated(const Expression &node, const Scope &scope)
{
    if (++m_repeated > MostRepeated)
        throw NestedTooDeeply(node.line);
    return WriteValue(node, scope);
}

/// Whether the expression as a whole is one of the grouped ones, so that its columns need not be.
bool Writer::IsGrouped(const Expression &node, const Scope &scope)
{
    const bool whole = node.kind == ExpressionKind::Arithmetic || node.kind == ExpressionKind::Case ||
                       node.kind == ExpressionKind::Cast || node.kind == ExpressionKind::Function ||
                       node.kind == ExpressionKind::Negate;
    if (!scope.grouped || scope.inAggregate || scope.groupBy == nullptr || !whole)
        return false;
    for (const ExpressionPtr &item : *scope.groupBy) {
        if (SameExpression(*item, node))
            return true;
    }
    return false;
}

Operand Writer::ValueNode(const Expression &node, const Scope &scope)
{
    if (IsGrouped(node, scope)) {
        Scope inner = scope;
        inner.inAggregate = true;
        return ValueNode(node, inner);
    }
    if (const auto row = m_rowValues.constFind(&node); row != m_rowValues.cend())
        return VariableOf(*row, m_variables.value(*row));
    switch (node.kind) {
    case ExpressionKind::Literal:
        return WriteLiteral(node);
    case ExpressionKind::Null:
        return {};
    case ExpressionKind::Column:
        return WriteColumn(node, scope);
    case ExpressionKind::Variable:
        return WriteVariable(node);
    case ExpressionKind::Negate:
        return Negate(node, scope);
    case ExpressionKind::BitNot: {
        Operand operand = WriteValue(*node.args[0], scope);
        if (!operand.type.IsInteger())
            throw Error(8117, {KindName(operand.type.kind), u"'~'"_s});
        const QString form = operand.type.kind == Kind::Bit       ? u"(1 - %1)"_s
                             : operand.type.kind == Kind::TinyInt ? u"(255 - %1)"_s
                                                                  : u"(~%1)"_s;
        return Made(form.arg(text(operand)), operand.type);
    }
    case ExpressionKind::Arithmetic:
        return Arithmetic(node, scope);
    case ExpressionKind::Scalar:
        return ScalarSubquery(node, scope);
    case ExpressionKind::Case:
        return CaseValue(node, scope);
    case ExpressionKind::Cast:
        return WriteCast(node, scope);
    case ExpressionKind::Function:
        return WriteFunction(node, scope);
    case ExpressionKind::Collate:
        return Collate(node, scope);
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

Operand Writer::Collate(const Expression &node, const Scope &scope)
{
    Operand operand = WriteValue(*node.args[0], scope);
    if (!operand.type.IsText())
        throw Error(447, {KindName(operand.type.kind)});
    const QLatin1String name(CollationName(CollationNamed(node.name)));
    Operand result = Made(u"(%1 COLLATE %2)"_s.arg(text(operand), name), operand.type);
    result.column = true;
    return result;
}

namespace {

bool NamesSource(const Source &source, const QString &qualifier)
{
    return SameName(source.name, qualifier) || (!source.table.isEmpty() && SameName(source.table, qualifier));
}

} // namespace

Operand Writer::WriteColumn(const Expression &node, const Scope &scope)
{
    for (const Scope *level = &scope; level != nullptr; level = level->outer) {
        const SourceColumn *found = nullptr;
        for (const Source &source : level->sources) {
            if (!node.qualifier.isEmpty() && !NamesSource(source, node.qualifier))
                continue;
            for (const SourceColumn &candidate : source.columns) {
                if (!SameName(candidate.name, node.name))
                    continue;
                if (found != nullptr)
                    throw Error(209, {node.name}, node.line);
                found = &candidate;
            }
        }
        if (found == nullptr)
            continue;
        if (level->grouped && !level->inAggregate && !GroupedAway(node, *level))
            throw Error(8120, {node.name}, node.line);
        Operand operand = Made(found->sql, found->type);
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
bool Writer::GroupedAway(const Expression &node, const Scope &scope)
{
    if (scope.groupBy == nullptr)
        return false;
    for (const ExpressionPtr &item : *scope.groupBy) {
        if (item->kind == ExpressionKind::Column && SameName(item->name, node.name) &&
            (item->qualifier.isEmpty() || node.qualifier.isEmpty() || SameName(item->qualifier, node.qualifier)))
            return true;
    }
    return false;
}

bool Writer::SameExpression(const Expression &left, const Expression &right)
{
    if (left.kind != right.kind || left.args.size() != right.args.size() || !SameName(left.name, right.name) ||
        left.query || right.query || left.type != right.type)
        return false;
    const bool qualified = !left.qualifier.isEmpty() && !right.qualifier.isEmpty();
    if (qualified && !SameName(left.qualifier, right.qualifier))
        return false;
    if (left.kind == ExpressionKind::Literal) {
        const Literal &a = LiteralOf(left);
        const Literal &b = LiteralOf(right);
        if (a.kind != b.kind || a.text != b.text)
            return false;
        if (!m_constants && left.literal >= 0 && left.literal != right.literal) {
            m_out.needs.push_back({left.literal, true});
            m_out.needs.push_back({right.literal, true});
        }
    }
    for (std::size_t i = 0; i < left.args.size(); ++i) {
        if (!SameExpression(*left.args[i], *right.args[i]))
            return false;
    }
    return true;
}

Operand Writer::Negate(const Expression &node, const Scope &scope)
{
    Operand operand = WriteValue(*node.args[0], scope);
    const bool literal = operand.pending &&
                         (operand.pending->source == Parameter::Source::Literal ||
                          operand.pending->source == Parameter::Source::Constant) &&
                         operand.type.IsNumber();
    if (literal) {
        operand.pending->negate = !operand.pending->negate;
        return operand;
    }
    if (operand.IsNull())
        return operand;
    // Behind a sign stands a blank: the constants of a definition may begin with one too, and two begin a comment.
    if (operand.type.IsDecimal())
        return Made(u"dec_neg(%1)"_s.arg(text(operand)), operand.type);
    if (operand.type.IsReal())
        return Made(u"(- %1)"_s.arg(text(operand)), operand.type);
    if (operand.type.IsInteger() && operand.type.kind != Kind::Bit) {
        const Kind kind = operand.type.kind == Kind::TinyInt ? Kind::SmallInt : operand.type.kind;
        return Made(u"int_fit(- %1, %2)"_s.arg(text(operand), KindNumber(kind)), {kind});
    }
    throw Error(8117, {KindName(operand.type.kind), u"minus"_s});
}

Operand Writer::CaseValue(const Expression &node, const Scope &scope)
{
    const std::size_t first = node.hasOperand ? 1 : 0;
    const std::size_t pairs = (node.args.size() - first) / 2;
    const bool hasElse = (node.args.size() - first) % 2 != 0;
    std::vector<QString> conditions;
    std::vector<Operand> results;
    for (std::size_t i = 0; i < pairs; ++i) {
        const Expression &when = *node.args[first + 2 * i];
        if (node.hasOperand) {
            Operand operand = Repeated(*node.args[0], scope);
            Operand candidate = WriteValue(when, scope);
            conditions.push_back(Compare(u"="_s, operand, candidate));
        } else {
            conditions.push_back(ConditionText(when, scope));
        }
        results.push_back(WriteValue(*node.args[first + 2 * i + 1], scope));
    }
    if (hasElse)
        results.push_back(WriteValue(*node.args.back(), scope));
    SqlType type;
    for (Operand &result : results) {
        if (result.pending && result.type.IsDecimal())
            Need(*result.pending, false);
        type = CommonType(type, result.type);
    }
    if (type.kind == Kind::Null)
        throw Error(8133, {}, node.line);
    QString sql = u"CASE"_s;
    for (std::size_t i = 0; i < pairs; ++i)
        sql += u" WHEN %1 THEN %2"_s.arg(conditions[i], Convert(results[i], {type, {}, {}, {}}));
    if (hasElse)
        sql += u" ELSE %1"_s.arg(Convert(results.back(), {type, {}, {}, {}}));
    return Made(sql + u" END"_s, type);
}

Operand Writer::WriteCast(const Expression &node, const Scope &scope)
{
    SqlType type = node.type;
    if ((type.IsText() || type.IsBinary()) && type.length == 0)
        type.length = 30;
    Operand operand = WriteValue(*node.args[0], scope);
    if (operand.IsNull())
        return Made(u"NULL"_s, type);
    if (node.args.size() > 1 && operand.type.IsDate() && type.IsText()) {
        Operand style = WriteValue(*node.args[1], scope);
        const QString kind = KindNumber(operand.type.kind);
        const QString shown =
            u"date_text(%1, %2, %3)"_s.arg(text(operand), kind, Convert(style, {{Kind::Int}, {}, {}, {}}));
        return Made(Fitted(shown, SqlType::text(Kind::VarChar, 30), {type, {}, {}, {}}), type);
    }
    QString style;
    if (node.args.size() > 1) {
        const bool toDate = operand.type.IsText() && type.IsDate();
        const bool styled = operand.type.kind == Kind::Money || operand.type.IsReal() || operand.type.IsBinary() ||
                            (operand.type.IsText() && type.IsBinary());
        if (styled && !IsWhole(*node.args[1], 0))
            throw NotSupported(
                u"CONVERT of %1 to %2 with a style"_s.arg(KindName(operand.type.kind), KindName(type.kind)), node.line);
        if (styled && node.args[1]->literal >= 0 && !m_constants)
            m_out.needs.push_back({node.args[1]->literal, true});
        if (toDate)
            style = u", "_s + ArgumentAs(*node.args[1], scope, {Kind::Int});
    }
    if (!style.isEmpty()) {
        const QString kind = KindNumber(type.kind);
        const QString sql = text(operand);
        const QString date = u"date_of_text(%1, %2, %3%4)"_s.arg(sql, kind, KindNumber(operand.type.kind), style);
        return Made(node.tryCast ? u"CASE WHEN can_convert(%1, %2, 0, 0%3) THEN %4 END"_s.arg(sql, kind, style, date)
                                 : date,
                    type);
    }
    if (node.tryCast) {
        // Conversions raise errors from within; a try asks first whether the text is such a value.
        if (!operand.type.IsText() || type.IsText())
            return Made(Convert(operand, {type, {}, {}, {}}), type);
        const QString sql = text(operand);
        return Made(u"CASE WHEN can_convert(%1, %2, %3, %4) THEN %5 END"_s.arg(
                        sql, KindNumber(type.kind), QString::number(type.precision), QString::number(type.scale),
                        Converted(Made(sql, operand.type), {type, {}, {}, {}})),
                    type);
    }
    return Made(Convert(operand, {type, {}, {}, {}}), type);
}

Operand Writer::ScalarSubquery(const Expression &node, const Scope &scope)
{
    RefuseOrder(*node.query);
    const QueryText inner = WriteQuery(*node.query, &scope);
    if (inner.columns.size() != 1)
        throw Error(116, {}, node.line);
    const ResultColumn &column = inner.columns.front();
    if (SingleRow(*node.query))
        return Made(u"(%1)"_s.arg(inner.sql), column.type);
    return Made(u"(SELECT tsql_single(%1) FROM (%2))"_s.arg(QuotedName(u"c1"_s), inner.sql), column.type);
}

} // namespace tsql
