// Dates and times in their storage form: 'YYYY-MM-DD', 'YYYY-MM-DD hh:mm:ss.mmm', 'hh:mm:ss.mmm'.
#pragma once

#include "tsql/values/types.h"

#include <QDate>

#include <string>
#include <string_view>

namespace tsql {

/** A moment as whole days since 1970-01-01 (negative before) and milliseconds of the day. */
struct Moment
{
    qint64 day = 0;
    qint64 millisecond = 0;
};

inline constexpr qint64 DayLength = 24LL * 60 * 60 * 1000; // milliseconds
inline constexpr qint64 EpochJulianDay = 2440588;          // 1970-01-01

QDate DateOf(const Moment &moment);
/** Carries milliseconds below 0 or beyond the day over into the days. */
void Normalise(Moment &moment);

/** Reads the server's usual spellings. Error 241 for anything else, 242 for a day that no month has (241 for `date`).
 * The style, as CONVERT has it, says whether day, month or year stands first.
 */
Moment MomentFromText(std::string_view text, Kind kind = Kind::DateTime, int style = 0);
/** Reads the storage form back; it is known to be well formed. */
Moment MomentFromStorage(std::string_view stored);
/** Storage form for that kind: a date drops the time, datetime counts in 1/300 s, smalldatetime in minutes. */
std::string StorageText(Moment moment, Kind kind);
/** CONVERT's text of a style; 0 is the kind's own default. Error 281 for a style that does not exist. */
std::string StyledText(std::string_view stored, Kind kind, int style);

/** `part` is the server's name or abbreviation, any case: year, yy, month, mm, day, dd, hour … Error 155 otherwise. */
Moment AddPart(std::string_view part, qint64 number, Moment moment);
qint64 DifferenceOfParts(std::string_view part, Moment from, Moment to);
qint64 PartOf(std::string_view part, Moment moment);

/** This computer's local time. */
Moment Now();

} // namespace tsql
