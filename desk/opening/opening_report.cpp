#include "desk/opening/opening_report.h"

#include "host/controls/grid.h"
#include "host/controls/number_text.h"
#include "host/controls/search_frame.h"
#include "host/screens/grid_print.h"
#include "ui_opening_report.h"

#include <QHeaderView>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace desk {

using host::ColumnFormat;

namespace {

constexpr QSize WindowSize(980, 600);

} // namespace

TOpeningReport_FRM::TOpeningReport_FRM(host::Host &host)
    : TBaseDock_FRM(host, host::TSoftwarePart::OpeningStock, host::TFormMode::DockedList, host.mainWindow),
      m_ui(std::make_unique<Ui::OpeningReport>()), m_data(host.DM.ADOConnection1)
{
    setObjectName(u"TOpeningReport_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(u"لیست موجودی اول دوره کالاها"_s);
    resize(WindowSize);
    host::Grid *grid = m_ui->Opening_GRD;
    grid->SetColumns({{u"StoreName"_s, u"انبار"_s, 130},
                      {u"GoodCode"_s, u"کد کالا"_s, 80, false, ColumnFormat::Code},
                      {u"GoodName"_s, u"نام کالا"_s, 230},
                      {u"Amount1"_s, u"موجودي"_s, 90, false, ColumnFormat::Quantity},
                      {u"Unit1"_s, u"واحد"_s, 70},
                      {u"Amount2"_s, u"موجودي 2"_s, 80, false, ColumnFormat::Quantity},
                      {u"Unit2"_s, u"واحد 2"_s, 70},
                      {u"CostBgPrd"_s, u"قیمت"_s, 100, false, ColumnFormat::Price},
                      {u"Value"_s, u"ارزش"_s, 120, false, ColumnFormat::Price},
                      {u"Comment"_s, u"توضیحات"_s, 150, true}});
    grid->SetSortable(true);
    grid->horizontalHeader()->setStretchLastSection(true);
    grid->SetSource(&m_data.Rows_QRY, u"ID"_s);
    m_ui->Search_FRM->SetGrid(grid);
    RememberLayout(grid);
    connect(m_ui->Store_CMB, &QComboBox::currentIndexChanged, this, [this] {
        if (!IsShowing())
            return;
        Command(Title(), [this] {
            m_totals = m_data.Totals(); // goods may have been saved since the last look
            ShowStore();
        });
    });
    Bind(AddFooterCommand(u"PrintList_BTN"_s, u"پیش نمایش ليست F9"_s), Qt::Key_F9, [this] { Print(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
}

TOpeningReport_FRM::~TOpeningReport_FRM()
{
    m_ui->Opening_GRD->SetSource(nullptr);
}

void TOpeningReport_FRM::FormShow()
{
    FillStores();
    ShowStore();
}

void TOpeningReport_FRM::FormShown()
{
    m_ui->Opening_GRD->setFocus();
}

void TOpeningReport_FRM::FormClose()
{
    m_data.Rows_QRY.Close();
}

void TOpeningReport_FRM::FillStores()
{
    const QSignalBlocker quiet(m_ui->Store_CMB);
    const QVariant chosen = m_ui->Store_CMB->currentData();
    m_totals = m_data.Totals();
    m_ui->Store_CMB->clear();
    m_ui->Store_CMB->addItem(u"همه انبارها"_s, 0);
    for (const OpeningReportData::StoreTotal &total : std::as_const(m_totals))
        m_ui->Store_CMB->addItem(total.Name, total.Store);
    m_ui->Store_CMB->setCurrentIndex(qMax(0, m_ui->Store_CMB->findData(chosen)));
}

void TOpeningReport_FRM::ShowStore()
{
    const int store = m_ui->Store_CMB->currentData().toInt();
    m_data.Open(store);
    int rows = 0;
    host::Quantity value = 0;
    for (const OpeningReportData::StoreTotal &total : std::as_const(m_totals)) {
        if (store != 0 && total.Store != store)
            continue;
        rows += total.Rows;
        value += total.Value;
    }
    m_ui->Total_LBL->setText(u"%1 ردیف   ·   ارزش : %2"_s.arg(host::DisplayNumber(QString::number(rows)),
                                                              host::DisplayNumber(host::QuantityToText(value))));
    if (m_ui->Opening_GRD->CurrentKey().isEmpty() && !m_ui->Opening_GRD->IsEmpty())
        m_ui->Opening_GRD->StandOn(0);
}

bool TOpeningReport_FRM::FormKeyDown(QKeyEvent *event)
{
    return GoOnByEnter(event) || TBaseDock_FRM::FormKeyDown(event);
}

void TOpeningReport_FRM::Print()
{
    const QStringList title{Title(), m_ui->Store_CMB->currentText(), m_ui->Total_LBL->text()};
    host::GridPrinter(*m_ui->Opening_GRD, title.join(u"   ·   "), m_host.clock.NowShamsiDate()).Preview(this);
}

host::Grid *TOpeningReport_FRM::PrintedGrid() const
{
    return m_ui->Opening_GRD;
}

host::SearchFrame *TOpeningReport_FRM::ListSearch() const
{
    return m_ui->Search_FRM;
}

} // namespace desk
