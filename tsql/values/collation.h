// How texts compare: the order of Persian dictionaries, which is the order of every text column and of its indexes.
#pragma once

#include <QString>

#include <cstdint>
#include <string_view>

namespace tsql {

/**
 * The place of one character. Characters that only spelling keeps apart (ی and ي, ک and ك, 1 and ۱) share `primary`;
 * `identity` tells them apart where a whole text is equal otherwise. What does not count (vowel marks, half-spaces,
 * tatweel) has neither.
 */
struct Weight
{
    uint32_t primary = 0;
    uint32_t identity = 0;

    bool Counts() const { return primary != 0; }
    auto operator<=>(const Weight &) const = default; // NOLINT(modernize-use-nullptr): the compiler's zero
};

Weight WeightOf(char32_t c);

/** What tells texts of one place apart: nothing more, accents, case, both, or the code points alone. */
enum class Collation : uint8_t { Plain, Accents, Case, AccentsAndCase, CodePoints };

/** The collation of a name in COLLATE. Error 448 for a name that is none, 40517 for other languages. */
Collation CollationNamed(const QString &name);
/** Its name in SQLite. */
const char *CollationName(Collation collation);

/** Negative, 0 or positive; trailing blanks do not count. */
int CompareTexts(std::string_view a, std::string_view b);
int CompareTexts(std::string_view a, std::string_view b, Collation collation);

/** Goes up when the order changes: indexes of files with another number are built anew. */
inline constexpr int CollationVersion = 1;

} // namespace tsql
