#pragma once

#include <QString>

#include <array>

namespace goods {

/// The barcodes of a good in the order of their edits. The first may be a short name instead.
using Barcodes = std::array<QString, 6>;

/// The one text that keeps a good's barcodes: each between "!" marks (111 and 222 give "!111!222!"). With
/// `firstOnly` just the first is kept, otherwise all six, empty ones included.
QString PackBarcodes(const Barcodes &barcodes, bool firstOnly);

/// The barcodes of such a text. The last takes all that remains, so it may itself hold "!"; a text without any mark is
/// the first barcode.
Barcodes UnpackBarcodes(const QString &text);

} // namespace goods
