#include "tests/support/fake_messages.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace test {
namespace {

QStringList Numbered(int number, const QStringList &parameters)
{
    return QStringList{QString::number(number)} + parameters;
}

} // namespace

void FakeMessages::Say(const char *function, const QStringList &texts)
{
    m_said << QLatin1String(function) + u'(' + texts.join(u", "_s) + u')';
}

bool FakeMessages::Question(const char *function, const QStringList &texts)
{
    Say(function, texts);
    if (m_answers.isEmpty()) {
        QTest::qFail(qPrintable(u"no answer is queued for "_s + m_said.last()), __FILE__, __LINE__);
        return false;
    }
    return m_answers.takeFirst();
}

void FakeMessages::CheckAccounted()
{
    for (const QString &text : std::as_const(m_said))
        QTest::qFail(qPrintable(u"a message was not accounted for: "_s + text), __FILE__, __LINE__);
    if (!m_answers.isEmpty())
        QTest::qFail("an answer was queued that nobody asked for", __FILE__, __LINE__);
    m_said.clear();
    m_answers.clear();
}

void FakeMessages::MsgRequiredField(const QString &caption)
{
    Say("MsgRequiredField", {caption});
}
void FakeMessages::MsgRepeatedField(const QString &field, const QString &entity)
{
    Say("MsgRepeatedField", {field, entity});
}
void FakeMessages::MsgRepeatedCode(const QString &caption)
{
    Say("MsgRepeatedCode", {caption});
}
void FakeMessages::NotZeroValue(const QString &caption)
{
    Say("NotZeroValue", {caption});
}
void FakeMessages::MsgPercent(const QString &caption)
{
    Say("MsgPercent", {caption});
}
void FakeMessages::NotSaveable(const QString &parent, const QString &child)
{
    Say("NotSaveable", {parent, child});
}
void FakeMessages::MsgHasSubRecordsAnother(const QString &what, const QString &where)
{
    Say("MsgHasSubRecordsAnother", {what, where});
}
bool FakeMessages::MsgDeleteRow()
{
    return Question("MsgDeleteRow", {});
}
bool FakeMessages::MsgDeleteItem(const QString &what)
{
    return Question("MsgDeleteItem", {what});
}
bool FakeMessages::ContinueWithRepeatedField(const QString &caption)
{
    return Question("ContinueWithRepeatedField", {caption});
}
void FakeMessages::MSGCompeletedSuccessfully(const QString &what)
{
    Say("MSGCompeletedSuccessfully", {what});
}
void FakeMessages::ShowSmartMessage(int number, const QStringList &parameters, int, QWidget *beside)
{
    anchor = beside;
    Say("ShowSmartMessage", Numbered(number, parameters));
}
bool FakeMessages::Confirm(int number, const QStringList &parameters)
{
    return Question("Confirm", Numbered(number, parameters));
}
void FakeMessages::ShowFlashMessage(const QString &text, int)
{
    Say("ShowFlashMessage", {text});
}
void FakeMessages::ShowMessage(const QString &text, host::MessageIcon shown, const QString &)
{
    icon = shown;
    Say("ShowMessage", {text});
}
bool FakeMessages::Ask(const QString &text, bool)
{
    return Question("Ask", {text});
}

} // namespace test
