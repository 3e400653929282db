#include "desk/settings/settings_screen.h"

#include "host/controls/entity_picker.h"
#include "host/controls/toggle_switch.h"
#include "host/data/persian_text.h"
#include "ui_settings_screen.h"

namespace desk {

namespace {
constexpr int SectionsAcross = 2;
}

TSettings_FRM::TSettings_FRM(host::Host &host, Settings &settings)
    : TSaveScreen_FRM(host, host::TSoftwarePart::Goods), settings_(settings),
      ui_(std::make_unique<Ui::SettingsScreen>())
{
    setObjectName(u"TSettings_FRM"_qs);
    ui_->setupUi(Content());
    SetTitle(u"تنظیمات"_qs);
    barcodes_ = {ui_->Barcode1_EDT, ui_->Barcode2_EDT, ui_->Barcode3_EDT};
    for (int digits = Settings::LeastCodeLength; digits <= Settings::GreatestCodeLength; ++digits)
        ui_->GoodCodeLength_CMB->addItem(host::PersianDigits(QString::number(digits)), digits);
    ui_->SquareMetreUnit_Entity->SetSource(host.entities, host::TSoftwarePart::Units);
    AddSwitches();
    WatchInputs();
}

TSettings_FRM::~TSettings_FRM() = default;

// One box per section, two boxes across, above the boxes of the form.
void TSettings_FRM::AddSwitches()
{
    QMap<QString, QVBoxLayout *> sections;
    for (const SettingSwitch &each : SettingSwitches()) {
        const QString title = QString::fromUtf16(each.section);
        QVBoxLayout *&column = sections[title];
        if (!column) {
            const int place = static_cast<int>(sections.size()) - 1;
            auto *box = new QGroupBox(title, Content());
            column = new QVBoxLayout(box);
            // The last section has the row of the form's boxes to itself when it is alone in its row.
            const int row = place / SectionsAcross;
            ui_->Sections->addWidget(box, row < 2 ? row : 3, place % SectionsAcross, Qt::Alignment());
        }
        auto *toggle = new host::ToggleSwitch(Content());
        toggle->setObjectName(QString::fromLatin1(each.name) + u"_CHK"_qs);
        toggle->setText(QString::fromUtf16(each.caption));
        column->addWidget(toggle);
        switches_ << toggle;
    }
    for (QVBoxLayout *column : std::as_const(sections))
        column->addStretch();
}

void TSettings_FRM::WatchInputs()
{
    const auto changed = [this] { SetIsSaved(false); };
    for (host::ToggleSwitch *toggle : std::as_const(switches_))
        connect(toggle, &QAbstractButton::toggled, this, changed);
    for (QLineEdit *edit : barcodes_)
        connect(edit, &QLineEdit::textChanged, this, changed);
    connect(ui_->GoodCodeLength_CMB, &QComboBox::currentIndexChanged, this, changed);
    connect(ui_->SquareMetreUnit_Entity, &host::EntityPicker::Changed, this, changed);
    connect(ui_->SquareMetreUnit_Entity, &host::EntityPicker::Edited, this, changed);
}

void TSettings_FRM::FormShow()
{
    TSaveScreen_FRM::FormShow();
    settings_.Reload();
    const host::TSettingRecord &record = settings_.SettingRecord();
    for (int i = 0; i < switches_.size(); ++i)
        switches_.at(i)->setChecked(record.*SettingSwitches().at(i).member);
    ui_->GoodCodeLength_CMB->setCurrentIndex(ui_->GoodCodeLength_CMB->findData(record.GoodCodeLength));
    ui_->SquareMetreUnit_Entity->SetCode(record.SquareMetreUnit);
    for (size_t i = 0; i < barcodes_.size(); ++i)
        barcodes_[i]->setText(record.ReservedBarcodes[i]);
    SetIsSaved(true);
    switches_.first()->setFocus();
}

bool TSettings_FRM::Write()
{
    if (!ui_->SquareMetreUnit_Entity->Resolve(true)) {
        m_host.messages.MsgRequiredField(u"واحد متر مربع"_qs);
        ui_->SquareMetreUnit_Entity->setFocus();
        return false;
    }
    host::TSettingRecord record = settings_.SettingRecord();
    for (int i = 0; i < switches_.size(); ++i)
        record.*SettingSwitches().at(i).member = switches_.at(i)->isChecked();
    record.GoodCodeLength = ui_->GoodCodeLength_CMB->currentData().toInt();
    record.SquareMetreUnit = ui_->SquareMetreUnit_Entity->Code();
    for (size_t i = 0; i < barcodes_.size(); ++i)
        record.ReservedBarcodes[i] = barcodes_[i]->text().trimmed();
    settings_.Save(record);
    return true;
}

} // namespace desk
