#pragma once

#include "host/services/types.h"

#include <QByteArray>

namespace host {

/// The signed-in user, the program settings and the stored state of screens.
class SettingsService
{
public:
    virtual ~SettingsService() = default;

    virtual const TUserInfo &UserInfo() const = 0;
    virtual const TSettingRecord &SettingRecord() const = 0;

    /// State that a screen keeps between openings for the signed-in user (grid layout, last choices);
    /// empty when nothing was stored. The bytes are the screen's own.
    virtual QByteArray LoadState(const QString &screen) = 0;
    virtual void SaveState(const QString &screen, const QByteArray &state) = 0;
};

} // namespace host
