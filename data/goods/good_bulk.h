#pragma once

#include "data/goods/bulk_journal.h"
#include "data/goods/bulk_prices.h"
#include "data/goods/bulk_values.h"

namespace goods {

/// Changes of many goods at once: prices with a preview, discounts, asset type and detail types, and the list of the
/// last changes, from which each can be taken back.
///
/// The goods of a change are named once (`GoodsScope`) and stand in a working table of the connection from then on.
/// Every write is one transaction, also in the list of the last changes; only what differs is written. The number of
/// statements does not grow with the goods, except that codes travel in blocks of 1,000.
///
/// The stamp of a good (who changed it last) tells of its editor; a change of many goods leaves it alone and is told by
/// the list of the last changes.
class BulkChanges : public BulkPrices, public BulkValues, public BulkJournal
{
public:
    /// Keeps references to the parts that send to the scales and write detail types, and to the service.
    BulkChanges(const QSqlDatabase &main, Scales &scales, GoodDetailTypes &detailTypes,
                const host::EntityService &entities)
        : BulkPrices(main), BulkValues(main, detailTypes), BulkJournal(main, scales, entities)
    {}
};

} // namespace goods
