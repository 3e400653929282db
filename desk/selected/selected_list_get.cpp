#include "desk/selected/selected_list_get.h"

#include "ui_selected_list_get.h"

using namespace Qt::StringLiterals;

namespace desk {

TSelectedList_Get_FRM::TSelectedList_Get_FRM(host::Host &host, SelectedListsData &data)
    : TBaseGet_FRM(host, host::TSoftwarePart::Goods, host.mainWindow), m_data(data),
      m_ui(std::make_unique<Ui::SelectedListGet>())
{
    setObjectName(u"TSelectedList_Get_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(u"لیست انتخابی"_s);
}

TSelectedList_Get_FRM::~TSelectedList_Get_FRM() = default;

void TSelectedList_Get_FRM::Prepare()
{
    Show({});
}

void TSelectedList_Get_FRM::Load()
{
    const SelectedListsData::List list = m_data.Get(Key().toInt());
    if (list.Code == 0) {
        SetRecordGone();
        RefuseOpening(host::RecordGone(u"لیست انتخابی"_s));
        return;
    }
    Show(list);
}

void TSelectedList_Get_FRM::Show(const SelectedListsData::List &list)
{
    m_ui->Title_EDT->setText(list.Title);
    m_ui->Enable_CHK->setChecked(list.Enable);
    m_ui->DisplayType_CHK->setChecked(list.DisplayType);
}

SelectedListsData::List TSelectedList_Get_FRM::Entered() const
{
    return {Key().toInt(), m_ui->Title_EDT->text().trimmed(), m_ui->Enable_CHK->isChecked(),
            m_ui->DisplayType_CHK->isChecked()};
}

std::vector<host::Check> TSelectedList_Get_FRM::Validate()
{
    return {
        {u"TitleGiven"_s,
         [this] {
             return host::When(Entered().Title.isEmpty(), host::Required(m_ui->Title_EDT, u"عنوان ليست انتخابي"_s));
         }},
        {u"TitleFree"_s,
         [this] {
             return host::When(m_data.TitleTaken(Entered()),
                               host::Repeated(m_ui->Title_EDT, u"عنوان"_s, u"ليست انتخابي"_s));
         }},
    };
}

void TSelectedList_Get_FRM::Write()
{
    SetKey(m_data.Save(Entered()));
}

QString TSelectedList_Get_FRM::PrepareRecoveryQuery() const
{
    return SelectedListsData::RowText(Key().toInt());
}

QWidget *TSelectedList_Get_FRM::FirstControl() const
{
    return m_ui->Title_EDT;
}

} // namespace desk
