#pragma once

#include "host/controls/grid_column.h"
#include "host/host_export.h"

#include <QAbstractItemModel>
#include <QStringList>

#include <vector>

namespace host {

/// The column of a table model that carries `field` (header data, compared without case), -1 when there is none.
HOST_EXPORT int FieldColumn(const QAbstractItemModel &model, const QString &field);

/// Answers an incremental search over very many rows: the folded text of each searched column is kept in one piece per
/// column, so that a keystroke is a scan of memory and asks the model nothing.
///
/// Rows are folded in portions as they arrive (`FoldSome`), by whoever owns the idle time; a search answers for the
/// rows folded so far.
class HOST_EXPORT FoldedFilter
{
public:
    /// Forgets everything and searches `model` from now on. `columns` tells which fields there are and how each is
    /// searched; `general` names those that a search over all columns looks at, empty for every text and code.
    void Reset(const QAbstractItemModel *model, const QList<GridColumn> &columns, const QStringList &general = {});
    /// Makes a column ready to be searched by itself. Those of the general search are; the others cost nothing before.
    void Include(const QString &field);

    /// Folds further rows for about `milliseconds`; true while rows are left.
    bool FoldSome(int milliseconds);
    int FoldedRows() const { return m_rows; }

    /// A row's values changed: fold it anew.
    void Refold(int row);
    void Remove(int first, int last);

    /// The rows from `first` on that match, ascending. The whole of a new search starts from 0, later portions from
    /// the row where the last one ended.
    std::vector<int> Match(const SearchDescription &description, int first = 0) const;
    /// The rows of `among` that match: enough when the search only grew by what was typed.
    std::vector<int> Narrow(const SearchDescription &description, const std::vector<int> &among) const;
    /// True when every row that matches `description` matches `wider`.
    static bool Narrows(const SearchDescription &wider, const SearchDescription &description);

private:
    struct Column
    {
        QString field;
        ColumnFormat format = ColumnFormat::Text;
        int source = -1;
        bool general = false;
        bool folded = false;          ///< kept as folded text
        QString text;                 ///< the rows' folded texts, each followed by '\n'
        std::vector<qsizetype> start; ///< where each row begins; one more than there are rows
    };

    /// A search made ready to be asked row by row.
    struct Wanted
    {
        bool reverse = false;
        QString number;
        QStringList words;
        std::vector<const Column *> columns;
    };

    void FoldRows(Column &column, int first, int end) const;
    static QString FoldValue(const QVariant &value, ColumnFormat format);
    Wanted Prepare(const SearchDescription &description) const;
    static bool Matches(const Wanted &wanted, int row);

    const QAbstractItemModel *m_model = nullptr;
    std::vector<Column> m_columns;
    int m_rows = 0;
};

} // namespace host
