#include "bench/shop.h"

#include "desk/application/database_creation.h"
#include "host/data/query.h"
#include "host/data/transaction.h"

namespace bench {

Shop::Shop(int size) : m_size(size)
{
    m_options.databaseFile = m_folder.filePath(QStringLiteral("goods.db"));
    desk::CreateDatabase(m_options.databaseFile, true);
    m_connections = std::make_unique<desk::OpenConnections>(m_options);
    m_desk = std::make_unique<desk::DeskHost>(m_connections->Get());
    if (!m_desk->settings.SignIn(1))
        throw std::runtime_error("the demo shop has no first user");
    m_data = std::make_unique<TGood_DM>(host().DM, host().settings, host().entities);
}

int Shop::goods()
{
    return host::Scalar(host().DM.ADOConnection1, QStringLiteral("SELECT COUNT(*) FROM GoodInf")).toInt();
}

QString Shop::barcode(int number)
{
    return QStringLiteral("2%1").arg(number, 12, 10, QLatin1Char('0'));
}

TGoodInfoRec Shop::good(int code, int number)
{
    static const QStringList kinds{QStringLiteral("روغن"), QStringLiteral("چای"), QStringLiteral("کابل"),
                                   QStringLiteral("دفتر"), QStringLiteral("شامپو")};
    TGoodInfoRec good;
    good.Code = code;
    good.GrpCode = 11 + number % 10;
    good.kala_name = kinds.at(number % kinds.size());
    good.kala_type = QStringLiteral("مدل %1").arg(number % 1000);
    good.kala_index = QStringLiteral("ش%1").arg(number);
    good.AbbName = QStringLiteral("!%1!").arg(barcode(number));
    good.Unit = 1;
    good.Store = 1;
    good.SMSCode = QString::number(1000000 + number);
    good.MinAva = 5;
    good.ConsumerPrice = 100000 + number;
    good.CreatedDate = QStringLiteral("1405/08/30");
    good.CreatedTime = QStringLiteral("10:00:00");
    good.Price.Discount_Sell[0] = 2;
    return good;
}

void Shop::grow(int batch)
{
    QSet<int> taken;
    for (host::Query codes(host().DM.ADOConnection1, QStringLiteral("SELECT Code FROM GoodInf")); !codes.Eof();
         codes.Next())
        taken << codes.Int(0);
    int code = 0;
    for (int number = goods(); number < m_size;) {
        host::Transaction transaction(host().DM.ADOConnection1);
        for (int i = 0; i < batch && number < m_size; ++i, ++number) {
            do
                ++code;
            while (taken.contains(code));
            m_data->Good_Insert(good(code, number));
        }
        transaction.Commit();
    }
}

} // namespace bench
