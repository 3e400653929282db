#include "tsql/text/lexer.h"

#include "tsql/values/error.h"

#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

enum CharClass : quint8 { Other, Space, Letter, Digit };

/// Classes of the ASCII characters; the rest is asked of QChar.
constexpr std::array<quint8, 128> makeClasses()
{
    std::array<quint8, 128> classes{};
    for (const char16_t c : {u' ', u'\t', u'\r', u'\n', u'\f', u'\v'})
        classes[c] = Space;
    for (char16_t c = u'0'; c <= u'9'; ++c)
        classes[c] = Digit;
    for (char16_t c = u'a'; c <= u'z'; ++c)
        classes[c] = Letter;
    for (char16_t c = u'A'; c <= u'Z'; ++c)
        classes[c] = Letter;
    for (const char16_t c : {u'_', u'#', u'@'})
        classes[c] = Letter;
    return classes;
}

constexpr auto classes = makeClasses();

CharClass classOf(QChar c)
{
    const char16_t u = c.unicode();
    if (u < 128)
        return static_cast<CharClass>(classes[u]);
    if (c.isSpace() || u == 0x200E || u == 0x200F || u == 0xFEFF)
        return Space;
    return c.isLetter() || c.isMark() || c.isSurrogate() || u == 0x200C ? Letter : (c.isDigit() ? Digit : Other);
}

bool isDigit(QChar c)
{
    return c.unicode() >= u'0' && c.unicode() <= u'9';
}

bool isHexDigit(QChar c)
{
    const char16_t u = c.unicode() | 0x20;
    return isDigit(c) || (u >= u'a' && u <= u'f');
}

/// Cuts a text into pieces. Knows where a piece ends, not what it means.
class Scanner
{
public:
    enum class Piece : quint8 { Word, Bracketed, DoubleQuoted, Variable, Literal, Symbol, End, Bad };

    explicit Scanner(QStringView text) : m_text(text) {}

    Piece next();

    qsizetype start() const { return m_start; }
    qsizetype end() const { return m_pos; }
    LiteralKind literalKind() const { return m_literalKind; }
    Error problem(int line) const
    {
        Q_ASSERT(m_problem);
        Error error = *m_problem;
        error.setLine(line);
        return error;
    }
    QStringView text() const { return m_text.sliced(m_start, m_pos - m_start); }
    /// Writes the literal over another one whose memory it takes.
    void literal(Literal &value) const;

private:
    QChar peek(qsizetype ahead = 0) const
    {
        return m_pos + ahead < m_text.size() ? m_text[m_pos + ahead] : QChar(u'\0');
    }
    bool skipBlanks();
    bool skipBlockComment();
    Piece closed(QChar closing, Piece piece);
    Piece quotedText(LiteralKind kind);
    Piece number();
    Piece symbol();
    Piece bad(Error problem);
    void skipWord();

    QStringView m_text;
    qsizetype m_pos = 0;
    qsizetype m_start = 0;
    LiteralKind m_literalKind = LiteralKind::Integer;
    bool m_doubled = false;         ///< the quoted piece holds its own mark doubled
    std::optional<Error> m_problem; ///< of a Bad piece
};

bool Scanner::skipBlockComment()
{
    int depth = 0;
    do {
        if (m_pos >= m_text.size())
            return false;
        if (peek() == u'/' && peek(1) == u'*') {
            ++depth;
            m_pos += 2;
        } else if (peek() == u'*' && peek(1) == u'/') {
            --depth;
            m_pos += 2;
        } else {
            ++m_pos;
        }
    } while (depth > 0);
    return true;
}

bool Scanner::skipBlanks()
{
    while (m_pos < m_text.size()) {
        const QChar c = m_text[m_pos];
        if (classOf(c) == Space) {
            ++m_pos;
        } else if (c == u'-' && peek(1) == u'-') {
            while (m_pos < m_text.size() && m_text[m_pos] != u'\n')
                ++m_pos;
        } else if (c == u'/' && peek(1) == u'*') {
            if (!skipBlockComment())
                return false;
        } else {
            break;
        }
    }
    return true;
}

void Scanner::skipWord()
{
    while (m_pos < m_text.size()) {
        const QChar c = m_text[m_pos];
        const CharClass kind = classOf(c);
        if (kind != Letter && kind != Digit && c != u'$')
            break;
        ++m_pos;
    }
}

Scanner::Piece Scanner::bad(Error problem)
{
    m_problem = std::move(problem);
    return Piece::Bad;
}

Scanner::Piece Scanner::closed(QChar closing, Piece piece)
{
    m_doubled = false;
    while (m_pos < m_text.size()) {
        if (m_text[m_pos] != closing) {
            ++m_pos;
        } else if (peek(1) == closing) {
            m_doubled = true;
            m_pos += 2;
        } else {
            ++m_pos;
            // A name goes into SQLite's text as it stands, and that text would end here.
            const qsizetype end = piece == Piece::Literal ? -1 : text().indexOf(QChar(u'\0'));
            return end < 0 ? piece : bad({102, {text().first(end)}});
        }
    }
    return bad({105, {m_text.sliced(m_start + 1, qMin<qsizetype>(m_text.size() - m_start - 1, 60))}});
}

Scanner::Piece Scanner::quotedText(LiteralKind kind)
{
    m_literalKind = kind;
    m_pos += kind == LiteralKind::Unicode ? 2 : 1;
    return closed(u'\'', Piece::Literal);
}

Scanner::Piece Scanner::number()
{
    if (peek() == u'0' && (peek(1) == u'x' || peek(1) == u'X')) {
        m_pos += 2;
        while (m_pos < m_text.size() && isHexDigit(m_text[m_pos]))
            ++m_pos;
        m_literalKind = LiteralKind::Binary;
        return Piece::Literal;
    }
    m_literalKind = LiteralKind::Integer;
    while (isDigit(peek()))
        ++m_pos;
    if (peek() == u'.') {
        m_literalKind = LiteralKind::Decimal;
        ++m_pos;
        while (isDigit(peek()))
            ++m_pos;
    }
    if (peek() == u'e' || peek() == u'E') {
        const qsizetype sign = peek(1) == u'+' || peek(1) == u'-' ? 2 : 1;
        if (isDigit(peek(sign))) {
            m_literalKind = LiteralKind::Float;
            m_pos += sign;
            while (isDigit(peek()))
                ++m_pos;
        }
    }
    if (m_literalKind == LiteralKind::Integer && m_pos - m_start > 9) {
        bool fits = false;
        [[maybe_unused]] const int value = text().toInt(&fits);
        if (!fits)
            m_literalKind = LiteralKind::Decimal;
    }
    return Piece::Literal;
}

Scanner::Piece Scanner::symbol()
{
    const char16_t c = peek().unicode();
    const char16_t second = peek(1).unicode();
    const bool mayBePaired = QStringView(u"<>!+-*/%&|^").contains(c);
    if (mayBePaired &&
        (second == u'=' || (c == u'<' && second == u'>') || (c == u'!' && (second == u'<' || second == u'>')))) {
        m_pos += 2;
        return Piece::Symbol;
    }
    static constexpr QStringView singles = u"(),;.+-*/%=<>&|^~:?";
    if (!singles.contains(m_text[m_pos]))
        return bad({102, {m_text[m_pos]}});
    ++m_pos;
    return Piece::Symbol;
}

Scanner::Piece Scanner::next()
{
    m_start = m_pos;
    if (!skipBlanks())
        return bad({113});
    m_start = m_pos;
    if (m_pos >= m_text.size())
        return Piece::End;
    const QChar c = m_text[m_pos];
    switch (classOf(c)) {
    case Letter:
        if ((c == u'N' || c == u'n') && peek(1) == u'\'')
            return quotedText(LiteralKind::Unicode);
        skipWord();
        return c == u'@' ? Piece::Variable : Piece::Word;
    case Digit:
        return isDigit(c) ? number() : bad({102, {c}});
    default:
        break;
    }
    switch (c.unicode()) {
    case u'\'':
        return quotedText(LiteralKind::Text);
    case u'[':
        ++m_pos;
        return closed(u']', Piece::Bracketed);
    case u'"':
        ++m_pos;
        return closed(u'"', Piece::DoubleQuoted);
    case u'.':
        return isDigit(peek(1)) ? number() : symbol();
    default:
        return symbol();
    }
}

void Scanner::literal(Literal &value) const
{
    const auto assign = [&value](QStringView text) {
        value.text.resize(0);
        value.text.append(text);
    };
    value.kind = m_literalKind;
    value.integer = 0;
    switch (m_literalKind) {
    case LiteralKind::Text:
    case LiteralKind::Unicode: {
        const qsizetype from = m_start + (m_literalKind == LiteralKind::Unicode ? 2 : 1);
        assign(m_text.sliced(from, m_pos - 1 - from));
        if (m_doubled)
            value.text.replace(QLatin1String("''"), QLatin1String("'"));
        break;
    }
    case LiteralKind::Integer:
        for (const QChar digit : text())
            value.integer = value.integer * 10 + (digit.unicode() - u'0');
        assign(text());
        break;
    default:
        assign(text());
        break;
    }
}

QString unquoted(QStringView piece, QChar closing)
{
    QString name = piece.sliced(1, piece.size() - 2).toString();
    name.replace(QString(2, closing), QString(closing));
    return name;
}

int countLines(QStringView text)
{
    return static_cast<int>(text.count(u'\n'));
}

} // namespace

Tokens tokenize(QStringView text)
{
    Tokens result;
    Scanner scanner(text);
    int line = 1;
    qsizetype counted = 0;
    for (;;) {
        const Scanner::Piece piece = scanner.next();
        line += countLines(text.sliced(counted, scanner.start() - counted));
        counted = scanner.start();
        Token token;
        token.line = line;
        token.offset = scanner.start();
        token.end = scanner.end();
        token.text = scanner.text().toString();
        switch (piece) {
        case Scanner::Piece::Bad:
            throw scanner.problem(line);
        case Scanner::Piece::End:
            token.kind = TokenKind::End;
            result.tokens.push_back(std::move(token));
            return result;
        case Scanner::Piece::Word:
            token.kind = TokenKind::Word;
            break;
        case Scanner::Piece::Variable:
            token.kind = TokenKind::Variable;
            break;
        case Scanner::Piece::Symbol:
            token.kind = TokenKind::Symbol;
            break;
        case Scanner::Piece::Bracketed:
        case Scanner::Piece::DoubleQuoted:
            token.kind = TokenKind::Quoted;
            token.text = unquoted(scanner.text(), piece == Scanner::Piece::Bracketed ? u']' : u'"');
            break;
        case Scanner::Piece::Literal:
            token.kind = TokenKind::Literal;
            token.literal = static_cast<int>(result.literals.size());
            scanner.literal(result.literals.emplace_back());
            break;
        }
        result.tokens.push_back(std::move(token));
    }
}

void scannedShape(QStringView text, Shape &into)
{
    into.key.resize(0);
    into.key.reserve(text.size());
    std::size_t count = 0;
    Scanner scanner(text);
    qsizetype copied = 0;
    for (;;) {
        const Scanner::Piece piece = scanner.next();
        if (piece == Scanner::Piece::Bad) {
            into.key.clear();
            return;
        }
        if (piece == Scanner::Piece::End) {
            into.key.append(text.sliced(copied));
            into.literals.resize(count);
            return;
        }
        if (piece != Scanner::Piece::Literal)
            continue;
        into.key.append(text.sliced(copied, scanner.start() - copied));
        into.key.append(QChar(literalMark(scanner.literalKind())));
        copied = scanner.end();
        if (into.literals.size() == count)
            into.literals.emplace_back();
        scanner.literal(into.literals[count++]);
    }
}

std::vector<ScriptBatch> splitScript(QStringView script)
{
    std::vector<ScriptBatch> batches;
    Scanner scanner(script);
    qsizetype batchStart = 0;
    int firstLine = 1;
    const auto close = [&](qsizetype until) {
        const QStringView body = script.sliced(batchStart, until - batchStart);
        if (!body.trimmed().isEmpty())
            batches.push_back({body.toString(), firstLine});
    };
    for (;;) {
        const Scanner::Piece piece = scanner.next();
        if (piece == Scanner::Piece::End || piece == Scanner::Piece::Bad)
            break;
        if (piece != Scanner::Piece::Word || scanner.text().compare(u"GO", Qt::CaseInsensitive) != 0)
            continue;
        const qsizetype lineStart = script.lastIndexOf(u'\n', scanner.start()) + 1;
        const qsizetype newline = script.indexOf(u'\n', scanner.end());
        const qsizetype lineEnd = newline < 0 ? script.size() : newline;
        if (script.sliced(lineStart, lineEnd - lineStart).trimmed().size() != 2)
            continue;
        close(lineStart);
        const qsizetype next = qMin(lineEnd + 1, script.size());
        firstLine += countLines(script.sliced(batchStart, next - batchStart));
        batchStart = next;
    }
    close(script.size());
    return batches;
}

} // namespace tsql
