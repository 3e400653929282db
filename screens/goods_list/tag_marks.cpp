#include "screens/goods_list/tag_marks.h"

#include "host/data/persian_text.h"
#include "host/look/theme.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace goods_list {

namespace {

constexpr qreal Diameter = 12;

QString TagCode(const QVariant &value)
{
    return host::FoldDigits(value.toString()).trimmed();
}

} // namespace

void TagMarks::SetTags(const QList<host::Tag> &tags)
{
    m_tags.clear();
    for (const host::Tag &tag : tags)
        m_tags.insert(QString::number(tag.Code), tag);
}

QString TagMarks::displayText(const QVariant &value, const QLocale & /*locale*/) const
{
    return m_tags.value(TagCode(value)).Name;
}

void TagMarks::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.text.clear();
    const QWidget *widget = option.widget;
    const QStyle *style = widget != nullptr ? widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, widget);
    const auto tag = m_tags.constFind(TagCode(index.data()));
    if (tag == m_tags.constEnd())
        return;
    QRectF mark(0, 0, Diameter, Diameter);
    mark.moveCenter(QRectF(option.rect).center());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(tag->Color);
    painter->drawEllipse(mark);
    painter->restore();
}

bool TagMarks::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                         const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QToolTip::showText(event->globalPos(), host::theme::PlainToolTip(m_tags.value(TagCode(index.data())).Name), view,
                       option.rect);
    return true;
}

} // namespace goods_list
