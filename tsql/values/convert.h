// Conversions between the types, with the server's refusals. Texts are UTF-8.
#pragma once

#include "tsql/values/decimal.h"
#include "tsql/values/types.h"
#include "tsql/values/value.h"

#include <string>
#include <string_view>

namespace tsql {

/** Refuses what does not fit the kind (Error 8115); `from` is the type named by the message. */
qint64 FitInteger(qint64 value, Kind kind, const char *from = "expression");
qint64 IntegerFromText(std::string_view text, Kind kind, Kind source);
qint64 IntegerFromReal(double value, Kind kind);
qint64 IntegerFromDecimal(const Decimal &value, Kind kind);
qint64 BitFromText(std::string_view text, Kind source);
double RealFromText(std::string_view text, Kind source);
Decimal DecimalFromText(std::string_view text, int precision, int scale, Kind source);
Decimal DecimalFromInteger(qint64 value, int precision, int scale);
Decimal DecimalFromReal(double value, int precision, int scale);

/** Six significant digits, an exponent only outside 1e-4 … 1e6: "0.1", "1e+020". */
std::string TextFromReal(double value);
/** The text of a binary as hexadecimal digits behind 0x. */
std::string TextFromBinary(std::string_view bytes);

/** Throws Error 2628 when more than `length` units without trailing blanks; the text, at most `length` long. */
std::string_view FitText(std::string_view text, int length, std::string_view table, std::string_view column);
/** The first `length` units; SqlType::Max for all. */
std::string_view CutText(std::string_view text, int length);

/** Where a value goes: a CAST cuts an overlong text, an assignment to a column refuses it. */
struct Destination
{
    SqlType type;
    bool assign = false;
    QString table;
    QString column;
};

/** A value of type `from` in the storage form of `to`. Throws Error as the server does. */
Value Convert(const Value &value, const SqlType &from, const Destination &to);

/** The text the server prints for a value (PRINT, string conversion); empty for NULL. */
QByteArray DisplayText(const Value &value, const SqlType &type);

} // namespace tsql
