#pragma once

#include "host/controls/grid_column.h"
#include "host/host_export.h"

#include <QStringList>
#include <QTableView>

#include <functional>

namespace host {

class GridModel;

/// A grid over a row set: the columns the screen defines, in the order and widths the user left them, with a column
/// chooser on the header, marked rows, incremental search and keys for clerks.
///
/// The source is any table model whose horizontal header data (EditRole, else DisplayRole) are field names, such as a
/// Dataset. Rows keep coming from the source while the user works (idle fetching) until it has no more; searching
/// answers from the rows at hand and goes on as more arrive.
///
/// Where the screen allows it, a click on a caption orders all rows by that column, a second one turns the order round,
/// a third one gives the list's own order back. An ordered grid that is opened anew shows its rows when all are there.
///
/// Keys: Insert or Space marks the current row (Insert goes down); Ctrl+click or a click in the mark column too;
/// Ctrl+A marks every shown row; Ctrl+Home and Ctrl+End go to the first and the last row, as Home and End do where no
/// cell can be edited, and stay in their column; Enter and double-click report `RowActivated`.
class HOST_EXPORT Grid : public QTableView
{
    Q_OBJECT

public:
    explicit Grid(QWidget *parent = nullptr);
    ~Grid() override;

    /// The columns in order. Call before `SetSource`; calling again keeps the source.
    void SetColumns(const QList<GridColumn> &columns);
    /// The columns as they are now: order, widths and visibility of the user.
    QList<GridColumn> Columns() const;
    void SetColumnCaption(const QString &field, const QString &caption);
    void SetColumnVisible(const QString &field, bool visible);
    bool IsColumnVisible(const QString &field) const;
    /// Fields of the columns that are shown, in their order on the screen.
    QStringList VisibleFields() const;

    /// Shows `model`, whose `keyField` identifies a row. The grid does not own it; null empties the grid.
    void SetSource(QAbstractItemModel *model, const QString &keyField = QString::fromUtf16(u"Code"));
    QAbstractItemModel *Source() const;

    /// Takes over what is being typed into a cell; the cell stays open.
    void CommitTyped();

    /// Rows shown at the moment (those fetched so far that match the search).
    int RowCount() const;
    bool IsEmpty() const { return RowCount() == 0; }

    /// Key text of the current row, empty when there is none.
    QString CurrentKey() const;
    /// Raw value of a field in the current row; invalid when there is no row or no such field.
    QVariant CurrentValue(const QString &field) const;
    /// The current row as a row of the source, -1 when there is none.
    int CurrentSourceRow() const;
    /// Makes the row with this key current, fetching further blocks until it is found. False when there is none
    /// among the shown rows.
    bool Locate(const QString &key);
    /// Makes a shown row current.
    void StandOn(int row);

    /// Where the user is: on which row, and how far down the view it stands.
    struct Place
    {
        QString key;
        int row = -1;
        int offset = -1;  ///< rows between the top of the view and the current one; negative when it is out of sight
        int sideways = 0; ///< how far the columns are scrolled
    };
    Place CurrentPlace() const;
    /// Goes back there after the rows were read anew: to the same row, or to the one in its place when it is gone. An
    /// empty key goes to the place at once.
    void ReturnTo(const Place &place);

    /// Clicks on the captions order the rows (not by default: the order of some lists means something).
    void SetSortable(bool on) { m_sortable = on; }
    /// Orders the rows by a column as a click on its caption does; an empty field gives the list's own order back.
    void SortBy(const QString &field, Qt::SortOrder order = Qt::AscendingOrder);
    /// The column that orders the rows, empty for the list's own order.
    QString SortedBy() const;

    /// Marks: rows picked for a command on several. They survive searching and requerying.
    void SetMultiSelect(bool on);
    bool IsMultiSelect() const;
    /// Keys in the order in which they were marked.
    QStringList MarkedKeys() const;
    bool IsMarked(const QString &key) const;
    void SetMarked(const QString &key, bool marked);
    void ToggleCurrentMark();
    /// Marks every shown row, or takes their marks off; nothing when they cannot all be read.
    void MarkAllShown(bool marked = true);
    void ClearMarks();
    /// Keys of all shown rows, in their order; fetches what is left first. None when that fails (ask FetchAll()
    /// before, where it matters): a part of the rows is not what the user meant by all.
    QStringList ShownKeys();

    /// Shows the rows that match; an empty description shows all. Answers at once.
    void Search(const SearchDescription &description);
    SearchDescription CurrentSearch() const;
    /// Fields that an all-columns search looks at; by default every text, date and code of the grid. A column that is
    /// searched by itself need not be among them.
    void SetSearchFields(const QStringList &fields);

    /// Colour or font of a row by its values, for the text and the ground; asked when a cell is painted.
    using RowColor = std::function<QColor(int sourceRow)>;
    void SetRowColor(RowColor color);

    /// The columns as the screen defined them, whatever the user made of them.
    void ResetLayout();
    /// Order, widths and visibility of the columns as text for the settings, and back. A stored layout of another
    /// version of the screen is taken as far as its fields still exist.
    QByteArray SaveLayout() const;
    void RestoreLayout(const QByteArray &layout);

    /// The grid as a user sees it: captions and formatted cells of the visible columns, for printing.
    QStringList VisibleCaptions() const;
    QStringList VisibleTexts(int row) const;
    /// The same for other programs: the columns as they are shown, and their cells with numbers and dates in plain form
    /// (ASCII digits, a point, no grouping, all decimals).
    QList<GridColumn> VisibleColumns() const;
    QStringList VisiblePlainTexts(int row) const;
    /// True when no more rows will arrive: all have, or the source gave up.
    bool IsComplete() const;
    /// True when every row of the source has arrived.
    bool HasAllRows() const;
    /// Fetches what is left, at once. False when the source could not give all of it, of which FetchFailed tells.
    bool FetchAll();
    /// Fetches what comes within this time; the rest follows in idle time.
    void FetchFor(int milliseconds);

signals:
    void RowActivated(const QString &key);
    void CurrentKeyChanged(const QString &key);
    void MarksChanged(int count);
    /// The user showed, hid or moved a column.
    void VisibleFieldsChanged(const QStringList &fields);
    /// The source could not give its next rows; the text says why. It is asked again when it is opened anew.
    void FetchFailed(const QString &message);
    /// The number of shown rows changed (search, or rows arrived).
    void RowCountChanged(int rows);

public slots:
    /// The menu of columns, at the header.
    void ChooseColumns();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    void ApplyColumns();
    void ReportCurrent(const QModelIndex &current);
    void ReportFields();
    void CaptionClicked(int section);
    QString CellText(const QModelIndex &index) const;
    QString PlainText(const QModelIndex &index) const;
    QList<int> VisibleSections() const;
    int GridColumnOf(const QString &field) const;

    GridModel *m_model;
    QList<GridColumn> m_columns;
    bool m_applying = false;
    bool m_sortable = false;
    int m_arrangedRow = -1; ///< source row that stays current while the rows change places
    QString m_lastKey;
};

} // namespace host
