#include "host/controls/text_order.h"

#include "host/data/persian_text.h"

#include <QCollator>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>
#include <string>

using namespace Qt::StringLiterals;

namespace host {
namespace {

/// Above this share of texts with foreign characters the collator's own keys are the quicker way.
constexpr int ForeignShare = 20;
/// Longer runs of digits are left to the collator.
constexpr size_t LongestNumber = 200;

const QCollator &Collator()
{
    static const QCollator collator = [] {
        QCollator made(QLocale(QLocale::Persian, QLocale::Iran));
        made.setNumericMode(true);
        return made;
    }();
    return collator;
}

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// The first-level weights of the characters that folded texts of a shop are made of.
class Weights
{
public:
    Weights()
    {
        std::vector<QString> letters{u"0"_s}; // for every digit
        for (char16_t c = u' '; c <= u'~'; ++c)
            Consider(letters, c);
        for (char16_t c = u'\u060C'; c <= u'\u06D3'; ++c)
            Consider(letters, c);
        const QCollator &collator = Collator();
        std::sort(letters.begin(), letters.end(),
                  [&](const QString &left, const QString &right) { return collator.compare(left, right) < 0; });
        int weight = 1;
        for (size_t i = 0; i < letters.size(); ++i) {
            // With the later letter behind the first of two, only a first-level difference keeps them in order.
            if (i > 0 && collator.compare(letters[i - 1] + u'b', letters[i] + u'a') < 0)
                ++weight;
            if (weight > 255)
                return; // what is left has no weight and is compared by the collator
            m_weights[letters[i].front().unicode()] = static_cast<quint8>(weight);
        }
    }

    /// 0 for a character without a weight of its own.
    quint8 Of(QChar c) const { return c.unicode() < m_weights.size() ? m_weights[c.unicode()] : quint8(0); }
    quint8 OfNumbers() const { return Of(u'0'); }

private:
    /// Letters and signs that stand for themselves and are not passed over in sorting.
    static void Consider(std::vector<QString> &letters, QChar c)
    {
        const QString letter(c);
        const bool plain = (c.isLetter() || c.isPunct() || c.isSymbol() || c == u' ') && Fold(letter) == letter;
        if (plain && Collator().compare(letter + u'a', u"a"_s) != 0)
            letters.push_back(letter);
    }

    std::array<quint8, 0x700> m_weights{};
};

/// Appends the first-level key of a text: bytes that compare as the collator compares. False for a text that has none.
bool AppendKey(std::string &key, QStringView text)
{
    static const Weights weights;
    for (auto at = text.begin(); at != text.end();) {
        if (!IsDigit(*at)) {
            const quint8 weight = weights.Of(*at++);
            if (weight == 0)
                return false;
            key += static_cast<char>(weight);
            continue;
        }
        const auto end = std::find_if_not(at, text.end(), IsDigit);
        at = std::find_if(at, end, [](QChar c) { return c != u'0'; });
        const auto digits = static_cast<size_t>(end - at);
        if (digits > LongestNumber)
            return false;
        key += static_cast<char>(weights.OfNumbers());
        key += static_cast<char>(digits + 1); // the longer number is the larger one
        for (; at != end; ++at)
            key += static_cast<char>(at->unicode());
    }
    return true;
}

/// Sorts texts by their keys, eight bytes at a time, so that a comparison reads nothing but what is being moved.
class KeySorter
{
public:
    KeySorter(const FoldedTexts &texts, bool laterFirst) : m_texts(texts), m_laterFirst(laterFirst)
    {
        m_end.reserve(static_cast<size_t>(texts.Count()));
        for (int text = 0; text < texts.Count(); ++text) {
            const size_t begin = m_keys.size();
            if (!AppendKey(m_keys, texts.At(text))) {
                m_keys.resize(begin);
                m_foreign.push_back(text);
            } else {
                m_entries.push_back({0, text});
            }
            m_end.push_back(m_keys.size());
        }
    }

    /// The texts that have no key.
    std::vector<int> &Foreign() { return m_foreign; }

    std::vector<int> Sorted()
    {
        if (!m_entries.empty())
            Sort(m_entries.data(), m_entries.data() + m_entries.size(), 0);
        std::vector<int> sorted;
        sorted.reserve(m_entries.size());
        for (const Entry &entry : m_entries)
            sorted.push_back(entry.text);
        return sorted;
    }

    /// The order that the collator sees, equal texts by their places.
    bool Precedes(int left, int right) const
    {
        const QStringView one = m_texts.At(left);
        const QStringView other = m_texts.At(right);
        const int difference = one == other ? 0 : Collator().compare(one, other);
        if (difference != 0)
            return difference < 0;
        return m_laterFirst ? left > right : left < right;
    }

private:
    struct Entry
    {
        quint64 head; ///< the eight bytes of the key that count now
        int text;
    };

    quint64 Head(int text, size_t depth) const
    {
        const auto at = static_cast<size_t>(text);
        const size_t begin = (at == 0 ? 0 : m_end[at - 1]) + depth;
        std::array<char, sizeof(quint64)> bytes{};
        if (begin < m_end[at])
            std::memcpy(bytes.data(), m_keys.data() + begin, std::min(bytes.size(), m_end[at] - begin));
        return qFromBigEndian<quint64>(bytes.data());
    }

    void Sort(Entry *first, Entry *last, size_t depth)
    {
        for (Entry *entry = first; entry != last; ++entry)
            entry->head = Head(entry->text, depth);
        std::sort(first, last, [](const Entry &left, const Entry &right) { return left.head < right.head; });
        while (first != last) {
            Entry *next =
                std::find_if(first + 1, last, [first](const Entry &entry) { return entry.head != first->head; });
            if (next - first > 1) {
                // No byte of a key is zero: a zero at the end means that the keys end here.
                if ((first->head & 0xFFU) == 0)
                    std::sort(first, next, [this](const Entry &left, const Entry &right) {
                        return Precedes(left.text, right.text);
                    });
                else
                    Sort(first, next, depth + sizeof(quint64));
            }
            first = next;
        }
    }

    const FoldedTexts &m_texts;
    bool m_laterFirst;
    std::string m_keys;
    std::vector<size_t> m_end;
    std::vector<Entry> m_entries;
    std::vector<int> m_foreign;
};

std::vector<int> SortedByCollator(const FoldedTexts &texts, bool laterFirst)
{
    std::vector<QCollatorSortKey> keys;
    keys.reserve(static_cast<size_t>(texts.Count()));
    for (int text = 0; text < texts.Count(); ++text)
        keys.push_back(Collator().sortKey(texts.At(text).toString()));
    std::vector<int> sorted(keys.size());
    std::iota(sorted.begin(), sorted.end(), 0);
    std::sort(sorted.begin(), sorted.end(), [&](int left, int right) {
        const int difference = keys[static_cast<size_t>(left)].compare(keys[static_cast<size_t>(right)]);
        return difference != 0 ? difference < 0 : (left < right) != laterFirst;
    });
    return sorted;
}

/// Ascending; of equal texts the later one first when asked for.
std::vector<int> Ascending(const FoldedTexts &texts, bool laterFirst)
{
    KeySorter sorter(texts, laterFirst);
    std::vector<int> &foreign = sorter.Foreign();
    if (foreign.size() > static_cast<size_t>(texts.Count() / ForeignShare))
        return SortedByCollator(texts, laterFirst);
    std::vector<int> sorted = sorter.Sorted();
    if (foreign.empty())
        return sorted;
    const auto precedes = [&sorter](int left, int right) { return sorter.Precedes(left, right); };
    std::sort(foreign.begin(), foreign.end(), precedes);
    std::vector<int> merged;
    merged.reserve(sorted.size() + foreign.size());
    std::merge(sorted.begin(), sorted.end(), foreign.begin(), foreign.end(), std::back_inserter(merged), precedes);
    return merged;
}

} // namespace

void FoldedTexts::Append(QStringView text)
{
    AppendFolded(m_text, text);
    m_end.push_back(m_text.size());
}

QStringView FoldedTexts::At(int text) const
{
    const auto at = static_cast<size_t>(text);
    const qsizetype begin = at == 0 ? 0 : m_end[at - 1];
    return QStringView(m_text).mid(begin, m_end[at] - begin);
}

std::vector<int> SortedTexts(const FoldedTexts &texts, Qt::SortOrder order)
{
    std::vector<int> sorted = Ascending(texts, order == Qt::DescendingOrder);
    if (order == Qt::DescendingOrder)
        std::reverse(sorted.begin(), sorted.end());
    return sorted;
}

} // namespace host
