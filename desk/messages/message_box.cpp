#include "desk/messages/message_box.h"

#include "desk/messages/catalogue.h"
#include "host/look/icons.h"
#include "host/look/theme.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int IconSize = 40;

QIcon IconOf(host::MessageIcon icon)
{
    switch (icon) {
    case host::MessageIcon::Warning:
        return host::Icon(host::Glyph::Warning, [] { return QColor(0xB7, 0x6E, 0x00); });
    case host::MessageIcon::Error:
        return host::Icon(host::Glyph::Error, host::theme::Danger);
    case host::MessageIcon::Information:
        break;
    }
    return host::Icon(host::Glyph::Information, host::theme::Accent);
}

/// A paragraph that begins with the name of a file is read from the right like all others.
QString FromTheRight(const QString &text)
{
    QStringList lines = text.split(u'\n');
    for (QString &line : lines)
        if (!line.isRightToLeft())
            line.prepend(QChar(0x200F));
    return lines.join(u'\n');
}

void Dress(QMessageBox &box, const QString &text, const QString &caption, const QIcon &icon)
{
    box.setObjectName(u"Message_BOX"_s);
    box.setWindowTitle(caption.isEmpty() ? QString::fromUtf16(MessageCaption) : caption);
    box.setTextFormat(Qt::PlainText);
    box.setText(FromTheRight(text));
    box.setIconPixmap(icon.pixmap(QSize(IconSize, IconSize), box.devicePixelRatioF()));
}

QPushButton *AddButton(QMessageBox &box, const QString &caption, QMessageBox::ButtonRole role)
{
    QPushButton *button = box.addButton(caption, role);
    button->setMinimumWidth(96);
    button->setIcon({});
    return button;
}

} // namespace

void ShowBox(QWidget *parent, const QString &text, host::MessageIcon icon, const QString &caption)
{
    QMessageBox box(parent);
    Dress(box, text, caption, IconOf(icon));
    QPushButton *confirm = AddButton(box, u"&تأیید"_s, QMessageBox::AcceptRole);
    box.setDefaultButton(confirm);
    box.setEscapeButton(confirm);
    box.exec();
}

bool AskBox(QWidget *parent, const QString &text, bool defaultYes, const QString &caption)
{
    QMessageBox box(parent);
    Dress(box, text, caption, host::Icon(host::Glyph::Question, host::theme::Accent));
    QPushButton *yes = AddButton(box, u"&بله"_s, QMessageBox::YesRole);
    QPushButton *no = AddButton(box, u"&خیر"_s, QMessageBox::NoRole);
    box.setDefaultButton(defaultYes ? yes : no);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes;
}

} // namespace desk
