#include "tsql/functions/call.h"
#include "tsql/values/convert.h"
#include "tsql/values/error.h"

#include <cmath>

using namespace Qt::StringLiterals;

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

/** The next number of a chain's description, whose first character is `at`. */
int numberAt(std::string_view text, size_t &at)
{
    int number = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
        number = number * 10 + (text[at] - '0');
    return number;
}

Decimal decimalStep(char operation, const Decimal &a, const Decimal &b, int precision, int scale)
{
    switch (operation) {
    case '+':
        return add(a, b, precision, scale);
    case '-':
        return subtract(a, b, precision, scale);
    case '*':
        return multiply(a, b, precision, scale);
    case '/':
        return divide(a, b, precision, scale);
    default:
        return remainder(a, b, precision, scale);
    }
}

/** dec_chain('2+2,19,2-0,20,2', a, b, c): from left to right, each step with its own precision and scale. */
void decChain(Call &call)
{
    const std::string_view steps = call.text(0);
    size_t at = 0;
    int scale = numberAt(steps, at);
    bool known = !call.isNull(1);
    Decimal result = known ? call.decimal(1, scale) : Decimal();
    for (int i = 2; i < call.count(); ++i) {
        const char operation = steps[at++];
        const int own = numberAt(steps, at);
        const int precision = numberAt(steps, ++at);
        scale = numberAt(steps, ++at);
        known = known && !call.isNull(i);
        if (known)
            result = decimalStep(operation, result, call.decimal(i, own), precision, scale);
    }
    if (known)
        call.give(result);
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
    {"dec_chain", decChain, -1, true},
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

[[noreturn]] void integerOverflow(Kind kind = Kind::BigInt)
{
    throw Error(8115, {u"expression"_s, kindName(kind)});
}

void intFit(Call &call)
{
    // SQLite goes over to floating point when 64 bits overflow; rounded, it may look as if it fitted again.
    if (sqlite3_value_type(call.value(0)) == SQLITE_FLOAT)
        integerOverflow(kindOf(call, 1));
    call.give(fitInteger(call.integer(0), kindOf(call, 1)));
}

qint64 quotient(qint64 value, qint64 by)
{
    if (by == 0)
        throw Error(8134);
    if (by == -1 && value == std::numeric_limits<qint64>::min())
        integerOverflow();
    return value / by;
}

qint64 modulus(qint64 value, qint64 by)
{
    if (by == 0)
        throw Error(8134);
    return by == -1 ? qint64(0) : value % by;
}

void intDiv(Call &call)
{
    call.give(quotient(call.integer(0), call.integer(1)));
}

void intMod(Call &call)
{
    call.give(modulus(call.integer(0), call.integer(1)));
}

qint64 integerStep(char operation, qint64 a, qint64 b)
{
    qint64 result = 0;
    switch (operation) {
    case '+':
        if (__builtin_add_overflow(a, b, &result))
            integerOverflow();
        return result;
    case '-':
        if (__builtin_sub_overflow(a, b, &result))
            integerOverflow();
        return result;
    case '*':
        if (__builtin_mul_overflow(a, b, &result))
            integerOverflow();
        return result;
    case '/':
        return quotient(a, b);
    case '%':
        return modulus(a, b);
    case '&':
        return a & b;
    case '|':
        return a | b;
    default:
        return a ^ b;
    }
}

/** int_chain('+4*4', a, b, c): from left to right, each result fitted to the kind of that number. */
void intChain(Call &call)
{
    const std::string_view steps = call.text(0);
    size_t at = 0;
    bool known = !call.isNull(1);
    qint64 result = call.integer(1);
    for (int i = 2; i < call.count(); ++i) {
        const char operation = steps[at++];
        const Kind kind = Kind(numberAt(steps, at));
        known = known && !call.isNull(i);
        if (known)
            result = fitInteger(integerStep(operation, result, call.integer(i)), kind);
    }
    if (known)
        call.give(result);
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

double checkedReal(double value)
{
    if (std::isnan(value))
        throw Error(3623);
    if (std::isinf(value))
        throw Error(8115, {u"expression"_s, u"float"_s});
    return value;
}

void realDiv(Call &call)
{
    if (call.real(1) == 0.0)
        throw Error(8134);
    call.give(checkedReal(call.real(0) / call.real(1)));
}

/** real_chain('+-*', a, b, c, d) from left to right */
void realChain(Call &call)
{
    const std::string_view steps = call.text(0);
    bool known = !call.isNull(1);
    double result = call.real(1);
    for (int i = 2; i < call.count(); ++i) {
        const char operation = steps[size_t(i) - 2];
        const double term = call.real(i);
        known = known && !call.isNull(i);
        if (!known)
            continue;
        if (operation == '/' && term == 0.0)
            throw Error(8134);
        result = checkedReal(operation == '+'   ? result + term
                             : operation == '-' ? result - term
                             : operation == '*' ? result * term
                                                : result / term);
    }
    if (known)
        call.give(result);
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
        throw Error(232, {kindName(kindOf(call, 1)), QString::number(call.real(0), 'f', 6)});
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
    if (power == 0.0 || !std::isfinite(scaled)) // before the first digit, or behind the last
        call.give(power == 0.0 ? 0.0 : call.real(0));
    else
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
    {"int_chain", intChain, -1, true},
    {"bit_of", bitOf, 1},
    {"bit_of_text", bitOfText, 2},
    {"real_of_text", realOfText, 2},
    {"real_div", realDiv, 2},
    {"real_chain", realChain, -1, true},
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
