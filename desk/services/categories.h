#pragma once

#include "desk/categories/category_store.h"
#include "host/services/category_service.h"

namespace host {
struct Host;
}

namespace desk {

/// The tree in Categories, and the screen that keeps it.
class CategoryTree : public host::CategoryService
{
public:
    explicit CategoryTree(const QSqlDatabase &connection) : m_store(connection) {}
    /// The host that the screen is made with; it holds this service, so it comes after the constructor.
    void SetHost(host::Host &host) { m_host = &host; }

    QList<host::Category> Tree() override { return m_store.All(); }
    QList<host::Category> Path(int code) override { return m_store.Path(code); }
    void Open_Categories() override;

private:
    CategoryStore m_store;
    host::Host *m_host = nullptr;
};

} // namespace desk
