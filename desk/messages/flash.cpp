#include "desk/messages/flash.h"

#include <QEvent>
#include <QGraphicsDropShadowEffect>
#include <QHBoxLayout>
#include <QLabel>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace desk {

namespace {
constexpr int Margin = 48; // above the lower edge of the window
constexpr int MaximumWidth = 640;
} // namespace

void Flash::Show(QWidget *window, const QString &text, int milliseconds)
{
    if (!window)
        return;
    const auto former = window->findChildren<Flash *>(Qt::FindDirectChildrenOnly);
    for (Flash *flash : former)
        delete flash;
    auto *flash = new Flash(window, text);
    flash->Place();
    flash->show();
    flash->raise();
    QTimer::singleShot(milliseconds, flash, &QObject::deleteLater);
}

Flash::Flash(QWidget *window, const QString &text) : QFrame(window)
{
    setObjectName(u"Flash"_s);
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(u"desk--Flash { background: #24323F; border-radius: 10px; }"
                  "desk--Flash QLabel { color: white; background: transparent; }"_s);
    auto *label = new QLabel(text, this);
    label->setObjectName(u"Flash_LBL"_s);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(label->sizeHint().width() > MaximumWidth);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(24, 12, 24, 12);
    row->addWidget(label);
    auto *shadow = new QGraphicsDropShadowEffect(this);
    shadow->setBlurRadius(24);
    shadow->setOffset(0, 4);
    shadow->setColor(QColor(0, 0, 0, 90));
    setGraphicsEffect(shadow);
    window->installEventFilter(this);
}

void Flash::Place()
{
    setMaximumWidth(std::min(MaximumWidth, parentWidget()->width() - 2 * Margin));
    adjustSize();
    move((parentWidget()->width() - width()) / 2, std::max(0, parentWidget()->height() - height() - Margin));
}

bool Flash::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        Place();
    return QFrame::eventFilter(watched, event);
}

void Flash::mousePressEvent(QMouseEvent *)
{
    deleteLater();
}

} // namespace desk
