#pragma once

#include "host/services/message_service.h"

#include <QList>

namespace test {

/// Records everything said to the user and answers questions from a queue. A question without a queued answer fails
/// the test and is answered No; at the end of a test every message must have been taken and the queue be empty.
class FakeMessages : public host::MessageService
{
public:
    ~FakeMessages() override { CheckAccounted(); }

    /// Queues the answer to the next question.
    void Answer(bool yes) { m_answers << yes; }
    /// Takes the oldest message: the name of the function and what it was given, "MsgRepeatedField(نام, کالا)", a plain
    /// text as "ShowMessage(text)", a numbered message as "ShowSmartMessage(10325, کالا, 6 رقم)". Empty when there is
    /// none.
    QString Take() { return m_said.isEmpty() ? QString() : m_said.takeFirst(); }
    /// Takes them all.
    QStringList TakeAll() { return std::exchange(m_said, {}); }
    /// Fails the running test when a message was not taken or an answer not asked for.
    void CheckAccounted();

    void MsgRequiredField(const QString &caption) override { Say("MsgRequiredField", {caption}); }
    void MsgRepeatedField(const QString &field, const QString &entity) override
    {
        Say("MsgRepeatedField", {field, entity});
    }
    void MsgRepeatedCode(const QString &caption) override { Say("MsgRepeatedCode", {caption}); }
    void NotZeroValue(const QString &caption) override { Say("NotZeroValue", {caption}); }
    void MsgPercent(const QString &caption) override { Say("MsgPercent", {caption}); }
    void NotSaveable(const QString &parent, const QString &child) override { Say("NotSaveable", {parent, child}); }
    void MsgHasSubRecordsAnother(const QString &what, const QString &where) override
    {
        Say("MsgHasSubRecordsAnother", {what, where});
    }
    bool MsgDeleteRow() override { return Question("MsgDeleteRow", {}); }
    bool MsgDeleteItem(const QString &what) override { return Question("MsgDeleteItem", {what}); }
    bool ContinueWithRepeatedField(const QString &caption) override
    {
        return Question("ContinueWithRepeatedField", {caption});
    }
    void MSGCompeletedSuccessfully(const QString &what) override { Say("MSGCompeletedSuccessfully", {what}); }
    void ShowSmartMessage(int number, const QStringList &parameters, int, QWidget *beside) override
    {
        anchor = beside;
        Say("ShowSmartMessage", QStringList(QString::number(number)) + parameters);
    }
    bool Confirm(int number, const QStringList &parameters) override
    {
        return Question("Confirm", QStringList(QString::number(number)) + parameters);
    }
    QString TextOf(int number, const QStringList &parameters) override
    {
        return (QStringList(QString::number(number)) + parameters).join(u", ");
    }
    void ShowFlashMessage(const QString &text, int) override { Say("ShowFlashMessage", {text}); }
    void ShowMessage(const QString &text, host::MessageIcon shown, const QString &) override
    {
        icon = shown;
        Say("ShowMessage", {text});
    }
    bool Ask(const QString &text, bool) override { return Question("Ask", {text}); }

    /// The control beside which the last smart message appeared.
    QWidget *anchor = nullptr;
    /// The icon of the last plain message.
    host::MessageIcon icon{};

private:
    void Say(const char *function, const QStringList &texts);
    bool Question(const char *function, const QStringList &texts);

    QStringList m_said;
    QList<bool> m_answers;
};

} // namespace test
