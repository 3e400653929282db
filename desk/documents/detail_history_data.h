#pragma once

#include "host/data/dataset.h"

namespace desk {

/// Where details came from and where they went.
class DetailHistoryData
{
public:
    explicit DetailHistoryData(const QSqlDatabase &connection)
        : Values_QRY(connection), Kin_QRY(connection), Movements_QRY(connection)
    {}

    /// DetailValueID, GoodCode, GoodName, Details (joined), OnHand (all stores).
    host::Dataset Values_QRY;
    /// DetailValueID, Degree (below 0 what the detail was cut from, above what was cut from it), Relation, Details
    /// (indented from the first unit on), Kind and Number of the document that it came by, Amount (that came), OnHand,
    /// Waste.
    host::Dataset Kin_QRY;
    /// Radif, Date, Kind, Number, StoreName, In1, Out1, StoreBalance, Balance; the oldest first.
    host::Dataset Movements_QRY;

    /// Details with this serial or barcode, then those that contain it; a screenful at most.
    void Find(const QString &serialOrBarcode);
    /// The details of a document's line; `details` is a SELECT of their DetailValueID.
    void OfLine(const QString &details);
    void Of(int detailValueId);
    /// From the unit that was first divided, over the detail value, down to its parts; alone when it was neither
    /// divided nor cut from another.
    void Kin(int detailValueId);
    /// The movements of a detail value; of none for 0.
    void Movements(int detailValueId);
};

} // namespace desk
