#include "desk/settings/settings_screen.h"

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
    : TSaveScreen_FRM(host, host::TSoftwarePart::Goods), m_settings(settings),
      m_ui(std::make_unique<Ui::SettingsScreen>())
{
    setObjectName(u"TSettings_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(u"تنظیمات"_s);
    m_barcodes = {m_ui->Barcode1_EDT, m_ui->Barcode2_EDT, m_ui->Barcode3_EDT};
    for (int digits = Settings::LeastCodeLength; digits <= Settings::GreatestCodeLength; ++digits)
        m_ui->GoodCodeLength_CMB->addItem(host::PersianDigits(QString::number(digits)), digits);
    m_ui->SquareMetreUnit_Entity->SetSource(host.entities, host::TSoftwarePart::Units);
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

void TSettings_FRM::WatchInputs()
{
    const auto changed = [this] { SetIsSaved(false); };
    for (host::ToggleSwitch *toggle : std::as_const(m_switches))
        connect(toggle, &QAbstractButton::toggled, this, changed);
    for (QLineEdit *edit : m_barcodes)
        connect(edit, &QLineEdit::textChanged, this, changed);
    connect(m_ui->GoodCodeLength_CMB, &QComboBox::currentIndexChanged, this, changed);
    connect(m_ui->SquareMetreUnit_Entity, &host::EntityPicker::Changed, this, changed);
    connect(m_ui->SquareMetreUnit_Entity, &host::EntityPicker::Edited, this, changed);
}

void TSettings_FRM::FormShow()
{
    TSaveScreen_FRM::FormShow();
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

bool TSettings_FRM::Write()
{
    if (!m_ui->SquareMetreUnit_Entity->Resolve(true)) {
        m_host.messages.MsgRequiredField(u"واحد متر مربع"_s);
        m_ui->SquareMetreUnit_Entity->setFocus();
        return false;
    }
    host::TSettingRecord record = m_settings.SettingRecord();
    for (int i = 0; i < m_switches.size(); ++i)
        record.*SettingSwitches().at(i).member = m_switches.at(i)->isChecked();
    record.GoodCodeLength = m_ui->GoodCodeLength_CMB->currentData().toInt();
    record.SquareMetreUnit = m_ui->SquareMetreUnit_Entity->Code();
    for (size_t i = 0; i < m_barcodes.size(); ++i)
        record.ReservedBarcodes[i] = m_barcodes[i]->text().trimmed();
    m_settings.Save(record);
    return true;
}

} // namespace desk
