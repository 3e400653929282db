#include "tsql/values/like.h"

#include "tsql/values/folding.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace tsql {

namespace {

void AppendUtf8(std::string &text, char32_t c)
{
    if (c < 0x80) {
        text += char(c);
    } else if (c < 0x800) {
        text += char(0xC0 | c >> 6);
        text += char(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        text += char(0xE0 | c >> 12);
        text += char(0x80 | (c >> 6 & 0x3F));
        text += char(0x80 | (c & 0x3F));
    } else {
        text += char(0xF0 | c >> 18);
        text += char(0x80 | (c >> 12 & 0x3F));
        text += char(0x80 | (c >> 6 & 0x3F));
        text += char(0x80 | (c & 0x3F));
    }
}

} // namespace

LikePattern::LikePattern(std::string_view pattern, char32_t escape)
{
    Parse(pattern, escape);
    FindPlainForm();
}

void LikePattern::Parse(std::string_view pattern, char32_t escape)
{
    for (size_t at = 0; at < pattern.size();) {
        const char32_t c = NextCodePoint(pattern, at);
        if (c == escape && escape != 0 && at < pattern.size()) {
            m_tokens.push_back({Token::Kind::Character, FoldCase(NextCodePoint(pattern, at)), {}});
        } else if (c == U'%') {
            if (m_tokens.empty() || m_tokens.back().kind != Token::Kind::AnyRun)
                m_tokens.push_back({Token::Kind::AnyRun, 0, {}});
        } else if (c == U'_') {
            m_tokens.push_back({Token::Kind::AnyCharacter, 0, {}});
        } else if (c == U'[') {
            at = ParseSet(pattern, at);
        } else {
            m_tokens.push_back({Token::Kind::Character, FoldCase(c), {}});
        }
    }
}

/** Reads behind the opening bracket. A bracket that is never closed matches nothing, as on the server. */
size_t LikePattern::ParseSet(std::string_view pattern, size_t at)
{
    Token set{Token::Kind::Set, 0, {}};
    if (at < pattern.size() && pattern[at] == '^') {
        set.kind = Token::Kind::ExceptSet;
        ++at;
    }
    const size_t begin = at;
    bool closed = false;
    while (at < pattern.size() && !closed) {
        const size_t here = at;
        const char32_t low = NextCodePoint(pattern, at);
        if (low == U']' && here > begin) {
            closed = true;
        } else if (at + 1 < pattern.size() && pattern[at] == '-' && pattern[at + 1] != ']') {
            ++at;
            set.ranges.emplace_back(WeightOf(low), WeightOf(NextCodePoint(pattern, at)));
        } else {
            set.ranges.emplace_back(WeightOf(low), WeightOf(low));
        }
    }
    if (!closed) {
        set.kind = Token::Kind::Set;
        set.ranges.clear();
    }
    m_tokens.push_back(std::move(set));
    return at;
}

void LikePattern::FindPlainForm()
{
    size_t begin = 0;
    size_t end = m_tokens.size();
    m_openStart = begin < end && m_tokens[begin].kind == Token::Kind::AnyRun;
    begin += m_openStart;
    m_openEnd = begin < end && m_tokens[end - 1].kind == Token::Kind::AnyRun;
    end -= m_openEnd;
    m_plain = begin < end && std::all_of(m_tokens.begin() + long(begin), m_tokens.begin() + long(end),
                                         [](const Token &t) { return t.kind == Token::Kind::Character; });
    if (!m_plain)
        return;
    m_bytewise = true;
    for (size_t i = begin; i < end; ++i) {
        m_folded += m_tokens[i].character;
        AppendUtf8(m_word, m_tokens[i].character);
        m_bytewise = m_bytewise && IsCaseless(m_tokens[i].character);
    }
}

bool LikePattern::Matches(std::string_view text) const
{
    if (!m_plain)
        return MatchesTokens(text, 0);
    if (m_openStart && m_openEnd)
        return Contains(text);
    if (m_bytewise)
        return m_openStart ? text.ends_with(m_word) : m_openEnd ? text.starts_with(m_word) : text == m_word;
    if (m_openStart)
        return MatchesTokens(text, 0);
    const size_t end = StartsAt(text, 0);
    return end != std::string_view::npos && (m_openEnd || end == text.size());
}

/** The end of the word when it stands at `at`, npos when it does not. */
size_t LikePattern::StartsAt(std::string_view text, size_t at) const
{
    for (const char32_t c : m_folded) {
        if (at >= text.size() || FoldCase(NextCodePoint(text, at)) != c)
            return std::string_view::npos;
    }
    return at;
}

/**
 * Texts are short and pages of them are searched, so nothing is prepared per text: two bytes at once tell most places
 * apart, as the first byte alone is the same for half of all Persian letters.
 */
bool LikePattern::ContainsBytes(std::string_view text) const
{
    if (text.size() < m_word.size())
        return false;
    if (m_word.size() < 2)
        return text.find(m_word) != std::string_view::npos;
    const auto pair = [](const char *at) {
        uint16_t two = 0;
        std::memcpy(&two, at, sizeof two);
        return two;
    };
    const uint16_t first = pair(m_word.data());
    const char *last = text.data() + (text.size() - m_word.size());
    for (const char *at = text.data(); at <= last; ++at) {
        if (pair(at) == first && std::memcmp(at, m_word.data(), m_word.size()) == 0)
            return true;
    }
    return false;
}

bool LikePattern::Contains(std::string_view text) const
{
    if (m_bytewise)
        return ContainsBytes(text);
    for (size_t at = 0; at < text.size();) {
        size_t next = at;
        if (FoldCase(NextCodePoint(text, next)) == m_folded[0] && StartsAt(text, at) != std::string_view::npos)
            return true;
        at = next;
    }
    return false;
}

bool LikePattern::Accepts(const Token &token, char32_t c) const
{
    if (token.kind == Token::Kind::AnyCharacter)
        return true;
    if (token.kind == Token::Kind::Character)
        return FoldCase(c) == token.character;
    const Weight weight = WeightOf(c);
    const bool inSet = std::any_of(token.ranges.begin(), token.ranges.end(), [&weight](const auto &range) {
        return weight >= range.first && weight <= range.second;
    });
    return inSet == (token.kind == Token::Kind::Set);
}

/** On a mismatch only the latest % takes one more character: linear in pattern times text. */
bool LikePattern::MatchesTokens(std::string_view text, size_t at) const
{
    size_t token = 0;
    size_t runToken = std::string::npos;
    size_t runText = 0;
    while (at < text.size()) {
        if (token < m_tokens.size() && m_tokens[token].kind == Token::Kind::AnyRun) {
            runToken = token++;
            runText = at;
            continue;
        }
        size_t next = at;
        const char32_t c = NextCodePoint(text, next);
        if (token < m_tokens.size() && Accepts(m_tokens[token], c)) {
            ++token;
            at = next;
            continue;
        }
        if (runToken == std::string::npos)
            return false;
        token = runToken + 1;
        NextCodePoint(text, runText);
        at = runText;
    }
    while (token < m_tokens.size() && m_tokens[token].kind == Token::Kind::AnyRun)
        ++token;
    return token == m_tokens.size();
}

} // namespace tsql
