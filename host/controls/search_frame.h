#pragma once

#include "host/controls/grid_column.h"
#include "host/host_export.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QStackedWidget;

namespace host {

class Grid;
class NumericEdit;

/// The search above a list (`TGeneral_Search_Frame1` on screens): the column, "reverse", and the edit that suits the
/// column (text, number or price). Searches as the user types. Esc in the edit empties it; Down goes into the grid, and
/// what is typed on the grid comes into the edit.
class HOST_EXPORT SearchFrame : public QWidget
{
    Q_OBJECT

public:
    explicit SearchFrame(QWidget *parent = nullptr);

    /// The columns that can be chosen; the first entry of the combo searches them all.
    void SetColumns(const QList<GridColumn> &columns);
    /// Ties the frame to a grid: its columns, its search, the keys that lead from one to the other. Once per frame.
    void SetGrid(Grid *grid);

    /// Where Tab stops in the frame, in order, for the tab order of its screen.
    QList<QWidget *> TabStops() const;

    SearchDescription Description() const;
    /// Searches for a text as if it had been typed, in every column.
    void SetText(const QString &text);
    /// Empties the edits and shows every row again; the column stays.
    void Clear();
    /// As a new frame: nothing searched for, in all columns.
    void Reset();
    /// Empties the search and gives the keyboard back to the grid; false when there is nothing to give up.
    bool GiveUp();
    /// Chooses a column, empty for all, and puts the focus in its edit.
    void Focus(const QString &field = {});

signals:
    void Changed(const SearchDescription &description);
    /// Enter in the edit: take the current row.
    void Accepted();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool TypedOnGrid(QKeyEvent &key);
    void ColumnChosen();
    void Report();

    QList<GridColumn> m_columns;
    Grid *m_grid = nullptr;
    QComboBox *m_column;  ///< Column_CMB
    QCheckBox *m_reverse; ///< Reverse_CHK
    QStackedWidget *m_edits;
    QLineEdit *m_text;     ///< Text_EDT
    NumericEdit *m_number; ///< Number_EDT
    NumericEdit *m_price;  ///< Price_EDT
    SearchDescription m_reported;
};

/// Tab goes from stop to stop and from the last to the first. For screens with a search: a form knows it as one
/// control, which hands the focus on to its edit, so that Tab would pass over its column.
HOST_EXPORT void ChainTabs(const QList<QWidget *> &stops);

} // namespace host
