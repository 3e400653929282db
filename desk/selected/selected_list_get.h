#pragma once

#include "desk/selected/selected_lists_data.h"
#include "host/screens/base_get.h"

#include <memory>

namespace Ui {
class SelectedListGet;
}

namespace desk {

/// The editor of one selected list: its title, whether it is offered, and what it is for.
class TSelectedList_Get_FRM : public host::TBaseGet_FRM
{
    Q_OBJECT

public:
    TSelectedList_Get_FRM(host::Host &host, SelectedListsData &data);
    ~TSelectedList_Get_FRM() override;

protected:
    void Prepare() override;
    void Load() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    QString PrepareRecoveryQuery() const override;
    QWidget *FirstControl() const override;

private:
    void Show(const SelectedListsData::List &list);
    SelectedListsData::List Entered() const;

    SelectedListsData &m_data;
    std::unique_ptr<Ui::SelectedListGet> m_ui;
};

} // namespace desk
