#include "tsql/values/dates.h"

#include "tsql/values/error.h"
#include "tsql/values/folding.h"

#include <QDate>
#include <QDateTime>

#include <array>
#include <unordered_map>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

constexpr qint64 DayLength = 24LL * 60 * 60 * 1000;
constexpr qint64 EpochJulianDay = 2440588; // 1970-01-01

[[noreturn]] void throwNoDate()
{
    throw Error(241);
}

qint64 dayOf(int year, int month, int day)
{
    if (!QDate::isValid(year, month, day) || year < 1 || year > 9999)
        throw Error(242);
    return QDate(year, month, day).toJulianDay() - EpochJulianDay;
}

QDate dateOf(const Moment &moment)
{
    return QDate::fromJulianDay(moment.day + EpochJulianDay);
}

/** Reads numbers and the marks between them from the front of a text. */
struct Reader
{
    std::string_view rest;

    /** The digits at the front; -1 for none. `width` tells how many there were. */
    int number(size_t *width = nullptr)
    {
        int value = 0;
        size_t count = 0;
        while (count < rest.size() && rest[count] >= '0' && rest[count] <= '9' && count < 9)
            value = value * 10 + (rest[count++] - '0');
        rest.remove_prefix(count);
        if (width)
            *width = count;
        return count == 0 ? -1 : value;
    }

    bool take(char c)
    {
        if (rest.empty() || rest.front() != c)
            return false;
        rest.remove_prefix(1);
        return true;
    }

    void blanks()
    {
        while (take(' ')) {
        }
    }
};

enum class DateOrder : quint8 { MonthFirst, DayFirst, YearFirst };

DateOrder orderOf(int style)
{
    switch (style) {
    case 0:
    case 1:
    case 8:
    case 9:
    case 10:
    case 14:
    case 24:
    case 100:
    case 101:
    case 108:
    case 109:
    case 110:
    case 114:
        return DateOrder::MonthFirst; // as us_english has it
    case 3:
    case 4:
    case 5:
    case 103:
    case 104:
    case 105:
        return DateOrder::DayFirst;
    case 2:
    case 11:
    case 12:
    case 20:
    case 21:
    case 23:
    case 25:
    case 102:
    case 111:
    case 112:
    case 120:
    case 121:
    case 126:
    case 127:
        return DateOrder::YearFirst;
    default:
        throw notSupported(u"CONVERT of a text to a date with style %1"_s.arg(style));
    }
}

/** Years of two digits, which CONVERT reads with the styles below 100. */
int fullYear(int year)
{
    constexpr int Cutoff = 50; // 2049 is the last one
    return year + (year < Cutoff ? 2000 : 1900);
}

/** `isDate`: a date with its year in front has its month next, whatever the order; a datetime has not. */
qint64 readDate(Reader &reader, DateOrder order, bool isDate, bool shortYears)
{
    size_t width = 0;
    const int first = reader.number(&width);
    if (width == 8)
        return dayOf(first / 10000, first / 100 % 100, first % 100);
    char mark = 0;
    for (const char candidate : {'-', '/', '.'}) {
        if (reader.take(candidate))
            mark = candidate;
    }
    const int second = reader.number();
    if (mark == 0 || second < 0 || !reader.take(mark))
        throwNoDate();
    size_t lastWidth = 0;
    const int third = reader.number(&lastWidth);
    const bool monthNext = isDate || order != DateOrder::DayFirst || reader.rest.starts_with('T');
    if (width == 4 && lastWidth <= 2 && third >= 0)
        return monthNext ? dayOf(first, second, third) : dayOf(first, third, second);
    const bool shortYear = shortYears && lastWidth == 2;
    if ((lastWidth != 4 && !shortYear) || width > 2 || first < 0)
        throwNoDate();
    const int year = shortYear ? fullYear(third) : third;
    switch (order) {
    case DateOrder::MonthFirst:
        return dayOf(year, first, second);
    case DateOrder::DayFirst:
        return dayOf(year, second, first);
    case DateOrder::YearFirst:
        break;
    }
    if (!shortYear)
        throwNoDate();
    return dayOf(fullYear(first), second, third);
}

qint64 readTime(Reader &reader)
{
    int hour = reader.number();
    int minute = 0;
    int second = 0;
    int fraction = 0;
    if (hour < 0)
        throwNoDate();
    if (reader.take(':')) {
        minute = reader.number();
        if (reader.take(':')) {
            second = reader.number();
            if (reader.take('.')) {
                size_t width = 0;
                fraction = reader.number(&width);
                for (; width < 3; ++width)
                    fraction *= 10;
                for (; width > 3; --width)
                    fraction /= 10;
            }
        }
    }
    reader.blanks();
    if (!reader.rest.empty()) {
        const bool afternoon = compareFolded(reader.rest, "PM") == 0;
        if ((!afternoon && compareFolded(reader.rest, "AM") != 0) || hour < 1 || hour > 12)
            throwNoDate();
        hour = hour % 12 + (afternoon ? 12 : 0);
    }
    if (hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59 || fraction < 0)
        throwNoDate();
    return ((hour * 60LL + minute) * 60 + second) * 1000 + fraction;
}

int floorDivide(qint64 value, qint64 by, qint64 &rest)
{
    qint64 quotient = value / by;
    rest = value % by;
    if (rest < 0) {
        rest += by;
        --quotient;
    }
    return int(quotient);
}

void normalise(Moment &moment)
{
    qint64 rest = 0;
    moment.day += floorDivide(moment.millisecond, DayLength, rest);
    moment.millisecond = rest;
}

} // namespace

namespace {

Moment parsedMoment(std::string_view text, DateOrder order, bool isDate, bool shortYears)
{
    Reader reader{withoutTrailingBlanks(text)};
    reader.blanks();
    if (reader.rest.empty())
        return {dayOf(1900, 1, 1), 0};
    Moment moment{dayOf(1900, 1, 1), 0};
    const size_t colon = reader.rest.find(':');
    const size_t mark = reader.rest.find_first_of("-/ T");
    if (colon == std::string_view::npos || (mark != std::string_view::npos && mark < colon)) {
        moment.day = readDate(reader, order, isDate, shortYears);
        if (reader.rest.empty())
            return moment;
        if (!reader.take('T'))
            reader.blanks();
    }
    moment.millisecond = readTime(reader);
    return moment;
}

} // namespace

Moment momentFromText(std::string_view text, Kind kind, int style)
{
    const DateOrder order = orderOf(style);
    const bool shortYears = style > 0 && style < 100;
    if (kind != Kind::Date)
        return parsedMoment(text, order, false, shortYears);
    try {
        return parsedMoment(text, order, true, shortYears);
    } catch (const Error &) {
        throwNoDate();
    }
}

Moment momentFromStorage(std::string_view stored)
{
    const auto number = [&](size_t at, size_t count) {
        int value = 0;
        for (size_t i = at; i < at + count && i < stored.size(); ++i)
            value = value * 10 + (stored[i] - '0');
        return value;
    };
    const auto time = [&](size_t at) {
        return ((number(at, 2) * 60LL + number(at + 3, 2)) * 60 + number(at + 6, 2)) * 1000 + number(at + 9, 3);
    };
    if (stored.size() < 10 || stored[2] == ':')
        return {dayOf(1900, 1, 1), time(0)};
    return {dayOf(number(0, 4), number(5, 2), number(8, 2)), stored.size() > 10 ? time(11) : 0};
}

std::string storageText(Moment moment, Kind kind)
{
    if (kind == Kind::DateTime) {
        // Ticks of 1/300 s shown in milliseconds: …0, …3, …7.
        const qint64 ticks = (moment.millisecond * 3 + 5) / 10;
        moment.millisecond = (ticks * 10 + 1) / 3;
    } else if (kind == Kind::SmallDateTime) {
        moment.millisecond = (moment.millisecond + 30000) / 60000 * 60000;
    }
    normalise(moment);
    const QDate date = dateOf(moment);
    const auto ms = int(moment.millisecond);
    char text[40];
    int length = 0;
    if (kind != Kind::Time)
        length = std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.year(), date.month(), date.day());
    if (kind != Kind::Date) {
        if (length > 0)
            text[length++] = ' ';
        length += std::snprintf(text + length, sizeof text - size_t(length), "%02d:%02d:%02d.%03d", ms / 3600000,
                                ms / 60000 % 60, ms / 1000 % 60, ms % 1000);
    }
    return {text, size_t(length)};
}

namespace {

constexpr std::array<const char *, 12> MonthNames = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

/** Y M D h m s f stand for the parts, N for the month's name, H and P for the clock of twelve hours. */
const char *patternOf(int style)
{
    static const std::unordered_map<int, const char *> patterns = {
        {0, "N D Y H:mP"},    {100, "N D Y H:mP"},    {1, "M/d/y"},          {101, "M/d/Y"},
        {2, "y.M.d"},         {102, "Y.M.d"},         {3, "d/M/y"},          {103, "d/M/Y"},
        {4, "d.M.y"},         {104, "d.M.Y"},         {5, "d-M-y"},          {105, "d-M-Y"},
        {8, "h:m:s"},         {24, "h:m:s"},          {108, "h:m:s"},        {10, "M-d-y"},
        {110, "M-d-Y"},       {11, "y/M/d"},          {111, "Y/M/d"},        {12, "yMd"},
        {112, "YMd"},         {14, "h:m:s:f"},        {114, "h:m:s:f"},      {20, "Y-M-d h:m:s"},
        {120, "Y-M-d h:m:s"}, {21, "Y-M-d h:m:s.f"},  {25, "Y-M-d h:m:s.f"}, {121, "Y-M-d h:m:s.f"},
        {23, "Y-M-d"},        {126, "Y-M-dTh:m:s.f"},
    };
    const auto found = patterns.find(style);
    if (found == patterns.end())
        throw Error(281, {style});
    return found->second;
}

QString partText(char mark, const QDate &date, int ms)
{
    const int hour = ms / 3600000;
    const auto padded = [](int number, int width, char fill = '0') {
        return QString::number(number).rightJustified(width, QLatin1Char(fill));
    };
    switch (mark) {
    case 'Y':
        return padded(date.year(), 4);
    case 'y':
        return padded(date.year() % 100, 2);
    case 'M':
        return padded(date.month(), 2);
    case 'N':
        return QLatin1String(MonthNames[size_t(date.month() - 1)]);
    case 'd':
        return padded(date.day(), 2);
    case 'D':
        return padded(date.day(), 2, ' ');
    case 'h':
        return padded(hour, 2);
    case 'H':
        return padded(hour % 12 == 0 ? 12 : hour % 12, 2, ' ');
    case 'P':
        return hour < 12 ? u"AM"_s : u"PM"_s;
    case 'm':
        return padded(ms / 60000 % 60, 2);
    case 's':
        return padded(ms / 1000 % 60, 2);
    case 'f':
        return padded(ms % 1000, 3);
    default:
        return QString(QLatin1Char(mark));
    }
}

} // namespace

std::string styledText(std::string_view stored, Kind kind, int style)
{
    if (style == 0 && kind == Kind::Date)
        style = 23;
    if (style == 0 && kind == Kind::Time)
        style = 114;
    const Moment moment = momentFromStorage(stored);
    const QDate date = dateOf(moment);
    std::string text;
    for (const char *mark = patternOf(style); *mark != 0; ++mark)
        text += partText(*mark, date, int(moment.millisecond)).toStdString();
    if (kind == Kind::Date && text.size() > 10)
        text.resize(style == 0 || style == 100 ? 11 : 10);
    return text;
}

namespace {

enum class Part : quint8 { Year, Quarter, Month, DayOfYear, Day, Week, WeekDay, Hour, Minute, Second, Millisecond };

Part partNamed(std::string_view name)
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
        if (compareFolded(named.name, name) == 0)
            return named.part;
    }
    throw Error(155, {QString::fromUtf8(name.data(), qsizetype(name.size()))});
}

qint64 lengthOf(Part part)
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

Moment addPart(std::string_view name, qint64 number, Moment moment)
{
    const Part part = partNamed(name);
    const int months = part == Part::Year ? 12 : part == Part::Quarter ? 3 : part == Part::Month ? 1 : 0;
    if (std::abs(number) > (months > 0 ? 120'000 / months : 4'000'000'000LL))
        throw Error(517);
    if (months > 0) {
        moment.day = dateOf(moment).addMonths(int(number * months)).toJulianDay() - EpochJulianDay;
    } else {
        qint64 rest = 0;
        const qint64 length = lengthOf(part);
        moment.day +=
            length >= DayLength ? number * (length / DayLength) : floorDivide(number * length, DayLength, rest);
        moment.millisecond += rest;
        normalise(moment);
    }
    const int year = dateOf(moment).year();
    if (year < 1 || year > 9999)
        throw Error(517);
    return moment;
}

qint64 differenceOfParts(std::string_view name, Moment from, Moment to)
{
    const QDate a = dateOf(from);
    const QDate b = dateOf(to);
    const Part part = partNamed(name);
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
    const qint64 length = lengthOf(part);
    return (to.day - from.day) * (DayLength / length) + to.millisecond / length - from.millisecond / length;
}

qint64 partOf(std::string_view name, Moment moment)
{
    const QDate date = dateOf(moment);
    switch (partNamed(name)) {
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

Moment now()
{
    const QDateTime present = QDateTime::currentDateTime();
    return {present.date().toJulianDay() - EpochJulianDay, present.time().msecsSinceStartOfDay()};
}

} // namespace tsql
