#include "bench/list_work.h"

#include "bench/report.h"
#include "bench/shop.h"
#include "data/goods/good_labels.h"
#include "data/goods/good_movements.h"
#include "desk/selected/selected_lists_data.h"
#include "host/data/query.h"
#include "screens/labels/label_output.h"
#include "screens/labels/label_rows.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

QList<int> Codes(Shop &shop, int most)
{
    QList<int> codes;
    for (host::Query rows(shop.Host().DM.ADOConnection1, u"select top %1 Code from GoodInf order by Code"_s.arg(most));
         !rows.Eof(); rows.Next())
        codes << rows.Int(0);
    return codes;
}

/// A good that moved as often as the shop has goods: the first block of its movements, and its totals.
void MoveOneGood(Report &report, Shop &shop)
{
    const QSqlDatabase &main = shop.Host().DM.ADOConnection1;
    const goods::MovementFilter filter{Codes(shop, 1).first(), {}, {}, 0};
    // Of a kind that no document has, so that they can be told apart and go again.
    host::Exec(main, u"insert into Kardex(Kala,Anbar,OperationType,OperationCode,[Date],Amount1) "
                     "select %1,1,250,Code,'1405/0' + cast(1 + Code % 9 as varchar(1)) + '/15',1 from GoodInf"_s.arg(
                         filter.GoodCode));
    goods::Movements movements(main);
    report.Measure(u"movements of a good, %1 rows: first block and totals"_s.arg(shop.size()), 3, 1000, [&] {
        movements.Movements_GetAll(filter);
        movements.Movements_GetTotals(filter);
    });
    report.Measure(u"the same movements, all rows"_s, 1, {}, [&] {
        movements.Movements_GetAll(filter);
        movements.Movements_QRY.FetchAll();
    });
    movements.Movements_QRY.Close();
    host::Exec(main, u"delete Kardex where OperationType=250"_s);
}

void PrintLabels(Report &report, Shop &shop)
{
    const QTemporaryDir folder;
    const QList<int> codes = Codes(shop, 1000);
    const QSqlDatabase &main = shop.Host().DM.ADOConnection1;
    const auto job = [&] {
        labels::LabelRows rows;
        rows.SetChoices({});
        rows.SetGoods(goods::ReadLabelGoods(main, codes));
        return rows.MakeJob();
    };
    report.Measure(u"1,000 labels made ready"_s, 3, 1000, [&] { job(); });
    report.Measure(u"1,000 labels written to a PDF file"_s, 1, 5000, [&] {
        const labels::Job all = job();
        labels::LabelOutput(all, u"labels"_s, nullptr).WritePdf(folder.filePath(u"labels.pdf"_s));
    });
}

void FillSelectedList(Report &report, Shop &shop)
{
    desk::SelectedListsData lists(shop.Host().DM.ADOConnection1);
    QStringList codes;
    for (const int code : Codes(shop, shop.size()))
        codes << QString::number(code);
    const int list = lists.Save({0, u"همه"_s, true, false});
    report.Measure(u"%1 marks into a selected list"_s.arg(codes.size()), 1, 5000, [&] {
        lists.RemoveAll(list);
        lists.Add(list, codes.join(u','));
    });
    lists.Delete(list);
}

} // namespace

void MeasureListWork(Report &report, Shop &shop)
{
    MoveOneGood(report, shop);
    PrintLabels(report, shop);
    FillSelectedList(report, shop);
    report.Measure(u"two detail types for all goods, told before it is done"_s, 3, 500, [&] {
        shop.Data().DetailTypes_Forecast({goods::ScopeKind::All, {}}, u"2,3"_s);
    });
}

} // namespace bench
