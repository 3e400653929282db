#include "host/data/database_error.h"

#include "host/data/sql_text.h"

#include <algorithm>
#include <array>

namespace host {

namespace {

/// States and numbers by which drivers say that the connection is gone: SQLSTATE class 08, FreeTDS and SQL Server.
bool SaysConnectionLost(const QSqlError &error)
{
    if (error.type() == QSqlError::ConnectionError) {
        return true;
    }
    static const std::array<QLatin1String, 8> words{QLatin1String("08S01"),
                                                    QLatin1String("08003"),
                                                    QLatin1String("20006"),
                                                    QLatin1String("20047"),
                                                    QLatin1String("10054"),
                                                    QLatin1String("communication link failure"),
                                                    QLatin1String("connection is broken"),
                                                    QLatin1String("not connected")};
    const QString all = error.nativeErrorCode() + u' ' + error.databaseText() + u' ' + error.driverText();
    return std::any_of(words.begin(), words.end(),
                       [&all](QLatin1String word) { return all.contains(word, Qt::CaseInsensitive); });
}

QString Words(const QSqlError &error)
{
    return error.databaseText().trimmed().isEmpty() ? error.driverText() : error.databaseText();
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
