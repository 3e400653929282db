#pragma once

#include "gooddetail/good_detail_records.h"

namespace good_detail {

/// The conditions by which what is typed narrows the list of the exit screen, joined by " AND "; empty when nothing
/// narrows it. `unitType` as in host::TDocumentLine.
QString NarrowingCondition(const TExitNarrowing &typed, int unitType);

} // namespace good_detail
