#include "screens/good_editor/barcode_text.h"

namespace goods {

namespace {

constexpr QChar Mark = u'!';

} // namespace

QString PackBarcodes(const Barcodes &barcodes, bool firstOnly)
{
    QString text = Mark;
    for (size_t i = 0; i < (firstOnly ? 1 : barcodes.size()); ++i)
        text += barcodes[i] + Mark;
    return text;
}

Barcodes UnpackBarcodes(const QString &text)
{
    Barcodes barcodes;
    if (!text.contains(Mark)) {
        barcodes[0] = text;
        return barcodes;
    }
    QStringView rest(text);
    if (rest.startsWith(Mark))
        rest = rest.sliced(1);
    for (size_t i = 0; i + 1 < barcodes.size() && !rest.isEmpty(); ++i) {
        const qsizetype end = rest.indexOf(Mark);
        barcodes[i] = rest.first(end < 0 ? rest.size() : end).toString();
        rest = end < 0 ? QStringView() : rest.sliced(end + 1);
    }
    barcodes.back() = rest.chopped(rest.isEmpty() ? 0 : 1).toString();
    return barcodes;
}

} // namespace goods
