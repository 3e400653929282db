#include "detailtypes/detail_type_get.h"
#include "detailtypes/detail_types_list.h"
#include "detailtypes/reload.h"
#include "host/host.h"
#include "ui_detail_types_list.h"

using namespace Qt::StringLiterals;

using host::TFormMode;

// The tab of the types.

namespace {

constexpr int NoticeMilliseconds = 5000;

} // namespace

void TDetailTypes_List_FRM::ReloadTypes(const QString &key)
{
    detail_types::Reload(*m_ui->DetailTypes_List_GRD, key, [this] { m_data.DetailTypes_GetAll(); });
    RefreshButtons();
}

void TDetailTypes_List_FRM::EditType(TFormMode mode)
{
    const QString key = m_ui->DetailTypes_List_GRD->CurrentKey();
    if (mode == TFormMode::Edit && key.isEmpty())
        return;
    TDetailTypes_Get_FRM editor(m_host);
    editor.Open(mode == TFormMode::New ? QVariant() : key.toInt(), mode);
    const QString saved = editor.SavedKey().toString();
    if (saved.isEmpty())
        return;
    if (mode == TFormMode::New)
        m_ui->TGeneral_Search_Frame1->Clear();
    ReloadTypes(saved);
    // A member may have got another title.
    FollowCategory();
}

void TDetailTypes_List_FRM::DeleteType()
{
    const QString key = m_ui->DetailTypes_List_GRD->CurrentKey();
    if (key.isEmpty() || !host::Granted(m_host, host::TSoftwarePart::DetailTypes, host::TPermission::Delete))
        return;
    const QString what = u"جزییات"_s;
    if (m_data.UseGoodDetailType(key.toInt())) {
        m_host.messages.ShowSmartMessage(host::message::ItemInUse, {what}, NoticeMilliseconds, m_ui->Delete_BTN);
        return;
    }
    if (!m_host.messages.MsgDeleteItem(what))
        return;
    m_data.DetailTypes_Delete(key.toInt());
    m_ui->DetailTypes_List_GRD->SetMarked(key, false);
    ReloadTypes(key);
}

void TDetailTypes_List_FRM::ChooseTypes()
{
    host::Grid *grid = m_ui->DetailTypes_List_GRD;
    QStringList picked = grid->MarkedKeys();
    if (picked.isEmpty() && !grid->IsEmpty())
        picked << grid->CurrentKey();
    if (picked.isEmpty())
        return;
    if (const auto refusal = detail_types::TooManyTypes(m_choice.PreviousCount, static_cast<int>(picked.size()))) {
        Warn(*refusal);
        return;
    }
    const QString codes = picked.join(u',');
    if (const auto refusal = detail_types::NotTogether(m_data, m_choice.PreviousCodes, codes, m_choice.InList)) {
        Warn(*refusal);
        return;
    }
    CloseWith(codes);
}
