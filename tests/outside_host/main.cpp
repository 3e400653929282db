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

using namespace Qt::StringLiterals;

namespace {

QList<ScriptedAnswer> Shop()
{
    return {
        {u"GoodInf_List_SP"_s,
         {u"Code"_s, u"Name"_s, u"AbbName"_s},
         {{11, u"قند شکسته"_s, u"!6260000000011!"_s}, {12, u"شکر سفید"_s, u"!6260000000028!"_s}}},
        {u"GoodGrpS"_s, {u"Code"_s, u"Name"_s, u"Comment"_s}, {{0, u"کليه کالاها"_s, QString()}}},
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
    module.unload();
    if (const QStringList said = host.messages.TakeAll(); !said.isEmpty())
        return Fail(qPrintable(said.join(u'\n')));
    std::printf("chosen: %d, %d, %d\n", located, first, none);
    return located == 12 && first == 11 && none == 0 ? 0 : Fail("expected 12, 11, 0");
}
