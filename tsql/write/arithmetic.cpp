#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

/// A chain is walked along its left sides, not into them: a thousand terms are no deeper than two.
Operand Writer::Arithmetic(const Expression &node, const Scope &scope)
{
    std::vector<const Expression *> steps;
    const Expression *left = &node;
    do {
        steps.push_back(left);
        left = left->args[0].get();
    } while (left->kind == ExpressionKind::Arithmetic && !IsGrouped(*left, scope) && !m_rowValues.contains(left));
    Operand result = WriteValue(*left, scope);
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        try {
            Operand right = WriteValue(*(*step)->args[1], scope);
            result = ArithmeticOf((*step)->name[0], result, right);
        } catch (Error &error) {
            if (error.Line() == 0 && !m_constants)
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

QString ChainText(const Chain &chain)
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
Operand Writer::Chained(const Operand &left, const QString &a, const QString &b, Chain::Form form,
                        const QString &operation, const SqlType &type) const
{
    const bool text = form == Chain::Form::Text;
    const bool goesOn = left.chain && left.chain->form == form && (text || left.chain->count < MostTerms);
    const auto chain = goesOn ? left.chain : std::make_shared<Chain>();
    if (!goesOn) {
        chain->form = form;
        chain->terms = a;
        chain->operations = form == Chain::Form::Decimal ? QString::number(AsDecimal(left.type).scale) : QString();
        chain->count = 1;
    } else if (chain->count == MostTerms) {
        chain->closed += u"(%1) || "_s.arg(chain->terms);
        chain->terms.clear();
        chain->count = 0;
    }
    chain->terms += (chain->count == 0 ? QString() : text ? u" || "_s : u", "_s) + b;
    chain->operations += operation;
    ++chain->count;
    Operand result = Made(ChainText(*chain), type);
    result.chain = chain;
    return result;
}

Operand Writer::ArithmeticOf(QChar op, Operand &left, Operand &right)
{
    if (left.IsNull() && right.IsNull())
        return left;
    const bool textual = (left.type.IsText() || left.IsNull()) && (right.type.IsText() || right.IsNull());
    if (textual) {
        if (op == u'+')
            return Concatenation(left, right);
        const SqlType &type = left.IsNull() ? right.type : left.type;
        throw Error(8117, {KindName(type.kind), u"'%1'"_s.arg(op)});
    }
    if (left.type.IsDate() || right.type.IsDate())
        return DateArithmetic(op, left, right);
    const SqlType type = CommonType(left.type, right.type);
    if (type.IsInteger())
        return IntegerArithmetic(op, left, right, type);
    if (QStringView(u"&|^").contains(op) || !type.IsNumber())
        throw Error(402, {KindName(left.type.kind), KindName(right.type.kind), u"'%1'"_s.arg(op)});
    if (type.IsDecimal())
        return DecimalArithmetic(op, left, right);
    if (op == u'%')
        throw Error(402, {KindName(left.type.kind), KindName(right.type.kind), u"modulo"_s});
    const Target target{type, {}, {}, {}};
    const QString a = Convert(left, target);
    const QString b = Convert(right, target);
    Operand result = Chained(left, a, b, Chain::Form::Real, op, type);
    if (result.chain->count == 2)
        result.sql = op == u'/' ? u"real_div(%1, %2)"_s.arg(a, b) : u"real_fit(%1 %2 %3)"_s.arg(a, op, b);
    return result;
}

Operand Writer::Concatenation(Operand &left, Operand &right)
{
    const SqlType type = CommonType(left.type, right.type);
    const int limit = type.IsUnicode() ? 4000 : 8000;
    const bool unlimited = left.type.length == SqlType::Max || right.type.length == SqlType::Max;
    const int length = unlimited ? SqlType::Max : qMin(limit, left.type.length + right.type.length);
    const Kind kind = type.IsUnicode() ? Kind::NVarChar : Kind::VarChar;
    // Texts joined beyond what their type holds lose their end: once, at the end of the chain.
    const auto part = [&](Operand &operand) {
        const QString sql = text(operand);
        return unlimited || operand.whole.isEmpty() ? sql : operand.whole;
    };
    if (unlimited && !left.whole.isEmpty())
        left.chain.reset(); // what was cut off stays off
    const QString a = part(left);
    Operand result = Chained(left, a, part(right), Chain::Form::Text, {}, SqlType::text(kind, length));
    if (!unlimited && left.type.length + right.type.length > limit) {
        result.whole = result.sql;
        result.sql = u"text_cut(%1, %2)"_s.arg(result.whole, QString::number(limit));
    }
    return result;
}

Operand Writer::IntegerArithmetic(QChar op, Operand &left, Operand &right, const SqlType &common)
{
    const SqlType type{common.kind};
    const bool bitwise = QStringView(u"&|^").contains(op);
    if (type.kind == Kind::Bit && !bitwise) {
        static const QHash<QChar, QString> names = {
            {u'+', u"add"_s}, {u'-', u"subtract"_s}, {u'*', u"multiply"_s}, {u'/', u"divide"_s}, {u'%', u"modulo"_s}};
        throw Error(402, {u"bit"_s, u"bit"_s, names.value(op)});
    }
    const Target target{type, {}, {}, {}};
    const QString a = Convert(left, target);
    const QString b = Convert(right, target);
    const QString number = KindNumber(type.kind);
    Operand result = Chained(left, a, b, Chain::Form::Integer, op + number, type);
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
SqlType Writer::DecimalTypeOf(Operand &operand)
{
    const bool literal = operand.pending && operand.type.kind == Kind::Int && operand.type.precision > 0;
    if (operand.pending && (literal || operand.type.IsDecimal()))
        Need(*operand.pending, false);
    return literal ? SqlType::DecimalOf(operand.type.precision, 0) : AsDecimal(operand.type);
}

Operand Writer::DecimalArithmetic(QChar op, Operand &left, Operand &right)
{
    // A text takes the type of the number it meets.
    const bool money = (left.type.kind == Kind::Money || right.type.kind == Kind::Money) &&
                       left.type.kind != Kind::Decimal && right.type.kind != Kind::Decimal;
    const SqlType leftType = left.type.IsText() || left.IsNull() ? DecimalTypeOf(right) : DecimalTypeOf(left);
    const SqlType rightType = right.type.IsText() || right.IsNull() ? DecimalTypeOf(left) : DecimalTypeOf(right);
    SqlType type = money ? SqlType::Money() : DecimalResult(op, leftType, rightType);
    const QString a = Convert(left, {leftType, {}, {}, {}});
    const QString b = Convert(right, {rightType, {}, {}, {}});
    const QString sizes = QString::number(type.precision) + u',' + QString::number(type.scale);
    Operand start = Made(left.sql, leftType);
    start.chain = left.chain;
    Operand result =
        Chained(start, a, b, Chain::Form::Decimal, op + QString::number(rightType.scale) + u',' + sizes, type);
    if (result.chain->count > 2)
        return result;
    static const QHash<QChar, QString> names = {
        {u'+', u"dec_add"_s}, {u'-', u"dec_sub"_s}, {u'*', u"dec_mul"_s}, {u'/', u"dec_div"_s}, {u'%', u"dec_mod"_s}};
    result.sql = u"%1(%2, %3, %4, %5, %6)"_s.arg(names[op], a, QString::number(leftType.scale), b,
                                                 QString::number(rightType.scale), sizes);
    return result;
}

Operand Writer::DateArithmetic(QChar op, Operand &left, Operand &right)
{
    const bool dateFirst = left.type.kind == Kind::DateTime || left.type.kind == Kind::SmallDateTime;
    const bool days = right.type.IsInteger() || right.type.IsText();
    if ((op != u'+' && op != u'-') || !dateFirst || !days)
        throw Error(402, {KindName(left.type.kind), KindName(right.type.kind), u"'%1'"_s.arg(op)});
    const SqlType type = left.type;
    const QString count = Convert(right, {{Kind::Int}, {}, {}, {}});
    const QString sign = op == u'-' ? u"- "_s : QString();
    return Made(u"date_add('day', %1%2, %3, %4)"_s.arg(sign, count, text(left), KindNumber(type.kind)), type);
}

} // namespace tsql
