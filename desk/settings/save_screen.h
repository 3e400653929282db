#pragma once

#include "host/screens/base_dock.h"

namespace desk {

/// A screen of the desk that edits something as a whole: F3 saves and stays, Esc leaves and asks before it loses
/// changes.
class TSaveScreen_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    TSaveScreen_FRM(host::Host &host, host::TSoftwarePart part);

    bool IsSaved() const { return m_saved; }
    void reject() override;

protected:
    /// Writes what the controls show; throws when that fails. False when it refused and told the user.
    virtual bool Write() = 0;

    void SetIsSaved(bool saved);
    /// True when nothing is lost by going on: all is saved, or the user lets the changes go.
    bool MayDiscard();

private:
    void Save();

    QPushButton *m_save;
    bool m_saved = true;
};

} // namespace desk
