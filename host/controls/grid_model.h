#pragma once

#include "host/controls/folded_filter.h"
#include "host/controls/grid_column.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QPointer>
#include <QSet>
#include <QTimer>

#include <functional>

namespace host {

/// What a Grid shows: the mark column and the grid's columns over the rows of the source that match the search.
/// In idle time it fetches the rest of the source and folds its texts, in portions that the user does not feel.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    static constexpr int MarkColumn = 0; ///< the grid's own columns follow it
    /// One portion of idle work; together with one block of rows it stays below what a person notices.
    static constexpr int PortionMilliseconds = 8;

    explicit GridModel(QObject *parent = nullptr);

    void SetColumns(const QList<GridColumn> &columns);
    void SetCaption(int gridColumn, const QString &caption);
    void SetSource(QAbstractItemModel *source, const QString &keyField);
    QAbstractItemModel *Source() const { return m_source; }
    void SetSearchFields(const QStringList &fields);

    void Search(const SearchDescription &description);
    const SearchDescription &CurrentSearch() const { return m_search; }

    /// Orders the rows by a column, or as the source has them (-1). All rows are needed for it: those that the source
    /// has not given yet are fetched at once; after the source was opened anew, in idle time. Until they are there no
    /// row is shown, because it could stand in the wrong place.
    void Sort(int gridColumn, Qt::SortOrder order);
    bool IsSorted() const { return m_sortColumn >= 0; }
    /// The rows are withheld until all of them are there.
    bool IsAwaitingOrder() const { return m_awaiting; }
    int SortColumn() const { return m_sortColumn; }
    Qt::SortOrder SortOrder() const { return m_sortOrder; }

    int SourceRow(int row) const;
    /// The shown row of a source row, -1 when it does not match the search.
    int ShownRow(int sourceRow) const;
    /// Has the search look at the rows up to this one now instead of in idle time.
    void MatchUpTo(int sourceRow);
    int SourceColumn(int gridColumn) const { return m_sourceColumns.value(gridColumn, -1); }
    QString Key(int row) const;
    QString SourceKey(int sourceRow) const;

    bool IsComplete() const;
    bool HasFailed() const { return m_fetchFailed; }
    /// False when the source could not give all of them.
    bool FetchAll();
    void FetchFor(int milliseconds);

    const QStringList &Marked() const { return m_marked; }
    bool IsMarked(const QString &key) const { return m_markedSet.contains(key); }
    void SetMarked(const QString &key, bool marked);
    void ClearMarks();
    void MarkAllShown(bool marked);

    std::function<QColor(int)> rowColor;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;

signals:
    void Changed(int rows);
    void MarksChanged(int count);
    /// The source could not give its next rows; it is not asked again until it is opened anew.
    void FetchFailed(const QString &message);
    /// Before and after the shown rows change places.
    void Arranging();
    void Arranged();

private:
    void Connect();
    void Rebuild();
    void RowsArrived(int first, int last);
    void RowsGone(int first, int last);
    void ValuesChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight);
    void Idle();
    void AppendMatches();
    bool FetchBlock();
    void GiveUpFetching(const QString &why);
    void RefreshMarks();
    void Rank();
    void Arrange();
    bool CanArrange() const;
    void MatchAll();
    int RankOf(int sourceRow) const;
    QString Shown(const QVariant &value, ColumnFormat format) const;

    QPointer<QAbstractItemModel> m_source;
    QString m_keyField;
    int m_keyColumn = -1;
    QList<GridColumn> m_columns;
    QList<int> m_sourceColumns;
    QStringList m_searchFields;
    SearchDescription m_search;
    FoldedFilter m_filter;
    std::vector<int> m_rows; ///< matching source rows in the order shown; unused without a search
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    std::vector<int> m_order; ///< all source rows in the order shown; empty while that is the source's own
    std::vector<int> m_rank;  ///< the place of each source row in m_order
    int m_matched = 0;        ///< source rows that the search has looked at
    int m_count = 0;          ///< source rows, as far as views were told
    bool m_awaiting = false;
    bool m_fetchFailed = false;
    QString m_failure; ///< why
    bool m_fetching = false;
    QTimer m_idle;
    QStringList m_marked;
    QSet<QString> m_markedSet;
};

} // namespace host
