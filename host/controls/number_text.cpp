#include "host/controls/number_text.h"

#include "host/data/persian_text.h"

namespace host {

QString PlainNumber(const QString &typed)
{
    QString plain;
    plain.reserve(typed.size());
    const QString digits = FoldDigits(typed);
    for (const QChar c : digits) {
        switch (c.unicode()) {
        case u',':
        case u'٬':
        case u'،':
        case u' ':
        case u'\u00a0':
        case u'\u200c':
        case u'\u200e':
        case u'\u200f':
            break;
        case u'٫':
        case u'/':
            plain += u'.';
            break;
        case u'\u2212': // minus sign
            plain += u'-';
            break;
        default:
            plain += c;
        }
    }
    return plain;
}

bool IsNumber(const QString &plain, int decimals, bool negative)
{
    QStringView rest(plain);
    if (negative && rest.startsWith(u'-'))
        rest = rest.mid(1);
    qsizetype digits = 0;
    qsizetype point = -1;
    for (qsizetype i = 0; i < rest.size(); ++i) {
        const char16_t c = rest[i].unicode();
        if (c >= u'0' && c <= u'9')
            ++digits;
        else if (c == u'.' && point < 0 && decimals > 0)
            point = i;
        else
            return false;
    }
    return digits > 0 && (point < 0 || rest.size() - point - 1 <= decimals);
}

QString GroupedNumber(const QString &plain)
{
    return IsNumber(plain, INT_MAX, true) ? GroupDigits(plain) : plain;
}

QString DisplayNumber(const QString &plain, bool grouped)
{
    if (!IsNumber(plain, INT_MAX, true))
        return plain;
    QString text = grouped ? GroupDigits(plain) : plain;
    text.replace(u',', u'٬').replace(u'.', u'٫');
    text = PersianDigits(text);
    // Without a mark the sign of a number in a Persian line would stand behind it.
    return text.startsWith(u'-') ? QChar(u'\u200e') + text : text;
}

QString DisplayAmount(Quantity amount)
{
    constexpr int Decimals = 4;
    const QString text = DisplayNumber(QuantityToText(amount < 0 ? -amount : amount, Decimals), false);
    // The marks keep the sign behind the number in a line from right to left, too.
    return amount < 0 && text != u"۰" ? QChar(u'\u200e') + text + u'-' + QChar(u'\u200e') : text;
}

} // namespace host
