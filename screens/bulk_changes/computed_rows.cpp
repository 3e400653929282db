#include "screens/bulk_changes/computed_rows.h"

namespace bulk_changes {

ComputedRows::ComputedRows(const host::Dataset &rows, QList<Column> computed, std::function<bool(int)> shown)
    : m_rows(rows), m_computed(std::move(computed)), m_isShown(std::move(shown))
{
    connect(&rows, &QAbstractItemModel::modelAboutToBeReset, this, [this] { beginResetModel(); });
    connect(&rows, &QAbstractItemModel::modelReset, this, [this] {
        Take();
        endResetModel();
    });
    Take();
}

void ComputedRows::Take()
{
    m_shown.clear();
    for (int row = 0; row < m_rows.RecordCount(); ++row)
        if (!m_isShown || m_isShown(row))
            m_shown.push_back(row);
}

int ComputedRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int ComputedRows::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.columnCount() + static_cast<int>(m_computed.size());
}

QVariant ComputedRows::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const int row = SourceRow(index.row());
    const int own = m_rows.columnCount();
    if (index.column() < own)
        return m_rows.data(m_rows.index(row, index.column()), role);
    return role == Qt::DisplayRole || role == Qt::EditRole ? m_computed.at(index.column() - own).value(row)
                                                           : QVariant();
}

QVariant ComputedRows::headerData(int section, Qt::Orientation orientation, int role) const
{
    const int own = m_rows.columnCount();
    if (section < own || orientation != Qt::Horizontal)
        return m_rows.headerData(section, orientation, role);
    return role == Qt::DisplayRole || role == Qt::EditRole ? QVariant(m_computed.at(section - own).field) : QVariant();
}

} // namespace bulk_changes
