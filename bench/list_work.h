#pragma once

namespace bench {

class Report;
class Shop;

/// What the list does for many goods or many rows: the movements of a busy good, labels, marks into a selected list,
/// and the forecast of a change of detail types.
void MeasureListWork(Report &report, Shop &shop);

} // namespace bench
