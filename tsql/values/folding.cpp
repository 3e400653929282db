#include "tsql/values/folding.h"

#include <QChar>

#include <array>

namespace tsql {

namespace {

// Everything that UTF-8 writes in one or two bytes: Latin, Greek, Cyrillic, Hebrew, Arabic.
constexpr size_t TableSize = 0x800;

const std::array<char16_t, TableSize> &FoldTable()
{
    static const auto table = [] {
        std::array<char16_t, TableSize> made{};
        for (char32_t c = 0; c < TableSize; ++c)
            made[c] = char16_t(QChar::toCaseFolded(c));
        return made;
    }();
    return table;
}

} // namespace

char32_t FoldCase(char32_t c)
{
    static const auto &table = FoldTable();
    return c < TableSize ? table[c] : QChar::toCaseFolded(c);
}

char32_t NextCodePoint(std::string_view utf8, size_t &at)
{
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(utf8[i]); };
    const unsigned first = byte(at++);
    if (first < 0xC0)
        return first;
    const size_t more = first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    char32_t c = first & (0x3FU >> more);
    for (size_t i = 0; i < more && at < utf8.size() && (byte(at) & 0xC0) == 0x80; ++i)
        c = c << 6 | (byte(at++) & 0x3F);
    return c;
}

int CompareFolded(std::string_view a, std::string_view b)
{
    a = WithoutTrailingBlanks(a);
    b = WithoutTrailingBlanks(b);
    size_t i = 0;
    size_t j = 0;
    while (i < a.size() && j < b.size()) {
        const auto x = static_cast<unsigned char>(a[i]);
        const auto y = static_cast<unsigned char>(b[j]);
        char32_t c = x;
        char32_t d = y;
        if ((x | y) < 0x80) {
            ++i;
            ++j;
            if (x == y)
                continue;
        } else {
            c = NextCodePoint(a, i);
            d = NextCodePoint(b, j);
            if (c == d)
                continue;
        }
        c = FoldCase(c);
        d = FoldCase(d);
        if (c != d)
            return c < d ? -1 : 1;
    }
    return int(i < a.size()) - int(j < b.size());
}

size_t Utf16Length(std::string_view utf8)
{
    size_t units = 0;
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        units += (byte & 0xC0) != 0x80;
        units += byte >= 0xF0; // beyond U+FFFF: a surrogate pair
    }
    return units;
}

std::string_view Utf16Prefix(std::string_view utf8, size_t units)
{
    size_t used = 0;
    for (size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if ((byte & 0xC0) == 0x80)
            continue;
        used += byte >= 0xF0 ? 2 : 1;
        if (used > units)
            return utf8.substr(0, i);
    }
    return utf8;
}

std::string_view WithoutTrailingBlanks(std::string_view utf8)
{
    while (!utf8.empty() && utf8.back() == ' ')
        utf8.remove_suffix(1);
    return utf8;
}

} // namespace tsql
