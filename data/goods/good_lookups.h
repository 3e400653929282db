#pragma once

#include "host/data/dataset.h"
#include "host/data/query.h"
#include "host/host.h"

#include <QList>
#include <QString>

namespace goods {

/// The WHERE that leaves the goods `g` of groups denied to a user out, as the list does; empty for 0, a manager.
QString GoodsShownTo(int deniedTo);

/// What the screens offer for choosing (groups, selected lists, parts of names), and the stock on hand.
class Lookups
{
public:
    explicit Lookups(const QSqlDatabase &main);

    host::Dataset GoodGroup_List_QRY; ///< groups: Code, Name, Comment

    void GoodGroup_GetAll();
    void GoodGroup_Fill(QList<host::Entity> &list);
    void GoodSelectedList_Fill(QList<host::Entity> &list);
    /// The list's `DisplayType`: true when its goods are the ones left out, false when they are the ones to show. The
    /// parameter @DisplayType of GoodInf_List_SP says the opposite: 0 leaves them out.
    bool GoodSelectedIndex_IsChecked(int code);

    /// A column of the name that the user types in three parts.
    enum class NamePart { Name, Type, Index };
    /// The first 50 texts, in order, that goods have in this part of their name and that begin with `beginning`.
    QStringList Good_NameParts(NamePart part, const QString &beginning);

    /// How many goods there are, without the groups denied to a user; 0 for a manager.
    int Good_Count(int deniedTo = 0);
    /// Whether the good is there and in no group denied to a user; 0 for a manager.
    bool Good_IsShownTo(int code, int deniedTo);

    /// Recomputes stock on hand: 255, then 254.
    void UpdateMogodiKala(int kind);
    struct Stock
    {
        host::Quantity MeghdarKol = 0; ///< total
        host::Quantity Mojod = 0;      ///< on hand
    };
    /// Totals of a detail list; `inner` is a SELECT made by the program with the columns MeghdarKol and Mojod.
    Stock GetStockMogodi(const QString &inner);

private:
    QSqlDatabase m_main;
    host::Query Temp_QRY;
};

} // namespace goods
