#pragma once

#include "host/services/level_service.h"

#include <QSqlDatabase>

namespace host {
struct Host;
}

namespace desk {

/// The titles in CostLevel and DiscountLevel, and the screen that changes them.
class Levels : public host::LevelService
{
public:
    explicit Levels(const QSqlDatabase &connection) : m_connection(connection) {}
    /// The host that the screen is made with; it holds this service, so it comes after the constructor.
    void SetHost(host::Host &host) { m_host = &host; }

    bool Open_CostLevels() override;
    bool Open_DiscountLevels() override;
    QStringList DiscountLevels() override;

private:
    QSqlDatabase m_connection;
    host::Host *m_host = nullptr;
};

} // namespace desk
