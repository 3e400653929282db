#include "desk/services/detail_desk.h"

#include "host/data/query.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr auto Part = host::TSoftwarePart::GoodDetails;

} // namespace

DetailDesk::DetailDesk(const QSqlDatabase &connection, host::EntityService &entities)
    : m_connection(connection), m_entities(entities)
{}

int DetailDesk::Number()
{
    if (m_number != 0)
        return m_number;
    const QString part = QString::number(static_cast<int>(Part));
    host::Transaction transaction(m_connection);
    m_entities.ReleaseCodes(Part); // and those of desks that are gone
    int number =
        host::Scalar(m_connection, u"SELECT ISNULL(MAX(Code), 0) + 1 FROM CodeLock_TBL WHERE Status = "_s + part)
            .toInt();
    while (!m_entities.ReserveCode(Part, number))
        ++number;
    for (const QString &table : {u"GoodDetailKardexEnter_Temp"_s, u"GoodDetailKardexExit_Temp"_s}) {
        host::Run(m_connection,
                  u"DELETE FROM %1 WHERE ABS(ComIndex) = %2 OR ComIndex IS NOT NULL AND ABS(ComIndex) NOT IN "
                  "(SELECT Code FROM CodeLock_TBL WHERE Status = %3)"_s.arg(table)
                      .arg(number)
                      .arg(part));
    }
    m_number = number;
    host::Transaction::WhenEnded(m_connection, [this](bool committed) {
        if (!committed)
            m_number = 0;
    });
    transaction.Commit();
    return m_number;
}

} // namespace desk
