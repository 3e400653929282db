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

/// What the search form of the list asks for beside what the list decides.
struct SearchCriteria
{
    QString Tags;         ///< codes joined by ","; a good has to carry all of them
    int Category = 0;     ///< a good has to stand in this category or below it; 0 for any
    int SelectedList = 0; ///< a selected list, 0 for none
    bool LeftOut = false; ///< the goods of the selected list are those left out, not those shown
};

/// Anything is asked for at all.
bool HaveAdvFilter(const SearchCriteria &criteria);

/// "@Tags = '2,5'", empty without tags. Throws host::RefusedText for anything but codes and commas.
QString TagsParam(const QString &tags);
/// The code between commas, as the paths of categories have it: "@Category = ',12,'"; empty without a category.
QString CategoryParam(int category);
/// "@SL_Code = 3,@DisplayType = 0": a list whose goods are left out.
QString SelectedListParams(int list, bool leftOut);
/// What goes with every search: the user, prices, the selected list, and the list's group and stock tab.
QString SearchParams(const ListCriteria &list, const SearchCriteria &criteria);

/// The value of `@GoodExistType` for a stock tab.
int GoodExistType(int stockTab);

} // namespace goods
