#include "data/goods/goods_import_journal.h"

#include "data/goods/bulk_scope.h"
#include "data/goods/goods_import_fields.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace goods {

namespace {

using host::TSoftwarePart;

constexpr int Discounts = 4;

bool IsPrice(const QString &column)
{
    return column.startsWith("CostLevel_"_L1);
}

/// Where a column stands: `g` GoodInf, `c` the price row.
QString Stored(const QString &column)
{
    return (IsPrice(column) ? u"c."_s : u"g."_s) + column;
}

QString TableOf(TSoftwarePart part)
{
    return part == TSoftwarePart::Units ? u"Units"_s : u"GoodGrpS"_s;
}

/// The goods of an entry that go back; `isNew` 1: those that it made.
QString Going(int change, int isNew)
{
    return u"(SELECT i.GoodCode FROM BulkChangeGoods j"_s + WithImport + u" WHERE j.ChangeID = "_s +
           QString::number(change) + u" AND j.IsLeft = 0 AND i.IsNew = "_s + QString::number(isNew);
}

/// Conditions on a price row `c` that no level and no discount of it is set, but for these columns.
QStringList PricesSet(const QStringList &but)
{
    QStringList set;
    const auto add = [&](const QString &column) {
        if (!but.contains(column)) {
            set += u"c."_s + column + u" <> 0"_s;
        }
    };
    for (const QString &side : {u"Sell_"_s, u"Buy_"_s}) {
        for (int level = 1; level <= ImportLevels; ++level) {
            add(u"CostLevel_"_s + side + QString::number(level));
        }
        for (int discount = 1; discount <= Discounts; ++discount) {
            add(u"Discount_"_s + side + QString::number(discount));
        }
        set += u"c.Default_Discount_"_s + side + u"Number <> 1"_s;
    }
    return set;
}

/// Something was done to a good `j` that the change made, beside the columns that it wrote.
QString Touched(const QStringList &columns)
{
    QStringList conditions = PricesSet(columns);
    conditions += {
        u"c.GoodCode IS NULL"_s,
        u"g.ModifiedDate IS NOT NULL"_s,
        u"ISNULL(g.tags, N'') <> N''"_s,
        u"g.DaraiGoodType <> 0"_s,
        u"EXISTS (SELECT 1 FROM GoodDetailRelation o WHERE o.GoodCode = j.GoodCode)"_s,
        u"EXISTS (SELECT 1 FROM Kala_category o WHERE o.Kala_code = j.GoodCode)"_s,
        u"EXISTS (SELECT 1 FROM GoodFirstAsset o WHERE o.GoodCode = j.GoodCode)"_s,
        u"EXISTS (SELECT 1 FROM PhotoGallery o WHERE o.Id_pic = j.GoodCode AND o.GRPCode = "_s +
            QString::number(static_cast<int>(TSoftwarePart::Goods)) + u')',
        u"EXISTS (SELECT 1 FROM SelectedLists l INNER JOIN SelectedList_Detail o ON o.SL_Code = l.Code WHERE l.[Type] "
        "= 0 AND o.Code = j.GoodCode)"_s,
    };
    return conditions.join(u" OR "_s);
}

QStringList ColumnsOf(const QList<BulkField> &fields)
{
    QStringList columns;
    for (const BulkField &field : fields) {
        columns += field.name;
    }
    return columns;
}

/// A value as the list shows it: groups and units by their names.
QString Shown(const QString &column, const QString &value)
{
    const bool unit = column.startsWith("Unit"_L1);
    if (!unit && column != "GrpCode"_L1) {
        const bool text = column.startsWith("kala_"_L1) || column == "AbbName"_L1 || column == "Position"_L1 ||
                          column == "Comment"_L1;
        return text ? value : u"CAST("_s + value + u" AS nvarchar(40))"_s;
    }
    const QString table = TableOf(unit ? TSoftwarePart::Units : TSoftwarePart::GoodsGroups);
    return u"ISNULL((SELECT o.Name FROM "_s + table + u" o WHERE o.Code = "_s + value + u"), CAST("_s + value +
           u" AS nvarchar(40)))"_s;
}

} // namespace

QString Comparison::Reason() const
{
    return u"CASE WHEN g.Code IS NULL OR ISNULL("_s + MadeOf + u", '') <> ISNULL(j.Made, '') THEN 2 WHEN "_s + used +
           u" THEN 4 WHEN "_s + changed + u" THEN 1 WHEN "_s + stuck + u" THEN 3 ELSE 0 END"_s;
}

// Writing ------------------------------------------------------------------------------------------------------------

int ImportJournal::Open(const BulkOrder &order, const QStringList &columns)
{
    QList<BulkField> fields;
    for (const QString &column : columns) {
        fields += BulkField{column, {}};
    }
    return BulkLedger(m_main).Open(BulkKind::Import, ScopeKind::File, order, fields);
}

void ImportJournal::MakeTitles(int change, TSoftwarePart part, const QStringList &names)
{
    const QString table = TableOf(part);
    for (const QString &name : names) {
        host::Run(m_main, u"INSERT INTO "_s + table + u" (Code, Name) SELECT ISNULL(MAX(Code), 0) + 1, "_s +
                              host::NQuotedStr(name) + u" FROM "_s + table);
        host::Run(m_main, u"INSERT INTO BulkImportTitles (ChangeID, Kind, Code, Name) SELECT "_s +
                              QString::number(change) + u", "_s + QString::number(static_cast<int>(part)) +
                              u", MAX(Code), "_s + host::NQuotedStr(name) + u" FROM "_s + table);
    }
}

int ImportJournal::AddGoods(int change, const QStringList &columns, const QString &rows)
{
    const QString from = u" FROM "_s + rows + u" i INNER JOIN GoodInf g"_s + Locked + u" ON g.Code = i.Code"_s;
    const int goods = BulkLedger(m_main).AddGoods(change, u"GoodCode"_s, u"i.Code"_s + from);
    QString names;
    QString values;
    QStringList prices{u"1=0"_s};
    for (const QString &column : columns) {
        const QString stored = Stored(column);
        const QString given = u"i."_s + column;
        names += u", New_"_s + column + u", Old_"_s + column;
        values += u", CASE WHEN i.IsNew = 1 THEN "_s + stored + u" ELSE "_s + given +
                  u" END, CASE WHEN i.IsNew = 0 AND "_s + given + u" IS NOT NULL THEN "_s +
                  (IsPrice(column) ? u"ISNULL("_s + stored + u", 0)"_s : stored) + u" END"_s;
        if (IsPrice(column)) {
            prices += given + u" IS NOT NULL"_s;
        }
    }
    host::Exec(m_main, u"INSERT INTO BulkImportGoods (ChangeID, GoodCode, IsNew, MadePrices, OldModifiedTime, "
                       "OldModifiedDate, OldUserModified"_s +
                           names + u") SELECT "_s + QString::number(change) +
                           u", i.Code, i.IsNew, CASE WHEN i.IsNew = 0 AND c.GoodCode IS NULL AND ("_s +
                           prices.join(u" OR "_s) +
                           u") THEN 1 ELSE 0 END, g.ModifiedTime, g.ModifiedDate, g.UserModified"_s + values + from +
                           u" LEFT JOIN GoodCostDiscount c"_s + Locked + u" ON c.GoodCode = i.Code"_s);
    return goods;
}

void ImportJournal::Close(BulkResult &result)
{
    DeleteUnused(result.change);
    BulkLedger(m_main).Close(result);
}

// The way back -------------------------------------------------------------------------------------------------------

Comparison ImportJournal::Compare(const QList<BulkField> &fields, const QString &lock) const
{
    const QStringList columns = ColumnsOf(fields);
    QStringList differences;
    for (const QString &column : columns) {
        const QString stored = Stored(column);
        const QString given = u"i.New_"_s + column;
        differences +=
            stored + u" <> "_s + given + u" OR ("_s + stored + u" IS NULL AND "_s + given + u" IS NOT NULL)"_s;
    }
    Comparison now;
    now.tables = WithImport + u" LEFT JOIN GoodInf g"_s + lock +
                 u" ON g.Code = j.GoodCode LEFT JOIN GoodCostDiscount c"_s + lock + u" ON c.GoodCode = j.GoodCode"_s;
    now.changed = u'(' + differences.join(u" OR "_s) + u" OR (i.IsNew = 1 AND ("_s + Touched(columns) + u")))"_s;
    now.stuck = u"(i.Old_GrpCode IS NOT NULL AND NOT EXISTS (SELECT 1 FROM GoodGrpS o WHERE o.Code = i.Old_GrpCode) OR "
                "i.Old_Name IS NOT NULL AND EXISTS (SELECT 1 FROM GoodInf o WHERE o.Name = i.Old_Name AND o.Code <> "
                "j.GoodCode))"_s;
    now.used = u"(i.IsNew = 1 AND ("_s + m_entities.InUse(TSoftwarePart::Goods, u"j.GoodCode"_s) + u" OR "_s +
               RecordedDetails(u"j.GoodCode"_s) + u"))"_s;
    now.made = u"i.IsNew"_s;
    return now;
}

int ImportJournal::Restore(int change, const QList<BulkField> &fields, BulkSteps &steps)
{
    QStringList values;
    QStringList prices;
    for (const QString &column : ColumnsOf(fields)) {
        const QString stored = Stored(column);
        (IsPrice(column) ? prices : values) += stored + u" = CASE WHEN i.New_"_s + column + u" IS NULL THEN "_s +
                                               stored + u" ELSE i.Old_"_s + column + u" END"_s;
    }
    const auto restore = [&](const QStringList &assignments, const QString &table, const QString &joined) {
        host::Exec(m_main, u"UPDATE "_s + table + u" SET "_s + assignments.join(u", "_s) +
                               u" FROM BulkChangeGoods j"_s + WithImport + joined +
                               u" INNER JOIN BulkChanges b ON b.ID = j.ChangeID WHERE j.ChangeID = "_s +
                               QString::number(change) + u" AND j.IsLeft = 0 AND i.IsNew = 0"_s);
        return steps.GoOn();
    };
    // The stamp of who has edited the good since stays.
    const QString isOurs = u"CASE WHEN g.ModifiedDate = b.ChangedDate AND g.ModifiedTime = b.ChangedTime AND "
                           "g.UserModified = b.UserChanged THEN i.Old%1 ELSE g.%1 END"_s;
    for (const QString &column : {u"ModifiedTime"_s, u"ModifiedDate"_s, u"UserModified"_s}) {
        values += u"g."_s + column + u" = "_s + isOurs.arg(column);
    }
    if (!restore(values, u"g"_s, u" INNER JOIN GoodInf g ON g.Code = j.GoodCode"_s)) {
        return -1;
    }
    if (!prices.isEmpty()) {
        if (!restore(prices, u"c"_s, u" INNER JOIN GoodCostDiscount c ON c.GoodCode = j.GoodCode"_s)) {
            return -1;
        }
        host::Exec(m_main, u"DELETE FROM c FROM GoodCostDiscount c WHERE c.GoodCode IN "_s + Going(change, 0) +
                               u" AND i.MadePrices = 1) AND c.Default_CostLevel_Sell_Number = 0 AND "
                               "c.Default_CostLevel_Buy_Number = 0 AND NOT ("_s +
                               PricesSet({}).join(u" OR "_s) + u')');
    }
    const int deleted = host::Exec(m_main, u"DELETE FROM GoodInf WHERE Code IN "_s + Going(change, 1) + u')');
    if (!steps.GoOn()) {
        return -1;
    }
    host::Exec(m_main, u"DELETE FROM GoodCostDiscount WHERE GoodCode IN "_s + Going(change, 1) + u')');
    DeleteUnused(change);
    return deleted;
}

void ImportJournal::DeleteUnused(int change)
{
    for (const TSoftwarePart part : {TSoftwarePart::GoodsGroups, TSoftwarePart::Units}) {
        const QString table = TableOf(part);
        host::Exec(m_main, u"DELETE FROM "_s + table +
                               u" WHERE EXISTS (SELECT 1 FROM BulkImportTitles t WHERE t.ChangeID "
                               "= "_s +
                               QString::number(change) + u" AND t.Kind = "_s + QString::number(static_cast<int>(part)) +
                               u" AND t.Code = "_s + table + u".Code AND t.Name = "_s + table +
                               u".Name) AND Comment IS NULL AND NOT "_s + m_entities.InUse(part, table + u".Code"_s));
    }
}

QString ImportJournal::TextColumns(const QList<BulkField> &fields)
{
    // A good that is new had nothing before.
    QString before = u"CASE WHEN i.IsNew = 1 THEN NULL ELSE N''"_s;
    QString after = u"N''"_s;
    for (const QString &column : ColumnsOf(fields)) {
        if (column == "Name"_L1) {
            continue; // its parts say it
        }
        const QString label = u"N'"_s + ImportValueMark + column + ImportNameMark + u"' + "_s;
        const QString now = u"i.New_"_s + column;
        const QString written = u" + CASE WHEN "_s + now + u" IS NULL THEN N'' ELSE "_s + label;
        before += written + u"ISNULL("_s + Shown(column, u"i.Old_"_s + column) + u", N'') END"_s;
        after += written + Shown(column, now) + u" END"_s;
    }
    return before + u" END AS OldText, "_s + after + u" AS NewText"_s;
}

} // namespace goods
