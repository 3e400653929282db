#include "desk/settings/check_delegate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QStyle>

namespace desk {

void CheckDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const bool checkable = cell.features.testFlag(QStyleOptionViewItem::HasCheckIndicator);
    const Qt::CheckState state = cell.checkState;
    cell.features.setFlag(QStyleOptionViewItem::HasCheckIndicator, false);
    const QStyle *style = cell.widget ? cell.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    if (!checkable)
        return;
    QStyleOptionButton box;
    box.rect = style->subElementRect(QStyle::SE_CheckBoxIndicator, &box, cell.widget);
    box.rect.moveCenter(option.rect.center());
    box.state = QStyle::State_Enabled | (state == Qt::Checked ? QStyle::State_On : QStyle::State_Off);
    style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, painter, nullptr);
}

bool CheckDelegate::editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &,
                                const QModelIndex &index)
{
    if (!index.flags().testFlag(Qt::ItemIsUserCheckable) || !index.flags().testFlag(Qt::ItemIsEnabled))
        return false;
    const bool clicked = event->type() == QEvent::MouseButtonRelease;
    const bool pressed = event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Space;
    if (!clicked && !pressed)
        return false;
    const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    return model->setData(index, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

} // namespace desk
