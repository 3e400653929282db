#pragma once

#include "desk/services/settings.h"
#include "host/screens/base_save.h"

#include <array>
#include <memory>

class QLineEdit;

namespace host {
class ToggleSwitch;
}

namespace Ui {
class SettingsScreen;
}

namespace desk {

/// The program settings, section by section. Screens that are open keep what they read when they opened.
class TSettings_FRM : public host::TBaseSave_FRM
{
    Q_OBJECT

public:
    TSettings_FRM(host::Host &host, Settings &settings);
    ~TSettings_FRM() override;

protected:
    void FormShow() override;
    void BeforeChecks() override;
    std::vector<host::Check> Validate() override;
    void Write() override;

private:
    void AddSwitches();

    Settings &m_settings;
    std::unique_ptr<Ui::SettingsScreen> m_ui;
    QList<host::ToggleSwitch *> m_switches; ///< as SettingSwitches()
    std::array<QLineEdit *, 3> m_barcodes{};
};

} // namespace desk
