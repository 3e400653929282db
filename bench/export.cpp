#include "bench/export.h"

#include "bench/report.h"
#include "bench/shop.h"
#include "host/controls/grid.h"
#include "host/data/query.h"
#include "host/screens/grid_export.h"
#include "screens/goods_list/good_list.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

/// From a list that has just been opened, so that reading its rows counts.
void TakeOut(Report &report, Shop &shop, const QString &ending, std::optional<double> limit)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"goods."_s + ending);
    TGood_List_FRM list(shop.Host(), host::TFormMode::DockedList);
    if (!list.ShowDocked())
        throw std::runtime_error("the goods list did not open");
    auto *grid = list.findChild<host::Grid *>(u"GoodListDB_GRD"_s);
    const int goods = shop.Goods();
    const quint64 before = host::StatementsSent();
    Line line{u"list of %1 goods to %2"_s.arg(goods).arg(ending.toUpper()), 0, {}, limit, 0};
    line.milliseconds = Timed([&] { host::GridExport(*grid, u"کالاها"_s, u"1405/08/30"_s).Write(file, &list); });
    line.statements = static_cast<double>(host::StatementsSent() - before);
    if (grid->RowCount() != goods || QFileInfo(file).size() < qint64{20} * goods)
        throw std::runtime_error("the list was not written");
    report.Add(line);
    list.close();
}

} // namespace

void MeasureExport(Report &report, Shop &shop)
{
    TakeOut(report, shop, u"xlsx"_s, 5000);
    TakeOut(report, shop, u"csv"_s, 5000);
    TakeOut(report, shop, u"pdf"_s, {});
}

} // namespace bench
