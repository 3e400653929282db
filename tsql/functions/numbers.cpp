#include "tsql/functions/call.h"
#include "tsql/values/convert.h"
#include "tsql/values/error.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

Kind KindOf(const Call &call, int i)
{
    return Kind(call.Number(i));
}

void DecOfInt(Call &call)
{
    call.Give(DecimalFromInteger(call.IntegerAt(0), call.Number(1), call.Number(2)));
}

void DecOfReal(Call &call)
{
    call.Give(DecimalFromReal(call.RealAt(0), call.Number(1), call.Number(2)));
}

void DecOfText(Call &call)
{
    call.Give(DecimalFromText(call.text(0), call.Number(1), call.Number(2), KindOf(call, 3)));
}

void DecRescale(Call &call)
{
    call.Give(call.DecimalAt(0, call.Number(1)).Rescaled(call.Number(2), call.Number(3)));
}

void DecText(Call &call)
{
    char buffer[48];
    const int length = call.DecimalAt(0, call.Number(1)).ToChars(buffer);
    call.Give(std::string_view(buffer, size_t(length)));
}

void DecToInt(Call &call)
{
    call.Give(IntegerFromDecimal(call.DecimalAt(0, call.Number(1)), KindOf(call, 2)));
}

void DecToReal(Call &call)
{
    call.Give(call.DecimalAt(0, call.Number(1)).ToDouble());
}

void DecToBit(Call &call)
{
    call.Give(qint64(call.DecimalAt(0, 0).units != 0));
}

template <Decimal (*operation)(const Decimal &, const Decimal &, int, int)> void DecBinary(Call &call)
{
    call.Give(operation(call.DecimalAt(0, call.Number(1)), call.DecimalAt(2, call.Number(3)), call.Number(4),
                        call.Number(5)));
}

/** The next number of a chain's description, whose first character is `at`. */
int NumberAt(std::string_view text, size_t &at)
{
    int number = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
        number = number * 10 + (text[at] - '0');
    return number;
}

Decimal DecimalStep(char operation, const Decimal &a, const Decimal &b, int precision, int scale)
{
    switch (operation) {
    case '+':
        return Add(a, b, precision, scale);
    case '-':
        return Subtract(a, b, precision, scale);
    case '*':
        return Multiply(a, b, precision, scale);
    case '/':
        return Divide(a, b, precision, scale);
    default:
        return Remainder(a, b, precision, scale);
    }
}

/** dec_chain('2+2,19,2-0,20,2', a, b, c): from left to right, each step with its own precision and scale. */
void DecChain(Call &call)
{
    const std::string_view steps = call.text(0);
    size_t at = 0;
    int scale = NumberAt(steps, at);
    bool known = !call.IsNull(1);
    Decimal result = known ? call.DecimalAt(1, scale) : Decimal();
    for (int i = 2; i < call.Count(); ++i) {
        const char operation = steps[at++];
        const int own = NumberAt(steps, at);
        const int precision = NumberAt(steps, ++at);
        scale = NumberAt(steps, ++at);
        known = known && !call.IsNull(i);
        if (known)
            result = DecimalStep(operation, result, call.DecimalAt(i, own), precision, scale);
    }
    if (known)
        call.Give(result);
}

void DecNeg(Call &call)
{
    call.Give(Decimal{-call.DecimalAt(0, 0).units, 0});
}

void DecAbs(Call &call)
{
    const Decimal value = call.DecimalAt(0, 0);
    call.Give(Decimal{value.units < 0 ? -value.units : value.units, 0});
}

void DecSign(Call &call)
{
    const Decimal value = call.DecimalAt(0, 0);
    call.Give(qint64(value.units > 0) - qint64(value.units < 0));
}

void DecRound(Call &call)
{
    call.Give(call.DecimalAt(0, call.Number(1)).Rounded(call.Number(2), call.Count() > 3 && call.Number(3) != 0));
}

void DecFloor(Call &call)
{
    call.Give(call.DecimalAt(0, call.Number(1)).Floored());
}

void DecCeiling(Call &call)
{
    call.Give(call.DecimalAt(0, call.Number(1)).Ceiled());
}

constexpr Function decimalFunctions[] = {
    {"dec_of_int", DecOfInt, 3},
    {"dec_of_real", DecOfReal, 3},
    {"dec_of_text", DecOfText, 4},
    {"dec_rescale", DecRescale, 4},
    {"dec_text", DecText, 2},
    {"dec_to_int", DecToInt, 3},
    {"dec_to_real", DecToReal, 2},
    {"dec_to_bit", DecToBit, 1},
    {"dec_add", DecBinary<Add>, 6},
    {"dec_sub", DecBinary<Subtract>, 6},
    {"dec_mul", DecBinary<Multiply>, 6},
    {"dec_div", DecBinary<Divide>, 6},
    {"dec_mod", DecBinary<Remainder>, 6},
    {"dec_chain", DecChain, -1, true},
    {"dec_neg", DecNeg, 1},
    {"dec_abs", DecAbs, 1},
    {"dec_sign", DecSign, 1},
    {"dec_round", DecRound, 3},
    {"dec_round", DecRound, 4},
    {"dec_floor", DecFloor, 2},
    {"dec_ceiling", DecCeiling, 2},
};

void IntOfText(Call &call)
{
    call.Give(IntegerFromText(call.text(0), KindOf(call, 1), KindOf(call, 2)));
}

void IntOfReal(Call &call)
{
    call.Give(IntegerFromReal(call.RealAt(0), KindOf(call, 1)));
}

[[noreturn]] void IntegerOverflow(Kind kind = Kind::BigInt)
{
    throw Error(8115, {u"expression"_s, KindName(kind)});
}

void IntFit(Call &call)
{
    // SQLite goes over to floating point when 64 bits overflow; rounded, it may look as if it fitted again.
    if (sqlite3_value_type(call.ValueAt(0)) == SQLITE_FLOAT)
        IntegerOverflow(KindOf(call, 1));
    call.Give(FitInteger(call.IntegerAt(0), KindOf(call, 1)));
}

qint64 Quotient(qint64 value, qint64 by)
{
    if (by == 0)
        throw Error(8134);
    if (by == -1 && value == std::numeric_limits<qint64>::min())
        IntegerOverflow();
    return value / by;
}

qint64 Modulus(qint64 value, qint64 by)
{
    if (by == 0)
        throw Error(8134);
    return by == -1 ? qint64(0) : value % by;
}

void IntDiv(Call &call)
{
    call.Give(Quotient(call.IntegerAt(0), call.IntegerAt(1)));
}

void IntMod(Call &call)
{
    call.Give(Modulus(call.IntegerAt(0), call.IntegerAt(1)));
}

qint64 IntegerStep(char operation, qint64 a, qint64 b)
{
    qint64 result = 0;
    switch (operation) {
    case '+':
        if (__builtin_add_overflow(a, b, &result))
            IntegerOverflow();
        return result;
    case '-':
        if (__builtin_sub_overflow(a, b, &result))
            IntegerOverflow();
        return result;
    case '*':
        if (__builtin_mul_overflow(a, b, &result))
            IntegerOverflow();
        return result;
    case '/':
        return Quotient(a, b);
    case '%':
        return Modulus(a, b);
    case '&':
        return a & b;
    case '|':
        return a | b;
    default:
        return a ^ b;
    }
}

/** int_chain('+4*4', a, b, c): from left to right, each result fitted to the kind of that number. */
void IntChain(Call &call)
{
    const std::string_view steps = call.text(0);
    size_t at = 0;
    bool known = !call.IsNull(1);
    qint64 result = call.IntegerAt(1);
    for (int i = 2; i < call.Count(); ++i) {
        const char operation = steps[at++];
        const Kind kind = Kind(NumberAt(steps, at));
        known = known && !call.IsNull(i);
        if (known)
            result = FitInteger(IntegerStep(operation, result, call.IntegerAt(i)), kind);
    }
    if (known)
        call.Give(result);
}

void BitOf(Call &call)
{
    call.Give(qint64(call.RealAt(0) != 0.0));
}

void BitOfText(Call &call)
{
    call.Give(BitFromText(call.text(0), KindOf(call, 1)));
}

void RealOfText(Call &call)
{
    call.Give(RealFromText(call.text(0), KindOf(call, 1)));
}

double CheckedReal(double value)
{
    if (std::isnan(value))
        throw Error(3623);
    if (std::isinf(value))
        throw Error(8115, {u"expression"_s, u"float"_s});
    return value;
}

void RealDiv(Call &call)
{
    if (call.RealAt(1) == 0.0)
        throw Error(8134);
    call.Give(CheckedReal(call.RealAt(0) / call.RealAt(1)));
}

/** real_chain('+-*', a, b, c, d) from left to right */
void RealChain(Call &call)
{
    const std::string_view steps = call.text(0);
    bool known = !call.IsNull(1);
    double result = call.RealAt(1);
    for (int i = 2; i < call.Count(); ++i) {
        const char operation = steps[size_t(i) - 2];
        const double term = call.RealAt(i);
        known = known && !call.IsNull(i);
        if (!known)
            continue;
        if (operation == '/' && term == 0.0)
            throw Error(8134);
        result = CheckedReal(operation == '+'   ? result + term
                             : operation == '-' ? result - term
                             : operation == '*' ? result * term
                                                : result / term);
    }
    if (known)
        call.Give(result);
}

/** The logarithm of 0 has no value, not even an infinite one. */
double Logarithm(double value)
{
    return CheckedReal(value > 0 ? std::log(value) : std::nan(""));
}

void RealFit(Call &call)
{
    call.Give(CheckedReal(call.RealAt(0)));
}

void RealSqrt(Call &call)
{
    call.Give(CheckedReal(std::sqrt(call.RealAt(0))));
}

void RealExp(Call &call)
{
    call.Give(CheckedReal(std::exp(call.RealAt(0))));
}

void RealLog(Call &call)
{
    double value = Logarithm(call.RealAt(0));
    if (call.Count() > 1) {
        const double base = Logarithm(call.RealAt(1));
        value = base == 0.0 ? CheckedReal(std::nan("")) : value / base;
    }
    call.Give(value);
}

void RealPow(Call &call)
{
    const bool pole = call.RealAt(0) == 0.0 && call.RealAt(1) < 0;
    call.Give(CheckedReal(pole ? std::nan("") : std::pow(call.RealAt(0), call.RealAt(1))));
}

/** int_of_power(x, kind): POWER of a whole number. */
void IntOfPower(Call &call)
{
    try {
        call.Give(IntegerFromReal(call.RealAt(0), KindOf(call, 1)));
    } catch (const Error &) {
        throw Error(232, {KindName(KindOf(call, 1)), QString::number(call.RealAt(0), 'f', 6)});
    }
}

void TextOfReal(Call &call)
{
    call.Give(std::string_view(TextFromReal(call.RealAt(0))));
}

void RoundReal(Call &call)
{
    const bool cut = call.Count() > 2 && call.Number(2) != 0;
    const double power = std::pow(10.0, call.Number(1));
    const double scaled = call.RealAt(0) * power;
    if (power == 0.0 || !std::isfinite(scaled)) // before the first digit, or behind the last
        call.Give(power == 0.0 ? 0.0 : call.RealAt(0));
    else
        call.Give((cut ? std::trunc(scaled) : std::round(scaled)) / power);
}

void IsNumeric(Call &call)
{
    bool ok = false;
    if (!call.IsNull(0)) {
        try {
            Decimal::FromText(call.text(0), ok);
            if (!ok && !call.text(0).empty())
                RealFromText(call.text(0), Kind::VarChar);
            ok = call.text(0).find_first_not_of(' ') != std::string_view::npos;
        } catch (const Error &) {
            ok = false;
        }
    }
    call.Give(qint64(ok));
}

void Str(Call &call)
{
    const int length = call.Number(1);
    const QString text = QString::number(call.RealAt(0), 'f', call.Number(2));
    call.Give(text.size() > length ? QString(length, u'*') : text.rightJustified(length));
}

constexpr Function numberFunctions[] = {
    {"int_of_text", IntOfText, 3},
    {"int_of_real", IntOfReal, 2},
    {"int_fit", IntFit, 2},
    {"int_div", IntDiv, 2},
    {"int_mod", IntMod, 2},
    {"int_chain", IntChain, -1, true},
    {"bit_of", BitOf, 1},
    {"bit_of_text", BitOfText, 2},
    {"real_of_text", RealOfText, 2},
    {"real_div", RealDiv, 2},
    {"real_chain", RealChain, -1, true},
    {"real_fit", RealFit, 1},
    {"real_sqrt", RealSqrt, 1},
    {"real_exp", RealExp, 1},
    {"real_log", RealLog, 1},
    {"real_log", RealLog, 2},
    {"real_pow", RealPow, 2},
    {"int_of_power", IntOfPower, 2},
    {"text_of_real", TextOfReal, 1},
    {"round_real", RoundReal, 2},
    {"round_real", RoundReal, 3},
    {"tsql_isnumeric", IsNumeric, 1, true},
    {"tsql_str", Str, 3},
};

} // namespace

void AddDecimalFunctions(sqlite3 *db)
{
    AddFunctions(db, decimalFunctions);
}

void AddNumberFunctions(sqlite3 *db)
{
    AddFunctions(db, numberFunctions);
}

} // namespace tsql
