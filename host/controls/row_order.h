#pragma once

#include "host/controls/grid_column.h"
#include "host/host_export.h"

#include <QAbstractItemModel>

#include <vector>

namespace host {

/// The rows of `model` in the order of one of its columns: numbers by their value, everything else as a Persian reader
/// sorts it (the spellings of a letter alike, numbers inside a text by their value). Rows without a value come first,
/// equal ones stay as they were; descending is the exact reverse for unequal rows.
HOST_EXPORT std::vector<int> SortedRows(const QAbstractItemModel &model, int column, ColumnFormat format,
                                        Qt::SortOrder order);

} // namespace host
