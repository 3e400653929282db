#pragma once

#include "detailtypes/detail_type_choice.h"
#include "detailtypes/detail_types_dm.h"
#include "host/screens/base_dock.h"

#include <memory>

class QMenu;

namespace Ui {
class TDetailTypes_List_FRM;
}

/// The catalogue of detail types, on one tab, and of their categories with the members of each, on the other.
///
/// Browsing (mode 1) it maintains both. In mode 5 the user chooses for a good or a category: types that are marked, the
/// current one when none is, or a whole category. What is chosen must fit to what the owner has already: at most five
/// types, one serial or barcode, one date with reminder.
class TDetailTypes_List_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    /// `host` outlives the screen. `openingText` is what the caller handed over, as the base keeps it.
    explicit TDetailTypes_List_FRM(host::Host &host, host::TFormMode mode, const QString &openingText = {});
    ~TDetailTypes_List_FRM() override;

    /// What the next opening in mode 5 chooses for.
    void SetChoice(const detail_types::Choice &choice) { m_choice = choice; }
    /// The chosen codes joined by ","; empty unless the list closed with OK.
    QString SelectedCodes() const { return m_selectedCodes; }

protected:
    void FormShow() override;
    void FormClose() override;
    host::SearchFrame *ListSearch() const override;
    host::Grid *PrintedGrid() const override;

private:
    // Building.
    void BuildGrids();
    void BindCommands();
    void BindMenus();
    void OrderTabs();
    void BindKeys();

    // Both tabs.
    bool Chooses() const { return Mode() == host::TFormMode::Selection; }
    bool OnTypes() const;
    void Warn(const QString &text);
    void ShowTab();
    void RefreshButtons();
    /// Takes the row for what the mode is about: to choose it or to edit it.
    void Activate();
    void CloseWith(const QString &codes);

    // The types.
    void ReloadTypes(const QString &key);
    void EditType(host::TFormMode mode);
    void DeleteType();
    void ChooseTypes();

    // The categories and their members.
    int Category() const;
    bool IsDefault() const;
    void ReloadCategories(const QString &key);
    void FollowCategory();
    void EditCategory(host::TFormMode mode);
    void DeleteCategory();
    void SwitchDefault();
    void ChooseCategory();
    void AddMembers();
    void DeleteMembers();
    void DeleteAllMembers();

    std::unique_ptr<Ui::TDetailTypes_List_FRM> m_ui;
    TDetailTypes_DM m_data;
    detail_types::Choice m_choice;
    QString m_selectedCodes;
};
