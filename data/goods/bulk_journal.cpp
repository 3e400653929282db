#include "data/goods/bulk_journal.h"

#include "data/goods/bulk_ledger.h"
#include "data/goods/bulk_scope.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace goods {

namespace {

constexpr int TakeBackSteps = 3; ///< those of a file are a few more

bool OfDetails(const QList<BulkField> &fields)
{
    return fields.constFirst().name == DetailField;
}

const QString TheGood = u" LEFT JOIN GoodInf g ON g.Code = j.GoodCode"_s;

Comparison CompareDetails(const QList<BulkField> &fields, const QString &lock)
{
    return {
        TheGood, OtherDetails(fields, u"j.GoodCode"_s, lock),
        u'(' + RecordedDetails(u"j.GoodCode"_s) +
            u" OR EXISTS (SELECT 1 FROM "
            "BulkChangeDetails d WHERE d.ChangeID = j.ChangeID AND d.GoodCode = j.GoodCode AND NOT EXISTS (SELECT 1 "
            "FROM DetailTypes dt WHERE dt.ID = d.DetailID)))"_s};
}

/// `lock`: Locked while taking back, nothing for a forecast.
Comparison Compare(const QList<BulkField> &fields, const QString &lock = {})
{
    if (OfDetails(fields)) {
        return CompareDetails(fields, lock);
    }
    const BulkTarget target = TargetOf(fields);
    QStringList differences{u"t."_s + target.key + u" IS NULL"_s};
    for (const BulkField &field : fields) {
        differences += u"t."_s + field.name + u" <> "_s + NewValueOf(field);
    }
    Comparison now{TheGood + u" LEFT JOIN "_s + target.table + u" t"_s + lock + u" ON t."_s + target.key +
                       u" = j.GoodCode"_s,
                   u'(' + differences.join(u" OR "_s) + u')'};
    if (fields.constFirst().name == "DaraiGoodType"_L1) {
        now.stuck = u"NOT EXISTS (SELECT 1 FROM FinanceGoodTypes f WHERE f.Code = j.Old1)"_s;
    }
    return now;
}

void RestoreDetails(const QSqlDatabase &main, const QString &entry)
{
    host::Exec(main, u"DELETE FROM GoodDetailRelation WHERE GoodCode IN (SELECT j.GoodCode FROM BulkChangeGoods j "
                     "WHERE "_s +
                         entry + u')');
    host::Exec(main, u"INSERT INTO GoodDetailRelation (GoodCode, DetailID) SELECT d.GoodCode, d.DetailID FROM "
                     "BulkChangeDetails d INNER JOIN BulkChangeGoods j ON j.ChangeID = d.ChangeID AND j.GoodCode = "
                     "d.GoodCode WHERE "_s +
                         entry);
}

void Restore(const QSqlDatabase &main, const QList<BulkField> &fields, const QString &entry)
{
    if (OfDetails(fields)) {
        RestoreDetails(main, entry);
        return;
    }
    const BulkTarget target = TargetOf(fields);
    QStringList assignments;
    for (const BulkField &field : fields) {
        assignments += u"t."_s + field.name + u" = j.Old"_s + QString::number(assignments.size() + 1);
    }
    host::Exec(main, u"UPDATE t SET "_s + assignments.join(u", "_s) + u" FROM "_s + target.table +
                         u" t INNER JOIN BulkChangeGoods j ON j.GoodCode = t."_s + target.key + u" WHERE "_s + entry);
}

/// Each value with the name of its field, joined.
QString JoinedText(const QList<BulkField> &fields, bool old)
{
    QStringList texts;
    for (const BulkField &field : fields) {
        const QString value = old ? u"j.Old"_s + QString::number(texts.size() + 1) : NewValueOf(field);
        texts += u"N'"_s + field.name + u"=' + CAST("_s + value + u" AS nvarchar(40))"_s;
    }
    return texts.join(u" + N' / ' + "_s);
}

QString TypeTitle(const QString &code)
{
    return u"(SELECT f.Name FROM FinanceGoodTypes f WHERE f.Code = "_s + code + u')';
}

/// Titles joined in their order; the signs that XML escapes as they are.
QString DetailTitles(const QString &from)
{
    return u"REPLACE(REPLACE(REPLACE(STUFF((SELECT N'، ' + dt.Title FROM "_s + from +
           u" ORDER BY dt.Title FOR XML PATH('')), 1, 2, N''), '&lt;', '<'), '&gt;', '>'), '&amp;', '&')"_s;
}

/// OldPrice, NewPrice, OldText and NewText of the entry's goods.
QString ValueColumns(BulkKind kind, int change, const QList<BulkField> &fields)
{
    const QString none = u"CAST(NULL AS decimal(28,9))"_s;
    QString price = none + u" AS OldPrice, "_s + none + u" AS NewPrice, "_s;
    QString oldText;
    QString newText;
    switch (kind) {
    case BulkKind::Prices:
        price = u"j.Old1 AS OldPrice, j.NewPrice AS NewPrice, "_s;
        oldText = newText = u"CAST(NULL AS nvarchar(200))"_s;
        break;
    case BulkKind::Discounts:
        oldText = JoinedText(fields, true);
        newText = JoinedText(fields, false);
        break;
    case BulkKind::AssetType:
        oldText = TypeTitle(u"j.Old1"_s);
        newText = TypeTitle(fields.constFirst().newValue);
        break;
    case BulkKind::DetailTypes:
        oldText = DetailTitles(u"BulkChangeDetails d INNER JOIN DetailTypes dt ON dt.ID = d.DetailID WHERE d.ChangeID "
                               "= j.ChangeID AND d.GoodCode = j.GoodCode"_s);
        // The number, for the text is the same in every row and is to be made once.
        newText = DetailTitles(u"BulkChangeFields b INNER JOIN DetailTypes dt ON dt.ID = b.NewValue WHERE b.ChangeID "
                               "= "_s +
                               QString::number(change));
        break;
    case BulkKind::Import:
        return price + ImportJournal::TextColumns(fields);
    }
    return price + oldText + u" AS OldText, "_s + newText + u" AS NewText"_s;
}

QString EntryOf(int change)
{
    return u"j.ChangeID = "_s + QString::number(change);
}

} // namespace

BulkJournal::BulkJournal(const QSqlDatabase &main, Scales &scales, const host::EntityService &entities)
    : BulkChanges_QRY(main), BulkGoods_QRY(main), BulkLeft_QRY(main), m_main(main), m_scales(scales),
      m_imports(main, entities)
{
    BulkGoods_QRY.ReadInBlocks(); // a file has as many goods as the shop
}

void BulkJournal::BulkChanges_GetAll()
{
    BulkChanges_QRY.Open(u"SELECT ID, Kind, Title, Scope, Goods, UserChanged, ChangedDate, ChangedTime, CAST(CASE WHEN "
                         "GoodsTakenBack IS NULL THEN 0 ELSE 1 END AS bit) AS TakenBack, GoodsTakenBack, GoodsLeft, "
                         "UserTakenBack, TakenBackDate, TakenBackTime FROM BulkChanges ORDER BY ID DESC"_s);
}

BulkJournal::State BulkJournal::BulkChange_State(int change) const
{
    const QVariant taken = host::Scalar(m_main, u"SELECT CASE WHEN GoodsTakenBack IS NULL THEN 0 ELSE 1 END FROM "
                                                "BulkChanges WHERE ID = "_s +
                                                    QString::number(change));
    return !taken.isValid() ? State::Forgotten : taken.toInt() == 0 ? State::Stands : State::TakenBack;
}

void BulkJournal::OpenGoods(host::Dataset &rows, int change, const QString &condition)
{
    const QList<BulkField> fields = BulkLedger(m_main).FieldsOf(change);
    const BulkKind kind = BulkLedger(m_main).KindOf(change);
    // Without its entry, which another desk may have dropped as the oldest, a change has no goods.
    const QString values = ValueColumns(fields.isEmpty() ? BulkKind::Prices : kind, change, fields);
    const bool ofFile = kind == BulkKind::Import && !fields.isEmpty();
    rows.Open(u"SELECT j.GoodCode AS Code, g.Name, j.IsLeft AS [Left], "_s + values + u" FROM BulkChangeGoods j"_s +
              (ofFile ? WithImport : QString()) + TheGood + u" WHERE "_s + EntryOf(change) + condition +
              u" ORDER BY j.GoodCode"_s);
}

void BulkJournal::BulkGoods_GetAll(int change)
{
    OpenGoods(BulkGoods_QRY, change, {});
}

void BulkJournal::BulkGoods_GetLeft(int change)
{
    OpenGoods(BulkLeft_QRY, change, u" AND j.IsLeft <> 0"_s);
}

Comparison BulkJournal::CompareEntry(int change, const QList<BulkField> &fields, const QString &lock) const
{
    return BulkLedger(m_main).KindOf(change) == BulkKind::Import ? m_imports.Compare(fields, lock)
                                                                 : Compare(fields, lock);
}

BulkForecast BulkJournal::BulkChange_Forecast(int change)
{
    const QList<BulkField> fields = BulkLedger(m_main).FieldsOf(change);
    if (fields.isEmpty()) {
        return {};
    }
    const Comparison now = CompareEntry(change, fields, {});
    host::Query counts(m_main, u"SELECT a.Reason, COUNT(*) AS Goods, SUM(a.Made) AS Made FROM (SELECT "_s +
                                   now.Reason() + u" AS Reason, CAST("_s + now.made +
                                   u" AS int) AS Made FROM BulkChangeGoods j"_s + now.tables + u" WHERE "_s +
                                   EntryOf(change) + u") AS a GROUP BY a.Reason"_s);
    BulkForecast forecast;
    int *const byReason[] = {&forecast.changing, &forecast.same, &forecast.gone, &forecast.protectedOf, &forecast.used};
    for (; !counts.Eof(); counts.Next()) {
        const int goods = counts.Int(u"Goods");
        const int reason = counts.Int(u"Reason");
        forecast.goods += goods;
        *byReason[reason] = goods;
        forecast.removing += reason == 0 ? counts.Int(u"Made") : 0;
    }
    return forecast;
}

BulkResult BulkJournal::BulkChange_TakeBack(int change, const BulkOrder &order)
{
    const QString number = QString::number(change);
    BulkResult result;
    const BulkResult cancelled{BulkResult::Outcome::Cancelled};
    BulkSteps steps(order.progress, TakeBackSteps);
    host::Transaction transaction(m_main);
    const int claimed =
        host::Exec(m_main, u"UPDATE BulkChanges SET GoodsTakenBack = 0, GoodsLeft = 0, UserTakenBack = "_s +
                               host::NQuotedStr(order.user) + u", TakenBackDate = "_s + host::QuotedStr(order.date) +
                               u", TakenBackTime = "_s + host::QuotedStr(order.time) +
                               u" WHERE GoodsTakenBack IS NULL AND ID = "_s + number);
    if (claimed == 0) {
        return {BulkResult::Outcome::Refused};
    }
    const QList<BulkField> fields = BulkLedger(m_main).FieldsOf(change);
    const Comparison now = CompareEntry(change, fields, Locked);
    result.change = change;
    host::Exec(m_main, u"UPDATE j SET j.IsLeft = "_s + now.Reason() + u" FROM BulkChangeGoods j"_s + now.tables +
                           u" WHERE "_s + EntryOf(change));
    result.left =
        host::Scalar(m_main, u"SELECT COUNT(*) FROM BulkChangeGoods j WHERE j.IsLeft <> 0 AND "_s + EntryOf(change))
            .toInt();
    if (!steps.GoOn()) {
        return cancelled;
    }
    if (BulkLedger(m_main).KindOf(change) == BulkKind::Import) {
        result.removed = m_imports.Restore(change, fields, steps);
    } else {
        Restore(m_main, fields, EntryOf(change) + u" AND j.IsLeft = 0"_s);
    }
    if (result.removed < 0 || !steps.GoOn()) {
        return cancelled;
    }
    const QString left = QString::number(result.left);
    const host::Query counts(m_main, u"UPDATE BulkChanges SET GoodsTakenBack = Goods - "_s + left +
                                         u", GoodsLeft = "_s + left + u" WHERE ID = "_s + number +
                                         u" SELECT GoodsTakenBack FROM BulkChanges WHERE ID = "_s + number);
    result.written = counts.Int(0);
    if (!steps.GoOn()) {
        return cancelled;
    }
    transaction.Commit();
    return result;
}

} // namespace goods
