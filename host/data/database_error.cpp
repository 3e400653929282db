#include "host/data/database_error.h"

#include "host/data/sql_text.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace host {

namespace {

/// By which clients of a server say that the connection is gone: SQLSTATE class 08, FreeTDS, Windows' sockets.
const QStringList LostCodes{QStringLiteral("08S01"), QStringLiteral("08003"), QStringLiteral("20004"),
                            QStringLiteral("20006"), QStringLiteral("20009"), QStringLiteral("20017"),
                            QStringLiteral("20047"), QStringLiteral("10053"), QStringLiteral("10054")};

/// The same in words, which count only where no code came from the server. FreeTDS has no words of its own for the
/// first statement after the end.
const QStringList LostWords{QStringLiteral("communication link failure"),
                            QStringLiteral("connection is broken"),
                            QStringLiteral("not connected"),
                            QStringLiteral("unknown error"),
                            QStringLiteral("unexpected eof from the server"),
                            QStringLiteral("to the server failed"),
                            QStringLiteral("from the server failed"),
                            QStringLiteral("could not change transaction status")};

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
    static const QRegularExpression way(QStringLiteral("^(\\[[^\\]]+\\])+"));
    const QString names = way.match(text).captured();
    if (!names.isEmpty()) {
        text.remove(names);
    }
    return text.isEmpty() ? error.driverText() : text;
}

} // namespace

DatabaseError::DatabaseError(const QSqlError &error, const QString &statement)
    : std::runtime_error(Words(error).toStdString()), text_(Words(error)), statement_(MaskLiterals(statement)),
      native_(error.nativeErrorCode()), lost_(SaysConnectionLost(error))
{}

DatabaseError::DatabaseError(const QString &text, const QString &statement)
    : std::runtime_error(text.toStdString()), text_(text), statement_(MaskLiterals(statement))
{}

QString DatabaseError::LogText() const
{
    return QStringLiteral("[%1] %2 | %3").arg(native_, MaskLiterals(text_), statement_);
}

bool DatabaseError::KeyViolation() const
{
    const QStringList codes = native_.split(u';');
    return codes.contains(u"2627") || codes.contains(u"2601") ||
           text_.contains(QLatin1String("duplicate key"), Qt::CaseInsensitive);
}

} // namespace host
