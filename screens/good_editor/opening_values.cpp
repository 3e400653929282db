#include "screens/good_editor/opening_values.h"

#include "host/data/sql_text.h"
#include "screens/good_editor/unit_arithmetic.h"

using namespace Qt::StringLiterals;

namespace goods {

OpeningEntry OpeningEntryFor(bool twoUnitGoods, bool variableRatio, bool formulaOn)
{
    if (!twoUnitGoods)
        return OpeningEntry::OneUnit;
    return formulaOn && !variableRatio ? OpeningEntry::BigAndSmall : OpeningEntry::TwoUnits;
}

bool SecondFollowsFirst(const OpeningValues &values, Quantity formula, bool wholeUnits)
{
    return SameQuantity(values.second, SecondQuantity(values.first, formula, wholeUnits)) ||
           (!wholeUnits && SameQuantity(values.first, FirstQuantity(values.second, formula)));
}

VoucherChange OpeningVoucherChange(const OpeningValues &loaded, const OpeningValues &entered, int voucherCode,
                                   bool periodClosed)
{
    if (periodClosed || SameQuantity(loaded.Amount(), entered.Amount()))
        return VoucherChange::None;
    if (voucherCode == 0)
        return VoucherChange::Create;
    return SameQuantity(loaded.Amount(), 0) ? VoucherChange::Rebuild : VoucherChange::Change;
}

QString NegativeStockProbe(int goodCode, int storeCode, Quantity newQuantity)
{
    const QString change = newQuantity == 0 ? u"-1 * Amount1"_s : host::DecimalLiteral(newQuantity) + u" - Amount1"_s;
    return u"select GoodCode as Code , StoreCode as Anbar , "_s + change +
           u" as Mogodi  from GoodFirstAsset where Tmp = 0 and GoodCode = "_s + QString::number(goodCode) +
           u" and StoreCode = "_s + QString::number(storeCode);
}

} // namespace goods
