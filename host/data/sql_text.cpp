#include "host/data/sql_text.h"

#include "host/data/persian_text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

bool IsDigits(QStringView text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool IsNameCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c == u'@' || c == u'#' || c == u'$';
}

/// Where the quoted text that begins at `start` ends (behind its closing quote).
qsizetype EndOfQuoted(QStringView text, qsizetype start)
{
    qsizetype i = start + 1;
    while (i < text.size()) {
        if (text[i] == u'\'') {
            if (i + 1 >= text.size() || text[i + 1] != u'\'') {
                return i + 1;
            }
            ++i;
        }
        ++i;
    }
    return text.size();
}

QStringView ParamName(QStringView item)
{
    return item.left(std::max<qsizetype>(item.indexOf(u'='), 0)).trimmed();
}

} // namespace

RefusedText::RefusedText(const QString &what, const QString &value)
    : std::invalid_argument(what.toStdString()), m_expected(what), m_value(value)
{}

QString RefusedText::Text() const
{
    return u"مقدار «%1» پذیرفته نیست؛ %2 لازم است."_s.arg(m_value, m_expected);
}

QString QuotedStr(QStringView text)
{
    QString quoted;
    quoted.reserve(text.size() + 2);
    quoted += u'\'';
    for (const QChar c : WholeCharacters(text)) {
        quoted += c;
        if (c == u'\'') {
            quoted += c;
        }
    }
    quoted += u'\'';
    return quoted;
}

QString NQuotedStr(QStringView text)
{
    return u'N' + QuotedStr(text);
}

QString LikeText(QStringView text)
{
    QString pattern;
    for (const QChar c : text) {
        if (c == u'%' || c == u'_' || c == u'[') {
            pattern += u'[';
            pattern += c;
            pattern += u']';
        } else {
            pattern += c;
        }
    }
    return pattern;
}

QString DecimalLiteral(Quantity value)
{
    return QuantityToText(value);
}

QString DecimalLiteral(QStringView text)
{
    QStringView digits = text.startsWith(u'-') ? text.mid(1) : text;
    const qsizetype point = digits.indexOf(u'.');
    const bool plain = point < 0 ? IsDigits(digits) : IsDigits(digits.left(point)) && IsDigits(digits.mid(point + 1));
    if (!plain) {
        throw RefusedText(u"عدد"_s, text.toString());
    }
    return text.toString();
}

QString CodeText(QStringView code)
{
    if (!IsDigits(code)) {
        throw RefusedText(u"کد عددی"_s, code.toString());
    }
    return code.toString();
}

QString CodeList(QStringView codes)
{
    QString list;
    for (const QStringView code : codes.split(u',', Qt::SkipEmptyParts)) {
        if (!IsDigits(code)) {
            throw RefusedText(u"فهرست کدهای عددی"_s, codes.toString());
        }
        if (!list.isEmpty()) {
            list += u',';
        }
        list += code;
    }
    return list.isEmpty() ? u"0"_s : list;
}

QList<int> Codes(QStringView codes)
{
    QList<int> list;
    for (const QStringView code : codes.split(u',', Qt::SkipEmptyParts)) {
        bool ok = IsDigits(code);
        list += ok ? code.toInt(&ok) : 0;
        if (!ok) {
            throw RefusedText(u"فهرست کدهای عددی"_s, codes.toString());
        }
    }
    return list;
}

QString ADDParam(const QString &params, QStringView item)
{
    if (item.trimmed().isEmpty()) {
        return params;
    }
    return params.trimmed().isEmpty() ? item.toString() : params + u',' + item.toString();
}

QString ADDParam(const QString &params, QStringView name, QStringView value)
{
    return ADDParam(params, QStringView(name.toString() + QLatin1String(" = ") + value.toString()));
}

QStringList SplitParams(QStringView params)
{
    QStringList items;
    qsizetype begin = 0;
    int depth = 0;
    const auto take = [&](qsizetype end) {
        const QStringView item = params.mid(begin, end - begin).trimmed();
        if (!item.isEmpty()) {
            items += item.toString();
        }
        begin = end + 1;
    };
    for (qsizetype i = 0; i < params.size(); ++i) {
        const QChar c = params[i];
        if (c == u'\'') {
            i = EndOfQuoted(params, i) - 1;
        } else if (c == u'(') {
            ++depth;
        } else if (c == u')') {
            --depth;
        } else if (c == u',' && depth <= 0) {
            take(i);
        }
    }
    take(params.size());
    return items;
}

QString DeleteParam(const QString &params, QStringView name)
{
    QStringList items = SplitParams(params);
    items.removeIf([name](const QString &item) { return ParamName(item).compare(name, Qt::CaseInsensitive) == 0; });
    return items.join(u',');
}

QString MaskLiterals(QStringView statement)
{
    QString masked;
    masked.reserve(statement.size());
    qsizetype i = 0;
    while (i < statement.size()) {
        const QChar c = statement[i];
        if (c == u'\'') {
            i = EndOfQuoted(statement, i);
            masked += u'?';
        } else if (IsNameCharacter(c)) {
            const qsizetype begin = i;
            while (i < statement.size() && (IsNameCharacter(statement[i]) || (c.isDigit() && statement[i] == u'.'))) {
                ++i;
            }
            masked += c.isDigit() ? QStringView(u"?") : statement.mid(begin, i - begin);
        } else {
            masked += c;
            ++i;
        }
    }
    return masked;
}

} // namespace host
