#include "division/cut_view.h"

#include "division/sheet_painter.h"
#include "host/look/theme.h"

#include <QPainter>

namespace division {

namespace {

constexpr int Margin = 8;

} // namespace

CutView::CutView(QWidget *parent) : QWidget(parent)
{}

void CutView::SetPlan(const SheetPlan &plan)
{
    m_plan = plan;
    m_remark = PlanRemark(plan);
    update();
}

void CutView::SetCurrent(int row)
{
    if (m_current == row)
        return;
    m_current = row;
    update();
}

void CutView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(host::theme::Line());
    painter.setBrush(host::theme::Surface());
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    QRectF area = QRectF(rect()).adjusted(Margin, Margin / 2, -Margin, -Margin);
    if (!m_remark.isEmpty()) {
        constexpr int flags = Qt::AlignBottom | Qt::AlignHCenter | Qt::TextWordWrap;
        const QRectF text = painter.boundingRect(area, flags, m_remark);
        painter.setPen(m_plan.Left.isEmpty() ? host::theme::InkSoft() : host::theme::Danger());
        painter.drawText(area, flags, m_remark);
        area.setBottom(text.top() - Margin);
    }
    PaintSheets(painter, area, m_plan, m_current);
}

} // namespace division
