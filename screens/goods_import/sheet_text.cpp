#include "screens/goods_import/sheet_text.h"

#include <QScopeGuard>
#include <QStringDecoder>

#include <algorithm>
#include <cerrno>
#include <iconv.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace goods_import {

namespace {

constexpr int LinesLookedAt = 20;
constexpr int LongestCharacter = 4; ///< bytes of UTF-8

[[noreturn]] void Refuse(const QString &why)
{
    throw std::runtime_error(why.toStdString());
}

const QString Truncated =
    u"متن فایل نیمه‌کاره است: آخرین حرف آن کامل نیست. فایل را دوباره بگیرید."_s;

std::optional<QString> Decoded(QByteArrayView bytes, QStringConverter::Encoding encoding)
{
    QStringDecoder decoder(encoding, QStringConverter::Flag::Stateless);
    QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

QString Utf16(QByteArrayView bytes, QStringConverter::Encoding encoding)
{
    if (bytes.size() % 2 != 0)
        Refuse(Truncated);
    const auto text = Decoded(bytes, encoding);
    if (!text)
        Refuse(Truncated);
    return *text;
}

/// Qt knows no code page of Windows by name.
QString Windows1256(QByteArrayView bytes)
{
    const iconv_t converter = iconv_open("UTF-16LE", "CP1256");
    if (converter == iconv_t(-1)) // NOLINT(performance-no-int-to-ptr): so says its interface
        Refuse(u"این سیستم کدبندی Windows-1256 را نمی‌شناسد."_s);
    const auto close = qScopeGuard([converter] { iconv_close(converter); });
    QString text(bytes.size(), Qt::Uninitialized); // a byte is a character
    // iconv takes what it only reads as if it wrote there.
    char *from = const_cast<char *>(bytes.data()); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    auto *to = reinterpret_cast<char *>(text.data());
    auto fromLeft = static_cast<size_t>(bytes.size());
    size_t toLeft = fromLeft * sizeof(char16_t);
    if (iconv(converter, &from, &fromLeft, &to, &toLeft) == size_t(-1))
        Refuse(u"کدبندی فایل شناخته نشد."_s);
    text.chop(static_cast<qsizetype>(toLeft / sizeof(char16_t)));
    return text;
}

/// Text of bytes without a mark.
QString Guessed(const QByteArray &bytes)
{
    if (bytes.contains('\0')) {
        qsizetype low = 0;
        for (qsizetype i = 0; i < bytes.size(); ++i)
            if (bytes.at(i) == 0)
                low += i % 2 == 0 ? -1 : 1;
        return Utf16(bytes, low > 0 ? QStringConverter::Utf16LE : QStringConverter::Utf16BE);
    }
    if (const auto text = Decoded(bytes, QStringConverter::Utf8))
        return *text;
    for (int missing = 1; missing < LongestCharacter && missing < bytes.size(); ++missing) {
        const auto text = Decoded(QByteArrayView(bytes).chopped(missing), QStringConverter::Utf8);
        if (text && text->size() < bytes.size() - missing) // not ASCII alone
            Refuse(Truncated);
    }
    return Windows1256(bytes);
}

// Cells --------------------------------------------------------------------------------------------------------------

/// How often each candidate stands outside quotes in the first lines; the one that every line has wins.
QChar SeparatorOf(QStringView text)
{
    constexpr char16_t Candidates[] = {u'\t', u';', u',', u'|'};
    std::array<int, std::size(Candidates)> least{};
    std::array<int, std::size(Candidates)> now{};
    int lines = 0;
    bool quoted = false;
    bool empty = true;
    const auto endLine = [&] {
        for (size_t i = 0; !empty && i < now.size(); ++i)
            least[i] = lines == 0 ? now[i] : std::min(least[i], now[i]);
        lines += !empty;
        now = {};
        empty = true;
    };
    for (const QChar c : text) {
        if (c == u'\n' && !quoted) {
            endLine();
            if (lines == LinesLookedAt)
                break;
            continue;
        }
        empty = empty && c.isSpace() && c != u'\t';
        quoted = quoted != (c == u'"');
        for (size_t i = 0; !quoted && i < now.size(); ++i)
            now[i] += c == Candidates[i];
    }
    if (lines < LinesLookedAt)
        endLine();
    const auto most = std::max_element(least.cbegin(), least.cend());
    return *most == 0 ? u',' : Candidates[most - least.cbegin()];
}

class Parser
{
public:
    Parser(QStringView text, QChar separator) : m_text(text), m_separator(separator) {}

    goods::ImportTable Run()
    {
        while (m_at < m_text.size()) {
            if (m_text[m_at] == u'"')
                QuotedCell();
            else
                PlainCell();
            EndCell();
        }
        return std::move(m_table);
    }

private:
    bool AtEnd() const { return m_at >= m_text.size(); }
    bool AtLineEnd() const { return m_text[m_at] == u'\n' || m_text[m_at] == u'\r'; }

    void PlainCell()
    {
        const qsizetype begin = m_at;
        while (!AtEnd() && m_text[m_at] != m_separator && !AtLineEnd())
            ++m_at;
        m_cell += m_text.sliced(begin, m_at - begin);
    }

    void QuotedCell()
    {
        const int line = m_table.RowCount() + 1;
        for (++m_at;; ++m_at) {
            if (AtEnd())
                Refuse(
                    u"فایل نیمه‌کاره یا خراب است: گیومه‌ای که در ردیف %1 باز شده بسته نمی‌شود."_s
                        .arg(line));
            if (m_text[m_at] != u'"') {
                m_cell += m_text[m_at];
                continue;
            }
            if (m_at + 1 >= m_text.size() || m_text[m_at + 1] != u'"')
                break;
            m_cell += m_text[m_at++];
        }
        ++m_at;
        PlainCell(); // what stands behind the quotes belongs to the cell
    }

    void EndCell()
    {
        m_table.AddCell(m_cell);
        m_cell.clear();
        if (AtEnd() || AtLineEnd()) {
            if (!AtEnd() && m_text[m_at] == u'\r' && m_at + 1 < m_text.size() && m_text[m_at + 1] == u'\n')
                ++m_at;
            m_table.EndRow();
        } else if (m_at + 1 == m_text.size()) { // the separator ends the text: an empty cell follows
            m_table.AddCell({});
            m_table.EndRow();
        }
        ++m_at;
    }

    QStringView m_text;
    QChar m_separator;
    qsizetype m_at = 0;
    QString m_cell;
    goods::ImportTable m_table;
};

} // namespace

QString DecodeText(const QByteArray &bytes)
{
    QString text;
    if (bytes.startsWith("\xEF\xBB\xBF")) {
        const auto decoded = Decoded(QByteArrayView(bytes).sliced(3), QStringConverter::Utf8);
        if (!decoded)
            Refuse(Truncated);
        text = *decoded;
    } else if (bytes.startsWith("\xFF\xFE")) {
        text = Utf16(QByteArrayView(bytes).sliced(2), QStringConverter::Utf16LE);
    } else if (bytes.startsWith("\xFE\xFF")) {
        text = Utf16(QByteArrayView(bytes).sliced(2), QStringConverter::Utf16BE);
    } else {
        text = Guessed(bytes);
    }
    const bool binary = std::any_of(text.cbegin(), text.cend(), [](QChar c) {
        return c < u' ' && c != u'\t' && c != u'\n' && c != u'\r' && c != u'\f' && c != u'\x1A';
    });
    if (binary)
        Refuse(u"این فایل متن نیست. فایل CSV، XLSX یا ODS انتخاب کنید."_s);
    return text;
}

goods::ImportTable ReadSeparated(const QString &text)
{
    QStringView rest(text);
    // A sheet may say in its first line what separates.
    if (rest.startsWith(u"sep=", Qt::CaseInsensitive) && rest.size() > 5 && (rest[5] == u'\r' || rest[5] == u'\n')) {
        const QChar separator = rest[4];
        return Parser(rest.sliced(rest.indexOf(u'\n') + 1), separator).Run();
    }
    return Parser(rest, SeparatorOf(rest)).Run();
}

} // namespace goods_import
