#pragma once

namespace bench {

class Report;
class Shop;

/// The list of all goods of a shop, opened and taken out as a workbook, a CSV file and a PDF.
void MeasureExport(Report &report, Shop &shop);

} // namespace bench
