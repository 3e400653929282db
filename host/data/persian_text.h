#pragma once

#include "host/host_export.h"

#include <QString>
#include <QStringView>

/// Persian text as people type it: one word has several spellings that a search must treat alike.
namespace host {

/// The text made comparable: ي ى → ی, ك → ک, ة ۀ → ه, أ إ آ ٱ → ا, ؤ → و, ئ → ی, Persian and Arabic digits → 0…9,
/// letters in lower case; vowel marks, tatweel, half-spaces and direction marks removed.
HOST_EXPORT QString Fold(QStringView text);

/// Appends the folded text to `target` (for folding many rows into one buffer).
HOST_EXPORT void AppendFolded(QString &target, QStringView text);

/// The text without the halves of characters beyond 16 bits that a cut leaves behind: no encoding can write them.
HOST_EXPORT QString WholeCharacters(QStringView text);

/// Persian and Arabic digits as 0…9, everything else as it is.
HOST_EXPORT QString FoldDigits(QStringView text);

/// The digits 0…9 as Persian digits, everything else as it is.
HOST_EXPORT QString PersianDigits(QStringView text);

} // namespace host
