#pragma once

#include <QString>

namespace host {

/// Selected lists: goods that users keep together under a title (a basket for a season, what is sold no more), in an
/// order of their own. Lists of goods can be limited to one of them, or to the goods in none. The host keeps them and
/// asks for the right to use them (goods, 34); its windows are modal.
class SelectedListService
{
public:
    virtual ~SelectedListService() = default;

    /// Opens the lists for making, renaming, ordering, filling and deleting, standing on the list with this code.
    virtual void Call_SelectedLists(int code) = 0;
    /// Lets the user choose a list, or make one, and puts the goods behind those that it holds; those that it holds
    /// already stay where they are. `goodCodes` is a code list in the order wanted. The code of the list, 0 when the
    /// user gave up.
    virtual int AddToSelectedList(const QString &goodCodes) = 0;
};

} // namespace host
