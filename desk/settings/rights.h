#pragma once

#include "desk/services/permissions.h"
#include "desk/settings/save_screen.h"

#include <memory>

class QTableWidgetItem;

namespace Ui {
class Rights;
}

namespace desk {

/// What each user may do: feature areas down, rights across, a check box where a right means something.
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
    void ChooseUser(int index);
    void LoadRights();
    void SetAll(bool granted);
    int User() const;

    Permissions &permissions_;
    std::unique_ptr<Ui::Rights> ui_;
    int shownUser_ = -1; ///< index in the combo of the user whose rights are shown
    bool loading_ = false;
};

} // namespace desk
