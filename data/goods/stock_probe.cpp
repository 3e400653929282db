#include "data/goods/stock_probe.h"

#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace goods {

QString NegativeStockProbe(int goodCode, int storeCode, host::Quantity newQuantity)
{
    const QString change = newQuantity == 0 ? u"-1 * Amount1"_s : host::DecimalLiteral(newQuantity) + u" - Amount1"_s;
    return u"select GoodCode as Code , StoreCode as Anbar , "_s + change +
           u" as Mogodi  from GoodFirstAsset where Tmp = 0 and GoodCode = "_s + QString::number(goodCode) +
           u" and StoreCode = "_s + QString::number(storeCode);
}

QString DeletedRowProbe(int goodCode, int storeCode)
{
    return u"SELECT GoodCode AS Code, StoreCode AS Anbar, Amount1 * -1 AS Mogodi FROM GoodFirstAsset "
           " WHERE tmp = 0 AND GoodCode = "_s +
           QString::number(goodCode) +
           u" AND "
           " StoreCode = "_s +
           QString::number(storeCode);
}

QString LoweredRowsProbe(int goodCode, int workingCode)
{
    return u"select s.GoodCode as Code, s.StoreCode as Anbar, isnull(w.Amount1, 0) - s.Amount1 as Mogodi from "
           "GoodFirstAsset as s left join GoodFirstAsset as w on w.tmp = 1 and w.GoodCode = %1 and w.StoreCode = "
           "s.StoreCode where s.tmp = 0 and s.GoodCode = %2 and isnull(w.Amount1, 0) < s.Amount1"_s.arg(workingCode)
               .arg(goodCode);
}

} // namespace goods
