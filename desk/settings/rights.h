#pragma once

#include "desk/services/permissions.h"
#include "desk/services/users.h"
#include "desk/settings/save_screen.h"

#include <memory>
#include <optional>

class QTableWidgetItem;

namespace Ui {
class Rights;
}

namespace desk {

/// The users and what each may do: feature areas down, rights across, a check box where a right means something.
/// A new user may do nothing until rights are given; one who has left is a user whose rights were taken away, because
/// the goods keep their name.
class TRights_FRM : public TSaveScreen_FRM
{
    Q_OBJECT

public:
    TRights_FRM(host::Host &host, Permissions &permissions);
    ~TRights_FRM() override;

protected:
    void FormShow() override;
    bool Write() override;

private:
    void BuildGrid();
    void ListUsers(int standOn);
    void ChooseUser(int index);
    void AddUser();
    void RenameUser();
    /// A name that can be used; nothing when the user gave up.
    std::optional<QString> AskName(const QString &title, const QString &name, int code);
    void LoadRights();
    void SetAll(bool granted);
    int User() const;

    Permissions &permissions_;
    Users users_;
    std::unique_ptr<Ui::Rights> ui_;
    int shownUser_ = -1; ///< index in the combo of the user whose rights are shown
    bool loading_ = false;
};

} // namespace desk
