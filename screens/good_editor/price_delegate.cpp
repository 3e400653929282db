#include "screens/good_editor/price_delegate.h"

#include "host/controls/numeric_edit.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace {

constexpr int PriceLength = 15;

} // namespace

QWidget *PriceDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const
{
    auto *edit = new host::NumericEdit(parent);
    edit->setObjectName(u"Price_EDT"_s);
    edit->setMaxLength(PriceLength);
    edit->setWholeDigits(PriceLength);
    edit->setFrame(false);
    return edit;
}

void PriceDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *edit = static_cast<host::NumericEdit *>(editor);
    edit->SetStored(host::TrimDecimal(index.data(Qt::EditRole).toString()));
    edit->selectAll();
}

void PriceDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    auto *edit = static_cast<host::NumericEdit *>(editor);
    edit->ZeroWhenEmpty();
    if (edit->text() != host::TrimDecimal(index.data(Qt::EditRole).toString()))
        model->setData(index, edit->text(), Qt::EditRole);
}

bool PriceDelegate::eventFilter(QObject *editor, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            auto *widget = static_cast<QWidget *>(editor);
            emit commitData(widget);
            emit closeEditor(widget);
            emit Entered();
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(editor, event);
}
