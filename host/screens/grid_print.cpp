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
constexpr double padPoints = 4.0;
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
    painter.setPen(theme::Ink());
    painter.setFont(print::Font(14, true));
    const QRectF top(page.left(), page.top(), page.width(), titlePoints);
    painter.drawText(top, Qt::AlignRight | Qt::AlignVCenter, print::Text(m_title));
    painter.setFont(print::Font(9, false));
    painter.drawText(top, Qt::AlignLeft | Qt::AlignVCenter, PersianDigits(m_date));

    QRectF row(page.left(), top.bottom(), page.width(), rowPoints);
    painter.fillRect(row, QColor(0xe4, 0xea, 0xee));
    PaintRow(painter, row, m_grid.VisibleCaptions(), true);
    for (int index = firstRow; index < lastRow; ++index) {
        row.translate(0, rowPoints);
        if ((index - firstRow) % 2)
            painter.fillRect(row, QColor(0xf7, 0xf9, 0xfa));
        PaintRow(painter, row, m_grid.VisibleTexts(index), false);
    }
    const QRectF foot(page.left(), page.bottom() - footPoints, page.width(), footPoints);
    painter.drawText(foot, Qt::AlignCenter, print::Text(PersianDigits(u"صفحه %1 از %2"_s.arg(number).arg(count))));
}

void GridPrinter::PaintRow(QPainter &painter, const QRectF &row, const QStringList &texts, bool heading) const
{
    const QFont font = print::Font(9, heading);
    const QFontMetricsF metrics(font);
    painter.setFont(font);
    const double total = std::accumulate(m_widths.begin(), m_widths.end(), 0.0);
    double right = row.right();
    for (size_t column = 0; column < m_widths.size(); ++column) {
        const double width = row.width() * m_widths[column] / total;
        const QRectF cell(right - width, row.top(), width, row.height());
        painter.setPen(QPen(theme::Line(), 0.5));
        painter.drawRect(cell);
        painter.setPen(theme::Ink());
        const QRectF inside = cell.adjusted(padPoints, 0, -padPoints, 0);
        const QString text =
            metrics.elidedText(print::Text(texts.value(static_cast<qsizetype>(column))), Qt::ElideRight, inside.width());
        painter.drawText(inside, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text);
        right -= width;
    }
}

void GridPrinter::Preview(QWidget *parent)
{
    const bool wide = std::accumulate(m_widths.begin(), m_widths.end(), 0.0) > landscapeWidth;
    print::Preview(m_title, wide ? QPageLayout::Landscape : QPageLayout::Portrait, parent,
                   [this](QPrinter &on) { Print(on); });
}

} // namespace host
