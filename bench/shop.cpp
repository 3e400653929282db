#include "bench/shop.h"

#include "desk/application/database_creation.h"
#include "host/data/query.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace bench {

Shop::Shop(int size, const QString &connection) : m_size(size)
{
    m_options.connection = connection;
    m_options.databaseFile = m_folder.filePath(u"goods.db"_s);
    if (connection.isEmpty())
        desk::CreateDatabase(m_options.databaseFile, true);
    m_connections = std::make_unique<desk::OpenConnections>(m_options);
    m_desk = std::make_unique<desk::DeskHost>(m_connections->Get());
    if (!m_desk->settings.SignIn(1))
        throw std::runtime_error("the demo shop has no first user");
    m_data = std::make_unique<TGood_DM>(Host().DM, Host().settings, Host().entities);
}

int Shop::Goods()
{
    return host::Scalar(Host().DM.ADOConnection1, u"SELECT COUNT(*) FROM GoodInf"_s).toInt();
}

QString Shop::Barcode(int number)
{
    return u"2%1"_s.arg(number, 12, 10, QLatin1Char('0'));
}

TGoodInfoRec Shop::Good(int code, int number)
{
    static const QStringList kinds{u"روغن"_s, u"چای"_s, u"کابل"_s, u"دفتر"_s, u"شامپو"_s};
    TGoodInfoRec good;
    good.Code = code;
    good.GrpCode = 11 + number % 10;
    good.kala_name = kinds.at(number % kinds.size());
    good.kala_type = u"مدل %1"_s.arg(number % 1000);
    good.kala_index = u"ش%1"_s.arg(number);
    good.AbbName = u"!%1!"_s.arg(Barcode(number));
    good.Unit = 1;
    good.Store = 1;
    good.SMSCode = QString::number(1000000 + number);
    good.MinAva = 5;
    good.ConsumerPrice = 100000 + number;
    good.CreatedDate = u"1405/08/30"_s;
    good.CreatedTime = u"10:00:00"_s;
    good.Price.Discount_Sell[0] = 2;
    return good;
}

void Shop::Grow(int batch)
{
    QSet<int> taken;
    for (host::Query codes(Host().DM.ADOConnection1, u"SELECT Code FROM GoodInf"_s); !codes.Eof(); codes.Next())
        taken << codes.Int(0);
    int code = 0;
    for (int number = Goods(); number < m_size;) {
        host::Transaction transaction(Host().DM.ADOConnection1);
        for (int i = 0; i < batch && number < m_size; ++i, ++number) {
            do
                ++code;
            while (taken.contains(code));
            m_data->Good_Insert(Good(code, number));
        }
        transaction.Commit();
    }
}

} // namespace bench
