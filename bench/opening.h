#pragma once

namespace bench {

class Floor;
class Report;
class Shop;

/// The opening stock list: a row for each good of the shop, in three stores.
void MeasureOpening(Report &report, Shop &shop, const Floor &floor);

} // namespace bench
