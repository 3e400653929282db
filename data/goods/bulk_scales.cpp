// The prices of a change on the way to the scales.

#include "data/goods/bulk_journal.h"
#include "data/goods/bulk_ledger.h"
#include "data/goods/bulk_scope.h"
#include "data/goods/good_scales.h"
#include "host/data/query.h"

using namespace Qt::StringLiterals;

namespace goods {

int BulkJournal::BulkChange_SendToScales(int change)
{
    const QList<BulkField> fields = BulkLedger(m_main).FieldsOf(change);
    if (fields.size() != 1 || !fields.constFirst().name.startsWith("CostLevel_Sell_"_L1)) {
        return 0;
    }
    const QString level = fields.constFirst().name.section(u'_', -1);
    BulkSteps steps({}, 1);
    TakeCodes(m_main, u"#BulkItems"_s, m_scales.CodesOnScale(), steps);
    QList<int> codes;
    for (host::Query goods(m_main, u"SELECT j.GoodCode FROM #BulkItems i INNER JOIN BulkChangeGoods j ON j.GoodCode = "
                                   "i.Code INNER JOIN GoodCostDiscount c ON c.GoodCode = j.GoodCode WHERE j.ChangeID "
                                   "= "_s +
                                       QString::number(change) + u" AND c.Default_CostLevel_Sell_Number = "_s + level);
         !goods.Eof(); goods.Next()) {
        codes += goods.Int(0);
    }
    return m_scales.SendChangesToScale(codes, level.toInt()).changed;
}

} // namespace goods
