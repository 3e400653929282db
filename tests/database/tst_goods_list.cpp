#include "tests/support/database.h"
#include "tests/support/test_main.h"

#include <QSqlQuery>
#include <QtTest>

namespace {

const QStringList AllColumns =
    u"Code,AbbName,Name,kala_name,kala_type,kala_index,Mogodi2,Mogodi,Joz,UnitName1,UnitName2,Cost1,"
    "Cost2,Cost3,Cost4,t1,t2,t3,ConsumerPrice,Position,MinAva,CostBgPrd,SMSCode,AvaBgPrd,Comment,"
    "UserCreated,UserModified,CreatedDateTime,ModifiedDateTime,tags,GrpCode,Meghdar_Formool"_s.split(u',');

/// Five goods: 11 and 12 in group 1, 21 and 22 in group 2, 31 in group 3.
void MakeGoods(const test::Database &database)
{
    database.Exec(
        u"INSERT INTO GoodGrpS (Code, Name) VALUES (1, N'یک'), (2, N'دو'), (3, N'سه')\n"
        "INSERT INTO Units (Code, Name) VALUES (1, N'عدد'), (2, N'کارتن')\n"
        "INSERT INTO Stores (Code, Name) VALUES (1, N'انبار')\n"
        "INSERT INTO colors (code, Name, Value) VALUES (1, N'قرمز', '#ff0000')\n"
        "INSERT INTO TagS (Code, Name, color_code) VALUES (1, N'الف', 1), (2, N'ب', 1), (12, N'ج', 1), (7, N'د', 1)\n"
        "INSERT INTO Categories (Code, ParentCode, Name, Path) VALUES (1, NULL, N'ریشه', ',1,'), (10, 1, N'شاخه', "
        "',1,10,'),"
        " (100, 10, N'برگ', ',1,10,100,'), (2, NULL, N'دیگر', ',2,')\n"
        "INSERT INTO GoodInf (Code, GrpCode, Name, kala_name, Unit, Unit2, Meghdar_Formool, tags, CreatedDate, "
        "CreatedTime)"
        " VALUES (21, 2, N'Tea', N'Tea', 1, 2, 12, N'12', '1405/01/02', '08:30:00'),"
        " (11, 1, N'Rice', N'Rice', 1, NULL, 0, N'1,12,7,2', NULL, NULL), (31, 3, N'Salt', N'Salt', 1, NULL, 0, NULL, "
        "NULL, NULL),"
        " (12, 1, N'Bean', N'Bean', 1, 2, 2.5, N'2,1', NULL, NULL), (22, 2, N'Milk', N'Milk', NULL, NULL, 0, N'', "
        "NULL, NULL)\n"
        "INSERT INTO GoodCostDiscount (GoodCode, CostLevel_Sell_1, CostLevel_Sell_2, CostLevel_Sell_4)"
        " VALUES (21, 1500.25, 1400, 12345678901234.123456789)\n"
        "INSERT INTO Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1, Amount2)"
        " VALUES (21, 1, 1, 1, '1405/01/05', 30, 2.5), (12, 1, 1, 1, '1405/01/05', 9, 3.6), (31, 1, 2, 1, "
        "'1405/01/05', -4, 0),"
        " (22, 1, 1, 1, '1405/01/05', 5, 0), (22, 1, 2, 1, '1405/01/06', -5, 0)\n"
        "INSERT INTO Kala_category (Kala_code, Category_code, tmp) VALUES (11, 100, 0), (12, 10, 0), (21, 100, 1), "
        "(22, 2, 0)\n"
        "INSERT INTO SelectedLists (Code, Title) VALUES (5, N'فهرست')\n"
        "INSERT INTO SelectedList_Detail (SL_Code, Code) VALUES (5, 22), (5, 11)\n"
        "INSERT INTO Users (Code, Name) VALUES (2, N'کاربر'), (3, N'همکار')\n"
        "INSERT INTO UserDeniedGroups (UserCode, GrpCode) VALUES (2, 2)\n"
        "EXEC UpdateMogodiKala 255\nEXEC UpdateMogodiKala 254"_s);
}

} // namespace

/// The rows of the goods list.
class TestGoodsList : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { MakeGoods(m_database); }
    void filters_data();
    void filters();
    void returnsRequestedColumns_data();
    void returnsRequestedColumns();
    void showsValues_data();
    void showsValues();
    void readsDemoInBlocks();

private:
    test::Database m_database;
};

void TestGoodsList::filters_data()
{
    QTest::addColumn<QString>("parameters");
    QTest::addColumn<QString>("codes");
    const auto row = [](const char *parameters, const char *codes) {
        QTest::newRow(parameters) << QString::fromUtf8(parameters) << QString::fromLatin1(codes);
    };
    row("", "11 12 21 22 31");
    row("@GrpCode = NULL", "11 12 21 22 31");
    row("@GrpCode = 1", "11 12");
    row("@GrpCode = 99", "");
    row("@GoodExistType = 1", "12 21");
    row("@GoodExistType = 0", "11 22 31"); // never moved, sold out, oversold
    row("@GoodExistType = -1", "11 12 21 22 31");
    row("@GrpCode = 2, @GoodExistType = 1", "21");
    row("@GoodExistType = 1, @RequestedCol='Name'", "12 21");
    row("@SL_Code = 5, @DisplayType = 1", "11 22");
    row("@SL_Code = 5, @DisplayType = 0", "12 21 31");
    row("@SL_Code = 0, @DisplayType = 0", "11 12 21 22 31");
    row("@SL_Code = 6, @DisplayType = 1", "");
    row("@Tags = '1'", "11 12"); // never 12, whose code contains it
    row("@Tags = '12'", "11 21");
    row("@Tags = '1,2'", "11 12");
    row("@Tags = '2,12'", "11");
    row("@Tags = ''", "11 12 21 22 31");
    row("@Category = ',100,'", "11"); // 21 has it only in an editor that is open
    row("@Category = ',10,'", "11 12");
    row("@Category = ',1,'", "11 12");
    row("@Category = ',2,', @GrpCode = 1", "");
    row("@ManageType   = 0,@UserCode  = 2", "11 12 31");
    row("@ManageType   = 0,@UserCode  = 3", "11 12 21 22 31");
    row("@ManageType   = 1,@UserCode  = 2", "11 12 21 22 31");
    row("@ManageType = 0, @UserCode = 2, @GrpCode = 2", "");
    row("@ManageType = 1, @UserCode = 1, @SL_Code = 5, @Cost_Flag = 1, @DisplayType = 1, @RequestedCol= ''", "11 22");
    row("@GrpCode = 1,@ManageType   = 1,@UserCode  = 1, @RequestedCol='Name,Cost1',@GoodExistType = 1,@SL_Code = 5,"
        "@DisplayType = 0,@Tags = '2',@Category = ',1,'",
        "12");
}

void TestGoodsList::filters()
{
    QFETCH(QString, parameters);
    QStringList codes;
    for (const QString &row : m_database.Rows(u"Exec GoodInf_List_SP "_s + parameters))
        codes << row.section(u'|', 0, 0);
    QTEST(codes.join(u' '), "codes");
}

void TestGoodsList::returnsRequestedColumns_data()
{
    QTest::addColumn<QString>("requested");
    QTest::addColumn<QString>("filled"); // of the columns that cost something, those with a value
    const auto row = [](const char *name, const char *requested, const char *filled) {
        QTest::newRow(name) << QString::fromUtf8(requested) << QString::fromLatin1(filled);
    };
    row("all", "NULL", "Mogodi2 Mogodi Joz UnitName1 UnitName2 Cost1 Cost2 Cost3 Cost4 t1");
    row("empty", "''", "Mogodi2 Mogodi Joz UnitName1 UnitName2 Cost1 Cost2 Cost3 Cost4 t1");
    row("cheap ones only", "'Code,Name,Comment'", "");
    row("one price brings all four", "'Code,Cost3'", "Cost1 Cost2 Cost3 Cost4");
    row("stock", "'Mogodi'", "Mogodi2 Mogodi Joz");
    row("blanks and case", "' code , unitNAME1 '", "UnitName1");
    row("part of a name", "'Cost,UnitName,Mog'", "");
    row("prices switched off", "'Cost1', @Cost_Flag = 0", "");
    row("a statement", "'Name FROM GoodInf; DELETE FROM GoodInf --'", "");
    row("a quote", "'Name'''", "");
}

void TestGoodsList::returnsRequestedColumns()
{
    QFETCH(QString, requested);
    const QString statement = u"Exec GoodInf_List_SP @GrpCode = 2, @RequestedCol="_s + requested;
    QCOMPARE(m_database.Columns(statement), AllColumns);
    const QStringList tea = m_database.Rows(statement).value(0).split(u'|');
    QCOMPARE(tea.value(0), u"21");
    QStringList filled;
    for (const QString &column : u"Mogodi2 Mogodi Joz UnitName1 UnitName2 Cost1 Cost2 Cost3 Cost4 t1"_s.split(u' '))
        if (tea.value(AllColumns.indexOf(column)) != u"NULL")
            filled << column;
    QTEST(filled.join(u' '), "filled");
}

void TestGoodsList::showsValues_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QString>("values");
    const auto row = [](const char *name, int code, const char *columns, const char *values) {
        QTest::newRow(name) << code << QString::fromLatin1(columns) << QString::fromUtf8(values);
    };
    row("stock in both units and the rest", 21, "Mogodi Mogodi2 Joz", "30|2.5|6");
    row("a ratio with a fraction", 12, "Mogodi Joz", "9|1.5");
    row("no ratio, oversold", 31, "Mogodi Mogodi2 Joz", "-4|0|0");
    row("never moved", 11, "Mogodi Mogodi2 Joz", "0|0|0");
    row("prices to the last decimal", 21, "Cost1 Cost2 Cost3 Cost4", "1500.25|1400|0|12345678901234.123456789");
    row("no price row", 11, "Cost1", "NULL");
    row("units", 21, "UnitName1 UnitName2", "عدد|کارتن");
    row("units missing", 22, "UnitName1 UnitName2", "NULL|NULL");
    row("first three tags of four", 11, "t1 t2 t3", "1|12|7");
    row("two tags", 12, "t1 t2 t3", "2|1|NULL");
    row("one tag", 21, "t1 t2 t3", "12|NULL|NULL");
    row("no tags", 22, "t1 t2 t3", "NULL|NULL|NULL");
    row("creation stamp", 21, "CreatedDateTime ModifiedDateTime", "1405/01/02 08:30:00|NULL");
}

void TestGoodsList::showsValues()
{
    QFETCH(int, code);
    QFETCH(QString, columns);
    QStringList values;
    for (const QString &row : m_database.Rows(u"Exec GoodInf_List_SP"_s))
        if (row.startsWith(QString::number(code) + u'|'))
            for (const QString &column : columns.split(u' '))
                values << row.split(u'|').value(AllColumns.indexOf(column));
    QTEST(values.join(u'|'), "values");
}

/// The first rows come, in code order, while the rest has not been asked for; writing goes on meanwhile.
void TestGoodsList::readsDemoInBlocks()
{
    test::Database demo(test::Database::Content::Demo);
    QSqlQuery list(demo.GoodsList());
    list.setForwardOnly(true);
    QVERIFY(list.exec(u"Exec GoodInf_List_SP @ManageType = 1, @UserCode = 1"_s));
    int last = 0;
    for (int i = 0; i < 50; ++i) {
        QVERIFY(list.next());
        QVERIFY(list.value(0).toInt() > last);
        last = list.value(0).toInt();
    }
    demo.Exec(u"UPDATE GoodInf SET Comment = N'در حال خواندن' WHERE Code = 110001"_s);
    int rows = 50;
    while (list.next())
        ++rows;
    QCOMPARE(rows, demo.Scalar(u"SELECT COUNT(*) FROM GoodInf"_s).toInt());
}

REGISTER_TEST(TestGoodsList)
#include "tst_goods_list.moc"
