#include "data/goods/goods_import_codes.h"

#include <QString>

#include <algorithm>

namespace goods {

namespace {

constexpr int LargestCode = 999999;
constexpr int MostDigits = 6;

} // namespace

ImportCodes::ImportCodes(int length)
    : m_length(length < 1 || length > MostDigits ? MostDigits : length), m_taken(LargestCode + 1)
{}

ImportCodes::Range ImportCodes::RangeOf(int group) const
{
    int size = 10;
    for (qsizetype digits = m_length - QString::number(group).size(); digits > 1; --digits) {
        size *= 10;
    }
    return {std::min(group * size + 1, LargestCode + 1), std::min(group * size + size - 1, LargestCode)};
}

void ImportCodes::Take(int code)
{
    if (code >= 1 && code <= LargestCode) {
        m_taken[static_cast<size_t>(code)] = true;
    }
}

void ImportCodes::Take(int code, int group)
{
    Take(code);
    if (code <= LargestCode) {
        m_highestOfAll = std::max(m_highestOfAll, code);
    }
    const Range range = RangeOf(group);
    if (code >= range.first && code <= range.last) {
        int &highest = m_highest[group];
        highest = std::max(highest, code);
    }
}

int ImportCodes::FreeAfter(int after, int last) const
{
    for (int code = after + 1; code <= last; ++code) {
        if (!IsTaken(code)) {
            return code;
        }
    }
    return 0;
}

int ImportCodes::Give(int group)
{
    const Range range = RangeOf(group);
    int code = 0;
    // Codes are taken and never given back: what was found full stays so, and is not searched again.
    if (!m_full.contains(group)) {
        code = FreeAfter(m_highest.value(group, range.first - 1), range.last);
        code = code == 0 ? FreeAfter(range.first - 1, range.last) : code;
        if (code == 0) {
            m_full.insert(group);
        }
    }
    if (code == 0) {
        code = FreeAfter(m_highestOfAll, LargestCode);
    }
    if (code == 0) {
        code = m_lowest = FreeAfter(m_lowest, LargestCode);
    }
    if (code == 0) {
        m_lowest = LargestCode;
        return 0;
    }
    Take(code, group);
    return code;
}

} // namespace goods
