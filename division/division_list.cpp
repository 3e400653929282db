#include "division/division_list.h"

#include "division/division_save.h"
#include "host/controls/grid.h"
#include "host/controls/number_text.h"
#include "host/screens/refusals.h"
#include "ui_division_list.h"

#include <QHeaderView>
#include <QPushButton>

using namespace Qt::StringLiterals;

using host::ColumnFormat;
using host::TFormMode;
using host::TPermission;

namespace {

constexpr QSize WindowSize(860, 600);
const QString Document = u"تقسیم جزئیات"_s;

} // namespace

TGoodDetailDivision_List_FRM::TGoodDetailDivision_List_FRM(host::Host &host, division::UnitPicker picker)
    : TBaseDock_FRM(host, host::TSoftwarePart::GoodDetailDivision, TFormMode::DockedList, host.mainWindow),
      m_picker(std::move(picker)), m_data(host), m_ui(std::make_unique<Ui::TGoodDetailDivision_List_FRM>())
{
    setObjectName(u"TGoodDetailDivision_List_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(u"لیست تقسیم جزئیات"_s);
    resize(WindowSize);
    BuildGrid();
    BindCommands();
    QList<QWidget *> stops = m_ui->TGeneral_Search_Frame1->TabStops();
    stops << m_ui->Division_GRD << m_ui->FromDate_EDT << m_ui->ToDate_EDT;
    host::ChainTabs(stops);
}

TGoodDetailDivision_List_FRM::~TGoodDetailDivision_List_FRM()
{
    m_ui->Division_GRD->SetSource(nullptr);
}

void TGoodDetailDivision_List_FRM::BuildGrid()
{
    host::Grid *grid = m_ui->Division_GRD;
    grid->SetColumns({{u"Code"_s, u"کد"_s, 90, false, ColumnFormat::Code},
                      {u"Date"_s, u"تاریخ"_s, 110, false, ColumnFormat::Date},
                      {u"Comment"_s, u"توضیحات"_s, 400}});
    grid->SetSource(&m_data.Division_QRY);
    grid->SetSortable(true);
    grid->horizontalHeader()->setStretchLastSection(true);
    RememberLayout(grid);
    m_ui->TGeneral_Search_Frame1->SetGrid(grid);
    connect(grid, &host::Grid::RowCountChanged, this, [this] { ShowCount(); });
    for (host::DateEdit *date : {m_ui->FromDate_EDT, m_ui->ToDate_EDT})
        connect(date, &host::DateEdit::DateChanged, this, [this] {
            if (IsShowing())
                Command(Title(), [this] { Refresh(); });
        });
}

void TGoodDetailDivision_List_FRM::BindCommands()
{
    Bind(AddFooterCommand(u"New_BTN"_s, u"جدید F4"_s), Qt::Key_F4, [this] { OpenEditor(TFormMode::New); });
    QPushButton *edit = AddFooterCommand(u"Edit_BTN"_s, u"ویرایش F5"_s);
    Bind(edit, Qt::Key_F5, [this] { OpenEditor(TFormMode::Edit); });
    Bind(AddFooterCommand(u"Delete_BTN"_s, u"حذف F7"_s), Qt::Key_F7, [this] { Delete(); });
    Bind(AddFooterCommand(u"PrintList_BTN"_s, u"پیش نمایش ليست F9"_s), Qt::Key_F9, [this] { PreviewGrid(); });
    Bind(AddFooterButton(u"Exit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
    connect(m_ui->Division_GRD, &host::Grid::RowActivated, edit, &QPushButton::click);
    connect(m_ui->TGeneral_Search_Frame1, &host::SearchFrame::Accepted, edit, &QPushButton::click);
}

void TGoodDetailDivision_List_FRM::FormShow()
{
    m_ui->TGeneral_Search_Frame1->Reset();
    Refresh();
    if (m_ui->Division_GRD->CurrentKey().isEmpty() && !m_ui->Division_GRD->IsEmpty())
        m_ui->Division_GRD->StandOn(0);
}

void TGoodDetailDivision_List_FRM::FormShown()
{
    m_ui->Division_GRD->setFocus(Qt::OtherFocusReason);
}

void TGoodDetailDivision_List_FRM::FormClose()
{
    m_data.Division_QRY.Close();
}

void TGoodDetailDivision_List_FRM::Refresh(int code)
{
    host::Grid *grid = m_ui->Division_GRD;
    host::Grid::Place place = grid->CurrentPlace();
    if (code != 0)
        place.key = QString::number(code);
    m_data.OpenList({m_ui->FromDate_EDT->Text(), m_ui->ToDate_EDT->Text()});
    grid->ReturnTo(place);
    ShowCount();
}

void TGoodDetailDivision_List_FRM::ShowCount()
{
    const int rows = m_ui->Division_GRD->RowCount();
    m_ui->Count_LBL->setText(rows == 0 ? u"تقسیمی نیست"_s
                                       : u"%1 تقسیم"_s.arg(host::DisplayNumber(QString::number(rows))));
}

int TGoodDetailDivision_List_FRM::CurrentCode() const
{
    return m_ui->Division_GRD->CurrentKey().toInt();
}

void TGoodDetailDivision_List_FRM::OpenEditor(TFormMode mode)
{
    const int code = mode == TFormMode::New ? 0 : CurrentCode();
    if ((mode != TFormMode::New && code == 0) || !host::MayWrite(m_host, SoftwarePart(), mode))
        return;
    TGoodDetailDivision_Get_FRM editor(m_host, m_picker);
    editor.SetKeyboardLayoutName(KeyboardLayoutName());
    editor.SetFormTheme();
    editor.Open(code == 0 ? QString() : QString::number(code), mode);
    if (!editor.SavedKey().isNull() || editor.RecordGone())
        Refresh(editor.SavedKey().toInt());
}

void TGoodDetailDivision_List_FRM::Delete()
{
    const int code = CurrentCode();
    if (code == 0 || !host::Granted(m_host, SoftwarePart(), TPermission::Delete))
        return;
    if (!m_data.MayDelete(code)) {
        host::SmartMessage(findChild<QPushButton *>(u"Delete_BTN"_s), host::message::ItemInUse, {Document})
            .say(m_host.messages);
        m_ui->Count_LBL->setText(m_data.UsedBy(code));
        return;
    }
    if (!m_host.messages.MsgDeleteItem(Document))
        return;
    division::Delete(m_host, code);
    Refresh();
}

host::SearchFrame *TGoodDetailDivision_List_FRM::ListSearch() const
{
    return m_ui->TGeneral_Search_Frame1;
}

host::Grid *TGoodDetailDivision_List_FRM::PrintedGrid() const
{
    return m_ui->Division_GRD;
}
