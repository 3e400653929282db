#include "tsql/convert.h"
#include "tsql/error.h"
#include "tsql/functions_support.h"

#include <cmath>

namespace tsql {

namespace {

Kind kindOf(const Call &call, int i)
{
    return Kind(call.number(i));
}

void decOfInt(Call &call)
{
    call.give(decimalFromInteger(call.integer(0), call.number(1), call.number(2)));
}

void decOfReal(Call &call)
{
    call.give(decimalFromReal(call.real(0), call.number(1), call.number(2)));
}

void decOfText(Call &call)
{
    call.give(decimalFromText(call.text(0), call.number(1), call.number(2), kindOf(call, 3)));
}

void decRescale(Call &call)
{
    call.give(call.decimal(0, call.number(1)).rescaled(call.number(2), call.number(3)));
}

void decText(Call &call)
{
    char buffer[48];
    const int length = call.decimal(0, call.number(1)).toChars(buffer);
    call.give(std::string_view(buffer, size_t(length)));
}

void decToInt(Call &call)
{
    call.give(integerFromDecimal(call.decimal(0, call.number(1)), kindOf(call, 2)));
}

void decToReal(Call &call)
{
    call.give(call.decimal(0, call.number(1)).toDouble());
}

void decToBit(Call &call)
{
    call.give(qint64(call.decimal(0, 0).units != 0));
}

template <Decimal (*operation)(const Decimal &, const Decimal &, int, int)> void decBinary(Call &call)
{
    call.give(
        operation(call.decimal(0, call.number(1)), call.decimal(2, call.number(3)), call.number(4), call.number(5)));
}

void decNeg(Call &call)
{
    call.give(Decimal{-call.decimal(0, 0).units, 0});
}

void decAbs(Call &call)
{
    const Decimal value = call.decimal(0, 0);
    call.give(Decimal{value.units < 0 ? -value.units : value.units, 0});
}

void decSign(Call &call)
{
    const Decimal value = call.decimal(0, 0);
    call.give(qint64(value.units > 0) - qint64(value.units < 0));
}

void decRound(Call &call)
{
    call.give(call.decimal(0, call.number(1)).rounded(call.number(2), call.count() > 3 && call.number(3) != 0));
}

void decFloor(Call &call)
{
    call.give(call.decimal(0, call.number(1)).floored());
}

void decCeiling(Call &call)
{
    call.give(call.decimal(0, call.number(1)).ceiled());
}

constexpr Function decimalFunctions[] = {
    {"dec_of_int", decOfInt, 3},
    {"dec_of_real", decOfReal, 3},
    {"dec_of_text", decOfText, 4},
    {"dec_rescale", decRescale, 4},
    {"dec_text", decText, 2},
    {"dec_to_int", decToInt, 3},
    {"dec_to_real", decToReal, 2},
    {"dec_to_bit", decToBit, 1},
    {"dec_add", decBinary<add>, 6},
    {"dec_sub", decBinary<subtract>, 6},
    {"dec_mul", decBinary<multiply>, 6},
    {"dec_div", decBinary<divide>, 6},
    {"dec_mod", decBinary<remainder>, 6},
    {"dec_neg", decNeg, 1},
    {"dec_abs", decAbs, 1},
    {"dec_sign", decSign, 1},
    {"dec_round", decRound, 3},
    {"dec_round", decRound, 4},
    {"dec_floor", decFloor, 2},
    {"dec_ceiling", decCeiling, 2},
};

void intOfText(Call &call)
{
    call.give(integerFromText(call.text(0), kindOf(call, 1), kindOf(call, 2)));
}

void intOfReal(Call &call)
{
    call.give(integerFromReal(call.real(0), kindOf(call, 1)));
}

void intFit(Call &call)
{
    // SQLite goes over to floating point when 64 bits overflow.
    if (sqlite3_value_type(call.value(0)) == SQLITE_FLOAT)
        call.give(integerFromReal(call.real(0), kindOf(call, 1)));
    else
        call.give(fitInteger(call.integer(0), kindOf(call, 1)));
}

qint64 divisor(const Call &call)
{
    const qint64 value = call.integer(1);
    if (value == 0)
        throw Error(8134, u"Divide by zero error encountered."_qs);
    return value;
}

void intDiv(Call &call)
{
    const qint64 by = divisor(call);
    if (by == -1 && call.integer(0) == std::numeric_limits<qint64>::min())
        throw Error(8115, u"Arithmetic overflow error converting expression to data type bigint."_qs);
    call.give(call.integer(0) / by);
}

void intMod(Call &call)
{
    const qint64 by = divisor(call);
    call.give(by == -1 ? qint64(0) : call.integer(0) % by);
}

void bitOf(Call &call)
{
    call.give(qint64(call.real(0) != 0.0));
}

void bitOfText(Call &call)
{
    call.give(bitFromText(call.text(0), kindOf(call, 1)));
}

void realOfText(Call &call)
{
    call.give(realFromText(call.text(0), kindOf(call, 1)));
}

void realDiv(Call &call)
{
    if (call.real(1) == 0.0)
        throw Error(8134, u"Divide by zero error encountered."_qs);
    call.give(call.real(0) / call.real(1));
}

double checkedReal(double value)
{
    if (std::isnan(value))
        throw Error(3623, u"An invalid floating point operation occurred."_qs);
    if (std::isinf(value))
        throw Error(8115, u"Arithmetic overflow error converting expression to data type float."_qs);
    return value;
}

/** The logarithm of 0 has no value, not even an infinite one. */
double logarithm(double value)
{
    return checkedReal(value > 0 ? std::log(value) : std::nan(""));
}

void realFit(Call &call)
{
    call.give(checkedReal(call.real(0)));
}

void realSqrt(Call &call)
{
    call.give(checkedReal(std::sqrt(call.real(0))));
}

void realExp(Call &call)
{
    call.give(checkedReal(std::exp(call.real(0))));
}

void realLog(Call &call)
{
    double value = logarithm(call.real(0));
    if (call.count() > 1) {
        const double base = logarithm(call.real(1));
        value = base == 0.0 ? checkedReal(std::nan("")) : value / base;
    }
    call.give(value);
}

void realPow(Call &call)
{
    const bool pole = call.real(0) == 0.0 && call.real(1) < 0;
    call.give(checkedReal(pole ? std::nan("") : std::pow(call.real(0), call.real(1))));
}

/** int_of_power(x, kind): POWER of a whole number. */
void intOfPower(Call &call)
{
    try {
        call.give(integerFromReal(call.real(0), kindOf(call, 1)));
    } catch (const Error &) {
        throw Error(232, u"Arithmetic overflow error for type %1, value = %2."_qs.arg(
                             kindName(kindOf(call, 1)), QString::number(call.real(0), 'f', 6)));
    }
}

void textOfReal(Call &call)
{
    call.give(std::string_view(textFromReal(call.real(0))));
}

void roundReal(Call &call)
{
    const bool cut = call.count() > 2 && call.number(2) != 0;
    const double power = std::pow(10.0, call.number(1));
    const double scaled = call.real(0) * power;
    call.give((cut ? std::trunc(scaled) : std::round(scaled)) / power);
}

void isNumeric(Call &call)
{
    bool ok = false;
    if (!call.isNull(0)) {
        try {
            Decimal::fromText(call.text(0), ok);
            if (!ok && !call.text(0).empty())
                realFromText(call.text(0), Kind::VarChar);
            ok = call.text(0).find_first_not_of(' ') != std::string_view::npos;
        } catch (const Error &) {
            ok = false;
        }
    }
    call.give(qint64(ok));
}

void str(Call &call)
{
    const int length = call.number(1);
    const QString text = QString::number(call.real(0), 'f', call.number(2));
    call.give(text.size() > length ? QString(length, u'*') : text.rightJustified(length));
}

constexpr Function numberFunctions[] = {
    {"int_of_text", intOfText, 3},
    {"int_of_real", intOfReal, 2},
    {"int_fit", intFit, 2},
    {"int_div", intDiv, 2},
    {"int_mod", intMod, 2},
    {"bit_of", bitOf, 1},
    {"bit_of_text", bitOfText, 2},
    {"real_of_text", realOfText, 2},
    {"real_div", realDiv, 2},
    {"real_fit", realFit, 1},
    {"real_sqrt", realSqrt, 1},
    {"real_exp", realExp, 1},
    {"real_log", realLog, 1},
    {"real_log", realLog, 2},
    {"real_pow", realPow, 2},
    {"int_of_power", intOfPower, 2},
    {"text_of_real", textOfReal, 1},
    {"round_real", roundReal, 2},
    {"round_real", roundReal, 3},
    {"tsql_isnumeric", isNumeric, 1, true},
    {"tsql_str", str, 3},
};

} // namespace

void addDecimalFunctions(sqlite3 *db)
{
    addFunctions(db, decimalFunctions);
}

void addNumberFunctions(sqlite3 *db)
{
    addFunctions(db, numberFunctions);
}

} // namespace tsql
