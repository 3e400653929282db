// The statement cache's key, in one pass over the text: this runs for every statement that is executed.

#include "tsql/lexer.h"

#include <array>
#include <cstring>

namespace tsql {

namespace {

enum class Mark : quint8 { Slow, Plain, Word, Digit, Quote, Bracket, DoubleQuote, Minus, Slash };

constexpr std::array<Mark, 128> makeMarks()
{
    std::array<Mark, 128> marks{};
    for (const char c :
         {' ', '\t', '\r', '\n', '(', ')', ',', ';', '+', '*', '%', '=', '<', '>', '&', '|', '^', '~', ':', '?', '!'})
        marks[static_cast<unsigned char>(c)] = Mark::Plain;
    for (char c = 'a'; c <= 'z'; ++c)
        marks[static_cast<unsigned char>(c)] = Mark::Word;
    for (char c = 'A'; c <= 'Z'; ++c)
        marks[static_cast<unsigned char>(c)] = Mark::Word;
    for (const char c : {'_', '#', '@', '$'})
        marks[static_cast<unsigned char>(c)] = Mark::Word;
    for (char c = '0'; c <= '9'; ++c)
        marks[static_cast<unsigned char>(c)] = Mark::Digit;
    marks['\''] = Mark::Quote;
    marks['['] = Mark::Bracket;
    marks['"'] = Mark::DoubleQuote;
    marks['-'] = Mark::Minus;
    marks['/'] = Mark::Slash;
    return marks;
}

constexpr auto marks = makeMarks();

/// Walks a text of plain pieces. What needs a second look (comments, exponents, letters beyond ASCII outside of
/// quotes, a point that begins a number) makes it give up: the scanner takes over then.
class ShapeWriter
{
public:
    ShapeWriter(QStringView text, Shape &shape)
        : m_shape(shape), m_at(text.utf16()), m_end(m_at + text.size()),
          m_out(reinterpret_cast<char16_t *>(shape.key.data()))
    {}

    bool write()
    {
        while (m_at < m_end) {
            if (!piece())
                return false;
        }
        return true;
    }

    const char16_t *out() const { return m_out; }
    std::size_t literals() const { return m_count; }

private:
    static Mark markOf(char16_t c) { return c < 128 ? marks[c] : Mark::Slow; }
    char16_t next() const { return m_at + 1 < m_end ? m_at[1] : u'\0'; }
    void copy() { *m_out++ = *m_at++; }

    bool piece()
    {
        switch (markOf(*m_at)) {
        case Mark::Plain:
            copy();
            return true;
        case Mark::Word:
            return word();
        case Mark::Digit:
            return number();
        case Mark::Quote:
            return text(LiteralKind::Text);
        case Mark::Bracket:
            return quotedName(u']');
        case Mark::DoubleQuote:
            return quotedName(u'"');
        case Mark::Minus:
            return next() != u'-' && (copy(), true);
        case Mark::Slash:
            return next() != u'*' && (copy(), true);
        case Mark::Slow:
            break;
        }
        // Between two names a point is only a point.
        const bool qualifies = *m_at == u'.' && markOf(next()) != Mark::Digit;
        return qualifies && (copy(), true);
    }

    bool word()
    {
        if ((*m_at == u'N' || *m_at == u'n') && next() == u'\'') {
            ++m_at;
            return text(LiteralKind::Unicode);
        }
        if (*m_at == u'$')
            return false;
        Mark mark = Mark::Word;
        while (mark == Mark::Word || mark == Mark::Digit) {
            copy();
            mark = m_at < m_end ? markOf(*m_at) : Mark::Plain;
        }
        // A letter beyond ASCII would go on with the word.
        return mark != Mark::Slow || *m_at < 128;
    }

    bool number()
    {
        const char16_t *start = m_at;
        qint64 value = 0;
        while (m_at < m_end && markOf(*m_at) == Mark::Digit && m_at - start < 10)
            value = value * 10 + (*m_at++ - u'0');
        LiteralKind kind = LiteralKind::Integer;
        if (m_at - start > 9)
            return false;
        if (m_at < m_end && *m_at == u'.') {
            kind = LiteralKind::Decimal;
            ++m_at;
            while (m_at < m_end && markOf(*m_at) == Mark::Digit)
                ++m_at;
        }
        if (m_at < m_end && (*m_at >= 128 || markOf(*m_at) == Mark::Word))
            return false;
        Literal &literal = add(kind, start, m_at);
        literal.integer = kind == LiteralKind::Integer ? value : 0;
        return true;
    }

    bool text(LiteralKind kind)
    {
        const char16_t *start = ++m_at;
        bool doubled = false;
        for (;; ++m_at) {
            if (m_at >= m_end)
                return false;
            if (*m_at != u'\'')
                continue;
            if (next() != u'\'')
                break;
            doubled = true;
            ++m_at;
        }
        Literal &literal = add(kind, start, m_at);
        if (doubled)
            literal.text.replace(QLatin1String("''"), QLatin1String("'"));
        ++m_at;
        return true;
    }

    bool quotedName(char16_t closing)
    {
        do {
            copy();
            if (m_at >= m_end)
                return false;
        } while (*m_at != closing);
        copy();
        return true;
    }

    Literal &add(LiteralKind kind, const char16_t *from, const char16_t *to)
    {
        *m_out++ = literalMark(kind);
        if (m_shape.literals.size() == m_count)
            m_shape.literals.emplace_back();
        Literal &literal = m_shape.literals[m_count++];
        literal.kind = kind;
        literal.integer = 0;
        literal.text.resize(to - from);
        std::memcpy(static_cast<void *>(literal.text.data()), from,
                    static_cast<std::size_t>(to - from) * sizeof(char16_t));
        return literal;
    }

    Shape &m_shape;
    const char16_t *m_at;
    const char16_t *m_end;
    char16_t *m_out;
    std::size_t m_count = 0;
};

} // namespace

void shape(QStringView text, Shape &into)
{
    into.key.resize(text.size());
    ShapeWriter writer(text, into);
    if (!writer.write()) {
        scannedShape(text, into);
        return;
    }
    into.key.resize(writer.out() - reinterpret_cast<const char16_t *>(into.key.constData()));
    into.literals.resize(writer.literals());
}

} // namespace tsql
