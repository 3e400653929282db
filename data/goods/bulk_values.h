#pragma once

#include "data/goods/good_bulk_records.h"

#include <QSqlDatabase>

namespace goods {

class GoodDetailTypes;
struct BulkField;

/// Values that many goods are given alike: discounts, asset type, detail types.
class BulkValues
{
public:
    /// Keeps a reference to the part that writes detail types.
    BulkValues(const QSqlDatabase &main, GoodDetailTypes &detailTypes);

    /// Goods that have all ticked values already are left alone. A good without a price row gets one.
    BulkResult ApplyGroupDiscount(const GoodsScope &scope, const GroupDiscount &discount, const BulkOrder &order);
    /// The same for marked goods: the codes of an array whose highest index is given.
    BulkResult ApplyGroupDiscount(const QList<int> &codes, qsizetype highestIndex, const GroupDiscount &discount,
                                  const BulkOrder &order);

    /// `type` is a code of FinanceGoodTypes.
    BulkResult AssetType_Apply(const GoodsScope &scope, int type, const BulkOrder &order);

    /// Gives the goods exactly these detail types, a code list of one to five. Goods for whose details quantities are
    /// recorded keep theirs; so do goods that have exactly these. The forecast is no promise: another desk may change
    /// goods in between.
    BulkForecast DetailTypes_Forecast(const GoodsScope &scope, const QString &detailIds);
    BulkResult DetailTypes_Apply(const GoodsScope &scope, const QString &detailIds, const BulkOrder &order);

private:
    struct Work;
    static Work ColumnWork(BulkKind kind, const QList<BulkField> &fields);
    BulkResult Apply(const GoodsScope &scope, const Work &work, const BulkOrder &order);

    QSqlDatabase m_main;
    GoodDetailTypes &m_detailTypes;
};

} // namespace goods
