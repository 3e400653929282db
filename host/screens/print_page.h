#pragma once

#include "host/host_export.h"

#include <QFont>
#include <QPageLayout>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class QPainter;
class QPrinter;
class QPrintPreviewDialog;
class QWidget;

/// What printed pages have in common.
namespace host::print {

/// Makes the painter work in points and answers the page that may be printed on.
HOST_EXPORT QRectF PageInPoints(QPainter &painter, const QPrinter &printer);
/// A font for a painter that works in points.
HOST_EXPORT QFont Font(int points, bool bold = false);
/// A preview keeps each run of one direction by itself, drawn from left to right: a blank between a word and a number
/// would change its side there. A direction mark keeps it inside the word's run.
HOST_EXPORT QString Text(const QString &text);
/// A row of a table, from right to left; `widths` are the columns' shares of it. Texts that are too long end in "…".
HOST_EXPORT void TableRow(QPainter &painter, const QRectF &row, const std::vector<double> &widths,
                          const QStringList &texts, bool heading = false);
/// Writes pages of A4 as `paint` makes them to a PDF file, which appears when it is complete. Throws
/// std::runtime_error, whose text is for the user.
HOST_EXPORT void WritePdf(const QString &title, QPageLayout::Orientation orientation, const QString &file,
                          const std::function<void(QPrinter &printer)> &paint);
/// Makes a preview of use on a small screen and without a mouse: Tab leads through its commands, Ctrl+P prints.
HOST_EXPORT void SetUpPreview(QPrintPreviewDialog &preview);
/// Shows such pages, modal to `parent`.
HOST_EXPORT void Preview(const QString &title, QPageLayout::Orientation orientation, QWidget *parent,
                         const std::function<void(QPrinter &printer)> &paint);

} // namespace host::print
