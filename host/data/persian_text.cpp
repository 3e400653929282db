#include "host/data/persian_text.h"

#include <algorithm>

namespace host {

namespace {

/// The letter that stands for all spellings of c; 0 for characters that say nothing.
char16_t Folded(char16_t c)
{
    if (c < 0x80) {
        return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
    }
    switch (c) {
    case u'\u064A': // ي
    case u'\u0649': // ى
    case u'\u0626': // ئ
    case u'\u06D2':
        return u'\u06CC'; // ی
    case u'\u0643':       // ك
    case u'\u06AA':
        return u'\u06A9'; // ک
    case u'\u0629':       // ة
    case u'\u06C0':       // ۀ
    case u'\u06C1':
    case u'\u06D5':
        return u'\u0647'; // ه
    case u'\u0622':       // آ
    case u'\u0623':       // أ
    case u'\u0625':       // إ
    case u'\u0671':       // ٱ
        return u'\u0627'; // ا
    case u'\u0624':       // ؤ
        return u'\u0648'; // و
    case u'\u00A0':
    case u'\u202F':
        return u' ';
    case u'\u0640': // tatweel
    case u'\u0654': // hamza above
    case u'\u0655':
    case u'\u0670':
    case u'\u00AD':
    case u'\uFEFF':
        return 0;
    default:
        break;
    }
    if (c >= u'\u06F0' && c <= u'\u06F9') {
        return static_cast<char16_t>(u'0' + (c - u'\u06F0'));
    }
    if (c >= u'\u0660' && c <= u'\u0669') {
        return static_cast<char16_t>(u'0' + (c - u'\u0660'));
    }
    if ((c >= u'\u064B' && c <= u'\u0653') || (c >= u'\u200B' && c <= u'\u200F') ||
        (c >= u'\u202A' && c <= u'\u202E') || (c >= u'\u2060' && c <= u'\u2069')) {
        return 0; // vowel marks, half-spaces, direction marks
    }
    return QChar::toLower(static_cast<char32_t>(c)) <= 0xFFFF
               ? static_cast<char16_t>(QChar::toLower(static_cast<char32_t>(c)))
               : c;
}

} // namespace

void AppendFolded(QString &target, QStringView text)
{
    // A buffer of many rows grows by doubling; to reserve exactly would move it for every row.
    if (const qsizetype size = target.size() + text.size(); size > target.capacity()) {
        target.reserve(std::max(size, 2 * target.capacity()));
    }
    for (const QChar c : text) {
        if (const char16_t folded = Folded(c.unicode())) {
            target += QChar(folded);
        }
    }
}

QString Fold(QStringView text)
{
    QString folded;
    AppendFolded(folded, text);
    return folded;
}

QString WholeCharacters(QStringView text)
{
    QString whole;
    whole.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!text[i].isSurrogate()) {
            whole += text[i];
        } else if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            whole += text[i];
            whole += text[++i];
        }
    }
    return whole;
}

QString FoldDigits(QStringView text)
{
    QString folded = text.toString();
    for (QChar &c : folded) {
        if ((c >= u'\u06F0' && c <= u'\u06F9') || (c >= u'\u0660' && c <= u'\u0669')) {
            c = QChar(u'0' + c.digitValue());
        }
    }
    return folded;
}

QString PersianDigits(QStringView text)
{
    QString persian = text.toString();
    for (QChar &c : persian) {
        if (c >= u'0' && c <= u'9') {
            c = QChar(u'\u06F0' + (c.unicode() - u'0'));
        }
    }
    return persian;
}

} // namespace host
