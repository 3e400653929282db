#include "desk/services/messages.h"

#include "desk/messages/balloon.h"
#include "desk/messages/catalogue.h"
#include "desk/messages/flash.h"
#include "desk/messages/message_box.h"

#include <QApplication>

namespace desk {

namespace {
constexpr int FlashTime = 2000; // milliseconds
}

QWidget *Messages::Owner() const
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget *active = QApplication::activeWindow())
        return active;
    return m_window;
}

void Messages::Warn(int number, const QStringList &parameters)
{
    ShowBox(Owner(), MessageText(number, parameters), host::MessageIcon::Warning);
}

void Messages::MsgRequiredField(const QString &caption)
{
    Warn(message::RequiredField, {caption});
}

void Messages::MsgRepeatedField(const QString &field, const QString &entity)
{
    Warn(message::RepeatedField, {field, entity});
}

void Messages::MsgRepeatedCode(const QString &caption)
{
    Warn(message::RepeatedCode, {caption});
}

void Messages::NotZeroValue(const QString &caption)
{
    Warn(message::NotZero, {caption});
}

void Messages::MsgPercent(const QString &caption)
{
    Warn(message::Percent, {caption});
}

void Messages::NotSaveable(const QString &parent, const QString &child)
{
    Warn(message::NotSaveable, {parent, child});
}

void Messages::MsgHasSubRecordsAnother(const QString &what, const QString &where)
{
    Warn(message::HasSubRecords, {what, where});
}

bool Messages::MsgDeleteRow()
{
    return AskBox(Owner(), MessageText(message::DeleteRow), false);
}

bool Messages::MsgDeleteItem(const QString &what)
{
    return AskBox(Owner(), MessageText(message::DeleteItem, {what}), false);
}

bool Messages::ContinueWithRepeatedField(const QString &caption)
{
    return AskBox(Owner(), MessageText(message::ContinueRepeated, {caption}), false);
}

void Messages::MSGCompeletedSuccessfully(const QString &what)
{
    ShowFlashMessage(MessageText(message::Completed, {what}), FlashTime);
}

void Messages::ShowSmartMessage(int number, const QStringList &parameters, int milliseconds, QWidget *anchor)
{
    const QString text = MessageText(number, parameters);
    if (anchor && anchor->isVisible())
        Balloon::Show(anchor, text, milliseconds);
    else
        ShowFlashMessage(text, milliseconds);
}

bool Messages::Confirm(int number, const QStringList &parameters)
{
    return AskBox(Owner(), MessageText(number, parameters), true);
}

QString Messages::TextOf(int number, const QStringList &parameters)
{
    return MessageText(number, parameters);
}

void Messages::ShowFlashMessage(const QString &text, int milliseconds)
{
    QWidget *owner = Owner();
    Flash::Show(owner ? owner->window() : nullptr, text, milliseconds);
}

void Messages::ShowMessage(const QString &text, host::MessageIcon icon, const QString &caption)
{
    ShowBox(Owner(), text, icon, caption);
}

bool Messages::Ask(const QString &text, bool defaultYes)
{
    return AskBox(Owner(), text, defaultYes);
}

} // namespace desk
