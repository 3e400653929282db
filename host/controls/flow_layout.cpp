#include "host/controls/flow_layout.h"

#include <QStyle>
#include <QWidget>

namespace host {
namespace {

constexpr int space = 4;

} // namespace

FlowLayout::~FlowLayout()
{
    qDeleteAll(m_items);
}

QLayoutItem *FlowLayout::takeAt(int index)
{
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem *item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

void FlowLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    Place(rect, true);
}

int FlowLayout::Place(const QRect &rect, bool apply) const
{
    const Qt::LayoutDirection direction = parentWidget() ? parentWidget()->layoutDirection() : Qt::RightToLeft;
    int x = rect.left();
    int y = rect.top();
    int line = 0;
    for (QLayoutItem *item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize size = item->sizeHint();
        if (x > rect.left() && x + size.width() > rect.right() + 1) {
            x = rect.left();
            y += line + space;
            line = 0;
        }
        if (apply)
            item->setGeometry(QStyle::visualRect(direction, rect, QRect(QPoint(x, y), size)));
        x += size.width() + space;
        line = qMax(line, size.height());
    }
    return y + line - rect.top();
}

} // namespace host
