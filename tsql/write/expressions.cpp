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

/// A chain is walked along its left sides, not into them: a thousand terms are no deeper than two.
Operand Writer::arithmetic(const Expression &node, const Scope &scope)
{
    std::vector<const Expression *> steps;
    const Expression *left = &node;
    do {
        steps.push_back(left);
        left = left->args[0].get();
    } while (left->kind == ExpressionKind::Arithmetic && !isGrouped(*left, scope) && !m_rowValues.contains(left));
    Operand result = value(*left, scope);
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        try {
            Operand right = value(*(*step)->args[1], scope);
            result = arithmeticOf((*step)->name[0], result, right);
        } catch (Error &error) {
            if (error.line() == 0 && !m_constants)
                error.setLine((*step)->line);
            throw;
        }
    }
    result.chain.reset(); // parentheses around it close it
    return result;
}

namespace {

/// SQLite takes 127 arguments.
constexpr int MostTerms = 100;

QString chainText(const Chain &chain)
{
    switch (chain.form) {
    case Chain::Form::Integer:
        return u"int_chain('%1', %2)"_s.arg(chain.operations, chain.terms);
    case Chain::Form::Decimal:
        return u"dec_chain('%1', %2)"_s.arg(chain.operations, chain.terms);
    case Chain::Form::Real:
        return u"real_chain('%1', %2)"_s.arg(chain.operations, chain.terms);
    case Chain::Form::Text:
        break;
    }
    return chain.closed.isEmpty() ? u"(%1)"_s.arg(chain.terms) : u"(%1(%2))"_s.arg(chain.closed, chain.terms);
}

} // namespace

/// The chain on the left with a further term, or the start of one. `operation` is what the form's function reads for
/// this step: the operator, the number of the result's kind behind it ("+4"), or scales and precision ("+2,19,2");
/// a decimal chain starts with the scale of its first term.
Operand Writer::chained(const Operand &left, const QString &a, const QString &b, Chain::Form form,
                        const QString &operation, const SqlType &type) const
{
    const bool text = form == Chain::Form::Text;
    const bool goesOn = left.chain && left.chain->form == form && (text || left.chain->count < MostTerms);
    const auto chain = goesOn ? left.chain : std::make_shared<Chain>();
    if (!goesOn) {
        chain->form = form;
        chain->terms = a;
        chain->operations = form == Chain::Form::Decimal ? QString::number(asDecimal(left.type).scale) : QString();
        chain->count = 1;
    } else if (chain->count == MostTerms) {
        chain->closed += u"(%1) || "_s.arg(chain->terms);
        chain->terms.clear();
        chain->count = 0;
    }
    chain->terms += (chain->count == 0 ? QString() : text ? u" || "_s : u", "_s) + b;
    chain->operations += operation;
    ++chain->count;
    Operand result = made(chainText(*chain), type);
    result.chain = chain;
    return result;
}

Operand Writer::arithmeticOf(QChar op, Operand &left, Operand &right)
{
    if (left.isNull() && right.isNull())
        return left;
    const bool textual = (left.type.isText() || left.isNull()) && (right.type.isText() || right.isNull());
    if (textual) {
        if (op == u'+')
            return concatenation(left, right);
        const SqlType &type = left.isNull() ? right.type : left.type;
        throw Error(8117, {kindName(type.kind), u"'%1'"_s.arg(op)});
    }
    if (left.type.isDate() || right.type.isDate())
        return dateArithmetic(op, left, right);
    const SqlType type = commonType(left.type, right.type);
    if (type.isInteger())
        return integerArithmetic(op, left, right, type);
    if (QStringView(u"&|^").contains(op) || !type.isNumber())
        throw Error(402, {kindName(left.type.kind), kindName(right.type.kind), u"'%1'"_s.arg(op)});
    if (type.isDecimal())
        return decimalArithmetic(op, left, right);
    if (op == u'%')
        throw Error(402, {kindName(left.type.kind), kindName(right.type.kind), u"modulo"_s});
    const Target target{type, {}, {}, {}};
    const QString a = convert(left, target);
    const QString b = convert(right, target);
    Operand result = chained(left, a, b, Chain::Form::Real, op, type);
    if (result.chain->count == 2)
        result.sql = op == u'/' ? u"real_div(%1, %2)"_s.arg(a, b) : u"real_fit(%1 %2 %3)"_s.arg(a, op, b);
    return result;
}

Operand Writer::concatenation(Operand &left, Operand &right)
{
    const SqlType type = commonType(left.type, right.type);
    const int limit = type.isUnicode() ? 4000 : 8000;
    const bool unlimited = left.type.length == SqlType::Max || right.type.length == SqlType::Max;
    const int length = unlimited ? SqlType::Max : qMin(limit, left.type.length + right.type.length);
    const Kind kind = type.isUnicode() ? Kind::NVarChar : Kind::VarChar;
    // Texts joined beyond what their type holds lose their end: once, at the end of the chain.
    const auto part = [&](Operand &operand) {
        const QString sql = text(operand);
        return unlimited || operand.whole.isEmpty() ? sql : operand.whole;
    };
    if (unlimited && !left.whole.isEmpty())
        left.chain.reset(); // what was cut off stays off
    const QString a = part(left);
    Operand result = chained(left, a, part(right), Chain::Form::Text, {}, SqlType::text(kind, length));
    if (!unlimited && left.type.length + right.type.length > limit) {
        result.whole = result.sql;
        result.sql = u"text_cut(%1, %2)"_s.arg(result.whole, QString::number(limit));
    }
    return result;
}

Operand Writer::integerArithmetic(QChar op, Operand &left, Operand &right, const SqlType &common)
{
    const SqlType type{common.kind};
    const bool bitwise = QStringView(u"&|^").contains(op);
    if (type.kind == Kind::Bit && !bitwise) {
        static const QHash<QChar, QString> names = {
            {u'+', u"add"_s}, {u'-', u"subtract"_s}, {u'*', u"multiply"_s}, {u'/', u"divide"_s}, {u'%', u"modulo"_s}};
        throw Error(402, {u"bit"_s, u"bit"_s, names.value(op)});
    }
    const Target target{type, {}, {}, {}};
    const QString a = convert(left, target);
    const QString b = convert(right, target);
    const QString number = kindNumber(type.kind);
    Operand result = chained(left, a, b, Chain::Form::Integer, op + number, type);
    if (result.chain->count > 2 || op == u'^')
        return result;
    if (op == u'/')
        result.sql = u"int_fit(int_div(%1, %2), %3)"_s.arg(a, b, number);
    else if (op == u'%')
        result.sql = u"int_mod(%1, %2)"_s.arg(a, b);
    else if (bitwise)
        result.sql = u"(%1 %2 %3)"_s.arg(a, op, b);
    else
        result.sql = u"int_fit(%1 %2 %3, %4)"_s.arg(a, op, b, number);
    return result;
}

/// The operand's type as a decimal. A whole literal counts its own digits, which then belong to the statement.
SqlType Writer::decimalTypeOf(Operand &operand)
{
    const bool literal = operand.pending && operand.type.kind == Kind::Int && operand.type.precision > 0;
    if (operand.pending && (literal || operand.type.isDecimal()))
        need(*operand.pending, false);
    return literal ? SqlType::decimal(operand.type.precision, 0) : asDecimal(operand.type);
}

Operand Writer::decimalArithmetic(QChar op, Operand &left, Operand &right)
{
    // A text takes the type of the number it meets.
    const bool money = (left.type.kind == Kind::Money || right.type.kind == Kind::Money) &&
                       left.type.kind != Kind::Decimal && right.type.kind != Kind::Decimal;
    const SqlType leftType = left.type.isText() || left.isNull() ? decimalTypeOf(right) : decimalTypeOf(left);
    const SqlType rightType = right.type.isText() || right.isNull() ? decimalTypeOf(left) : decimalTypeOf(right);
    SqlType type = money ? SqlType::money() : decimalResult(op, leftType, rightType);
    const QString a = convert(left, {leftType, {}, {}, {}});
    const QString b = convert(right, {rightType, {}, {}, {}});
    const QString sizes = QString::number(type.precision) + u',' + QString::number(type.scale);
    Operand start = made(left.sql, leftType);
    start.chain = left.chain;
    Operand result =
        chained(start, a, b, Chain::Form::Decimal, op + QString::number(rightType.scale) + u',' + sizes, type);
    if (result.chain->count > 2)
        return result;
    static const QHash<QChar, QString> names = {
        {u'+', u"dec_add"_s}, {u'-', u"dec_sub"_s}, {u'*', u"dec_mul"_s}, {u'/', u"dec_div"_s}, {u'%', u"dec_mod"_s}};
    result.sql = u"%1(%2, %3, %4, %5, %6)"_s.arg(names[op], a, QString::number(leftType.scale), b,
                                                 QString::number(rightType.scale), sizes);
    return result;
}

Operand Writer::dateArithmetic(QChar op, Operand &left, Operand &right)
{
    const bool dateFirst = left.type.kind == Kind::DateTime || left.type.kind == Kind::SmallDateTime;
    const bool days = right.type.isInteger() || right.type.isText();
    if ((op != u'+' && op != u'-') || !dateFirst || !days)
        throw Error(402, {kindName(left.type.kind), kindName(right.type.kind), u"'%1'"_s.arg(op)});
    const SqlType type = left.type;
    const QString count = convert(right, {{Kind::Int}, {}, {}, {}});
    const QString sign = op == u'-' ? u"- "_s : QString();
    return made(u"date_add('day', %1%2, %3, %4)"_s.arg(sign, count, text(left), kindNumber(type.kind)), type);
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
