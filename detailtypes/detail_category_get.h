#pragma once

#include "detailtypes/detail_types_dm.h"
#include "host/screens/base_get.h"

#include <memory>

namespace Ui {
class TDetailTypes_SelectedList_Get_FRM;
}

/// The editor of one category of detail types: code, title and remark. The members are chosen on the list.
///
/// `Open({}, TFormMode::New)` proposes a code and keeps it for this desk while the screen is open;
/// `Open(code, TFormMode::Edit)` changes a category. Both ask for the user's right to detail types.
class TDetailTypes_SelectedList_Get_FRM : public host::TBaseGet_FRM
{
    Q_OBJECT

public:
    explicit TDetailTypes_SelectedList_Get_FRM(host::Host &host);
    ~TDetailTypes_SelectedList_Get_FRM() override;

protected:
    void Prepare() override;
    void Load() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void FormClose() override;
    QWidget *FirstControl() const override;
    QString PrepareRecoveryQuery() const override;

private:
    bool IsNew() const { return Mode() == host::TFormMode::New; }
    int ProposeCode();
    void Show(const TDetailTypes_SelectedList_Rec &record);
    bool TitleTaken();

    std::unique_ptr<Ui::TDetailTypes_SelectedList_Get_FRM> m_ui;
    TDetailTypes_DM m_data;
    TDetailTypes_SelectedList_Rec m_shown; ///< as it was read
};
