#include "host/screens/grid_print.h"

#include "host/controls/grid.h"
#include "host/data/persian_text.h"
#include "host/look/theme.h"
#include "host/screens/print_page.h"

#include <QPainter>
#include <QPrinter>
#include <QProgressDialog>

#include <numeric>

using namespace Qt::StringLiterals;

namespace host {
namespace {

constexpr double rowPoints = 20.0;
constexpr double titlePoints = 34.0;
constexpr double footPoints = 20.0;
constexpr int longJobPages = 40;

/// Columns this wide together are better read across the long side of the page.
constexpr double landscapeWidth = 700.0;

} // namespace

GridPrinter::GridPrinter(Grid &grid, const QString &title, const QString &date)
    : m_grid(grid), m_title(title), m_date(date)
{
    const QList<GridColumn> columns = grid.Columns();
    for (const GridColumn &column : columns)
        if (!column.hidden)
            m_widths.push_back(column.width);
}

void GridPrinter::Print(QPrinter &printer)
{
    m_grid.FetchAll();
    QPainter painter(&printer);
    if (!painter.isActive() || m_widths.empty())
        return;
    const QRectF page = print::PageInPoints(painter, printer);

    const double body = page.height() - titlePoints - rowPoints - footPoints;
    const int rowsPerPage = qMax(1, static_cast<int>(body / rowPoints));
    const int rows = m_grid.RowCount();
    const int pages = qMax(1, (rows + rowsPerPage - 1) / rowsPerPage);
    QProgressDialog progress(u"آماده سازی صفحات ..."_s, u"انصراف"_s, 0, pages);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(pages > longJobPages ? 500 : INT_MAX);
    for (int number = 0; number < pages && !progress.wasCanceled(); ++number) {
        if (number > 0)
            printer.newPage();
        const int first = number * rowsPerPage;
        PaintPage(painter, page, first, qMin(first + rowsPerPage, rows), number + 1, pages);
        if (pages > longJobPages)
            progress.setValue(number);
    }
}

void GridPrinter::PaintPage(QPainter &painter, const QRectF &page, int firstRow, int lastRow, int number, int count)
{
    painter.setPen(theme::PaperInk());
    painter.setFont(print::Font(14, true));
    const QRectF top(page.left(), page.top(), page.width(), titlePoints);
    painter.drawText(top, Qt::AlignRight | Qt::AlignVCenter, print::Text(m_title));
    painter.setFont(print::Font(9, false));
    painter.drawText(top, Qt::AlignLeft | Qt::AlignVCenter, PersianDigits(m_date));

    QRectF row(page.left(), top.bottom(), page.width(), rowPoints);
    painter.fillRect(row, QColor(0xe4, 0xea, 0xee));
    print::TableRow(painter, row, m_widths, m_grid.VisibleCaptions(), true);
    for (int index = firstRow; index < lastRow; ++index) {
        row.translate(0, rowPoints);
        if ((index - firstRow) % 2)
            painter.fillRect(row, QColor(0xf7, 0xf9, 0xfa));
        print::TableRow(painter, row, m_widths, m_grid.VisibleTexts(index));
    }
    const QRectF foot(page.left(), page.bottom() - footPoints, page.width(), footPoints);
    painter.drawText(foot, Qt::AlignCenter, print::Text(PersianDigits(u"صفحه %1 از %2"_s.arg(number).arg(count))));
}

QPageLayout::Orientation GridPrinter::Orientation() const
{
    const bool wide = std::accumulate(m_widths.begin(), m_widths.end(), 0.0) > landscapeWidth;
    return wide ? QPageLayout::Landscape : QPageLayout::Portrait;
}

void GridPrinter::WritePdf(const QString &file)
{
    print::WritePdf(m_title, Orientation(), file, [this](QPrinter &on) { Print(on); });
}

void GridPrinter::Preview(QWidget *parent)
{
    print::Preview(m_title, Orientation(), parent, [this](QPrinter &on) { Print(on); });
}

} // namespace host
