#include "rules/barcode_text.h"

#include "host/data/persian_text.h"

#include <algorithm>

namespace goods {

QString CleanBarcode(const QString &typed)
{
    const QString barcode = typed.trimmed();
    const QString folded = host::FoldDigits(barcode);
    const bool digits = std::all_of(folded.cbegin(), folded.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    return digits ? folded : barcode;
}

QString PackBarcodes(const Barcodes &barcodes, bool firstOnly)
{
    QString text = BarcodeMark;
    for (size_t i = 0; i < (firstOnly ? 1 : barcodes.size()); ++i)
        text += barcodes[i] + BarcodeMark;
    return text;
}

Barcodes UnpackBarcodes(const QString &text)
{
    Barcodes barcodes;
    if (!text.contains(BarcodeMark)) {
        barcodes[0] = text;
        return barcodes;
    }
    QStringView rest(text);
    if (rest.startsWith(BarcodeMark))
        rest = rest.sliced(1);
    for (size_t i = 0; i + 1 < barcodes.size() && !rest.isEmpty(); ++i) {
        const qsizetype end = rest.indexOf(BarcodeMark);
        barcodes[i] = rest.first(end < 0 ? rest.size() : end).toString();
        rest = end < 0 ? QStringView() : rest.sliced(end + 1);
    }
    barcodes.back() = rest.chopped(rest.isEmpty() ? 0 : 1).toString();
    return barcodes;
}

} // namespace goods
