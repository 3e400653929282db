#include "tsql/values/like.h"

#include "tsql/values/folding.h"

#include <algorithm>
#include <utility>

namespace tsql {

LikePattern::LikePattern(std::string_view pattern, char32_t escape)
{
    Parse(pattern, escape);
    FindPlainForm();
}

/// What does not count asks for nothing.
void LikePattern::AddLetter(char32_t c)
{
    if (const uint32_t letter = LetterOf(c))
        m_tokens.push_back({Token::Kind::Character, letter, {}});
}

void LikePattern::Parse(std::string_view pattern, char32_t escape)
{
    for (size_t at = 0; at < pattern.size();) {
        const char32_t c = NextCodePoint(pattern, at);
        if (c == escape && escape != 0 && at < pattern.size()) {
            AddLetter(NextCodePoint(pattern, at));
        } else if (c == U'%') {
            if (m_tokens.empty() || m_tokens.back().kind != Token::Kind::AnyRun)
                m_tokens.push_back({Token::Kind::AnyRun, 0, {}});
        } else if (c == U'_') {
            m_tokens.push_back({Token::Kind::AnyCharacter, 0, {}});
        } else if (c == U'[') {
            at = ParseSet(pattern, at);
        } else {
            AddLetter(c);
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
    const auto isRun = [](const Token &token) { return token.kind == Token::Kind::AnyRun; };
    m_openStart = !m_tokens.empty() && isRun(m_tokens.front());
    m_openEnd = m_tokens.size() > 1 && isRun(m_tokens.back());
    const auto letters = std::count_if(m_tokens.begin(), m_tokens.end(),
                                       [](const Token &token) { return token.kind == Token::Kind::Character; });
    const bool plain = letters > 0 && std::size_t(letters) + m_openStart + m_openEnd == m_tokens.size();
    if (!plain || (m_openStart && !m_openEnd))
        return;
    std::vector<uint32_t> word;
    for (const Token &token : m_tokens) {
        if (token.kind == Token::Kind::Character)
            word.push_back(token.letter);
    }
    m_word.emplace(std::move(word));
}

bool LikePattern::Matches(std::string_view text) const
{
    if (!m_word)
        return MatchesTokens(text, 0);
    if (m_openStart)
        return m_word->In(text).has_value();
    const std::optional<size_t> end = m_word->EndAt(text, 0);
    return end && (m_openEnd || IsNothingLeft(text, *end));
}

bool LikePattern::Accepts(const Token &token, char32_t c) const
{
    if (token.kind == Token::Kind::AnyCharacter)
        return true;
    if (token.kind == Token::Kind::Character)
        return LetterOf(c) == token.letter;
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
        if (LetterOf(c) == 0) {
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
