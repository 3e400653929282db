#pragma once

#include "host/services/photo_gallery_service.h"

#include <QtSql/QSqlDatabase>

namespace host {
struct Host;
}

namespace desk {

/// Photos in PhotoGallery, and the window that manages them.
class PhotoStore : public host::PhotoGalleryService
{
public:
    explicit PhotoStore(const QSqlDatabase &connection) : connection_(connection) {}
    /// The host that the window is made with; it holds this service, so it comes after the constructor.
    void SetHost(host::Host &host) { host_ = &host; }

    void Open_Gallery(host::TSoftwarePart part, int code) override;
    QList<QByteArray> Photos(host::TSoftwarePart part, int code) override;

private:
    QSqlDatabase connection_;
    host::Host *host_ = nullptr;
};

} // namespace desk
