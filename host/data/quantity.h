#pragma once

#include "host/host_export.h"

#include <QString>
#include <QStringView>

#include <cfloat>
#include <optional>

/// Quantities and prices. The database keeps them as decimal(23,9); between the driver and the program they travel
/// as text and are calculated with as x87 80-bit floats, never as double.
namespace host {

using Quantity = long double;
static_assert(LDBL_MANT_DIG == 64, "quantities cross the module's boundary as x87 80-bit floats");

/// Digits after the decimal point that the database keeps.
inline constexpr int QuantityDecimals = 9;

/// Plain decimal text of what a user typed: ASCII digits, '.', '-' only, no needless zeros. Persian and Arabic digits,
/// the decimal marks '.', '٫' and '/', the grouping marks ',', '٬', '،' and blanks, a sign in front and direction marks
/// are understood. Nothing when the text is no number. Digits are carried as text: 23 of them survive.
HOST_EXPORT std::optional<QString> NormalizeDecimal(QStringView userText);

/// The number a user typed, read as NormalizeDecimal() reads it.
HOST_EXPORT std::optional<Quantity> ParseQuantity(QStringView userText);

/// The number in a text that the database or the program made ("12.500000000", "1e-9"). Empty text is 0.
/// Throws RefusedText when it is no number.
HOST_EXPORT Quantity QuantityFromText(QStringView text);

/// The shortest decimal text without the noise of binary arithmetic: 0.1 × 3 gives "0.3". At most `decimals` digits
/// after the point, fewer where the value is so large that further digits would be noise. "0" for anything that rounds
/// to zero. Throws RefusedText for infinities and NaN.
HOST_EXPORT QString QuantityToText(Quantity value, int decimals = QuantityDecimals);

/// Decimal text without needless zeros: "12.500000000" gives "12.5", "-0.000" gives "0". Other texts come back as they
/// are.
HOST_EXPORT QString TrimDecimal(QStringView decimalText);

/// Decimal text with ',' between groups of three digits of the whole part: "1234567.5" gives "1,234,567.5".
HOST_EXPORT QString GroupDigits(QStringView decimalText);

} // namespace host
