// The prices of a change on the way to the scales.

#include "data/goods/bulk_journal.h"
#include "data/goods/bulk_ledger.h"
#include "data/goods/bulk_scope.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace goods {

namespace {

/// What the items of these codes are to show: rows of VALUES for goods of the change whose default sale level it was.
QStringList ItemRows(const QSqlDatabase &main, int change, const QString &column, const QStringList &codes)
{
    const QString level = column.section(u'_', -1);
    host::Query goods(main,
                      u"SELECT g.Code, g.Name, SUBSTRING(g.AbbName, 2, ABS(CHARINDEX('!', g.AbbName, 2) - 2)) AS "
                      "BarCode, CAST(u.[Type] AS int) AS [Type], c."_s +
                          column +
                          u" AS Price FROM BulkChangeGoods j INNER JOIN GoodInf g ON g.Code = j.GoodCode INNER JOIN "
                          "GoodCostDiscount c ON c.GoodCode = j.GoodCode LEFT JOIN Units u ON u.Code = g.Unit WHERE "
                          "j.ChangeID = "_s +
                          QString::number(change) + u" AND c.Default_CostLevel_Sell_Number = "_s + level +
                          u" AND j.GoodCode IN ("_s + codes.join(u',') + u')');
    QStringList rows;
    for (; !goods.Eof(); goods.Next()) {
        rows += u'(' +
                QStringList{goods.Text(u"Code"), host::NQuotedStr(goods.Text(u"Name")),
                            host::DecimalLiteral(goods.Number(u"Price")), host::NQuotedStr(goods.Text(u"BarCode")),
                            QString::number(goods.Int(u"Type"))}
                    .join(u',') +
                u')';
    }
    return rows;
}

} // namespace

int BulkJournal::BulkChange_SendToScales(int change)
{
    const QList<BulkField> fields = BulkLedger(m_main).FieldsOf(change);
    if (fields.size() != 1 || !fields.constFirst().name.startsWith("CostLevel_Sell_"_L1)) {
        return 0;
    }
    QStringList codes;
    for (host::Query items(m_scale, u"SELECT Code FROM Items WHERE ChangeType <> 3"_s); !items.Eof(); items.Next()) {
        codes += QString::number(items.Int(0));
    }
    int sent = 0;
    for (qsizetype first = 0; first < codes.size(); first += CodesOfBlock) {
        const QStringList rows = ItemRows(m_main, change, fields.constFirst().name, codes.mid(first, CodesOfBlock));
        if (!rows.isEmpty()) {
            sent += host::Exec(m_scale, u"UPDATE i SET i.Name1 = v.Name, i.Price = v.Price, i.BarCode = v.BarCode, "
                                        "i.[Type] = v.[Type], i.ChangeType = 2 FROM Items i INNER JOIN (VALUES "_s +
                                            rows.join(u',') +
                                            u") AS v (Code, Name, Price, BarCode, [Type]) ON v.Code = i.Code"_s);
        }
    }
    return sent;
}

} // namespace goods
