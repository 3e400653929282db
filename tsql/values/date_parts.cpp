#include "tsql/values/dates.h"
#include "tsql/values/error.h"
#include "tsql/values/folding.h"

#include <QDate>

#include <cstdlib>

// The parts of a moment: adding to one, counting between two, reading one.

namespace tsql {

namespace {

enum class Part : quint8 { Year, Quarter, Month, DayOfYear, Day, Week, WeekDay, Hour, Minute, Second, Millisecond };

Part PartNamed(std::string_view name)
{
    struct Named
    {
        const char *name;
        Part part;
    };
    static constexpr Named names[] = {
        {"year", Part::Year},       {"yy", Part::Year},
        {"yyyy", Part::Year},       {"quarter", Part::Quarter},
        {"qq", Part::Quarter},      {"q", Part::Quarter},
        {"month", Part::Month},     {"mm", Part::Month},
        {"m", Part::Month},         {"dayofyear", Part::DayOfYear},
        {"dy", Part::DayOfYear},    {"y", Part::DayOfYear},
        {"day", Part::Day},         {"dd", Part::Day},
        {"d", Part::Day},           {"week", Part::Week},
        {"wk", Part::Week},         {"ww", Part::Week},
        {"weekday", Part::WeekDay}, {"dw", Part::WeekDay},
        {"w", Part::WeekDay},       {"hour", Part::Hour},
        {"hh", Part::Hour},         {"minute", Part::Minute},
        {"mi", Part::Minute},       {"n", Part::Minute},
        {"second", Part::Second},   {"ss", Part::Second},
        {"s", Part::Second},        {"millisecond", Part::Millisecond},
        {"ms", Part::Millisecond},
    };
    for (const Named &named : names) {
        if (CompareFolded(named.name, name) == 0)
            return named.part;
    }
    throw Error(155, {QString::fromUtf8(name.data(), qsizetype(name.size()))});
}

qint64 LengthOf(Part part)
{
    switch (part) {
    case Part::Hour:
        return 3600000;
    case Part::Minute:
        return 60000;
    case Part::Second:
        return 1000;
    case Part::Millisecond:
        return 1;
    case Part::Week:
        return 7 * DayLength;
    default:
        return DayLength;
    }
}

} // namespace

Moment AddPart(std::string_view name, qint64 number, Moment moment)
{
    const Part part = PartNamed(name);
    const int months = part == Part::Year ? 12 : part == Part::Quarter ? 3 : part == Part::Month ? 1 : 0;
    if (std::abs(number) > (months > 0 ? 120'000 / months : 4'000'000'000LL))
        throw Error(517);
    if (months > 0) {
        moment.day = DateOf(moment).addMonths(int(number * months)).toJulianDay() - EpochJulianDay;
    } else {
        const qint64 length = LengthOf(part);
        if (length >= DayLength)
            moment.day += number * (length / DayLength);
        else
            moment.millisecond += number * length;
        Normalise(moment);
    }
    const int year = DateOf(moment).year();
    if (year < 1 || year > 9999)
        throw Error(517);
    return moment;
}

qint64 DifferenceOfParts(std::string_view name, Moment from, Moment to)
{
    const QDate a = DateOf(from);
    const QDate b = DateOf(to);
    const Part part = PartNamed(name);
    switch (part) {
    case Part::Year:
        return b.year() - a.year();
    case Part::Quarter:
        return (b.year() - a.year()) * 4LL + (b.month() - 1) / 3 - (a.month() - 1) / 3;
    case Part::Month:
        return (b.year() - a.year()) * 12LL + b.month() - a.month();
    case Part::Week: // weeks begin on Sunday; 1970-01-04 was one
        return (to.day + 4 + 7'000'000) / 7 - (from.day + 4 + 7'000'000) / 7;
    case Part::DayOfYear:
    case Part::Day:
    case Part::WeekDay:
        return to.day - from.day;
    default:
        break;
    }
    const qint64 length = LengthOf(part);
    return (to.day - from.day) * (DayLength / length) + to.millisecond / length - from.millisecond / length;
}

qint64 PartOf(std::string_view name, Moment moment)
{
    const QDate date = DateOf(moment);
    switch (PartNamed(name)) {
    case Part::Year:
        return date.year();
    case Part::Quarter:
        return (date.month() + 2) / 3;
    case Part::Month:
        return date.month();
    case Part::DayOfYear:
        return date.dayOfYear();
    case Part::Day:
        return date.day();
    case Part::Week:
        return (date.dayOfYear() - 1 + QDate(date.year(), 1, 1).dayOfWeek() % 7) / 7 + 1;
    case Part::WeekDay:
        return date.dayOfWeek() % 7 + 1;
    case Part::Hour:
        return moment.millisecond / 3600000;
    case Part::Minute:
        return moment.millisecond / 60000 % 60;
    case Part::Second:
        return moment.millisecond / 1000 % 60;
    case Part::Millisecond:
        return moment.millisecond % 1000;
    }
    return 0;
}

} // namespace tsql
