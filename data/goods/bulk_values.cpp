#include "data/goods/bulk_values.h"

#include "data/goods/bulk_ledger.h"
#include "data/goods/bulk_scope.h"
#include "data/goods/good_detail_types.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

constexpr int MostDetailTypes = 5;
constexpr int WriteSteps = 3;

/// The columns that are ticked, with what they are given.
QList<BulkField> FieldsOf(const GroupDiscount &discount)
{
    QList<BulkField> fields;
    const auto addRates = [&fields](const QString &side, const auto &ticked, const auto &rates) {
        for (size_t i = 0; i < ticked.size(); ++i) {
            if (!ticked[i]) {
                continue;
            }
            const QString rate = host::DecimalLiteral(rates[i]);
            if (!(rates[i] >= 0 && rates[i] <= 100)) {
                throw host::RefusedText(u"درصد ۰ تا ۱۰۰"_s, rate);
            }
            fields.append({u"Discount_"_s + side + u'_' + QString::number(i + 1), rate});
        }
    };
    const auto addDefault = [&fields](const QString &side, bool ticked, int number) {
        if (ticked && (number < 1 || number > 4)) {
            throw host::RefusedText(u"تخفیف پیش فرض ۱ تا ۴"_s, QString::number(number));
        }
        if (ticked) {
            fields.append({u"Default_Discount_"_s + side + u"_Number"_s, QString::number(number)});
        }
    };
    addRates(u"Sell"_s, discount.sellTicked, discount.sell);
    addRates(u"Buy"_s, discount.buyTicked, discount.buy);
    addDefault(u"Sell"_s, discount.defaultSellTicked, discount.defaultSell);
    addDefault(u"Buy"_s, discount.defaultBuyTicked, discount.defaultBuy);
    if (fields.isEmpty()) {
        throw host::RefusedText(u"حداقل یک تخفیف"_s, {});
    }
    return fields;
}

QList<BulkField> FieldsOfType(int type)
{
    return {{u"DaraiGoodType"_s, QString::number(type)}};
}

/// What a field holds, in a row `t` that may be missing: what a fresh row would have.
QString Stored(const BulkField &field)
{
    const bool number = field.name.startsWith("Default_"_L1);
    return u"ISNULL(t."_s + field.name + (number ? u",1)"_s : u",0)"_s);
}

/// The goods of the scope with their rows `t`, to be written; `g` is NULL for a good that is gone.
QString ScopeRows(const QList<BulkField> &fields)
{
    const BulkTarget target = TargetOf(fields);
    return u" FROM #BulkGoods s LEFT JOIN GoodInf g ON g.Code = s.Code LEFT JOIN "_s + target.table + u" t"_s + Locked +
           u" ON t."_s + target.key + u" = s.Code"_s;
}

QString Differs(const QList<BulkField> &fields)
{
    QStringList differences;
    for (const BulkField &field : fields) {
        differences += Stored(field) + u" <> "_s + field.newValue;
    }
    return u"g.Code IS NOT NULL AND ("_s + differences.join(u" OR "_s) + u')';
}

QString CountIf(const QString &condition, const QString &name)
{
    return u"SUM(CASE WHEN "_s + condition + u" THEN 1 ELSE 0 END) AS "_s + name;
}

/// Of a statement that counts Goods, Gone, Changing and Protected of a scope.
BulkForecast Forecast(const QSqlDatabase &main, const QString &select)
{
    const host::Query counts(main, select);
    BulkForecast forecast;
    forecast.goods = counts.Int(u"Goods");
    forecast.gone = counts.Int(u"Gone");
    forecast.changing = counts.Int(u"Changing");
    forecast.protectedOf = counts.Int(u"Protected");
    forecast.same = forecast.goods - forecast.gone - forecast.changing - forecast.protectedOf;
    return forecast;
}

/// Calls `write` with the goods of an entry, a block of codes at a time. What it leaves to the next statement
/// (host::Run) goes along with the reading of the next block. False when given up.
bool WriteBlocks(const QSqlDatabase &main, int change, BulkSteps &steps,
                 const std::function<void(const QString &codes)> &write)
{
    int last = std::numeric_limits<int>::min();
    for (;;) {
        QStringList codes;
        host::Query block(main, u"SELECT TOP "_s + QString::number(CodesOfBlock) +
                                    u" GoodCode FROM BulkChangeGoods WHERE ChangeID = "_s + QString::number(change) +
                                    u" AND GoodCode > "_s + QString::number(last) + u" ORDER BY GoodCode"_s);
        for (; !block.Eof(); block.Next()) {
            last = block.Int(0);
            codes += QString::number(last);
        }
        if (!steps.GoOn()) {
            return false;
        }
        if (codes.isEmpty()) {
            return true;
        }
        write(codes.join(u','));
    }
}

// Detail types -------------------------------------------------------------------------------------------------------

QList<BulkField> FieldsOfDetails(const QString &detailIds)
{
    QList<BulkField> fields;
    for (const int id : host::Codes(detailIds)) {
        const QString number = QString::number(id);
        const bool known = std::any_of(fields.cbegin(), fields.cend(),
                                       [&number](const BulkField &field) { return field.newValue == number; });
        if (!known) {
            fields.append({DetailField, number});
        }
    }
    if (fields.isEmpty() || fields.size() > MostDetailTypes) {
        throw host::RefusedText(u"۱ تا ۵ نوع جزییات"_s, detailIds);
    }
    return fields;
}

/// Quantities are recorded for the details of the good `s`: its types may not change.
const QString Recorded = RecordedDetails(u"s.Code"_s);

/// Detail types that exist and may stand together on one good, as their lists let them be chosen.
void CheckDetails(const QSqlDatabase &main, const QList<BulkField> &fields)
{
    const host::Query types(main, u"SELECT COUNT(*) AS Types, "_s + CountIf(u"DetailType IN (3, 6)"_s, u"Codes"_s) +
                                      u", "_s + CountIf(u"DetailType = 5 AND DateAlarm = 1"_s, u"Alarms"_s) +
                                      u" FROM DetailTypes WHERE ID IN ("_s + DetailList(fields) + u')');
    if (types.Int(u"Types") != fields.size() || types.Int(u"Codes") > 1 || types.Int(u"Alarms") > 1) {
        throw host::RefusedText(u"انواع جزییات موجود و سازگار با هم"_s, DetailList(fields));
    }
}

} // namespace

/// A change in the making: which goods get into its entry, and how their own rows are written.
struct BulkValues::Work
{
    BulkKind kind;
    QList<BulkField> fields;
    QString columns; ///< of the entry's goods
    QString select;  ///< what stands in them
    /// Writes the goods of the entry; false when given up.
    std::function<bool(BulkLedger &ledger, int change, BulkSteps &steps)> write;
};

BulkValues::BulkValues(const QSqlDatabase &main, GoodDetailTypes &detailTypes)
    : m_main(main), m_detailTypes(detailTypes)
{}

BulkResult BulkValues::Apply(const GoodsScope &scope, const Work &work, const BulkOrder &order)
{
    const BulkResult cancelled{BulkResult::Outcome::Cancelled};
    BulkSteps steps(order.progress, StepsOf(scope) + WriteSteps);
    if (!Take(m_main, scope, steps)) {
        return cancelled;
    }
    host::Transaction transaction(m_main);
    BulkLedger ledger(m_main);
    BulkResult result;
    result.change = ledger.Open(work.kind, scope.kind, order, work.fields);
    result.written = ledger.AddGoods(result.change, work.columns, work.select);
    steps.Expect(result.written / CodesOfBlock);
    if (!steps.GoOn() || !work.write(ledger, result.change, steps)) {
        return cancelled;
    }
    return ledger.Finish(transaction, steps, result) ? result : cancelled;
}

BulkValues::Work BulkValues::ColumnWork(BulkKind kind, const QList<BulkField> &fields)
{
    QString columns = u"GoodCode"_s;
    QString values = u"s.Code"_s;
    for (qsizetype i = 0; i < fields.size(); ++i) {
        columns += u", Old"_s + QString::number(i + 1);
        values += u", "_s + Stored(fields.at(i));
    }
    return {kind, fields, columns, values + ScopeRows(fields) + u" WHERE "_s + Differs(fields),
            [fields](BulkLedger &ledger, int change, BulkSteps &steps) {
                ledger.Write(change, fields);
                return steps.GoOn();
            }};
}

// Discounts ----------------------------------------------------------------------------------------------------------

BulkResult BulkValues::ApplyGroupDiscount(const GoodsScope &scope, const GroupDiscount &discount,
                                          const BulkOrder &order)
{
    return Apply(scope, ColumnWork(BulkKind::Discounts, FieldsOf(discount)), order);
}

BulkResult BulkValues::ApplyGroupDiscount(const QList<int> &codes, qsizetype highestIndex,
                                          const GroupDiscount &discount, const BulkOrder &order)
{
    return ApplyGroupDiscount({ScopeKind::Marked, codes.first(highestIndex + 1)}, discount, order);
}

// Asset type ---------------------------------------------------------------------------------------------------------

BulkResult BulkValues::AssetType_Apply(const GoodsScope &scope, int type, const BulkOrder &order)
{
    Work work = ColumnWork(BulkKind::AssetType, FieldsOfType(type));
    work.write = [this, type](BulkLedger &, int change, BulkSteps &steps) {
        return WriteBlocks(m_main, change, steps, [this, type](const QString &codes) {
            host::Run(m_main, u"update GoodInf set DaraiGoodType = "_s + QString::number(type) + u" where code in ("_s +
                                  codes + u')');
        });
    };
    return Apply(scope, work, order);
}

// Detail types -------------------------------------------------------------------------------------------------------

BulkForecast BulkValues::DetailTypes_Forecast(const GoodsScope &scope, const QString &detailIds)
{
    const QList<BulkField> fields = FieldsOfDetails(detailIds);
    CheckDetails(m_main, fields);
    BulkSteps steps({}, 1);
    Take(m_main, scope, steps);
    // Aggregates may not hold subqueries: what is asked of each good stands inside.
    const QString flag = u"CASE WHEN %1 THEN 1 ELSE 0 END AS %2"_s;
    return Forecast(m_main, u"SELECT COUNT(*) AS Goods, "_s + CountIf(u"a.Good IS NULL"_s, u"Gone"_s) + u", "_s +
                                CountIf(u"a.Other = 1 AND a.Recorded = 0"_s, u"Changing"_s) + u", "_s +
                                CountIf(u"a.Other = 1 AND a.Recorded = 1"_s, u"Protected"_s) +
                                u" FROM (SELECT g.Code AS Good, "_s +
                                flag.arg(u"g.Code IS NOT NULL AND "_s + OtherDetails(fields, u"s.Code"_s), u"Other"_s) +
                                u", "_s + flag.arg(Recorded, u"Recorded"_s) +
                                u" FROM #BulkGoods s LEFT JOIN GoodInf g ON g.Code = s.Code) AS a"_s);
}

BulkResult BulkValues::DetailTypes_Apply(const GoodsScope &scope, const QString &detailIds, const BulkOrder &order)
{
    const QList<BulkField> fields = FieldsOfDetails(detailIds);
    CheckDetails(m_main, fields);
    int left = 0;
    const QString other =
        u" INNER JOIN GoodInf g ON g.Code = s.Code WHERE "_s + OtherDetails(fields, u"s.Code"_s, Locked);
    Work work{BulkKind::DetailTypes,
              fields,
              u"GoodCode"_s,
              u"s.Code FROM #BulkGoods s"_s + other + u" AND NOT "_s + Recorded,
              {}};
    work.write = [&, this](BulkLedger &, int change, BulkSteps &steps) {
        left = host::Scalar(m_main,
                            u"SELECT COUNT(*) FROM (SELECT DISTINCT GoodCode FROM GoodDetailKardex) AS k INNER JOIN "
                            "#BulkGoods s ON s.Code = k.GoodCode"_s +
                                other)
                   .toInt();
        const QString number = QString::number(change);
        host::Exec(m_main, u"INSERT INTO BulkChangeDetails (ChangeID, GoodCode, DetailID) SELECT DISTINCT j.ChangeID, "
                           "j.GoodCode, r.DetailID FROM BulkChangeGoods j INNER JOIN GoodDetailRelation r"_s +
                               Locked + u" ON r.GoodCode = j.GoodCode WHERE j.ChangeID = "_s + number);
        return WriteBlocks(m_main, change, steps, [&](const QString &codes) {
            m_detailTypes.InsertGoodDetailTypesForGoods(codes, DetailList(fields), 1);
        });
    };
    BulkResult result = Apply(scope, work, order);
    if (result.outcome == BulkResult::Outcome::Done) {
        result.left = left;
    }
    return result;
}

} // namespace goods
