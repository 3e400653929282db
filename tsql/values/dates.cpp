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

[[noreturn]] void ThrowNoDate()
{
    throw Error(241);
}

qint64 DayOf(int year, int month, int day)
{
    if (!QDate::isValid(year, month, day) || year < 1 || year > 9999)
        throw Error(242);
    return QDate(year, month, day).toJulianDay() - EpochJulianDay;
}

/** Reads numbers and the marks between them from the front of a text. */
struct Reader
{
    std::string_view rest;

    /** The digits at the front; -1 for none. `width` tells how many there were. */
    int Number(size_t *width = nullptr)
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

    bool Take(char c)
    {
        if (rest.empty() || rest.front() != c)
            return false;
        rest.remove_prefix(1);
        return true;
    }

    void Blanks()
    {
        while (Take(' ')) {
        }
    }
};

enum class DateOrder : quint8 { MonthFirst, DayFirst, YearFirst };

DateOrder OrderOf(int style)
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
        throw NotSupported(u"CONVERT of a text to a date with style %1"_s.arg(style));
    }
}

/** Years of two digits, which CONVERT reads with the styles below 100. */
int FullYear(int year)
{
    constexpr int Cutoff = 50; // 2049 is the last one
    return year + (year < Cutoff ? 2000 : 1900);
}

/** `isDate`: a date with its year in front has its month next, whatever the order; a datetime has not. */
qint64 ReadDate(Reader &reader, DateOrder order, bool isDate, bool shortYears)
{
    size_t width = 0;
    const int first = reader.Number(&width);
    if (width == 8)
        return DayOf(first / 10000, first / 100 % 100, first % 100);
    char mark = 0;
    for (const char candidate : {'-', '/', '.'}) {
        if (reader.Take(candidate))
            mark = candidate;
    }
    const int second = reader.Number();
    if (mark == 0 || second < 0 || !reader.Take(mark))
        ThrowNoDate();
    size_t lastWidth = 0;
    const int third = reader.Number(&lastWidth);
    const bool monthNext = isDate || order != DateOrder::DayFirst || reader.rest.starts_with('T');
    if (width == 4 && lastWidth <= 2 && third >= 0)
        return monthNext ? DayOf(first, second, third) : DayOf(first, third, second);
    const bool shortYear = shortYears && lastWidth == 2;
    if ((lastWidth != 4 && !shortYear) || width > 2 || first < 0)
        ThrowNoDate();
    const int year = shortYear ? FullYear(third) : third;
    switch (order) {
    case DateOrder::MonthFirst:
        return DayOf(year, first, second);
    case DateOrder::DayFirst:
        return DayOf(year, second, first);
    case DateOrder::YearFirst:
        break;
    }
    if (!shortYear)
        ThrowNoDate();
    return DayOf(FullYear(first), second, third);
}

qint64 ReadTime(Reader &reader)
{
    int hour = reader.Number();
    int minute = 0;
    int second = 0;
    int fraction = 0;
    if (hour < 0)
        ThrowNoDate();
    if (reader.Take(':')) {
        minute = reader.Number();
        if (reader.Take(':')) {
            second = reader.Number();
            if (reader.Take('.')) {
                size_t width = 0;
                fraction = reader.Number(&width);
                for (; width < 3; ++width)
                    fraction *= 10;
                for (; width > 3; --width)
                    fraction /= 10;
            }
        }
    }
    reader.Blanks();
    if (!reader.rest.empty()) {
        const bool afternoon = CompareFolded(reader.rest, "PM") == 0;
        if ((!afternoon && CompareFolded(reader.rest, "AM") != 0) || hour < 1 || hour > 12)
            ThrowNoDate();
        hour = hour % 12 + (afternoon ? 12 : 0);
    }
    if (hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59 || fraction < 0)
        ThrowNoDate();
    return ((hour * 60LL + minute) * 60 + second) * 1000 + fraction;
}

int FloorDivide(qint64 value, qint64 by, qint64 &rest)
{
    qint64 quotient = value / by;
    rest = value % by;
    if (rest < 0) {
        rest += by;
        --quotient;
    }
    return int(quotient);
}

Moment ParsedMoment(std::string_view text, DateOrder order, bool isDate, bool shortYears)
{
    Reader reader{WithoutTrailingBlanks(text)};
    reader.Blanks();
    if (reader.rest.empty())
        return {DayOf(1900, 1, 1), 0};
    Moment moment{DayOf(1900, 1, 1), 0};
    const size_t colon = reader.rest.find(':');
    const size_t mark = reader.rest.find_first_of("-/ T");
    if (colon == std::string_view::npos || (mark != std::string_view::npos && mark < colon)) {
        moment.day = ReadDate(reader, order, isDate, shortYears);
        if (reader.rest.empty())
            return moment;
        if (!reader.Take('T'))
            reader.Blanks();
    }
    moment.millisecond = ReadTime(reader);
    return moment;
}

} // namespace

QDate DateOf(const Moment &moment)
{
    return QDate::fromJulianDay(moment.day + EpochJulianDay);
}

void Normalise(Moment &moment)
{
    qint64 rest = 0;
    moment.day += FloorDivide(moment.millisecond, DayLength, rest);
    moment.millisecond = rest;
}

Moment MomentFromText(std::string_view text, Kind kind, int style)
{
    const DateOrder order = OrderOf(style);
    const bool shortYears = style > 0 && style < 100;
    if (kind != Kind::Date)
        return ParsedMoment(text, order, false, shortYears);
    try {
        return ParsedMoment(text, order, true, shortYears);
    } catch (const Error &) {
        ThrowNoDate();
    }
}

Moment MomentFromStorage(std::string_view stored)
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
        return {DayOf(1900, 1, 1), time(0)};
    return {DayOf(number(0, 4), number(5, 2), number(8, 2)), stored.size() > 10 ? time(11) : 0};
}

std::string StorageText(Moment moment, Kind kind)
{
    if (kind == Kind::DateTime) {
        // Ticks of 1/300 s shown in milliseconds: …0, …3, …7.
        const qint64 ticks = (moment.millisecond * 3 + 5) / 10;
        moment.millisecond = (ticks * 10 + 1) / 3;
    } else if (kind == Kind::SmallDateTime) {
        moment.millisecond = (moment.millisecond + 30000) / 60000 * 60000;
    }
    Normalise(moment);
    const QDate date = DateOf(moment);
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
const char *PatternOf(int style)
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

QString PartText(char mark, const QDate &date, int ms)
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

std::string StyledText(std::string_view stored, Kind kind, int style)
{
    if (style == 0 && kind == Kind::Date)
        style = 23;
    if (style == 0 && kind == Kind::Time)
        style = 114;
    const Moment moment = MomentFromStorage(stored);
    const QDate date = DateOf(moment);
    std::string text;
    for (const char *mark = PatternOf(style); *mark != 0; ++mark)
        text += PartText(*mark, date, int(moment.millisecond)).toStdString();
    if (kind == Kind::Date && text.size() > 10)
        text.resize(style == 0 || style == 100 ? 11 : 10);
    return text;
}

Moment Now()
{
    const QDateTime present = QDateTime::currentDateTime();
    return {present.date().toJulianDay() - EpochJulianDay, present.time().msecsSinceStartOfDay()};
}

} // namespace tsql
