#include "desk/messages/balloon.h"

#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

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
    : QWidget(anchor->window(), Qt::ToolTip | Qt::FramelessWindowHint), m_anchor(anchor)
{
    setObjectName(u"Balloon"_s);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    auto *label = new QLabel(text, this);
    label->setObjectName(u"Balloon_LBL"_s);
    label->setTextFormat(Qt::PlainText);
    label->setStyleSheet(u"color: #3B2B05; background: transparent;"_s);
    if (label->sizeHint().width() > TextWidth) {
        label->setWordWrap(true);
        label->setFixedWidth(TextWidth);
    }
    auto *column = new QVBoxLayout(this);
    column->addWidget(label);
}

void Balloon::Place()
{
    const QRect screen = m_anchor->screen()->availableGeometry();
    const QRect target(m_anchor->mapToGlobal(QPoint(0, 0)), m_anchor->size());
    layout()->setContentsMargins(14, 10 + TipHeight, 14, 10);
    adjustSize();
    m_below = target.bottom() + height() <= screen.bottom();
    if (!m_below)
        layout()->setContentsMargins(14, 10, 14, 10 + TipHeight);
    const int wanted = target.center().x() - width() / 2;
    const int left = std::clamp(wanted, screen.left(), std::max(screen.left(), screen.right() - width()));
    m_tip = std::clamp(target.center().x() - left, Radius + TipHalf, width() - Radius - TipHalf);
    move(left, m_below ? target.bottom() : target.top() - height());
}

void Balloon::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal top = m_below ? TipHeight : 0.5;
    const qreal bottom = m_below ? height() - 0.5 : height() - TipHeight;
    QPainterPath body;
    body.addRoundedRect(QRectF(QPointF(0.5, top), QPointF(width() - 0.5, bottom)), Radius, Radius);
    const qreal base = m_below ? top : bottom;
    const qreal point = m_below ? 0.5 : height() - 0.5;
    QPainterPath tip;
    tip.addPolygon(QPolygonF{{QPointF(m_tip - TipHalf, base), QPointF(m_tip, point), QPointF(m_tip + TipHalf, base)}});
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
