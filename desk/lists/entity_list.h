#pragma once

#include "desk/lists/entity_kind.h"
#include "host/data/dataset.h"
#include "host/screens/base_dock.h"

#include <memory>

namespace Ui {
class EntityList;
}

namespace desk {

/// The list of one kind of entity, for browsing (mode 1) and for choosing one or several (mode 5).
///
/// The search answers as the user types; Down goes into the rows, Enter takes the current one: it opens the editor
/// when browsing and chooses when choosing. Esc empties the search first, then closes.
class TEntity_List_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    TEntity_List_FRM(host::Host &host, const EntityKind &kind, host::TFormMode mode);
    ~TEntity_List_FRM() override;

    /// Several rows can be marked and chosen.
    void SetMultiSelect(bool several);
    /// A code list of rows that are not offered.
    void SetExcludedCodes(const QString &codes) { m_excluded = codes; }

    /// The chosen row after the screen closed with OK.
    int ChosenCode() const { return m_chosen; }
    /// The marked rows in the order of marking, each followed by a comma.
    const QString &ChosenCodes() const { return m_chosenCodes; }

protected:
    void FormShow() override;
    host::Grid *PrintedGrid() const override;

private:
    void AddCommands();
    void AddCommand(const char16_t *objectName, const char16_t *caption, Qt::Key key, void (TEntity_List_FRM::*run)());
    bool Allowed(host::TPermission permission);
    QString ListText() const;
    void Refresh(int code);
    void Stand();
    void ShowCount();

    void NewRow();
    void EditRow();
    void DeleteRow();
    void ChooseRow();
    void TakeRow();

    const EntityKind &m_kind;
    std::unique_ptr<Ui::EntityList> m_ui;
    host::Dataset m_rows;
    QString m_excluded;
    int m_chosen = 0;
    QString m_chosenCodes;
};

} // namespace desk
