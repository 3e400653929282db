#pragma once

#include "host/data/dataset.h"
#include "host/data/quantity.h"

#include <QString>

#include <array>

namespace goods {

/// Which movements of a good are wanted.
struct MovementFilter
{
    int GoodCode = 0;
    QString FromDate; ///< as the suite writes dates; empty: from the opening of the books
    QString ToDate;   ///< the last day; empty: no end
    int Store = 0;    ///< 0: every store
};

/// The good whose movements are shown.
struct MovementGood
{
    QString Name;
    QString UnitName1;
    QString UnitName2; ///< empty for a good of one unit
};

/// What a good comes to over a range of days, in one of its units.
struct MovementTotal
{
    host::Quantity Before = 0; ///< opening stock, or what was there before the first day
    host::Quantity In = 0;
    host::Quantity Out = 0; ///< without sign
    host::Quantity Balance() const { return Before + In - Out; }
};

/// The movements of one good: the opening stock first, then what came in and went out, day by day, with the balance
/// after each.
class Movements
{
public:
    explicit Movements(const QSqlDatabase &main);

    /// Radif, Date, Kind, Number, StoreName, In1, Out1, In2, Out2, Cost, StoreBalance1, StoreBalance2, Balance1,
    /// Balance2, Sharh; amounts without sign. A first day brings forward per store what was there before it.
    host::Dataset Movements_QRY;

    /// False when there is no such good.
    bool Movements_GetGood(int goodCode, MovementGood &good);
    /// Opens `Movements_QRY`. Throws host::RefusedText for dates that are none.
    void Movements_GetAll(const MovementFilter &filter);
    /// The totals in the first and the second unit, all stores of the filter together.
    std::array<MovementTotal, 2> Movements_GetTotals(const MovementFilter &filter);

private:
    QSqlDatabase m_main;
};

} // namespace goods
