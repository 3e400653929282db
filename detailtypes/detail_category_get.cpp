#include "detailtypes/detail_category_get.h"

#include "host/data/transaction.h"
#include "host/host.h"
#include "ui_detail_category_get.h"

using namespace Qt::StringLiterals;

using host::Required;
using host::TSoftwarePart;
using host::When;

namespace {

/// How often another desk may snatch the proposed code away before it is proposed anyway.
constexpr int MaximumAttempts = 20;
/// What the column of remarks holds; the edit takes more, so that nothing pasted is cut off unseen.
constexpr int LongestComment = 100;

} // namespace

TDetailTypes_SelectedList_Get_FRM::TDetailTypes_SelectedList_Get_FRM(host::Host &host)
    : TBaseGet_FRM(host, TSoftwarePart::DetailTypes), m_ui(std::make_unique<Ui::TDetailTypes_SelectedList_Get_FRM>()),
      m_data(host.DM)
{
    m_ui->setupUi(Content());
    SetTitle(u"دسته بندی جزییات"_s);
    connect(m_ui->Code_EDT, &QLineEdit::textChanged, this, [this] {
        if (!IsLoading() && IsNew())
            SetKey(static_cast<int>(m_ui->Code_EDT->Integer()));
    });
}

TDetailTypes_SelectedList_Get_FRM::~TDetailTypes_SelectedList_Get_FRM() = default;

int TDetailTypes_SelectedList_Get_FRM::ProposeCode()
{
    const QString status = QString::number(static_cast<int>(SoftwarePart()));
    int code = 0;
    for (int attempt = 0; attempt < MaximumAttempts; ++attempt) {
        m_data.DetailTypes_SelectedList_GetNewCode(status, code);
        if (m_host.entities.ReserveCode(SoftwarePart(), code))
            break;
    }
    return code;
}

void TDetailTypes_SelectedList_Get_FRM::Show(const TDetailTypes_SelectedList_Rec &record)
{
    m_ui->Code_EDT->setText(QString::number(record.Code));
    m_ui->Code_EDT->setReadOnly(!IsNew());
    m_ui->Title_EDT->setText(record.Title);
    m_ui->Comment_EDT->setText(record.Comment);
}

void TDetailTypes_SelectedList_Get_FRM::Prepare()
{
    if (RefuseOpening(host::CheckRight(m_host, SoftwarePart(), Mode())))
        return;
    TDetailTypes_SelectedList_Rec record;
    record.Code = ProposeCode();
    SetKey(record.Code);
    Show(record);
}

void TDetailTypes_SelectedList_Get_FRM::Load()
{
    if (RefuseOpening(host::CheckRight(m_host, SoftwarePart(), Mode())))
        return;
    TDetailTypes_SelectedList_Rec record;
    if (!m_data.DetailTypes_SelectedList_GetByID(Key().toInt(), record)) {
        RefuseOpening(host::RecordGone(u"دسته بندی"_s));
        return;
    }
    Show(record);
    m_shown = record;
}

std::vector<host::Check> TDetailTypes_SelectedList_Get_FRM::Validate()
{
    return {
        {u"CodeGiven"_s, [this] { return When(m_ui->Code_EDT->Integer() <= 0, Required(m_ui->Code_EDT, u"کد"_s)); }},
        {u"TitleGiven"_s,
         [this] {
             return When(m_ui->Title_EDT->text().trimmed().isEmpty(),
                         Required(m_ui->Title_EDT, u"عنوان ليست انتخابي"_s));
         }},
        {u"TitleFree"_s,
         [this] { return When(TitleTaken(), host::Repeated(m_ui->Title_EDT, u"عنوان"_s, u"ليست انتخابي"_s)); }},
        {u"CodeFree"_s,
         [this] {
             return When(IsNew() && !m_data.DetailTypes_SelectedList_IsNewRecordMode(Key().toInt()),
                         host::RepeatedCode(m_ui->Code_EDT, u"کد"_s));
         }},
        {u"CommentFits"_s,
         [this] {
             return When(m_ui->Comment_EDT->text().size() > LongestComment,
                         host::Warning(m_ui->Comment_EDT, u"کاربر گرامی شرح حداکثر 100 حرف می تواند داشته باشد"_s));
         }},
    };
}

/// The category's own title counts when it is edited.
bool TDetailTypes_SelectedList_Get_FRM::TitleTaken()
{
    return m_data.DetailTypes_SelectedList_ExistName(m_ui->Title_EDT->text()) > (IsNew() ? 0 : 1);
}

void TDetailTypes_SelectedList_Get_FRM::Write()
{
    TDetailTypes_SelectedList_Rec record;
    record.Code = Key().toInt();
    record.Title = m_ui->Title_EDT->text();
    record.Comment = m_ui->Comment_EDT->text();
    if (IsNew()) {
        m_data.DetailTypes_SelectedList_Insert(record);
        return;
    }
    host::Transaction transaction(m_data.Connection());
    // What was not changed here stays as it is by now: another desk may have changed it.
    TDetailTypes_SelectedList_Rec stored;
    if (m_data.DetailTypes_SelectedList_GetByID(record.Code, stored)) {
        record.Title = record.Title == m_shown.Title ? stored.Title : record.Title;
        record.Comment = record.Comment == m_shown.Comment ? stored.Comment : record.Comment;
    }
    m_data.DetailTypes_SelectedList_Update(record);
    transaction.Commit();
}

void TDetailTypes_SelectedList_Get_FRM::FormClose()
{
    m_host.entities.ReleaseCodes(SoftwarePart());
}

QWidget *TDetailTypes_SelectedList_Get_FRM::FirstControl() const
{
    return m_ui->Title_EDT;
}

QString TDetailTypes_SelectedList_Get_FRM::PrepareRecoveryQuery() const
{
    return TDetailTypes_DM::DetailTypes_SelectedList_RecoveryText(Key().toInt());
}
