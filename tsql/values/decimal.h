// Exact decimals of up to 38 digits with SQL Server's arithmetic.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <string_view>

namespace tsql {

/** A whole number of 10^-scale: 12.50 is units 1250, scale 2. |units| is below 10^38. */
struct Decimal
{
    using Int = __int128;

    static constexpr int MaxPrecision = 38;

    Int units = 0;
    int scale = 0;

    /** 10^n, n from 0 to 38. */
    static Int Power10(int n);

    static Decimal FromInt(qint64 value) { return {value, 0}; }
    /** The nearest decimal of that scale. Throws Error 8115 when it does not fit 38 digits. */
    static Decimal FromDouble(double value, int scale);
    /**
     * Reads "-12.50", "+.5", "3." with blanks around, all digits kept; more than 38 are Error 8115.
     * `ok` is false when the text is not a decimal number (an exponent is not one either).
     */
    static Decimal FromText(std::string_view text, bool &ok);
    static Decimal FromText(const QString &text, bool &ok);
    /** Reads the encoding of toBlob; the scale is the column's. */
    static Decimal FromBlob(const void *data, int size, int scale);
    /** The units in that encoding when seven bytes are enough for them, as they are for nearly every amount and price.
     */
    static bool SmallUnits(std::string_view blob, qint64 &units)
    {
        if (blob.empty() || blob.size() > 8)
            return false;
        const bool negative = static_cast<unsigned char>(blob[0]) < 0x80;
        uint64_t magnitude = 0;
        for (size_t i = 1; i < blob.size(); ++i)
            magnitude = magnitude << 8 | (static_cast<unsigned char>(blob[i]) ^ (negative ? 0xFFU : 0U));
        units = negative ? -static_cast<qint64>(magnitude) : static_cast<qint64>(magnitude);
        return true;
    }

    /** The text SQL Server shows: all digits of the scale, a zero before the point ("-0.500"). */
    QString ToText() const;
    /** Writes that text in ASCII to `buffer` (44 bytes at least) and returns its length. */
    int ToChars(char *buffer) const;
    /**
     * Storage form: memcmp order is numeric order among values of one scale, and equal values have equal bytes.
     * One byte of sign and length (0x80 + n, 0x80 - n for negative numbers), then n bytes of magnitude, big end
     * first, inverted for negative numbers. `buffer` has 17 bytes; returns the length.
     */
    int ToBlob(unsigned char *buffer) const;
    QByteArray ToBlob() const;
    double ToDouble() const;
    /** Cuts the fraction off. */
    Int ToInt() const { return units / Power10(scale); }

    /** Same value at another scale, rounded half away from zero; Error 8115 when it has more than `precision` digits.
     */
    Decimal Rescaled(int precision, int newScale) const;
    /** Half away from zero (or cut) at `digits` after the point, which may be negative; the scale stays. */
    Decimal Rounded(int digits, bool truncate = false) const;
    Decimal Floored() const; ///< scale 0
    Decimal Ceiled() const;  ///< scale 0
};

// The result has the given precision and scale (types.h computes them as SQL Server does). A result with more digits
// than the precision is Error 8115, a division by zero Error 8134. Quotients are cut, sums and products rounded.
Decimal Add(const Decimal &a, const Decimal &b, int precision, int scale);
Decimal Subtract(const Decimal &a, const Decimal &b, int precision, int scale);
Decimal Multiply(const Decimal &a, const Decimal &b, int precision, int scale);
Decimal Divide(const Decimal &a, const Decimal &b, int precision, int scale);
Decimal Remainder(const Decimal &a, const Decimal &b, int precision, int scale);

/** Error 8115: "Arithmetic overflow error converting numeric to data type numeric." and its variants. */
[[noreturn]] void ThrowNumericOverflow(const char *from = "numeric", const char *to = "numeric");

} // namespace tsql
