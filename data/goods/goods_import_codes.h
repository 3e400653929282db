#pragma once

#include <QHash>
#include <QSet>

#include <vector>

namespace goods {

/// Codes for many new goods at once, as the procedure `GetGoodInfCode` proposes them one by one: the group's number and
/// running digits, after the highest that the group has; else the lowest free of that range; else after the highest of
/// all; else the lowest free of all.
class ImportCodes
{
public:
    /// `length`: digits of a code, 1 to 6.
    explicit ImportCodes(int length);

    /// The code is in use or reserved.
    void Take(int code);
    /// A good of this group has it.
    void Take(int code, int group);
    bool IsTaken(int code) const { return m_taken[static_cast<size_t>(code)]; }
    /// A free code, taken from now on; 0 when there is none.
    int Give(int group);

private:
    struct Range
    {
        int first;
        int last;
    };
    Range RangeOf(int group) const;
    int FreeAfter(int after, int last) const;

    int m_length;
    std::vector<bool> m_taken;
    QHash<int, int> m_highest; ///< of a group in its range; what was given last
    QSet<int> m_full;          ///< groups without a free code in their range
    int m_highestOfAll = 0;
    int m_lowest = 0; ///< below it nothing is free
};

} // namespace goods
