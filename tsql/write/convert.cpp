#include "tsql/values/convert.h"

#include "tsql/text/literals.h"
#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

QString Number(int value)
{
    return QString::number(value);
}

constexpr int RealWidth = 24;

/// The most characters that a whole number of a kind prints, its sign included.
int IntegerWidth(Kind kind)
{
    switch (kind) {
    case Kind::Bit:
        return 1;
    case Kind::TinyInt:
        return 3;
    case Kind::SmallInt:
        return 6;
    case Kind::Int:
        return 11;
    default:
        return 20;
    }
}

QString Sizes(const SqlType &type)
{
    return u"%1, %2"_s.arg(type.precision).arg(type.scale);
}

} // namespace

/// A constant written into the text: only data definition has no parameters.
QString Writer::ConstantText(const Parameter &parameter) const
{
    if (parameter.source != Parameter::Source::Constant && parameter.source != Parameter::Source::Literal)
        throw Error(wording::VariableInDefinition);
    const SqlType from = LiteralType(parameter.value);
    const Value value =
        tsql::Convert(LiteralValue(parameter.value, parameter.negate), from, {parameter.type, false, {}, {}});
    switch (value.form) {
    case Value::Form::Null:
        return u"NULL"_s;
    case Value::Form::Integer:
        return QString::number(value.integer);
    case Value::Form::Real:
        return QString::number(value.real, 'g', 17);
    case Value::Form::Text:
        return QuotedText(QString::fromUtf8(value.bytes));
    case Value::Form::Blob:
        return u"x'%1'"_s.arg(QString::fromLatin1(value.bytes.toHex()));
    }
    return {};
}

/// The operand in its own type.
QString Writer::text(Operand &operand)
{
    if (operand.IsNull())
        return u"NULL"_s;
    if (operand.pending) {
        Parameter parameter = *operand.pending;
        operand.pending.reset();
        const bool typed = operand.type.IsDecimal() && parameter.source == Parameter::Source::Literal;
        if (typed)
            Need(parameter, false);
        parameter.type = operand.type;
        operand.sql = this->AddParameter(std::move(parameter));
    }
    return operand.sql;
}

/// The operand with the collation of the database, for places where SQLite compares it.
QString Writer::Collated(Operand &operand)
{
    const QString sql = text(operand);
    const bool plain = operand.column || !(operand.type.IsText() || operand.type.kind == Kind::UniqueIdentifier);
    return plain ? sql : sql + u" COLLATE TSQL_CI"_s;
}

QString Writer::Convert(Operand &operand, const Target &target)
{
    if (operand.IsNull())
        return u"NULL"_s;
    if (operand.type.kind == Kind::Condition)
        throw Error(wording::ConditionAsValue);
    if (operand.pending) {
        // Literals and variables are converted once, when they are bound.
        Parameter parameter = *operand.pending;
        operand.pending.reset();
        parameter.type = target.type;
        parameter.conversion = target.conversion;
        parameter.table = target.table;
        parameter.column = target.column;
        return this->AddParameter(std::move(parameter));
    }
    if (operand.type == target.type)
        return operand.sql;
    return Converted(operand, target);
}

QString Writer::Converted(const Operand &operand, const Target &target)
{
    const SqlType &from = operand.type;
    if (from.IsInteger())
        return FromInteger(operand, target);
    if (from.IsDecimal())
        return FromDecimal(operand, target);
    if (from.IsReal())
        return FromReal(operand, target);
    if (from.IsText())
        return FromText(operand, target);
    if (from.IsDate())
        return FromDate(operand, target);
    if (from.kind == Kind::UniqueIdentifier) {
        if (target.type.IsText())
            return Fitted(operand.sql, SqlType::text(Kind::Char, 36), target);
        if (target.type.kind == Kind::UniqueIdentifier)
            return operand.sql;
    }
    if (from.IsBinary()) {
        if (target.type.IsBinary())
            return operand.sql;
        if (target.type.IsText())
            return Fitted(u"text_of_binary(%1)"_s.arg(operand.sql), SqlType::text(Kind::VarChar, SqlType::Max), target);
    }
    NoConversion(from, target.type);
}

void Writer::NoConversion(const SqlType &from, const SqlType &to) const
{
    throw Error(529, {KindName(from.kind), KindName(to.kind)});
}

QString Writer::FromInteger(const Operand &operand, const Target &target)
{
    const SqlType &to = target.type;
    if (to.kind == Kind::Bit)
        return operand.type.kind == Kind::Bit ? operand.sql : u"bit_of(%1)"_s.arg(operand.sql);
    if (to.IsInteger())
        return to.kind >= operand.type.kind ? operand.sql : u"int_fit(%1, %2)"_s.arg(operand.sql, KindNumber(to.kind));
    if (to.IsDecimal())
        return u"dec_of_int(%1, %2)"_s.arg(operand.sql, Sizes(to));
    if (to.IsReal())
        return u"CAST(%1 AS REAL)"_s.arg(operand.sql);
    if (to.IsText())
        return NumberText(u"text_of_int(%1)"_s.arg(operand.sql), operand.type, IntegerWidth(operand.type.kind), target);
    if (to.kind == Kind::DateTime || to.kind == Kind::SmallDateTime)
        return u"date_add('day', %1, '1900-01-01 00:00:00.000', %2)"_s.arg(operand.sql, KindNumber(to.kind));
    NoConversion(operand.type, to);
}

QString Writer::FromDecimal(const Operand &operand, const Target &target)
{
    const SqlType &to = target.type;
    const SqlType &from = operand.type;
    if (to.kind == Kind::Bit)
        return u"dec_to_bit(%1)"_s.arg(operand.sql);
    if (to.IsInteger())
        return u"dec_to_int(%1, %2, %3)"_s.arg(operand.sql, Number(from.scale), KindNumber(to.kind));
    if (to.IsDecimal()) {
        const bool same = to.scale == from.scale && to.precision >= from.precision;
        return same ? operand.sql : u"dec_rescale(%1, %2, %3)"_s.arg(operand.sql, Number(from.scale), Sizes(to));
    }
    if (to.IsReal())
        return u"dec_to_real(%1, %2)"_s.arg(operand.sql, Number(from.scale));
    if (to.IsText()) {
        const QString shown = from.kind == Kind::Money ? u"dec_text(dec_rescale(%1, 4, 38, 2), 2)"_s.arg(operand.sql)
                                                       : u"dec_text(%1, %2)"_s.arg(operand.sql, Number(from.scale));
        return NumberText(shown, from, from.precision + 3, target);
    }
    NoConversion(from, to);
}

QString Writer::FromReal(const Operand &operand, const Target &target)
{
    const SqlType &to = target.type;
    if (to.kind == Kind::Bit)
        return u"bit_of(%1)"_s.arg(operand.sql);
    if (to.IsInteger())
        return u"int_of_real(%1, %2)"_s.arg(operand.sql, KindNumber(to.kind));
    if (to.IsDecimal())
        return u"dec_of_real(%1, %2)"_s.arg(operand.sql, Sizes(to));
    if (to.IsReal())
        return operand.sql;
    if (to.IsText())
        return NumberText(u"text_of_real(%1)"_s.arg(operand.sql), operand.type, RealWidth, target);
    NoConversion(operand.type, to);
}

QString Writer::FromText(const Operand &operand, const Target &target)
{
    const SqlType &to = target.type;
    const QString source = KindNumber(operand.type.kind);
    if (to.kind == Kind::Bit)
        return u"bit_of_text(%1, %2)"_s.arg(operand.sql, source);
    if (to.IsInteger())
        return u"int_of_text(%1, %2, %3)"_s.arg(operand.sql, KindNumber(to.kind), source);
    if (to.IsDecimal())
        return u"dec_of_text(%1, %2, %3)"_s.arg(operand.sql, Sizes(to), source);
    if (to.IsReal())
        return u"real_of_text(%1, %2)"_s.arg(operand.sql, source);
    if (to.IsDate())
        return u"date_of_text(%1, %2, %3)"_s.arg(operand.sql, KindNumber(to.kind), source);
    if (to.IsText())
        return Fitted(operand.sql, operand.type, target);
    if (to.IsBinary())
        return u"binary_of_text(%1)"_s.arg(operand.sql);
    if (to.kind == Kind::UniqueIdentifier)
        return operand.sql;
    NoConversion(operand.type, to);
}

QString Writer::FromDate(const Operand &operand, const Target &target)
{
    const SqlType &to = target.type;
    if (to.IsDate())
        return u"date_fit(%1, %2)"_s.arg(operand.sql, KindNumber(to.kind));
    if (to.IsText())
        return Fitted(u"date_text(%1, %2, 0)"_s.arg(operand.sql, KindNumber(operand.type.kind)),
                      SqlType::text(Kind::VarChar, 30), target);
    NoConversion(operand.type, to);
}

/// The text of a number, which has to fit whole: cut digits would be another number.
QString Writer::NumberText(const QString &sql, const SqlType &from, int width, const Target &target)
{
    const SqlType &to = target.type;
    const bool fits = to.length == SqlType::Max || width <= to.length;
    const QString whole =
        fits ? sql
             : u"number_text(%1, %2, %3, %4)"_s.arg(sql, Number(to.length), KindNumber(from.kind), KindNumber(to.kind));
    return to.IsFixedText() ? u"text_pad(%1, %2)"_s.arg(whole, Number(to.length)) : whole;
}

/// A text of type `from` brought to the length of the target: refused when it goes to a column, cut otherwise.
QString Writer::Fitted(const QString &sql, const SqlType &from, const Target &target)
{
    const SqlType &to = target.type;
    if (to.length == SqlType::Max)
        return sql;
    const bool fits = from.length != SqlType::Max && from.length <= to.length;
    QString result = sql;
    if (!fits && target.conversion == Conversion::Assign)
        result = u"text_fit(%1, %2, %3, %4)"_s.arg(sql, Number(to.length), QuotedText(target.table),
                                                   QuotedText(target.column));
    else if (!fits)
        result = u"text_cut(%1, %2)"_s.arg(sql, Number(to.length));
    if (to.IsFixedText())
        result = u"text_pad(%1, %2)"_s.arg(result, Number(to.length));
    return result;
}

} // namespace tsql
