#pragma once

#include <QStyledItemDelegate>

/// Edits a price in its cell as any other number is edited: Persian digits, no more than fifteen of them.
class PriceDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

signals:
    /// Enter took the price over.
    void Entered();

protected:
    bool eventFilter(QObject *editor, QEvent *event) override;
};
