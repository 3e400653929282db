// Measures what users wait for, on a shop of 100,000 goods, beside SQLite's C API doing the same work on the same file.
// See --help.

#include "bench/bulk.h"
#include "bench/details.h"
#include "bench/division.h"
#include "bench/engine.h"
#include "bench/floor.h"
#include "bench/import.h"
#include "bench/list_work.h"
#include "bench/network.h"
#include "bench/opening.h"
#include "bench/options.h"
#include "bench/report.h"
#include "bench/round_trips.h"
#include "bench/shop.h"
#include "host/controls/grid.h"
#include "host/data/query.h"
#include "host/look/theme.h"
#include "screens/good_editor/good_get.h"
#include "screens/good_editor/good_save.h"
#include "screens/goods_list/good_list.h"

#include <QTest>
#include <QtWidgets>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

using bench::Floor;
using bench::Report;
using bench::Shop;

namespace {

constexpr int Batch = 1000;

/// The columns that the list's procedure gives, as SQLite has them.
const char *const ListSelect =
    "SELECT g.Code, g.AbbName, g.Name, g.kala_name, g.kala_type, g.kala_index, ifnull(s.Amount2, x'80'),"
    " ifnull(s.Amount1, x'80'), CASE WHEN g.Meghdar_Formool > x'80' THEN s.Amount1 END, u1.Name, u2.Name,"
    " p.CostLevel_Sell_1, p.CostLevel_Sell_2, p.CostLevel_Sell_3, p.CostLevel_Sell_4, NULL, NULL, NULL,"
    " g.ConsumerPrice, g.Position, g.MinAva, g.CostBgPrd, g.SMSCode, g.AvaBgPrd, g.Comment, g.UserCreated,"
    " g.UserModified, g.CreatedDate || ' ' || g.CreatedTime, g.ModifiedDate || ' ' || g.ModifiedTime, g.tags,"
    " g.GrpCode, g.Meghdar_Formool"
    " FROM GoodInf g LEFT JOIN GoodCostDiscount p ON p.GoodCode = g.Code"
    " LEFT JOIN GoodStock s ON s.GoodCode = g.Code"
    " LEFT JOIN Units u1 ON u1.Code = g.Unit LEFT JOIN Units u2 ON u2.Code = g.Unit2"
    " ORDER BY g.Code";

const QString ListStatement =
    u"Exec GoodInf_List_SP @GrpCode = NULL,@ManageType = 1,@UserCode = 1,"
    "@RequestedCol='Code,Name,ConsumerPrice,Mogodi,Mogodi2,UnitName1,UnitName2,Cost1,Cost2,Cost3,Cost4,tags'"_s;

void Load(Report &report, Shop &shop, const Floor &scratch)
{
    const int added = shop.size() - shop.Goods();
    const quint64 before = host::StatementsSent();
    bench::Line line{u"load %1 goods"_s.arg(added), 0, {}, 60000, 0};
    line.milliseconds = bench::Timed([&] { shop.Grow(Batch); });
    line.statements = static_cast<double>(host::StatementsSent() - before);
    line.floor = bench::Timed([&] { scratch.InsertGoods(added, Batch); });
    report.Add(line);
    shop.Data().UpdateMogodiKala(255);
}

void ReadRows(Report &report, Shop &shop, const Floor &floor)
{
    const QByteArray block = QByteArray(ListSelect) + " LIMIT 1000";
    host::Dataset rows(shop.Host().DM.FDConnection1);
    rows.SetBlockSize(1000);
    report.Measure(
        u"list statement, first 1000 rows"_s, 9, 150, [&] { rows.Open(ListStatement); },
        [&] { floor.Read(block.constData()); });
    report.Measure(
        u"list statement, all rows"_s, 3, {},
        [&] {
            rows.Open(ListStatement);
            rows.FetchAll();
        },
        [&] { floor.Read(ListSelect); });
}

/// What follows a change of the last good: the list runs again and stands on it.
void RenewList(Report &report, TGood_List_FRM &list, const QString &how)
{
    auto *grid = list.findChild<host::Grid *>(u"GoodListDB_GRD"_s);
    auto *rows = list.findChild<host::TVelakSearchManager *>(u"VelakSearchManager1"_s);
    grid->StandOn(grid->RowCount() - 1);
    const QString last = grid->CurrentKey();
    bool renewed = false;
    double longest = 0;
    const auto connection = QObject::connect(rows, &host::TVelakSearchManager::Executed, grid, [&] { renewed = true; });
    report.Measure(u"goods list, run again at the last good, painted"_s + how, 3, {}, [&] {
        rows->RunBehind();
        QCoreApplication::processEvents();
        grid->viewport()->grab();
    });
    report.Measure(u"goods list, run again until all is new"_s + how, 3, {}, [&] {
        renewed = false;
        rows->RunBehind();
        while (!renewed)
            longest =
                std::max(longest, bench::Timed([] {
                             QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 1);
                         }));
        grid->viewport()->grab();
    });
    QObject::disconnect(connection);
    report.Add({u"goods list, longest pause meanwhile"_s + how, longest, {}, {}, 0});
    if (grid->CurrentKey() != last)
        throw std::runtime_error("the goods list lost its place");
}

/// A list in an order of the user's: how long the order takes, and the list when it runs again.
void OrderList(Report &report, TGood_List_FRM &list)
{
    auto *grid = list.findChild<host::Grid *>(u"GoodListDB_GRD"_s);
    auto *stock = list.findChild<QTabBar *>(u"Search_TBC"_s);
    const auto show = [&] {
        do
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 1);
        while (grid->IsEmpty());
        grid->viewport()->grab();
    };
    const auto otherTab = [&] {
        stock->setCurrentIndex(stock->currentIndex() == 1 ? 2 : 1);
        show();
    };
    const auto complete = [&] {
        while (!grid->IsComplete())
            QTest::qWait(1);
    };
    for (const QString &field : {u"Cost1"_s, u"Name"_s}) {
        complete();
        report.Measure(u"goods list, ordered by "_s + field, 3, {}, [&] {
            grid->SortBy(field);
            grid->viewport()->grab();
        });
        report.Measure(u"goods list, another stock tab while ordered by "_s + field, 3, {}, otherTab);
        RenewList(report, list, u" while ordered by "_s + field);
    }
    grid->SortBy({});
    otherTab();
    complete();
    RenewList(report, list, {});
}

void UseList(Report &report, Shop &shop, const Floor &floor)
{
    const QByteArray block = QByteArray(ListSelect) + " LIMIT 1000";
    TGood_List_FRM list(shop.Host(), host::TFormMode::DockedList);
    report.Measure(
        u"goods list, command to first rows painted"_s, 9, 150,
        [&] {
            list.done(QDialog::Rejected);
            if (!list.ShowDocked())
                throw std::runtime_error("the goods list did not open");
            QCoreApplication::processEvents();
            list.grab();
        },
        [&] { floor.Read(block.constData()); });

    auto *grid = list.findChild<QTableView *>(u"GoodListDB_GRD"_s);
    double longest = 0;
    while (grid->model()->rowCount() < shop.size()) {
        const int rows = grid->model()->rowCount();
        longest = std::max(longest, bench::Timed([] { QCoreApplication::processEvents(); }));
        if (grid->model()->rowCount() == rows)
            QTest::qWait(1);
    }
    report.Add({u"goods list, longest pause while the rest arrives"_s, longest, {}, 50, 0});
    report.Measure(u"goods list, to the last row and back (painted)"_s, 5, 150, [&] {
        grid->scrollToBottom();
        grid->viewport()->grab();
        grid->scrollToTop();
        grid->viewport()->grab();
    });

    auto *edit = list.findChild<QLineEdit *>(u"Text_EDT"_s);
    list.activateWindow();
    edit->setFocus();
    const QString typed = u"شامپو مدل 99"_s;
    double slowest = 0;
    const quint64 before = host::StatementsSent();
    for (const QChar letter : typed) {
        slowest = std::max(slowest, bench::Timed([&] {
                               QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
                               QCoreApplication::sendEvent(edit, &press);
                               QCoreApplication::processEvents();
                               grid->viewport()->grab();
                           }));
    }
    report.Add({u"search in the goods list, slowest of %1 keystrokes"_s.arg(typed.size()),
                slowest,
                {},
                50,
                static_cast<double>(host::StatementsSent() - before) / static_cast<double>(typed.size())});
    QMetaObject::invokeMethod(edit, "clear");
    OrderList(report, list);
    list.close();
}

void LookUp(Report &report, Shop &shop, const Floor &floor)
{
    const QString barcode = Shop::Barcode(shop.size() - 5);
    const QByteArray select = "SELECT Code FROM GoodInf WHERE AbbName LIKE '%!" + barcode.toUtf8() + "!%'";
    TGood_DM &data = shop.Data();
    report.Measure(
        u"Good_ExistBarCode, found at the end"_s, 9, 15, [&] { data.Good_ExistBarCode(1, barcode); },
        [&] { floor.Read(select.constData()); });
    report.Measure(
        u"CheckBarcodeCode, not found"_s, 9, 15, [&] { data.CheckBarcodeCode(u"9999999999994"_s); },
        [&] { floor.Read("SELECT Code FROM GoodInf WHERE AbbName LIKE '%!9999999999994!%'"); });
    report.Measure(u"Good_ExistName"_s, 9, {}, [&] { data.Good_ExistName(1, u"چای سبز دو غزال"_s); });
    report.Measure(u"Good_GetNewCode"_s, 9, {}, [&] { data.Good_GetNewCode(u"11"_s); });
    report.Measure(u"Good_GetNewCode_GrpCode"_s, 9, {}, [&] { data.Good_GetNewCode_GrpCode(u"11"_s, u"6"_s); });
}

void UseEditor(Report &report, Shop &shop)
{
    const int code = shop.Data().CheckBarcodeCode(Shop::Barcode(shop.size() - 5));
    const QString good = QString::number(code);
    const QSqlDatabase &main = shop.Host().DM.ADOConnection1;
    QStringList prices;
    for (const QString &side : {u"Sell"_s, u"Buy"_s})
        for (int level = 1; level <= 10; ++level)
            prices << u"CostLevel_%1_%2=%3.25"_s.arg(side).arg(level).arg(1000 * level);
    host::Exec(main, u"update GoodCostDiscount set %1 where GoodCode=%2"_s.arg(prices.join(u','), good));

    TGood_Get_FRM editor(shop.Host());
    const auto open = [&] {
        if (!editor.OpenRecord(code, host::TFormMode::Edit))
            throw std::runtime_error("the editor did not open");
    };
    report.Measure(u"open a good in the editor"_s, 5, {}, open);

    auto *weight = editor.findChild<QLineEdit *>(u"Weight_EDT"_s);
    int saves = 0;
    report.Measure(u"open and save a good with all prices"_s, 9, {}, [&] {
        open();
        weight->setText(QString::number(++saves));
        editor.Save();
    });
    const QVariant saved = host::Scalar(main, u"select Weight from GoodInf where Code="_s + good);
    const QVariant last = host::Scalar(main, u"select CostLevel_Buy_10 from GoodCostDiscount where GoodCode="_s + good);
    if (saved.toInt() != saves || last.toDouble() != 10000.25)
        throw std::runtime_error("the editor did not save");
}

void Edit(Report &report, Shop &shop, const Floor &scratch)
{
    TGood_DM &data = shop.Data();
    int number = shop.size();
    goods::OpeningCopy rows(data, shop.Host().entities);
    OpeningDetails details(shop.Host());
    report.Measure(
        u"save a new good with prices and opening stock"_s, 9, {},
        [&] {
            GoodSave::Request request;
            request.isNew = true;
            const int code = data.Good_GetNewCode_GrpCode(u"11"_s, u"6"_s);
            request.good = Shop::Good(code, ++number);
            request.good.AvaBgPrd = 10;
            request.good.CostBgPrd = 1000;
            request.rowTyped = true;
            request.rowStore = 1;
            rows.Begin(0);
            data.CostLevel_Prepare(code, 2);
            data.CreateGoodDetailTempTable();
            GoodSave(shop.Host(), data, rows, details).Run(request);
        },
        [&] {
            scratch.Run("BEGIN IMMEDIATE");
            scratch.Run("INSERT INTO d (GoodCode, a) SELECT max(GoodCode) + 1, 0 FROM d");
            scratch.Run("INSERT INTO g (Code, Name) SELECT max(Code) + 1, 'x' FROM g");
            scratch.Run("COMMIT");
        });

    UseEditor(report, shop);
}

/// A good that was added, not one of the demo shop's.
int SomeGood(Shop &shop)
{
    return shop.Data().CheckBarcodeCode(Shop::Barcode(shop.size() - 5));
}

std::vector<bench::RoundTrips> MeasureShop(Report &report, int goods)
{
    Shop shop(goods);
    const QTemporaryDir folder;
    const Floor scratch(folder.filePath(u"floor.db"_s));
    Load(report, shop, scratch);
    const Floor floor(shop.File());
    ReadRows(report, shop, floor);
    LookUp(report, shop, floor);
    UseList(report, shop, floor);
    Edit(report, shop, scratch);
    bench::MeasureListWork(report, shop);
    bench::MeasureBulk(report, shop);
    bench::MeasureDetails(report, shop);
    bench::MeasureDivision(report, shop);
    auto trips = bench::WatchRoundTrips(shop, SomeGood(shop));
    bench::MeasureOpening(report, shop, floor);
    return trips;
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" GOODS_SCREEN);
    QApplication application(argc, argv);
    bench::Options options;
    try {
        options = bench::ReadOptions(application.arguments());
    } catch (const std::invalid_argument &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
    if (options.help) {
        std::fputs(qPrintable(bench::HelpText()), stdout);
        return 0;
    }
    application.setLayoutDirection(Qt::RightToLeft);
    // What was measured stands in the file of a run that ends early.
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    // Nobody is there to answer a message: it says what went wrong, and ends the run.
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &application, [] {
        if (const auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            std::fprintf(stderr, "%s\n", qPrintable(box->text()));
            std::_Exit(2);
        }
    });
    watch.start(1000);
    try {
        if (options.network || !options.connection.isEmpty())
            return bench::MeasureNetwork(options) ? 0 : 1;
        Report report(options.goods <= bench::Options::UsualGoods);
        std::vector<bench::RoundTrips> trips;
        if (!options.engineOnly && !options.importOnly)
            trips = MeasureShop(report, options.goods);
        if (!options.engineOnly)
            bench::MeasureImport(report, options.goods);
        if (!options.importOnly)
            bench::MeasureEngine(report);
        report.Print();
        const bool few = trips.empty() || bench::PrintRoundTrips(trips, options.statements);
        return report.WithinLimits() && few ? 0 : 1;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
}
