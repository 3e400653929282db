#include "tests/support/fake_messages.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace test {

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

} // namespace test
