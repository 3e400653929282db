#include "host/services/good_detail_records.h"

#include "host/data/persian_text.h"

namespace host {

namespace {

/// Marks of direction and joining, unseen on the screen and on no label.
bool IsUnseen(QChar letter)
{
    const char16_t code = letter.unicode();
    return code == 0x061C || (code >= 0x200B && code <= 0x200F) || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2060 && code <= 0x2069) || code == 0xFEFF;
}

} // namespace

QString SerialText(QStringView typed)
{
    QString text = FoldDigits(typed);
    text.removeIf(IsUnseen);
    return text.trimmed();
}

} // namespace host
