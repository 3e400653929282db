#pragma once

#include "host/data/dataset.h"

#include <functional>
#include <vector>

namespace bulk_changes {

/// Rows of a dataset for a grid, with further columns that are computed from them; all rows or some. A dataset that
/// reads in blocks is asked for more of them as the grid asks here.
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
    ComputedRows(host::Dataset &rows, QList<Column> computed, std::function<bool(int row)> shown = {});

    /// The row of the dataset.
    int SourceRow(int row) const { return m_shown.at(static_cast<size_t>(row)); }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    /// Throws when the dataset cannot read on; the grid tells it.
    void fetchMore(const QModelIndex &parent) override;

private:
    void Take();
    /// The rows from `first` to `last` that are shown.
    std::vector<int> Shown(int first, int last) const;

    host::Dataset &m_rows;
    QList<Column> m_computed;
    std::function<bool(int)> m_isShown;
    std::vector<int> m_shown;
    QString m_failure; ///< of the last block
};

} // namespace bulk_changes
