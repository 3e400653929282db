// The pattern of LIKE and PATINDEX.
#pragma once

#include "tsql/values/collation.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tsql {

/**
 * A compiled pattern: % any run, _ any character, [abc], [a-f], [^…]; `escape` (0 for none) takes the meaning away
 * from the character after it. Case-insensitive. Plain searches ("%word%", "word%") do not go through the general
 * matcher, as they run over whole lists at each keystroke.
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
        char32_t character = 0;                        ///< folded
        std::vector<std::pair<Weight, Weight>> ranges; ///< in the order of texts, both ends included
    };

    void Parse(std::string_view pattern, char32_t escape);
    size_t ParseSet(std::string_view pattern, size_t at);
    void FindPlainForm();
    bool Accepts(const Token &token, char32_t c) const;
    bool MatchesTokens(std::string_view text, size_t at) const;
    size_t StartsAt(std::string_view text, size_t at) const;
    bool Contains(std::string_view text) const;
    bool ContainsBytes(std::string_view text) const;

    std::vector<Token> m_tokens;
    bool m_plain = false;     ///< the tokens are a word with at most a % at each end
    bool m_openStart = false; ///< the word may stand behind anything
    bool m_openEnd = false;   ///< anything may follow the word
    bool m_bytewise = false;  ///< the word has no letter with two cases: m_word is compared as bytes
    std::string m_word;       ///< of a bytewise pattern
    std::u32string m_folded;  ///< of any plain pattern
};

} // namespace tsql
