#pragma once

#include "host/controls/grid_column.h"

namespace goods_list {

/// The price levels that have a column of their own in the list.
inline constexpr int PriceColumns = 4;
/// The tags of a good that are marked with their colours in the list (fields `t1` …, tag codes).
inline constexpr int TagColumns = 3;

/// The columns of the goods grid in their order. The captions of `Cost1` … `Cost4` are the titles of the price levels;
/// `priceTitles` holds those known, an empty or missing one falls back to the number of the level.
QList<host::GridColumn> GoodColumns(const QStringList &priceTitles);

/// The caption of a price column with this title of its level (1 … 4).
QString PriceCaption(int level, const QString &title);

} // namespace goods_list
