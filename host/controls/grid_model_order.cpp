#include "host/controls/grid_model.h"
#include "host/controls/row_order.h"

#include <algorithm>

// The order in which a grid shows its rows.

namespace host {
namespace {

/// Long enough to fold any list to its end: matches found later would have to be moved in among the sorted ones.
constexpr int wholeMilliseconds = 10'000;

} // namespace

/// Works out the order of the rows, once all of them are there.
void GridModel::Rank()
{
    m_order.clear();
    m_rank.clear();
    const int column = IsSorted() ? m_sourceColumns.value(m_sortColumn, -1) : -1;
    m_awaiting = m_source && column >= 0 && !IsComplete();
    if (!m_source || column < 0 || m_awaiting)
        return;
    m_order = SortedRows(*m_source, column, m_columns.at(m_sortColumn).format, m_sortOrder);
    m_rank.resize(m_order.size());
    for (size_t place = 0; place < m_order.size(); ++place)
        m_rank[static_cast<size_t>(m_order[place])] = static_cast<int>(place);
}

int GridModel::RankOf(int sourceRow) const
{
    return m_rank.empty() ? sourceRow : m_rank[static_cast<size_t>(sourceRow)];
}

/// The rows that were waited for are there.
bool GridModel::CanArrange() const
{
    return m_awaiting && IsComplete();
}

/// The rows that match the search, in the order shown; a short list is searched whole at once.
void GridModel::MatchAll()
{
    m_rows.clear();
    m_matched = 0;
    if (!m_source || m_search.IsEmpty() || m_awaiting)
        return;
    m_filter.FoldSome(m_rank.empty() ? PortionMilliseconds : wholeMilliseconds);
    m_matched = m_filter.FoldedRows();
    m_rows = m_filter.Match(m_search);
    if (!m_rank.empty())
        std::sort(m_rows.begin(), m_rows.end(), [this](int left, int right) { return RankOf(left) < RankOf(right); });
}

void GridModel::Arrange()
{
    emit Arranging();
    beginResetModel();
    m_count = m_source ? m_source->rowCount() : 0;
    Rank();
    MatchAll();
    endResetModel();
    if (m_source)
        m_idle.start();
    emit Arranged();
    emit Changed(rowCount());
}

void GridModel::Sort(int gridColumn, Qt::SortOrder order)
{
    m_sortColumn = gridColumn;
    m_sortOrder = order;
    if (IsSorted())
        while (FetchBlock()) {
        }
    Arrange();
}

} // namespace host
