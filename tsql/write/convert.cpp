#include "tsql/values/convert.h"

#include "tsql/text/literals.h"
#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

QString number(int value)
{
    return QString::number(value);
}

constexpr int RealWidth = 24;

/// The most characters that a whole number of a kind prints, its sign included.
int integerWidth(Kind kind)
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

QString sizes(const SqlType &type)
{
    return u"%1, %2"_s.arg(type.precision).arg(type.scale);
}

} // namespace

/// A constant written into the text: only data definition has no parameters.
QString Writer::constantText(const Parameter &parameter) const
{
    if (parameter.source != Parameter::Source::Constant && parameter.source != Parameter::Source::Literal)
        throw Error(wording::VariableInDefinition);
    const SqlType from = literalType(parameter.value);
    const Value value =
        tsql::convert(literalValue(parameter.value, parameter.negate), from, {parameter.type, false, {}, {}});
    switch (value.form) {
    case Value::Form::Null:
        return u"NULL"_s;
    case Value::Form::Integer:
        return QString::number(value.integer);
    case Value::Form::Real:
        return QString::number(value.real, 'g', 17);
    case Value::Form::Text:
        return quotedText(QString::fromUtf8(value.bytes));
    case Value::Form::Blob:
        return u"x'%1'"_s.arg(QString::fromLatin1(value.bytes.toHex()));
    }
    return {};
}

/// The operand in its own type.
QString Writer::text(Operand &operand)
{
    if (operand.isNull())
        return u"NULL"_s;
    if (operand.pending) {
        Parameter parameter = *operand.pending;
        operand.pending.reset();
        const bool typed = operand.type.isDecimal() && parameter.source == Parameter::Source::Literal;
        if (typed)
            need(parameter, false);
        parameter.type = operand.type;
        operand.sql = this->parameter(std::move(parameter));
    }
    return operand.sql;
}

/// The operand with the collation of the database, for places where SQLite compares it.
QString Writer::collated(Operand &operand)
{
    const QString sql = text(operand);
    const bool plain = operand.column || !(operand.type.isText() || operand.type.kind == Kind::UniqueIdentifier);
    return plain ? sql : sql + u" COLLATE TSQL_CI"_s;
}

QString Writer::convert(Operand &operand, const Target &target)
{
    if (operand.isNull())
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
        return this->parameter(std::move(parameter));
    }
    if (operand.type == target.type)
        return operand.sql;
    return converted(operand, target);
}

QString Writer::converted(const Operand &operand, const Target &target)
{
    const SqlType &from = operand.type;
    if (from.isInteger())
        return fromInteger(operand, target);
    if (from.isDecimal())
        return fromDecimal(operand, target);
    if (from.isReal())
        return fromReal(operand, target);
    if (from.isText())
        return fromText(operand, target);
    if (from.isDate())
        return fromDate(operand, target);
    if (from.kind == Kind::UniqueIdentifier) {
        if (target.type.isText())
            return fitted(operand.sql, SqlType::text(Kind::Char, 36), target);
        if (target.type.kind == Kind::UniqueIdentifier)
            return operand.sql;
    }
    if (from.isBinary()) {
        if (target.type.isBinary())
            return operand.sql;
        if (target.type.isText())
            return fitted(u"text_of_binary(%1)"_s.arg(operand.sql), SqlType::text(Kind::VarChar, SqlType::Max), target);
    }
    noConversion(from, target.type);
}

void Writer::noConversion(const SqlType &from, const SqlType &to) const
{
    throw Error(529, {kindName(from.kind), kindName(to.kind)});
}

QString Writer::fromInteger(const Operand &operand, const Target &target)
{
    const SqlType &to = target.type;
    if (to.kind == Kind::Bit)
        return operand.type.kind == Kind::Bit ? operand.sql : u"bit_of(%1)"_s.arg(operand.sql);
    if (to.isInteger())
        return to.kind >= operand.type.kind ? operand.sql : u"int_fit(%1, %2)"_s.arg(operand.sql, kindNumber(to.kind));
    if (to.isDecimal())
        return u"dec_of_int(%1, %2)"_s.arg(operand.sql, sizes(to));
    if (to.isReal())
        return u"CAST(%1 AS REAL)"_s.arg(operand.sql);
    if (to.isText())
        return numberText(u"text_of_int(%1)"_s.arg(operand.sql), operand.type, integerWidth(operand.type.kind), target);
    if (to.kind == Kind::DateTime || to.kind == Kind::SmallDateTime)
        return u"date_add('day', %1, '1900-01-01 00:00:00.000', %2)"_s.arg(operand.sql, kindNumber(to.kind));
    noConversion(operand.type, to);
}

QString Writer::fromDecimal(const Operand &operand, const Target &target)
{
    const SqlType &to = target.type;
    const SqlType &from = operand.type;
    if (to.kind == Kind::Bit)
        return u"dec_to_bit(%1)"_s.arg(operand.sql);
    if (to.isInteger())
        return u"dec_to_int(%1, %2, %3)"_s.arg(operand.sql, number(from.scale), kindNumber(to.kind));
    if (to.isDecimal()) {
        const bool same = to.scale == from.scale && to.precision >= from.precision;
        return same ? operand.sql : u"dec_rescale(%1, %2, %3)"_s.arg(operand.sql, number(from.scale), sizes(to));
    }
    if (to.isReal())
        return u"dec_to_real(%1, %2)"_s.arg(operand.sql, number(from.scale));
    if (to.isText()) {
        const QString shown = from.kind == Kind::Money ? u"dec_text(dec_rescale(%1, 4, 38, 2), 2)"_s.arg(operand.sql)
                                                       : u"dec_text(%1, %2)"_s.arg(operand.sql, number(from.scale));
        return numberText(shown, from, from.precision + 3, target);
    }
    noConversion(from, to);
}

QString Writer::fromReal(const Operand &operand, const Target &target)
{
    const SqlType &to = target.type;
    if (to.kind == Kind::Bit)
        return u"bit_of(%1)"_s.arg(operand.sql);
    if (to.isInteger())
        return u"int_of_real(%1, %2)"_s.arg(operand.sql, kindNumber(to.kind));
    if (to.isDecimal())
        return u"dec_of_real(%1, %2)"_s.arg(operand.sql, sizes(to));
    if (to.isReal())
        return operand.sql;
    if (to.isText())
        return numberText(u"text_of_real(%1)"_s.arg(operand.sql), operand.type, RealWidth, target);
    noConversion(operand.type, to);
}

QString Writer::fromText(const Operand &operand, const Target &target)
{
    const SqlType &to = target.type;
    const QString source = kindNumber(operand.type.kind);
    if (to.kind == Kind::Bit)
        return u"bit_of_text(%1, %2)"_s.arg(operand.sql, source);
    if (to.isInteger())
        return u"int_of_text(%1, %2, %3)"_s.arg(operand.sql, kindNumber(to.kind), source);
    if (to.isDecimal())
        return u"dec_of_text(%1, %2, %3)"_s.arg(operand.sql, sizes(to), source);
    if (to.isReal())
        return u"real_of_text(%1, %2)"_s.arg(operand.sql, source);
    if (to.isDate())
        return u"date_of_text(%1, %2, %3)"_s.arg(operand.sql, kindNumber(to.kind), source);
    if (to.isText())
        return fitted(operand.sql, operand.type, target);
    if (to.isBinary())
        return u"binary_of_text(%1)"_s.arg(operand.sql);
    if (to.kind == Kind::UniqueIdentifier)
        return operand.sql;
    noConversion(operand.type, to);
}

QString Writer::fromDate(const Operand &operand, const Target &target)
{
    const SqlType &to = target.type;
    if (to.isDate())
        return u"date_fit(%1, %2)"_s.arg(operand.sql, kindNumber(to.kind));
    if (to.isText())
        return fitted(u"date_text(%1, %2, 0)"_s.arg(operand.sql, kindNumber(operand.type.kind)),
                      SqlType::text(Kind::VarChar, 30), target);
    noConversion(operand.type, to);
}

/// The text of a number, which has to fit whole: cut digits would be another number.
QString Writer::numberText(const QString &sql, const SqlType &from, int width, const Target &target)
{
    const SqlType &to = target.type;
    const bool fits = to.length == SqlType::Max || width <= to.length;
    const QString whole =
        fits ? sql
             : u"number_text(%1, %2, %3, %4)"_s.arg(sql, number(to.length), kindNumber(from.kind), kindNumber(to.kind));
    return to.isFixedText() ? u"text_pad(%1, %2)"_s.arg(whole, number(to.length)) : whole;
}

/// A text of type `from` brought to the length of the target: refused when it goes to a column, cut otherwise.
QString Writer::fitted(const QString &sql, const SqlType &from, const Target &target)
{
    const SqlType &to = target.type;
    if (to.length == SqlType::Max)
        return sql;
    const bool fits = from.length != SqlType::Max && from.length <= to.length;
    QString result = sql;
    if (!fits && target.conversion == Conversion::Assign)
        result = u"text_fit(%1, %2, %3, %4)"_s.arg(sql, number(to.length), quotedText(target.table),
                                                   quotedText(target.column));
    else if (!fits)
        result = u"text_cut(%1, %2)"_s.arg(sql, number(to.length));
    if (to.isFixedText())
        result = u"text_pad(%1, %2)"_s.arg(result, number(to.length));
    return result;
}

} // namespace tsql
