#pragma once

#include "host/services/types.h"

#include <QString>

#include <stdexcept>

namespace desk {

/// A code-and-name list of the suite: where its rows are and what it is called.
struct EntityKind
{
    host::TSoftwarePart part;
    QString table;
    QString codeColumn;
    QString nameColumn;
    QString singular; ///< "گروه کالا"
    QString plural;   ///< the title of the list
    bool editable;    ///< the desk has an editor for it; the others belong to modules
    bool hasType;     ///< units tell the scale how they are sold
};

/// The kind behind a software part. Throws std::invalid_argument for a part that has no such list.
const EntityKind &KindOf(host::TSoftwarePart part);

/// The codes that an editable entity can have; the columns are 16 bits wide.
inline constexpr int LeastEntityCode = 1;
inline constexpr int GreatestEntityCode = 32767;
/// The group "all goods": it is fixed and holds no goods.
inline constexpr int RootGroup = 0;

} // namespace desk
