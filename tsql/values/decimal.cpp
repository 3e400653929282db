#include "tsql/values/decimal.h"

#include "tsql/values/error.h"

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

using Int = Decimal::Int;
using UInt = unsigned __int128;

constexpr std::array<Int, Decimal::MaxPrecision + 1> MakePowers()
{
    std::array<Int, Decimal::MaxPrecision + 1> powers{};
    Int power = 1;
    for (size_t n = 0; n < powers.size(); ++n) {
        powers[n] = power;
        if (n + 1 < powers.size())
            power *= 10;
    }
    return powers;
}
constexpr auto powers = MakePowers();

UInt Magnitude(Int value)
{
    return value < 0 ? UInt(0) - UInt(value) : UInt(value);
}

Int WithSign(UInt value, bool negative)
{
    return negative ? -Int(value) : Int(value);
}

void CheckDigits(UInt value, int precision)
{
    if (value >= UInt(powers[size_t(precision)]))
        ThrowNumericOverflow();
}

/** 256 bits, for products and scaled numerators; limbs of 64 bits, small end first. */
struct Wide
{
    std::array<uint64_t, 4> limb{};

    static Wide Multiply(UInt a, UInt b)
    {
        const uint64_t x[2] = {uint64_t(a), uint64_t(a >> 64)};
        const uint64_t y[2] = {uint64_t(b), uint64_t(b >> 64)};
        Wide result;
        for (size_t i = 0; i < 2; ++i) {
            uint64_t carry = 0;
            for (size_t j = 0; j < 2; ++j) {
                const UInt sum = UInt(x[i]) * y[j] + result.limb[i + j] + carry;
                result.limb[i + j] = uint64_t(sum);
                carry = uint64_t(sum >> 64);
            }
            result.limb[i + 2] = carry;
        }
        return result;
    }

    bool FitsHalf() const { return limb[2] == 0 && limb[3] == 0; }
    UInt Half() const { return UInt(limb[1]) << 64 | limb[0]; }

    void DivideSmall(uint64_t divisor)
    {
        uint64_t rest = 0;
        for (size_t i = 4; i-- > 0;) {
            const UInt part = UInt(rest) << 64 | limb[i];
            limb[i] = uint64_t(part / divisor);
            rest = uint64_t(part % divisor);
        }
    }

    void DividePower10(int n)
    {
        for (; n > 0; n -= 18)
            DivideSmall(uint64_t(powers[size_t(std::min(n, 18))]));
    }

    /** Cuts the quotient; bit by bit, as only quotients of 20 digits and more come here. */
    Wide Divided(UInt divisor) const
    {
        Wide quotient;
        UInt rest = 0;
        for (size_t bit = 256; bit-- > 0;) {
            const bool carry = rest >> 127;
            rest = rest << 1 | (limb[bit / 64] >> (bit % 64) & 1);
            if (carry || rest >= divisor) {
                rest -= divisor;
                quotient.limb[bit / 64] |= uint64_t(1) << (bit % 64);
            }
        }
        return quotient;
    }
};

/** value / 10^n rounded half away from zero. */
UInt RoundedQuotient(UInt value, int n)
{
    if (n == 0)
        return value;
    if (n > Decimal::MaxPrecision)
        return 0;
    const auto divisor = UInt(powers[size_t(n)]);
    const UInt quotient = value / divisor;
    return value % divisor >= divisor / 2 ? quotient + 1 : quotient;
}

/** value * 10^n, refused when more than 38 digits come out. */
UInt ScaledUp(UInt value, int n)
{
    if (value == 0)
        return 0;
    if (n > Decimal::MaxPrecision || value > UInt(powers[Decimal::MaxPrecision] - 1) / UInt(powers[size_t(n)]))
        ThrowNumericOverflow();
    return value * UInt(powers[size_t(n)]);
}

/** Brings a number of another scale to `scale` without a check of the digits that fit 38. */
Int AtScale(const Decimal &value, int scale)
{
    const UInt units = Magnitude(value.units);
    return WithSign(scale >= value.scale ? ScaledUp(units, scale - value.scale)
                                         : RoundedQuotient(units, value.scale - scale),
                    value.units < 0);
}

} // namespace

void ThrowNumericOverflow(const char *from, const char *to)
{
    throw Error(8115, {QLatin1String(from), QLatin1String(to)});
}

Int Decimal::Power10(int n)
{
    return powers[size_t(n)];
}

Decimal Decimal::FromDouble(double value, int scale)
{
    // A long double has 64 bits of digits: a double times a power of ten keeps all of its own.
    const long double scaled = std::round(static_cast<long double>(value) * std::pow(10.0L, scale));
    if (!(std::fabs(scaled) < 1e38L))
        ThrowNumericOverflow("float", "numeric");
    return {Int(scaled), scale};
}

Decimal Decimal::FromText(std::string_view text, bool &ok)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    text.remove_suffix(text.size() - (text.find_last_not_of(' ') + 1));
    bool negative = false;
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
        negative = text[0] == '-';
        text.remove_prefix(1);
    }
    UInt units = 0;
    int scale = 0;
    bool point = false;
    bool digits = false;
    ok = false;
    for (const char c : text) {
        if (c == '.' && !point) {
            point = true;
            continue;
        }
        if (c < '0' || c > '9')
            return {};
        digits = true;
        const auto digit = uint(c - '0');
        if (units > (UInt(powers[MaxPrecision]) - 1 - digit) / 10) {
            // Digits of the fraction beyond what 38 hold cannot matter to any type; those before the point do.
            if (!point)
                ThrowNumericOverflow("varchar");
            continue;
        }
        units = units * 10 + digit;
        scale += point;
    }
    ok = digits;
    return {WithSign(units, negative), scale};
}

Decimal Decimal::FromText(const QString &text, bool &ok)
{
    const QByteArray utf8 = text.toUtf8();
    return FromText(std::string_view(utf8.constData(), size_t(utf8.size())), ok);
}

Decimal Decimal::FromBlob(const void *data, int size, int scale)
{
    if (size == 0)
        return {0, scale};
    const auto *bytes = static_cast<const unsigned char *>(data);
    const bool negative = bytes[0] < 0x80;
    const int length = std::min(negative ? 0x80 - bytes[0] : bytes[0] - 0x80, size - 1);
    UInt units = 0;
    for (int i = 1; i <= length; ++i)
        units = units << 8 | (negative ? 255U - bytes[i] : bytes[i]);
    return {WithSign(units, negative), scale};
}

int Decimal::ToChars(char *buffer) const
{
    char digits[48];
    int count = 0;
    UInt rest = Magnitude(units);
    while (rest >> 64) {
        digits[count++] = char('0' + int(rest % 10));
        rest /= 10;
    }
    for (auto small = uint64_t(rest); small != 0; small /= 10)
        digits[count++] = char('0' + int(small % 10));
    while (count <= scale)
        digits[count++] = '0';
    char *out = buffer;
    if (units < 0)
        *out++ = '-';
    while (count > 0) {
        if (count == scale)
            *out++ = '.';
        *out++ = digits[--count];
    }
    return int(out - buffer);
}

QString Decimal::ToText() const
{
    char buffer[48];
    return QString::fromLatin1(buffer, ToChars(buffer));
}

int Decimal::ToBlob(unsigned char *buffer) const
{
    UInt rest = Magnitude(units);
    int length = 0;
    for (UInt left = rest; left != 0; left >>= 8)
        ++length;
    const bool negative = units < 0;
    buffer[0] = static_cast<unsigned char>(negative ? 0x80 - length : 0x80 + length);
    for (int i = length; i > 0; --i, rest >>= 8)
        buffer[i] = static_cast<unsigned char>(negative ? 255 - (rest & 255) : rest & 255);
    return length + 1;
}

QByteArray Decimal::ToBlob() const
{
    unsigned char buffer[17];
    const int length = ToBlob(buffer);
    return {reinterpret_cast<const char *>(buffer), length};
}

double Decimal::ToDouble() const
{
    return double(static_cast<long double>(units) / static_cast<long double>(powers[size_t(scale)]));
}

Decimal Decimal::Rescaled(int precision, int newScale) const
{
    const Int result = AtScale(*this, newScale);
    CheckDigits(Magnitude(result), precision);
    return {result, newScale};
}

Decimal Decimal::Rounded(int digits, bool truncate) const
{
    const int dropped = scale - digits;
    if (dropped <= 0)
        return *this;
    if (dropped > MaxPrecision)
        return {0, scale};
    const auto step = UInt(powers[size_t(dropped)]);
    const UInt units = truncate ? Magnitude(this->units) / step : RoundedQuotient(Magnitude(this->units), dropped);
    return {WithSign(ScaledUp(units, dropped), this->units < 0), scale};
}

Decimal Decimal::Floored() const
{
    const Int step = powers[size_t(scale)];
    return {units / step - (units % step < 0 ? 1 : 0), 0};
}

Decimal Decimal::Ceiled() const
{
    const Int step = powers[size_t(scale)];
    return {units / step + (units % step > 0 ? 1 : 0), 0};
}

Decimal Add(const Decimal &a, const Decimal &b, int precision, int scale)
{
    const int common = std::max(a.scale, b.scale);
    const Int x = AtScale(a, common);
    const Int y = AtScale(b, common);
    if ((x < 0) != (y < 0))
        return Decimal{x + y, common}.Rescaled(precision, scale);
    // Two numbers below 10^38 at the larger scale: 2 * 10^38 fits 128 bits without a sign only.
    const UInt sum = Magnitude(x) + Magnitude(y);
    const UInt result = common > scale ? RoundedQuotient(sum, common - scale) : ScaledUp(sum, scale - common);
    CheckDigits(result, precision);
    return {WithSign(result, x < 0), scale};
}

Decimal Subtract(const Decimal &a, const Decimal &b, int precision, int scale)
{
    return Add(a, {-b.units, b.scale}, precision, scale);
}

Decimal Multiply(const Decimal &a, const Decimal &b, int precision, int scale)
{
    const bool negative = (a.units < 0) != (b.units < 0);
    Wide product = Wide::Multiply(Magnitude(a.units), Magnitude(b.units));
    int productScale = a.scale + b.scale;
    if (!product.FitsHalf()) {
        // Keep one digit more than is wanted: it alone decides the rounding.
        const int dropped = std::max(productScale - scale - 1, 0);
        product.DividePower10(dropped);
        productScale -= dropped;
        if (!product.FitsHalf())
            ThrowNumericOverflow();
    }
    const UInt units = product.Half();
    const UInt result =
        productScale > scale ? RoundedQuotient(units, productScale - scale) : ScaledUp(units, scale - productScale);
    CheckDigits(result, precision);
    return {WithSign(result, negative), scale};
}

Decimal Divide(const Decimal &a, const Decimal &b, int precision, int scale)
{
    if (b.units == 0)
        throw Error(8134);
    const bool negative = (a.units < 0) != (b.units < 0);
    UInt numerator = Magnitude(a.units);
    UInt divisor = Magnitude(b.units);
    const int shift = scale - a.scale + b.scale;
    UInt result = 0;
    if (shift < 0) {
        numerator /= UInt(powers[size_t(std::min(-shift, int(Decimal::MaxPrecision)))]);
        result = numerator / divisor;
    } else {
        const int first = std::min(shift, int(Decimal::MaxPrecision));
        Wide wide = Wide::Multiply(numerator, UInt(powers[size_t(first)]));
        if (shift > first) {
            if (!wide.FitsHalf())
                ThrowNumericOverflow();
            wide = Wide::Multiply(wide.Half(), UInt(powers[size_t(shift - first)]));
        }
        if (wide.FitsHalf()) {
            result = wide.Half() / divisor;
        } else {
            wide = wide.Divided(divisor);
            if (!wide.FitsHalf())
                ThrowNumericOverflow();
            result = wide.Half();
        }
    }
    CheckDigits(result, precision);
    return {WithSign(result, negative), scale};
}

Decimal Remainder(const Decimal &a, const Decimal &b, int precision, int scale)
{
    if (b.units == 0)
        throw Error(8134);
    const int common = std::max(a.scale, b.scale);
    const Int divisor = AtScale(b, common);
    Q_ASSERT(divisor != 0);
    return Decimal{AtScale(a, common) % divisor, common}.Rescaled(precision, scale);
}

} // namespace tsql
