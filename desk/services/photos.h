#pragma once

#include "host/services/photo_gallery_service.h"

#include <QSqlDatabase>

namespace host {
struct Host;
}

namespace desk {

/// Photos in PhotoGallery, and the window that manages them.
class PhotoStore : public host::PhotoGalleryService
{
public:
    explicit PhotoStore(const QSqlDatabase &connection) : m_connection(connection) {}
    /// The host that the window is made with; it holds this service, so it comes after the constructor.
    void SetHost(host::Host &host) { m_host = &host; }

    void Open_Gallery(host::TSoftwarePart part, int code) override;
    QList<QByteArray> Photos(host::TSoftwarePart part, int code) override;

private:
    QSqlDatabase m_connection;
    host::Host *m_host = nullptr;
};

} // namespace desk
