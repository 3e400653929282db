#pragma once

namespace bench {

class Report;

/// The embedded database itself beside SQLite's C API: rows in, rows out one at a time, and short lists. The statements
/// differ in nothing but their literals, as the product's do; the C API has them prepared.
void MeasureEngine(Report &report);

} // namespace bench
