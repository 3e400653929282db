#include "host/controls/number_text.h"
#include "screens/goods_list/detail_view.h"
#include "screens/goods_list/good_list.h"
#include "screens/goods_list/good_list_columns.h"
#include "screens/goods_list/tag_marks.h"
#include "screens/shared/tag_rows.h"
#include "ui_good_list.h"

#include <QLabel>

using namespace Qt::StringLiterals;

using host::TPermission;
using host::TSoftwarePart;

namespace {

/// An ordered list shows nothing before all its rows are there: those of most shops are read while nobody notices.
constexpr int OrderedMilliseconds = 100;

/// Whose tags are shown when many goods are marked.
constexpr int MostTagged = 20;

} // namespace

// The rows of the goods list and the panels that follow the current good.

goods::ListCriteria TGood_List_FRM::Criteria() const
{
    const host::TUserInfo &user = m_host.settings.UserInfo();
    goods::ListCriteria criteria;
    criteria.GrpCode = m_ui->Group_PNL->ChosenGroup();
    criteria.ManageType = user.ManageType;
    criteria.UserCode = user.Code;
    criteria.RequestedCol = m_list.RequestedColumns();
    criteria.StockTabs = m_host.settings.SettingRecord().StockOnGoodsList;
    criteria.StockTab = m_ui->Search_TBC->currentIndex();
    criteria.Advanced = m_ui->ADVSearch_CHK->isChecked();
    criteria.AdvancedParams = m_advancedParams;
    return criteria;
}

QStringList TGood_List_FRM::FieldsToRequest() const
{
    QStringList fields = m_ui->GoodListDB_GRD->VisibleFields() + goods_list::DetailView::Fields();
    fields.removeDuplicates();
    return fields;
}

void TGood_List_FRM::Refresh()
{
    m_list.Run();
    host::Grid *grid = m_ui->GoodListDB_GRD;
    if (!grid->SortedBy().isEmpty())
        grid->FetchFor(OrderedMilliseconds);
    if (grid->CurrentKey().isEmpty() && !grid->IsEmpty())
        grid->StandOn(0);
    ShowCounts();
    FollowCurrent();
}

void TGood_List_FRM::Renew()
{
    m_list.RunBehind();
}

void TGood_List_FRM::RefreshAt(const QString &key)
{
    host::Grid::Place place = m_ui->GoodListDB_GRD->CurrentPlace();
    Refresh();
    place.key = key;
    m_ui->GoodListDB_GRD->ReturnTo(place);
}

void TGood_List_FRM::FollowRenewal()
{
    connect(&m_list, &host::TVelakSearchManager::Renewing, this,
            [this] { m_place = m_ui->GoodListDB_GRD->CurrentPlace(); });
    connect(&m_list, &host::TVelakSearchManager::Executed, this, [this] {
        if (!m_place)
            return;
        m_ui->GoodListDB_GRD->ReturnTo(*m_place);
        m_place.reset();
        ShowCounts();
        FollowCurrent();
    });
    connect(&m_list, &host::TVelakSearchManager::Failed, this,
            [this](const QString &text) { m_host.messages.ShowMessage(text, host::MessageIcon::Error, Title()); });
}

void TGood_List_FRM::OpenGroups()
{
    m_ui->Group_PNL->SetGroups(nullptr);
    m_goods.GoodGroup_GetAll();
    m_ui->Group_PNL->SetGroups(&m_goods.GoodGroup_List_QRY);
}

void TGood_List_FRM::ReloadGroups()
{
    const int shown = m_ui->Group_PNL->ChosenGroup();
    OpenGroups();
    if (m_ui->Group_PNL->ChosenGroup() != shown)
        Refresh();
}

void TGood_List_FRM::ShowPriceTitles()
{
    QList<host::Entity> levels;
    m_goods.CostLevel_Sell_Fill(levels, 0);
    QStringList titles(goods_list::PriceColumns);
    for (const host::Entity &level : levels)
        if (level.Code >= 1 && level.Code <= goods_list::PriceColumns)
            titles[level.Code - 1] = level.Name;
    for (int level = 1; level <= goods_list::PriceColumns; ++level)
        m_ui->GoodListDB_GRD->SetColumnCaption(u"Cost%1"_s.arg(level),
                                               goods_list::PriceCaption(level, titles.at(level - 1)));
}

void TGood_List_FRM::LoadTags()
{
    m_goods.GetAllTagsWithColor();
    const QList<host::Tag> tags = goods::ReadTags(m_goods.Tags_qry);
    m_ui->Tags1->SetAvailable(tags);
    m_marks->SetTags(tags);
}

void TGood_List_FRM::ShowCounts()
{
    const host::Grid *grid = m_ui->GoodListDB_GRD;
    QString text = u"%1 کالا"_s.arg(host::DisplayNumber(QString::number(grid->RowCount())));
    if (const auto marked = grid->MarkedKeys().size(); marked > 0)
        text += u"  ·  %1 علامت‌خورده"_s.arg(host::DisplayNumber(QString::number(marked)));
    m_counts->setText(text);
    m_empty->setVisible(grid->IsEmpty());
    if (!grid->IsComplete())
        m_empty->setText(u"در حال خواندن ..."_s);
    else if (grid->CurrentSearch().IsEmpty())
        m_empty->setText(u"کالایی در این بخش نیست"_s);
    else
        m_empty->setText(u"کالایی با این مشخصات پیدا نشد"_s);
}

void TGood_List_FRM::FollowCurrent()
{
    const host::Grid *grid = m_ui->GoodListDB_GRD;
    m_ui->TListDetail_FRAME1->Show([grid](const QString &field) { return grid->CurrentValue(field); });
    m_follow.start();
}

void TGood_List_FRM::ShowPanels()
{
    if (!IsShowing())
        return;
    if (m_ui->Tags_pnl->isVisible())
        ShowTags();
    if (m_ui->Pic_Show->isVisible())
        ShowPictures();
}

QList<goods_list::GoodTags> TGood_List_FRM::TaggedGoods(const QStringList &keys)
{
    if (keys.isEmpty())
        return {};
    QHash<int, QString> tags;
    for (const auto &[code, text] : m_goods.GetTagsOfGoods(keys.join(u',')))
        tags.insert(code, text);
    QHash<int, QString> names;
    const host::Dataset &rows = m_list.Data();
    for (int row = 0; row < rows.RecordCount() && names.size() < tags.size(); ++row)
        if (const int code = rows.FieldAt(row, u"Code").toInt(); tags.contains(code))
            names.insert(code, rows.FieldAt(row, u"Name").toString());
    QList<goods_list::GoodTags> goods;
    for (const QString &key : keys) {
        const int code = key.toInt();
        goods.append({code, names.value(code, key), tags.value(code)});
    }
    return goods;
}

void TGood_List_FRM::ShowTags()
{
    const host::Grid *grid = m_ui->GoodListDB_GRD;
    QStringList keys = grid->MarkedKeys();
    if (keys.isEmpty() && !grid->CurrentKey().isEmpty())
        keys = QStringList{grid->CurrentKey()};
    const QStringList shown = keys.mid(0, MostTagged);
    m_ui->Tags1->Show(TaggedGoods(shown), static_cast<int>(keys.size() - shown.size()));
}

void TGood_List_FRM::StoreTags(int code, const QString &tags)
{
    m_follow.start(); // what is refused is shown as it is stored
    if (!host::Granted(m_host, TSoftwarePart::Goods, TPermission::Change))
        return;
    m_goods.SetTagsOfGood(code, tags);
    Renew(); // the marks of the tags are columns of the list
}

void TGood_List_FRM::ShowPictures()
{
    const int code = m_ui->GoodListDB_GRD->CurrentKey().toInt();
    m_ui->Pic_Show->SetPictures(code == 0 ? QList<QByteArray>() : m_host.photos.Photos(TSoftwarePart::Goods, code));
}
