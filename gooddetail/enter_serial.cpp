#include "gooddetail/enter_serial.h"

#include "gooddetail/detail_inputs.h"
#include "gooddetail/enter_texts.h"
#include "gooddetail/opening_texts.h"
#include "gooddetail/typed_inputs.h"
#include "host/controls/display_edit.h"
#include "host/controls/grid.h"
#include "host/controls/numeric_edit.h"
#include "screens/shared/leave_watch.h"
#include "ui_detail_line_panel.h"
#include "ui_enter_serial.h"

#include <QApplication>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

using good_detail::AmountPart;
using good_detail::EnterRefusal;
using good_detail::EnterRow;
using host::DetailOwner;
using host::Refused;
namespace texts = good_detail::texts;

namespace {

/// An end of a range; 0 stands for none.
bool IsTyped(const QLineEdit *edit)
{
    const QString text = host::SerialText(edit->text());
    return !text.isEmpty() && text != u"0";
}

} // namespace

TEnter_Serial_FRM::TEnter_Serial_FRM(host::Host &host)
    : TDetailLine_FRM(host, good_detail::InputMode::Enter), m_form(std::make_unique<Ui::TEnter_Serial_FRM>())
{
    setObjectName(u"TEnter_Serial_FRM"_s);
    m_form->setupUi(Content());
    SetUpPanel(m_form->Inputs_PNL);
    QWidget *last = Panel().Amount4_EDT;
    for (QWidget *next : std::initializer_list<QWidget *>{
             m_form->SaveRow_BTN, m_form->Cancel_BTN, m_form->SingleSerial_RD, m_form->EditRow_BTN, m_form->DelRow_BTN,
             m_form->DelAll_BTN, m_form->EnterSerialList_GRD})
        setTabOrder(std::exchange(last, next), next);
    SetTitle(u"ورود جزییات کالا"_s);
    SetDiscardQuestion(u"سطرهای وارد شده نگهداری نمی شود. آیا بدون ذخیره خارج می شوید؟"_s);
    SetUpList(m_form->EnterSerialList_GRD);
    m_form->EnterSerialList_GRD->SetMultiSelect(true);
    BindRows();
    BindLeaving();
}

TEnter_Serial_FRM::~TEnter_Serial_FRM()
{
    m_form->EnterSerialList_GRD->SetSource(nullptr);
}

void TEnter_Serial_FRM::BindRows()
{
    Bind(m_form->SaveRow_BTN, QKeySequence(Qt::Key_F4), [this] { SaveRow(); });
    Bind(m_form->Cancel_BTN, {}, [this] { Cancel(); });
    Bind(m_form->EditRow_BTN, QKeySequence(Qt::Key_F2), [this] { EditRow(); });
    Bind(m_form->DelRow_BTN, {}, [this] { DeleteRows(); });
    Bind(m_form->DelAll_BTN, {}, [this] { DeleteAll(); });
    connect(m_form->EnterSerialList_GRD, &host::Grid::RowActivated, this,
            [this] { Command(m_form->EditRow_BTN->text(), [this] { EditRow(); }); });
}

void TEnter_Serial_FRM::BindLeaving()
{
    const host::RuleRunner run = [this](const std::function<Refused()> &rule) {
        Command(Title(), [&] { Tell(rule()); });
    };
    goods::OnChanged(Panel().Serial_EDT, goods::RuleTime::Afterwards, run, [this] { return LeaveSerial(); });
    goods::OnChanged(Panel().Barcode_EDT, goods::RuleTime::Afterwards, run, [this] { return LeaveBarcode(); });
}

// Opening -----------------------------------------------------------------------------------------------------------

std::optional<good_detail::DetailLineOpening> TEnter_Serial_FRM::ParseOpening(const QString &text) const
{
    constexpr quint8 SaleReturn = 4;
    good_detail::DetailLineOpening opening;
    opening.Mode = Mode();
    host::TDocumentLine &line = opening.Line;
    if (const auto told = good_detail::ParseEnterLine(text)) {
        const auto &n = told->Numbers;
        line = {n[1], n[2], static_cast<quint8>(n[6]), static_cast<quint8>(n[0]), n[7] == 1 && n[0] == SaleReturn, n[3],
                n[4], n[5]};
        opening.GoodName = told->Text13;
        opening.UnitName = told->Text15;
        opening.Unit2Name = told->Text17;
        opening.StoreName = told->Text18;
        if (told->Amount > 0)
            opening.Wanted = host::TAmounts{told->Amount};
        return opening;
    }
    if (const auto told = good_detail::ParseEnter(text)) {
        const auto &n = told->Numbers;
        line = {n[1], n[2], static_cast<quint8>(n[5]), static_cast<quint8>(n[0]), false, told->Key, n[3], n[4]};
        line.IsReturn = line.OperationType == SaleReturn && line.ForeignOperationCode > 0;
        opening.GoodName = told->Texts[0];
        opening.UnitName = told->Texts[1];
        opening.StoreName = told->Texts[2];
        opening.Unit2Name = told->Texts[3];
        return opening;
    }
    return std::nullopt;
}

void TEnter_Serial_FRM::BeginLine()
{
    m_kept = false;
    m_editedId = 0;
    m_left.clear();
    m_before.reset();
    m_brought.reset();
    m_interrupted.reset();
    m_form->SingleSerial_RD->setVisible(HasSerial());
    for (QWidget *command : std::initializer_list<QWidget *>{
             m_form->SaveRow_BTN, m_form->Cancel_BTN, m_form->EditRow_BTN, m_form->DelRow_BTN, m_form->DelAll_BTN})
        command->setEnabled(Mode() != host::TFormMode::Review);
    m_rows.emplace(m_host, m_data, Line(), Inputs().SerialPlace(),
                   [this](AmountPart part) { return AmountInputs().Caption(part); });
    m_rows->Load();
    ShowColumns();
    EndEditing();
    ProposeAmount();
    ShowRows();
    m_opened = Result();
}

void TEnter_Serial_FRM::ShowColumns()
{
    host::Grid *grid = m_form->EnterSerialList_GRD;
    grid->SetSource(nullptr);
    grid->SetColumns(DetailColumns() + AmountColumns());
    grid->SetSource(&m_data.EnterGoodDetail_QRY, u"ID"_s);
}

/// A serial is one piece.
void TEnter_Serial_FRM::ProposeAmount()
{
    if (HasSerial() && UnitTypeNow() == good_detail::OneUnit)
        ShowAmounts({1, 0, 1});
}

std::vector<host::Check> TEnter_Serial_FRM::Validate()
{
    return {{u"NothingHalfTyped"_s, [this] {
                 QWidget *edit = m_editedId != 0 ? FirstControl() : HalfTyped();
                 return host::When(edit, host::Warning(edit, texts::RowNotStored));
             }}};
}

QWidget *TEnter_Serial_FRM::HalfTyped()
{
    if (m_editedId != 0) {
        const EnterRow typed = Typed();
        return typed.Details.Values == m_shown.Details.Values && typed.Amounts == m_shown.Amounts ? nullptr
                                                                                                  : FirstControl();
    }
    if (!SerialTyped().isEmpty() && !IsRange())
        return Panel().Serial_EDT;
    if (HasBarcode() && !Panel().Barcode_EDT->text().trimmed().isEmpty())
        return Panel().Barcode_EDT;
    if (!HasSerial() && Amounts().Amount1 > 0)
        return AmountInputs().Edit(AmountPart::Amount1);
    return IsRange() && (IsTyped(Panel().SerialFrom_EDT) || IsTyped(Panel().SerialTo_EDT)) ? Panel().SerialFrom_EDT
                                                                                           : nullptr;
}

void TEnter_Serial_FRM::Write()
{
    m_rows->Keep();
    m_kept = true;
}

void TEnter_Serial_FRM::FormClose()
{
    if (m_rows && !m_kept) {
        SetResult(m_opened);
        if (Mode() != host::TFormMode::Review)
            m_rows->GiveUp();
    }
    m_rows.reset();
    TDetailLine_FRM::FormClose();
}

host::Grid *TEnter_Serial_FRM::PrintedGrid() const
{
    return m_form->EnterSerialList_GRD;
}

// Leaving a field ---------------------------------------------------------------------------------------------------

QString TEnter_Serial_FRM::SerialTyped() const
{
    return HasSerial() ? host::SerialText(Panel().Serial_EDT->text()) : QString();
}

Refused TEnter_Serial_FRM::LeaveSerial()
{
    const QString serial = SerialTyped();
    if (serial.isEmpty()) {
        ForgetKnown();
        return {};
    }
    if (m_host.detailValues.SerialOwner(Line().GoodCode, serial) == DetailOwner::OtherGood)
        return host::Warning(Panel().Serial_EDT, texts::SerialOfOtherGood);
    ShowKnown(serial);
    return {};
}

Refused TEnter_Serial_FRM::LeaveBarcode()
{
    const QString barcode = host::SerialText(Panel().Barcode_EDT->text());
    if (barcode.isEmpty())
        return {};
    switch (m_host.detailValues.BarcodeOwner(Line().GoodCode, barcode)) {
    case DetailOwner::OtherGood:
        return host::Warning(Panel().Barcode_EDT, texts::BarcodeOfOtherGood);
    case DetailOwner::OperationBarcode:
        return host::Warning(Panel().Barcode_EDT, texts::OperationBarcode);
    case DetailOwner::Nobody:
    case DetailOwner::ThisGood:
        break;
    }
    ShowKnown(barcode);
    return {};
}

/// What was entered once with a serial or barcode comes with it again; the next one has the details of before.
void TEnter_Serial_FRM::ShowKnown(const QString &text)
{
    ForgetKnown();
    const std::optional<host::TKnownDetail> known = m_host.detailValues.FindByText(Line().GoodCode, text);
    if (!known)
        return;
    const Loading quiet(*this);
    m_before = Inputs().Values();
    Inputs().SetValues(known->Details);
    m_brought = Inputs().Values();
    if (!Line().IsReturn)
        return;
    const auto sold = m_host.detailMovements.Returnable(Line(), known->DetailValueID);
    if (sold && sold->Amount1 > 0)
        ShowAmounts(*sold);
}

void TEnter_Serial_FRM::ForgetKnown()
{
    const Loading quiet(*this);
    if (m_before && m_brought && m_brought->Values == Inputs().Values().Values)
        Inputs().SetValues(*m_before);
    m_before.reset();
    m_brought.reset();
}

// One row -----------------------------------------------------------------------------------------------------------

bool TEnter_Serial_FRM::FormKeyDown(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !(event->modifiers() & ~Qt::KeypadModifier) && Mode() != host::TFormMode::Review) {
        const QWidget *at = focusWidget();
        const bool serial = at == Panel().Serial_EDT && m_form->SingleSerial_RD->isChecked();
        if (serial && !SerialTyped().isEmpty()) {
            StoreByKey();
            return true;
        }
        if (at == AmountInputs().Last()) {
            if (HasSerial() && !IsRange() && SerialTyped().isEmpty())
                Panel().Serial_EDT->setFocus(Qt::OtherFocusReason);
            else
                StoreByKey();
            return true;
        }
    }
    if (event->key() == Qt::Key_Delete && focusWidget() == m_form->EnterSerialList_GRD) {
        m_form->DelRow_BTN->click();
        return true;
    }
    return TDetailLine_FRM::FormKeyDown(event);
}

void TEnter_Serial_FRM::StoreByKey()
{
    Command(m_form->SaveRow_BTN->text(), [this] { SaveRow(); });
}

void TEnter_Serial_FRM::SaveRow()
{
    if (IsRange())
        StoreRange();
    else
        StoreRow();
}

/// Where a scan cannot be stored it is listed as left: while a row is edited, while a range is chosen, and behind a
/// barcode that waits for the rest of its row.
void TEnter_Serial_FRM::TakeScans(const QStringList &scans, const QString &begun)
{
    if (!isVisible())
        return;
    if (HasSerial() && !IsRange() && m_editedId == 0) {
        for (const QString &scan : scans) {
            Panel().Serial_EDT->setText(scan);
            Panel().Serial_EDT->setModified(true);
            StoreByKey();
        }
        GoOn(Panel().Serial_EDT, begun);
        return;
    }
    for (const QString &scan : begun.isEmpty() ? scans : scans + QStringList(begun))
        ShowLeft(scan);
}

Refused TEnter_Serial_FRM::CheckSerial()
{
    if (!HasSerial())
        return {};
    if (SerialTyped().isEmpty())
        return host::When(Inputs().Data(Inputs().SerialPlace()).IsRequired,
                          host::Required(Panel().Serial_EDT, u"سریال"_s));
    return goods::LeaveNow(Panel().Serial_EDT);
}

Refused TEnter_Serial_FRM::CheckBarcode()
{
    if (!HasBarcode())
        return {};
    const QString barcode = host::SerialText(Panel().Barcode_EDT->text());
    if (barcode.isEmpty())
        return host::When(Inputs().Data(Inputs().BarcodePlace()).IsRequired,
                          host::Required(Panel().Barcode_EDT, u"بارکد"_s));
    const DetailOwner owner = m_host.detailValues.BarcodeOwner(Line().GoodCode, barcode);
    if (owner == DetailOwner::OperationBarcode)
        return host::Warning(Panel().Barcode_EDT, texts::OperationBarcode);
    if (owner == DetailOwner::OtherGood)
        return host::Warning(Panel().Barcode_EDT, texts::BarcodeOfOtherDetails);
    return goods::LeaveNow(Panel().Barcode_EDT);
}

Refused TEnter_Serial_FRM::CheckDetails()
{
    if (const int invalid = Inputs().FirstInvalid(); invalid >= 0)
        return host::Warning(Inputs().Control(invalid), u"کاربر گرامی تاریخ وارد شده معتبر نمی باشد."_s);
    if (const int missing = Inputs().FirstMissing(); missing >= 0)
        return host::Required(Inputs().Control(missing), Inputs().Data(missing).Title);
    return AmountMissing();
}

Refused TEnter_Serial_FRM::CheckRow()
{
    for (const auto check :
         {&TEnter_Serial_FRM::CheckSerial, &TEnter_Serial_FRM::CheckBarcode, &TEnter_Serial_FRM::CheckDetails})
        if (Refused refused = (this->*check)())
            return refused;
    return {};
}

EnterRow TEnter_Serial_FRM::Typed()
{
    EnterRow row{Inputs().Values(), Amounts(), m_editedId};
    if (HasSerial() && !IsRange())
        row.Details.Values[static_cast<size_t>(Inputs().SerialPlace())] = SerialTyped();
    if (HasBarcode())
        row.Details.Values[static_cast<size_t>(Inputs().BarcodePlace())] =
            host::SerialText(Panel().Barcode_EDT->text());
    return row;
}

void TEnter_Serial_FRM::StoreRow()
{
    const QString serial = SerialTyped();
    std::optional<EnterRefusal> refused;
    try {
        if (const Refused fault = CheckRow()) {
            if (!serial.isEmpty())
                ShowLeft(serial);
            Tell(fault);
            return;
        }
        refused = m_rows->Store(Typed());
    } catch (...) {
        if (!serial.isEmpty())
            ShowLeft(serial);
        ShowRows(); // they were read again
        throw;
    }
    if (!refused) {
        NextRow(serial);
        return;
    }
    if (!serial.isEmpty() && !refused->InPlace)
        ShowLeft(serial);
    Told(*refused);
}

/// The fault's field is focused and selected: the next scan types over it. Of a serial that is in the list already
/// there is nothing left to be done.
void TEnter_Serial_FRM::Told(const EnterRefusal &refusal)
{
    QWidget *fault = refusal.Part ? static_cast<QWidget *>(AmountInputs().Edit(*refusal.Part)) : FirstControl();
    if (!refusal.InPlace) {
        Tell(host::Warning(fault, refusal.Text));
        return;
    }
    QApplication::beep();
    ShowStatus(SerialTyped() + u": "_s + refusal.Text);
    if (m_editedId == 0) {
        ForgetKnown();
        Panel().Serial_EDT->setText({});
    }
    Refuse(host::Refusal{fault, {}});
}

/// Serials that were refused stay in sight until they are stored or the input is given up: a clerk who scans looks at
/// the goods, not at the screen.
void TEnter_Serial_FRM::ShowLeft(const QString &serial)
{
    if (!m_left.contains(serial))
        m_left << serial;
    ShowStatus(u"ثبت نشده: "_s + Listed(m_left));
}

/// The row is stored; the next one begins with the details and amounts of a serial, without the amounts otherwise.
void TEnter_Serial_FRM::NextRow(const QString &stored)
{
    SetIsSaved(false);
    m_left.removeAll(stored);
    if (m_left.isEmpty())
        ShowStatus({});
    else
        ShowLeft(m_left.last());
    ForgetKnown();
    const int edited = m_editedId;
    EndEditing();
    Panel().Serial_EDT->setText({});
    Panel().Barcode_EDT->setText({});
    if (edited != 0)
        GoBack();
    else if (!HasSerial())
        ClearAmounts();
    ShowRows(edited == 0 && !stored.isEmpty());
    if (edited == 0 || !m_form->EnterSerialList_GRD->Locate(QString::number(edited)))
        StandOnLast();
    FirstControl()->setFocus(Qt::OtherFocusReason);
}

namespace good_detail {

std::optional<DetailLineResult> OpenEnter(host::Host &host, const DetailLineOpening &opening)
{
    TEnter_Serial_FRM screen(host);
    screen.SetKeyboardLayoutName(host.keyboard.GetKeyboardLayoutName());
    if (screen.OpenLine(opening) != QDialog::Accepted)
        return std::nullopt;
    return screen.Result();
}

} // namespace good_detail
