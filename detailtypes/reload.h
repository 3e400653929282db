#pragma once

#include "host/controls/grid.h"

#include <QtGlobal>

namespace detail_types {

/// Reads the rows of a grid anew and stands on the row with this key; where the grid stood when it is gone.
template <typename Read> void Reload(host::Grid &grid, const QString &key, const Read &read)
{
    const int row = grid.currentIndex().row();
    read();
    if (!grid.Locate(key) && !grid.IsEmpty())
        grid.StandOn(qBound(0, row, grid.RowCount() - 1));
}

} // namespace detail_types
