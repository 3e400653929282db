#pragma once

#include <QString>

#include <array>

namespace goods {

/// The barcodes of a good in the order of their edits. The first may be a short name instead.
using Barcodes = std::array<QString, 6>;

/// Stands between the barcodes of a stored text.
constexpr QChar BarcodeMark = u'!';

/// A barcode as it was meant: without the blanks and line ends around it that pasting brings along, and in ASCII digits
/// when it is nothing but digits, as a scanner reads it. Short names stay as they were typed.
QString CleanBarcode(const QString &typed);

/// The one text that keeps a good's barcodes: each between "!" marks (111 and 222 give "!111!222!"). With
/// `firstOnly` just the first is kept, otherwise all six, empty ones included.
QString PackBarcodes(const Barcodes &barcodes, bool firstOnly);

/// The barcodes of such a text. The last takes all that remains, so it may itself hold "!"; a text without any mark is
/// the first barcode.
Barcodes UnpackBarcodes(const QString &text);

} // namespace goods
