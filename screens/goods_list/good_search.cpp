#include "screens/goods_list/good_search.h"

#include "host/data/sql_text.h"
#include "host/screens/search_manager.h"
#include "screens/shared/tag_rows.h"
#include "ui_good_search.h"

using namespace Qt::StringLiterals;

using host::TPermission;
using host::TSoftwarePart;

Tgoodlist_search_Frm::Tgoodlist_search_Frm(host::Host &host, TGood_DM &data, QWidget *parent)
    : TBaseSearch_FRM(host, TSoftwarePart::Goods, parent), m_data(data),
      m_ui(std::make_unique<Ui::Tgoodlist_search_Frm>())
{
    setObjectName(u"Tgoodlist_search_Frm"_s);
    m_ui->setupUi(Content());
    SetTitle(u"جستجوی پیشرفته کالاها"_s);
    SearchManager().SetCustomFilter([this] {
        const goods::SearchCriteria criteria = Criteria();
        return QStringList{goods::TagsParam(criteria.Tags), goods::CategoryParam(criteria.Category),
                           goods::SearchParams(m_list, criteria)};
    });
    connect(m_ui->SelectList_CMB, &QComboBox::currentIndexChanged, this,
            [this] { m_ui->DisplayType_CHK->setEnabled(m_ui->SelectList_CMB->currentIndex() > 0); });
    // Only a choice of the user takes the list's own setting over; what is shown again keeps what was selected.
    connect(m_ui->SelectList_CMB, &QComboBox::activated, this,
            [this] { Command(m_ui->SelectList_LBL->text(), [this] { FollowSelectedList(); }); });
    Bind(m_ui->SelectedLists_BTN, {}, [this] { OpenSelectedLists(); });
}

Tgoodlist_search_Frm::~Tgoodlist_search_Frm() = default;

bool Tgoodlist_search_Frm::HaveSelectedListPermission() const
{
    return m_host.permissions.HavePermission(m_host.settings.UserInfo(), SoftwarePart(), TPermission::SelectedLists,
                                             false, false, {});
}

goods::SearchCriteria Tgoodlist_search_Frm::Criteria() const
{
    const int list = m_ui->SelectList_CMB->currentData().toInt();
    return {m_ui->Tag_editor->CodesText(), m_ui->TCategorySearchFrame1->Code(), list,
            list != 0 && m_ui->DisplayType_CHK->isChecked()};
}

QString Tgoodlist_search_Frm::GetSelectedListProcParams() const
{
    const goods::SearchCriteria criteria = Criteria();
    return goods::SelectedListParams(criteria.SelectedList, criteria.LeftOut);
}

QString Tgoodlist_search_Frm::Summary() const
{
    const goods::SearchCriteria criteria = Criteria();
    QStringList parts;
    if (const QStringList tags = m_ui->Tag_editor->Names(); !tags.isEmpty())
        parts << u"برچسب: "_s + tags.join(u"، "_s);
    if (criteria.Category != 0)
        parts << u"دسته: "_s + m_ui->TCategorySearchFrame1->Text();
    if (criteria.SelectedList != 0)
        parts << (criteria.LeftOut ? u"بدون لیست «%1»"_s : u"لیست «%1»"_s).arg(m_ui->SelectList_CMB->currentText());
    return parts.join(u"  ·  "_s);
}

void Tgoodlist_search_Frm::FormShow()
{
    m_listsOpened = false;
    m_data.GetAllTagsWithColor();
    m_ui->Tag_editor->SetAvailable(goods::ReadTags(m_data.Tags_qry));
    m_ui->TCategorySearchFrame1->SetTree(m_host.categories.Tree());
    FillSelectedLists();
    TBaseSearch_FRM::FormShow();
}

void Tgoodlist_search_Frm::FillSelectedLists()
{
    const bool allowed = HaveSelectedListPermission();
    QList<host::Entity> lists;
    if (allowed)
        m_data.GoodSelectedList_Fill(lists);
    const int chosen = m_ui->SelectList_CMB->currentData().toInt();
    m_ui->SelectList_CMB->clear();
    for (const host::Entity &list : lists)
        m_ui->SelectList_CMB->addItem(list.Name, list.Code);
    m_ui->SelectList_CMB->setCurrentIndex(qMax(0, m_ui->SelectList_CMB->findData(chosen)));
    m_ui->SelectList_PNL->setVisible(allowed);
}

void Tgoodlist_search_Frm::FollowSelectedList()
{
    const int list = m_ui->SelectList_CMB->currentData().toInt();
    m_ui->DisplayType_CHK->setChecked(list != 0 && m_data.GoodSelectedIndex_IsChecked(list));
}

void Tgoodlist_search_Frm::OpenSelectedLists()
{
    const int before = m_ui->SelectList_CMB->currentData().toInt();
    m_listsOpened = true;
    m_host.selectedLists.Call_SelectedLists(before);
    FillSelectedLists();
    // The chosen list may be gone.
    if (m_ui->SelectList_CMB->currentData().toInt() != before)
        FollowSelectedList();
}

void Tgoodlist_search_Frm::Select()
{
    SetGeneralFilter(host::DeleteParam(GeneralFilter(), u"@RequestedCol"));
    SetGeneralFilter(host::ADDParam(GeneralFilter(), u"@RequestedCol", host::QuotedStr(m_list.RequestedCol)));
    TBaseSearch_FRM::Select();
}
