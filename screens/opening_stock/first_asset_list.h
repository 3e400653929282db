#pragma once

#include "screens/opening_stock/first_asset_get.h"

namespace Ui {
class FirstAssetList;
}

/// The opening rows of one good, one for each store, in the working copy of the good's editor.
class TFirstAsset_List_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    /// `context` outlives the screen.
    TFirstAsset_List_FRM(host::Host &host, OpeningRowsContext &context);
    ~TFirstAsset_List_FRM() override;

protected:
    void FormShow() override;
    void FormShown() override;
    void FormClose() override;
    bool FormKeyDown(QKeyEvent *event) override;
    host::Grid *PrintedGrid() const override;

private:
    void BindCommands();
    void ShowColumns();
    void Refresh();
    void ShowTotals();
    int CurrentRow() const;
    /// Says so when nothing may be changed.
    bool MayChange(QWidget *beside);
    void Edit(host::TFormMode mode, QWidget *beside);
    void Delete();
    void Print();

    OpeningRowsContext &m_context;
    std::unique_ptr<Ui::FirstAssetList> m_ui;
    QPushButton *m_new = nullptr;
    QPushButton *m_edit = nullptr;
    QPushButton *m_delete = nullptr;
};
