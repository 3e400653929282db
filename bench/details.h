#pragma once

namespace bench {

class Report;
class Shop;

/// Serials of one good: a range entered and saved, narrowed and taken out, with 100,000 of them on hand.
void MeasureDetails(Report &report, Shop &shop);

} // namespace bench
