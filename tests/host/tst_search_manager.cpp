#include "host/data/database_error.h"
#include "host/data/dataset.h"
#include "host/screens/search_manager.h"
#include "tests/support/database.h"
#include "tests/support/test_main.h"

#include <QtTest>

/// A list that is put together from a script and its filters.
class TestSearchManager : public QObject
{
    Q_OBJECT

private slots:
    void statement_data();
    void statement();
    void runsAgainForColumnsItLacks();
    void runsBehindTheRows();
};

using Filters = QList<std::pair<QString, QString>>;

void TestSearchManager::statement_data()
{
    QTest::addColumn<Filters>("filters"); // set one after the other
    QTest::addColumn<QStringList>("custom");
    QTest::addColumn<QString>("expected");
    QTest::newRow("the script alone") << Filters() << QStringList() << u"Exec P "_s;
    QTest::newRow("the screen's own come last")
        << Filters{{u"b"_s, u"@B = 2"_s}, {u"a"_s, u"@A = 1"_s}} << QStringList{u"@C = 3"_s, u"@D = 4"_s}
        << u"Exec P @B = 2,@A = 1,@C = 3,@D = 4"_s;
    QTest::newRow("set again, it keeps its place")
        << Filters{{u"b"_s, u"@B = 2"_s}, {u"a"_s, u"@A = 1"_s}, {u"b"_s, u"@B = 5"_s}} << QStringList()
        << u"Exec P @B = 5,@A = 1"_s;
    QTest::newRow("an empty one is taken out") << Filters{{u"b"_s, u"@B = 2"_s}, {u"a"_s, u"@A = 1"_s}, {u"b"_s, u""_s}}
                                               << QStringList{u" "_s} << u"Exec P @A = 1"_s;
    QTest::newRow("commas at the ends are not doubled")
        << Filters{{u"a"_s, u",@A = 1,"_s}} << QStringList{u", @B = ',2,' ,"_s} << u"Exec P @A = 1,@B = ',2,'"_s;
}

void TestSearchManager::statement()
{
    QFETCH(Filters, filters);
    QFETCH(QStringList, custom);
    host::TVelakSearchManager list{QSqlDatabase()};
    list.SetScript(u"Exec P "_s);
    for (const auto &[name, text] : filters)
        list.SetFilter(name, text);
    list.SetCustomFilter([&custom] { return custom; });
    QTEST(list.Statement(), "expected");
}

void TestSearchManager::runsAgainForColumnsItLacks()
{
    const test::Database database(test::Database::Content::Demo);
    host::TVelakSearchManager list(database.GoodsList());
    list.SetScript(u"Exec GoodInf_List_SP "_s);
    list.SetCustomFilter([&list] { return QStringList{u"@RequestedCol = '%1'"_s.arg(list.RequestedColumns())}; });
    QSignalSpy executed(&list, &host::TVelakSearchManager::Executed);
    list.SetRequestedColumns({u"Code"_s, u"Name"_s, u"Cost1"_s});
    QCOMPARE(executed.size(), 0); // it is not open yet
    list.Run();
    QCOMPARE(executed.size(), 1);
    QVERIFY(list.Data().FieldAt(0, u"UnitName1").isNull());
    list.SetRequestedColumns({u"Cost1"_s, u"Name"_s});
    list.SetRequestedColumns({u"Name"_s, u"Code"_s, u"Cost1"_s});
    QCOMPARE(executed.size(), 1); // it has them all
    list.SetRequestedColumns({u"Name"_s, u"UnitName1"_s});
    QCOMPARE(executed.size(), 2);
    QVERIFY(!list.Data().FieldAt(0, u"UnitName1").isNull());
    list.Data().Close();
    list.SetRequestedColumns({u"Name"_s, u"UnitName2"_s});
    QCOMPARE(executed.size(), 2);
}

/// A long list runs again while its rows stay, however it ends.
void TestSearchManager::runsBehindTheRows()
{
    const test::Database database(test::Database::Content::Demo);
    host::TVelakSearchManager list(database.GoodsList());
    list.SetFilter(u"goods"_s, u"a.Code"_s);
    list.SetFilter(u"names"_s, u"b.Name from GoodInf a cross join GoodInf b cross join GoodInf c"_s);
    QSignalSpy executed(&list, &host::TVelakSearchManager::Executed);
    QSignalSpy renewing(&list, &host::TVelakSearchManager::Renewing);
    const auto tag = [&] { return list.Data().RecordCount(); };
    // So many that this machine does not read them at once.
    int rows = 90000;
    for (;; rows *= 2) {
        list.SetScript(u"select top %1 "_s.arg(rows));
        list.Run();
        QCOMPARE(tag(), 1000);
        executed.clear();
        renewing.clear();
        list.RunBehind();
        if (executed.isEmpty())
            break;
    }
    QCOMPARE(tag(), 1000);
    QTRY_COMPARE(executed.size(), 1);
    QCOMPARE(renewing.size(), 1);
    QCOMPARE(tag(), rows);
    QVERIFY(list.Data().FetchedAll());

    list.RunBehind();
    list.Finish(); // somebody cannot wait
    QCOMPARE(executed.size(), 2);
    list.RunBehind();
    list.Run(); // another filter: nobody wants those any more
    QCOMPARE(tag(), 1000);
    QTest::qWait(50);
    QCOMPARE(executed.size(), 3);
    list.RunBehind();
    list.Close();
    QTest::qWait(50);
    QCOMPARE(executed.size(), 3);
    QVERIFY(!list.Data().IsOpen());

    list.Run();
    list.SetFilter(u"names"_s, u"NoSuchColumn from GoodInf a"_s);
    QVERIFY_THROWS_EXCEPTION(host::DatabaseError, list.RunBehind());
    list.Finish();
    QCOMPARE(tag(), 1000);

    // A column that did not come is asked for again.
    QSignalSpy failed(&list, &host::TVelakSearchManager::Failed);
    list.SetFilter(u"names"_s, u"1 / (a.Code - 110010) from GoodInf a cross join GoodInf b"_s);
    list.SetRequestedColumns({u"Name"_s});
    QTRY_COMPARE(failed.size(), 1);
    list.SetFilter(u"names"_s, u"a.Name from GoodInf a"_s);
    executed.clear();
    list.SetRequestedColumns({u"Name"_s});
    QTRY_COMPARE(executed.size(), 1);
}

REGISTER_TEST(TestSearchManager)
#include "tst_search_manager.moc"
