#include "division/division_get.h"

#include "division/division_items.h"
#include "division/division_print.h"
#include "division/division_save.h"
#include "host/controls/grid.h"
#include "host/controls/number_text.h"
#include "host/data/persian_text.h"
#include "host/look/theme.h"
#include "host/screens/print_page.h"
#include "ui_division_get.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>

using namespace Qt::StringLiterals;

using host::ColumnFormat;
using host::GridColumn;
using host::TFormMode;

namespace {

constexpr auto Part = host::TSoftwarePart::GoodDetailDivision;
constexpr QSize WindowSize(1020, 680);
constexpr int FlashMilliseconds = 1500;
/// Units that a menu offers; who means another one types more of it.
constexpr int MostOffered = 20;
const QString Document = u"تقسیم جزئیات"_s;

QList<GridColumn> AmountColumns()
{
    return {{u"Length"_s, u"طول"_s, 70, false, ColumnFormat::Amount},
            {u"Width"_s, u"عرض"_s, 70, false, ColumnFormat::Amount},
            {u"Amount3"_s, u"تعداد"_s, 70, false, ColumnFormat::Amount},
            {u"Amount2"_s, u"مقدار2"_s, 80, false, ColumnFormat::Amount},
            {u"Amount1"_s, u"مقدار"_s, 90, false, ColumnFormat::Amount}};
}

} // namespace

TGoodDetailDivision_Get_FRM::TGoodDetailDivision_Get_FRM(host::Host &host, division::UnitPicker picker)
    : TBaseGet_FRM(host, Part, host.mainWindow), m_picker(std::move(picker)), m_data(host),
      m_ui(std::make_unique<Ui::TGoodDetailDivision_Get_FRM>())
{
    setObjectName(u"TGoodDetailDivision_Get_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(Document);
    resize(WindowSize);
    m_ui->Scan_EDT->setProperty("watched", true); // what is scanned is no change of the division
    BuildGrids();
    BindCommands();
}

TGoodDetailDivision_Get_FRM::~TGoodDetailDivision_Get_FRM()
{
    for (host::Grid *grid : {m_ui->GoodDetailDivisionDetail_GRD, m_ui->GoodDetailDivisionDetailItems_GRD})
        grid->SetSource(nullptr);
}

void TGoodDetailDivision_Get_FRM::BuildGrids()
{
    host::Grid *rows = m_ui->GoodDetailDivisionDetail_GRD;
    rows->SetColumns(QList<GridColumn>{{u"StoreName"_s, u"انبار"_s, 110},
                                       {u"GoodName"_s, u"نام کالا"_s, 230},
                                       {u"GoodDetail"_s, u"جزییات"_s, 150}} +
                     AmountColumns() + QList<GridColumn>{{u"Comment"_s, u"توضیحات"_s, 120}});
    rows->SetSource(&m_data.Rows_QRY, u"OperationRow"_s);
    host::Grid *items = m_ui->GoodDetailDivisionDetailItems_GRD;
    items->SetColumns(AmountColumns() + QList<GridColumn>{{u"Waste"_s, u"ضایعات"_s, 80, false, ColumnFormat::Flag}});
    items->SetSource(&m_data.Items_QRY, u"OperationRow"_s);
    for (host::Grid *grid : {rows, items}) {
        grid->horizontalHeader()->setStretchLastSection(true);
        RememberLayout(grid);
        connect(grid, &host::Grid::RowActivated, m_ui->EditRow_BTN, &QPushButton::click);
    }
    connect(rows, &host::Grid::CurrentKeyChanged, this, [this] {
        if (!IsLoading())
            Command(Title(), [this] { ShowItems(); });
    });
    m_ui->Rows_SPL->setSizes({300, 220});
}

void TGoodDetailDivision_Get_FRM::BindCommands()
{
    Bind(m_ui->NewRow_BTN, Qt::Key_F4, [this] { NewRow(); });
    Bind(m_ui->EditRow_BTN, Qt::Key_F5, [this] { EditRow(); });
    Bind(m_ui->DeleteRow_BTN, {}, [this] { DeleteRow(); });
    Bind(AddFooterCommand(u"PrintList_BTN"_s, u"پیش نمایش F9"_s), Qt::Key_F9, [this] { Preview(); });
    BindKey(Qt::Key_F2, m_ui->Scan_LBL->text(), [this] {
        m_ui->Scan_EDT->setFocus(Qt::ShortcutFocusReason);
        m_ui->Scan_EDT->selectAll();
    });
    connect(m_ui->Scan_EDT, &QLineEdit::textEdited, this, [this] {
        m_answered.clear();
        Tell({});
    });
    m_ui->Scan_EDT->installEventFilter(this);
}

void TGoodDetailDivision_Get_FRM::Prepare()
{
    m_header = {};
    m_header.Code = m_data.NewCode();
    m_header.Date = m_host.clock.NowShamsiDate();
    m_data.Begin();
    Show(m_header);
}

void TGoodDetailDivision_Get_FRM::Load()
{
    m_header = {};
    const int code = Key().toInt();
    const auto header = m_data.Load(code);
    if (!header) {
        SetRecordGone();
        RefuseOpening(host::RecordGone(Document));
        return;
    }
    m_header = *header;
    Show(m_header);
}

void TGoodDetailDivision_Get_FRM::Show(const host::TDivisionHeader &header)
{
    m_ui->Code_EDT->setText(QString::number(header.Code));
    m_ui->Date_EDT->SetDate(host::ParseDate(header.Date, host::DateType::Solar).value_or(QDate()));
    m_ui->Comment_EDT->setText(header.Comment);
    m_ui->Scan_EDT->clear();
    Tell({});
    ShowRows();
}

/// Reads the rows anew and stands on one of them; without one, where the user was.
void TGoodDetailDivision_Get_FRM::ShowRows(int row)
{
    host::Grid *grid = m_ui->GoodDetailDivisionDetail_GRD;
    host::Grid::Place place = grid->CurrentPlace();
    if (row != 0)
        place.key = QString::number(row);
    {
        const Loading quiet(*this);
        m_data.OpenRows();
        grid->ReturnTo(place);
        if (grid->CurrentKey().isEmpty() && !grid->IsEmpty())
            grid->StandOn(0);
    }
    ShowItems();
}

void TGoodDetailDivision_Get_FRM::ShowItems()
{
    m_data.OpenItems(CurrentRow());
    bool waste = false;
    for (int part = 0; part < m_data.Items_QRY.RecordCount(); ++part)
        waste = waste || m_data.Items_QRY.FieldAt(part, u"Waste").toBool();
    m_ui->GoodDetailDivisionDetailItems_GRD->SetColumnVisible(u"Waste"_s, waste);
    ShowState();
}

void TGoodDetailDivision_Get_FRM::ShowState()
{
    const int rows = m_data.Rows_QRY.RecordCount();
    const int place = m_ui->GoodDetailDivisionDetail_GRD->CurrentSourceRow();
    m_ui->Row_LBL->setText(place < 0 ? u"قلمی را با سریال یا بارکد، یا با F4 از موجودی انتخاب کنید"_s
                                     : u"قطعه‌های «%1»"_s.arg(RowAt(place).Text));
    m_ui->State_LBL->setText(rows == 0 ? QString()
                                       : host::DisplayNumber(QString::number(rows)) + u" سطر   ·   "_s + Pieces());
    const bool changeable = Mode() != TFormMode::Review;
    m_ui->NewRow_BTN->setEnabled(changeable);
    m_ui->EditRow_BTN->setEnabled(changeable && place >= 0);
    m_ui->DeleteRow_BTN->setEnabled(changeable && place >= 0);
}

/// Of the current row: packages are counted by their second amount, whatever else is divided by the third.
QString TGoodDetailDivision_Get_FRM::Pieces() const
{
    const int place = m_ui->GoodDetailDivisionDetail_GRD->CurrentSourceRow();
    const auto amount = [](const host::Dataset &rows, int at, QStringView field) {
        return at < 0 ? host::Quantity(0) : host::QuantityFromText(rows.FieldAt(at, field).toString());
    };
    const bool packed =
        amount(m_data.Rows_QRY, place, u"Amount3") != 0 && amount(m_data.Rows_QRY, place, u"Length") == 0;
    host::Quantity pieces = 0;
    for (int part = 0; part < m_data.Items_QRY.RecordCount(); ++part)
        pieces += amount(m_data.Items_QRY, part, packed ? u"Amount2" : u"Amount3");
    return host::DisplayAmount(pieces) + u" قطعه"_s;
}

void TGoodDetailDivision_Get_FRM::Tell(const QString &note)
{
    m_ui->Note_LBL->setProperty("fault", true);
    // The text may begin with what was scanned: the mark keeps it a sentence from the right.
    m_ui->Note_LBL->setText(note.isEmpty() ? note : u"\u200F"_s + note);
    m_ui->Note_LBL->setVisible(!note.isEmpty());
    if (!note.isEmpty())
        QApplication::beep(); // who scans looks at the goods
}

int TGoodDetailDivision_Get_FRM::CurrentRow() const
{
    return m_ui->GoodDetailDivisionDetail_GRD->CurrentKey().toInt();
}

TGoodDetailDivision_Get_FRM::Unit TGoodDetailDivision_Get_FRM::RowAt(int place) const
{
    const auto field = [&](QStringView name) { return m_data.Rows_QRY.FieldAt(place, name); };
    QStringList names{field(u"GoodName").toString(), field(u"GoodDetail").toString(), field(u"StoreName").toString()};
    names.removeAll(QString());
    return {field(u"DetailValueID").toInt(), field(u"StoreCode").toInt(), field(u"GoodCode").toInt(),
            field(u"OperationRow").toInt(), names.join(u" · ")};
}

int TGoodDetailDivision_Get_FRM::RowOf(int detailValueId, int storeCode) const
{
    for (int place = 0; place < m_data.Rows_QRY.RecordCount(); ++place) {
        const Unit unit = RowAt(place);
        if (unit.DetailValueID == detailValueId && unit.StoreCode == storeCode)
            return unit.Row;
    }
    return 0;
}

void TGoodDetailDivision_Get_FRM::NewRow()
{
    if (!host::Granted(m_host, SoftwarePart(), host::TPermission::Create) || !m_picker)
        return;
    const host::TSettingRecord &settings = m_host.settings.SettingRecord();
    constexpr int WithoutFormula = 1;
    constexpr int SquareMetres = 2;
    const auto chosen =
        m_picker(settings.TwoUnitGoods && settings.TwoUnitVariableRatio ? WithoutFormula : SquareMetres);
    if (!chosen)
        return;
    Unit unit{chosen->DetailValueID, chosen->StoreCode, chosen->GoodCode};
    unit.Row = RowOf(unit.DetailValueID, unit.StoreCode);
    OpenUnit(unit);
}

void TGoodDetailDivision_Get_FRM::EditRow()
{
    const int place = m_ui->GoodDetailDivisionDetail_GRD->CurrentSourceRow();
    if (place >= 0)
        OpenUnit(RowAt(place));
}

void TGoodDetailDivision_Get_FRM::DeleteRow()
{
    const int row = CurrentRow();
    if (row == 0)
        return;
    if (!m_data.MayDelete(m_header.Code, row)) {
        host::SmartMessage(m_ui->DeleteRow_BTN, host::message::ItemInUse, {Document}).say(m_host.messages);
        Tell(m_data.UsedBy(m_header.Code, row));
        return;
    }
    if (!m_host.messages.MsgDeleteItem(u"سطر"_s))
        return;
    m_host.messages.ShowMessage(
        u"تا پیش از ثبت تقسیم جزئیات جاری مقادیر حذف شده در موجودی جزئیات کالاها تاثیری نخواهد داشت"_s,
        host::MessageIcon::Information, Title());
    m_data.DeleteRow(m_header.Code, row);
    SetIsSaved(false);
    ShowRows();
}

/// The units that carry what was scanned: those of rows first, which may have taken all that was on hand.
QList<TGoodDetailDivision_Get_FRM::Unit> TGoodDetailDivision_Get_FRM::UnitsOf(const QString &text) const
{
    QList<Unit> units;
    for (int place = 0; place < m_data.Rows_QRY.RecordCount(); ++place) {
        for (int title = 1; title <= host::MostDetails; ++title) {
            const QString value = m_data.Rows_QRY.FieldAt(place, u"DetailTitle%1"_s.arg(title)).toString();
            if (value.compare(text, Qt::CaseInsensitive) != 0)
                continue;
            units << RowAt(place);
            units.last().Exact = true;
            break;
        }
    }
    for (const host::TDivisionSource &source : m_host.detailDivisions.GoodDetailDivision_FindUnits(text)) {
        Unit unit{source.DetailValueID, source.StoreCode, source.GoodCode,
                  RowOf(source.DetailValueID, source.StoreCode)};
        const auto same = [&](const Unit &known) { return known.Row != 0 && known.Row == unit.Row; };
        if (std::any_of(units.cbegin(), units.cend(), same))
            continue;
        unit.Text = source.GoodDetail + u"   ·   "_s + host::DisplayAmount(source.OnHand.Amount1);
        unit.Exact = std::any_of(source.DetailTitle.cbegin(), source.DetailTitle.cend(),
                                 [&](const QString &value) { return value.compare(text, Qt::CaseInsensitive) == 0; });
        units << unit;
    }
    // Parts carry the text of their parent: who types it in full means that one.
    if (std::any_of(units.cbegin(), units.cend(), [](const Unit &unit) { return unit.Exact; }))
        units.removeIf([](const Unit &unit) { return !unit.Exact; });
    return units;
}

void TGoodDetailDivision_Get_FRM::TakeScan()
{
    const QString text = host::SerialText(m_ui->Scan_EDT->text());
    Tell({});
    m_answered = m_ui->Scan_EDT->text();
    if (text.isEmpty()) {
        m_ui->Scan_EDT->clear();
        return;
    }
    const QList<Unit> units = UnitsOf(text);
    m_ui->Scan_EDT->selectAll();
    if (units.isEmpty())
        return Tell(u"«%1» در هیچ انباری موجود نیست."_s.arg(text));
    const int chosen = units.size() == 1 ? 0 : ChooseUnit(units);
    if (chosen < 0)
        return;
    const Unit &unit = units.at(chosen);
    if (unit.Row == 0 && !host::Granted(m_host, SoftwarePart(), host::TPermission::Create))
        return;
    OpenUnit(unit);
}

bool TGoodDetailDivision_Get_FRM::ScanPending() const
{
    const QString text = m_ui->Scan_EDT->text();
    return !host::SerialText(text).isEmpty() && text != m_answered;
}

int TGoodDetailDivision_Get_FRM::ChooseUnit(const QList<Unit> &units)
{
    QMenu menu(this);
    menu.setObjectName(u"Units_MNU"_s);
    for (qsizetype place = 0; place < std::min<qsizetype>(units.size(), MostOffered); ++place)
        menu.addAction(QString(units.at(place).Text).replace(u'&', u"&&"_s))->setData(place);
    if (units.size() > MostOffered)
        menu.addAction(u"بیش از این است؛ متن کامل‌تری بنویسید"_s)->setEnabled(false);
    menu.setActiveAction(menu.actions().constFirst());
    const QAction *chosen =
        menu.exec(m_ui->Scan_EDT->mapToGlobal(QPoint(m_ui->Scan_EDT->width(), m_ui->Scan_EDT->height())));
    return chosen ? chosen->data().toInt() : -1;
}

void TGoodDetailDivision_Get_FRM::OpenUnit(const Unit &unit)
{
    DivisionRowOpening opening;
    opening.DivisionCode = m_header.Code;
    opening.DivisionRow = unit.Row != 0 ? unit.Row : m_data.NextRow();
    opening.DetailValueID = unit.DetailValueID;
    opening.StoreCode = unit.StoreCode;
    opening.GoodCode = unit.GoodCode;
    opening.Mode = unit.Row != 0 ? TFormMode::Edit : TFormMode::New;
    OpenItems(opening);
}

void TGoodDetailDivision_Get_FRM::OpenItems(const DivisionRowOpening &opening)
{
    if (!m_items)
        m_items = std::make_unique<TGoodDetailDivision_DetailItems_Get_FRM>(m_host);
    m_items->SetFormTheme();
    if (m_items->OpenRow(opening) != Accepted)
        return;
    m_ui->Scan_EDT->clear();
    SetIsSaved(false);
    ShowRows(opening.DivisionRow);
}

host::Refused TGoodDetailDivision_Get_FRM::MaySave()
{
    return host::CheckRight(m_host, SoftwarePart(), Mode());
}

std::vector<host::Check> TGoodDetailDivision_Get_FRM::Validate()
{
    return {
        {u"DateGiven"_s,
         [this] { return host::When(!m_ui->Date_EDT->Date().isValid(), host::Required(m_ui->Date_EDT, u"تاریخ"_s)); }},
        {u"NothingPending"_s,
         [this] {
             return host::When(
                 ScanPending(),
                 host::Warning(
                     m_ui->Scan_EDT,
                     u"کاربر گرامی، «%1» هنوز سطری نشده است. با Enter آن را باز یا از خانه‌ی سریال پاک کنید."_s
                         .arg(host::SerialText(m_ui->Scan_EDT->text()))));
         }},
        {u"RowsGiven"_s,
         [this] {
             return host::When(m_data.Rows_QRY.RecordCount() == 0,
                               host::Warning(m_ui->Scan_EDT, u"کاربر گرامی هیچ سطری جهت تقسیم جزئیات ثبت نشده است"_s));
         }},
    };
}

void TGoodDetailDivision_Get_FRM::Write()
{
    host::TDivisionHeader header = m_header;
    header.Date = m_ui->Date_EDT->Text();
    header.Comment = m_ui->Comment_EDT->text().trimmed();
    division::Save(m_host, header, Mode());
    SetKey(header.Code);
}

void TGoodDetailDivision_Get_FRM::AfterWrite()
{
    m_host.messages.ShowFlashMessage(
        u"تقسیم جزئیات شماره %1 ثبت شد."_s.arg(host::PersianDigits(QString::number(m_header.Code))), FlashMilliseconds);
}

QString TGoodDetailDivision_Get_FRM::PrepareRecoveryQuery() const
{
    return TDivision_DM::RowText(m_header.Code);
}

QWidget *TGoodDetailDivision_Get_FRM::FirstControl() const
{
    if (Mode() == TFormMode::New)
        return m_ui->Scan_EDT;
    return m_ui->GoodDetailDivisionDetail_GRD;
}

void TGoodDetailDivision_Get_FRM::SetReadOnly(bool readOnly)
{
    TBaseGet_FRM::SetReadOnly(readOnly);
    ShowState();
}

void TGoodDetailDivision_Get_FRM::FormClose()
{
    m_data.Leave(std::exchange(m_header, {}).Code);
    TBaseGet_FRM::FormClose();
}

bool TGoodDetailDivision_Get_FRM::FormKeyDown(QKeyEvent *event)
{
    const QWidget *at = focusWidget();
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && at == m_ui->Scan_EDT && !m_ui->Scan_EDT->isReadOnly()) {
        TakeScan();
        return true;
    }
    if (event->key() == Qt::Key_Down && at == m_ui->Scan_EDT) {
        m_ui->GoodDetailDivisionDetail_GRD->setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (event->key() == Qt::Key_Delete && at == m_ui->GoodDetailDivisionDetail_GRD) {
        m_ui->DeleteRow_BTN->click();
        return true;
    }
    return TBaseGet_FRM::FormKeyDown(event);
}

/// Some scanners end with Tab.
bool TGoodDetailDivision_Get_FRM::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_ui->Scan_EDT || event->type() != QEvent::KeyPress ||
        static_cast<QKeyEvent *>(event)->key() != Qt::Key_Tab || m_ui->Scan_EDT->isReadOnly() || !ScanPending())
        return TBaseGet_FRM::eventFilter(watched, event);
    Command(Title(), [this] { TakeScan(); });
    return true;
}

void TGoodDetailDivision_Get_FRM::Print(QPrinter &printer)
{
    host::TDivisionHeader header = m_header;
    header.Date = m_ui->Date_EDT->Text();
    header.Comment = m_ui->Comment_EDT->text().trimmed();
    division::DivisionPrinter(m_data, header).Print(printer);
}

void TGoodDetailDivision_Get_FRM::Preview()
{
    host::print::Preview(Title(), QPageLayout::Portrait, this, [this](QPrinter &printer) { Print(printer); });
}
