#pragma once

#include "host/data/dataset.h"

#include <functional>
#include <vector>

namespace bulk_changes {

/// Rows of a dataset for a grid, with further columns that are computed from them; all rows or some. The dataset reads
/// all its rows when it is opened.
class ComputedRows : public QAbstractTableModel
{
public:
    /// A field and its value in a row of the dataset.
    struct Column
    {
        QString field;
        std::function<QVariant(int row)> value;
    };

    /// `rows` outlives the model. Without `shown` every row is shown.
    ComputedRows(const host::Dataset &rows, QList<Column> computed, std::function<bool(int row)> shown = {});

    /// The row of the dataset.
    int SourceRow(int row) const { return m_shown.at(static_cast<size_t>(row)); }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void Take();

    const host::Dataset &m_rows;
    QList<Column> m_computed;
    std::function<bool(int)> m_isShown;
    std::vector<int> m_shown;
};

} // namespace bulk_changes
