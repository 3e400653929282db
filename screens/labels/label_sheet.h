#pragma once

#include "host/data/quantity.h"
#include "screens/labels/label_choices.h"

#include <QList>
#include <QRect>
#include <QSize>

namespace labels {

/// The paper of a layout and where its labels stand. Millimetres; the origin is the top left corner of the paper.
struct Paper
{
    QSizeF page;
    QSizeF label;
    int columns = 1;
    int rows = 1;
    double topMargin = 0;
    double sideMargin = 0;

    int PerPage() const { return rows * columns; }
};

/// Rows, columns and margins count for the sheet only.
Paper PaperOf(const Choices &choices);

/// True when each label of the sheet is large enough for a name and a barcode.
bool IsUsable(const Paper &paper);

/// Where a label goes.
struct Spot
{
    int page = 0; ///< from 0
    QRectF at;
};

/// The place of the label with this number, from 0. The first one stands in place `start`, from 1; places are filled
/// as one reads, from right to left and then downwards.
Spot SpotOf(const Paper &paper, int start, int number);

/// The pages that so many labels take; 0 for none.
int PagesFor(const Paper &paper, int start, int labels);

/// The labels for a stock on hand: one for each piece, also for one that is begun; none where nothing is left.
int CountOfStock(host::Quantity stock);

/// How a label is divided, in millimetres from its top left corner. An area without room is empty.
struct Areas
{
    QRectF name;
    QRectF barcode;
    QRectF price;
    int nameLines = 2;
};

Areas AreasOf(Layout layout, const QSizeF &label);

} // namespace labels
