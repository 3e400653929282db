#include "host/controls/grid_model.h"

#include "host/controls/number_text.h"
#include "host/controls/reading_pause.h"
#include "host/data/dataset.h"
#include "host/data/persian_text.h"
#include "host/data/quantity.h"
#include "host/look/theme.h"

#include <QElapsedTimer>
#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

GridModel::GridModel(QObject *parent) : QAbstractTableModel(parent)
{
    m_idle.setInterval(1);
    connect(&m_idle, &QTimer::timeout, this, &GridModel::Idle);
}

void GridModel::SetColumns(const QList<GridColumn> &columns)
{
    beginResetModel();
    m_columns = columns;
    Rebuild();
    endResetModel();
}

void GridModel::SetCaption(int gridColumn, const QString &caption)
{
    m_columns[gridColumn].caption = caption;
    emit headerDataChanged(Qt::Horizontal, gridColumn + 1, gridColumn + 1);
}

void GridModel::SetSource(QAbstractItemModel *source, const QString &keyField)
{
    beginResetModel();
    if (m_source)
        m_source->disconnect(this);
    m_source = source;
    m_keyField = keyField;
    m_fetchFailed = false;
    Connect();
    Rebuild();
    endResetModel();
    emit Changed(rowCount());
}

void GridModel::Connect()
{
    if (!m_source)
        return;
    const QAbstractItemModel *source = m_source;
    connect(source, &QAbstractItemModel::modelAboutToBeReset, this, [this] { beginResetModel(); });
    connect(source, &QAbstractItemModel::modelReset, this, [this] {
        m_fetchFailed = false;
        Rebuild();
        endResetModel();
        emit Changed(rowCount());
    });
    connect(source, &QAbstractItemModel::layoutChanged, this, [this] {
        beginResetModel();
        Rebuild();
        endResetModel();
    });
    connect(source, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex &, int first, int last) { RowsArrived(first, last); });
    connect(source, &QAbstractItemModel::rowsRemoved, this,
            [this](const QModelIndex &, int first, int last) { RowsGone(first, last); });
    connect(source, &QAbstractItemModel::dataChanged, this, &GridModel::ValuesChanged);
    // A dataset that a view asks for rows cannot throw; what it could not read it tells this way.
    if (const auto *dataset = qobject_cast<const Dataset *>(source))
        connect(dataset, &Dataset::Failed, this, [this](const QString &message) {
            if (!m_fetching)
                return;
            GiveUpFetching(message);
        });
    connect(source, &QObject::destroyed, this, [this] {
        beginResetModel();
        m_source = nullptr;
        Rebuild();
        endResetModel();
    });
}

/// Starts over with the source as it is; the search and the marks stay.
void GridModel::Rebuild()
{
    m_sourceColumns.clear();
    for (const GridColumn &column : std::as_const(m_columns))
        m_sourceColumns << (m_source ? FieldColumn(*m_source, column.field) : -1);
    m_keyColumn = m_source ? FieldColumn(*m_source, m_keyField) : -1;
    m_filter.Reset(m_source, m_columns, m_searchFields);
    m_filter.Include(m_search.field);
    m_count = m_source ? m_source->rowCount() : 0;
    Rank();
    MatchAll();
    if (m_source)
        m_idle.start();
    else
        m_idle.stop();
}

void GridModel::SetSearchFields(const QStringList &fields)
{
    m_searchFields = fields;
    beginResetModel();
    Rebuild();
    endResetModel();
}

void GridModel::Search(const SearchDescription &description)
{
    if (description == m_search)
        return;
    const bool narrows = FoldedFilter::Narrows(m_search, description) && m_matched == m_filter.FoldedRows();
    beginResetModel();
    m_search = description;
    if (narrows) {
        m_rows = m_filter.Narrow(description, m_rows);
    } else {
        m_filter.Include(m_search.field);
        MatchAll();
    }
    m_count = m_source ? m_source->rowCount() : 0;
    endResetModel();
    if (m_source)
        m_idle.start();
    emit Changed(rowCount());
}

void GridModel::RowsArrived(int first, int last)
{
    if (m_awaiting) {
        m_count = last + 1;
        m_idle.start();
        return;
    }
    if (first != m_count || !m_rank.empty()) { // not at the end: positions shift
        beginResetModel();
        Rebuild();
        endResetModel();
        emit Changed(rowCount());
        return;
    }
    if (m_search.IsEmpty()) {
        beginInsertRows({}, first, last);
        m_count = last + 1;
        endInsertRows();
        emit Changed(rowCount());
    } else {
        m_count = last + 1;
    }
    m_idle.start();
}

void GridModel::RowsGone(int first, int last)
{
    if (!m_rank.empty() || m_awaiting) {
        beginResetModel();
        Rebuild();
        endResetModel();
        emit Changed(rowCount());
        return;
    }
    m_filter.Remove(first, last);
    const int gone = last - first + 1;
    m_matched = std::max(0, m_matched - gone);
    if (m_search.IsEmpty()) {
        beginRemoveRows({}, first, last);
        m_count -= gone;
        endRemoveRows();
    } else {
        beginResetModel();
        m_count -= gone;
        m_rows = m_filter.Match(m_search);
        m_matched = m_filter.FoldedRows();
        endResetModel();
    }
    emit Changed(rowCount());
}

void GridModel::ValuesChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight)
{
    for (int row = topLeft.row(); row <= bottomRight.row(); ++row)
        m_filter.Refold(row);
    for (int row = topLeft.row(); row <= bottomRight.row(); ++row)
        if (const int shown = ShownRow(row); shown >= 0)
            emit dataChanged(index(shown, 0), index(shown, columnCount() - 1));
}

void GridModel::GiveUpFetching(const QString &why)
{
    m_fetchFailed = true;
    m_failure = why;
    emit FetchFailed(why);
}

bool GridModel::FetchBlock()
{
    if (m_fetchFailed || !m_source || !m_source->canFetchMore({}))
        return false;
    const QScopedValueRollback fetching(m_fetching, true);
    try {
        m_source->fetchMore({});
    } catch (const std::exception &error) {
        GiveUpFetching(QString::fromUtf8(error.what()));
        return false;
    }
    return !m_fetchFailed;
}

void GridModel::AppendMatches()
{
    if (m_search.IsEmpty() || m_awaiting || m_matched >= m_filter.FoldedRows())
        return;
    const std::vector<int> more = m_filter.Match(m_search, m_matched);
    m_matched = m_filter.FoldedRows();
    if (more.empty())
        return;
    const auto first = static_cast<int>(m_rows.size());
    beginInsertRows({}, first, first + static_cast<int>(more.size()) - 1);
    m_rows.insert(m_rows.end(), more.begin(), more.end());
    endInsertRows();
    emit Changed(rowCount());
}

void GridModel::Idle()
{
    if (ReadingPause::IsOn())
        return;
    if (m_awaiting && !IsComplete()) {
        FetchFor(PortionMilliseconds);
        return;
    }
    if (m_filter.FoldSome(PortionMilliseconds)) {
        AppendMatches();
        return;
    }
    AppendMatches();
    if (FetchBlock())
        return;
    m_idle.stop();
    if (CanArrange())
        Arrange();
}

void GridModel::MatchUpTo(int sourceRow)
{
    if (m_search.IsEmpty())
        return;
    while (m_filter.FoldedRows() <= sourceRow && m_filter.FoldSome(PortionMilliseconds)) {
    }
    AppendMatches();
}

bool GridModel::IsComplete() const
{
    return !m_source || m_fetchFailed || !m_source->canFetchMore({});
}

bool GridModel::FetchAll()
{
    if (m_fetchFailed)
        emit FetchFailed(m_failure); // whoever means all rows is told once more why they are not there
    while (FetchBlock()) {
    }
    if (!m_search.IsEmpty()) {
        while (m_filter.FoldSome(1000)) {
        }
        AppendMatches();
    }
    if (CanArrange())
        Arrange();
    return !m_fetchFailed;
}

void GridModel::FetchFor(int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < milliseconds && FetchBlock()) {
    }
    if (CanArrange())
        Arrange();
}

int GridModel::SourceRow(int row) const
{
    if (row < 0 || row >= rowCount())
        return -1;
    if (!m_search.IsEmpty())
        return m_rows[static_cast<size_t>(row)];
    return m_order.empty() ? row : m_order[static_cast<size_t>(row)];
}

int GridModel::ShownRow(int sourceRow) const
{
    if (sourceRow < 0 || sourceRow >= m_count || m_awaiting)
        return -1;
    if (m_search.IsEmpty())
        return RankOf(sourceRow);
    const auto found = std::lower_bound(m_rows.begin(), m_rows.end(), sourceRow,
                                        [this](int left, int right) { return RankOf(left) < RankOf(right); });
    return found != m_rows.end() && *found == sourceRow ? static_cast<int>(found - m_rows.begin()) : -1;
}

QString GridModel::SourceKey(int sourceRow) const
{
    if (!m_source || m_keyColumn < 0 || sourceRow < 0)
        return {};
    return m_source->index(sourceRow, m_keyColumn).data(Qt::EditRole).toString();
}

QString GridModel::Key(int row) const
{
    return SourceKey(SourceRow(row));
}

void GridModel::SetMarked(const QString &key, bool marked)
{
    if (key.isEmpty() || IsMarked(key) == marked)
        return;
    if (marked) {
        m_marked << key;
        m_markedSet.insert(key);
    } else {
        m_marked.removeOne(key);
        m_markedSet.remove(key);
    }
    RefreshMarks();
}

void GridModel::ClearMarks()
{
    m_marked.clear();
    m_markedSet.clear();
    RefreshMarks();
}

void GridModel::MarkAllShown(bool marked)
{
    for (int row = 0; row < rowCount(); ++row) {
        const QString key = Key(row);
        if (key.isEmpty() || m_markedSet.contains(key) == marked)
            continue;
        if (marked) {
            m_marked << key;
            m_markedSet.insert(key);
        } else {
            m_markedSet.remove(key);
        }
    }
    if (!marked)
        m_marked.removeIf([this](const QString &key) { return !m_markedSet.contains(key); });
    RefreshMarks();
}

void GridModel::RefreshMarks()
{
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    emit MarksChanged(static_cast<int>(m_marked.size()));
}

int GridModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid() || !m_source || m_awaiting)
        return 0;
    return m_search.IsEmpty() ? m_count : static_cast<int>(m_rows.size());
}

int GridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size()) + 1;
}

QString GridModel::Shown(const QVariant &value, ColumnFormat format) const
{
    if (value.isNull())
        return {};
    QString text = value.toString();
    switch (format) {
    case ColumnFormat::Code:
        return DisplayNumber(TrimDecimal(text), false);
    case ColumnFormat::Quantity:
        // Nine decimals are kept; four are read.
        if (const auto quantity = ParseQuantity(text))
            return DisplayNumber(QuantityToText(*quantity, 4));
        return text;
    case ColumnFormat::Amount:
        if (const auto quantity = ParseQuantity(text))
            return DisplayAmount(*quantity);
        return text;
    case ColumnFormat::Price:
        return DisplayNumber(TrimDecimal(text));
    case ColumnFormat::Date:
        return PersianDigits(text);
    case ColumnFormat::Flag:
        return text.isEmpty() || text == u"0" || text == u"false" ? QString() : u"✓"_s;
    case ColumnFormat::Text:
        break;
    }
    return text;
}

QVariant GridModel::data(const QModelIndex &index, int role) const
{
    const int sourceRow = SourceRow(index.row());
    if (sourceRow < 0)
        return {};
    if (role == Qt::ForegroundRole)
        return rowColor ? QVariant(rowColor(sourceRow)) : QVariant();
    if (index.column() == MarkColumn) {
        if (role == Qt::CheckStateRole)
            return IsMarked(SourceKey(sourceRow)) ? Qt::Checked : Qt::Unchecked;
        return {};
    }
    const GridColumn &column = m_columns.at(index.column() - 1);
    const int sourceColumn = m_sourceColumns.at(index.column() - 1);
    if (sourceColumn < 0)
        return {};
    if (role == Qt::TextAlignmentRole) {
        if (column.format == ColumnFormat::Flag)
            return int(Qt::AlignCenter);
        if (column.format == ColumnFormat::Text || column.format == ColumnFormat::Date)
            return int(Qt::AlignLeading | Qt::AlignVCenter);
        return int(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    }
    if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::ToolTipRole)
        return {};
    QVariant value = m_source->index(sourceRow, sourceColumn).data(Qt::EditRole);
    if (role == Qt::EditRole)
        return value;
    if (role == Qt::ToolTipRole)
        return column.format == ColumnFormat::Text ? theme::PlainToolTip(value.toString()) : QVariant();
    return Shown(value, column.format);
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section > m_columns.size())
        return {};
    if (role == Qt::DisplayRole)
        return section == MarkColumn ? QVariant(u"✓"_s) : QVariant(m_columns.at(section - 1).caption);
    if (role == Qt::TextAlignmentRole && section == MarkColumn)
        return int(Qt::AlignCenter);
    return {};
}

Qt::ItemFlags GridModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    const int row = SourceRow(index.row());
    if (row >= 0 && index.column() > MarkColumn)
        if (const int column = m_sourceColumns.at(index.column() - 1); column >= 0)
            flags |= m_source->index(row, column).flags() & Qt::ItemIsEditable;
    return flags;
}

bool GridModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const int row = SourceRow(index.row());
    if (row < 0 || index.column() == MarkColumn || m_sourceColumns.at(index.column() - 1) < 0)
        return false;
    return m_source->setData(m_source->index(row, m_sourceColumns.at(index.column() - 1)), value, role);
}

bool GridModel::canFetchMore(const QModelIndex &parent) const
{
    return !parent.isValid() && m_search.IsEmpty() && m_source && !m_awaiting && !m_fetchFailed &&
           m_source->canFetchMore({});
}

void GridModel::fetchMore(const QModelIndex &parent)
{
    if (!parent.isValid())
        FetchBlock();
}

} // namespace host
