#include "screens/shared/tag_rows.h"

#include "host/data/dataset.h"
#include "host/look/theme.h"

#include <QImage>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

/// A swatch is one colour all over; a tag without one gets a quiet colour of the house.
QColor SwatchColor(const QByteArray &image)
{
    const QImage swatch = QImage::fromData(image);
    return swatch.isNull() ? host::theme::Line() : swatch.pixelColor(swatch.rect().center());
}

} // namespace

QList<host::Tag> ReadTags(const host::Dataset &tags)
{
    QList<host::Tag> all;
    for (int row = 0; row < tags.RecordCount(); ++row)
        all.append({tags.FieldAt(row, u"ID").toInt(), tags.FieldAt(row, u"Name").toString(),
                    SwatchColor(tags.FieldAt(row, u"image").toByteArray())});
    return all;
}

} // namespace goods
