#include "screens/bulk_changes/price_rows.h"

#include "screens/bulk_changes/bulk_order.h"

using namespace Qt::StringLiterals;

using host::ColumnFormat;
using host::Dataset;
using host::GridColumn;

namespace bulk_changes {

goods::PriceFate FateAt(const Dataset &preview, int row)
{
    return static_cast<goods::PriceFate>(preview.FieldAt(row, u"Fate").toInt());
}

QList<ComputedRows::Column> PriceFields(const Dataset &preview)
{
    const auto difference = [&preview](int row) -> QVariant {
        const QVariant before = preview.FieldAt(row, u"OldPrice");
        const QVariant after = preview.FieldAt(row, u"NewPrice");
        if (before.isNull() || after.isNull())
            return {};
        return host::QuantityToText(host::QuantityFromText(after.toString()) -
                                    host::QuantityFromText(before.toString()));
    };
    return {{u"Difference"_s, difference},
            {u"Reason"_s, [&preview](int row) { return FateText(FateAt(preview, row)); }}};
}

QList<GridColumn> ChangingColumns()
{
    return {{u"Code"_s, u"کد"_s, 80, false, ColumnFormat::Code},
            {u"Name"_s, u"نام کامل کالا"_s, 375, false, ColumnFormat::Text},
            {u"OldPrice"_s, u"قیمت فعلی"_s, 130, false, ColumnFormat::Price},
            {u"NewPrice"_s, u"قیمت جدید"_s, 130, false, ColumnFormat::Price},
            {u"Difference"_s, u"تفاوت"_s, 120, false, ColumnFormat::Price}};
}

QList<GridColumn> StayingColumns()
{
    return {{u"Code"_s, u"کد"_s, 80, false, ColumnFormat::Code},
            {u"Name"_s, u"نام کامل کالا"_s, 330, false, ColumnFormat::Text},
            {u"OldPrice"_s, u"قیمت فعلی"_s, 130, false, ColumnFormat::Price},
            {u"Reason"_s, u"علت"_s, 330, false, ColumnFormat::Text}};
}

} // namespace bulk_changes
