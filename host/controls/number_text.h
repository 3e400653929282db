#pragma once

#include "host/data/quantity.h"
#include "host/host_export.h"

#include <QString>

namespace host {

/// Number texts as people type and read them. The plain form is what SQL and Quantity understand: ASCII digits, at
/// most one '.', an optional leading '-', no grouping.

/// What a user typed, in plain form as far as it goes: Persian and Arabic digits become ASCII, '٫' and '/' become '.',
/// grouping marks (',', '٬', '،', blanks) and direction marks are dropped. Anything else stays, for the caller to
/// refuse.
HOST_EXPORT QString PlainNumber(const QString &typed);

/// True when `plain` is a complete number with at most `decimals` decimals.
HOST_EXPORT bool IsNumber(const QString &plain, int decimals, bool negative);

/// "1234567.50" → "1,234,567.50". Text that is no number comes back unchanged.
HOST_EXPORT QString GroupedNumber(const QString &plain);

/// Numbers are shown in Persian digits, with '٬' between groups and '٫' before decimals, wherever they are read
/// and not typed: grids, labels, edits without the focus. `grouped` puts the marks between thousands.
HOST_EXPORT QString DisplayNumber(const QString &plain, bool grouped = true);

/// An amount of details as documents write it, "#0.####;#0.####-;0": at most four decimals, the sign behind the number,
/// no marks between thousands.
HOST_EXPORT QString DisplayAmount(Quantity amount);

} // namespace host
