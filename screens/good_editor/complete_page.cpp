#include "screens/good_editor/complete_page.h"

#include "host/controls/text_limit.h"
#include "screens/good_editor/barcode_edit.h"
#include "screens/good_editor/percent_rule.h"
#include "screens/shared/leave_watch.h"
#include "screens/shared/tag_rows.h"
#include "ui_complete_page.h"

using namespace Qt::StringLiterals;

namespace {

/// The asset class "none".
constexpr int NoGoodType = 0;
/// The widths of place and remark in the goods table.
constexpr int PositionLength = 100;
constexpr int CommentLength = 500;

} // namespace

CompletePage::CompletePage(host::Host &host, TGood_DM &data, const host::RuleRunner &run, QWidget *parent)
    : QWidget(parent), m_host(host), m_data(data), m_ui(std::make_unique<Ui::CompletePage>())
{
    m_ui->setupUi(this);
    m_ui->Position_EDT->setMaxLength(PositionLength);
    host::LimitLength(*m_ui->Comment_EDT, CommentLength);
    // The discount percent of a good is kept for old documents only.
    m_ui->OffPercent_EDT->hide();
    m_ui->OffPercent_LBL->hide();
    goods::OnChanged(m_ui->Pos_EDT, goods::RuleTime::Afterwards, run, [this] { return LeavePos(); });
    goods::OnChanged(m_ui->OffPercent_EDT, goods::RuleTime::Afterwards, run, [this] { return LeaveOffPercent(); });
    const auto keyboard = [this](const char16_t *layout) {
        return [this, layout] { m_host.keyboard.LoadKeyboardLayout(QString::fromUtf16(layout)); };
    };
    goods::OnEnter(m_ui->SmsCode_EDT, keyboard(host::KeyboardService::English));
    goods::OnLeave(m_ui->SmsCode_EDT, goods::RuleTime::AtOnce, keyboard(host::KeyboardService::Persian));
    connect(m_ui->Tag_editor, &host::TagsPanel::Changed, this, &CompletePage::Changed);
}

CompletePage::~CompletePage() = default;

BarcodeFields::Edits CompletePage::BarcodeEdits(BarcodeEdit *first) const
{
    return {first, m_ui->BarCode2_EDT, m_ui->BarCode3_EDT, m_ui->BarCode4_EDT, m_ui->BarCode5_EDT, m_ui->BarCode6_EDT};
}

QWidget *CompletePage::BarcodesPanel() const
{
    return m_ui->BarCodes_PNL;
}

void CompletePage::FillLists()
{
    m_ui->DaraiGoodType_CMB->clear();
    for (const host::Entity &type : m_host.finance.Fill_FinanceGoodTypes())
        m_ui->DaraiGoodType_CMB->addItem(type.Name, type.Code);
    if (m_ui->DaraiGoodType_CMB->findData(NoGoodType) < 0)
        m_ui->DaraiGoodType_CMB->insertItem(0, u"هيچکدام"_s, NoGoodType);
    m_data.GetAllTagsWithColor();
    m_ui->Tag_editor->SetAvailable(goods::ReadTags(m_data.Tags_qry));
}

void CompletePage::GiveKeyboardBack()
{
    if (window()->focusWidget() == m_ui->SmsCode_EDT)
        m_host.keyboard.LoadKeyboardLayout(QString::fromUtf16(host::KeyboardService::Persian));
}

void CompletePage::Clear()
{
    Show(TGoodInfoRec());
    m_pos = m_ui->Pos_EDT->text();
}

void CompletePage::Show(const TGoodInfoRec &rec)
{
    m_ui->Weight_EDT->SetNumber(rec.Weight);
    m_ui->Length_EDT->SetNumber(rec.Length);
    m_ui->Width_EDT->SetNumber(rec.Width);
    m_ui->Heigth_EDT->SetNumber(rec.Height);
    m_pos = rec.Pos;
    m_ui->Pos_EDT->setText(ShownPos());
    m_ui->OffPercent_EDT->SetNumber(rec.OffPercent);
    m_ui->SmsCode_EDT->setText(rec.SMSCode);
    m_ui->Position_EDT->setText(rec.Position);
    m_ui->DetailUniqueCode_EDT->setText(rec.DetailUniqueCode);
    m_ui->DaraiGoodType_CMB->setCurrentIndex(m_ui->DaraiGoodType_CMB->findData(rec.DaraiGoodType));
    m_ui->Tag_editor->ShowStored(rec.tags);
    m_ui->Comment_EDT->setPlainText(rec.Comment);
}

void CompletePage::Store(TGoodInfoRec &rec) const
{
    rec.Weight = m_ui->Weight_EDT->Number();
    rec.Length = m_ui->Length_EDT->Number();
    rec.Width = m_ui->Width_EDT->Number();
    rec.Height = m_ui->Heigth_EDT->Number();
    rec.Pos = m_ui->Pos_EDT->text() == ShownPos() ? m_pos : m_ui->Pos_EDT->text();
    rec.OffPercent = m_ui->OffPercent_EDT->Number();
    rec.SMSCode = m_ui->SmsCode_EDT->text();
    rec.Position = m_ui->Position_EDT->text();
    rec.DetailUniqueCode = m_ui->DetailUniqueCode_EDT->text();
    // A class that the list does not offer stays.
    if (m_ui->DaraiGoodType_CMB->currentIndex() >= 0)
        rec.DaraiGoodType = static_cast<qint16>(m_ui->DaraiGoodType_CMB->currentData().toInt());
    rec.tags = m_ui->Tag_editor->CodesText();
    // The edit knows one kind of line end; a remark keeps its own.
    const bool carriageReturns = rec.Comment.contains(u"\r\n"_s);
    rec.Comment = m_ui->Comment_EDT->toPlainText();
    if (carriageReturns)
        rec.Comment.replace(u'\n', u"\r\n"_s);
}

QString CompletePage::ShownPos() const
{
    return m_pos.isEmpty() ? u"0"_s : m_pos;
}

host::Refused CompletePage::LeavePos()
{
    m_ui->Pos_EDT->ZeroWhenEmpty();
    return goods::LimitPercent(m_ui->Pos_EDT);
}

host::Refused CompletePage::LeaveOffPercent()
{
    return goods::LimitPercent(m_ui->OffPercent_EDT);
}

host::Refused CompletePage::LeaveFocused()
{
    for (host::NumericEdit *edit : {m_ui->Pos_EDT, m_ui->OffPercent_EDT})
        if (edit->hasFocus())
            return goods::LeaveNow(edit);
    return {};
}

host::Refused CompletePage::CheckSmsCode(int code) const
{
    const QString caption = u"کد پيامکي"_s;
    if (m_ui->SmsCode_EDT->IsEmpty())
        return host::Required(m_ui->SmsCode_EDT, caption);
    if (!m_data.Good_IsExistSMSCode(code, m_ui->SmsCode_EDT->text()))
        return {};
    return host::RepeatedCode(m_ui->SmsCode_EDT, caption);
}

host::Refused CompletePage::CheckSizes() const
{
    for (const auto &[edit, caption] : {std::pair(m_ui->Weight_EDT, u"وزن"_s), std::pair(m_ui->Length_EDT, u"طول"_s),
                                        std::pair(m_ui->Width_EDT, u"عرض"_s), std::pair(m_ui->Heigth_EDT, u"ارتفاع"_s)})
        if (edit->IsEmpty())
            return host::Required(edit, caption);
    return {};
}

host::Refused CompletePage::CheckUniqueCode(int code) const
{
    const QString uniqueCode = m_ui->DetailUniqueCode_EDT->text();
    if (uniqueCode.isEmpty() || m_data.Good_ExistDetailUniqueCode(code, uniqueCode) == 0)
        return {};
    return host::Repeated(m_ui->DetailUniqueCode_EDT, u"کد تفصیلی یکتا"_s, u"کالا"_s);
}

void CompletePage::SetReadOnly(bool readOnly)
{
    m_ui->Tag_editor->setReadOnly(readOnly);
}
