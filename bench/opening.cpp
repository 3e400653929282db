#include "bench/opening.h"

#include "bench/floor.h"
#include "bench/report.h"
#include "bench/shop.h"
#include "data/goods/opening_copy.h"
#include "desk/opening/opening_report_data.h"
#include "host/data/query.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Stores = 3;

/// A good in all three stores, as a good editor and its list of rows open it.
void OpenOneGood(Report &report, Shop &shop)
{
    TGood_DM &data = shop.Data();
    const int good = data.CheckBarcodeCode(Shop::Barcode(shop.size() - 5));
    host::Exec(
        shop.Host().DM.ADOConnection1,
        u"delete from GoodFirstAsset where GoodCode=%1 insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,"
        "Radif) values(%1,1,0,4,1),(%1,2,0,5,2),(%1,3,0,6,3)"_s.arg(good));
    goods::OpeningCopy copy(data, shop.Host().entities);
    report.Measure(u"working copy and list of one good's opening rows"_s, 9, 50, [&] {
        copy.Begin(good);
        data.GoodFirstAsset_GetAll(copy.Key(), 1, 0, 0);
        copy.Totals();
    });
    if (data.FirstAssetList_QRY.RecordCount() != Stores)
        throw std::runtime_error("the opening rows are not listed");
    copy.End();
}

} // namespace

void MeasureOpening(Report &report, Shop &shop, const Floor &floor)
{
    const QSqlDatabase &main = shop.Host().DM.ADOConnection1;
    host::Exec(main, u"delete from GoodFirstAsset insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Radif) "
                     "select Code,1+Code%%1,0,12.5,1 from GoodInf"_s.arg(Stores));
    const char *const select =
        "SELECT a.ID, a.StoreCode, s.Name, a.GoodCode, g.Name, a.Amount1, u.Name, a.Amount2, v.Name, g.CostBgPrd, "
        "a.Comment FROM GoodFirstAsset a JOIN GoodInf g ON g.Code = a.GoodCode LEFT JOIN Stores s ON s.Code = "
        "a.StoreCode LEFT JOIN Units u ON u.Code = g.Unit LEFT JOIN Units v ON v.Code = g.Unit2 WHERE a.tmp = 0 ORDER "
        "BY a.StoreCode, a.GoodCode, a.Radif";
    desk::OpeningReportData data(main);
    report.Measure(u"opening stock list of all goods, first rows"_s, 3, 1000, [&] { data.Open(0); });
    report.Measure(
        u"opening stock list of all goods, every row"_s, 3, {},
        [&] {
            data.Open(0);
            data.Rows_QRY.FetchAll();
        },
        [&] { floor.Read(select); });
    if (data.Rows_QRY.RecordCount() != shop.Goods())
        throw std::runtime_error("the opening stock list has not all rows");
    report.Measure(u"opening stock list of one store, every row"_s, 3, {}, [&] {
        data.Open(2);
        data.Rows_QRY.FetchAll();
    });
    report.Measure(u"opening stock, rows and value of each store"_s, 3, 1000, [&] { data.Totals(); });
    OpenOneGood(report, shop);
}

} // namespace bench
