#include "tsql/values/error.h"

#include <utility>

namespace tsql {

Error::Error(Wording wording, std::initializer_list<ErrorArgument> arguments, int line)
    : Error(wording.number, line, ErrorText(wording, arguments))
{}

Error::Error(int number, int line, QString message)
    : m_number(number), m_message(std::move(message)), m_line(line), m_utf8(m_message.toUtf8())
{}

Error Error::Worded(int number, QString message, int line)
{
    return {number, line, std::move(message)};
}

void Error::setSeverity(int severity, int state)
{
    m_severity = severity;
    m_state = state;
}

Error NestedTooDeeply(int line)
{
    return {191, {}, line};
}

Error NotSupported(const QString &what, int line)
{
    return {40517, {what}, line};
}

} // namespace tsql
