#include "division/cut_view.h"

#include "division/sheet_painter.h"
#include "host/look/palette.h"

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
    const host::Palette &paper = host::Palette::Light();
    QPainter painter(this);
    painter.setPen(paper.Line);
    painter.setBrush(paper.Surface);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    QRectF area = QRectF(rect()).adjusted(Margin, Margin / 2.0, -Margin, -Margin);
    if (!m_remark.isEmpty()) {
        constexpr int flags = Qt::AlignBottom | Qt::AlignHCenter | Qt::TextWordWrap;
        const QRectF text = painter.boundingRect(area, flags, m_remark);
        painter.setPen(m_plan.Left.isEmpty() ? paper.InkSoft : paper.Danger);
        painter.drawText(area, flags, m_remark);
        area.setBottom(text.top() - Margin);
    }
    PaintSheets(painter, area, m_plan, m_current);
}

} // namespace division
