#pragma once

namespace bench {

class Report;

/// Goods from a CSV file of `rows` rows into a demo shop of its own: read and judged, written as new goods, judged
/// again as known ones, and their prices changed; then the list of them taken out to files, and both files taken back.
void MeasureImport(Report &report, int rows);

} // namespace bench
