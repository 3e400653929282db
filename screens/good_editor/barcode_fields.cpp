#include "screens/good_editor/barcode_fields.h"

#include "screens/good_editor/barcode_edit.h"
#include "screens/good_editor/leave_watch.h"

namespace {

QString CompletionHelp()
{
    // Lines end as this message always had them: line feed, carriage return.
    const QString end = QStringLiteral("\n\r");
    return QStringLiteral("در صورت 7 و یا 12 رقمی بودن عدد وارد شده ، بارکد بر اساس استانداردهای") + end +
           QStringLiteral("EAN8 و EAN13") + end + QStringLiteral("کامل می شوند") + end + end +
           QStringLiteral("برای چاپ بارکد کالا می توانید از دکمه ارسال به چاپ بارکد در لیست کالاها عمل کنید");
}

} // namespace

BarcodeFields::BarcodeFields(const Edits &edits, QWidget *panel, host::Host &host, TGood_DM &data,
                             goods::RuleRunner run, QObject *parent)
    : QObject(parent), edits_(edits), panel_(panel), host_(host), data_(data), run_(std::move(run))
{
    for (BarcodeEdit *edit : edits_) {
        goods::OnEnter(edit, [this] { SwitchKeyboard(host::KeyboardService::English); });
        goods::OnLeave(edit, goods::RuleTime::AtOnce, [this] { SwitchKeyboard(host::KeyboardService::Persian); });
        goods::OnChanged(edit, goods::RuleTime::Afterwards, run_, [this, edit] { return CheckLeft(edit); });
        connect(edit, &BarcodeEdit::Entered, this, [this, edit](bool &accepted) { accepted = CheckEntered(edit); });
        connect(edit, &BarcodeEdit::CompletionRequested, this,
                [this, edit] { run_([this, edit] { return Complete(edit); }); });
    }
    // The mark between stored barcodes can stand in the last one only.
    edits_.back()->SetTakesMark(true);
    connect(edits_[0], &QLineEdit::textEdited, panel_, &QWidget::show);
}

void BarcodeFields::Clear()
{
    for (BarcodeEdit *edit : edits_)
        edit->SetStored({});
    stored_.reset();
    passed_.clear();
    panel_->show();
}

void BarcodeFields::Show(const QString &text)
{
    const goods::Barcodes barcodes = goods::UnpackBarcodes(text);
    for (size_t i = 0; i < edits_.size(); ++i) {
        edits_[i]->SetStored(barcodes[i]);
        passed_[edits_[i]] = barcodes[i];
    }
    stored_ = text;
    panel_->setVisible(barcodes != goods::Barcodes());
}

QString BarcodeFields::Text() const
{
    goods::Barcodes barcodes;
    for (size_t i = 0; i < edits_.size(); ++i)
        barcodes[i] = edits_[i]->Barcode();
    // Others write the same barcodes with fewer marks.
    if (stored_ && goods::UnpackBarcodes(*stored_) == barcodes)
        return *stored_;
    return goods::PackBarcodes(barcodes, panel_->isHidden());
}

goods::Refused BarcodeFields::CheckOperation(BarcodeEdit *edit) const
{
    if (!data_.BarcodeUsedInSetting(edit->Barcode()))
        return {};
    return host::Refusal{edit, [](host::MessageService &messages) {
                             messages.MsgHasSubRecordsAnother(QStringLiteral("بارکد"),
                                                              QStringLiteral("بارکدهای عملیاتی"));
                         }};
}

goods::Refused BarcodeFields::CheckReserved() const
{
    for (BarcodeEdit *edit : edits_)
        if (goods::Refused refused = CheckOperation(edit))
            return refused;
    return {};
}

bool BarcodeFields::CheckEntered(BarcodeEdit *edit)
{
    bool accepted = false;
    run_([this, edit, &accepted] {
        goods::Refused refused = goods::LeaveNow(edit);
        accepted = !refused;
        return refused;
    });
    return accepted;
}

goods::Refused BarcodeFields::CheckTyped()
{
    for (BarcodeEdit *edit : edits_)
        if (edit->Barcode() != passed_.value(edit))
            if (goods::Refused refused = CheckLeft(edit))
                return refused;
    return {};
}

goods::Refused BarcodeFields::CheckLeft(BarcodeEdit *edit)
{
    edit->ShowCleaned();
    if (goods::Refused refused = CheckOperation(edit))
        return refused;
    if (edit->text() != passed_.value(edit))
        if (goods::Refused refused = CheckUnique(edit))
            return refused;
    passed_[edit] = edit->text();
    return {};
}

goods::Refused BarcodeFields::CheckUnique(BarcodeEdit *edit) const
{
    const QString barcode = edit->text();
    if (barcode.isEmpty())
        return {};
    const auto repeated = [edit](const QString &owner) {
        return host::Refusal{edit, [owner](host::MessageService &messages) {
                                 messages.MsgRepeatedField(QStringLiteral(" نام اختصاری/بارکد"), owner);
                             }};
    };
    if (data_.Good_ExistBarCode(good_, barcode))
        return repeated(QStringLiteral("کالا"));
    if (host_.goodDetails.CheckBarcodeInGoodDetail(barcode))
        return repeated(QStringLiteral("برای جزییات کالا تعریف شده و"));
    return {};
}

void BarcodeFields::GiveKeyboardBack()
{
    for (const BarcodeEdit *edit : edits_)
        if (edit->window()->focusWidget() == edit)
            SwitchKeyboard(host::KeyboardService::Persian);
}

void BarcodeFields::SwitchKeyboard(const char16_t *layout)
{
    if (host_.settings.SettingRecord().AutoKeyboard)
        host_.keyboard.LoadKeyboardLayout(QString::fromUtf16(layout));
}

goods::Refused BarcodeFields::Complete(BarcodeEdit *edit)
{
    if (edit->isReadOnly())
        return {};
    edit->ShowCleaned();
    const qsizetype digits = edit->text().size();
    if (digits != 7 && digits != 12) {
        host_.messages.ShowMessage(CompletionHelp(), host::MessageIcon::Information, QStringLiteral("پیغام"));
        return {};
    }
    if (!host_.barcodes.LibraryFound()) {
        host_.messages.ShowMessage(QStringLiteral("فايل کتابخانه بارکد وجود ندارد"), host::MessageIcon::Warning);
        return {};
    }
    if (!host_.barcodes.CompletionFound()) {
        host_.messages.ShowMessage(QStringLiteral("تابع تعريف شده در داخل کتابخانه بارکد وجود ندارد"),
                                   host::MessageIcon::Warning);
        return {};
    }
    const QString barcode = host_.barcodes.Complete_Barcode(edit->text());
    if (barcode.isEmpty())
        return {};
    edit->setText(barcode);
    edit->setModified(true);
    emit Completed(edit);
    return {};
}
