#include "screens/good_editor/barcode_fields.h"

#include "screens/good_editor/barcode_edit.h"
#include "screens/shared/leave_watch.h"

using namespace Qt::StringLiterals;

namespace {

QString CompletionHelp()
{
    // Lines end as this message always had them: line feed, carriage return.
    const QString end = u"\n\r"_s;
    return u"در صورت 7 و یا 12 رقمی بودن عدد وارد شده ، بارکد بر اساس استانداردهای"_s + end + u"EAN8 و EAN13"_s + end +
           u"کامل می شوند"_s + end + end +
           u"برای چاپ بارکد کالا می توانید از دکمه ارسال به چاپ بارکد در لیست کالاها عمل کنید"_s;
}

} // namespace

BarcodeFields::BarcodeFields(const Edits &edits, QWidget *panel, host::Host &host, TGood_DM &data, host::RuleRunner run,
                             QObject *parent)
    : QObject(parent), m_edits(edits), m_panel(panel), m_host(host), m_data(data), m_run(std::move(run))
{
    for (BarcodeEdit *edit : m_edits) {
        goods::OnEnter(edit, [this] { SwitchKeyboard(host::KeyboardService::English); });
        goods::OnLeave(edit, goods::RuleTime::AtOnce, [this] { SwitchKeyboard(host::KeyboardService::Persian); });
        goods::OnChanged(edit, goods::RuleTime::Afterwards, m_run, [this, edit] { return CheckLeft(edit); });
        connect(edit, &BarcodeEdit::Entered, this, [this, edit](bool &accepted) { accepted = CheckEntered(edit); });
        connect(edit, &BarcodeEdit::CompletionRequested, this,
                [this, edit] { m_run([this, edit] { return Complete(edit); }); });
    }
    // The mark between stored barcodes can stand in the last one only.
    m_edits.back()->SetTakesMark(true);
    connect(m_edits[0], &QLineEdit::textEdited, m_panel, &QWidget::show);
}

void BarcodeFields::Clear()
{
    for (BarcodeEdit *edit : m_edits)
        edit->SetStored({});
    m_stored.reset();
    m_passed.clear();
    m_panel->show();
}

void BarcodeFields::Show(const QString &text)
{
    const goods::Barcodes barcodes = goods::UnpackBarcodes(text);
    for (size_t i = 0; i < m_edits.size(); ++i) {
        m_edits[i]->SetStored(barcodes[i]);
        m_passed[m_edits[i]] = barcodes[i];
    }
    m_stored = text;
    m_panel->setVisible(barcodes != goods::Barcodes());
}

QString BarcodeFields::Text() const
{
    goods::Barcodes barcodes;
    for (size_t i = 0; i < m_edits.size(); ++i)
        barcodes[i] = m_edits[i]->Barcode();
    // Others write the same barcodes with fewer marks.
    if (m_stored && goods::UnpackBarcodes(*m_stored) == barcodes)
        return *m_stored;
    return goods::PackBarcodes(barcodes, m_panel->isHidden());
}

host::Refused BarcodeFields::CheckOperation(BarcodeEdit *edit) const
{
    if (!m_data.BarcodeUsedInSetting(edit->Barcode()))
        return {};
    return host::Refusal{edit, [](host::MessageService &messages) {
                             messages.MsgHasSubRecordsAnother(u"بارکد"_s, u"بارکدهای عملیاتی"_s);
                         }};
}

host::Refused BarcodeFields::CheckReserved() const
{
    for (BarcodeEdit *edit : m_edits)
        if (host::Refused refused = CheckOperation(edit))
            return refused;
    return {};
}

bool BarcodeFields::CheckEntered(BarcodeEdit *edit)
{
    bool accepted = false;
    m_run([this, edit, &accepted] {
        host::Refused refused = goods::LeaveNow(edit);
        accepted = !refused;
        return refused;
    });
    return accepted;
}

host::Refused BarcodeFields::CheckTyped()
{
    for (BarcodeEdit *edit : m_edits)
        if (edit->Barcode() != m_passed.value(edit))
            if (host::Refused refused = CheckLeft(edit))
                return refused;
    return {};
}

host::Refused BarcodeFields::CheckLeft(BarcodeEdit *edit)
{
    edit->ShowCleaned();
    if (host::Refused refused = CheckOperation(edit))
        return refused;
    if (edit->text() != m_passed.value(edit))
        if (host::Refused refused = CheckUnique(edit))
            return refused;
    m_passed[edit] = edit->text();
    return {};
}

host::Refused BarcodeFields::CheckUnique(BarcodeEdit *edit) const
{
    const QString barcode = edit->text();
    if (barcode.isEmpty())
        return {};
    const auto repeated = [edit](const QString &owner) { return host::Repeated(edit, u" نام اختصاری/بارکد"_s, owner); };
    if (m_data.Good_ExistBarCode(m_good, barcode))
        return repeated(u"کالا"_s);
    if (m_host.goodDetails.CheckBarcodeInGoodDetail(barcode))
        return repeated(u"برای جزییات کالا تعریف شده و"_s);
    return {};
}

void BarcodeFields::GiveKeyboardBack()
{
    for (const BarcodeEdit *edit : m_edits)
        if (edit->window()->focusWidget() == edit)
            SwitchKeyboard(host::KeyboardService::Persian);
}

void BarcodeFields::SwitchKeyboard(const char16_t *layout)
{
    if (m_host.settings.SettingRecord().AutoKeyboard)
        m_host.keyboard.LoadKeyboardLayout(QString::fromUtf16(layout));
}

host::Refused BarcodeFields::Complete(BarcodeEdit *edit)
{
    if (edit->isReadOnly())
        return {};
    edit->ShowCleaned();
    const qsizetype digits = edit->text().size();
    if (digits != 7 && digits != 12) {
        m_host.messages.ShowMessage(CompletionHelp(), host::MessageIcon::Information, u"پیغام"_s);
        return {};
    }
    if (!m_host.barcodes.LibraryFound()) {
        m_host.messages.ShowMessage(u"فايل کتابخانه بارکد وجود ندارد"_s, host::MessageIcon::Warning);
        return {};
    }
    if (!m_host.barcodes.CompletionFound()) {
        m_host.messages.ShowMessage(u"تابع تعريف شده در داخل کتابخانه بارکد وجود ندارد"_s, host::MessageIcon::Warning);
        return {};
    }
    const QString barcode = m_host.barcodes.Complete_Barcode(edit->text());
    if (barcode.isEmpty())
        return {};
    edit->setText(barcode);
    edit->setModified(true);
    emit Completed(edit);
    return {};
}
