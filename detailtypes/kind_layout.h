#pragma once

#include "detailtypes/detail_type_records.h"

namespace detail_types {

/// How the editor stands for a kind.
struct KindLayout
{
    bool items = false;          ///< the item list with its default value
    bool date = false;           ///< the calendar and the reminder
    bool toggle = false;         ///< the titles of two states and the default one
    bool alwaysRequired = false; ///< identifying kinds: a unit without its serial or barcode is not identified
    int height = 260;            ///< of the window, in pixels
};

KindLayout LayoutOf(TDetailKind kind);

/// What the kind is for, in the words shown to the user; empty for None.
QString DescriptionOf(TDetailKind kind);

/// Whether types of this kind own items.
inline bool HasItems(TDetailKind kind)
{
    return kind == TDetailKind::List || kind == TDetailKind::Text;
}

} // namespace detail_types
