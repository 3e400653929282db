#include "screens/good_editor/complete_page.h"

#include "host/controls/text_limit.h"
#include "screens/good_editor/barcode_edit.h"
#include "screens/good_editor/leave_watch.h"
#include "screens/good_editor/percent_rule.h"
#include "ui_complete_page.h"

namespace {

/// The asset class "none".
constexpr int NoGoodType = 0;
/// The widths of place and remark in the goods table.
constexpr int PositionLength = 100;
constexpr int CommentLength = 500;

} // namespace

CompletePage::CompletePage(host::Host &host, TGood_DM &data, const goods::RuleRunner &run, QWidget *parent)
    : QWidget(parent), host_(host), data_(data), ui_(std::make_unique<Ui::CompletePage>())
{
    ui_->setupUi(this);
    ui_->Position_EDT->setMaxLength(PositionLength);
    host::LimitLength(*ui_->Comment_EDT, CommentLength);
    // The discount percent of a good is kept for old documents only.
    ui_->OffPercent_EDT->hide();
    ui_->OffPercent_LBL->hide();
    goods::OnChanged(ui_->Pos_EDT, goods::RuleTime::Afterwards, run, [this] { return LeavePos(); });
    goods::OnChanged(ui_->OffPercent_EDT, goods::RuleTime::Afterwards, run, [this] { return LeaveOffPercent(); });
    const auto keyboard = [this](const char16_t *layout) {
        return [this, layout] { host_.keyboard.LoadKeyboardLayout(QString::fromUtf16(layout)); };
    };
    goods::OnEnter(ui_->SmsCode_EDT, keyboard(host::KeyboardService::English));
    goods::OnLeave(ui_->SmsCode_EDT, goods::RuleTime::AtOnce, keyboard(host::KeyboardService::Persian));
    connect(ui_->Tag_editor, &host::TagsPanel::Changed, this, &CompletePage::Changed);
}

CompletePage::~CompletePage() = default;

BarcodeFields::Edits CompletePage::BarcodeEdits(BarcodeEdit *first) const
{
    return {first, ui_->BarCode2_EDT, ui_->BarCode3_EDT, ui_->BarCode4_EDT, ui_->BarCode5_EDT, ui_->BarCode6_EDT};
}

QWidget *CompletePage::BarcodesPanel() const
{
    return ui_->BarCodes_PNL;
}

void CompletePage::FillLists()
{
    ui_->DaraiGoodType_CMB->clear();
    for (const host::Entity &type : host_.finance.Fill_FinanceGoodTypes())
        ui_->DaraiGoodType_CMB->addItem(type.Name, type.Code);
    if (ui_->DaraiGoodType_CMB->findData(NoGoodType) < 0)
        ui_->DaraiGoodType_CMB->insertItem(0, QStringLiteral("هيچکدام"), NoGoodType);
    FillTags();
}

void CompletePage::FillTags()
{
    data_.GetAllTagsWithColor();
    const host::Dataset &rows = data_.Tags_qry;
    QList<host::Tag> tags;
    for (int row = 0; row < rows.RecordCount(); ++row) {
        // The image of a colour is one pixel of it.
        const QImage image = QImage::fromData(rows.FieldAt(row, u"image").toByteArray());
        tags.append({rows.FieldAt(row, u"ID").toInt(), rows.FieldAt(row, u"Name").toString(),
                     image.isNull() ? QColor() : image.pixelColor(image.rect().center())});
    }
    ui_->Tag_editor->SetAvailable(tags);
}

void CompletePage::GiveKeyboardBack()
{
    if (window()->focusWidget() == ui_->SmsCode_EDT)
        host_.keyboard.LoadKeyboardLayout(QString::fromUtf16(host::KeyboardService::Persian));
}

void CompletePage::Clear()
{
    Show(TGoodInfoRec());
    pos_ = ui_->Pos_EDT->text();
}

void CompletePage::Show(const TGoodInfoRec &rec)
{
    ui_->Weight_EDT->SetNumber(rec.Weight);
    ui_->Length_EDT->SetNumber(rec.Length);
    ui_->Width_EDT->SetNumber(rec.Width);
    ui_->Heigth_EDT->SetNumber(rec.Height);
    pos_ = rec.Pos;
    ui_->Pos_EDT->setText(ShownPos());
    ui_->OffPercent_EDT->SetNumber(rec.OffPercent);
    ui_->SmsCode_EDT->setText(rec.SMSCode);
    ui_->Position_EDT->setText(rec.Position);
    ui_->DetailUniqueCode_EDT->setText(rec.DetailUniqueCode);
    ui_->DaraiGoodType_CMB->setCurrentIndex(ui_->DaraiGoodType_CMB->findData(rec.DaraiGoodType));
    ui_->Tag_editor->ShowStored(rec.tags);
    ui_->Comment_EDT->setPlainText(rec.Comment);
}

void CompletePage::Store(TGoodInfoRec &rec) const
{
    rec.Weight = ui_->Weight_EDT->Number();
    rec.Length = ui_->Length_EDT->Number();
    rec.Width = ui_->Width_EDT->Number();
    rec.Height = ui_->Heigth_EDT->Number();
    rec.Pos = ui_->Pos_EDT->text() == ShownPos() ? pos_ : ui_->Pos_EDT->text();
    rec.OffPercent = ui_->OffPercent_EDT->Number();
    rec.SMSCode = ui_->SmsCode_EDT->text();
    rec.Position = ui_->Position_EDT->text();
    rec.DetailUniqueCode = ui_->DetailUniqueCode_EDT->text();
    // A class that the list does not offer stays.
    if (ui_->DaraiGoodType_CMB->currentIndex() >= 0)
        rec.DaraiGoodType = static_cast<qint16>(ui_->DaraiGoodType_CMB->currentData().toInt());
    rec.tags = ui_->Tag_editor->CodesText();
    // The edit knows one kind of line end; a remark keeps its own.
    const bool carriageReturns = rec.Comment.contains(QStringLiteral("\r\n"));
    rec.Comment = ui_->Comment_EDT->toPlainText();
    if (carriageReturns)
        rec.Comment.replace(u'\n', QStringLiteral("\r\n"));
}

QString CompletePage::ShownPos() const
{
    return pos_.isEmpty() ? QStringLiteral("0") : pos_;
}

goods::Refused CompletePage::LeavePos()
{
    ui_->Pos_EDT->ZeroWhenEmpty();
    return goods::LimitPercent(ui_->Pos_EDT);
}

goods::Refused CompletePage::LeaveOffPercent()
{
    return goods::LimitPercent(ui_->OffPercent_EDT);
}

goods::Refused CompletePage::LeaveFocused()
{
    for (host::NumericEdit *edit : {ui_->Pos_EDT, ui_->OffPercent_EDT})
        if (edit->hasFocus())
            return goods::LeaveNow(edit);
    return {};
}

goods::Refused CompletePage::CheckSmsCode(int code) const
{
    const QString caption = QStringLiteral("کد پيامکي");
    if (ui_->SmsCode_EDT->IsEmpty())
        return goods::RequiredField(ui_->SmsCode_EDT, caption);
    if (!data_.Good_IsExistSMSCode(code, ui_->SmsCode_EDT->text()))
        return {};
    return host::Refusal{ui_->SmsCode_EDT,
                         [caption](host::MessageService &messages) { messages.MsgRepeatedCode(caption); }};
}

goods::Refused CompletePage::CheckSizes() const
{
    for (const auto &[edit, caption] :
         {std::pair(ui_->Weight_EDT, QStringLiteral("وزن")), std::pair(ui_->Length_EDT, QStringLiteral("طول")),
          std::pair(ui_->Width_EDT, QStringLiteral("عرض")), std::pair(ui_->Heigth_EDT, QStringLiteral("ارتفاع"))})
        if (edit->IsEmpty())
            return goods::RequiredField(edit, caption);
    return {};
}

goods::Refused CompletePage::CheckUniqueCode(int code) const
{
    const QString uniqueCode = ui_->DetailUniqueCode_EDT->text();
    if (uniqueCode.isEmpty() || data_.Good_ExistDetailUniqueCode(code, uniqueCode) == 0)
        return {};
    return host::Refusal{ui_->DetailUniqueCode_EDT, [](host::MessageService &messages) {
                             messages.MsgRepeatedField(QStringLiteral("کد تفصیلی یکتا"), QStringLiteral("کالا"));
                         }};
}

void CompletePage::SetReadOnly(bool readOnly)
{
    ui_->Tag_editor->setReadOnly(readOnly);
}
