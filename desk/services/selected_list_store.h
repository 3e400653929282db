#pragma once

#include "host/services/selected_list_service.h"

#include <QSqlDatabase>

#include <functional>

namespace host {
struct Host;
}

namespace desk {

/// Selected lists in SelectedLists, and the window that manages them.
class SelectedListStore : public host::SelectedListService
{
public:
    explicit SelectedListStore(const QSqlDatabase &connection) : m_connection(connection) {}
    /// The host that the window is made with; it holds this service, so it comes after the constructor.
    void SetHost(host::Host &host) { m_host = &host; }
    /// How goods are chosen: a code list, empty for none. The goods module does it, once it is loaded.
    void SetGoodsChooser(std::function<QString()> chooser) { m_chooseGoods = std::move(chooser); }

    void Call_SelectedLists(int code) override;
    int AddToSelectedList(const QString &goodCodes) override;

private:
    bool Granted() const;

    QSqlDatabase m_connection;
    host::Host *m_host = nullptr;
    std::function<QString()> m_chooseGoods;
};

} // namespace desk
