#include "desk/settings/settings_screen.h"

#include "desk/messages/catalogue.h"
#include "host/controls/entity_picker.h"
#include "host/controls/toggle_switch.h"
#include "host/data/persian_text.h"
#include "ui_settings_screen.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {
constexpr int SectionsAcross = 2;
}

TSettings_FRM::TSettings_FRM(host::Host &host, Settings &settings)
    : TBaseSave_FRM(host, host::TSoftwarePart::Goods, host::TFormMode::Edit, host.mainWindow), m_settings(settings),
      m_ui(std::make_unique<Ui::SettingsScreen>())
{
    setObjectName(u"TSettings_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(u"تنظیمات"_s);
    SetDiscardQuestion(MessageText(message::DiscardChanges));
    m_barcodes = {m_ui->Barcode1_EDT, m_ui->Barcode2_EDT, m_ui->Barcode3_EDT};
    for (int digits = Settings::LeastCodeLength; digits <= Settings::GreatestCodeLength; ++digits)
        m_ui->GoodCodeLength_CMB->addItem(host::PersianDigits(QString::number(digits)), digits);
    m_ui->SquareMetreUnit_Entity->SetSource(host.entities, host::TSoftwarePart::Units);
    AddSwitches();
    WatchChanges();
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
            m_ui->Sections->addWidget(box, row < 2 ? row : 3, place % SectionsAcross, Qt::Alignment());
        }
        auto *toggle = new host::ToggleSwitch(Content());
        toggle->setObjectName(QString::fromLatin1(each.name) + u"_CHK"_s);
        toggle->setText(QString::fromUtf16(each.caption));
        column->addWidget(toggle);
        m_switches << toggle;
    }
    for (QVBoxLayout *column : std::as_const(sections))
        column->addStretch();
}

void TSettings_FRM::FormShow()
{
    TBaseSave_FRM::FormShow();
    m_settings.Reload();
    const host::TSettingRecord &record = m_settings.SettingRecord();
    for (int i = 0; i < m_switches.size(); ++i)
        m_switches.at(i)->setChecked(record.*SettingSwitches().at(i).member);
    m_ui->GoodCodeLength_CMB->setCurrentIndex(m_ui->GoodCodeLength_CMB->findData(record.GoodCodeLength));
    m_ui->SquareMetreUnit_Entity->SetCode(record.SquareMetreUnit);
    for (size_t i = 0; i < m_barcodes.size(); ++i)
        m_barcodes[i]->setText(record.ReservedBarcodes[i]);
    SetIsSaved(true);
    m_switches.first()->setFocus();
}

void TSettings_FRM::BeforeChecks()
{
    m_ui->SquareMetreUnit_Entity->Resolve(true);
}

std::vector<host::Check> TSettings_FRM::Validate()
{
    host::EntityPicker *unit = m_ui->SquareMetreUnit_Entity;
    return {{u"UnitKnown"_s, [unit] {
                 return host::When(unit->Code() == 0 && !unit->IsEmpty(), host::Required(unit, u"واحد متر مربع"_s));
             }}};
}

void TSettings_FRM::Write()
{
    host::TSettingRecord record = m_settings.SettingRecord();
    for (int i = 0; i < m_switches.size(); ++i)
        record.*SettingSwitches().at(i).member = m_switches.at(i)->isChecked();
    record.GoodCodeLength = m_ui->GoodCodeLength_CMB->currentData().toInt();
    record.SquareMetreUnit = m_ui->SquareMetreUnit_Entity->Code();
    for (size_t i = 0; i < m_barcodes.size(); ++i)
        record.ReservedBarcodes[i] = m_barcodes[i]->text().trimmed();
    m_settings.Save(record);
}

} // namespace desk
