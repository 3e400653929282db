#include "tsql/values/text_search.h"

#include "tsql/values/collation.h"
#include "tsql/values/folding.h"

#include <QChar>

#include <array>

namespace tsql {

namespace {

// What UTF-8 writes in one or two bytes.
constexpr char32_t TableEnd = 0x800;

/// Made when it is first asked for: the weights, which it is made of, are made while the program starts.
const std::array<uint32_t, TableEnd> &Letters()
{
    static const std::array<uint32_t, TableEnd> letters = [] {
        std::array<uint32_t, TableEnd> made{};
        for (char32_t c = 0; c < TableEnd; ++c)
            made[c] = WeightOf(c).identity;
        return made;
    }();
    return letters;
}

/// The same as NextCodePoint, without a call for what is short.
char32_t Next(std::string_view text, size_t &at)
{
    const auto first = static_cast<unsigned char>(text[at]);
    if (first < 0x80)
        return static_cast<unsigned char>(text[at++]);
    if (first >= 0xC0 && first < 0xE0 && at + 1 < text.size() &&
        (static_cast<unsigned char>(text[at + 1]) & 0xC0) == 0x80) {
        const char32_t c = char32_t(first & 0x1F) << 6 | (static_cast<unsigned char>(text[at + 1]) & 0x3F);
        at += 2;
        return c;
    }
    return NextCodePoint(text, at);
}

size_t BehindMarks(std::string_view text, size_t at)
{
    for (size_t next = at; next < text.size(); at = next) {
        if (!QChar::isMark(Next(text, next)))
            break;
    }
    return at;
}

} // namespace

uint32_t LetterOf(char32_t c)
{
    return c < TableEnd ? Letters()[c] : WeightOf(c).identity;
}

uint32_t NextLetter(std::string_view text, size_t &at)
{
    while (at < text.size()) {
        if (const uint32_t letter = LetterOf(Next(text, at)))
            return letter;
    }
    return 0;
}

bool IsNothingLeft(std::string_view text, size_t at)
{
    return NextLetter(text, at) == 0;
}

SoughtText::SoughtText(std::string_view sought)
{
    for (size_t at = 0; at < sought.size();) {
        if (const uint32_t letter = NextLetter(sought, at))
            m_letters.push_back(letter);
    }
    if (m_letters.empty())
        m_asItStands = sought;
}

std::optional<size_t> SoughtText::EndAt(std::string_view text, size_t at) const
{
    for (const uint32_t letter : m_letters) {
        if (NextLetter(text, at) != letter)
            return {};
    }
    return BehindMarks(text, at);
}

std::optional<SoughtText::Place> SoughtText::In(std::string_view text, size_t from) const
{
    if (m_letters.empty()) {
        const size_t at = m_asItStands.empty() ? std::string_view::npos : text.find(m_asItStands, from);
        return at == std::string_view::npos ? std::nullopt : std::optional(Place{at, at + m_asItStands.size()});
    }
    for (size_t at = from; at < text.size();) {
        const size_t begin = at;
        if (LetterOf(Next(text, at)) != m_letters.front())
            continue;
        if (const std::optional<size_t> end = EndAt(text, begin))
            return Place{begin, *end};
    }
    return {};
}

} // namespace tsql
