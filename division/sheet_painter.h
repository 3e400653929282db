#pragma once

#include "division/sheet_layout.h"

#include <QRectF>

class QPainter;

namespace division {

/// Draws the sheets of a plan side by side into `area`, to one scale, with their measures: waste is hatched, the piece
/// being typed is dashed, those of the row `current` stand out. The same on screen and on paper.
void PaintSheets(QPainter &painter, const QRectF &area, const SheetPlan &plan, int current = 0);

} // namespace division
