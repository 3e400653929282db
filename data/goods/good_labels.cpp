#include "data/goods/good_labels.h"

#include "host/data/query.h"

#include <QHash>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

constexpr int CodesAtOnce = 1000;
constexpr int Levels = 10;

QString TextOf(const QStringList &codes)
{
    QString costs;
    for (int level = 1; level <= Levels; ++level)
        costs += u",c.CostLevel_Sell_%1"_s.arg(level);
    return u"select g.Code,g.Name,g.AbbName,g.ConsumerPrice,c.GoodCode as Priced,c.Default_CostLevel_Sell_Number,"
           "s.Amount1"_s +
           costs +
           u" from GoodInf as g left join GoodCostDiscount as c on c.GoodCode=g.Code"
           " left join GoodStock as s on s.GoodCode=g.Code where g.Code in ("_s +
           codes.join(u',') + u')';
}

LabelGood GoodOf(const host::Query &row)
{
    LabelGood good{row.Int(u"Code"),      row.Text(u"Name"), row.Text(u"AbbName"), row.Number(u"ConsumerPrice"), 0, {},
                   row.Number(u"Amount1")};
    if (row.IsNull(u"Priced"))
        return good;
    good.defaultLevel = row.Int(u"Default_CostLevel_Sell_Number");
    for (int level = 1; level <= Levels; ++level)
        good.prices << row.Number(u"CostLevel_Sell_%1"_s.arg(level));
    return good;
}

} // namespace

QList<LabelGood> ReadLabelGoods(const QSqlDatabase &main, const QList<int> &codes)
{
    QHash<int, LabelGood> found;
    for (qsizetype first = 0; first < codes.size(); first += CodesAtOnce) {
        QStringList block;
        for (const int code : codes.mid(first, CodesAtOnce))
            block << QString::number(code);
        for (host::Query rows(main, TextOf(block)); !rows.Eof(); rows.Next())
            found.insert(rows.Int(u"Code"), GoodOf(rows));
    }
    QList<LabelGood> goods;
    for (const int code : codes)
        if (const auto good = found.constFind(code); good != found.cend())
            goods << *good;
    return goods;
}

} // namespace goods
