#include "detailtypes/kind_layout.h"

using namespace Qt::StringLiterals;

namespace detail_types {

KindLayout LayoutOf(TDetailKind kind)
{
    switch (kind) {
    case TDetailKind::None:
        return {.height = 260};
    case TDetailKind::List:
    case TDetailKind::Text:
        return {.items = true, .height = 530};
    case TDetailKind::Serial:
    case TDetailKind::Barcode:
        return {.alwaysRequired = true, .height = 340};
    case TDetailKind::Number:
        return {.height = 340};
    case TDetailKind::Date:
        return {.date = true, .height = 380};
    case TDetailKind::Toggle:
        return {.toggle = true, .height = 420};
    }
    return {};
}

QString DescriptionOf(TDetailKind kind)
{
    switch (kind) {
    case TDetailKind::None:
        break;
    case TDetailKind::List:
        return u"برای مشخصه هایی از کالا استفاده می شود که دارای مقادیر ثابتی بوده که در عملیات تعداد مورد نظر از لیست مقادیر قابل انتخاب خواهد بود."_s;
    case TDetailKind::Text:
        return u"برای مشخصه هایی از کالا استفاده می شود که حالت متنی داشته و مقادیر آن نامشخص و متغیر می باشند."_s;
    case TDetailKind::Serial:
        return u"جزییات از نوع سریال به مشخصه ای از کالا اتلاق می شود که به ازای هر واحد از کالا دارای مقداری منحصر به فرد بوده و هیچگاه بیش از یک واحد  از آن سریال موجود نخواهد بود."_s;
    case TDetailKind::Number:
        return u"برای مشخصه هایی از کالا استفاده می شود که ماهیت عددی دارند."_s;
    case TDetailKind::Date:
        return u"برای مشخصه هایی از کالا استفاده می شود که  ماهیت تاریخی دارند."_s;
    case TDetailKind::Barcode:
        return u"جزییات از نوع بارکد به مشخصه ای از کالا اتلاق می شود که مشخص کننده نوع مشخصی از کالا با ترکیب جزییات معین بوده و به تبع آن امکان ثبت بارکدهای تکراری در سیستم مجاز نخواهد بود."_s;
    case TDetailKind::Toggle:
        return u"برای مشخصه هایی از کالا استفاده می شوند که حالت دو وضعیتی (فعال / غیرفعال) دارند."_s;
    }
    return {};
}

} // namespace detail_types
