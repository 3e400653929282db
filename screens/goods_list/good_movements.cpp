#include "screens/goods_list/good_movements.h"

#include "host/controls/number_text.h"
#include "host/screens/refusals.h"
#include "ui_good_movements.h"

#include <QHeaderView>
#include <QPushButton>

using namespace Qt::StringLiterals;

using host::ColumnFormat;

namespace {

constexpr QSize WindowSize(1120, 640);

/// The columns of amounts in the second unit.
const QStringList SecondUnit = {u"In2"_s, u"Out2"_s, u"StoreBalance2"_s, u"Balance2"_s};

QString WithUnit(const QString &caption, const QString &unit)
{
    return unit.isEmpty() ? caption : u"%1 (%2)"_s.arg(caption, unit);
}

QString Shown(host::Quantity quantity)
{
    return host::DisplayNumber(host::QuantityToText(quantity));
}

QString TotalText(const QString &unit, const goods::MovementTotal &total)
{
    return u"%1اول: %2   ·   وارده: %3   ·   صادره: %4   ·   مانده: %5"_s.arg(
        unit.isEmpty() ? QString() : unit + u"   ·   "_s, Shown(total.Before), Shown(total.In), Shown(total.Out),
        Shown(total.Balance()));
}

} // namespace

TGood_Movements_FRM::TGood_Movements_FRM(host::Host &host)
    : TBaseDock_FRM(host, host::TSoftwarePart::Goods, host::TFormMode::Review, host.mainWindow),
      m_ui(std::make_unique<Ui::GoodMovements>()), m_data(host.DM.ADOConnection1)
{
    setObjectName(u"TGood_Movements_FRM"_s);
    m_ui->setupUi(Content());
    resize(WindowSize);
    BuildGrid();
    BindFilter();
    Bind(AddFooterCommand(u"PrintList_BTN"_s, u"پیش نمایش ليست F9"_s), Qt::Key_F9, [this] { PreviewGrid(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
}

TGood_Movements_FRM::~TGood_Movements_FRM()
{
    m_ui->Movements_GRD->SetSource(nullptr);
}

void TGood_Movements_FRM::BuildGrid()
{
    host::Grid *grid = m_ui->Movements_GRD;
    grid->SetColumns({{u"Radif"_s, u"ردیف"_s, 54, false, ColumnFormat::Code},
                      {u"Date"_s, u"تاریخ"_s, 86, false, ColumnFormat::Date},
                      {u"Kind"_s, u"نوع سند"_s, 130},
                      {u"Number"_s, u"شماره سند"_s, 80, false, ColumnFormat::Code},
                      {u"StoreName"_s, u"انبار"_s, 120},
                      {u"In1"_s, u"وارده"_s, 92, false, ColumnFormat::Quantity},
                      {u"Out1"_s, u"صادره"_s, 92, false, ColumnFormat::Quantity},
                      {u"In2"_s, u"وارده 2"_s, 96, false, ColumnFormat::Quantity},
                      {u"Out2"_s, u"صادره 2"_s, 96, false, ColumnFormat::Quantity},
                      {u"Cost"_s, u"فی"_s, 96, false, ColumnFormat::Price},
                      {u"StoreBalance1"_s, u"مانده انبار"_s, 92, false, ColumnFormat::Quantity},
                      {u"StoreBalance2"_s, u"مانده انبار 2"_s, 92, false, ColumnFormat::Quantity},
                      {u"Balance1"_s, u"مانده کل"_s, 92, false, ColumnFormat::Quantity},
                      {u"Balance2"_s, u"مانده کل 2"_s, 92, false, ColumnFormat::Quantity},
                      {u"Sharh"_s, u"شرح"_s, 160, true}});
    m_data.Movements_QRY.setObjectName(u"Movements_QRY"_s);
    grid->SetSource(&m_data.Movements_QRY, u"Radif"_s);
    grid->horizontalHeader()->setStretchLastSection(true);
    RememberLayout(grid);
    m_ui->TGeneral_Search_Frame1->SetGrid(grid);
}

void TGood_Movements_FRM::BindFilter()
{
    const auto refresh = [this] { Command(Title(), [this] { Refresh(); }); };
    for (host::DateEdit *date : {m_ui->FromDate_EDT, m_ui->ToDate_EDT})
        connect(date, &host::DateEdit::DateChanged, this, refresh);
    m_ui->Store_Entity->SetSource(m_host.entities, host::TSoftwarePart::Stores);
    m_ui->Store_Entity->SetChooseGuard(
        [this] { return host::Granted(m_host, host::TSoftwarePart::Stores, host::TPermission::OpenList); });
    connect(m_ui->Store_Entity, &host::EntityPicker::Changed, this, refresh);
}

void TGood_Movements_FRM::FormShow()
{
    if (!m_data.Movements_GetGood(m_code, m_good)) {
        host::RecordGone(u"کالا"_s).say(m_host.messages);
        AbortOpening();
        return;
    }
    for (host::DateEdit *date : {m_ui->FromDate_EDT, m_ui->ToDate_EDT})
        date->SetDate({});
    m_ui->Store_Entity->Clear();
    m_ui->TGeneral_Search_Frame1->Clear();
    SetTitle(u"گردش کالا: %1 (%2)"_s.arg(m_good.Name, host::DisplayNumber(QString::number(m_code), false)));
    host::Grid *grid = m_ui->Movements_GRD;
    grid->SetColumnCaption(u"In1"_s, WithUnit(u"وارده"_s, m_good.UnitName1));
    grid->SetColumnCaption(u"Out1"_s, WithUnit(u"صادره"_s, m_good.UnitName1));
    grid->SetColumnCaption(u"In2"_s, WithUnit(u"وارده"_s, m_good.UnitName2));
    grid->SetColumnCaption(u"Out2"_s, WithUnit(u"صادره"_s, m_good.UnitName2));
    // By the good and not by the layout: the next one may have two units.
    for (const QString &field : SecondUnit)
        grid->SetColumnVisible(field, !m_good.UnitName2.isEmpty());
    Refresh();
    grid->setFocus(Qt::OtherFocusReason);
}

void TGood_Movements_FRM::FormClose()
{
    m_data.Movements_QRY.Close();
}

goods::MovementFilter TGood_Movements_FRM::Filter() const
{
    return {m_code, m_ui->FromDate_EDT->Text(), m_ui->ToDate_EDT->Text(), m_ui->Store_Entity->Code()};
}

void TGood_Movements_FRM::OrderDays()
{
    const QDate from = m_ui->FromDate_EDT->Date();
    const QDate to = m_ui->ToDate_EDT->Date();
    if (!from.isValid() || !to.isValid() || from <= to)
        return;
    m_ui->FromDate_EDT->SetDate(to);
    m_ui->ToDate_EDT->SetDate(from);
}

void TGood_Movements_FRM::Refresh()
{
    OrderDays();
    m_data.Movements_GetAll(Filter());
    m_ui->Movements_GRD->StandOn(0);
    ShowTotals();
}

void TGood_Movements_FRM::ShowTotals()
{
    const auto totals = m_data.Movements_GetTotals(Filter());
    m_ui->Total1_LBL->setText(TotalText(m_good.UnitName1, totals[0]));
    m_ui->Total2_LBL->setText(TotalText(m_good.UnitName2, totals[1]));
    m_ui->Total2_LBL->setVisible(!m_good.UnitName2.isEmpty());
}

bool TGood_Movements_FRM::FormKeyDown(QKeyEvent *event)
{
    return GoOnByEnter(event) || TBaseDock_FRM::FormKeyDown(event);
}

host::Grid *TGood_Movements_FRM::PrintedGrid() const
{
    return m_ui->Movements_GRD;
}

host::SearchFrame *TGood_Movements_FRM::ListSearch() const
{
    return m_ui->TGeneral_Search_Frame1;
}
