#include "tsql/text/lexer.h"

#include "tsql/values/error.h"

#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

enum CharClass : quint8 { Other, Space, Letter, Digit };

/// Classes of the ASCII characters; the rest is asked of QChar.
constexpr std::array<quint8, 128> MakeClasses()
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

constexpr auto classes = MakeClasses();

CharClass ClassOf(QChar c)
{
    const char16_t u = c.unicode();
    if (u < 128)
        return static_cast<CharClass>(classes[u]);
    if (c.isSpace() || u == 0x200E || u == 0x200F || u == 0xFEFF)
        return Space;
    return c.isLetter() || c.isMark() || c.isSurrogate() || u == 0x200C ? Letter : (c.isDigit() ? Digit : Other);
}

bool IsDigit(QChar c)
{
    return c.unicode() >= u'0' && c.unicode() <= u'9';
}

bool IsHexDigit(QChar c)
{
    const char16_t u = c.unicode() | 0x20;
    return IsDigit(c) || (u >= u'a' && u <= u'f');
}

/// Cuts a text into pieces. Knows where a piece ends, not what it means.
class Scanner
{
public:
    enum class Piece : quint8 { Word, Bracketed, DoubleQuoted, Variable, Literal, Symbol, End, Bad };

    explicit Scanner(QStringView text) : m_text(text) {}

    Piece NextPiece();

    qsizetype Start() const { return m_start; }
    qsizetype end() const { return m_pos; }
    LiteralKind KindOfLiteral() const { return m_literalKind; }
    Error Problem(int line) const
    {
        Q_ASSERT(m_problem);
        Error error = *m_problem;
        error.setLine(line);
        return error;
    }
    QStringView text() const { return m_text.sliced(m_start, m_pos - m_start); }
    /// Writes the literal over another one whose memory it takes.
    void ReadLiteral(Literal &value) const;

private:
    QChar Peek(qsizetype ahead = 0) const
    {
        return m_pos + ahead < m_text.size() ? m_text[m_pos + ahead] : QChar(u'\0');
    }
    bool SkipBlanks();
    bool SkipBlockComment();
    Piece Closed(QChar closing, Piece piece);
    Piece QuotedText(LiteralKind kind);
    Piece Number();
    Piece ReadSymbol();
    Piece BadPiece(Error problem);
    void SkipWord();

    QStringView m_text;
    qsizetype m_pos = 0;
    qsizetype m_start = 0;
    LiteralKind m_literalKind = LiteralKind::Integer;
    bool m_doubled = false;         ///< the quoted piece holds its own mark doubled
    std::optional<Error> m_problem; ///< of a Bad piece
};

bool Scanner::SkipBlockComment()
{
    int depth = 0;
    do {
        if (m_pos >= m_text.size())
            return false;
        if (Peek() == u'/' && Peek(1) == u'*') {
            ++depth;
            m_pos += 2;
        } else if (Peek() == u'*' && Peek(1) == u'/') {
            --depth;
            m_pos += 2;
        } else {
            ++m_pos;
        }
    } while (depth > 0);
    return true;
}

bool Scanner::SkipBlanks()
{
    while (m_pos < m_text.size()) {
        const QChar c = m_text[m_pos];
        if (ClassOf(c) == Space) {
            ++m_pos;
        } else if (c == u'-' && Peek(1) == u'-') {
            while (m_pos < m_text.size() && m_text[m_pos] != u'\n')
                ++m_pos;
        } else if (c == u'/' && Peek(1) == u'*') {
            if (!SkipBlockComment())
                return false;
        } else {
            break;
        }
    }
    return true;
}

void Scanner::SkipWord()
{
    while (m_pos < m_text.size()) {
        const QChar c = m_text[m_pos];
        const CharClass kind = ClassOf(c);
        if (kind != Letter && kind != Digit && c != u'$')
            break;
        ++m_pos;
    }
}

Scanner::Piece Scanner::BadPiece(Error problem)
{
    m_problem = std::move(problem);
    return Piece::Bad;
}

Scanner::Piece Scanner::Closed(QChar closing, Piece piece)
{
    m_doubled = false;
    while (m_pos < m_text.size()) {
        if (m_text[m_pos] != closing) {
            ++m_pos;
        } else if (Peek(1) == closing) {
            m_doubled = true;
            m_pos += 2;
        } else {
            ++m_pos;
            // A name goes into SQLite's text as it stands, and that text would end here.
            const qsizetype end = piece == Piece::Literal ? -1 : text().indexOf(QChar(u'\0'));
            return end < 0 ? piece : BadPiece({102, {text().first(end)}});
        }
    }
    return BadPiece({105, {m_text.sliced(m_start + 1, qMin<qsizetype>(m_text.size() - m_start - 1, 60))}});
}

Scanner::Piece Scanner::QuotedText(LiteralKind kind)
{
    m_literalKind = kind;
    m_pos += kind == LiteralKind::Unicode ? 2 : 1;
    return Closed(u'\'', Piece::Literal);
}

Scanner::Piece Scanner::Number()
{
    if (Peek() == u'0' && (Peek(1) == u'x' || Peek(1) == u'X')) {
        m_pos += 2;
        while (m_pos < m_text.size() && IsHexDigit(m_text[m_pos]))
            ++m_pos;
        m_literalKind = LiteralKind::Binary;
        return Piece::Literal;
    }
    m_literalKind = LiteralKind::Integer;
    while (IsDigit(Peek()))
        ++m_pos;
    if (Peek() == u'.') {
        m_literalKind = LiteralKind::Decimal;
        ++m_pos;
        while (IsDigit(Peek()))
            ++m_pos;
    }
    if (Peek() == u'e' || Peek() == u'E') {
        const qsizetype sign = Peek(1) == u'+' || Peek(1) == u'-' ? 2 : 1;
        if (IsDigit(Peek(sign))) {
            m_literalKind = LiteralKind::Float;
            m_pos += sign;
            while (IsDigit(Peek()))
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

Scanner::Piece Scanner::ReadSymbol()
{
    const char16_t c = Peek().unicode();
    const char16_t second = Peek(1).unicode();
    const bool mayBePaired = QStringView(u"<>!+-*/%&|^").contains(c);
    if (mayBePaired &&
        (second == u'=' || (c == u'<' && second == u'>') || (c == u'!' && (second == u'<' || second == u'>')))) {
        m_pos += 2;
        return Piece::Symbol;
    }
    static constexpr QStringView singles = u"(),;.+-*/%=<>&|^~:?";
    if (!singles.contains(m_text[m_pos]))
        return BadPiece({102, {m_text[m_pos]}});
    ++m_pos;
    return Piece::Symbol;
}

Scanner::Piece Scanner::NextPiece()
{
    m_start = m_pos;
    if (!SkipBlanks())
        return BadPiece({113});
    m_start = m_pos;
    if (m_pos >= m_text.size())
        return Piece::End;
    const QChar c = m_text[m_pos];
    switch (ClassOf(c)) {
    case Letter:
        if ((c == u'N' || c == u'n') && Peek(1) == u'\'')
            return QuotedText(LiteralKind::Unicode);
        SkipWord();
        return c == u'@' ? Piece::Variable : Piece::Word;
    case Digit:
        return IsDigit(c) ? Number() : BadPiece({102, {c}});
    default:
        break;
    }
    switch (c.unicode()) {
    case u'\'':
        return QuotedText(LiteralKind::Text);
    case u'[':
        ++m_pos;
        return Closed(u']', Piece::Bracketed);
    case u'"':
        ++m_pos;
        return Closed(u'"', Piece::DoubleQuoted);
    case u'.':
        return IsDigit(Peek(1)) ? Number() : ReadSymbol();
    default:
        return ReadSymbol();
    }
}

void Scanner::ReadLiteral(Literal &value) const
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

QString Unquoted(QStringView piece, QChar closing)
{
    QString name = piece.sliced(1, piece.size() - 2).toString();
    name.replace(QString(2, closing), QString(closing));
    return name;
}

int CountLines(QStringView text)
{
    return static_cast<int>(text.count(u'\n'));
}

} // namespace

Tokens Tokenize(QStringView text)
{
    Tokens result;
    Scanner scanner(text);
    int line = 1;
    qsizetype counted = 0;
    for (;;) {
        const Scanner::Piece piece = scanner.NextPiece();
        line += CountLines(text.sliced(counted, scanner.Start() - counted));
        counted = scanner.Start();
        Token token;
        token.line = line;
        token.offset = scanner.Start();
        token.end = scanner.end();
        token.text = scanner.text().toString();
        switch (piece) {
        case Scanner::Piece::Bad:
            throw scanner.Problem(line);
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
            token.text = Unquoted(scanner.text(), piece == Scanner::Piece::Bracketed ? u']' : u'"');
            break;
        case Scanner::Piece::Literal:
            token.kind = TokenKind::Literal;
            token.literal = static_cast<int>(result.literals.size());
            scanner.ReadLiteral(result.literals.emplace_back());
            break;
        }
        result.tokens.push_back(std::move(token));
    }
}

void ScannedShape(QStringView text, Shape &into)
{
    into.key.resize(0);
    into.key.reserve(text.size());
    std::size_t count = 0;
    Scanner scanner(text);
    qsizetype copied = 0;
    for (;;) {
        const Scanner::Piece piece = scanner.NextPiece();
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
        into.key.append(text.sliced(copied, scanner.Start() - copied));
        into.key.append(QChar(LiteralMark(scanner.KindOfLiteral())));
        copied = scanner.end();
        if (into.literals.size() == count)
            into.literals.emplace_back();
        scanner.ReadLiteral(into.literals[count++]);
    }
}

std::vector<ScriptBatch> SplitScript(QStringView script)
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
        const Scanner::Piece piece = scanner.NextPiece();
        if (piece == Scanner::Piece::End || piece == Scanner::Piece::Bad)
            break;
        if (piece != Scanner::Piece::Word || scanner.text().compare(u"GO", Qt::CaseInsensitive) != 0)
            continue;
        const qsizetype lineStart = script.lastIndexOf(u'\n', scanner.Start()) + 1;
        const qsizetype newline = script.indexOf(u'\n', scanner.end());
        const qsizetype lineEnd = newline < 0 ? script.size() : newline;
        if (script.sliced(lineStart, lineEnd - lineStart).trimmed().size() != 2)
            continue;
        close(lineStart);
        const qsizetype next = qMin(lineEnd + 1, script.size());
        firstLine += CountLines(script.sliced(batchStart, next - batchStart));
        batchStart = next;
    }
    close(script.size());
    return batches;
}

} // namespace tsql
