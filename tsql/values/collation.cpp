#include "tsql/values/collation.h"

#include "tsql/values/error.h"
#include "tsql/values/folding.h"

#include <QChar>
#include <QString>
#include <QStringList>

#include <array>
#include <cstring>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

// Sections of the order: what stands in one comes before all of the next. A section counts by code point unless it has
// an alphabet of its own.
constexpr uint32_t SignSection = 1U << 24;    ///< blanks and signs beyond ASCII
constexpr uint32_t DigitSection = 2U << 24;   ///< of all scripts, by their value
constexpr uint32_t LetterSection = 3U << 24;  ///< Latin, Greek, Cyrillic, Hebrew …
constexpr uint32_t PersianSection = 4U << 24; ///< the Persian alphabet
constexpr uint32_t OtherSection = 5U << 24;   ///< all scripts behind it

constexpr char32_t FirstArabic = 0x600;

/// Signs of ASCII in their order; digits and letters follow.
constexpr std::u32string_view Signs = U"'- !\"#$%&()*,./:;?@[\\]^_`{|}~+<=>";

/// The alphabet. Letters in one group are spellings of its first.
constexpr std::array<std::u32string_view, 33> Alphabet = {
    U"ء", U"ا", U"ب", U"پ", U"ت", U"ث", U"ج", U"چ", U"ح",   U"خ", U"د", U"ذ", U"ر", U"ز", U"ژ",      U"س",   U"ش",
    U"ص", U"ض", U"ط", U"ظ", U"ع", U"غ", U"ف", U"ق", U"کكڪ", U"گ", U"ل", U"م", U"ن", U"و", U"هةەہۃھ", U"یيىے"};

bool IsMark(char32_t c)
{
    return QChar::isMark(c);
}

/// The letter without the marks and the presentation that Unicode takes it apart into.
char32_t BaseOf(char32_t c)
{
    for (;;) {
        const QString parts = QChar::decomposition(c);
        const auto tag = QChar::decompositionTag(c);
        const bool sameLetter = tag == QChar::Canonical || (tag >= QChar::Initial && tag <= QChar::Isolated) ||
                                tag == QChar::Wide || tag == QChar::Narrow;
        if (parts.isEmpty() || !sameLetter)
            return c;
        const std::u32string points = parts.toStdU32String();
        for (std::size_t i = 1; i < points.size(); ++i) {
            if (!IsMark(points[i]))
                return c;
        }
        c = points[0];
    }
}

uint32_t AlphabetPlace(char32_t c)
{
    for (std::size_t i = 0; i < Alphabet.size(); ++i) {
        if (Alphabet[i].find(c) != std::u32string_view::npos)
            return PersianSection + uint32_t(i) + 1;
    }
    return 0;
}

uint32_t PrimaryOf(char32_t base)
{
    constexpr uint32_t FirstSign = 0x20; // behind the control characters
    if (base == 0xA0 || base == 0x202F)
        return PrimaryOf(U' ');
    if (base < 0x20)
        return base;
    if (const std::size_t sign = Signs.find(base); sign != std::u32string_view::npos)
        return FirstSign + uint32_t(sign);
    if (QChar::isDigit(base))
        return DigitSection + uint32_t(QChar::digitValue(base)) + 1;
    if (const uint32_t place = AlphabetPlace(base))
        return place;
    if (!QChar::isLetterOrNumber(base))
        return SignSection + base;
    return (base < FirstArabic ? LetterSection : OtherSection) + base;
}

Weight ComputedWeight(char32_t c)
{
    constexpr char32_t Tatweel = 0x640;
    const bool format = QChar::category(c) == QChar::Other_Format; // half-spaces and marks of direction
    if (c == 0 || c == Tatweel || format || IsMark(c))
        return {};
    const char32_t letter = FoldCase(BaseOf(FoldCase(c)));
    return {PrimaryOf(letter), letter};
}

// What UTF-8 writes in two bytes, and the page of the half-spaces.
constexpr char32_t TableEnd = 0x800;
constexpr char32_t PageStart = 0x2000;
constexpr char32_t PageEnd = 0x2070;

struct Tables
{
    std::array<Weight, TableEnd> letters;
    std::array<Weight, PageEnd - PageStart> page;
};

const Tables tables = [] {
    Tables made;
    for (char32_t c = 0; c < TableEnd; ++c)
        made.letters[c] = ComputedWeight(c);
    for (char32_t c = PageStart; c < PageEnd; ++c)
        made.page[c - PageStart] = ComputedWeight(c);
    return made;
}();

Weight QuickWeight(char32_t c)
{
    if (c < TableEnd)
        return tables.letters[c];
    if (c >= PageStart && c < PageEnd)
        return tables.page[c - PageStart];
    return ComputedWeight(c);
}

/// The weight of the next character that counts; none at the end.
Weight NextWeight(std::string_view text, std::size_t &at)
{
    while (at < text.size()) {
        const Weight weight = QuickWeight(NextCodePoint(text, at));
        if (weight.Counts())
            return weight;
    }
    return {};
}

/// The length of what both begin with, up to the beginning of a character.
std::size_t CommonStart(std::string_view a, std::string_view b)
{
    const std::size_t end = std::min(a.size(), b.size());
    std::size_t at = 0;
    uint64_t x = 0;
    uint64_t y = 0;
    for (; at + sizeof x <= end; at += sizeof x) {
        std::memcpy(&x, a.data() + at, sizeof x);
        std::memcpy(&y, b.data() + at, sizeof y);
        if (x != y)
            break;
    }
    while (at < end && a[at] == b[at])
        ++at;
    const auto continues = [](std::string_view text, std::size_t i) {
        return i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
    };
    while (at > 0 && (continues(a, at) || continues(b, at)))
        --at;
    return at;
}

int Sign(int order)
{
    return (order > 0) - (order < 0);
}

/// Letters without their accents, but with their case.
int CompareCase(std::string_view a, std::string_view b)
{
    const auto next = [](std::string_view text, std::size_t &at) -> char32_t {
        while (at < text.size()) {
            const char32_t c = NextCodePoint(text, at);
            if (QuickWeight(c).Counts())
                return BaseOf(c);
        }
        return 0;
    };
    std::size_t i = 0;
    std::size_t j = 0;
    for (;;) {
        const char32_t c = next(a, i);
        const char32_t d = next(b, j);
        if (c != d)
            return c < d ? -1 : 1;
        if (c == 0)
            return 0;
    }
}

} // namespace

Collation CollationNamed(const QString &name)
{
    const QString upper = name.toUpper();
    if (upper == u"DATABASE_DEFAULT" || upper == u"CATALOG_DEFAULT")
        return Collation::Plain;
    const QStringList words = upper.split(u'_');
    if (words.contains(u"BIN"_s) || words.contains(u"BIN2"_s))
        return Collation::CodePoints;
    const bool caseCounts = words.contains(u"CS"_s);
    const bool accentsCount = words.contains(u"AS"_s);
    if ((!caseCounts && !words.contains(u"CI"_s)) || (!accentsCount && !words.contains(u"AI"_s)))
        throw Error(448, {name});
    if (words.front() != u"PERSIAN" && !upper.contains(u"LATIN1_GENERAL"))
        throw NotSupported(u"COLLATE "_s + name);
    if (caseCounts)
        return accentsCount ? Collation::AccentsAndCase : Collation::Case;
    return accentsCount ? Collation::Accents : Collation::Plain;
}

const char *CollationName(Collation collation)
{
    switch (collation) {
    case Collation::Plain:
        return "TSQL_CI";
    case Collation::Accents:
        return "TSQL_CI_AS";
    case Collation::Case:
        return "TSQL_CS_AI";
    case Collation::AccentsAndCase:
        return "TSQL_CS_AS";
    case Collation::CodePoints:
        break;
    }
    return "TSQL_BIN";
}

Weight WeightOf(char32_t c)
{
    return QuickWeight(c);
}

int CompareTexts(std::string_view a, std::string_view b)
{
    a = WithoutTrailingBlanks(a);
    b = WithoutTrailingBlanks(b);
    const std::size_t same = CommonStart(a, b);
    std::size_t i = same;
    std::size_t j = same;
    int spelling = 0;
    for (;;) {
        const Weight x = NextWeight(a, i);
        const Weight y = NextWeight(b, j);
        if (x.primary != y.primary)
            return x.primary < y.primary ? -1 : 1;
        if (!x.Counts())
            return spelling;
        if (spelling == 0 && x.identity != y.identity)
            spelling = x.identity < y.identity ? -1 : 1;
    }
}

int CompareTexts(std::string_view a, std::string_view b, Collation collation)
{
    if (collation != Collation::CodePoints) {
        const int order = CompareTexts(a, b);
        if (order != 0 || collation == Collation::Plain)
            return order;
    }
    if (collation == Collation::Accents)
        return CompareFolded(a, b);
    a = WithoutTrailingBlanks(a);
    b = WithoutTrailingBlanks(b);
    return collation == Collation::Case ? CompareCase(a, b) : Sign(a.compare(b));
}

} // namespace tsql
