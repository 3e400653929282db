#pragma once

#include <QString>

namespace host {

/// Dates and times as the suite writes them.
class ClockService
{
public:
    virtual ~ClockService() = default;

    /// The time of day, hours, minutes and seconds with ":".
    virtual QString NowTime() = 0;
    /// The Gregorian date with "/".
    virtual QString NowDate() = 0;
    /// The solar Hijri date with "/".
    virtual QString NowShamsiDate() = 0;
};

} // namespace host
