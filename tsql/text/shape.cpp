// The statement cache's key, in one pass over the text: this runs for every statement that is executed.

#include "tsql/text/lexer.h"

#include <array>
#include <cstring>

namespace tsql {

namespace {

enum class Mark : quint8 { Slow, Plain, Word, Dollar, Digit, Quote, Bracket, DoubleQuote, Minus, Slash, Point };

constexpr std::array<Mark, 128> MakeMarks()
{
    std::array<Mark, 128> marks{};
    for (const char c :
         {' ', '\t', '\r', '\n', '(', ')', ',', ';', '+', '*', '%', '=', '<', '>', '&', '|', '^', '~', ':', '?', '!'})
        marks[static_cast<unsigned char>(c)] = Mark::Plain;
    for (char c = 'a'; c <= 'z'; ++c)
        marks[static_cast<unsigned char>(c)] = Mark::Word;
    for (char c = 'A'; c <= 'Z'; ++c)
        marks[static_cast<unsigned char>(c)] = Mark::Word;
    for (const char c : {'_', '#', '@'})
        marks[static_cast<unsigned char>(c)] = Mark::Word;
    for (char c = '0'; c <= '9'; ++c)
        marks[static_cast<unsigned char>(c)] = Mark::Digit;
    marks['$'] = Mark::Dollar;
    marks['\''] = Mark::Quote;
    marks['['] = Mark::Bracket;
    marks['"'] = Mark::DoubleQuote;
    marks['-'] = Mark::Minus;
    marks['/'] = Mark::Slash;
    marks['.'] = Mark::Point;
    return marks;
}

constexpr auto marks = MakeMarks();

Mark MarkOf(char16_t c)
{
    return c < 128 ? marks[c] : Mark::Slow;
}

/// Walks a text of plain pieces; what stands between two literals goes into the key as one run. What needs a second
/// look (comments, exponents, letters beyond ASCII outside of quotes, a point that begins a number) makes it give up:
/// the scanner takes over then.
class ShapeWriter
{
public:
    ShapeWriter(QStringView text, Shape &shape)
        : m_shape(shape), m_start(text.utf16()), m_run(m_start), m_end(m_start + text.size()),
          m_out(reinterpret_cast<char16_t *>(shape.key.data()))
    {}

    bool Write()
    {
        const char16_t *at = m_start;
        while (at != nullptr && at < m_end) {
            const Mark mark = MarkOf(*at);
            if (mark == Mark::Plain || mark == Mark::Word)
                ++at;
            else
                at = PieceAt(mark, at);
        }
        if (at == nullptr)
            return false;
        CloseRun(m_end);
        return true;
    }

    const char16_t *Out() const { return m_out; }
    std::size_t Literals() const { return m_count; }

private:
    char16_t Following(const char16_t *at) const { return at + 1 < m_end ? at[1] : u'\0'; }
    /// Whether a word reaches up to `at`: a literal ends neither in a letter nor, followed by one, in a digit.
    bool InWord(const char16_t *at) const
    {
        const Mark before = at > m_run ? MarkOf(at[-1]) : Mark::Plain;
        return before == Mark::Word || before == Mark::Digit || before == Mark::Dollar;
    }
    static const char16_t *Unless(bool slow, const char16_t *next) { return slow ? nullptr : next; }

    /// The end of what begins at `at`; null to give up.
    const char16_t *PieceAt(Mark mark, const char16_t *at)
    {
        switch (mark) {
        case Mark::Digit:
            return InWord(at) ? at + 1 : Number(at);
        case Mark::Quote:
            return text(at);
        case Mark::Bracket:
            return QuotedName(at, u']');
        case Mark::DoubleQuote:
            return QuotedName(at, u'"');
        case Mark::Dollar:
            return Unless(!InWord(at), at + 1);
        case Mark::Minus:
            return Unless(Following(at) == u'-', at + 1);
        case Mark::Slash:
            return Unless(Following(at) == u'*', at + 1);
        case Mark::Point: // between two names it is only a point
            return Unless(MarkOf(Following(at)) == Mark::Digit, at + 1);
        default:
            return nullptr;
        }
    }

    const char16_t *Number(const char16_t *from)
    {
        const char16_t *at = from;
        qint64 value = 0;
        for (; at < m_end && MarkOf(*at) == Mark::Digit && at - from < 10; ++at)
            value = value * 10 + (*at - u'0');
        LiteralKind kind = LiteralKind::Integer;
        if (at - from > 9)
            return nullptr;
        if (at < m_end && *at == u'.') {
            kind = LiteralKind::Decimal;
            value = 0;
            ++at;
            while (at < m_end && MarkOf(*at) == Mark::Digit)
                ++at;
        }
        const Mark after = at < m_end ? MarkOf(*at) : Mark::Plain;
        if (after == Mark::Slow || after == Mark::Word || after == Mark::Dollar)
            return nullptr;
        CloseRun(from);
        Add(kind, from, at).integer = value;
        m_run = at;
        return at;
    }

    const char16_t *text(const char16_t *quote)
    {
        const bool unicode = quote > m_run && (quote[-1] == u'N' || quote[-1] == u'n') && !InWord(quote - 1);
        const char16_t *from = quote + 1;
        const char16_t *at = from;
        bool doubled = false;
        for (; at < m_end; ++at) {
            if (*at != u'\'')
                continue;
            if (Following(at) != u'\'')
                break;
            doubled = true;
            ++at;
        }
        if (at >= m_end)
            return nullptr;
        CloseRun(unicode ? quote - 1 : quote);
        Literal &literal = Add(unicode ? LiteralKind::Unicode : LiteralKind::Text, from, at);
        literal.integer = 0;
        if (doubled)
            literal.text.replace(QLatin1String("''"), QLatin1String("'"));
        m_run = at + 1;
        return m_run;
    }

    const char16_t *QuotedName(const char16_t *at, char16_t closing) const
    {
        do {
            if (++at >= m_end)
                return nullptr;
        } while (*at != closing);
        return at + 1;
    }

    void CloseRun(const char16_t *to)
    {
        const auto length = static_cast<std::size_t>(to - m_run);
        std::memcpy(m_out, m_run, length * sizeof(char16_t));
        m_out += length;
    }

    Literal &Add(LiteralKind kind, const char16_t *from, const char16_t *to)
    {
        *m_out++ = LiteralMark(kind);
        if (m_shape.literals.size() == m_count)
            m_shape.literals.emplace_back();
        Literal &literal = m_shape.literals[m_count++];
        literal.kind = kind;
        literal.text.resize(to - from);
        std::memcpy(static_cast<void *>(literal.text.data()), from,
                    static_cast<std::size_t>(to - from) * sizeof(char16_t));
        return literal;
    }

    Shape &m_shape;
    const char16_t *const m_start;
    const char16_t *m_run; ///< what is not in the key yet begins here
    const char16_t *const m_end;
    char16_t *m_out;
    std::size_t m_count = 0;
};

} // namespace

void TakeShape(QStringView text, Shape &into)
{
    into.key.resize(text.size());
    ShapeWriter writer(text, into);
    if (!writer.Write()) {
        ScannedShape(text, into);
        return;
    }
    into.key.resize(writer.Out() - reinterpret_cast<const char16_t *>(into.key.constData()));
    into.literals.resize(writer.Literals());
}

} // namespace tsql
