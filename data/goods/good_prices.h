#pragma once

#include "host/data/dataset.h"
#include "host/data/quantity.h"
#include "host/data/query.h"
#include "host/host.h"

#include <QList>
#include <QMap>
#include <QString>

#include <array>
#include <optional>

namespace goods {

/// The prices of a good by level, ten for sale and ten for purchase, and the default level of each side. An open editor
/// works on rows of `tmpCostList`, which all desks share; the price row of the good gets them when it is saved.
class Prices
{
public:
    enum class Side { Sell, Buy };

    explicit Prices(const QSqlDatabase &main);

    host::Dataset SellDetails_QRY; ///< working sale prices of the good being edited; `Cost` is edited in place
    host::Dataset BuyDetails_QRY;  ///< working purchase prices
    host::Dataset &CostLevel_Rows(Side side) { return side == Side::Sell ? SellDetails_QRY : BuyDetails_QRY; }
    const host::Dataset &CostLevel_Rows(Side side) const
    {
        return side == Side::Sell ? SellDetails_QRY : BuyDetails_QRY;
    }

    QString CostLevel_GetTitle(int code);
    /// The good's price on its default level.
    host::Quantity GoodDefaultCost(int code);
    /// Makes the good's twenty working prices: of its price row, or zeros for a new good (kind 2). The former working
    /// rows are cleared first. A good without a price row gets none.
    void CostLevel_Prepare(int goodCode, int kind);
    /// Opens the working prices of one side.
    void CostLevel_GetAll(Side side, int goodCode);
    /// Opens the stored prices of one side, in the same columns, for looking at them: the working rows, which another
    /// desk may be editing, stay as they are.
    void CostLevel_View(Side side, int goodCode);
    /// Makes a level (1 to 10) the default of its side.
    void CostLevel_Update(Side side, int goodCode, int level);
    /// Fills a chooser with "default" (code 0) and the levels; returns the index of the entry to choose.
    int CostLevel_Fill(Side side, QList<host::Entity> &list, int goodCode);
    /// True when the side shows working prices but none, or zero, at the level.
    bool CostLevel_NotSelect(Side side, int level) const;
    /// Puts the working prices that the side shows, with what is being typed, in the place of those that the table
    /// holds: another desk that opens or leaves the same good clears them. True when they were others; the rows are
    /// open anew then.
    bool CostLevel_Restore(Side side, int goodCode);
    /// Writes the prices and default levels that are shown and were changed since CostLevel_Prepare() to the good's
    /// price row, in one statement or none. Working rows are not asked: they may be another desk's.
    void CostLevel_Save(int goodCode);
    /// The default level that is shown when it, or its price, was changed since CostLevel_Prepare(); 0 otherwise.
    int CostLevel_ChangedDefault(Side side) const;
    /// Clears the good's working prices.
    void CostLevel_DeleteTemp(int goodCode);

    void CostLevel_Sell_GetAll(int goodCode) { CostLevel_GetAll(Side::Sell, goodCode); }
    void CostLevel_Buy_GetAll(int goodCode) { CostLevel_GetAll(Side::Buy, goodCode); }
    void CostLevel_Sell_Update(int goodCode, int level) { CostLevel_Update(Side::Sell, goodCode, level); }
    void CostLevel_Buy_Update(int goodCode, int level) { CostLevel_Update(Side::Buy, goodCode, level); }
    int CostLevel_Sell_Fill(QList<host::Entity> &list, int code) { return CostLevel_Fill(Side::Sell, list, code); }
    int CostLevel_Buy_Fill(QList<host::Entity> &list, int code) { return CostLevel_Fill(Side::Buy, list, code); }
    bool CostLevel_Sell_NotSelect(int level) const { return CostLevel_NotSelect(Side::Sell, level); }
    bool CostLevel_Buy_NotSelect(int level) const { return CostLevel_NotSelect(Side::Buy, level); }

protected:
    /// The working prices go over to another code.
    void CostLevel_ChangeCode(int newCode, int oldCode);

private:
    /// The prices of one side.
    struct Shown
    {
        QMap<int, QString> costs; ///< by level, decimal texts
        int defaultLevel = 0;     ///< 0 for none
    };
    Shown ShownPrices(Side side) const;

    QSqlDatabase m_main;
    host::Query Temp_QRY;
    /// What each side showed first after CostLevel_Prepare().
    std::array<std::optional<Shown>, 2> m_prepared;
};

} // namespace goods
