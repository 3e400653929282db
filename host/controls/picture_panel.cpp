#include "host/controls/picture_panel.h"

#include "host/data/persian_text.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

PicturePanel::PicturePanel(QWidget *parent) : QWidget(parent)
{
    m_picture = new QLabel(this);
    m_picture->setObjectName(u"Picture_IMG"_s);
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->setMinimumSize(120, 90);
    m_picture->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    m_position = new QLabel(this);
    m_position->setObjectName(u"Position_LBL"_s);
    m_position->setAlignment(Qt::AlignCenter);

    auto *row = new QHBoxLayout;
    const auto add = [&](const QString &name, const QString &text, const QString &hint) {
        auto *button = new QToolButton(this);
        button->setObjectName(name);
        button->setText(text);
        button->setToolTip(hint);
        row->addWidget(button);
        return button;
    };
    // The arrows point along the reading direction: onward is to the left.
    m_first = add(u"First_BTN"_s, u"⏭"_s, u"اولین"_s);
    m_previous = add(u"Previous_BTN"_s, u"▶"_s, u"قبلی"_s);
    row->addWidget(m_position, 1);
    m_next = add(u"Next_BTN"_s, u"◀"_s, u"بعدی"_s);
    m_last = add(u"Last_BTN"_s, u"⏮"_s, u"آخرین"_s);
    QToolButton *close = add(u"Close_BTN"_s, u"✕"_s, u"بستن"_s);
    row->setContentsMargins(0, 0, 0, 0);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->addWidget(m_picture, 1);
    column->addLayout(row);

    connect(m_first, &QToolButton::clicked, this, &PicturePanel::First);
    connect(m_previous, &QToolButton::clicked, this, &PicturePanel::Previous);
    connect(m_next, &QToolButton::clicked, this, &PicturePanel::Next);
    connect(m_last, &QToolButton::clicked, this, &PicturePanel::Last);
    connect(close, &QToolButton::clicked, this, &PicturePanel::CloseRequested);
    SetPictures({});
}

void PicturePanel::SetPictures(const QList<QByteArray> &pictures)
{
    m_pictures = pictures;
    Show(pictures.isEmpty() ? -1 : 0);
}

void PicturePanel::First()
{
    Show(m_pictures.isEmpty() ? -1 : 0);
}

void PicturePanel::Previous()
{
    if (m_current > 0)
        Show(m_current - 1);
}

void PicturePanel::Next()
{
    if (m_current + 1 < Count())
        Show(m_current + 1);
}

void PicturePanel::Last()
{
    Show(Count() - 1);
}

void PicturePanel::Show(int index)
{
    m_current = index;
    m_pixmap = QPixmap();
    if (index >= 0)
        m_pixmap.loadFromData(m_pictures.at(index));
    m_first->setEnabled(index > 0);
    m_previous->setEnabled(index > 0);
    m_next->setEnabled(index + 1 < Count());
    m_last->setEnabled(index + 1 < Count());
    m_position->setText(index < 0 ? QString() : PersianDigits(u"%1 از %2"_s.arg(index + 1).arg(Count())));
    Fit();
}

void PicturePanel::Fit()
{
    if (m_pixmap.isNull()) {
        m_picture->setText(m_current < 0 ? u"بدون تصویر"_s : u"تصویر خوانده نشد"_s);
        return;
    }
    const double ratio = devicePixelRatioF();
    QPixmap scaled = m_pixmap.scaled(m_picture->size() * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(ratio);
    m_picture->setPixmap(scaled);
}

void PicturePanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Fit();
}

} // namespace host
