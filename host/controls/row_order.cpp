#include "host/controls/row_order.h"

#include "host/controls/text_order.h"
#include "host/data/dataset.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace host {
namespace {

bool IsNumber(ColumnFormat format)
{
    return format == ColumnFormat::Code || format == ColumnFormat::Quantity || format == ColumnFormat::Amount ||
           format == ColumnFormat::Price || format == ColumnFormat::Flag;
}

template <typename Key> std::vector<int> Order(const std::vector<Key> &keys, Qt::SortOrder order)
{
    std::vector<int> rows(keys.size());
    std::iota(rows.begin(), rows.end(), 0);
    const auto key = [&keys](int row) -> const Key & { return keys[static_cast<size_t>(row)]; };
    if (order == Qt::AscendingOrder)
        std::stable_sort(rows.begin(), rows.end(), [&](int left, int right) { return key(left) < key(right); });
    else
        std::stable_sort(rows.begin(), rows.end(), [&](int left, int right) { return key(right) < key(left); });
    return rows;
}

} // namespace

std::vector<int> SortedRows(const QAbstractItemModel &model, int column, ColumnFormat format, Qt::SortOrder order)
{
    const int rows = model.rowCount();
    const auto text = [&](int row) { return model.index(row, column).data(Qt::EditRole).toString(); };
    if (IsNumber(format)) {
        const auto *dataset = qobject_cast<const Dataset *>(&model);
        const bool stored = dataset && !dataset->IsEditing(); // what is being typed stands beside the rows
        const auto number = [&](int row) {
            return stored ? dataset->Rows().Number(row, column) : ParseQuantity(text(row));
        };
        std::vector<Quantity> keys;
        keys.reserve(static_cast<size_t>(rows));
        for (int row = 0; row < rows; ++row)
            keys.push_back(number(row).value_or(-std::numeric_limits<Quantity>::infinity()));
        return Order(keys, order);
    }
    FoldedTexts texts;
    for (int row = 0; row < rows; ++row)
        texts.Append(text(row));
    return SortedTexts(texts, order);
}

} // namespace host
