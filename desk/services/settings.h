#pragma once

#include "host/services/settings_service.h"

#include <QHash>
#include <QSqlDatabase>

namespace desk {

/// A switch of the settings: its name in the table Settings, where it lies in the record, and how the screen shows it.
struct SettingSwitch
{
    const char *name;
    bool host::TSettingRecord::*member;
    const char16_t *section;
    const char16_t *caption;
};

/// Every switch, section by section.
const QList<SettingSwitch> &SettingSwitches();

/// The signed-in user, the program settings and the screens' state, kept in Users, Settings and ScreenLayouts.
class Settings : public host::SettingsService
{
public:
    /// How many digits the codes of goods may have.
    static constexpr int LeastCodeLength = 1;
    static constexpr int GreatestCodeLength = 6;

    explicit Settings(const QSqlDatabase &connection);

    /// Makes a user the signed-in one; false, changing nothing, when there is no user with this code.
    bool SignIn(int user);
    /// Reads the settings again.
    void Reload();
    /// Writes all settings in one transaction; screens that open afterwards see them.
    void Save(const host::TSettingRecord &record);

    const host::TUserInfo &UserInfo() const override { return m_user; }
    const host::TSettingRecord &SettingRecord() const override { return m_record; }
    QByteArray LoadState(const QString &screen) override;
    void SaveState(const QString &screen, const QByteArray &state) override;

private:
    QSqlDatabase m_connection;
    host::TUserInfo m_user;
    host::TSettingRecord m_record;
    QHash<QString, QByteArray> m_states; ///< of the user's screens, as this desk has read or written them
};

} // namespace desk
