#include "tsql/values/error.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tsql {

Error::Error(int number, QString message, int line)
    : m_number(number), m_message(std::move(message)), m_line(line), m_utf8(m_message.toUtf8())
{}

void Error::setSeverity(int severity, int state)
{
    m_severity = severity;
    m_state = state;
}

Error nestedTooDeeply(int line)
{
    return {191,
            u"Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into smaller "
            "queries."_s,
            line};
}

Error notSupported(const QString &what, int line)
{
    return {40517, u"Keyword or statement option '%1' is not supported in this version of the database."_s.arg(what),
            line};
}

} // namespace tsql
