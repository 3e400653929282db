#pragma once

namespace bench {

class Report;
class Shop;

/// Divisions: one unit into a thousand parts, each with a serial of its own, saved, changed and taken back.
void MeasureDivision(Report &report, Shop &shop);

} // namespace bench
