#include "desk/services/photos.h"

#include "desk/gallery/photo_gallery.h"
#include "host/data/query.h"

using namespace Qt::StringLiterals;

namespace desk {

void PhotoStore::Open_Gallery(host::TSoftwarePart part, int code)
{
    if (!host::Granted(*m_host, part, host::TPermission::Photo))
        return;
    TPhotoGallery_FRM gallery(*m_host, part, code);
    gallery.ShowModally();
}

QList<QByteArray> PhotoStore::Photos(host::TSoftwarePart part, int code)
{
    QList<QByteArray> photos;
    for (host::Query query(m_connection,
                           u"SELECT Picture FROM PhotoGallery WHERE Id_pic = %1 AND GRPCode = %2 AND tmp = 0 "
                           "ORDER BY Radif, Id"_s.arg(code)
                               .arg(static_cast<int>(part)));
         !query.Eof(); query.Next())
        photos << query.Value(u"Picture").toByteArray();
    return photos;
}

} // namespace desk
