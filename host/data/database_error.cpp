#include "host/data/database_error.h"

#include "host/data/sql_text.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <iterator>

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

struct Number
{
    int number;
    DatabaseFault fault;
};

/// The server's numbers of what users can bring about.
constexpr Number Numbers[] = {
    {1222, DatabaseFault::Locked},    {1205, DatabaseFault::Deadlock},  {2628, DatabaseFault::TooLong},
    {8152, DatabaseFault::TooLong},   {220, DatabaseFault::OutOfRange}, {232, DatabaseFault::OutOfRange},
    {244, DatabaseFault::OutOfRange}, {248, DatabaseFault::OutOfRange}, {8115, DatabaseFault::OutOfRange},
    {2601, DatabaseFault::Repeated},  {2627, DatabaseFault::Repeated},  {515, DatabaseFault::Missing},
    {547, DatabaseFault::Referenced},
};

QString Explained(DatabaseFault fault)
{
    switch (fault) {
    case DatabaseFault::Locked:
        return QStringLiteral(
            "پایگاه داده مشغول است: کار دیگری در حال نوشتن است. چیزی ثبت نشد؛ کمی بعد دوباره تلاش کنید.");
    case DatabaseFault::Deadlock:
        return QStringLiteral("کار هم‌زمان کاربر دیگری با این کار برخورد کرد. چیزی ثبت نشد؛ دوباره "
                              "تلاش "
                              "کنید.");
    case DatabaseFault::TooLong:
        return QStringLiteral("%1 بلندتر از اندازه ای است که ثبت می شود.");
    case DatabaseFault::OutOfRange:
        return QStringLiteral("%1 از محدوده ای که ثبت می شود بیرون است.");
    case DatabaseFault::Repeated:
        return QStringLiteral("%1 تکراری است و پیش از این ثبت شده است.");
    case DatabaseFault::Missing:
        return QStringLiteral("%1 وارد نشده است.");
    case DatabaseFault::Referenced:
        return QStringLiteral("%1 با بخش دیگری از اطلاعات پیوند دارد و به این صورت ثبت نمی شود.");
    case DatabaseFault::Other:
        break;
    }
    return {};
}

/// What is at fault where no input can be named.
QString Nameless(DatabaseFault fault)
{
    switch (fault) {
    case DatabaseFault::TooLong:
        return QStringLiteral("یکی از متن ها");
    case DatabaseFault::OutOfRange:
        return QStringLiteral("یکی از عددها");
    case DatabaseFault::Referenced:
        return QStringLiteral("این مورد");
    default:
        return QStringLiteral("یکی از مقدارها");
    }
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

QString DatabaseError::Text(const QString &caption) const
{
    const DatabaseFault fault = Fault();
    const QString explained = Explained(fault);
    if (explained.isEmpty()) {
        return text_;
    }
    return QString(explained).replace(QLatin1String("%1"),
                                      caption.isEmpty() ? Nameless(fault) : QStringLiteral("«%1»").arg(caption));
}

DatabaseFault DatabaseError::Fault() const
{
    const QStringList codes = native_.split(u';');
    for (const QString &code : codes) {
        const auto *known = std::find_if(std::begin(Numbers), std::end(Numbers),
                                         [&code](const Number &each) { return each.number == code.toInt(); });
        if (known != std::end(Numbers)) {
            return known->fault;
        }
    }
    return text_.contains(QLatin1String("duplicate key"), Qt::CaseInsensitive) ? DatabaseFault::Repeated
                                                                               : DatabaseFault::Other;
}

QString DatabaseError::Column() const
{
    // Unique indexes are called by their table and their column, "UX_Units_Name".
    static const QRegularExpression named(
        QStringLiteral("(?:column '|unique index on |(?:index|constraint) ['\"]\\w+_)(\\w+)"));
    return named.match(text_).captured(1);
}

bool DatabaseError::KeyViolation() const
{
    return Fault() == DatabaseFault::Repeated;
}

} // namespace host
