#pragma once

#include "detailtypes/detail_types_dm.h"

#include <optional>

namespace detail_types {

/// What chosen types are for, as the caller of the list says: the owner is a good or a category.
struct Choice
{
    int PreviousCount = 0;      ///< types that the owner has already
    QString PreviousCodes = {}; ///< their codes, a code list
    bool InList = false;        ///< the owner is a category
    bool Categories = false;    ///< a whole category may be chosen as well
};

/// Why so many single types may not be chosen; nothing when they may.
std::optional<QString> TooManyTypes(int previous, int picked);
/// Why a category of so many members may not be chosen.
std::optional<QString> TooManyMembers(int previous, int members);
/// Why the picked types may not stand together, and with those that the owner has: it takes one serial or barcode, and
/// one date with reminder. `inList` gives the words for a category instead of those for a good.
std::optional<QString> NotTogether(TDetailTypes_DM &data, const QString &previous, const QString &picked, bool inList);
/// What the user is told of two serials or barcodes on one owner.
QString TwoIdentifying(bool inList);
/// Puts picked types into a category. Its members are read anew for that, because another desk may have added some
/// while the user chose: why nothing was added, nothing when they were.
std::optional<QString> AddMembers(TDetailTypes_DM &data, int category, const QString &picked);

} // namespace detail_types
