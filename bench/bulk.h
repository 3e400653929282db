#pragma once

namespace bench {

class Report;
class Shop;

/// Changes of all goods at once: preview, write and take back prices, discounts, asset and detail types.
void measureBulk(Report &report, Shop &shop);

} // namespace bench
