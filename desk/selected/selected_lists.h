#pragma once

#include "desk/selected/selected_lists_data.h"
#include "host/screens/base_dock.h"

#include <functional>
#include <memory>

namespace Ui {
class SelectedLists;
}

namespace desk {

/// The selected lists beside the goods of the current one. Browsing (mode 1) they are made, renamed, filled, ordered
/// and deleted; choosing (mode 5) Enter takes the current list as well.
///
/// Keys: F4, F5 and F7 are of the lists; among the goods Insert marks, Delete takes the marked ones off, Ctrl+Up and
/// Ctrl+Down move the current one.
class TSelectedLists_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    /// Lets the user choose goods: a code list, empty for none.
    using GoodsChooser = std::function<QString()>;

    /// Without a chooser goods are only added from the goods list.
    TSelectedLists_FRM(host::Host &host, host::TFormMode mode, GoodsChooser chooseGoods);
    ~TSelectedLists_FRM() override;

    /// The list that the next opening stands on.
    void StandOn(int list) { m_current = list; }
    /// What is chosen for, above the lists: "۱۲ کالا به کدام لیست افزوده شود؟"
    void SetPrompt(const QString &prompt);
    /// The list that was chosen after the screen closed with OK, 0 otherwise.
    int ChosenCode() const { return m_chosen; }

protected:
    void FormShow() override;

private:
    void BindCommands();
    void OrderTabs();
    int List() const;
    void RefreshLists(int list);
    void FollowList();
    void RefreshGoods();
    void ShowState();
    void EditList(host::TFormMode mode);
    void DeleteList();
    void Choose();
    void AddGoods();
    void RemoveGoods();
    void RemoveAllGoods();
    void MoveGood(int step);

    GoodsChooser m_chooseGoods;
    std::unique_ptr<Ui::SelectedLists> m_ui;
    SelectedListsData m_data;
    int m_current = 0;
    int m_chosen = 0;
    bool m_refreshing = false; ///< the lists are being read; their current row is not settled yet
};

} // namespace desk
