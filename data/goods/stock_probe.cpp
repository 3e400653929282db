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

} // namespace goods
