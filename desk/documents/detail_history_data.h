#pragma once

#include "host/data/dataset.h"

namespace desk {

/// Where details came from and where they went.
class DetailHistoryData
{
public:
    explicit DetailHistoryData(const QSqlDatabase &connection) : Values_QRY(connection), Movements_QRY(connection) {}

    /// DetailValueID, GoodCode, GoodName, Details (joined), OnHand (all stores).
    host::Dataset Values_QRY;
    /// Radif, Date, Kind, Number, StoreName, In1, Out1, StoreBalance, Balance; the oldest first.
    host::Dataset Movements_QRY;

    /// Details with this serial or barcode, then those that contain it; a screenful at most.
    void Find(const QString &serialOrBarcode);
    /// The details of a document's line; `details` is a SELECT of their DetailValueID.
    void OfLine(const QString &details);
    /// The movements of a detail value; of none for 0.
    void Movements(int detailValueId);
};

} // namespace desk
