// Loads the module as any program could, chooses a good by keys, and checks the code that comes back.

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
        {u"LEFT JOIN Units"_s,
         {u"Name"_s, u"Unit"_s, u"Unit2"_s, u"Formool"_s, u"UnitName"_s, u"Unit2Name"_s},
         {{u"قند"_s, 1, 0, 0, u"کیلو"_s, QString()}}},
        {u"FROM Stores"_s, {u"Name"_s}, {{u"مرکزی"_s}}},
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
void PressInList(QTimer &poll, const QList<Qt::Key> &keys)
{
    QObject::connect(&poll, &QTimer::timeout, &poll, [&poll, keys] {
        QWidget *list = QApplication::activeModalWidget();
        auto *grid = list ? list->findChild<QTableView *>(u"GoodListDB_GRD"_s) : nullptr;
        if (!grid || !list->isActiveWindow() || !grid->model() || grid->model()->rowCount() == 0)
            return;
        poll.stop();
        grid->setFocus();
        for (const Qt::Key key : keys)
            QTest::keyClick(QApplication::focusWidget(), key);
    });
    poll.start(20);
}

/// Keeps the details of a line as they are; whether its quantities come back through the 29 arguments.
bool GetsQuantities(QLibrary &module)
{
    const auto enter = reinterpret_cast<decltype(&::Open_Enter_GoodDetail)>(module.resolve("Open_Enter_GoodDetail"));
    if (!enter)
        return false;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&poll] {
        QWidget *screen = QApplication::activeModalWidget();
        if (!screen || !screen->isActiveWindow())
            return;
        poll.stop();
        QTest::keyClick(screen, Qt::Key_F3);
    });
    poll.start(20);
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
    const bool quantities = GetsQuantities(module);
    module.unload();
    if (const QStringList said = host.messages.TakeAll(); !said.isEmpty())
        return Fail(qPrintable(said.join(u'\n')));
    std::printf("chosen: %d, %d, %d\n", located, first, none);
    if (!quantities)
        return Fail("expected the quantities of the line");
    return located == 12 && first == 11 && none == 0 ? 0 : Fail("expected 12, 11, 0");
}
