#include "tests/support/database.h"
#include "tests/support/test_main.h"

#include <QtTest>

/// Stock on hand, also of details, opening stock rows, prices by level, and the good that may not be removed.
class TestStock : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void reckons_data();
    void reckons();
    void keepsStockWhenItFails();
    void listsOpeningRows_data();
    void listsOpeningRows();
    void findsDefaultPrice_data();
    void findsDefaultPrice();
    void keepsGoodThatMoved();
    void showsDetailsInStock_data();
    void showsDetailsInStock();
    void listsDivisions();

private:
    std::unique_ptr<test::Database> m_database;
};

void TestStock::init()
{
    m_database = std::make_unique<test::Database>();
    m_database->Exec(
        u"INSERT INTO GoodGrpS (Code, Name) VALUES (1, N'یک')\n"
        "INSERT INTO Units (Code, Name) VALUES (1, N'عدد'), (2, N'کارتن')\n"
        "INSERT INTO Stores (Code, Name) VALUES (1, N'فروشگاه'), (2, N'مرکزی')\n"
        "INSERT INTO GoodInf (Code, GrpCode, Name) VALUES (10, 1, N'a'), (20, 1, N'b'), (30, 1, N'c'), (40, 1, N'd')\n"
        "INSERT INTO GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1, Amount2, Radif) VALUES"
        " (10, 1, 0, 0.1, 1, 1), (10, 2, 0, 5, 0, 2), (10, 1, 1, 70, 7, 1), (20, 1, 0, 3, 0, 1), (99, 1, 0, 8, 0, 1)\n"
        "INSERT INTO Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1, Amount2) VALUES"
        " (10, 1, 1, 1, '1405/02/01', 0.2, 2), (10, 1, 2, 1, '1405/02/02', -0.3, -3), (20, 2, 1, 1, '1405/02/01', 4, "
        "0),"
        " (30, 2, 2, 1, '1405/02/03', -2, 0)"_s);
}

void TestStock::reckons_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("stores");
    QTest::addColumn<QStringList>("goods");
    // 0.1 + 0.2 - 0.3 is nothing; working copies and goods that are not there do not count.
    const QStringList stores{u"10|1|0|0"_s, u"10|2|5|0"_s, u"20|1|3|0"_s, u"20|2|4|0"_s, u"30|2|-2|0"_s};
    const QStringList goods{u"10|5|0"_s, u"20|7|0"_s, u"30|-2|0"_s};
    const QString all = u"Exec UpdateMogodiKala"_s;
    const QString change = u"INSERT INTO Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1)"
                           " VALUES (40, 2, 1, 2, '1405/02/04', 6), (20, 1, 2, 2, '1405/02/04', -3)"_s;
    QTest::newRow("stores, then goods") << QStringList{all + u" 255"_s, all + u" 254"_s} << stores << goods;
    QTest::newRow("twice") << QStringList{all + u" 255"_s, all + u" 254"_s, all + u" 255"_s, all + u" 254"_s} << stores
                           << goods;
    QTest::newRow("stores only") << QStringList{all + u" 255"_s} << stores << QStringList();
    QTest::newRow("both at once") << QStringList{all} << stores << goods;
    QTest::newRow("one store") << QStringList{all + u" 1"_s} << QStringList{stores.at(0), stores.at(2)}
                               << QStringList();
    QTest::newRow("after a change") << QStringList{all, change, all}
                                    << QStringList{stores.at(0), stores.at(1), u"20|1|0|0"_s,
                                                   stores.at(3), stores.at(4), u"40|2|6|0"_s}
                                    << QStringList{goods.at(0), u"20|4|0"_s, goods.at(2), u"40|6|0"_s};
    QTest::newRow("one good after a change")
        << QStringList{all, change, all + u" NULL, 20"_s}
        << QStringList{stores.at(0), stores.at(1), u"20|1|0|0"_s, stores.at(3), stores.at(4)}
        << QStringList{goods.at(0), u"20|4|0"_s, goods.at(2)};
    QTest::newRow("a good that lost its movements")
        << QStringList{all, u"DELETE FROM Kardex WHERE Kala = 30"_s, all} << stores.mid(0, 4) << goods.mid(0, 2);
}

void TestStock::reckons()
{
    QFETCH(QStringList, steps);
    for (const QString &step : steps)
        m_database->Exec(step);
    QTEST(m_database->Rows(u"SELECT GoodCode, StoreCode, Amount1, Amount2 FROM GoodStoreStock "
                           "ORDER BY GoodCode, StoreCode"_s),
          "stores");
    QTEST(m_database->Rows(u"SELECT * FROM GoodStock ORDER BY GoodCode"_s), "goods");
}

void TestStock::keepsStockWhenItFails()
{
    m_database->Exec(u"Exec UpdateMogodiKala"_s);
    const QStringList before = m_database->Rows(u"SELECT * FROM GoodStoreStock ORDER BY 1, 2"_s);
    m_database->Exec(u"INSERT INTO Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1)"
                     " VALUES (20, 1, 1, 3, '1405/02/04', 99999999999999), (20, 1, 1, 4, '1405/02/04', 1)"_s);
    QVERIFY(!m_database->Refusal(u"Exec UpdateMogodiKala 255"_s).isEmpty());
    QCOMPARE(m_database->Rows(u"SELECT * FROM GoodStoreStock ORDER BY 1, 2"_s), before);
}

void TestStock::listsOpeningRows_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("where");
    QTest::addColumn<QStringList>("rows");
    const auto row = [](const char *arguments, const char *where, const QStringList &rows) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments) << QString::fromLatin1(where) << rows;
    };
    row("1,2,12", "tmp=1 and GoodCode=10", {u"10|1|فروشگاه|70|7|عدد|کارتن|5|1405/01/01"_s});
    row("1,0,0", "tmp=0 and GoodCode=10",
        {u"10|1|فروشگاه|0.1|1|عدد|NULL|0.1|1405/01/01"_s, u"10|2|مرکزی|5|0|عدد|NULL|5|1405/01/01"_s});
    row("2,1,2.5", "tmp=0 and GoodCode=99", {u"99|1|فروشگاه|8|0|کارتن|عدد|3|1405/01/01"_s});
    row("1,2,1", "tmp=1 and GoodCode=20", {});
}

void TestStock::listsOpeningRows()
{
    QFETCH(QString, arguments);
    QFETCH(QString, where);
    QTEST(m_database->Rows(u"Select GoodCode, StoreCode, StoreName, Amount1, Amount2, Unit1, Unit2, Joz, [Date]"
                           " from GoodFirstAssetList_FNC(%1) where %2 order by Radif"_s.arg(arguments, where)),
          "rows");
}

void TestStock::findsDefaultPrice_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("cost");
    const auto row = [](const char *name, const char *arguments, const char *cost) {
        QTest::newRow(name) << QString::fromLatin1(arguments) << QString::fromLatin1(cost);
    };
    row("default of sale", "0,10,0", "400.5");
    row("default of purchase", "1,10,0", "88.123456789");
    row("a level", "0,10,1", "100");
    row("the last level", "1,10,10", "1010");
    row("no such level", "0,10,11", "0");
    row("third argument left out", "0,10", "400.5");
    row("no price row", "0,20,0", "0");
    row("no such good", "1,77,0", "0");
}

void TestStock::findsDefaultPrice()
{
    QFETCH(QString, arguments);
    m_database->Exec(u"INSERT INTO GoodCostDiscount (GoodCode, CostLevel_Sell_1, CostLevel_Sell_4, CostLevel_Buy_8,"
                     " CostLevel_Buy_10, Default_CostLevel_Sell_Number, Default_CostLevel_Buy_Number)"
                     " VALUES (10, 100, 400.5, 88.123456789, 1010, 4, 8)"_s);
    const QString statement = u"exec GetDefaultCostLevel "_s + arguments;
    QCOMPARE(m_database->Columns(statement), QStringList{u"cost"_s});
    QFETCH(QString, cost);
    QCOMPARE(m_database->Rows(statement), QStringList{cost});
}

void TestStock::keepsGoodThatMoved()
{
    m_database->Exec(u"INSERT INTO GoodCostDiscount (GoodCode) VALUES (10)"_s);
    QVERIFY(!m_database->Refusal(u"Exec GoodInf_Delete 10"_s).isEmpty());
    QCOMPARE(m_database->Rows(
                 u"SELECT (SELECT COUNT(*) FROM GoodInf WHERE Code = 10), (SELECT COUNT(*) FROM"
                 " GoodCostDiscount), (SELECT COUNT(*) FROM GoodFirstAsset WHERE GoodCode = 10), @@TRANCOUNT"_s),
             QStringList{u"1|1|3|0"_s});
}

void TestStock::showsDetailsInStock_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QStringList>("rows");
    // What came in and went out again is not shown; titles stand as serial, barcode, others.
    const QString serial = u"2|1|فروشگاه|10|12|626|قرمز|NULL|NULL|12 626 قرمز|1|0|"_s;
    const QString piece = u"2|2|مرکزی|10|12|626|قرمز|NULL|NULL|12 626 قرمز|3|0|"_s;
    QTest::newRow("in pieces") << u"@UnitType = 5, @GoodCode = 10"_s
                               << QStringList{serial + u"0|0|0|0"_s, piece + u"1.5|2|1|0"_s};
    QTest::newRow("in units") << u"\t@GoodCode = 10,\n\t@ComIndex = 108,\n\t@UnitType = 4"_s
                              << QStringList{serial + u"NULL|NULL|NULL|0"_s, piece + u"NULL|NULL|NULL|0"_s};
    QTest::newRow("a good without details") << u"@GoodCode = 20"_s << QStringList();
}

void TestStock::showsDetailsInStock()
{
    QFETCH(QString, arguments);
    m_database->Exec(
        u"INSERT DetailTypes(Title, DetailType) VALUES (N'سریال', 3), (N'بارکد', 6), (N'رنگ', 1) "
        "INSERT GoodDetailRelation(GoodCode, DetailID) VALUES (10, 3), (10, 2), (10, 1), (20, 3) "
        "INSERT GoodDetailValues(GoodCode) VALUES (10), (10) "
        "INSERT GoodDetailValueDetails(DetailValueID, DetailID, [Value]) VALUES (1, 1, N'10'), (2, 1, N'12'), "
        "(2, 3, N'قرمز'), (2, 2, N'626') "
        "INSERT GoodDetailKardex(DetailValueID, StoreCode, GoodCode, Amount1, Amount3, [Length], Width, OperationType, "
        "OperationCode) VALUES (1, 1, 10, 1, 0, 0, 0, 3, 1), (1, 1, 10, -1, 0, 0, 0, 24, 1), "
        "(2, 1, 10, 1, 0, 0, 0, 3, 1), (2, 2, 10, 6, 2, 1.5, 2, 3, 2), (2, 2, 10, -3, -1, 1.5, 2, 24, 2)"_s);
    QTEST(m_database->Rows(u"EXEC GoodDetail_Select "_s + arguments), "rows");
}

void TestStock::listsDivisions()
{
    m_database->Exec(u"INSERT GoodDetailDivision(Code, [Date], Comment) VALUES (7, '1405/02/03', N'برش')"_s);
    QCOMPARE(m_database->Rows(u"exec GoodDetail_Select_GoodDetailDivision"_s), QStringList{u"1|7|1405/02/03|برش"_s});
}

REGISTER_TEST(TestStock)
#include "tst_stock.moc"
