#include "screens/goods_list/good_list_columns.h"

#include <QStringList>

using namespace Qt::StringLiterals;

using host::ColumnFormat;
using host::GridColumn;

namespace goods_list {

namespace {

constexpr bool Shown = false;
constexpr bool Hidden = true;

} // namespace

QString PriceCaption(int level, const QString &title)
{
    return title.trimmed().isEmpty() ? u"فی %1"_s.arg(level) : title.trimmed();
}

QList<GridColumn> GoodColumns(const QStringList &priceTitles)
{
    QList<GridColumn> columns = {
        {u"Code"_s, u"کد"_s, 62, Shown, ColumnFormat::Code},
        {u"AbbName"_s, u"بارکد "_s, 130, Hidden, ColumnFormat::Text},
        {u"Name"_s, u"نام کامل کالا"_s, 240, Shown, ColumnFormat::Text},
        {u"kala_name"_s, u"نام کالا"_s, 140, Hidden, ColumnFormat::Text},
        {u"kala_type"_s, u"نوع کالا"_s, 120, Hidden, ColumnFormat::Text},
        {u"kala_index"_s, u"شاخص کالا"_s, 120, Hidden, ColumnFormat::Text},
        {u"Mogodi2"_s, u"موجودی 2"_s, 76, Shown, ColumnFormat::Quantity},
        {u"Mogodi"_s, u"موجودی"_s, 70, Shown, ColumnFormat::Quantity},
        {u"ConsumerPrice"_s, u"فی مصرف کننده"_s, 100, Hidden, ColumnFormat::Price},
        {u"UnitName1"_s, u"واحد"_s, 54, Shown, ColumnFormat::Text},
        {u"UnitName2"_s, u"واحد"_s, 54, Shown, ColumnFormat::Text},
        {u"Joz"_s, u"م جزء"_s, 70, Hidden, ColumnFormat::Quantity},
        {u"Position"_s, u"مکان کالا"_s, 90, Hidden, ColumnFormat::Text},
    };
    for (int level = 1; level <= PriceColumns; ++level)
        columns.append({u"Cost%1"_s.arg(level), PriceCaption(level, priceTitles.value(level - 1)), 84, Shown,
                        ColumnFormat::Price});
    columns.append({
        {u"MinAva"_s, u"حداقل موجودی"_s, 90, Hidden, ColumnFormat::Quantity},
        {u"CostBgPrd"_s, u"فی اول دوره"_s, 100, Hidden, ColumnFormat::Price},
        {u"SMSCode"_s, u"کد پیامکی"_s, 90, Hidden, ColumnFormat::Text},
        {u"AvaBgPrd"_s, u"موجودی اول دوره"_s, 110, Hidden, ColumnFormat::Quantity},
        {u"Comment"_s, u"توضیحات"_s, 180, Hidden, ColumnFormat::Text},
        {u"UserCreated"_s, u"کاربر ایجاد کننده"_s, 130, Hidden, ColumnFormat::Text},
        {u"UserModified"_s, u"کاربر تغییر دهنده"_s, 130, Hidden, ColumnFormat::Text},
        {u"CreatedDateTime"_s, u"زمان ایجاد"_s, 140, Hidden, ColumnFormat::Date},
        {u"ModifiedDateTime"_s, u"زمان تغییر"_s, 140, Hidden, ColumnFormat::Date},
    });
    for (int tag = 1; tag <= TagColumns; ++tag)
        columns.append({u"t%1"_s.arg(tag), u"نشان %1"_s.arg(tag), 54, Shown, ColumnFormat::Text});
    return columns;
}

} // namespace goods_list
