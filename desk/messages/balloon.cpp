#include "desk/messages/balloon.h"

#include <QtCore/QTimer>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QScreen>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace desk {

namespace {

constexpr int TipHeight = 10;
constexpr int TipHalf = 9;
constexpr int Radius = 8;
constexpr int TextWidth = 320;
const QColor Ground(0xFF, 0xF6, 0xDD);
const QColor Border(0xC9, 0x8A, 0x1B);

} // namespace

void Balloon::Show(QWidget *anchor, const QString &text, int milliseconds)
{
    const auto former = anchor->window()->findChildren<Balloon *>();
    for (Balloon *balloon : former)
        delete balloon;
    auto *balloon = new Balloon(anchor, text);
    balloon->Place();
    balloon->show();
    QTimer::singleShot(milliseconds, balloon, &QObject::deleteLater);
}

Balloon::Balloon(QWidget *anchor, const QString &text)
    : QWidget(anchor->window(), Qt::ToolTip | Qt::FramelessWindowHint), anchor_(anchor)
{
    setObjectName(u"Balloon"_qs);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    auto *label = new QLabel(text, this);
    label->setObjectName(u"Balloon_LBL"_qs);
    label->setTextFormat(Qt::PlainText);
    label->setStyleSheet(u"color: #3B2B05; background: transparent;"_qs);
    if (label->sizeHint().width() > TextWidth) {
        label->setWordWrap(true);
        label->setFixedWidth(TextWidth);
    }
    auto *column = new QVBoxLayout(this);
    column->addWidget(label);
}

void Balloon::Place()
{
    const QRect screen = anchor_->screen()->availableGeometry();
    const QRect target(anchor_->mapToGlobal(QPoint(0, 0)), anchor_->size());
    layout()->setContentsMargins(14, 10 + TipHeight, 14, 10);
    adjustSize();
    below_ = target.bottom() + height() <= screen.bottom();
    if (!below_)
        layout()->setContentsMargins(14, 10, 14, 10 + TipHeight);
    const int wanted = target.center().x() - width() / 2;
    const int left = std::clamp(wanted, screen.left(), std::max(screen.left(), screen.right() - width()));
    tip_ = std::clamp(target.center().x() - left, Radius + TipHalf, width() - Radius - TipHalf);
    move(left, below_ ? target.bottom() : target.top() - height());
}

void Balloon::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal top = below_ ? TipHeight : 0.5;
    const qreal bottom = below_ ? height() - 0.5 : height() - TipHeight;
    QPainterPath body;
    body.addRoundedRect(QRectF(QPointF(0.5, top), QPointF(width() - 0.5, bottom)), Radius, Radius);
    const qreal base = below_ ? top : bottom;
    const qreal point = below_ ? 0.5 : height() - 0.5;
    QPainterPath tip;
    tip.addPolygon(QPolygonF{{QPointF(tip_ - TipHalf, base), QPointF(tip_, point), QPointF(tip_ + TipHalf, base)}});
    tip.closeSubpath();
    painter.setPen(QPen(Border, 1));
    painter.setBrush(Ground);
    painter.drawPath(body.united(tip));
}

void Balloon::mousePressEvent(QMouseEvent *)
{
    deleteLater();
}

} // namespace desk
