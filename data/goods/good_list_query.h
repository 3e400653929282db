#pragma once

#include <QString>
#include <QStringList>

namespace goods {

/// The procedure that lists goods; its parameters follow.
QString ListScript();

/// What the rows of the goods list depend on.
struct ListCriteria
{
    int GrpCode = 0;        ///< the group to show; 0 shows the goods of all groups
    int ManageType = 0;     ///< of the signed-in user
    int UserCode = 0;       ///< of the signed-in user
    QString RequestedCol;   ///< fields that the procedure must fill, joined by ","
    bool StockTabs = false; ///< stock on hand is kept on the list, so its tab limits the rows
    int StockTab = 2;       ///< 0 goods with stock, 1 goods without stock, 2 all
    bool Advanced = false;  ///< the parameters of the advanced search count
    QString AdvancedParams; ///< parameter text of the advanced search
};

/// The parameters of the advanced search without those that the list itself decides, as they are kept from now on.
QString AdvancedParamsFor(const ListCriteria &criteria);

/// The parameter texts of `ListScript`, in order; the search manager joins them with commas.
QStringList ListFilter(const ListCriteria &criteria);

/// The value of `@GoodExistType` for a stock tab.
int GoodExistType(int stockTab);

} // namespace goods
