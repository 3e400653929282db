#pragma once

#include <QString>

#include <exception>

namespace tsql {

/// A refused statement, with the number and text the server would give and the line within the batch (from 1).
class Error : public std::exception
{
public:
    Error(int number, QString message, int line = 0);

    const char *what() const noexcept override { return m_utf8.constData(); }
    int number() const { return m_number; }
    const QString &message() const { return m_message; }
    int line() const { return m_line; }
    int severity() const { return m_severity; }
    int state() const { return m_state; }
    void setLine(int line) { m_line = line; }
    void setSeverity(int severity, int state);

private:
    int m_number;
    QString m_message;
    int m_line;
    int m_severity = 16;
    int m_state = 1;
    QByteArray m_utf8;
};

/// 191: for texts beyond what the parsers take.
Error nestedTooDeeply(int line = 0);

/// Error 40517: what this database does not carry out, by its name.
Error notSupported(const QString &what, int line = 0);

} // namespace tsql
