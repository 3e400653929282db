#pragma once

#include "data/goods/good_records.h"
#include "host/data/dataset.h"
#include "host/data/query.h"

namespace goods {

/// The discounts of a good. They stand in its price row and are saved with the good.
class Discounts
{
public:
    explicit Discounts(const QSqlDatabase &main);

    /// Fills `price`; leaves it alone when the good has no price row.
    void Read(int code, TGoodPrice_Rec &price);
    /// Makes the price row of a good that has none. In an existing row it writes what differs from `before`, all of it
    /// when that is null.
    void Save(int code, const TGoodPrice_Rec &price, const TGoodPrice_Rec *before);

private:
    host::Dataset GoodCostDiscount_QRY;
    host::Query Temp_QRY;
};

} // namespace goods
