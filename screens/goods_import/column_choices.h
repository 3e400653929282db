#pragma once

#include "data/goods/goods_import_fields.h"

#include <QWidget>

class QComboBox;

namespace host {
class Grid;
}

namespace goods_import {

/// A row of choices above a grid, one over each column of a file: what the column is. They follow the columns as these
/// are sized, moved and scrolled; the one that gets the focus brings its column into view.
class ColumnChoices : public QWidget
{
    Q_OBJECT

public:
    explicit ColumnChoices(QWidget *parent = nullptr);

    /// The grid, and which of its sections is the file's first column.
    void SetGrid(host::Grid *grid, int firstSection);
    /// One choice for each caption, of these fields; `chosen` is what they begin with.
    void SetColumns(const QStringList &captions, const QList<goods::ImportFieldInfo> &fields,
                    const QList<goods::ImportField> &chosen);
    QList<goods::ImportField> Chosen() const;
    QList<QWidget *> TabStops() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// The user chose for a column. Another column that had this field has none now.
    void Chose(int column);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void Place();
    void TakeFromOthers(int column);

    host::Grid *m_grid = nullptr;
    int m_firstSection = 0;
    QList<QComboBox *> m_combos;
};

} // namespace goods_import
