#include "data/goods/good_dm.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int Levels = 10;
constexpr int NewGood = 2;

QString SideName(int side)
{
    return side == 0 ? u"Sell"_s : u"Buy"_s;
}

/// One of the twenty rows of a good's working prices.
QString WorkingRow(int side, int level, bool isNew)
{
    const QString status = QString::number(side);
    const QString number = QString::number(level);
    if (isNew) {
        return u" select 3 as Type,"_s + status + u" as Status,@GoodCode as GoodCode,"_s + number +
               u" as CostLevelCode,0 as Cost,0 as Def "_s;
    }
    const QString name = SideName(side);
    return u" select 3 as Type,"_s + status + u" as Status,@GoodCode as GoodCode,"_s + number +
           u" as CostLevelCode,CostLevel_"_s + name + u'_' + number + u" as Cost,Case Default_CostLevel_"_s + name +
           u"_Number when "_s + number +
           u" then 1 else 0 end as Def  from GoodCostDiscount where GoodCode=@GoodCode "_s;
}

QString WorkingRowsOf(int goodCode, int side)
{
    return u" from tmpCostList where Type=3 and Status="_s + QString::number(side) + u" and TypeCode="_s +
           QString::number(goodCode);
}

bool LacksPrice(const host::Dataset &prices, int level)
{
    for (int row = 0; row < prices.RecordCount(); ++row) {
        if (prices.FieldAt(row, u"CostLevelCode").toInt() == level &&
            host::QuantityFromText(prices.FieldAt(row, u"Cost").toString()) != 0) {
            return false;
        }
    }
    // A good without working prices cannot be given any now: its price row is made by this save.
    return !prices.IsEmpty();
}

} // namespace

QString TGood_DM::CostLevel_GetTitle(int code)
{
    Temp_QRY.Open(u"select Name from CostLevel where Code="_s + QString::number(code));
    return Temp_QRY.IsEmpty() ? QString() : Temp_QRY.Text(u"Name");
}

void TGood_DM::CostLevel_Prepare(int goodCode, int kind)
{
    QStringList rows;
    for (const int side : {Sell, Buy}) {
        for (int level = 1; level <= Levels; ++level) {
            rows += WorkingRow(side, level, kind == NewGood);
        }
    }
    host::Transaction transaction(m_main);
    CostLevel_DeleteTemp(goodCode);
    host::Run(m_main, u" declare @GoodCode int  select @GoodCode = "_s + QString::number(goodCode) +
                          u" INSERT INTO tmpCostlist(type,status,typecode,costlevelcode,cost,[default]) "_s +
                          rows.join(" union all "_L1));
    transaction.Commit();
    m_prepared = {};
}

void TGood_DM::CostLevel_DeleteTemp(int goodCode)
{
    host::Run(m_main, u"delete from tmpCostList where Type=3 and TypeCode="_s + QString::number(goodCode));
}

void TGood_DM::CostLevel_Sell_GetAll(int goodCode)
{
    OpenCostLevels(SellDetails_QRY, goodCode, Sell);
}

void TGood_DM::CostLevel_Buy_GetAll(int goodCode)
{
    OpenCostLevels(BuyDetails_QRY, goodCode, Buy);
}

void TGood_DM::OpenCostLevels(host::Dataset &dataset, int goodCode, Side side)
{
    dataset.Open(
        u" select tli.*,Name,case [default] when 1 then '*' end as deftitle  from costlevel as cl , tmpCostlist as "
        "tli  where cl.CostType = 1 AND tli.costlevelcode=cl.code and Type=3 and Typecode="_s +
        QString::number(goodCode) + u" and status="_s + QString::number(side) + u' ');
    if (!m_prepared[side]) {
        m_prepared[side] = ShownCostLevels(dataset);
    }
}

TGood_DM::CostLevels TGood_DM::ShownCostLevels(const host::Dataset &dataset)
{
    CostLevels shown;
    for (int row = 0; row < dataset.RecordCount(); ++row) {
        const int level = dataset.FieldAt(row, u"CostLevelCode").toInt();
        shown.costs[level] =
            host::TrimDecimal(host::DecimalLiteral(QStringView(dataset.FieldAt(row, u"Cost").toString())));
        if (dataset.FieldAt(row, u"Default").toBool()) {
            shown.defaultLevel = level;
        }
    }
    return shown;
}

void TGood_DM::CostLevel_Sell_View(int goodCode)
{
    ViewCostLevels(SellDetails_QRY, goodCode, Sell);
}

void TGood_DM::CostLevel_Buy_View(int goodCode)
{
    ViewCostLevels(BuyDetails_QRY, goodCode, Buy);
}

void TGood_DM::ViewCostLevels(host::Dataset &dataset, int goodCode, Side side)
{
    const QString name = SideName(side);
    QString costs;
    for (int level = 1; level <= Levels; ++level) {
        const QString number = QString::number(level);
        costs += u" when "_s + number + u" then CostLevel_"_s + name + u'_' + number;
    }
    dataset.Open(u"select cl.Code as CostLevelCode,Name,case cl.Code"_s + costs +
                 u" end as Cost,case cl.Code when Default_CostLevel_"_s + name +
                 u"_Number then '*' end as deftitle from CostLevel as cl,GoodCostDiscount where cl.CostType=1 and "
                 "GoodCode="_s +
                 QString::number(goodCode) + u" order by cl.Code"_s);
}

void TGood_DM::CostLevel_Sell_Update(int goodCode, int level)
{
    SetDefaultCostLevel(goodCode, level, Sell);
}

void TGood_DM::CostLevel_Buy_Update(int goodCode, int level)
{
    SetDefaultCostLevel(goodCode, level, Buy);
}

void TGood_DM::SetDefaultCostLevel(int goodCode, int level, Side side)
{
    const QString good = QString::number(goodCode);
    const QString status = QString::number(side);
    host::Transaction transaction(m_main);
    host::Run(m_main, u"Update tmpCostList set [Default]=0 where Status="_s + status +
                          u" and Type=3 and [Default]=1 and TypeCode="_s + good);
    host::Run(m_main, u"Update tmpCostList set [Default]=1 where Status="_s + status + u" and Type=3 and TypeCode="_s +
                          good + u" and CostLevelCode="_s + QString::number(level));
    transaction.Commit();
}

int TGood_DM::CostLevel_Sell_Fill(QList<host::Entity> &list, int goodCode)
{
    return FillCostLevels(list, goodCode, Sell);
}

int TGood_DM::CostLevel_Buy_Fill(QList<host::Entity> &list, int goodCode)
{
    return FillCostLevels(list, goodCode, Buy);
}

int TGood_DM::FillCostLevels(QList<host::Entity> &list, int goodCode, Side side)
{
    list.append({0, u"پيش فرض"_s});
    Temp_QRY.Open(u"Select Code,Name from CostLevel WHERE CostType = 1 "
                  " Order By Code"_s);
    for (; !Temp_QRY.Eof(); Temp_QRY.Next()) {
        list.append({Temp_QRY.Int(u"Code"), Temp_QRY.Text(u"Name")});
    }
    Temp_QRY.Open(u" select Code,Name as Title  from CostLevel where CostType=1 "
                  " and Code=(Select Default_CostLevel_"_s +
                  SideName(side) + u"_Number from GoodCostDiscount where GoodCode="_s + QString::number(goodCode) +
                  u')');
    if (Temp_QRY.IsEmpty()) {
        return 0;
    }
    const QString title = Temp_QRY.Text(u"Title");
    const auto chosen =
        std::find_if(list.cbegin(), list.cend(), [&title](const host::Entity &level) { return level.Name == title; });
    return chosen == list.cend() ? 0 : static_cast<int>(chosen - list.cbegin());
}

bool TGood_DM::CostLevel_Sell_NotSelect(int level) const
{
    return LacksPrice(SellDetails_QRY, level);
}

bool TGood_DM::CostLevel_Buy_NotSelect(int level) const
{
    return LacksPrice(BuyDetails_QRY, level);
}

bool TGood_DM::CostLevel_Sell_Restore(int goodCode)
{
    return RestoreCostLevels(SellDetails_QRY, goodCode, Sell);
}

bool TGood_DM::CostLevel_Buy_Restore(int goodCode)
{
    return RestoreCostLevels(BuyDetails_QRY, goodCode, Buy);
}

bool TGood_DM::RestoreCostLevels(host::Dataset &dataset, int goodCode, Side side)
{
    const QString rowsOfSide = WorkingRowsOf(goodCode, side);
    const CostLevels prices = ShownCostLevels(dataset);
    QStringList shown;
    QStringList values;
    for (const auto &[level, cost] : prices.costs.asKeyValueRange()) {
        const QString row = QString::number(level) + u',' + cost + u',' + QString::number(level == prices.defaultLevel);
        shown += row;
        values += u"(3,"_s + QString::number(side) + u',' + QString::number(goodCode) + u',' + row + u')';
    }
    QStringList held;
    for (Temp_QRY.Open(u"select CostLevelCode,Cost,[Default]"_s + rowsOfSide); !Temp_QRY.Eof(); Temp_QRY.Next()) {
        held += Temp_QRY.Text(u"CostLevelCode") + u',' + host::TrimDecimal(Temp_QRY.Text(u"Cost")) + u',' +
                QString::number(int(Temp_QRY.Bool(u"Default")));
    }
    shown.sort();
    held.sort();
    if (shown.isEmpty() || shown == held) {
        return false;
    }
    host::Transaction transaction(m_main);
    host::Exec(m_main, u"delete"_s + rowsOfSide);
    host::Exec(m_main, u"insert into tmpCostList([Type],Status,TypeCode,CostLevelCode,Cost,[Default]) values "_s +
                           values.join(u','));
    transaction.Commit();
    OpenCostLevels(dataset, goodCode, side);
    return true;
}

void TGood_DM::CostLevel_Save(int goodCode)
{
    QStringList assignments;
    for (const Side side : {Sell, Buy}) {
        const std::optional<CostLevels> &before = m_prepared[side];
        if (!before) {
            continue;
        }
        const CostLevels now = ShownCostLevels(side == Sell ? SellDetails_QRY : BuyDetails_QRY);
        const bool otherDefault = now.defaultLevel != before->defaultLevel;
        for (const auto &[level, cost] : now.costs.asKeyValueRange()) {
            // A default level goes with its price: without one it could not be the default.
            if (cost != before->costs.value(level) || (otherDefault && level == now.defaultLevel)) {
                assignments += u"CostLevel_"_s + SideName(side) + u'_' + QString::number(level) + u'=' + cost;
            }
        }
        if (otherDefault) {
            assignments += u"Default_CostLevel_"_s + SideName(side) + u"_Number="_s + QString::number(now.defaultLevel);
        }
    }
    if (!assignments.isEmpty()) {
        host::Run(m_main, u"Update GoodCostDiscount set "_s + assignments.join(u',') + u" where GoodCode="_s +
                              QString::number(goodCode));
    }
}
