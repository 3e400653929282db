// UTF-8 texts: their characters, their lengths, and words compared without case.
#pragma once

#include <string_view>

namespace tsql {

/** Simple case folding of one code point. */
char32_t FoldCase(char32_t c);

/** Reads the code point at `at` and moves `at` behind it. An ill-formed byte stands for itself. */
char32_t NextCodePoint(std::string_view utf8, size_t &at);

/** Negative, 0 or positive; trailing blanks do not count. The order is that of the folded code points. */
int CompareFolded(std::string_view a, std::string_view b);

/** Number of UTF-16 units. */
size_t Utf16Length(std::string_view utf8);

/** The first `units` UTF-16 units of a text; a pair is never cut in two. */
std::string_view Utf16Prefix(std::string_view utf8, size_t units);

/** Without the blanks at its end. */
std::string_view WithoutTrailingBlanks(std::string_view utf8);

} // namespace tsql
