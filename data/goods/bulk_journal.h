#pragma once

#include "data/goods/good_bulk_records.h"
#include "data/goods/goods_import_journal.h"
#include "host/data/dataset.h"

namespace goods {

class Scales;

/// The last changes of many goods, each with the values from before, and taking them back. The last 50 are kept.
class BulkJournal
{
public:
    /// Keeps references to the part that sends to the scales and to the service that knows what is in use.
    BulkJournal(const QSqlDatabase &main, Scales &scales, const host::EntityService &entities);

    /// The last changes, newest first: `ID`, `Kind` (BulkKind), `Title`, `Scope` (ScopeKind), `Goods` (written),
    /// `UserChanged`, `ChangedDate`, `ChangedTime`; `TakenBack` (bit), `GoodsTakenBack` and `GoodsLeft`, and
    /// `UserTakenBack`, `TakenBackDate`, `TakenBackTime`, NULL while it stands.
    host::Dataset BulkChanges_QRY;
    /// Goods of one change, in blocks: `Code`, `Name` (NULL for a deleted good), `Left` (LeftReason: why it was not
    /// taken back), `OldPrice` and `NewPrice` of a change of prices; `OldText` and `NewText` of the others (percents
    /// with all their digits, joined by " / " in the order of the dialog, titles of types, of a file as
    /// ImportJournal::TextColumns() tells), NULL otherwise.
    host::Dataset BulkGoods_QRY;
    host::Dataset BulkLeft_QRY; ///< the same, at once, of goods that taking back left, for a report of its own

    /// Opens the list.
    void BulkChanges_GetAll();
    /// Opens the goods of a change: all of them, or those that taking it back left as they were.
    void BulkGoods_GetAll(int change);
    void BulkGoods_GetLeft(int change);
    /// Whether a change can be taken back: it stands, was taken back, or is not in the list any more.
    enum class State : quint8 { Stands, TakenBack, Forgotten };
    State BulkChange_State(int change) const;
    /// How many goods taking it back would restore (`changing`) and leave because they were changed since (`same`),
    /// cannot get their old values back (`protectedOf`), are in use (`used`) or deleted (`gone`).
    BulkForecast BulkChange_Forecast(int change);
    /// Gives all goods of a change their old values back whose values are still those that were written, in one
    /// transaction; goods that it made are deleted. Goods changed since stay as they are and are marked in the list, so
    /// do those that it made and that are used by now. `order.title` is not used.
    BulkResult BulkChange_TakeBack(int change, const BulkOrder &order);

    /// For shops with scales (`ScaleService::Enabled`), after a price was written or taken back: the items of the
    /// goods of the change whose default sale level it was are sent as Scales::SendChangesToScale() does; goods that
    /// went with the change are taken off. Returns the number of items; 0 for changes of anything else.
    int BulkChange_SendToScales(int change);

private:
    void OpenGoods(host::Dataset &rows, int change, const QString &condition);
    Comparison CompareEntry(int change, const QList<BulkField> &fields, const QString &lock) const;
    int SendLevel(int level, const QString &of);

    QSqlDatabase m_main;
    Scales &m_scales;
    ImportJournal m_imports;
};

} // namespace goods
