#pragma once

#include <QWidget>

#include <memory>

class QMenu;
class QPushButton;

namespace host {
class Dataset;
}

namespace Ui {
class GroupPanel;
}

namespace goods_list {

/// The groups beside the goods: found by typing, chosen by double-click or Enter, maintained through a popup menu.
///
/// The chosen group is the one whose goods are shown. Moving about in the list changes nothing yet: when the focus
/// leaves without a choice, the list stands on the chosen group again, so that it always tells what is shown.
class GroupPanel : public QWidget
{
    Q_OBJECT

public:
    explicit GroupPanel(QWidget *parent = nullptr);
    ~GroupPanel() override;

    /// Shows the groups of `groups` (fields `Code` and `Name`), which outlives the panel's use of it. The chosen group
    /// stays when it still exists; otherwise the first one is chosen, without a signal. Null lets go of the groups.
    void SetGroups(host::Dataset *groups);
    /// The code of the chosen group; 0 is all goods.
    int ChosenGroup() const { return m_chosen; }
    /// Chooses a group without a signal, 0 for all.
    void SetChosenGroup(int code);
    /// The group under the cursor, 0 when there is none.
    int CurrentGroup() const;
    QString CurrentName() const;

    /// Puts the focus into the search.
    void FocusSearch();
    QPushButton *GroupButton() const;
    /// Where Tab stops in the panel, in order.
    QList<QWidget *> TabStops() const;

signals:
    /// The user chose a group.
    void GroupChosen(int code);
    /// The user is done here: the keyboard belongs to the goods again.
    void LeaveRequested();
    void NewRequested();
    void EditRequested(int code);
    void DeleteRequested(int code);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void BuildMenu();
    void ShowMenu(const QPoint &position);
    void Choose();
    void ReturnToChosen();
    void Search(const QString &text);
    bool SearchKey(int key);
    void ShowHint(bool focused);

    std::unique_ptr<Ui::GroupPanel> m_ui;
    QMenu *GroupList_PUM = nullptr; // NOLINT(readability-identifier-naming): the business calls it so
    int m_chosen = 0;
};

} // namespace goods_list
