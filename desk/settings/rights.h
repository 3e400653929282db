#pragma once

#include "desk/services/permissions.h"
#include "desk/services/users.h"
#include "host/screens/base_save.h"

#include <functional>
#include <memory>

class QTableWidgetItem;

namespace Ui {
class Rights;
}

namespace desk {

/// The users and what each may do: feature areas down, rights across, a check box where a right means something.
/// A new user may do nothing until rights are given; one who has left is a user whose rights were taken away, because
/// the goods keep their name.
class TRights_FRM : public host::TBaseSave_FRM
{
    Q_OBJECT

public:
    TRights_FRM(host::Host &host, Permissions &permissions);
    ~TRights_FRM() override;

protected:
    void FormShow() override;
    void Write() override;

private:
    void BuildGrid();
    void ListUsers();
    void ChooseUser(int user);
    /// Reads the rights of a user and shows them; nothing changes when they cannot be read.
    void ShowUser(int user);
    void StandOnUser();
    void AddUser();
    void RenameUser();
    /// Has a name typed that can be used, and written; false when the user gave up.
    bool AskName(const QString &title, const QString &name, int code,
                 const std::function<void(const QString &)> &write);
    host::Refused CheckName(const QString &typed, int code) const;
    void SetAll(bool granted);

    Permissions &m_permissions;
    Users m_users;
    std::unique_ptr<Ui::Rights> m_ui;
    int m_user = 0; ///< code of the user whose rights are shown
};

} // namespace desk
