#pragma once

#include "host/host_export.h"

#include <QSqlError>
#include <QString>

#include <stdexcept>

namespace host {

/// Why a statement was refused, as far as it means something to the user.
enum class DatabaseFault {
    Other,
    Locked,     ///< another connection holds what is needed
    Deadlock,   ///< two connections waited for each other, and this one had to give way
    TooLong,    ///< a text does not fit its column
    OutOfRange, ///< a number does not fit its column
    Repeated,   ///< a unique or primary key has the value already
    Missing,    ///< a column that must not be empty
    Referenced, ///< a row that others refer to, or that refers to none
};

/// A statement that the database refused, or a database that does not answer.
class HOST_EXPORT DatabaseError : public std::runtime_error
{
public:
    DatabaseError(const QSqlError &error, const QString &statement);
    /// An error found by the data layer itself (a row that is gone, a commit after an inner rollback).
    explicit DatabaseError(const QString &text, const QString &statement = {});

    /// What happened, for the user: in his language where the fault is known, in the driver's own words, which may
    /// quote typed values, where it is not. `caption` names the input that the fault is about, when there is one.
    QString Text(const QString &caption = {}) const;
    DatabaseFault Fault() const;
    /// The column that the database names as the one at fault; empty when it names none.
    QString Column() const;
    /// The statement with its literals masked.
    const QString &Statement() const { return m_statement; }
    /// The server's error number or state, as the driver gives it.
    const QString &NativeCode() const { return m_native; }
    /// What may go into a log: code, words and statement, without any value.
    QString LogText() const;
    /// True when the connection is gone, so that repeating the command needs a new connection.
    bool ConnectionLost() const { return m_lost; }
    /// True when a unique or primary key refused the row.
    bool KeyViolation() const;

private:
    QString m_text;
    QString m_statement;
    QString m_native;
    bool m_lost = false;
};

/// The row that was to be changed is not there any more; `kind` is what the user calls it.
HOST_EXPORT DatabaseError RowGone(const QString &kind, const QString &statement = {});

} // namespace host
