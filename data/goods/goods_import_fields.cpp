#include "data/goods/goods_import_fields.h"

#include "host/data/persian_text.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

constexpr int AlwaysOffered = 4; ///< price levels that the goods list shows

ImportField LevelField(ImportField first, int level)
{
    return static_cast<ImportField>(static_cast<int>(first) + level - 1);
}

/// What a column of this field is called elsewhere.
struct Synonyms
{
    ImportField field;
    const char16_t *names; ///< joined by "|"
};

constexpr Synonyms Known[] = {
    {ImportField::Code, u"کد|کد کالا|کدکالا|شماره کالا|code|item code|product code|id"},
    {ImportField::FullName, u"نام کامل کالا|نام کامل|شرح کالا|شرح|عنوان|عنوان کالا|full name|description|title"},
    {ImportField::Name, u"نام کالا|نام|کالا|محصول|نام محصول|name|product|item|item name|product name"},
    {ImportField::Type, u"نوع کالا|نوع|مدل|type|model"},
    {ImportField::Index, u"شاخص کالا|شاخص|index"},
    {ImportField::Barcode, u"بارکد|بار کد|نام اختصاری/بارکد|بارکد کالا|کد میله ای|barcode|ean|ean13|gtin|upc"},
    {ImportField::Group, u"گروه|گروه کالا|کد گروه|نام گروه|دسته|دسته بندی|group|category"},
    {ImportField::Unit, u"واحد|واحد 1|واحد اول|واحد کالا|واحد شمارش|واحد اصلی|نام واحد|unit|uom"},
    {ImportField::Unit2, u"واحد|واحد 2|واحد دوم|واحد فرعی|unit2|unit 2"},
    {ImportField::Formula, u"فرمول|فرمول کالا|تعداد در واحد 2|تعداد در کارتن|تعداد در بسته|ضریب|formula|factor"},
    {ImportField::ConsumerPrice, u"فی مصرف کننده|قیمت مصرف کننده|مصرف کننده|قیمت روی کالا|consumer price|retail price"},
    {ImportField::MinAva, u"حداقل موجودی|نقطه سفارش|حداقل|min|minimum|min stock"},
    {ImportField::Position, u"مکان کالا|مکان|محل|قفسه|position|location|shelf"},
    {ImportField::Comment, u"توضیحات|توضیح|ملاحظات|یادداشت|comment|note|notes|remarks"},
    {ImportField::Sell1, u"فی|فی فروش|قیمت|قیمت فروش|فروش|قیمت واحد|price|sale price|sell price|unit price"},
    {ImportField::Buy1, u"فی خرید|قیمت خرید|خرید|cost|buy price|purchase price"},
};

QStringList NamesOf(const ImportFieldInfo &info)
{
    QStringList names{info.caption};
    for (const Synonyms &known : Known) {
        if (known.field == info.field) {
            names += QString::fromUtf16(known.names).split(u'|');
        }
    }
    if (!IsLevel(info.field)) {
        return names;
    }
    const bool buys = info.field >= ImportField::Buy1;
    const int level =
        static_cast<int>(info.field) - static_cast<int>(buys ? ImportField::Buy1 : ImportField::Sell1) + 1;
    const QString number = QString::number(level);
    // The goods list calls a sale price by the title of its level alone.
    names += buys ? QStringList{u"فی خرید "_s + number, u"قیمت خرید "_s + number}
                  : QStringList{info.caption.section(u": "_s, 1), u"فی "_s + number, u"فی فروش "_s + number,
                                u"قیمت "_s + number, u"قیمت فروش "_s + number};
    return names;
}

void AppendLevels(QList<ImportFieldInfo> &fields, const QStringList &titles, bool buys)
{
    for (int level = 1; level <= ImportLevels; ++level) {
        const QString title = titles.value(level - 1).trimmed();
        if (title.isEmpty() && level > AlwaysOffered) {
            continue;
        }
        const QString name = title.isEmpty() ? u"فی %1"_s.arg(level) : title;
        fields.append({buys ? BuyField(level) : SellField(level), (buys ? u"خرید: "_s : u"فروش: "_s) + name,
                       (buys ? u"CostLevel_Buy_"_s : u"CostLevel_Sell_"_s) + QString::number(level), 0, true});
    }
}

} // namespace

ImportField SellField(int level)
{
    return LevelField(ImportField::Sell1, level);
}

ImportField BuyField(int level)
{
    return LevelField(ImportField::Buy1, level);
}

bool IsLevel(ImportField field)
{
    return field >= ImportField::Sell1;
}

QList<ImportFieldInfo> ImportFields(const QStringList &levelTitles, bool twoUnits)
{
    QList<ImportFieldInfo> fields{
        {ImportField::Code, u"کد"_s, u"Code"_s, 0, false},
        {ImportField::Barcode, u"بارکد"_s, u"AbbName"_s, 250, false},
        {ImportField::FullName, u"نام کامل کالا"_s, u"Name"_s, 152, false},
        {ImportField::Name, u"نام کالا"_s, u"kala_name"_s, 50, false},
        {ImportField::Type, u"نوع کالا"_s, u"kala_type"_s, 50, false},
        {ImportField::Index, u"شاخص کالا"_s, u"kala_index"_s, 50, false},
        {ImportField::Group, u"گروه"_s, u"GrpCode"_s, 0, false},
        {ImportField::Unit, u"واحد"_s, u"Unit"_s, 0, false},
        {ImportField::Unit2, u"واحد 2"_s, u"Unit2"_s, 0, false},
        {ImportField::Formula, u"فرمول کالا"_s, u"Meghdar_Formool"_s, 0, false},
        {ImportField::ConsumerPrice, u"فی مصرف کننده"_s, u"ConsumerPrice"_s, 0, true},
        {ImportField::MinAva, u"حداقل موجودی"_s, u"MinAva"_s, 0, false},
        {ImportField::Position, u"مکان کالا"_s, u"Position"_s, 100, false},
        {ImportField::Comment, u"توضیحات"_s, u"Comment"_s, 500, false},
    };
    if (!twoUnits) {
        fields.removeIf([](const ImportFieldInfo &info) {
            return info.field == ImportField::Unit2 || info.field == ImportField::Formula;
        });
    }
    AppendLevels(fields, levelTitles, false);
    AppendLevels(fields, levelTitles, true);
    return fields;
}

QString ImportCaptionKey(QStringView caption)
{
    QString key = host::Fold(caption);
    key.removeIf([](QChar c) { return !c.isLetterOrNumber(); });
    return key;
}

QList<ImportField> MatchImportFields(const QStringList &captions, const QList<ImportFieldInfo> &fields,
                                     const QHash<QString, ImportField> &remembered)
{
    QMultiHash<QString, ImportField> byName;
    QSet<ImportField> offered;
    for (auto info = fields.crbegin(); info != fields.crend(); ++info) { // the last put in is found first
        offered.insert(info->field);
        for (const QString &name : NamesOf(*info)) {
            byName.insert(ImportCaptionKey(name), info->field);
        }
    }
    QSet<ImportField> found;
    QList<ImportField> matched(captions.size(), ImportField::None);
    const auto take = [&](qsizetype column, ImportField field) {
        if (matched[column] == ImportField::None && offered.contains(field) && !found.contains(field)) {
            found.insert(field);
            matched[column] = field;
        }
    };
    QSet<qsizetype> told; // the user said what it is, if only that it is nothing
    for (qsizetype i = 0; i < captions.size(); ++i) {
        const auto known = remembered.constFind(ImportCaptionKey(captions[i]));
        if (known != remembered.constEnd() && !found.contains(*known)) {
            told.insert(i);
            take(i, *known);
        }
    }
    for (qsizetype i = 0; i < captions.size(); ++i) {
        if (told.contains(i)) {
            continue;
        }
        for (const ImportField field : byName.values(ImportCaptionKey(captions[i]))) {
            take(i, field);
        }
    }
    return matched;
}

} // namespace goods
