#include "screens/good_editor/barcode_edit.h"

#include "host/screens/theme.h"

#include <QtGui/QAction>
#include <QtGui/QIcon>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>

namespace {

QIcon PlusIcon()
{
    constexpr int side = 64;
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(QPen(host::theme::Accent(), 7, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(side / 2, 14, side / 2, side - 14);
    painter.drawLine(14, side / 2, side - 14, side / 2);
    return pixmap;
}

} // namespace

BarcodeEdit::BarcodeEdit(QWidget *parent) : QLineEdit(parent)
{
    QAction *complete = addAction(PlusIcon(), QLineEdit::TrailingPosition);
    complete->setObjectName(QStringLiteral("complete"));
    connect(complete, &QAction::triggered, this, &BarcodeEdit::CompletionRequested);
}
