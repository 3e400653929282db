#include "data/goods/bulk_prices.h"

#include "data/goods/bulk_ledger.h"
#include "data/goods/bulk_price_rule.h"
#include "data/goods/bulk_scope.h"
#include "host/data/query.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace goods {

namespace {

const QString Preview = u"#BulkPrices"_s;
const QString PickTable = u"#BulkPick"_s;

/// Steps of a preview besides those of its scope, and of its writing.
constexpr int PreviewSteps = 2;
constexpr int WriteSteps = 3;

QString Fate(PriceFate fate)
{
    return QString::number(static_cast<int>(fate));
}

/// The goods of the scope with old price, source and what is against a change. The result is reckoned outside, once
/// for each good.
QString GoodsWithPrices(const PriceRule &rule)
{
    const bool taken = !rule.sources.isEmpty();
    const QString goods = u"SELECT s.Place, s.Code, g.Code AS Good, g.Name, "_s + rule.old + u" AS OldPrice, "_s +
                          (taken ? u"m.Price"_s : u"0"_s) +
                          u" AS Source FROM #BulkGoods s LEFT JOIN GoodInf g ON g.Code = s.Code LEFT JOIN "
                          "GoodCostDiscount c ON c.GoodCode = s.Code"_s +
                          (taken ? u" LEFT JOIN #BulkSource m ON m.Code = s.Code"_s : QString());
    return u"SELECT Place, Code, Name, OldPrice, Source, CASE WHEN Good IS NULL THEN "_s + Fate(PriceFate::GoodGone) +
           u" WHEN "_s + rule.noSource + u" THEN "_s + Fate(PriceFate::NoSource) + u" WHEN "_s + rule.belowZero +
           u" THEN "_s + Fate(PriceFate::BelowZero) + u" ELSE "_s + Fate(PriceFate::Changes) +
           u" END AS Fate FROM ("_s + goods + u") AS a"_s;
}

} // namespace

BulkPrices::BulkPrices(const QSqlDatabase &main) : BulkPrices_QRY(main), m_main(main)
{
    BulkPrices_QRY.SetTable(Preview, u"Place"_s);
    BulkPrices_QRY.SetEditableFields({u"Picked"_s});
}

bool BulkPrices::BulkPrices_Prepare(const GoodsScope &scope, const PriceInstruction &instruction,
                                    const BulkProgress &progress)
{
    const PriceRule rule = RuleOf(instruction);
    BulkPrices_Close();
    BulkSteps steps(progress, StepsOf(scope) + PreviewSteps);
    if (!Take(m_main, scope, steps)) {
        return false;
    }
    if (!rule.sources.isEmpty()) {
        QString tables;
        for (const QString &table : {u"#BulkSource"_s, u"#BulkMoves"_s}) {
            tables += DropTable(table) + u" CREATE TABLE "_s + table +
                      u" (Code int NOT NULL PRIMARY KEY, Price decimal(28,9)) "_s;
        }
        host::Exec(m_main, tables + rule.sources);
    }
    if (!steps.GoOn()) {
        return false;
    }
    host::Exec(
        m_main,
        u"CREATE TABLE #BulkPrices (Place int NOT NULL PRIMARY KEY, Code int NOT NULL, Name nvarchar(152), "
        "OldPrice decimal(28,9), NewPrice decimal(38,9), Fate int NOT NULL, Picked bit NOT NULL) "
        "INSERT INTO #BulkPrices (Place, Code, Name, OldPrice, NewPrice, Fate, Picked) SELECT Place, Code, Name, "
        "OldPrice, CASE Fate WHEN 0 THEN "_s +
            rule.result + u" END, Fate, 1 FROM ("_s + GoodsWithPrices(rule) + u") AS b"_s);
    if (!steps.GoOn()) {
        BulkPrices_Close();
        return false;
    }
    const QString tooLarge = u"(NewPrice IS NULL OR NewPrice > "_s + MostPrice + u')';
    const QString roundedAway = u"(NewPrice = 0 AND "_s + rule.above + u')';
    host::Exec(m_main, u"UPDATE #BulkPrices SET Picked = 0, NewPrice = CASE WHEN "_s + tooLarge + u" OR "_s +
                           roundedAway + u" THEN NULL ELSE NewPrice END, Fate = CASE WHEN Fate <> 0 THEN Fate WHEN "_s +
                           tooLarge + u" THEN "_s + Fate(PriceFate::TooLarge) + u" WHEN "_s + roundedAway +
                           u" THEN "_s + Fate(PriceFate::RoundedAway) + u" ELSE "_s + Fate(PriceFate::SamePrice) +
                           u" END WHERE Fate <> 0 OR NewPrice = OldPrice OR "_s + tooLarge + u" OR "_s + roundedAway);
    m_instruction = instruction;
    m_scope = scope.kind;
    return true;
}

void BulkPrices::BulkPrices_GetAll(Rows rows)
{
    const QString which = rows == Rows::All ? QString() : u" WHERE Fate <> 0"_s;
    BulkPrices_QRY.Open(u"SELECT Place, Code, Name, OldPrice, NewPrice, Fate, Picked FROM #BulkPrices"_s + which +
                        u" ORDER BY Place"_s);
}

void BulkPrices::BulkPrices_Pick(const QList<int> &codes, bool picked)
{
    BulkSteps steps({}, 1);
    TakeCodes(m_main, PickTable, codes, steps);
    host::Exec(m_main, u"UPDATE #BulkPrices SET Picked = "_s + QString::number(int(picked)) +
                           u" WHERE Fate = 0 AND Code IN (SELECT Code FROM #BulkPick)"_s);
}

void BulkPrices::BulkPrices_PickAll(bool picked)
{
    host::Exec(m_main, u"UPDATE #BulkPrices SET Picked = "_s + QString::number(int(picked)) + u" WHERE Fate = 0"_s);
}

void BulkPrices::BulkPrices_PickOnly(const QList<int> &codes)
{
    BulkPrices_PickAll(false);
    BulkPrices_Pick(codes, true);
}

BulkResult BulkPrices::BulkPrices_Apply(const BulkOrder &order)
{
    const PriceRule rule = RuleOf(m_instruction);
    const QList<BulkField> fields{{rule.column, {}}};
    // What is compared may not change before it is written, and no price row may come where there is none.
    const QString stored =
        u" FROM #BulkPrices p LEFT JOIN GoodInf g WITH (UPDLOCK) ON g.Code = p.Code LEFT JOIN "
        "GoodCostDiscount c WITH (UPDLOCK, HOLDLOCK) ON c.GoodCode = p.Code WHERE p.Fate = 0 AND p.Picked = 1 "
        "AND "_s;
    BulkResult result;
    const BulkResult cancelled{BulkResult::Outcome::Cancelled};
    BulkSteps steps(order.progress, WriteSteps);
    host::Transaction transaction(m_main);
    const int picked =
        host::Scalar(m_main, u"SELECT COUNT(*) FROM #BulkPrices WHERE Fate = 0 AND Picked = 1"_s).toInt();
    BulkLedger ledger(m_main);
    result.change = ledger.Open(BulkKind::Prices, m_scope, order, fields);
    result.written = ledger.AddGoods(result.change, u"GoodCode, NewPrice, Old1"_s,
                                     u"p.Code, p.NewPrice, p.OldPrice"_s + stored + u"g.Code IS NOT NULL AND "_s +
                                         rule.old + u" = p.OldPrice"_s);
    result.left = picked - result.written;
    if (!steps.GoOn()) {
        return cancelled;
    }
    if (result.left > 0) {
        host::Exec(m_main, u"UPDATE p SET p.Picked = 0, p.Fate = CASE WHEN g.Code IS NULL THEN "_s +
                               Fate(PriceFate::GoodGone) + u" ELSE "_s + Fate(PriceFate::ChangedMeanwhile) + u" END"_s +
                               stored + u"(g.Code IS NULL OR "_s + rule.old + u" <> p.OldPrice)"_s);
    }
    ledger.Write(result.change, fields);
    if (!steps.GoOn()) {
        return cancelled;
    }
    return ledger.Finish(transaction, steps, result) ? result : cancelled;
}

void BulkPrices::BulkPrices_Close()
{
    BulkPrices_QRY.Close();
    host::Exec(m_main, DropTable(Preview));
}

} // namespace goods
