#include "desk/services/detail_desk.h"

#include "desk/services/detail_sql.h"
#include "host/data/database_error.h"
#include "host/data/query.h"
#include "host/data/transaction.h"

#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

Q_LOGGING_CATEGORY(desks, "desk.details", QtInfoMsg)

constexpr int HeardMilliseconds = 60 * 1000;

/// Longer than a long weekend.
constexpr int GoneDays = 5;

} // namespace

DetailDesk::DetailDesk(const QSqlDatabase &connection) : m_connection(connection)
{
    m_heard.setInterval(HeardMilliseconds);
    QObject::connect(&m_heard, &QTimer::timeout, &m_heard, [this] {
        try {
            // A desk whose rows are parked has them back when it needs them.
            host::Exec(m_connection,
                       u"UPDATE DetailDesks SET SeenAt = GETDATE() WHERE Parked = 0 AND Number = %1"_s.arg(m_number));
        } catch (const host::DatabaseError &error) {
            qCWarning(desks).noquote() << error.LogText(); // the next minute tries again
        }
    });
}

DetailDesk::~DetailDesk()
{
    if (m_number == 0)
        return;
    try {
        host::Exec(m_connection, u"DELETE FROM GoodDetailKardexEnter_Temp WHERE ABS(ComIndex) = %1 DELETE FROM "
                                 "GoodDetailKardexExit_Temp WHERE ComIndex = %1 DELETE FROM DetailDesks WHERE Number "
                                 "= %1"_s.arg(m_number));
    } catch (const host::DatabaseError &error) {
        // The database is gone: to the others this desk falls silent.
        qCWarning(desks).noquote() << error.LogText();
    }
}

int DetailDesk::Number()
{
    if (m_number == 0)
        Take();
    return m_number;
}

void DetailDesk::Take()
{
    host::Transaction transaction(m_connection);
    m_number =
        host::Scalar(m_connection, u"INSERT INTO DetailDesks (SeenAt) OUTPUT INSERTED.Number VALUES (GETDATE())"_s)
            .toInt();
    host::Run(m_connection, u"DELETE FROM DetailDesks WHERE SeenAt < DATEADD(day, -%1, GETDATE())"_s.arg(GoneDays));
    for (const QString &table : {u"GoodDetailKardexEnter_Temp"_s, u"GoodDetailKardexExit_Temp"_s})
        host::Run(m_connection, u"DELETE FROM %1 WHERE ComIndex IS NOT NULL AND ABS(ComIndex) NOT IN (SELECT Number "
                                "FROM DetailDesks)"_s.arg(table));
    host::Transaction::WhenEnded(m_connection, [this](bool committed) {
        if (!committed)
            m_number = 0;
    });
    transaction.Commit();
    m_heard.start();
}

void DetailDesk::Begin()
{
    const int number = Number();
    bool found = false;
    bool parked = false;
    bool others = false;
    for (host::Query desks(m_connection,
                           u"SELECT Number, CASE WHEN Parked = 1 OR %1 THEN 1 ELSE 0 END AS Away FROM "
                           "DetailDesks WHERE Number = %2 OR Parked = 0 AND %1"_s.arg(detail_sql::Silent())
                               .arg(number));
         !desks.Eof(); desks.Next()) {
        const bool mine = desks.Int(u"Number") == number;
        found = found || mine;
        parked = parked || (mine && desks.Bool(u"Away"));
        others = others || !mine;
    }
    m_lost = !found;
    if (m_lost && m_kept)
        throw host::DatabaseError(
            u"این رایانه چند روز از بانک اطلاعاتی دور بوده و جزئیات ذخیره نشده سند از بین رفته است. سند را ببندید و دوباره باز کنید."_s);
    if (m_lost)
        Take();
    if (parked)
        Return();
    if (others)
        Park();
}

void DetailDesk::Discarded()
{
    if (!m_lost)
        return;
    m_lost = m_kept = false;
    m_number = 0;
}

void DetailDesk::Park()
{
    host::Transaction transaction(m_connection);
    host::Run(m_connection, u"UPDATE DetailDesks SET Parked = 1 WHERE Number <> %1 AND %2"_s.arg(
                                QString::number(m_number), detail_sql::Silent()));
    host::Run(m_connection, u"UPDATE GoodDetailKardexEnter_Temp SET DetailValueID = -DetailValueID WHERE DetailValueID "
                            "> 0 AND ComIndex IN (SELECT Number FROM DetailDesks WHERE Parked = 1)"_s);
    transaction.Commit();
}

void DetailDesk::Return()
{
    const QString number = QString::number(m_number);
    host::Transaction transaction(m_connection);
    host::Run(m_connection, u"UPDATE DetailDesks SET Parked = 0, SeenAt = GETDATE() WHERE Number = "_s + number);
    host::Run(m_connection, u"UPDATE GoodDetailKardexEnter_Temp SET DetailValueID = -DetailValueID WHERE DetailValueID "
                            "< 0 AND ComIndex = "_s +
                                number);
    transaction.Commit();
}

} // namespace desk
