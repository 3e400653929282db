#pragma once

namespace bench {

class Report;

/// Goods from a CSV file of `rows` rows into a demo shop of its own: read and judged, written as new goods, judged
/// again as known ones, and their prices changed.
void MeasureImport(Report &report, int rows);

/// The most memory that this process has had so far, in megabytes.
int PeakMegabytes();

} // namespace bench
