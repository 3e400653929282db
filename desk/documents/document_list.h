#pragma once

#include "desk/documents/document_kinds.h"
#include "desk/documents/document_list_data.h"
#include "desk/documents/document_store.h"
#include "desk/documents/line_details.h"
#include "host/screens/base_dock.h"

#include <QHash>

#include <memory>

namespace Ui {
class DocumentList;
}

namespace desk {

/// The list of documents, docked (mode 1), and for choosing the one that a return answers (mode 5). It shows the kinds
/// that the user may see, all of them or one, over a range of days; the search answers as the user types.
class TDocument_List_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    /// `kind`: the only kind that is offered, 0 for all. `host` and `screens` outlive the list.
    TDocument_List_FRM(host::Host &host, LineDetailScreens &screens, host::TFormMode mode, int kind = 0);
    ~TDocument_List_FRM() override;

    /// The chosen document after the screen closed with OK.
    int ChosenCode() const { return m_chosen; }
    /// The editor for new documents of a kind; the list, when it is open, shows them afterwards.
    void NewDocument(const DocumentKind &kind);

protected:
    void FormShow() override;
    void FormClose() override;
    host::Grid *PrintedGrid() const override;

private:
    void BuildGrid();
    void AddCommands();
    void FillKinds();
    DocumentFilter Filter() const;
    void Refresh(const QString &key = {});
    void ShowCount();
    bool OpenEditor(const DocumentKind &kind, int code);
    std::pair<const DocumentKind *, int> Current() const;

    void NewRow();
    void EditRow();
    void DeleteRow();
    void TakeRow();
    void ShowHistory();

    LineDetailScreens &m_screens;
    int m_onlyKind;
    DocumentStore m_store;
    DocumentListData m_data;
    std::unique_ptr<Ui::DocumentList> m_ui;
    int m_chosen = 0;
};

} // namespace desk
