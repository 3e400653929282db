#include "screens/bulk_changes/change_texts.h"

#include "data/goods/goods_import_journal.h"
#include "host/controls/number_text.h"
#include "host/data/persian_text.h"
#include "rules/barcode_text.h"
#include "screens/bulk_changes/bulk_order.h"

using namespace Qt::StringLiterals;

using goods::BulkKind;
using goods::ImportFieldInfo;

namespace bulk_changes {

namespace {

/// "فروش ۱: ۱۰٪" for a rate, "پیش فرض خرید: نوع ۲" for the level that counts by itself.
QString ShownDiscount(const QString &field, const QString &value)
{
    const QString side = field.contains(u"_Buy_"_s) ? u"خرید"_s : u"فروش"_s;
    const QString number = host::DisplayNumber(host::TrimDecimal(value));
    if (field.startsWith(u"Default_"_s))
        return u"پیش فرض %1: نوع %2"_s.arg(side, number);
    return u"%1 %2: %3٪"_s.arg(side, host::DisplayNumber(field.last(1)), number);
}

/// A value that a file gave, behind the caption of its column.
QString ShownField(const QString &column, const QString &value, const QList<ImportFieldInfo> &fields)
{
    QString caption = column;
    bool number = column.startsWith("CostLevel_"_L1); // a level that has no title any more
    for (const ImportFieldInfo &info : fields)
        if (info.column == column) {
            caption = info.caption;
            number =
                info.price || info.field == goods::ImportField::MinAva || info.field == goods::ImportField::Formula;
        }
    if (number)
        return u"%1: %2"_s.arg(caption, host::DisplayNumber(host::TrimDecimal(value)));
    if (column != "AbbName"_L1)
        return u"%1: %2"_s.arg(caption, value.isEmpty() ? u"خالی"_s : value);
    QStringList barcodes;
    for (const QString &barcode : goods::UnpackBarcodes(value))
        if (!barcode.isEmpty())
            barcodes << host::PersianDigits(barcode);
    return u"%1: %2"_s.arg(caption, barcodes.isEmpty() ? u"خالی"_s : barcodes.join(u"، "_s));
}

QString ShownFile(const QVariant &values, const QList<ImportFieldInfo> &fields)
{
    if (values.isNull())
        return u"کالای تازه"_s;
    QStringList shown;
    for (const QString &value : values.toString().split(goods::ImportValueMark, Qt::SkipEmptyParts))
        shown << ShownField(value.section(goods::ImportNameMark, 0, 0), value.section(goods::ImportNameMark, 1),
                            fields);
    return shown.join(u"؛ "_s);
}

} // namespace

QString ShownValues(const QVariant &values, BulkKind kind, const QList<ImportFieldInfo> &fields)
{
    if (kind == BulkKind::Import)
        return ShownFile(values, fields);
    if (kind != BulkKind::Discounts)
        return values.toString();
    QStringList shown;
    for (const QString &value : values.toString().split(u" / "_s))
        shown << ShownDiscount(value.section(u'=', 0, 0), value.section(u'=', 1));
    return shown.join(u"، "_s);
}

QString LeftText(goods::LeftReason reason)
{
    switch (reason) {
    case goods::LeftReason::None:
        return {};
    case goods::LeftReason::Changed:
        return u"پس از آن تغییر کرده"_s;
    case goods::LeftReason::Gone:
        return u"کالا حذف شده است"_s;
    case goods::LeftReason::Used:
        return u"کالای تازه به کار رفته است"_s;
    case goods::LeftReason::Stuck:
        break;
    }
    return u"مقدار پیشین قابل بازگشت نیست"_s;
}

QString Foretold(const goods::BulkForecast &forecast)
{
    const int restored = forecast.changing - forecast.removing;
    QStringList lines;
    if (restored > 0)
        lines << u"مقدار پیشین %1 برگردانده می‌شود."_s.arg(GoodsText(restored));
    if (forecast.removing > 0)
        lines << u"%1 که با این تغییر افزوده شده بود حذف می‌شود."_s.arg(
            GoodsText(forecast.removing));
    if (forecast.same > 0)
        lines << u"%1 که پس از آن تغییر کرده همان‌گونه که هست می‌ماند."_s.arg(
            GoodsText(forecast.same));
    if (forecast.used > 0)
        lines << u"%1 تازه که به کار رفته است می‌ماند."_s.arg(GoodsText(forecast.used));
    if (forecast.protectedOf > 0)
        lines << u"مقدار پیشین %1 قابل بازگشت نیست."_s.arg(GoodsText(forecast.protectedOf));
    if (forecast.gone > 0)
        lines << u"%1 حذف شده است."_s.arg(GoodsText(forecast.gone));
    return lines.join(u'\n');
}

QString TakenBack(const goods::BulkResult &result)
{
    const int restored = result.written - result.removed;
    QString text;
    if (restored > 0 || result.removed == 0)
        text = u"مقدار پیشین %1 برگردانده شد. "_s.arg(GoodsText(restored));
    if (result.removed > 0)
        text += u"%1 که افزوده شده بود حذف شد. "_s.arg(GoodsText(result.removed));
    return text + u"%1 زیر همان‌گونه که هست ماند."_s.arg(GoodsText(result.left));
}

} // namespace bulk_changes
