#pragma once

#include "host/services/types.h"

#include <QByteArray>
#include <QList>

namespace host {

/// Photos of any entity, kept in `PhotoGallery` under the part and the code.
class PhotoGalleryService
{
public:
    virtual ~PhotoGalleryService() = default;

    /// Opens the gallery of an entity. Photos added while a record is being edited are temporary until it is saved.
    virtual void Open_Gallery(TSoftwarePart part, int code) = 0;
    /// The encoded images of an entity in their order, for showing.
    virtual QList<QByteArray> Photos(TSoftwarePart part, int code) = 0;
};

} // namespace host
