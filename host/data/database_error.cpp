#include "host/data/database_error.h"

#include "host/data/sql_text.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

/// By which clients of a server say that the connection is gone: SQLSTATE class 08, FreeTDS, Windows' sockets.
const QStringList LostCodes{u"08S01"_s, u"08003"_s, u"20004"_s, u"20006"_s, u"20009"_s,
                            u"20017"_s, u"20047"_s, u"10053"_s, u"10054"_s};

/// The same in words, which count only where no code came from the server. FreeTDS has no words of its own for the
/// first statement after the end.
const QStringList LostWords{u"communication link failure"_s,
                            u"connection is broken"_s,
                            u"not connected"_s,
                            u"unknown error"_s,
                            u"unexpected eof from the server"_s,
                            u"to the server failed"_s,
                            u"from the server failed"_s,
                            u"could not change transaction status"_s};

bool SaysConnectionLost(const QSqlError &error)
{
    // Qt's ODBC driver calls every error of a fetch, and of a batch behind its first result, one of the connection.
    if (error.type() == QSqlError::ConnectionError && !error.driverText().startsWith(QLatin1String("QODBC"))) {
        return true;
    }
    const QStringList codes = error.nativeErrorCode().split(u';');
    for (const QString &code : codes) {
        if (LostCodes.contains(code)) {
            return true;
        }
        if (code.toInt() > 0) {
            return false;
        }
    }
    // A commit into the void says nothing at all.
    if (error.databaseText().trimmed().isEmpty() && error.driverText().startsWith(QLatin1String("QODBC"))) {
        return true;
    }
    return std::any_of(LostWords.begin(), LostWords.end(), [&error](const QString &words) {
        return error.databaseText().contains(words, Qt::CaseInsensitive);
    });
}

/// Without the names of the programs on the way, "[FreeTDS][SQL Server]", that an ODBC driver puts before each record.
QString Words(const QSqlError &error)
{
    QString text = error.databaseText().trimmed();
    static const QRegularExpression way(u"^(\\[[^\\]]+\\])+"_s);
    const QString names = way.match(text).captured();
    if (!names.isEmpty()) {
        text.remove(names);
    }
    return text.isEmpty() ? error.driverText() : text;
}

} // namespace

DatabaseError::DatabaseError(const QSqlError &error, const QString &statement)
    : std::runtime_error(Words(error).toStdString()), m_text(Words(error)), m_statement(MaskLiterals(statement)),
      m_native(error.nativeErrorCode()), m_lost(SaysConnectionLost(error))
{}

DatabaseError::DatabaseError(const QString &text, const QString &statement)
    : std::runtime_error(text.toStdString()), m_text(text), m_statement(MaskLiterals(statement))
{}

QString DatabaseError::LogText() const
{
    return u"[%1] %2 | %3"_s.arg(m_native, MaskLiterals(m_text), m_statement);
}

bool DatabaseError::KeyViolation() const
{
    const QStringList codes = m_native.split(u';');
    return codes.contains(u"2627") || codes.contains(u"2601") ||
           m_text.contains(QLatin1String("duplicate key"), Qt::CaseInsensitive);
}

DatabaseError RowGone(const QString &kind, const QString &statement)
{
    return DatabaseError(u"این %1 دیگر در بانک اطلاعاتی وجود ندارد."_s.arg(kind), statement);
}

} // namespace host
