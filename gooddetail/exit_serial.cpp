#include "gooddetail/exit_serial.h"

#include "gooddetail/opening_texts.h"
#include "gooddetail/typed_inputs.h"
#include "host/controls/grid.h"
#include "host/controls/numeric_edit.h"
#include "screens/shared/leave_watch.h"
#include "ui_detail_line_panel.h"
#include "ui_exit_serial.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QTabBar>

using namespace Qt::StringLiterals;

using good_detail::AmountPart;
using host::ColumnFormat;
using host::GridColumn;

// The frame of the screen and its list; what is chosen stands in exit_choice.cpp.

namespace {

/// Longer than a hand or a scanner needs for the next letter.
constexpr int NarrowMilliseconds = 120;

constexpr int LeastWidth = 72; // of a column of amounts, pixels at 100 %
constexpr int TitleMargin = 16;

enum Tab { Stock, Chosen };

} // namespace

TExit_Serial_FRM::TExit_Serial_FRM(host::Host &host)
    : TDetailLine_FRM(host, good_detail::InputMode::Seek), m_ui(std::make_unique<Ui::TExit_Serial_FRM>())
{
    m_ui->setupUi(Content());
    SetTitle(u"خروج جزییات کالا"_s);
    SetUpPanel(m_ui->Inputs_PNL);
    resize(900, 660);
    m_ui->TabSearch_FRAME->addTab(u"موجودی"_s);
    m_ui->TabSearch_FRAME->addTab(u"انتخاب شده"_s);
    BuildGrid();
    BindCommands();
    BindInputs();
}

TExit_Serial_FRM::~TExit_Serial_FRM()
{
    m_ui->ExitSerialList_GRD->SetSource(nullptr);
}

void TExit_Serial_FRM::BuildGrid()
{
    host::Grid *grid = m_ui->ExitSerialList_GRD;
    grid->SetSource(&m_data.ExitGoodDetail_QRY, u"ID"_s);
    grid->horizontalHeader()->setStretchLastSection(true);
    SetUpList(grid);
    connect(grid, &host::Grid::FetchFailed, this, [this](const QString &message) {
        m_host.messages.ShowMessage(message, host::MessageIcon::Error, Title());
    });
    connect(grid, &host::Grid::RowActivated, this, [this] { m_ui->EditRow_BTN->click(); });
}

void TExit_Serial_FRM::BindCommands()
{
    Bind(m_ui->SaveRow_BTN, QKeySequence(Qt::Key_F4), [this] { SaveRow(); });
    Bind(m_ui->Cancel_BTN, {}, [this] { Cancel(); });
    Bind(m_ui->EditRow_BTN, QKeySequence(Qt::Key_F2), [this] { EditRow(); });
    Bind(m_ui->DelRow_BTN, {}, [this] { DeleteRow(); });
    Bind(m_ui->DelAll_BTN, {}, [this] { DeleteAll(); });
    connect(m_ui->TabSearch_FRAME, &QTabBar::currentChanged, this, [this] {
        if (m_filled)
            Command(Title(), [this] { Narrow(); });
    });
    BindKey(QKeySequence(Qt::CTRL | Qt::Key_Tab), Title(),
            [this] { m_ui->TabSearch_FRAME->setCurrentIndex(1 - m_ui->TabSearch_FRAME->currentIndex()); });
}

void TExit_Serial_FRM::BindInputs()
{
    m_narrow.setSingleShot(true);
    m_narrow.setInterval(NarrowMilliseconds);
    connect(&m_narrow, &QTimer::timeout, this, [this] { Command(Title(), [this] { Narrow(); }); });
    Ui::DetailLinePanel &panel = Panel();
    for (QLineEdit *edit : std::initializer_list<QLineEdit *>{panel.Serial_EDT, panel.SerialFrom_EDT,
                                                              panel.SerialTo_EDT, panel.Barcode_EDT})
        connect(edit, &QLineEdit::textChanged, this, &TExit_Serial_FRM::InputChanged);
    for (host::NumericEdit *edit : {panel.Amount1_EDT, panel.Amount2_EDT, panel.Amount3_EDT, panel.Amount4_EDT}) {
        connect(edit, &QLineEdit::textEdited, this, [this] { m_takenOver = false; });
        connect(edit, &QLineEdit::textChanged, this, [this, edit] {
            if (Narrows(edit))
                InputChanged();
        });
        // Whether the only row's amounts are proposed does not hang on how fast the user comes here.
        goods::OnEnter(edit, [this] {
            if (m_narrow.isActive())
                Command(Title(), [this] { Narrow(); });
        });
    }
    connect(panel.MultiSerial_RD, &QRadioButton::toggled, this, &TExit_Serial_FRM::InputChanged);
    connect(&Inputs(), &good_detail::DetailInputs::Changed, this, &TExit_Serial_FRM::InputChanged);
}

void TExit_Serial_FRM::OrderTabs()
{
    QWidget *last = AmountInputs().Last();
    for (QWidget *next : std::initializer_list<QWidget *>{m_ui->SaveRow_BTN, m_ui->Cancel_BTN, m_ui->SingleSerial_RD,
                                                          m_ui->EditRow_BTN, m_ui->DelRow_BTN, m_ui->DelAll_BTN,
                                                          m_ui->ExitSerialList_GRD, SaveButton(), ExitButton()}) {
        QWidget::setTabOrder(last, next);
        last = next;
    }
}

std::optional<good_detail::DetailLineOpening> TExit_Serial_FRM::ParseOpening(const QString &text) const
{
    const auto parsed = good_detail::ParseExit(text);
    if (!parsed)
        return {};
    const auto &field = parsed->Numbers;
    good_detail::DetailLineOpening opening;
    opening.Line = {
        field[1], field[2], static_cast<quint8>(field[6]), static_cast<quint8>(field[0]), field[7] == 1, field[3],
        field[4], field[5]};
    opening.StoreName = parsed->Text;
    return opening;
}

void TExit_Serial_FRM::BeginLine()
{
    {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        const auto restore = qScopeGuard(&QGuiApplication::restoreOverrideCursor);
        m_host.detailMovements.ExitGoodDetails_Fill(Line());
    }
    m_filled = true;
    m_left.clear();
    m_chosen = false;
    m_last = 0;
    m_edited = false;
    QList<GridColumn> columns{{u"Selected"_s, u"انتخاب"_s, 60, false, ColumnFormat::Flag}};
    columns << DetailColumns();
    // There are up to eight amounts: each is as wide as its title.
    for (GridColumn column : AmountColumns() + AmountColumns(u"_Exit"_s, u" انتخابی"_s)) {
        column.width = std::max(LeastWidth, fontMetrics().horizontalAdvance(column.caption) + TitleMargin);
        columns << column;
    }
    m_ui->ExitSerialList_GRD->SetColumns(columns);
    m_ui->SingleSerial_RD->setVisible(HasSerial() || HasBarcode());
    const QSignalBlocker quiet(m_ui->TabSearch_FRAME);
    m_ui->TabSearch_FRAME->setCurrentIndex(MayChoose() ? Stock : Chosen);
    OrderTabs();
    Renew();
    if (MayChoose() && m_ui->ExitSerialList_GRD->IsEmpty())
        ShowStatus(u"از جزئیات این کالا چیزی در این انبار موجود نیست"_s);
}

void TExit_Serial_FRM::SetReadOnly(bool readOnly)
{
    for (QWidget *command : std::initializer_list<QWidget *>{m_ui->SaveRow_BTN, m_ui->EditRow_BTN, m_ui->DelRow_BTN,
                                                             m_ui->DelAll_BTN, m_ui->SingleSerial_RD})
        command->setEnabled(!readOnly);
    Panel().Amounts_PNL->setEnabled(!readOnly);
}

void TExit_Serial_FRM::FormClose()
{
    m_narrow.stop();
    m_data.ExitGoodDetail_QRY.Close();
    if (std::exchange(m_filled, false))
        m_host.detailMovements.ExitGoodDetails_Clear(Line());
    TDetailLine_FRM::FormClose();
}

void TExit_Serial_FRM::ShowSaved(bool saved)
{
    TDetailLine_FRM::ShowSaved(saved || !m_chosen);
}

void TExit_Serial_FRM::reject()
{
    if (!m_chosen)
        SetIsSaved(true);
    TDetailLine_FRM::reject();
}

host::Grid *TExit_Serial_FRM::PrintedGrid() const
{
    return m_ui->ExitSerialList_GRD;
}

TExitNarrowing TExit_Serial_FRM::Typed() const
{
    TExitNarrowing typed;
    typed.OnlySelected = m_ui->TabSearch_FRAME->currentIndex() == Chosen;
    const Ui::DetailLinePanel &panel = Panel();
    if (IsRange()) {
        if (const auto range = host::SerialRange(panel.SerialFrom_EDT->text(), panel.SerialTo_EDT->text())) {
            typed.SerialFrom = range->From;
            typed.SerialTo = range->To;
        }
    } else if (HasSerial()) {
        typed.Serial = host::SerialText(panel.Serial_EDT->text());
    } else if (HasBarcode()) {
        typed.Barcode = host::SerialText(panel.Barcode_EDT->text());
    }
    for (int place = 0; place < host::MostDetails; ++place)
        typed.Details[static_cast<size_t>(place)] = Inputs().Sought(place);
    // Beside a serial the barcode is one of the details behind it.
    const QString barcode = host::SerialText(panel.Barcode_EDT->text());
    if (HasSerial() && HasBarcode() && !barcode.isEmpty())
        typed.Details[static_cast<size_t>(Inputs().BarcodePlace())] = {barcode, true};
    // An amount that was taken over follows the list; it does not lead it.
    if (!m_takenOver) {
        typed.Package = AmountInputs().Number(AmountPart::Amount3);
        typed.Length = AmountInputs().Number(AmountPart::Length);
        typed.Width = AmountInputs().Number(AmountPart::Width);
    }
    return typed;
}

void TExit_Serial_FRM::InputChanged()
{
    if (!m_filled || m_filling || IsLoading())
        return;
    m_narrow.start();
}

void TExit_Serial_FRM::Narrow()
{
    m_narrow.stop();
    host::Grid *grid = m_ui->ExitSerialList_GRD;
    const QString stood = grid->currentIndex().row() > 0 ? grid->CurrentKey() : QString();
    if (const int current = CurrentRow())
        m_last = current;
    if (std::exchange(m_takenOver, false)) {
        const QScopedValueRollback filling(m_filling, true);
        ClearAmounts();
    }
    m_data.ExitGoodDetail_Open(Line(), Typed());
    // Amounts that are typed are those of the row stood on, however far down; without any the next block is not read.
    const bool stay = !stood.isEmpty() && (HasAmounts(true) || IsFetched(stood));
    if ((!stay || !grid->Locate(stood)) && !grid->IsEmpty())
        grid->StandOn(0);
    ShowListEmpty(grid->IsEmpty());
    TakeOnlyRow();
}

void TExit_Serial_FRM::Renew()
{
    Narrow();
    ShowTotals(m_data.ExitGoodDetail_Sum(Line()));
}

bool TExit_Serial_FRM::IsFetched(const QString &key) const
{
    const host::Dataset &rows = m_data.ExitGoodDetail_QRY;
    for (int row = 0; row < rows.RecordCount(); ++row)
        if (rows.FieldAt(row, u"ID").toString() == key)
            return true;
    return false;
}

bool TExit_Serial_FRM::Narrows(const host::NumericEdit *edit) const
{
    if (UnitTypeNow() == good_detail::Packed)
        return edit == AmountInputs().Edit(AmountPart::Amount3);
    return UnitTypeNow() == good_detail::Area &&
           (edit == AmountInputs().Edit(AmountPart::Length) || edit == AmountInputs().Edit(AmountPart::Width));
}

bool TExit_Serial_FRM::HasAmounts(bool withMeasures) const
{
    const Ui::DetailLinePanel &panel = Panel();
    const auto edits = {panel.Amount1_EDT, panel.Amount2_EDT, panel.Amount3_EDT, panel.Amount4_EDT};
    return !m_takenOver && std::any_of(edits.begin(), edits.end(), [&](const host::NumericEdit *edit) {
        return edit->Number() != 0 && (withMeasures || !Narrows(edit));
    });
}

void TExit_Serial_FRM::TakeOnlyRow()
{
    const host::Dataset &rows = m_data.ExitGoodDetail_QRY;
    const Ui::DetailLinePanel &panel = Panel();
    const auto edits = {panel.Amount1_EDT, panel.Amount2_EDT, panel.Amount3_EDT, panel.Amount4_EDT};
    const bool typing = std::any_of(edits.begin(), edits.end(), [](const host::NumericEdit *edit) {
        return edit->isModified() || edit->Number() != 0;
    });
    if (!m_host.settings.SettingRecord().TakeOnlyDetail || !MayChoose() || !HasSerial() || IsRange() || typing ||
        m_ui->TabSearch_FRAME->currentIndex() != Stock || !rows.FetchedAll() || rows.RecordCount() != 1 ||
        rows.FieldAt(0, u"Selected").toBool())
        return;
    const QScopedValueRollback filling(m_filling, true);
    ShowAmounts(AmountsAt(rows));
    m_takenOver = true;
}

void TExit_Serial_FRM::Reload(int id)
{
    Renew();
    if (id != 0)
        m_ui->ExitSerialList_GRD->Locate(QString::number(id));
}

int TExit_Serial_FRM::CurrentRow() const
{
    return m_ui->ExitSerialList_GRD->CurrentKey().toInt();
}

bool TExit_Serial_FRM::FormKeyDown(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!MayChoose() || (!enter && event->key() != Qt::Key_Delete))
        return TDetailLine_FRM::FormKeyDown(event);
    QWidget *focus = focusWidget();
    Ui::DetailLinePanel &panel = Panel();
    const auto scan = [&](auto *edit) {
        if (focus != edit || edit->text().isEmpty() || !m_ui->SingleSerial_RD->isChecked())
            return false;
        TakeScan(edit);
        return true;
    };
    if (enter && (scan(panel.Serial_EDT) || (!HasSerial() && scan(panel.Barcode_EDT))))
        return true;
    QPushButton *command = enter && focus == AmountInputs().Last()       ? m_ui->SaveRow_BTN
                           : !enter && focus == m_ui->ExitSerialList_GRD ? m_ui->DelRow_BTN
                                                                         : nullptr;
    if (!command)
        return TDetailLine_FRM::FormKeyDown(event);
    command->click();
    return true;
}

namespace good_detail {

std::optional<DetailLineResult> OpenExit(host::Host &host, const DetailLineOpening &opening)
{
    TExit_Serial_FRM screen(host);
    screen.SetFormTheme();
    return screen.OpenLine(opening) == QDialog::Accepted ? std::optional(screen.Result()) : std::nullopt;
}

} // namespace good_detail
