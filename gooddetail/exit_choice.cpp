#include "gooddetail/enter_texts.h"
#include "gooddetail/exit_serial.h"
#include "gooddetail/typed_inputs.h"
#include "host/controls/grid.h"
#include "host/controls/number_text.h"
#include "host/controls/numeric_edit.h"
#include "rules/unit_arithmetic.h"
#include "ui_detail_line_panel.h"
#include "ui_exit_serial.h"

#include <QApplication>
#include <QLabel>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

using good_detail::AmountPart;
namespace texts = good_detail::texts;

// What goes out on the exit screen: scanned, chosen, as a range, taken back.

namespace {

const QString MoreAmount = u"کاربر گرامی مقدار وارد شده بیشتر از مقدار موجود می باشد."_s;
const QString MoreAmount2 = u"کاربر گرامی مقدار2 وارد شده بیشتر از مقدار2 موجود می باشد."_s;
const QString MoreLength = u"کاربر گرامی مقدار طول وارد شده بیشتر از مقدار طول موجود می باشد."_s;
const QString MoreWidth = u"کاربر گرامی مقدار عرض وارد شده بیشتر از مقدار عرض موجود می باشد."_s;
const QString MoreCount = u"کاربر گرامی تعداد وارد شده بیشتر از تعداد موجود می باشد."_s;
const QString TakingRange = u"سیستم در حال ثبت محدوده سریال های وارد شده می باشد"_s;

const QString NotOut = u"خارج نشده: "_s;

/// A serial in a sentence, whichever way it reads.
QString Quoted(const QString &serial)
{
    return u"«\u2068%1\u2069»"_s.arg(serial);
}

QString AmountOf(const QString &serial)
{
    return u"مقدار سریال %1 را وارد کنید"_s.arg(Quoted(serial));
}

QString Number(qint64 number)
{
    return host::DisplayNumber(QString::number(number));
}

} // namespace

/// Already chosen counts as gone out: scanned twice, nothing is left to be done.
TExit_Serial_FRM::Scanned TExit_Serial_FRM::Scan(QLineEdit *edit, const QString &typed)
{
    const QString serial = host::SerialText(typed);
    const host::TAmounts amounts = Amounts();
    const bool amountsTyped = HasAmounts(false);
    const int id = m_host.detailMovements.ExitGoodDetails_FindRow(Line(), serial);
    const auto row = id == 0 ? std::nullopt : m_data.ExitGoodDetail_Row(id);
    if (!row || row->Selected) {
        if (m_narrow.isActive())
            Narrow();
        Say(row ? u"سریال %1 پیش از این انتخاب شده است"_s.arg(Quoted(serial)) : WhyNot(serial), true);
        QApplication::beep();
        edit->selectAll();
        return row ? Scanned::Out : Scanned::Left;
    }
    if (!amountsTyped && !m_host.settings.SettingRecord().TakeOnlyDetail) {
        ForgetDetails(); // the row may have others than were looked for
        Narrow();
        Say(AmountOf(serial));
        Panel().Amount1_EDT->setFocus(Qt::OtherFocusReason);
        return Scanned::Asks;
    }
    if ((amountsTyped && Tell(AmountMissing())) || !Choose(*row, amountsTyped ? amounts : row->OnHand))
        return Scanned::Left;
    Say(u"سریال %1 خارج شد"_s.arg(Quoted(serial)));
    ClearTyped();
    Renew();
    edit->setFocus(Qt::OtherFocusReason);
    return Scanned::Out;
}

bool TExit_Serial_FRM::TakeScan(QLineEdit *edit)
{
    const QString serial = host::SerialText(edit->text());
    Scanned scanned = Scanned::Left;
    Command(Title(), [&] { scanned = Scan(edit, edit->text()); });
    if (scanned == Scanned::Left && !m_left.contains(serial))
        m_left << serial;
    return scanned != Scanned::Asks;
}

/// Serials that did not go out stay in sight until they do or the input is given up: a clerk who scans looks at the
/// goods, not at the screen.
void TExit_Serial_FRM::Say(const QString &text, bool fault)
{
    ShowStatus(m_left.isEmpty() ? text : text + u"    "_s + NotOut + Listed(m_left), fault || !m_left.isEmpty());
}

/// What cannot go out now is named, so that it is not lost.
void TExit_Serial_FRM::TakeScans(const QStringList &scans, const QString &begun)
{
    if (!isVisible())
        return;
    QLineEdit *edit = HasSerial() ? static_cast<QLineEdit *>(Panel().Serial_EDT) : Panel().Barcode_EDT;
    if (!MayChoose() || IsRange() || m_edited || !m_ui->SingleSerial_RD->isChecked() ||
        !(HasSerial() || HasBarcode())) {
        m_left << (begun.isEmpty() ? scans : scans + QStringList(begun));
        ShowStatus(NotOut + Listed(m_left));
        return;
    }
    for (qsizetype at = 0; at < scans.size(); ++at) {
        edit->setText(scans[at]);
        if (TakeScan(edit))
            continue;
        m_left << (scans + QStringList(begun)).sliced(at + 1); // the amount of this one comes first
        m_left.removeAll(QString());
        Say(AmountOf(scans[at]));
        return;
    }
    if (!m_left.isEmpty())
        ShowStatus(NotOut + Listed(m_left));
    GoOn(edit, begun);
}

QString TExit_Serial_FRM::WhyNot(const QString &serial)
{
    const int good = Line().GoodCode;
    QString why = u"سریال %1 برای این کالا ثبت نشده است"_s;
    if (const auto known = m_host.detailValues.FindByText(good, serial))
        why = known->OnHand > 0 ? u"سریال %1 در این انبار نیست"_s : u"سریال %1 موجودی ندارد"_s;
    else if (m_host.detailValues.SerialOwner(good, serial) == host::DetailOwner::OtherGood)
        why = u"سریال %1 برای کالای دیگری ثبت شده است"_s;
    return why.arg(Quoted(serial));
}

host::Refused TExit_Serial_FRM::MoreThanOnHand(const host::TAmounts &typed, const host::TAmounts &onHand) const
{
    const bool packed = UnitTypeNow() == good_detail::Packed;
    struct Rule
    {
        AmountPart part;
        host::Quantity typed;
        host::Quantity onHand;
        const QString &text;
    };
    const Rule pieces{AmountPart::Amount3, packed ? 0 : typed.Amount3, onHand.Amount3, MoreCount};
    const Rule second{AmountPart::Amount2, typed.Amount2, onHand.Amount2, packed ? MoreCount : MoreAmount2};
    for (const Rule &rule : {Rule{AmountPart::Amount1, typed.Amount1, onHand.Amount1, MoreAmount}, second,
                             Rule{AmountPart::Length, typed.Length, onHand.Length, MoreLength},
                             Rule{AmountPart::Width, typed.Width, onHand.Width, MoreWidth}, pieces})
        if (rule.typed > rule.onHand && !goods::SameQuantity(rule.typed, rule.onHand))
            return host::Warning(AmountInputs().Edit(rule.part), rule.text);
    return {};
}

bool TExit_Serial_FRM::Choose(const TExitGoodDetail_Rec &row, const host::TAmounts &amounts)
{
    if (Tell(MoreThanOnHand(amounts, row.OnHand)))
        return false;
    m_data.ExitGoodDetailRow_Update(row.ID, amounts, Line().ForeignOperationCode);
    m_left.removeAll(row.DetailTitle.front());
    NotSaved();
    return true;
}

void TExit_Serial_FRM::SaveRow()
{
    const bool range = IsRange() && m_ui->TabSearch_FRAME->currentIndex() == 0;
    if (m_narrow.isActive() && !range)
        Narrow();
    if (range) {
        ChooseRange();
        return;
    }
    const auto row = CurrentRow() == 0 ? std::nullopt : m_data.ExitGoodDetail_Row(CurrentRow());
    if (!row) {
        // Measures are looked for exactly: one that is too great leaves no row, and the last one says why.
        const auto last = m_last == 0 ? std::nullopt : m_data.ExitGoodDetail_Row(m_last);
        if (!last || !Tell(MoreThanOnHand(Amounts(), last->OnHand)))
            ShowStatus(u"سطری برای انتخاب در لیست نیست"_s);
        return;
    }
    if (Tell(AmountMissing()) || !Choose(*row, Amounts()))
        return;
    Say(u"انتخاب شد"_s);
    const int read = m_data.ExitGoodDetail_QRY.RecordCount();
    ClearTyped();
    Renew();
    // Back to the row, as far as the list was read before: what was typed may have found it at the end of a long one.
    host::Dataset &rows = m_data.ExitGoodDetail_QRY;
    while (rows.RecordCount() < read && rows.canFetchMore({}))
        rows.fetchMore({});
    if (const QString key = QString::number(row->ID); IsFetched(key))
        m_ui->ExitSerialList_GRD->Locate(key);
    FocusControl(FirstControl());
}

void TExit_Serial_FRM::ChooseRange()
{
    Ui::DetailLinePanel &panel = Panel();
    const auto range = host::SerialRange(panel.SerialFrom_EDT->text(), panel.SerialTo_EDT->text());
    if (Tell(host::When(!range, host::Warning(panel.SerialFrom_EDT, texts::RangeNoNumbers))) ||
        Tell(host::When(range->IsTooLong(), host::Warning(panel.SerialTo_EDT, texts::RangeTooLong))))
        return;
    if (range->IsEmpty() || range->To <= 0) {
        ShowStatus(texts::RangeEmpty);
        FocusControl(panel.SerialFrom_EDT);
        return;
    }
    if (Tell(AmountMissing()))
        return;
    m_narrow.stop();
    ShowStatus(TakingRange, false);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const auto restore = qScopeGuard(&QGuiApplication::restoreOverrideCursor);
    findChild<QLabel *>(u"Status_LBL"_s)->repaint();
    int taken = 0;
    try {
        taken = m_host.serialBatches.ChooseSerials(Line(), *range, Amounts()).value_or(0);
    } catch (...) {
        ShowStatus({});
        throw;
    }
    const qint64 left = static_cast<qint64>(range->Distance()) + 1 - taken;
    QString said = u"%1 سریال انتخاب شد"_s.arg(Number(taken));
    if (left > 0)
        said += u"، %1 شماره موجود نیست یا مقدار کافی ندارد"_s.arg(Number(left));
    if (taken > 0) {
        NotSaved();
        ClearTyped();
    }
    Renew();
    ShowStatus(said, taken == 0);
    FocusControl(panel.SerialFrom_EDT);
}

void TExit_Serial_FRM::EditRow()
{
    const auto row = CurrentRow() == 0 ? std::nullopt : m_data.ExitGoodDetail_Row(CurrentRow());
    if (!row)
        return;
    {
        const QScopedValueRollback filling(m_filling, true);
        Ui::DetailLinePanel &panel = Panel();
        host::TDetailValues values{Inputs().DetailIDs(), row->DetailTitle};
        Inputs().SetValues(values);
        panel.Serial_RD->setChecked(true);
        if (HasSerial())
            panel.Serial_EDT->setText(values.Values[static_cast<size_t>(Inputs().SerialPlace())]);
        if (HasBarcode())
            panel.Barcode_EDT->setText(values.Values[static_cast<size_t>(Inputs().BarcodePlace())]);
        ShowAmounts(row->Selected ? row->Exit : row->OnHand);
        m_takenOver = false;
        m_edited = true;
    }
    Reload(row->ID);
    FocusControl(Panel().Amount1_EDT);
}

void TExit_Serial_FRM::DeleteRow()
{
    const int id = CurrentRow();
    const auto row = id == 0 ? std::nullopt : m_data.ExitGoodDetail_Row(id);
    if (!row || !row->Selected) {
        ShowStatus(u"این سطر انتخاب نشده است"_s);
        return;
    }
    if (!m_host.messages.MsgDeleteRow())
        return;
    m_data.ExitGoodDetailRow_Update(id, {}, Line().ForeignOperationCode);
    NotSaved();
    ShowStatus({});
    Reload(id);
}

void TExit_Serial_FRM::DeleteAll()
{
    if (!m_host.messages.MsgDeleteItem(texts::AllRows))
        return;
    m_data.ExitGoodDetail_DeleteAll(Line());
    NotSaved();
    ShowStatus({});
    Renew();
}

void TExit_Serial_FRM::Cancel()
{
    m_left.clear();
    ShowStatus({});
    ClearTyped();
    ForgetDetails();
    Narrow();
    FocusControl(FirstControl());
}

void TExit_Serial_FRM::ForgetDetails()
{
    const QScopedValueRollback filling(m_filling, true);
    Inputs().Clear();
    m_edited = false;
}

/// The serials and the amounts; what the user looks for in the other details stays for the next one.
void TExit_Serial_FRM::ClearTyped()
{
    if (m_edited)
        ForgetDetails();
    const QScopedValueRollback filling(m_filling, true);
    m_takenOver = false;
    ClearAmounts();
    Panel().Serial_EDT->setText({});
    Panel().SerialFrom_EDT->setText(u"0"_s);
    Panel().SerialTo_EDT->setText(u"0"_s);
    Panel().Barcode_EDT->setText({});
}

void TExit_Serial_FRM::NotSaved()
{
    m_chosen = true;
    SetIsSaved(false);
}

/// An amount that was typed but not chosen would be lost.
host::Refused TExit_Serial_FRM::AmountsLeftOver()
{
    if (!HasAmounts(false))
        return {};
    ShowStatus(u"مقدار وارد شده هنوز ثبت نشده است"_s);
    return host::ToldAlready(Panel().Amount1_EDT);
}

std::vector<host::Check> TExit_Serial_FRM::Validate()
{
    return {{u"AmountsLeftOver"_s, [this] { return AmountsLeftOver(); }}};
}

void TExit_Serial_FRM::Write()
{
    ShowTotals(m_data.ExitGoodDetail_Sum(Line()));
    m_host.detailMovements.ExitGoodDetails_Keep(Line());
}
