#include "data/goods/good_discounts.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

QString DiscountField(QLatin1String side, size_t number)
{
    return u"Discount_"_s + side + u'_' + QString::number(number + 1);
}

} // namespace

Discounts::Discounts(const QSqlDatabase &main) : GoodCostDiscount_QRY(main), Temp_QRY(main)
{
    GoodCostDiscount_QRY.SetTable(u"GoodCostDiscount"_s, u"GoodCode"_s);
}

void Discounts::Save(int code, const TGoodPrice_Rec &price, const TGoodPrice_Rec *before)
{
    host::Dataset &discounts = GoodCostDiscount_QRY;
    const auto drop = qScopeGuard([&discounts] { discounts.Cancel(); });
    discounts.Open(QString::asprintf("select * from GoodCostDiscount Where GoodCode = %d ", code));
    if (discounts.IsEmpty()) {
        before = nullptr;
        discounts.Append();
        discounts.SetField(u"GoodCode", code);
        // No level of a fresh row has a price yet, so none can be the default.
        discounts.SetField(u"Default_CostLevel_Sell_Number", 0);
        discounts.SetField(u"Default_CostLevel_Buy_Number", 0);
    } else {
        discounts.Edit();
    }
    const auto write = [&](const QString &field, const QVariant &value, const QVariant &former) {
        if (!before || value != former) {
            discounts.SetField(field, value);
        }
    };
    const TGoodPrice_Rec former = before ? *before : TGoodPrice_Rec();
    for (size_t i = 0; i < price.Discount_Sell.size(); ++i) {
        write(DiscountField("Sell"_L1, i), host::QuantityToText(price.Discount_Sell[i]),
              host::QuantityToText(former.Discount_Sell[i]));
        write(DiscountField("Buy"_L1, i), host::QuantityToText(price.Discount_Buy[i]),
              host::QuantityToText(former.Discount_Buy[i]));
    }
    write(u"Default_Discount_Sell_Number"_s, price.Default_Discount_Sell_Number, former.Default_Discount_Sell_Number);
    write(u"Default_Discount_Buy_Number"_s, price.Default_Discount_Buy_Number, former.Default_Discount_Buy_Number);
    discounts.Post();
}

void Discounts::Read(int code, TGoodPrice_Rec &price)
{
    Temp_QRY.Open(QString::asprintf("select * from GoodCostDiscount Where GoodCode = %d ", code));
    if (Temp_QRY.IsEmpty()) {
        return;
    }
    for (size_t i = 0; i < price.Discount_Sell.size(); ++i) {
        price.Discount_Sell[i] = Temp_QRY.Number(DiscountField("Sell"_L1, i));
        price.Discount_Buy[i] = Temp_QRY.Number(DiscountField("Buy"_L1, i));
    }
    price.Default_Discount_Sell_Number = Temp_QRY.Int(u"Default_Discount_Sell_Number");
    price.Default_Discount_Buy_Number = Temp_QRY.Int(u"Default_Discount_Buy_Number");
}

} // namespace goods
