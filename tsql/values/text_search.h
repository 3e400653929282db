// One text inside another, as LIKE, CHARINDEX and REPLACE find it: in the order of texts, so without case and accents.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace tsql {

/** Letters that the database's order takes for one have one number; 0 for what does not count (marks, half-spaces). */
uint32_t LetterOf(char32_t c);

/** Reads the next letter; at the end, or where nothing else counts, 0. */
uint32_t NextLetter(std::string_view text, size_t &at);

/** True when nothing that counts stands at `at` or behind. */
bool IsNothingLeft(std::string_view text, size_t at);

/**
 * A text to look for. One in which nothing counts (a half-space to be taken out) is looked for as it stands. Texts are
 * short and pages of them are searched at each keystroke: nothing is prepared per text.
 */
class SoughtText
{
public:
    struct Place
    {
        size_t begin = 0;
        size_t end = 0; ///< behind the marks of its last letter
    };

    explicit SoughtText(std::string_view sought);
    /** Of letters, at least one. */
    explicit SoughtText(std::vector<uint32_t> letters) : m_letters(std::move(letters)) {}

    /** Where it stands first, at `from` or behind; bytes. An empty one stands nowhere. */
    std::optional<Place> In(std::string_view text, size_t from = 0) const;
    /** Where it ends when it stands at `at`. */
    std::optional<size_t> EndAt(std::string_view text, size_t at) const;

private:
    std::string_view m_asItStands; ///< of the caller; only where nothing counts
    std::vector<uint32_t> m_letters;
};

} // namespace tsql
