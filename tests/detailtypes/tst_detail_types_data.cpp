// What the screens of detail types rely on but cannot show: counts, places, and writes that go all or not at all.

#include "detailtypes/detail_types_dm.h"
#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "tests/support/database.h"
#include "tests/support/test_main.h"

#include <QtTest>

namespace {

struct Data
{
    test::Database database;
    TDetailTypes_DM types{{database.Main(), database.GoodsList(), database.Scales()}};

    Data()
    {
        database.Exec(
            u"insert DetailTypes(Title, DetailType) values (N'رنگ', 1), (N' رنگ', 1), (N'رنگ ', 1), (N'D''or', 2), "
            "(N'نو', 2) insert DetailTypesItems(DetailID, Row, [Value]) values (1, 1, N'قرمز'), (1, 2, N'آبی')"_s);
    }
    QStringList Everything() const
    {
        return database.Rows(u"select ID, Title from DetailTypes order by ID"_s) +
               database.Rows(u"select DetailID, Row, [Value] from DetailTypesItems order by DetailID, Row"_s);
    }
};

} // namespace

class TestDetailTypesData : public QObject
{
    Q_OBJECT

private slots:
    void titlesCountWithTheirBlanks_data();
    void titlesCountWithTheirBlanks();
    void membersTakeNoPlaceTwice();
    void refusesWhatIsNoCodeList();
    void writesAllOrNothing_data();
    void writesAllOrNothing();
    void remindersMeetOnAGood();
};

void TestDetailTypesData::titlesCountWithTheirBlanks_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("count");
    QTest::newRow("plain") << u"رنگ"_s << 1;
    QTest::newRow("blank before") << u" رنگ"_s << 1;
    QTest::newRow("blank behind") << u"رنگ "_s << 1;
    QTest::newRow("two blanks") << u"رنگ  "_s << 0;
    QTest::newRow("quote") << u"D'or"_s << 1;
}

void TestDetailTypesData::titlesCountWithTheirBlanks()
{
    Data data;
    QFETCH(QString, title);
    QTEST(data.types.DetailTypesTitle_Exist(title), "count");
}

void TestDetailTypesData::membersTakeNoPlaceTwice()
{
    Data data;
    QString codes;
    QVERIFY(!data.types.DetailTypes_SelectedList_GetCode(4, codes));
    QCOMPARE(codes, u"0"_s);
    QVERIFY(!data.types.CheckDetailTypeCodes_SerialAndBarcode(codes, 0));
    data.types.DetailTypes_SelectedList_InsertDetail(u"5,2,"_s, 4);
    data.types.DetailTypes_SelectedList_DeleteDetail(4, u"5"_s);
    data.types.DetailTypes_SelectedList_InsertDetail(u"2,1,1,5"_s, 4);
    QCOMPARE(data.database.Rows(u"select Code, Radif from DetailTypes_SelectedList_Detail order by Radif"_s),
             (QStringList{u"2|2"_s, u"1|3"_s, u"5|4"_s}));
    QVERIFY(data.types.DetailTypes_SelectedList_GetCode(4, codes));
    QCOMPARE(codes, u"2,1,5"_s);
}

void TestDetailTypesData::refusesWhatIsNoCodeList()
{
    Data data;
    const QString evil = u"1) or (1=1"_s;
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, data.types.CheckDetailTypeCodes_SerialAndBarcode(evil, 0));
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, data.types.DetailTypes_SelectedList_InsertDetail(evil, 4));
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, data.types.DetailTypes_SelectedList_DeleteDetail(4, evil));
}

void TestDetailTypesData::writesAllOrNothing_data()
{
    using Act = std::function<void(TDetailTypes_DM &)>;
    QTest::addColumn<Act>("act");
    const QStringList items{u"زرد"_s, QString(101, u'x')}; // the second item does not fit
    QTest::newRow("new with items") << Act([items](TDetailTypes_DM &types) {
        TDetailType_Rec record;
        record.Title = u"تازه"_s;
        record.DetailType = TDetailKind::List;
        int id = 0;
        types.DetailTypes_InsertWithItems(record, items, id);
    });
    QTest::newRow("changed with items") << Act([items](TDetailTypes_DM &types) {
        TDetailType_Rec record;
        types.DetailTypes_GetByID(1, record);
        record.Title = u"دیگر"_s;
        types.DetailTypes_UpdateWithItems(record, items);
    });
    QTest::newRow("changed but gone") << Act([](TDetailTypes_DM &types) {
        TDetailType_Rec record;
        record.ID = 77;
        types.DetailTypes_UpdateWithItems(record, {u"زرد"_s});
    });
    QTest::newRow("deleted while a category took it") << Act([](TDetailTypes_DM &types) {
        types.DetailTypes_SelectedList_InsertDetail(u"1"_s, 4);
        types.DetailTypes_Delete(1);
    });
    QTest::newRow("members, one of them gone")
        << Act([](TDetailTypes_DM &types) { types.DetailTypes_SelectedList_InsertDetail(u"2,77"_s, 5); });
}

void TestDetailTypesData::writesAllOrNothing()
{
    using Act = std::function<void(TDetailTypes_DM &)>;
    QFETCH(Act, act);
    Data data;
    const QStringList before = data.Everything();
    QVERIFY_THROWS_EXCEPTION(host::DatabaseError, act(data.types));
    QCOMPARE(data.Everything(), before);
    QVERIFY(data.database.Rows(u"select Code from DetailTypes_SelectedList_Detail where SL_Code = 5"_s).isEmpty());
}

void TestDetailTypesData::remindersMeetOnAGood()
{
    Data data;
    data.database.Exec(
        u"insert DetailTypes(Title, DetailType, DateAlarm) values (N'انقضا', 5, 1), (N'تولید', 5, 0), (N'خرید', 5, 0) "
        "insert GoodGrpS(Code, Name) values (5, N'گروه') insert Units(Code, Name, [Type]) values (1, N'عدد', 0) "
        "insert Stores(Code, Name) values (1, N'انبار') insert GoodInf(Code, GrpCode, Name, Unit, Store) values "
        "(5001, 5, N'شیر', 1, 1), (5002, 5, N'پنیر', 1, 1) insert GoodDetailValues(GoodCode) values (5001), (5002) "
        "insert GoodDetailValueDetails(DetailValueID, DetailID, [Value]) values (1, 6, '1405/01/01'), "
        "(1, 7, '1404/01/01'), (2, 8, '1404/01/01')"_s);
    QVERIFY(data.types.ExistsGoodDetailBeforeEditForDateAlarmDetail(7));
    QVERIFY(!data.types.ExistsGoodDetailBeforeEditForDateAlarmDetail(8));
}

REGISTER_TEST(TestDetailTypesData)
#include "tst_detail_types_data.moc"
