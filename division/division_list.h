#pragma once

#include "division/division_get.h"
#include "host/screens/base_dock.h"

namespace Ui {
class TGoodDetailDivision_List_FRM;
}

/// The list of divisions over a range of days, and the commands on them.
class TGoodDetailDivision_List_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    /// `host` outlives the list; `picker` is handed on to the editor.
    TGoodDetailDivision_List_FRM(host::Host &host, division::UnitPicker picker);
    ~TGoodDetailDivision_List_FRM() override;

protected:
    void FormShow() override;
    void FormShown() override;
    void FormClose() override;
    host::SearchFrame *ListSearch() const override;
    host::Grid *PrintedGrid() const override;

private:
    void BuildGrid();
    void BindCommands();
    /// Reads the list anew; stands on `code`, or where the user was.
    void Refresh(int code = 0);
    void ShowCount();
    int CurrentCode() const;
    void OpenEditor(host::TFormMode mode);
    void Delete();

    division::UnitPicker m_picker;
    TDivision_DM m_data;
    std::unique_ptr<Ui::TGoodDetailDivision_List_FRM> m_ui;
};
