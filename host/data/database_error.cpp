#include "host/data/database_error.h"

#include "host/data/sql_text.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <iterator>

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
        return u"پایگاه داده مشغول است: کار دیگری در حال نوشتن است. چیزی ثبت نشد؛ کمی بعد دوباره تلاش کنید."_s;
    case DatabaseFault::Deadlock:
        return u"کار هم‌زمان کاربر دیگری با این کار برخورد کرد. چیزی ثبت نشد؛ دوباره تلاش کنید."_s;
    case DatabaseFault::TooLong:
        return u"%1 بلندتر از اندازه ای است که ثبت می شود."_s;
    case DatabaseFault::OutOfRange:
        return u"%1 از محدوده ای که ثبت می شود بیرون است."_s;
    case DatabaseFault::Repeated:
        return u"%1 تکراری است و پیش از این ثبت شده است."_s;
    case DatabaseFault::Missing:
        return u"%1 وارد نشده است."_s;
    case DatabaseFault::Referenced:
        return u"%1 با بخش دیگری از اطلاعات پیوند دارد و به این صورت ثبت نمی شود."_s;
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
        return u"یکی از متن ها"_s;
    case DatabaseFault::OutOfRange:
        return u"یکی از عددها"_s;
    case DatabaseFault::Referenced:
        return u"این مورد"_s;
    default:
        return u"یکی از مقدارها"_s;
    }
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

QString DatabaseError::Text(const QString &caption) const
{
    const DatabaseFault fault = Fault();
    const QString explained = Explained(fault);
    if (explained.isEmpty()) {
        return m_text;
    }
    return QString(explained).replace(QLatin1String("%1"),
                                      caption.isEmpty() ? Nameless(fault) : u"«%1»"_s.arg(caption));
}

DatabaseFault DatabaseError::Fault() const
{
    const QStringList codes = m_native.split(u';');
    for (const QString &code : codes) {
        const auto *known = std::find_if(std::begin(Numbers), std::end(Numbers),
                                         [&code](const Number &each) { return each.number == code.toInt(); });
        if (known != std::end(Numbers)) {
            return known->fault;
        }
    }
    return m_text.contains(QLatin1String("duplicate key"), Qt::CaseInsensitive) ? DatabaseFault::Repeated
                                                                                : DatabaseFault::Other;
}

QString DatabaseError::Column() const
{
    // Unique indexes are called by their table and their column, "UX_Units_Name".
    static const QRegularExpression named(u"(?:column '|unique index on |(?:index|constraint) ['\"]\\w+_)(\\w+)"_s);
    return named.match(m_text).captured(1);
}

bool DatabaseError::KeyViolation() const
{
    return Fault() == DatabaseFault::Repeated;
}

DatabaseError RowGone(const QString &kind, const QString &statement)
{
    return DatabaseError(u"این %1 دیگر در بانک اطلاعاتی وجود ندارد."_s.arg(kind), statement);
}

} // namespace host
