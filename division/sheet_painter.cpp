#include "division/sheet_painter.h"

#include <QPainter>

namespace division {

void PaintSheets(QPainter &painter, const QRectF &area, const SheetPlan &plan, int current)
{
    Q_UNUSED(current)
    Q_UNUSED(plan)
    painter.drawRect(area);
}

} // namespace division
