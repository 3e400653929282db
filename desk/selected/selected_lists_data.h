#pragma once

#include "host/data/dataset.h"

#include <QString>

namespace desk {

/// The rows behind the selected lists of goods (SelectedLists of type 0, SelectedList_Detail).
class SelectedListsData
{
public:
    explicit SelectedListsData(const QSqlDatabase &connection);

    struct List
    {
        int Code = 0;
        QString Title;
        bool Enable = true;       ///< offered for choosing
        bool DisplayType = false; ///< its goods are the ones left out
    };

    host::Dataset Lists; ///< Code, Title, Goods (their number), Use, State
    host::Dataset Goods; ///< of one list, in its order: Code, Name, Place

    void OpenLists();
    void OpenGoods(int list);

    /// The list with this code; Code is 0 when there is none.
    List Get(int code) const;
    static QString RowText(int code);
    bool TitleTaken(const List &list) const;
    /// Writes a list; a new one (code 0) gets the next code. The code.
    int Save(const List &list);
    void Delete(int list);

    /// Puts goods behind those that the list holds, in the order of `codes` (a code list); what it holds already and
    /// what is no good is passed over. Returns how many were added. Blocks of 1000 codes.
    int Add(int list, const QString &codes);
    /// Takes goods out, all or none; `codes` is a code list. Blocks of 1000 codes.
    void Remove(int list, const QString &codes);
    void RemoveAll(int list);
    /// Moves a good by one place: -1 towards the beginning, 1 towards the end. Nothing is
    /// written at either end, nor for a good that is not there any more.
    void Move(int list, int good, int step);

private:
    QSqlDatabase m_connection;
};

} // namespace desk
