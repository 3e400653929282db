#include "screens/bulk_changes/last_changes.h"

#include "host/controls/number_text.h"
#include "host/data/persian_text.h"
#include "screens/bulk_changes/bulk_order.h"
#include "screens/bulk_changes/bulk_report.h"
#include "screens/bulk_changes/change_texts.h"
#include "ui_last_changes.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

using bulk_changes::ComputedRows;
using bulk_changes::GoodsText;
using goods::BulkKind;
using goods::BulkResult;
using host::ColumnFormat;
using host::GridColumn;

namespace {

constexpr int FollowMilliseconds = 120;
constexpr int FlashMilliseconds = 2000;

/// A change of prices has numbers, the others texts; those of a file are long.
QList<GridColumn> GoodColumns(BulkKind kind)
{
    QList<GridColumn> columns{{u"Code"_s, u"کد"_s, 80, false, ColumnFormat::Code},
                              {u"Name"_s, u"نام کامل کالا"_s, 370, false, ColumnFormat::Text},
                              {u"OldPrice"_s, u"قیمت پیشین"_s, 130, false, ColumnFormat::Price, false},
                              {u"NewPrice"_s, u"قیمت جدید"_s, 130, false, ColumnFormat::Price, false},
                              {u"Before"_s, u"پیش از تغییر"_s, 200, false, ColumnFormat::Text, false},
                              {u"After"_s, u"پس از تغییر"_s, 200, false, ColumnFormat::Text, false},
                              {u"Stayed"_s, u"برگرداندن"_s, 180, false, ColumnFormat::Text}};
    if (kind == BulkKind::Import) {
        for (GridColumn &column : columns)
            column.width = column.field == "Name"_L1     ? 230
                           : column.field == "Before"_L1 ? 240
                           : column.field == "After"_L1  ? 300
                                                         : column.width;
    }
    columns.removeIf([kind](const GridColumn &column) {
        return (kind == BulkKind::Prices ? QStringList{u"Before"_s, u"After"_s}
                                         : QStringList{u"OldPrice"_s, u"NewPrice"_s})
            .contains(column.field);
    });
    return columns;
}

QList<GridColumn> ChangeColumns()
{
    return {{u"ChangedDate"_s, u"تاریخ"_s, 90, false, ColumnFormat::Date},
            {u"ChangedTime"_s, u"ساعت"_s, 74, false, ColumnFormat::Date},
            {u"UserChanged"_s, u"کاربر"_s, 120, false, ColumnFormat::Text},
            {u"KindText"_s, u"موضوع"_s, 110, false, ColumnFormat::Text},
            {u"Title"_s, u"شرح تغییر"_s, 241, false, ColumnFormat::Text},
            {u"ScopeText"_s, u"محدوده"_s, 184, false, ColumnFormat::Text},
            {u"Goods"_s, u"تعداد کالا"_s, 76, false, ColumnFormat::Quantity},
            {u"State"_s, u"وضعیت"_s, 180, false, ColumnFormat::Text}};
}

} // namespace

TBulk_Changes_FRM::TBulk_Changes_FRM(host::Host &host, goods::BulkJournal &changes)
    : TBaseDock_FRM(host, host::TSoftwarePart::Goods, host::TFormMode::Review),
      m_ui(std::make_unique<Ui::TBulk_Changes_FRM>()), m_changes(changes),
      m_rows(changes.BulkChanges_QRY, ChangeFields()), m_goods(changes.BulkGoods_QRY, GoodFields(changes.BulkGoods_QRY))
{
    m_ui->setupUi(Content());
    SetTitle(u"آخرین تغییرات گروهی کالاها"_s);
    resize(1100, 680);
    m_takeBack = AddFooterCommand(u"TakeBack_BTN"_s, u"برگرداندن به حالت پیشین F8"_s);
    Bind(m_takeBack, Qt::Key_F8, [this] { TakeBack(); });
    Bind(AddFooterCommand(u"PrintList_BTN"_s, u"پیش نمایش ليست F9"_s), Qt::Key_F9, [this] { PreviewGrid(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
    BuildGrids();
}

TBulk_Changes_FRM::~TBulk_Changes_FRM()
{
    m_ui->Changes_GRD->SetSource(nullptr);
    m_ui->Goods_GRD->SetSource(nullptr);
}

void TBulk_Changes_FRM::BuildGrids()
{
    m_ui->Changes_GRD->SetColumns(ChangeColumns());
    m_ui->Goods_GRD->SetSortable(true);
    m_ui->Goods_GRD->SetColumns(GoodColumns(BulkKind::Prices));
    m_ui->TGeneral_Search_Frame1->SetGrid(m_ui->Goods_GRD);
    connect(m_ui->Goods_GRD, &host::Grid::FetchFailed, this, [this](const QString &text) { ShowError(text, Title()); });
    RememberLayout(m_ui->Changes_GRD);
    m_follow.setSingleShot(true);
    m_follow.setInterval(FollowMilliseconds);
    connect(&m_follow, &QTimer::timeout, this, [this] { Command(Title(), [this] { ShowGoods(); }); });
    connect(m_ui->Changes_GRD, &host::Grid::CurrentKeyChanged, this, &TBulk_Changes_FRM::FollowCurrent);
    connect(m_ui->Changes_GRD, &host::Grid::RowActivated, this, [this] { m_ui->Goods_GRD->setFocus(); });
}

QList<ComputedRows::Column> TBulk_Changes_FRM::ChangeFields() const
{
    const host::Dataset &rows = m_changes.BulkChanges_QRY;
    const auto number = [&rows](int row, QStringView field) { return rows.FieldAt(row, field).toInt(); };
    const auto state = [&rows, number](int row) -> QVariant {
        if (!rows.FieldAt(row, u"TakenBack").toBool())
            return {};
        QString text = u"برگردانده شد"_s;
        if (const int left = number(row, u"GoodsLeft"); left > 0)
            text += u"، به جز "_s + GoodsText(left);
        return text + u" ("_s + host::PersianDigits(rows.FieldAt(row, u"TakenBackDate").toString()) + u')';
    };
    return {
        {u"KindText"_s,
         [number](int row) { return bulk_changes::KindText(static_cast<BulkKind>(number(row, u"Kind"))); }},
        {u"ScopeText"_s,
         [number](int row) { return bulk_changes::ScopeText(static_cast<goods::ScopeKind>(number(row, u"Scope"))); }},
        {u"State"_s, state},
    };
}

QList<ComputedRows::Column> TBulk_Changes_FRM::GoodFields(const host::Dataset &goods) const
{
    const auto values = [this, &goods](const char16_t *field) {
        return [this, &goods, field](int row) {
            return bulk_changes::ShownValues(goods.FieldAt(row, field), Kind(), m_fields);
        };
    };
    const auto stayed = [&goods](int row) {
        return bulk_changes::LeftText(static_cast<goods::LeftReason>(goods.FieldAt(row, u"Left").toInt()));
    };
    return {{u"Before"_s, values(u"OldText")}, {u"After"_s, values(u"NewText")}, {u"Stayed"_s, stayed}};
}

void TBulk_Changes_FRM::FormShow()
{
    m_wrote = false;
    m_fields = goods::ImportFields(goods::ImportLevelTitles(m_host.DM.ADOConnection1), true);
    m_changes.BulkChanges_GetAll();
    m_ui->Changes_GRD->SetSource(&m_rows, u"ID"_s);
    m_ui->Goods_GRD->SetSource(&m_goods);
    ShowGoods();
}

void TBulk_Changes_FRM::FormShown()
{
    m_ui->Changes_GRD->setFocus();
}

void TBulk_Changes_FRM::FormClose()
{
    m_ui->TGeneral_Search_Frame1->Clear();
    for (host::Dataset *rows : {&m_changes.BulkChanges_QRY, &m_changes.BulkGoods_QRY, &m_changes.BulkLeft_QRY})
        rows->Close(); // a file has as many goods as the shop
    m_follow.stop();
}

bool TBulk_Changes_FRM::FormKeyDown(QKeyEvent *event)
{
    return GoOnByEnter(event) || TBaseDock_FRM::FormKeyDown(event);
}

host::Grid *TBulk_Changes_FRM::PrintedGrid() const
{
    return m_ui->Goods_GRD;
}

host::SearchFrame *TBulk_Changes_FRM::ListSearch() const
{
    return m_ui->TGeneral_Search_Frame1;
}

BulkKind TBulk_Changes_FRM::Kind() const
{
    return static_cast<BulkKind>(m_ui->Changes_GRD->CurrentValue(u"Kind"_s).toInt());
}

int TBulk_Changes_FRM::Change() const
{
    return m_ui->Changes_GRD->CurrentKey().toInt();
}

void TBulk_Changes_FRM::FollowCurrent()
{
    m_takeBack->setEnabled(Change() != 0 && !m_ui->Changes_GRD->CurrentValue(u"TakenBack"_s).toBool());
    m_follow.start();
}

void TBulk_Changes_FRM::ShowGoods()
{
    m_follow.stop();
    m_takeBack->setEnabled(Change() != 0 && !m_ui->Changes_GRD->CurrentValue(u"TakenBack"_s).toBool());
    m_changes.BulkGoods_GetAll(Change());
    const QList<GridColumn> columns = GoodColumns(Kind());
    if (columns.at(2).width == m_shownWidth && columns.at(2).field == m_ui->Goods_GRD->Columns().at(2).field)
        return;
    m_shownWidth = columns.at(2).width;
    m_ui->Goods_GRD->SetColumns(columns);
    m_ui->TGeneral_Search_Frame1->SetColumns(columns);
}

/// Another desk may have taken the change back since the list was read, or so many have come that it was dropped.
bool TBulk_Changes_FRM::Stands(int change)
{
    const auto state = m_changes.BulkChange_State(change);
    if (state != goods::BulkJournal::State::Stands)
        m_host.messages.ShowMessage(
            state == goods::BulkJournal::State::TakenBack
                ? u"این تغییر را کاربر دیگری پیش از این برگردانده است."_s
                : u"این تغییر قدیمی شده و از فهرست آخرین تغییرات بیرون رفته است؛ دیگر نمی‌توان آن را برگرداند."_s,
            host::MessageIcon::Warning, Title());
    return state == goods::BulkJournal::State::Stands;
}

bool TBulk_Changes_FRM::MayTakeBack(int change)
{
    const goods::BulkForecast forecast = m_changes.BulkChange_Forecast(change);
    if (forecast.changing == 0) {
        m_host.messages.ShowMessage(
            u"همه‌ی کالاهای این تغییر پس از آن دوباره تغییر کرده یا حذف شده‌اند یا مقدار پیشین آنها قابل بازگشت نیست؛ چیزی برای برگرداندن نمانده است."_s,
            host::MessageIcon::Information, Title());
        return false;
    }
    if (forecast.removing > 0 && !host::Granted(m_host, SoftwarePart(), host::TPermission::Delete))
        return false;
    return m_host.messages.Ask(bulk_changes::Foretold(forecast) + u"\nآیا ادامه می‌دهید؟"_s, false);
}

void TBulk_Changes_FRM::Reload()
{
    const host::Grid::Place place = m_ui->Changes_GRD->CurrentPlace();
    m_changes.BulkChanges_GetAll();
    m_ui->Changes_GRD->ReturnTo(place);
    ShowGoods();
}

void TBulk_Changes_FRM::TakeBack()
{
    const int change = Change();
    if (!host::Granted(m_host, SoftwarePart(), host::TPermission::Change))
        return;
    if (!Stands(change)) {
        Reload();
        return;
    }
    if (!MayTakeBack(change))
        return;
    BulkResult result;
    {
        bulk_changes::ProgressWindow progress(Title(), this);
        result = m_changes.BulkChange_TakeBack(change, bulk_changes::Order(m_host, {}, progress.Callback()));
    }
    if (result.outcome == BulkResult::Outcome::Cancelled)
        return;
    if (result.outcome == BulkResult::Outcome::Refused) {
        Stands(change);
        Reload();
        return;
    }
    m_wrote = true;
    bulk_changes::SendToScales(m_host, m_changes, change);
    bulk_changes::AfterWriting(m_host, u"مقدارهای پیشین برگردانده شد ولی فهرست خوانده نشد."_s, [&] {
        Reload();
        ShowLeft(change, result);
    });
}

void TBulk_Changes_FRM::ShowLeft(int change, const BulkResult &result)
{
    if (result.left == 0) {
        m_host.messages.ShowFlashMessage(u"عملیات با موفقیت انجام شد"_s, FlashMilliseconds);
        return;
    }
    m_changes.BulkGoods_GetLeft(change);
    ComputedRows left(m_changes.BulkLeft_QRY, GoodFields(m_changes.BulkLeft_QRY));
    QList<GridColumn> columns = GoodColumns(Kind());
    columns.last().caption = u"علت"_s;
    TBulk_Report_FRM report(m_host, u"برگرداندن تغییر گروهی"_s, bulk_changes::TakenBack(result), left, columns);
    report.ShowModally();
}
