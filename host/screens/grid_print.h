#pragma once

#include "host/host_export.h"

#include <QPageLayout>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <vector>

class QPainter;
class QPrinter;
class QWidget;

namespace host {

class Grid;

/// Prints a grid as a table: title and date above, captions repeated on each page, rows striped, page numbers below;
/// right to left as on the screen.
class HOST_EXPORT GridPrinter
{
public:
    /// `date` is printed beside the title as it stands.
    GridPrinter(Grid &grid, const QString &title, const QString &date);

    /// Paints every page on `printer`.
    void Print(QPrinter &printer);
    /// Writes the pages to a PDF file. Throws std::runtime_error, whose text is for the user.
    void WritePdf(const QString &file);
    /// Shows the preview, modal to `parent`.
    void Preview(QWidget *parent);

private:
    QPageLayout::Orientation Orientation() const;
    void PaintPage(QPainter &painter, const QRectF &page, int firstRow, int lastRow, int number, int count);

    Grid &m_grid;
    QString m_title;
    QString m_date;
    std::vector<double> m_widths; ///< share of the page's width per visible column
};

} // namespace host
