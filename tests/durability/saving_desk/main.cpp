// A desk that saves new goods as fast as it can, each with everything that can belong to one: prices, discounts, an
// opening row, a category, a detail type. With "prices", "discounts" or "types" behind the file it changes these of all
// goods instead, and takes every other change back. Prints a line once the first is saved.

#include "data/goods/good_dm.h"
#include "host/data/query.h"
#include "screens/good_editor/good_save.h"
#include "tests/support/test_host.h"
#include "tsql/qt/driver.h"

#include <QCoreApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QSqlDatabase Connect(const QString &file, const QString &name)
{
    QSqlDatabase connection = QSqlDatabase::addDatabase(new tsql::Driver, name);
    connection.setDatabaseName(file);
    if (!connection.open())
        qFatal("cannot open %s", qPrintable(file));
    return connection;
}

void SaveOne(host::Host &host, TGood_DM &data, int number)
{
    const int code = data.Good_GetNewCode(u"1"_s);
    data.CreateGoodDetailTempTable();
    data.InsertDefaultDetailTypesSelectedListInNewGood(QString::number(code));
    data.CostLevel_Prepare(code, 2);
    data.CostLevel_Sell_GetAll(code);
    data.CostLevel_Sell_Update(code, 3);
    data.CostLevel_Sell_GetAll(code);
    data.InsertUpdateToKalaCategory(code, 1, 1);

    GoodSave::Request request;
    request.isNew = true;
    request.rowTyped = true;
    request.rowStore = 1;
    request.good.Code = code;
    request.good.GrpCode = 1;
    request.good.kala_name = u"کالای %1"_s.arg(number);
    request.good.AbbName = u"!%1!"_s.arg(code);
    request.good.SMSCode = QString::number(code);
    request.good.Unit = 1;
    request.good.Store = 1;
    request.good.AvaBgPrd = code;
    request.good.CostBgPrd = 1000;
    request.good.Price.Discount_Sell[0] = 5;
    goods::OpeningCopy rows(data, host.entities);
    rows.Begin(0);
    OpeningDetails details(host);
    GoodSave(host, data, rows, details).Run(request);
}

goods::BulkResult Change(TGood_DM &data, const QString &what, int number, const goods::BulkOrder &order)
{
    const goods::GoodsScope all{goods::ScopeKind::All, {}};
    if (what == u"prices") {
        data.BulkPrices_Prepare(all, {goods::PriceKind::Sale, 1, 3, 1, 1, 0});
        return data.BulkPrices_Apply(order);
    }
    const int value = 2 + number % 3; // never the one that stands
    if (what == u"types")
        return data.AssetType_Apply(all, value, order);
    goods::GroupDiscount discount;
    discount.sellTicked[0] = discount.buyTicked[3] = true;
    discount.sell[0] = discount.buy[3] = value;
    return data.ApplyGroupDiscount(all, discount, order);
}

void ChangeAll(TGood_DM &data, const QString &what, int number)
{
    const goods::BulkOrder order{u"یک بیشتر"_s, u"u (1)"_s, u"1405/01/01"_s, u"10:00:00"_s, {}};
    const goods::BulkResult result = Change(data, what, number, order);
    if (number % 2 == 1 && result.change != 0)
        data.BulkChange_TakeBack(result.change, order);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QString file = application.arguments().value(1);
    host::Connections connections{Connect(file, u"main"_s), Connect(file, u"list"_s), Connect(file, u"scales"_s)};
    test::TestHost desk(connections);
    desk.settings.record.GoodDetails = true;
    host::Host &host = desk;
    TGood_DM data(host.DM, host.settings, host.entities);
    for (int number = 0;; ++number) {
        if (const QString what = application.arguments().value(2); !what.isEmpty())
            ChangeAll(data, what, number);
        else
            SaveOne(host, data, number);
        if (number == 0) {
            std::puts("saved");
            std::fflush(stdout);
        }
    }
}
