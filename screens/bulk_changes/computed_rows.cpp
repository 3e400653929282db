#include "screens/bulk_changes/computed_rows.h"

#include <stdexcept>
#include <utility>

namespace bulk_changes {

ComputedRows::ComputedRows(host::Dataset &rows, QList<Column> computed, std::function<bool(int)> shown)
    : m_rows(rows), m_computed(std::move(computed)), m_isShown(std::move(shown))
{
    connect(&rows, &QAbstractItemModel::modelAboutToBeReset, this, [this] { beginResetModel(); });
    connect(&rows, &QAbstractItemModel::modelReset, this, [this] {
        Take();
        endResetModel();
    });
    connect(&rows, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex &, int first, int last) {
        const std::vector<int> more = Shown(first, last);
        if (more.empty())
            return;
        const auto before = static_cast<int>(m_shown.size());
        beginInsertRows({}, before, before + static_cast<int>(more.size()) - 1);
        m_shown.insert(m_shown.end(), more.begin(), more.end());
        endInsertRows();
    });
    connect(&rows, &host::Dataset::Failed, this, [this](const QString &text) { m_failure = text; });
    Take();
}

void ComputedRows::Take()
{
    m_shown = Shown(0, m_rows.RecordCount() - 1);
}

std::vector<int> ComputedRows::Shown(int first, int last) const
{
    std::vector<int> shown;
    for (int row = first; row <= last; ++row)
        if (!m_isShown || m_isShown(row))
            shown.push_back(row);
    return shown;
}

bool ComputedRows::canFetchMore(const QModelIndex &parent) const
{
    return m_rows.canFetchMore(parent);
}

void ComputedRows::fetchMore(const QModelIndex &parent)
{
    m_rows.fetchMore(parent);
    if (!m_failure.isEmpty())
        throw std::runtime_error(std::exchange(m_failure, {}).toStdString());
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
