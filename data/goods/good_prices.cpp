#include "data/goods/good_prices.h"

#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

constexpr int Levels = 10;
constexpr int NewGood = 2;

using Side = Prices::Side;

constexpr std::array BothSides{Side::Sell, Side::Buy};

QString SideName(Side side)
{
    return side == Side::Sell ? u"Sell"_s : u"Buy"_s;
}

/// `tmpCostList.Status` of the side.
QString StatusOf(Side side)
{
    return QString::number(static_cast<int>(side));
}

/// One of the twenty rows of a good's working prices.
QString WorkingRow(Side side, int level, bool isNew)
{
    const QString status = StatusOf(side);
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

QString WorkingRowsOf(int goodCode, Side side)
{
    return u" from tmpCostList where Type=3 and Status="_s + StatusOf(side) + u" and TypeCode="_s +
           QString::number(goodCode);
}

} // namespace

Prices::Prices(const QSqlDatabase &main) : SellDetails_QRY(main), BuyDetails_QRY(main), m_main(main), Temp_QRY(main)
{
    for (const Side side : BothSides) {
        CostLevel_Rows(side).SetTable(u"tmpCostList"_s, u"Id"_s);
        CostLevel_Rows(side).SetOrder(u"CostLevelCode"_s); // the working rows are told in no order
        CostLevel_Rows(side).SetEditableFields({u"Cost"_s});
    }
}

QString Prices::CostLevel_GetTitle(int code)
{
    Temp_QRY.Open(u"select Name from CostLevel where Code="_s + QString::number(code));
    return Temp_QRY.IsEmpty() ? QString() : Temp_QRY.Text(u"Name");
}

void Prices::CostLevel_Prepare(int goodCode, int kind)
{
    QStringList rows;
    for (const Side side : BothSides) {
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

void Prices::CostLevel_DeleteTemp(int goodCode)
{
    host::Run(m_main, u"delete from tmpCostList where Type=3 and TypeCode="_s + QString::number(goodCode));
}

void Prices::CostLevel_ChangeCode(int newCode, int oldCode)
{
    host::Run(m_main, u"Update tmpCostList set TypeCode="_s + QString::number(newCode) +
                          u" where Type=3 and TypeCode="_s + QString::number(oldCode));
}

void Prices::CostLevel_GetAll(Side side, int goodCode)
{
    CostLevel_Rows(side).Open(
        u" select tli.*,Name,case [default] when 1 then '*' end as deftitle  from costlevel as cl , tmpCostlist as "
        "tli  where cl.CostType = 1 AND tli.costlevelcode=cl.code and Type=3 and Typecode="_s +
        QString::number(goodCode) + u" and status="_s + StatusOf(side) + u' ');
    std::optional<Shown> &prepared = m_prepared[static_cast<size_t>(side)];
    if (!prepared) {
        prepared = ShownPrices(side);
    }
}

Prices::Shown Prices::ShownPrices(Side side) const
{
    const host::Dataset &dataset = CostLevel_Rows(side);
    Shown shown;
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

void Prices::CostLevel_View(Side side, int goodCode)
{
    const QString name = SideName(side);
    QString costs;
    for (int level = 1; level <= Levels; ++level) {
        const QString number = QString::number(level);
        costs += u" when "_s + number + u" then CostLevel_"_s + name + u'_' + number;
    }
    CostLevel_Rows(side).Open(
        u"select cl.Code as CostLevelCode,Name,case cl.Code"_s + costs +
        u" end as Cost,case cl.Code when Default_CostLevel_"_s + name +
        u"_Number then '*' end as deftitle from CostLevel as cl,GoodCostDiscount where cl.CostType=1 and "
        "GoodCode="_s +
        QString::number(goodCode) + u" order by cl.Code"_s);
}

void Prices::CostLevel_Update(Side side, int goodCode, int level)
{
    const QString good = QString::number(goodCode);
    const QString status = StatusOf(side);
    host::Transaction transaction(m_main);
    host::Run(m_main, u"Update tmpCostList set [Default]=0 where Status="_s + status +
                          u" and Type=3 and [Default]=1 and TypeCode="_s + good);
    host::Run(m_main, u"Update tmpCostList set [Default]=1 where Status="_s + status + u" and Type=3 and TypeCode="_s +
                          good + u" and CostLevelCode="_s + QString::number(level));
    transaction.Commit();
}

int Prices::CostLevel_Fill(Side side, QList<host::Entity> &list, int goodCode)
{
    list.append({0, u"پيش فرض"_s});
    Temp_QRY.Open(u"Select Code,Name from CostLevel WHERE CostType = 1 "
                  " Order By Code"_s);
    for (; !Temp_QRY.Eof(); Temp_QRY.Next()) {
        list.append({Temp_QRY.Int(u"Code"), Temp_QRY.Text(u"Name")});
    }
    if (goodCode == 0) {
        return 0; // of no good
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

bool Prices::CostLevel_NotSelect(Side side, int level) const
{
    const host::Dataset &prices = CostLevel_Rows(side);
    for (int row = 0; row < prices.RecordCount(); ++row) {
        if (prices.FieldAt(row, u"CostLevelCode").toInt() == level &&
            host::QuantityFromText(prices.FieldAt(row, u"Cost").toString()) != 0) {
            return false;
        }
    }
    // A good without working prices cannot be given any now: its price row is made by this save.
    return !prices.IsEmpty();
}

bool Prices::CostLevel_Restore(Side side, int goodCode)
{
    const QString rowsOfSide = WorkingRowsOf(goodCode, side);
    const Shown prices = ShownPrices(side);
    QStringList shown;
    QStringList values;
    for (const auto &[level, cost] : prices.costs.asKeyValueRange()) {
        const QString row = QString::number(level) + u',' + cost + u',' + QString::number(level == prices.defaultLevel);
        shown += row;
        values += u"(3,"_s + StatusOf(side) + u',' + QString::number(goodCode) + u',' + row + u')';
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
    CostLevel_GetAll(side, goodCode);
    return true;
}

void Prices::CostLevel_Save(int goodCode)
{
    QStringList assignments;
    for (const Side side : BothSides) {
        const std::optional<Shown> &before = m_prepared[static_cast<size_t>(side)];
        if (!before) {
            continue;
        }
        const Shown now = ShownPrices(side);
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

int Prices::CostLevel_ChangedDefault(Side side) const
{
    const std::optional<Shown> &before = m_prepared[static_cast<size_t>(side)];
    if (!before) {
        return 0;
    }
    const Shown now = ShownPrices(side);
    const int level = now.defaultLevel;
    return level != before->defaultLevel || now.costs.value(level) != before->costs.value(level) ? level : 0;
}

host::Quantity Prices::GoodDefaultCost(int code)
{
    Temp_QRY.Open(u"exec GetDefaultCostLevel 0,"_s + QString::number(code) + u",0"_s);
    return Temp_QRY.IsEmpty() ? 0 : Temp_QRY.Number(u"cost");
}

} // namespace goods
