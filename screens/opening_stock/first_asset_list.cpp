#include "screens/opening_stock/first_asset_list.h"

#include "data/goods/stock_probe.h"
#include "host/controls/grid.h"
#include "host/controls/number_text.h"
#include "host/look/theme.h"
#include "host/screens/grid_print.h"
#include "ui_first_asset_list.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>

using namespace Qt::StringLiterals;

using host::ColumnFormat;
using host::TFormMode;

namespace {

constexpr QSize WindowSize(720, 420);

QString Shown(goods::Quantity amount, const QString &unit)
{
    return host::DisplayNumber(host::QuantityToText(amount)) + u' ' + unit;
}

} // namespace

TFirstAsset_List_FRM::TFirstAsset_List_FRM(host::Host &host, OpeningRowsContext &context)
    : TBaseDock_FRM(host, host::TSoftwarePart::OpeningStock, TFormMode::DockedList, host.mainWindow),
      m_context(context), m_ui(std::make_unique<Ui::FirstAssetList>())
{
    setObjectName(u"TFirstAsset_List_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(u"موجودی اول دوره"_s);
    resize(WindowSize);
    m_ui->Good_LBL->setFont(m_host.theme.TitleFont());
    m_ui->Good_LBL->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    ShowColumns();
    BindCommands();
}

TFirstAsset_List_FRM::~TFirstAsset_List_FRM()
{
    m_ui->FirstAssetList_GRD->SetSource(nullptr);
}

void TFirstAsset_List_FRM::ShowColumns()
{
    const bool twoUnits = m_context.good.twoUnits;
    QList<host::GridColumn> columns{{u"StoreCode"_s, u"کد انبار"_s, 70, false, ColumnFormat::Code},
                                    {u"StoreName"_s, u"انبار"_s, 150},
                                    {u"Amount1"_s, u"موجودي"_s, 110, false, ColumnFormat::Quantity},
                                    {u"Unit1"_s, u"واحد"_s, 70}};
    if (twoUnits)
        columns << host::GridColumn{u"Amount2"_s, u"موجودي 2"_s, 100, false, ColumnFormat::Quantity}
                << host::GridColumn{u"Unit2"_s, u"واحد 2"_s, 70};
    else
        columns << host::GridColumn{u"Joz"_s, u"م کل"_s, 90, false, ColumnFormat::Quantity};
    columns << host::GridColumn{u"Comment"_s, u"توضیحات"_s, 120};
    host::Grid *grid = m_ui->FirstAssetList_GRD;
    grid->SetColumns(columns);
    grid->horizontalHeader()->setStretchLastSection(true);
    grid->SetSource(&m_context.data.FirstAssetList_QRY, u"Radif"_s);
    RememberLayout(grid);
    connect(grid, &host::Grid::RowActivated, this, [this] { m_edit->click(); });
}

void TFirstAsset_List_FRM::BindCommands()
{
    m_new = AddFooterCommand(u"New_BTN"_s, u"جدید F4"_s);
    m_edit = AddFooterCommand(u"Edit_BTN"_s, u"ویرایش F5"_s);
    m_delete = AddFooterCommand(u"Delete_BTN"_s, u"حذف F7"_s);
    Bind(m_new, Qt::Key_F4, [this] { Edit(TFormMode::New, m_new); });
    Bind(m_edit, Qt::Key_F5, [this] { Edit(TFormMode::Edit, m_edit); });
    Bind(m_delete, Qt::Key_F7, [this] { Delete(); });
    Bind(AddFooterCommand(u"PrintList_BTN"_s, u"پیش نمایش ليست F9"_s), Qt::Key_F9, [this] { Print(); });
    Bind(AddFooterButton(u"Exit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
}

void TFirstAsset_List_FRM::FormShow()
{
    const QString name = OpeningGoodTitle(m_context.good);
    m_ui->Good_LBL->setText(name);
    m_ui->Good_LBL->setToolTip(host::theme::PlainToolTip(name));
    Refresh();
}

void TFirstAsset_List_FRM::FormShown()
{
    m_ui->FirstAssetList_GRD->setFocus();
}

void TFirstAsset_List_FRM::FormClose()
{
    m_context.data.FirstAssetList_QRY.Close();
}

void TFirstAsset_List_FRM::Refresh()
{
    host::Grid *grid = m_ui->FirstAssetList_GRD;
    const host::Grid::Place place = grid->CurrentPlace();
    const goods::OpeningGood &good = m_context.good;
    m_context.data.GoodFirstAsset_GetAll(m_context.copy.Key(), good.unit1, good.unit2, good.formula);
    grid->ReturnTo(place);
    if (grid->CurrentKey().isEmpty() && !grid->IsEmpty())
        grid->StandOn(0);
    ShowTotals();
    const bool rows = !grid->IsEmpty();
    m_edit->setEnabled(rows);
    m_delete->setEnabled(rows);
}

void TFirstAsset_List_FRM::ShowTotals()
{
    const goods::UnitAmounts totals = m_context.copy.Totals();
    const goods::OpeningGood &good = m_context.good;
    QString text = u"جمع :  "_s + Shown(totals.first, good.unit1Name);
    if (good.twoUnits || good.formula > 0)
        text += u"   ·   "_s + Shown(totals.second, good.unit2Name);
    m_ui->Total_LBL->setText(text);
}

int TFirstAsset_List_FRM::CurrentRow() const
{
    return m_ui->FirstAssetList_GRD->CurrentKey().toInt();
}

bool TFirstAsset_List_FRM::MayChange(QWidget *beside)
{
    if (OpeningPeriodClosed(m_host, beside))
        return false;
    if (!m_context.fixed)
        return true;
    m_host.messages.ShowMessage(u"کاربر گرامی برای این کالا سند ثبت شده است و موجودی اول دوره آن قابل تغییر نیست"_s,
                                host::MessageIcon::Warning, Title());
    return false;
}

void TFirstAsset_List_FRM::Edit(TFormMode mode, QWidget *beside)
{
    if (!MayChange(beside))
        return;
    const bool isNew = mode == TFormMode::New;
    m_context.row = isNew ? 0 : CurrentRow();
    TFirstAsset_Get_FRM editor(m_host, m_context);
    editor.SetFormTheme();
    editor.Open(isNew ? QVariant() : m_ui->FirstAssetList_GRD->CurrentValue(u"ID"_s), mode,
                goods::PackOpeningRow({m_context.good, m_context.row}));
    if (editor.SavedKey().isNull() && !editor.RecordGone())
        return;
    Refresh();
    m_ui->FirstAssetList_GRD->Locate(QString::number(editor.Row()));
}

void TFirstAsset_List_FRM::Delete()
{
    host::Grid *grid = m_ui->FirstAssetList_GRD;
    if (!MayChange(m_delete) || !host::Granted(m_host, SoftwarePart(), host::TPermission::Delete) ||
        !m_host.messages.MsgDeleteRow())
        return;
    if (m_host.settings.SettingRecord().ControlNegativeStock &&
        !m_host.stock.Check_TockMinus(
            goods::DeletedRowProbe(m_context.good.code, grid->CurrentValue(u"StoreCode"_s).toInt()),
            grid->CurrentValue(u"Date"_s).toString()))
        return;
    // The details of the row go when the good is saved, with it.
    m_context.copy.Delete(CurrentRow());
    Refresh();
}

bool TFirstAsset_List_FRM::FormKeyDown(QKeyEvent *event)
{
    return GoOnByEnter(event) || TBaseDock_FRM::FormKeyDown(event);
}

host::Grid *TFirstAsset_List_FRM::PrintedGrid() const
{
    return m_ui->FirstAssetList_GRD;
}

void TFirstAsset_List_FRM::Print()
{
    // A sheet of paper says which good it is about, and how much there is of it.
    const QStringList title{Title(), m_ui->Good_LBL->text(), m_ui->Total_LBL->text()};
    host::GridPrinter(*m_ui->FirstAssetList_GRD, title.join(u"   ·   "), m_host.clock.NowShamsiDate()).Preview(this);
}
