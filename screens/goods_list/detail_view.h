#pragma once

#include "host/controls/grid_column.h"

#include <QFrame>
#include <QStringList>
#include <QVariant>

#include <functional>

class QLabel;

namespace goods_list {

/// More of the current good than the grid's columns show: its full name and a few lines of captions and values.
class DetailView : public QFrame
{
    Q_OBJECT

public:
    explicit DetailView(QWidget *parent = nullptr);

    /// The fields that `Show` reads.
    static QStringList Fields();

    void SetTitleFont(const QFont &font);
    /// Shows the row that `value` reads by field name; a row without a `Code` empties the view.
    void Show(const std::function<QVariant(const QString &field)> &value);

private:
    struct Line
    {
        QString field;
        host::ColumnFormat format;
        QLabel *value;
    };

    void AddLine(int row, int column, const QString &field, const QString &caption, host::ColumnFormat format);

    QLabel *m_name;
    QList<Line> m_lines;
};

/// The barcodes of a good as people read them: "!111!222!" gives "111  222".
QString BarcodesText(const QString &abbName);

} // namespace goods_list
