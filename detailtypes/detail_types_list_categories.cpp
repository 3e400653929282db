#include "detailtypes/detail_category_get.h"
#include "detailtypes/detail_types_list.h"
#include "detailtypes/reload.h"
#include "host/host.h"
#include "ui_detail_types_list.h"

using namespace Qt::StringLiterals;

using host::TFormMode;
using host::TPermission;

// The tab of the categories and the members of the current one.

int TDetailTypes_List_FRM::Category() const
{
    return m_ui->SelectedList_List_DBTableView1->CurrentKey().toInt();
}

bool TDetailTypes_List_FRM::IsDefault() const
{
    return m_ui->SelectedList_List_DBTableView1->CurrentValue(u"DefaultSelectedList"_s).toBool();
}

void TDetailTypes_List_FRM::ReloadCategories(const QString &key)
{
    detail_types::Reload(*m_ui->SelectedList_List_DBTableView1, key,
                         [this] { m_data.DetailTypes_SelectedList_QRY.Requery(); });
    FollowCategory();
}

void TDetailTypes_List_FRM::FollowCategory()
{
    m_ui->DetailList_GRD->ClearMarks();
    detail_types::Reload(*m_ui->DetailList_GRD, m_ui->DetailList_GRD->CurrentKey(),
                         [this] { m_data.DetailTypes_SelectedList_DetailGetAll(Category()); });
    m_ui->Default_BTN->setText(IsDefault() ? u"غیر پیش فر&ض"_s : u"پیش فر&ض"_s);
    RefreshButtons();
}

void TDetailTypes_List_FRM::EditCategory(TFormMode mode)
{
    if (mode == TFormMode::Edit && Category() == 0)
        return;
    TDetailTypes_SelectedList_Get_FRM editor(m_host);
    editor.Open(mode == TFormMode::New ? QVariant() : Category(), mode);
    const QString saved = editor.SavedKey().toString();
    if (!saved.isEmpty())
        ReloadCategories(saved);
}

void TDetailTypes_List_FRM::DeleteCategory()
{
    const int category = Category();
    if (category == 0 || !host::Granted(m_host, host::TSoftwarePart::DetailTypes, TPermission::Delete) ||
        !m_host.messages.MsgDeleteItem(u"دسته بندی"_s))
        return;
    m_data.DetailTypes_SelectedList_Delete(category);
    ReloadCategories(QString::number(category));
}

void TDetailTypes_List_FRM::SwitchDefault()
{
    const int category = Category();
    if (category == 0)
        return;
    m_data.DetailTypes_SelectedList_SwitchDefault(category, IsDefault());
    ReloadCategories(QString::number(category));
}

void TDetailTypes_List_FRM::AddMembers()
{
    const int category = Category();
    const int members = m_data.DetailTypes_DetailList_QRY.RecordCount();
    if (category == 0)
        return;
    if (members >= detail_types::Most) {
        Warn(u"کاربر گرامی لیست های انتخابی  حداکثر 5 عضو می توانند داشته باشند"_s);
        return;
    }
    if (!host::Granted(m_host, host::TSoftwarePart::DetailTypes, TPermission::Change))
        return;
    host::MultibleParam wanted;
    wanted.PreviousCount = members;
    wanted.InList = true;
    m_data.DetailTypes_SelectedList_GetCode(category, wanted.PreviousCodes);
    const QString chosen = m_host.entities.Select_Entity_Multible_Param(SoftwarePart(), wanted);
    if (chosen.isEmpty())
        return;
    const auto refusal = detail_types::AddMembers(m_data, category, chosen);
    FollowCategory();
    if (refusal)
        Warn(*refusal);
}

void TDetailTypes_List_FRM::DeleteMembers()
{
    host::Grid *grid = m_ui->DetailList_GRD;
    QStringList members = grid->MarkedKeys();
    if (members.isEmpty() && !grid->IsEmpty())
        members << grid->CurrentKey();
    if (members.isEmpty() || !host::Granted(m_host, host::TSoftwarePart::DetailTypes, TPermission::Change) ||
        !m_host.messages.MsgDeleteRow())
        return;
    m_data.DetailTypes_SelectedList_DeleteDetail(Category(), members.join(u','));
    FollowCategory();
}

void TDetailTypes_List_FRM::DeleteAllMembers()
{
    if (!host::Granted(m_host, host::TSoftwarePart::DetailTypes, TPermission::Change) ||
        !m_host.messages.MsgDeleteItem(u"همه سطرهاي"_s))
        return;
    m_data.DetailTypes_SelectedList_DeleteAll(Category());
    FollowCategory();
}

void TDetailTypes_List_FRM::ChooseCategory()
{
    const int members = m_data.DetailTypes_DetailList_QRY.RecordCount();
    if (const auto refusal = detail_types::TooManyMembers(m_choice.PreviousCount, members)) {
        Warn(*refusal);
        return;
    }
    if (!m_ui->DetailList_GRD->FetchAll())
        return;
    const QString codes = m_ui->DetailList_GRD->ShownKeys().join(u',');
    // A category is given to a good, never to another category.
    if (const auto refusal = detail_types::NotTogether(m_data, m_choice.PreviousCodes, codes, false)) {
        Warn(*refusal);
        return;
    }
    CloseWith(codes);
}
