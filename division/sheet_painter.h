#pragma once

#include "division/sheet_layout.h"

class QPainter;

namespace division {

/// Draws the sheets of a plan into `area`, all to one scale and the first at the right, with their measures: waste is
/// hatched, what is being typed (row 0) is dashed, the pieces of the row `current` stand out. The same on screen and on
/// paper; the painter's font is that of the measures.
void PaintSheets(QPainter &painter, const QRectF &area, const SheetPlan &plan, int current = -1);

/// What the plan has to say beside the drawing: pieces without a place, sheets that are not cut. Empty when all is
/// well.
QString PlanRemark(const SheetPlan &plan);

} // namespace division
