// The pattern of LIKE and PATINDEX.
#pragma once

#include "tsql/values/collation.h"
#include "tsql/values/text_search.h"

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace tsql {

/**
 * A compiled pattern: % any run, _ any character, [abc], [a-f], [^…]; `escape` (0 for none) takes the meaning away
 * from the character after it. Case and accents make no difference, and what does not count in the order of texts
 * (marks, half-spaces) is passed over. Plain searches ("%word%", "word%") do not go through the general matcher, as
 * they run over whole lists at each keystroke.
 */
class LikePattern
{
public:
    explicit LikePattern(std::string_view pattern, char32_t escape = 0);

    bool Matches(std::string_view text) const;

private:
    struct Token
    {
        enum class Kind : unsigned char { Character, AnyCharacter, AnyRun, Set, ExceptSet };

        Kind kind = Kind::Character;
        uint32_t letter = 0;                           ///< as LetterOf() tells them
        std::vector<std::pair<Weight, Weight>> ranges; ///< in the order of texts, both ends included
    };

    void Parse(std::string_view pattern, char32_t escape);
    size_t ParseSet(std::string_view pattern, size_t at);
    void AddLetter(char32_t c);
    void FindPlainForm();
    bool Accepts(const Token &token, char32_t c) const;
    bool MatchesTokens(std::string_view text, size_t at) const;

    std::vector<Token> m_tokens;
    std::optional<SoughtText>
        m_word;               ///< of a plain pattern: a word with at most a % at each end, and not only in front
    bool m_openStart = false; ///< the word may stand behind anything
    bool m_openEnd = false;   ///< anything may follow the word
};

} // namespace tsql
