// The prices of a change on the way to the scales.

#include "data/goods/bulk_journal.h"
#include "data/goods/bulk_ledger.h"
#include "data/goods/bulk_scope.h"
#include "data/goods/good_scales.h"
#include "host/data/query.h"

using namespace Qt::StringLiterals;

namespace goods {

int BulkJournal::SendLevel(int level, const QString &of)
{
    QList<int> codes;
    for (host::Query goods(m_main, u"SELECT j.GoodCode FROM #BulkItems i INNER JOIN "_s + of +
                                       u" AND j.GoodCode = i.Code INNER JOIN GoodCostDiscount c ON c.GoodCode = "
                                       "j.GoodCode WHERE c.Default_CostLevel_Sell_Number = "_s +
                                       QString::number(level));
         !goods.Eof(); goods.Next()) {
        codes += goods.Int(0);
    }
    return m_scales.SendChangesToScale(codes, level).changed;
}

int BulkJournal::BulkChange_SendToScales(int change)
{
    const QString sale = u"CostLevel_Sell_"_s;
    QList<BulkField> fields = BulkLedger(m_main).FieldsOf(change);
    fields.removeIf([&sale](const BulkField &field) { return !field.name.startsWith(sale); });
    const bool isImport = BulkLedger(m_main).KindOf(change) == BulkKind::Import;
    if (fields.isEmpty() && !isImport) {
        return 0;
    }
    BulkSteps steps({}, 1);
    TakeCodes(m_main, u"#BulkItems"_s, m_scales.CodesOnScale(), steps);
    const QString entry = u" j ON j.ChangeID = "_s + QString::number(change);
    int items = 0;
    for (const BulkField &field : std::as_const(fields)) {
        const QString of = isImport ? u"BulkImportGoods"_s + entry + u" AND j.New_"_s + field.name + u" IS NOT NULL"_s
                                    : u"BulkChangeGoods"_s + entry;
        items += SendLevel(field.name.section(u'_', -1).toInt(), of);
    }
    if (!isImport) {
        return items;
    }
    QStringList gone;
    for (host::Query goods(m_main, u"SELECT i.Code FROM #BulkItems i INNER JOIN BulkImportGoods"_s + entry +
                                       u" AND j.GoodCode = i.Code WHERE j.IsNew = 1 AND NOT EXISTS (SELECT 1 FROM "
                                       "GoodInf g WHERE g.Code = i.Code)"_s);
         !goods.Eof(); goods.Next()) {
        gone += QString::number(goods.Int(0));
    }
    return gone.isEmpty() ? items : items + m_scales.TakeGoodsOffScale(gone.join(u','));
}

} // namespace goods
