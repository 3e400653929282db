#pragma once

#include "data/goods/good_bulk_records.h"
#include "host/data/dataset.h"

#include <QList>

namespace goods {

/// The change of one price of many goods: the preview, which the user thins out, and its writing.
///
/// The preview is a working table of the connection. It holds old and new price of each good as they were when it was
/// made; what the list shows, or another desk does, afterwards changes neither which goods are written nor what.
class BulkPrices
{
public:
    explicit BulkPrices(const QSqlDatabase &main);

    /// The preview: `Place` (1 … n, the order of the scope), `Code`, `Name`, `OldPrice`, `NewPrice` (NULL where there
    /// is none), `Fate` (PriceFate) and `Picked`, which can be edited in place. All rows are read when it is opened.
    host::Dataset BulkPrices_QRY;

    /// Reckons the preview; every good that changes is picked. False when given up: there is no preview then.
    /// RefusedText for an instruction that makes no sense (level, option, direction, rounding, a percent or amount
    /// below 0).
    bool BulkPrices_Prepare(const GoodsScope &scope, const PriceInstruction &instruction,
                            const BulkProgress &progress = {});
    /// Opens the rows of the preview: all, or those that stay.
    enum class Rows : quint8 { All, Staying };
    void BulkPrices_GetAll(Rows rows = Rows::All);
    /// Leaves goods out, or takes them in again; of goods that do not change nothing happens. The open rows are to be
    /// opened anew by the caller.
    void BulkPrices_Pick(const QList<int> &codes, bool picked);
    void BulkPrices_PickAll(bool picked);
    /// The picked goods are those of the list and no others, as a grid with marks has them.
    void BulkPrices_PickOnly(const QList<int> &codes);
    /// Writes the picked goods whose stored price is still the old one; the others get PriceFate::ChangedMeanwhile or
    /// GoodGone in the preview and are counted as left. The preview stays, to be looked at.
    BulkResult BulkPrices_Apply(const BulkOrder &order);
    /// Drops the preview and closes its rows.
    void BulkPrices_Close();

private:
    QSqlDatabase m_main;
    PriceInstruction m_instruction;
    ScopeKind m_scope = ScopeKind::Marked;
};

} // namespace goods
