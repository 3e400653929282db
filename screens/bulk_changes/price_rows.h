#pragma once

#include "data/goods/good_bulk_records.h"
#include "host/controls/grid_column.h"
#include "screens/bulk_changes/computed_rows.h"

/// The rows of a preview of prices, as grids show them.
namespace bulk_changes {

goods::PriceFate FateAt(const host::Dataset &preview, int row);
/// The new price less the old one as decimal text, and in words why a price stays: fields `Difference` and `Reason`.
QList<ComputedRows::Column> PriceFields(const host::Dataset &preview);
/// Columns for goods that change, and for goods that stay.
QList<host::GridColumn> ChangingColumns();
QList<host::GridColumn> StayingColumns();

} // namespace bulk_changes
