// Loads the module as any program could, chooses a good and detail values by keys, and checks what comes back.

#include "entry/exports.h"
#include "tests/outside_host/scripted_driver.h"
#include "tests/support/test_host.h"

#include <QApplication>
#include <QLibrary>
#include <QSqlDatabase>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QList<ScriptedAnswer> Shop()
{
    return {
        {u"GoodInf_List_SP"_s,
         {u"Code"_s, u"Name"_s, u"AbbName"_s},
         {{11, u"قند شکسته"_s, u"!6260000000011!"_s}, {12, u"شکر سفید"_s, u"!6260000000028!"_s}}},
        {u"GoodGrpS"_s, {u"Code"_s, u"Name"_s, u"Comment"_s}, {{0, u"کليه کالاها"_s, QString()}}},
        {u"GoodInf AS g LEFT"_s,
         {u"Name"_s, u"Unit"_s, u"Unit2"_s, u"Formool"_s, u"UnitName"_s, u"Unit2Name"_s},
         {{u"سنگ"_s, 1, 0, 0, u"متر مربع"_s, QString()}}},
        {u"FROM Stores"_s, {u"Name"_s}, {{u"انبار"_s}}},
        {u"AS Chosen"_s,
         {u"Chosen"_s, u"Amount1_Exit"_s, u"Amount2_Exit"_s, u"TotalAmount_Exit"_s, u"Length_Exit"_s, u"Width_Exit"_s,
          u"Amount3_Exit"_s},
         {{1, u"24"_s, u"0"_s, u"24.125"_s, u"3"_s, u"2"_s, u"4"_s}}},
        {u"GoodDetailKardexExit_Temp"_s, {u"ID"_s, u"DetailTitle1"_s, u"Selected"_s}, {{1, u"سفید"_s, true}}},
        {u"GoodInf AS G"_s,
         {u"Code"_s, u"Name"_s, u"Unit1"_s, u"Unit2"_s, u"Radif"_s},
         {{11, u"سنگ"_s, u""_s, u""_s, 11}}},
        {u"GoodDetail_Select"_s,
         {u"DetailValueID"_s, u"StoreCode"_s, u"StoreName"_s, u"GoodCode"_s, u"Amount1"_s, u"Amount2"_s, u"Length"_s,
          u"Width"_s, u"Amount3"_s},
         {{5, 4, u"انبار"_s, 11, u"24"_s, u"0"_s, u"3"_s, u"2"_s, u"4"_s}}},
        {u"AS T1"_s, {u"Code"_s}, {{7}}},
        {u"#Parts"_s,
         {u"OperationRow"_s, u"Amount1"_s, u"Amount2"_s, u"Length"_s, u"Width"_s, u"Amount3"_s, u"Waste"_s},
         {{1, u"6"_s, u"0"_s, u"3"_s, u"2"_s, u"1"_s, false}}},
        {u"#EnterGoodDetailKardex"_s,
         {u"ID"_s, u"DetailValueID"_s, u"DetailTitle1"_s, u"DetailTitle2"_s, u"DetailTitle3"_s, u"DetailTitle4"_s,
          u"DetailTitle5"_s, u"Amount1"_s, u"Amount2"_s, u"TotalAmount"_s, u"Length"_s, u"Width"_s, u"Amount3"_s,
          u"Mark"_s},
         {{1, 1, QString(), QString(), QString(), QString(), QString(), u"5.25"_s, 0, u"5.25"_s, 2, 3, 1, QString()},
          {2, 2, QString(), QString(), QString(), QString(), QString(), u"7.125"_s, 1, u"7.125"_s, 2, 4, 1,
           QString()}}},
    };
}

int Fail(const char *why)
{
    std::fprintf(stderr, "%s\n", why);
    return 1;
}

/// As soon as a modal list stands, the keys go into its grid.
void PressInList(QTimer &poll, const QList<Qt::Key> &keys, const QString &name = u"GoodListDB_GRD"_s)
{
    QObject::connect(&poll, &QTimer::timeout, &poll, [&poll, keys, name] {
        QWidget *list = QApplication::activeModalWidget();
        auto *grid = list ? list->findChild<QTableView *>(name) : nullptr;
        if (!grid || !list->isActiveWindow() || !grid->model() || grid->model()->rowCount() == 0)
            return;
        poll.stop();
        grid->setFocus();
        for (const Qt::Key key : keys)
            QTest::keyClick(QApplication::focusWidget(), key);
    });
    poll.start(20);
}

/// What goes out of a line: OK gives the quantities in their places, leaving gives none. What is chosen for another
/// screen comes as a text.
bool DetailsWork(QLibrary &module)
{
    const auto exits = reinterpret_cast<decltype(&::Open_Exit_GoodDetail)>(module.resolve("Open_Exit_GoodDetail"));
    const auto nothing = reinterpret_cast<decltype(&::Open_GoodDetail)>(module.resolve("Open_GoodDetail"));
    const auto choose =
        reinterpret_cast<decltype(&::Select_GoodDetail_Multible)>(module.resolve("Select_GoodDetail_Multible"));
    if (!exits || !nothing || !choose)
        return false;
    long double to[7] = {-1, -1, -1, -1, -1, -1, -1};
    const auto given = [&to] {
        QStringList texts;
        for (const long double each : to)
            texts << QString::number(double(each));
        return texts.join(u' ');
    };
    const QString untouched = given();
    const auto open = [&](int mode, Qt::Key key) {
        QTimer poll;
        PressInList(poll, {key}, u"ExitSerialList_GRD"_s);
        return exits(mode, 2, 11, u"", 10, 9, 0, to, to + 1, to + 2, to + 3, to + 4, to + 5, to + 6, 5, 0, 1, 77, 4);
    };
    const bool left = open(4, Qt::Key_Escape) == 0 && given() == untouched;
    nothing(2, 2, 11, u"", 0, 0, 0, to, to, to, to, to, to, to, 0, 0, 0, 0, 0);
    const bool kept =
        given() == untouched && open(2, Qt::Key_F3) == 1 && given() == u"1 4 2 3 24.125 0 24"; // rows first
    QTimer poll;
    PressInList(poll, {Qt::Key_Return, Qt::Key_Return}, u"Goods_List_GRD"_s);
    const QString chosen = QString::fromUtf16(choose(u"", 1, 1, u"", 0));
    return left && kept && chosen == u"5;4;11;24.00;0.00;3.00;2.00;4.00;";
}

/// As soon as a modal screen stands it gets the key.
void PressOnScreen(QTimer &poll, Qt::Key key)
{
    QObject::connect(&poll, &QTimer::timeout, &poll, [&poll, key] {
        QWidget *screen = QApplication::activeModalWidget();
        if (!screen || !screen->isActiveWindow())
            return;
        poll.stop();
        QTest::keyClick(screen, key);
    });
    poll.start(20);
}

/// The list of divisions says why it does not open, or opens; one unit is divided at once, or left as it is.
bool DivisionsWork(QLibrary &module, test::TestHost &host)
{
    const auto list = reinterpret_cast<decltype(&::Open_GoodDetailDivision)>(module.resolve("Open_GoodDetailDivision"));
    const auto divide = reinterpret_cast<decltype(&::Open_GoodDetailDivision_DetailItems)>(
        module.resolve("Open_GoodDetailDivision_DetailItems"));
    if (!list || !divide)
        return false;
    host.settings.record.GoodDetails = false;
    list();
    const bool told = host.messages.TakeAll().size() == 1;
    host.settings.record.GoodDetails = true;
    host.settings.record.SquareMetreGoods = true;
    host.settings.record.SquareMetreUnit = 1;
    QTimer leaving;
    PressOnScreen(leaving, Qt::Key_Escape);
    list();
    host.detailDivisions.source = {5, 4, 11, {}, u"سفید"_s, {24, 0, 24, 3, 2, 4}};
    host.detailDivisions.parts = u"SELECT * FROM #Parts"_s;
    QStringList saved;
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_F3}) {
        QTimer poll;
        PressOnScreen(poll, key);
        saved << QString::number(divide(5, 4, 11, 24, 0, 3, 2, 4));
        saved << QString::number(host.detailDivisions.calls.count(u"Header(2)"_s));
    }
    std::printf("divisions: %s\n", qPrintable(saved.join(u' ')));
    return told && saved.join(u' ') == u"0 0 1 1";
}

/// Keeps the details of a line as they are; whether its quantities come back through the 29 arguments.
bool GetsQuantities(QLibrary &module)
{
    const auto enter = reinterpret_cast<decltype(&::Open_Enter_GoodDetail)>(module.resolve("Open_Enter_GoodDetail"));
    if (!enter)
        return false;
    QTimer poll;
    PressOnScreen(poll, Qt::Key_F3);
    long double to[7] = {};
    const int result = enter(3, 1, 11, 0, 0, 12.375L, u"", u"", 0, u"", 0, u"قند", 0, 0, 0, 0, 0, &to[6], &to[5],
                             &to[4], &to[3], &to[2], &to[1], &to[0], 5, 0, 1, 70, 1);
    const long double expected[7] = {12.375L, 1, 12.375L, 2, 0, 2, 2};
    std::printf("details: %d, %Lg, %Lg, %Lg, %Lg, %Lg, %Lg, %Lg\n", result, to[0], to[1], to[2], to[3], to[4], to[5],
                to[6]);
    return result == 1 && std::equal(std::begin(to), std::end(to), std::begin(expected));
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    if (argc != 2)
        return Fail("usage: outside_host MODULE");
    host::Connections connections;
    for (QSqlDatabase *each : {&connections.ADOConnection1, &connections.FDConnection1, &connections.DibalConnection}) {
        *each = QSqlDatabase::addDatabase(new ScriptedDriver(Shop()), QString::number(quintptr(each)));
        each->open();
    }
    test::TestHost host(connections);
    host.Install();

    QLibrary module(QString::fromLocal8Bit(argv[1]));
    const auto select = reinterpret_cast<decltype(&::Select_Good)>(module.resolve("Select_Good"));
    if (!select)
        return Fail(qPrintable(module.errorString()));
    QTimer poll;
    PressInList(poll, {Qt::Key_Return});
    // The list stands on the good that the caller names.
    const int located = select(u"12#LC#");
    QTimer again;
    PressInList(again, {Qt::Key_Home, Qt::Key_Up, Qt::Key_Return});
    const int first = select(u"#LC#");
    QTimer leaving;
    PressInList(leaving, {Qt::Key_Escape});
    const int none = select(u"12#LC#");
    const bool details = DetailsWork(module);
    const bool quantities = GetsQuantities(module);
    const bool divisions = DivisionsWork(module, host);
    module.unload();
    if (const QStringList said = host.messages.TakeAll(); !said.isEmpty())
        return Fail(qPrintable(said.join(u'\n')));
    std::printf("chosen: %d, %d, %d\n", located, first, none);
    if (!details)
        return Fail("the details of a line did not come back");
    if (!divisions)
        return Fail("the divisions did not open, or the unit was not divided");
    if (!quantities)
        return Fail("expected the quantities of the line");
    return located == 12 && first == 11 && none == 0 ? 0 : Fail("expected 12, 11, 0");
}
