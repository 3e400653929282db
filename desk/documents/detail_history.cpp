#include "desk/documents/detail_history.h"

#include "desk/messages/catalogue.h"
#include "host/controls/grid.h"
#include "host/data/persian_text.h"
#include "ui_detail_history.h"

#include <QHeaderView>
#include <QPushButton>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::ColumnFormat;

constexpr QSize WindowSize(900, 560);
/// Of the details found, their kin and their movements.
const QList<int> PaneHeights{120, 150, 260};

} // namespace

TDetailHistory_FRM::TDetailHistory_FRM(host::Host &host)
    : TBaseDock_FRM(host, host::TSoftwarePart::GoodDetails, host::TFormMode::Review, host.mainWindow),
      m_ui(std::make_unique<Ui::DetailHistory>()), m_data(host.DM.ADOConnection1)
{
    setObjectName(u"TDetailHistory_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(u"تاریخچه‌ی جزئیات کالا"_s);
    resize(WindowSize);
    m_ui->Values_GRD->SetColumns({{u"Details"_s, u"جزئیات"_s, 300},
                                  {u"GoodCode"_s, u"کد کالا"_s, 80, false, ColumnFormat::Code},
                                  {u"GoodName"_s, u"کالا"_s, 320},
                                  {u"OnHand"_s, u"موجودی"_s, 90, false, ColumnFormat::Quantity}});
    m_ui->Movements_GRD->SetColumns({{u"Radif"_s, u"ردیف"_s, 54, false, ColumnFormat::Code},
                                     {u"Date"_s, u"تاریخ"_s, 90, false, ColumnFormat::Date},
                                     {u"Kind"_s, u"سند"_s, 150},
                                     {u"Number"_s, u"شماره"_s, 80, false, ColumnFormat::Code},
                                     {u"StoreName"_s, u"انبار"_s, 130},
                                     {u"In1"_s, u"وارده"_s, 84, false, ColumnFormat::Quantity},
                                     {u"Out1"_s, u"صادره"_s, 84, false, ColumnFormat::Quantity},
                                     {u"StoreBalance"_s, u"مانده انبار"_s, 90, false, ColumnFormat::Quantity},
                                     {u"Balance"_s, u"مانده کل"_s, 90, false, ColumnFormat::Quantity}});
    m_ui->Kin_GRD->SetColumns({{u"Relation"_s, u"نسبت"_s, 110},
                               {u"Details"_s, u"جزئیات"_s, 260},
                               {u"Kind"_s, u"سند ورود"_s, 130},
                               {u"Number"_s, u"شماره"_s, 80, false, ColumnFormat::Code},
                               {u"Amount"_s, u"مقدار ورود"_s, 90, false, ColumnFormat::Quantity},
                               {u"OnHand"_s, u"موجودی"_s, 90, false, ColumnFormat::Quantity},
                               {u"Waste"_s, u"ضایعات"_s, 80}});
    for (host::Grid *grid : {m_ui->Values_GRD, m_ui->Kin_GRD, m_ui->Movements_GRD}) {
        grid->horizontalHeader()->setStretchLastSection(true);
        RememberLayout(grid);
    }
    m_ui->Split_SPL->setSizes(PaneHeights);
    m_ui->Kin_PNL->hide();
    BindSearch(m_ui->Serial_EDT, m_ui->Values_GRD, [this] { Find(); });
    connect(m_ui->Values_GRD, &host::Grid::CurrentKeyChanged, this,
            [this] { Command(Title(), [this] { ShowMovements(); }); });
    connect(m_ui->Kin_GRD, &host::Grid::RowActivated, this,
            [this](const QString &key) { Command(Title(), [this, &key] { GoTo(key.toInt()); }); });
    Bind(AddFooterCommand(u"PrintList_BTN"_s, u"پیش نمایش ليست F9"_s), Qt::Key_F9, [this] { PreviewGrid(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
}

TDetailHistory_FRM::~TDetailHistory_FRM()
{
    for (host::Grid *grid : {m_ui->Values_GRD, m_ui->Kin_GRD, m_ui->Movements_GRD})
        grid->SetSource(nullptr);
}

void TDetailHistory_FRM::FormShow()
{
    if (!host::Granted(m_host, SoftwarePart(), host::TPermission::OpenList))
        return AbortOpening();
    m_ui->Serial_EDT->setText(ParameterText());
    if (m_line) {
        m_data.OfLine(m_host.detailMovements.DetailsOfLine(*m_line));
        ShowValues();
        m_ui->Values_GRD->setFocus(Qt::OtherFocusReason);
    } else if (!ParameterText().isEmpty()) {
        Find();
    } else {
        m_ui->Serial_EDT->setFocus(Qt::OtherFocusReason);
    }
}

void TDetailHistory_FRM::FormClose()
{
    m_line.reset();
    for (host::Grid *grid : {m_ui->Values_GRD, m_ui->Kin_GRD, m_ui->Movements_GRD})
        grid->SetSource(nullptr);
    for (host::Dataset *rows : {&m_data.Values_QRY, &m_data.Kin_QRY, &m_data.Movements_QRY})
        rows->Close();
}

void TDetailHistory_FRM::Find()
{
    const QString serial = m_ui->Serial_EDT->text().trimmed();
    if (serial.isEmpty())
        return;
    m_data.Find(serial);
    ShowValues();
    m_ui->Note_LBL->setText(m_data.Values_QRY.IsEmpty() ? u"\u200F"_s + MessageText(message::NoHistory, {serial})
                                                        : QString());
    m_ui->Serial_EDT->selectAll();
}

void TDetailHistory_FRM::ShowValues()
{
    m_ui->Note_LBL->clear();
    {
        // What follows the current row is shown once, not for each step on the way there.
        const QSignalBlocker quiet(m_ui->Values_GRD);
        m_ui->Values_GRD->SetSource(&m_data.Values_QRY, u"DetailValueID"_s);
        m_ui->Values_GRD->StandOn(0);
    }
    ShowMovements();
}

void TDetailHistory_FRM::ShowMovements()
{
    const QString value = m_ui->Values_GRD->CurrentKey();
    m_data.Movements(value.toInt());
    m_ui->Movements_GRD->SetSource(&m_data.Movements_QRY, u"Radif"_s);
    m_data.Kin(value.toInt());
    m_ui->Kin_GRD->SetSource(&m_data.Kin_QRY, u"DetailValueID"_s);
    m_ui->Kin_GRD->Locate(value);
    // Most details were never divided.
    const bool divided = m_data.Kin_QRY.RecordCount() > 1;
    if (divided == m_ui->Kin_PNL->isHidden()) {
        m_ui->Kin_PNL->setVisible(divided);
        m_ui->Split_SPL->setSizes(PaneHeights);
    }
}

/// Shows another unit of the kin; the keys stay in the list, where the road back is one line away.
void TDetailHistory_FRM::GoTo(int detailValueId)
{
    m_data.Of(detailValueId);
    ShowValues();
    m_ui->Kin_GRD->setFocus(Qt::OtherFocusReason);
}

host::Grid *TDetailHistory_FRM::PrintedGrid() const
{
    return m_ui->Movements_GRD;
}

bool TDetailHistory_FRM::FormKeyDown(QKeyEvent *event)
{
    return GoOnByEnter(event) || TBaseDock_FRM::FormKeyDown(event);
}

} // namespace desk
