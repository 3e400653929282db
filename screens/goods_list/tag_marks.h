#pragma once

#include "host/controls/tags_panel.h"

#include <QHash>
#include <QStyledItemDelegate>

namespace goods_list {

/// Paints a cell that holds the code of a tag as a mark in the tag's colour; its tool tip names the tag.
class TagMarks : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void SetTags(const QList<host::Tag> &tags);

    /// The tag's name, for what has no colours: a printed list.
    QString displayText(const QVariant &value, const QLocale &locale) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    QHash<QString, host::Tag> m_tags;
};

} // namespace goods_list
