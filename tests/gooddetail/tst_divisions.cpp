#include "desk/services/detail_sql.h"
#include "host/data/sql_text.h"
#include "tests/desk/document_fixture.h"
#include "tests/gooddetail/division_fixture.h"
#include "tests/gooddetail/shop_fixture.h"
#include "tests/support/test_main.h"

#include <QTest>

using fixture::Desk;
using host::TAmounts;
using host::TFormMode;

namespace {

/// Goods beside those of Furnish, each with the serial: 5101 one unit (kg), 5102 two units, 5103 packed, 5105 area;
/// 5104 has a colour alone and a formula of 3 to a unit (total and part). All are opening stock.
void FurnishUnits(const test::Database &database)
{
    fixture::Furnish(database);
    const auto good = [&](int code, int type, const QString &value, const TAmounts &a) {
        database.Exec(
            u"insert GoodInf(Code, GrpCode, Name, Unit, Store, Meghdar_Formool) values (%1, 5, N'g%1', 1, 1, %2) insert "
            "GoodDetailRelation(GoodCode, DetailID) values (%1, %3)"_s.arg(code)
                .arg(code == 5104 ? 3 : 0)
                .arg(type));
        database.Exec(
            u"insert GoodDetailValues(GoodCode) values (%1) insert GoodDetailValueDetails(DetailValueID, DetailID, "
            "[Value]) select MAX(ID), %2, N'%3' from GoodDetailValues insert GoodDetailKardex(DetailValueID, "
            "StoreCode, GoodCode, Amount1, Amount2, TotalAmount, [Length], Width, Amount3, OperationType, "
            "OperationCode, OperationRow) select MAX(ID), 1, %1, %4, 3, %1, 1 from GoodDetailValues"_s.arg(code)
                .arg(type)
                .arg(value, desk::detail_sql::Literals(a)));
        database.Exec(u"insert GoodFirstAsset(GoodCode, StoreCode, tmp, Amount1, Amount2) values (%1, 1, 0, %2, %3) "
                      "exec UpdateMogodiKala @GoodCode = %1"_s.arg(code)
                          .arg(host::DecimalLiteral(a.Amount1), host::DecimalLiteral(a.Amount2)));
    };
    good(5101, 1, u"W"_s, {12.4L, 0, 12.4L});
    good(5102, 1, u"T"_s, {10, 5, 10});
    good(5103, 1, u"R"_s, {100, 2, 100, 0, 0, 50});
    good(5104, 2, u"red"_s, {7, 0, 2.333333333L});
    good(5105, 1, u"S"_s, {7.5L, 0, 7.5L, 2.5L, 1.5L, 2});
}

} // namespace

class TestDivisions : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database.emplace();
        FurnishUnits(*m_database);
        m_desk.emplace(*m_database);
        m_desk->desk.settings.SignIn(1);
    }
    void cleanup()
    {
        const QStringList faults = test::Faults(*m_database);
        m_desk.reset();
        m_database.reset();
        QCOMPARE(faults, QStringList());
    }
    void dividesUnits_data();
    void dividesUnits();
    void editsWhatIsNotUsed();
    void meetsOtherDesks();
    void keepsTypedPartsApart();
    void keepsItsDay();
    void sendsAsManyStatementsForManyParts();

private:
    QString Sum(const QString &where) const
    {
        return m_database->Rows(u"select SUM(Amount1) from GoodDetailKardex where "_s + where).join(u',');
    }
    QStringList Parts(int code) const
    {
        return m_database->Rows(
            u"select d.[Value], k.Amount1, k.Amount2, k.TotalAmount, k.[Length], k.Width, k.Amount3 from "
            "GoodDetailKardex k inner join GoodDetailValueDetails d on d.DetailValueID = "
            "k.DetailValueID where k.OperationType = 25 and k.OperationCode = %1 order by k.ID"_s.arg(code));
    }

    std::optional<test::Database> m_database;
    std::optional<Desk> m_desk;
};

void TestDivisions::dividesUnits_data()
{
    QTest::addColumn<int>("good");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<TAmounts>("taken");
    QTest::addColumn<QList<TAmounts>>("parts");
    QTest::addColumn<QStringList>("ledger");
    const auto row = [](const char *name, int good, const QString &unit, const TAmounts &taken,
                        const QList<TAmounts> &parts,
                        const QStringList &ledger) { QTest::newRow(name) << good << unit << taken << parts << ledger; };
    row("pieces share evenly, the last takes the rest", 5101, u"W"_s, {10}, {{10, 0, 0, 0, 0, 3}},
        {u"W/1|3.333333333|0|3.333333333|0|0|0"_s, u"W/2|3.333333333|0|3.333333333|0|0|0"_s,
         u"W/3|3.333333334|0|3.333333334|0|0|0"_s});
    row("two amounts", 5102, u"T"_s, {10, 5}, {{4, 3, 0, 0, 0, 1}, {6, 2, 0, 0, 0, 2}},
        {u"T/1|4|3|4|0|0|0"_s, u"T/2|3|1|3|0|0|0"_s, u"T/3|3|1|3|0|0|0"_s});
    row("a roll", 5103, u"R"_s, {50, 1, 0, 0, 0, 50}, {{40, 2, 0, 0, 0, 20}, {10, 1, 0, 0, 0, 10}},
        {u"R/1|20|1|20|0|0|20"_s, u"R/2|20|1|20|0|0|20"_s, u"R/3|10|1|10|0|0|10"_s});
    row("without a serial: one value for the part", 5104, u"red"_s, {7}, {{3, 0, 0, 0, 0, 1}, {4, 0, 0, 0, 0, 2}},
        {u"red|3|0|1|0|0|0"_s, u"red|4|0|1.333333333|0|0|0"_s});
    row("a sheet", 5105, u"S"_s, {3.75L, 0, 0, 2.5L, 1.5L, 1}, {{3, 0, 0, 1, 1.5L, 2}, {0.75L, 0, 0, 0.5L, 1.5L, 1}},
        {u"S/1|1.5|0|1.5|1|1.5|1"_s, u"S/2|1.5|0|1.5|1|1.5|1"_s, u"S/3|0.75|0|0.75|0.5|1.5|1"_s});
    row("pieces that cannot be counted", 5101, u"W"_s, {1}, {{1, 0, 0, 0, 0, 2.5L}}, {u"W/1|1|0|1|0|0|0"_s});
}

void TestDivisions::dividesUnits()
{
    QFETCH(int, good);
    QFETCH(QString, unit);
    QFETCH(TAmounts, taken);
    QFETCH(QList<TAmounts>, parts);
    test::Divider divider(m_desk->desk.host);
    divider.Open();
    const auto before = m_database->Rows(u"select Amount1 from GoodStoreStock where GoodCode = %1"_s.arg(good));
    QCOMPARE(divider.Take(good, unit, taken, parts), 1);
    QCOMPARE(divider.Save(), QString());
    QTEST(Parts(1), "ledger");
    QCOMPARE(m_database->Rows(u"select Amount1 from GoodStoreStock where GoodCode = %1"_s.arg(good)), before);
    QCOMPARE(m_database->Scalar(u"select count(*) from Kardex where OperationType in (24, 25)"_s).toInt(),
             1 + int(parts.size()));
    QCOMPARE(m_database->Rows(u"select Mode, Code from Global_ID"_s), QStringList{u"314|1"_s});
    QCOMPARE(divider.Delete(1), QString());
    QCOMPARE(m_database->Rows(u"select Code from Global_ID union all select ID from StorageAutoOperation where "
                              "OperationType > 20"_s),
             QStringList());
    QCOMPARE(m_database->Scalar(u"select count(*) from GoodDetailValueDetails where [Value] like N'%/%'"_s).toInt(), 0);
    QCOMPARE(m_database->Rows(u"select OperationType from GoodDetailKardex where GoodCode = %1"_s.arg(good)),
             QStringList{u"3"_s});
}

void TestDivisions::editsWhatIsNotUsed()
{
    test::Divider divider(m_desk->desk.host);
    divider.Open();
    const int wheel = divider.Take(5101, u"W"_s, {4}, {{4, 0, 0, 0, 0, 2}});
    const int roll = divider.Take(5103, u"R"_s, {50, 1, 0, 0, 0, 50}, {{50, 2, 0, 0, 0, 25}}, true);
    QCOMPARE(divider.Save(), QString());
    const QStringList first =
        m_database->Rows(u"select ID, DetailValueID from GoodDetailKardex where OperationType = 25 "
                         "and OperationRow = 1 order by ID"_s);
    divider.Open(); // a part of a part
    divider.Take(5101, u"W/1"_s, {1.5L}, {{1, 0, 0, 0, 0, 1}, {0.5L, 0, 0, 0, 0, 1}});
    QCOMPARE(divider.Save(), QString());
    QCOMPARE(Parts(2).join(u' ').count(u"W/1/"_s), 2);

    // Rows without used parts change, the others keep what they have.
    const QString used = u"10006, تقسیم جزئیات\n«W/1»: تقسیم جزئیات شماره ۲ (g5101)"_s;
    divider.Open(1, TFormMode::Edit);
    divider.Retake(roll, 5103, u"R"_s, {50, 1, 0, 0, 0, 50}, {{30, 1, 0, 0, 0, 30}, {20, 1, 0, 0, 0, 20}});
    QCOMPARE(divider.Save(), QString());
    QCOMPARE(
        m_database->Rows(u"select ID, DetailValueID from GoodDetailKardex where OperationType = 25 and OperationCode "
                         "= 1 and OperationRow = 1 order by ID"_s),
        first);
    QCOMPARE(Sum(u"GoodCode = 5103"_s), u"100"_s);
    for (const bool drop : {false, true}) {
        divider.Open(1, TFormMode::Edit);
        if (drop)
            divider.Drop(wheel);
        else
            divider.Retake(wheel, 5101, u"W"_s, {3}, {{3, 0, 0, 0, 0, 2}});
        QCOMPARE(divider.Save(), used);
        QCOMPARE(divider.Delete(1), used); // in the wrong order
        QCOMPARE(Sum(u"OperationType = 25 and OperationCode = 1 and OperationRow = 1"_s), u"4"_s);
    }
    QVERIFY(!m_desk->desk.detailDivisions.CheckGoodDetailDivisionDelete(1, 0, 0));
    QVERIFY(!m_desk->desk.detailDivisions.CheckGoodDetailDivisionDelete(1, wheel, 1));
    QVERIFY(m_desk->desk.detailDivisions.CheckGoodDetailDivisionDelete(1, roll, 0));
    QCOMPARE(divider.Delete(2), QString());
    divider.Open(1, TFormMode::Edit); // a changed part keeps its values, more pieces are numbered on
    divider.Retake(wheel, 5101, u"W"_s, {6}, {{6, 0, 0, 0, 0, 3}});
    QCOMPARE(divider.Save(), QString());
    QCOMPARE(Parts(1).filter(u"W/"_s), (QStringList{u"W/1|2|0|2|0|0|0"_s, u"W/2|2|0|2|0|0|0"_s, u"W/3|2|0|2|0|0|0"_s}));
    QStringList units;
    for (const auto &unit : m_desk->desk.detailDivisions.GoodDetailDivision_FindUnits(u"W"_s))
        units << unit.DetailTitle[0];
    QCOMPARE(units, (QStringList{u"W"_s, u"W/1"_s, u"W/2"_s, u"W/3"_s}));
    divider.Open(1, TFormMode::Edit);
    divider.Drop(wheel);
    QCOMPARE(divider.Save(), QString());
    QCOMPARE(Sum(u"GoodCode = 5101"_s) + u' ' + Sum(u"GoodCode = 5101 and OperationType <> 3"_s), u"12.4 NULL"_s);
}

void TestDivisions::meetsOtherDesks()
{
    Desk other(*m_database, m_database->AnotherConnection());
    other.desk.settings.SignIn(1);
    test::Divider here(m_desk->desk.host);
    test::Divider there(other.desk.host);
    here.Open();
    there.Open();
    there.header.Code = 2;
    for (test::Divider *each : {&here, &there})
        each->Take(5101, u"W"_s, {10}, {{10, 0, 0, 0, 0, 2}});
    QCOMPARE(here.Save(), QString());
    const QString gone = there.Save();
    QVERIFY2(gone.contains(u"«W» (g5101) در انبار «a»"_s), qPrintable(gone));
    QCOMPARE(Sum(u"GoodCode = 5101 and OperationType = 24"_s), u"-10"_s);
    there.header.Code = 1;
    QVERIFY(there.Save().contains(u"کد ۱"_s));
    there.service.Delete_GoodDetailKardexTemp(host::TOperationType::DivisionExit, 2, 1);

    for (test::Divider *each : {&here, &there}) {
        each->Open(1, TFormMode::Edit);
        each->Retake(1, 5101, u"W"_s, {each == &here ? 9.0L : 8.0L}, {{each == &here ? 9.0L : 8.0L, 0, 0, 0, 0, 1}});
    }
    QCOMPARE(there.Save(), QString());
    QVERIFY(here.Save().contains(u"تقسیم جزئیات شماره ۱"_s));
    QCOMPARE(Parts(1), QStringList{u"W/1|8|0|8|0|0|0"_s});
    here.service.Delete_GoodDetailKardexTemp(host::TOperationType::DivisionExit, 1, 1);
    there.Open(1, TFormMode::Edit); // does not come to what is taken
    there.Retake(1, 5101, u"W"_s, {8}, {{7, 0, 0, 0, 0, 1}});
    QVERIFY(there.Save().contains(u"اختلاف -۱"_s));
    QCOMPARE(here.Delete(1), QString());
    QVERIFY(there.Delete(1).contains(u"حذف کرده است"_s));
}

void TestDivisions::keepsTypedPartsApart()
{
    host::DetailDivisionService &service = m_desk->desk.detailDivisions;
    test::Divider divider(m_desk->desk.host);
    divider.Open();
    divider.Take(5105, u"S"_s, {3.75L, 0, 0, 2.5L, 1.5L, 1}, {{3.75L, 0, 0, 2.5L, 1.5L, 1}});
    const int row = divider.Take(5101, u"W"_s, {3}, {{1, 0, 0, 0, 0, 1}, {2, 0, 0, 0, 0, 2}});
    service.GoodDetailDivisionDetailItemsTemp_Begin(1, row);
    const int added = service.GoodDetailDivisionDetailItemsTempInsertRow({1, row, 0, {6, 8, 0, 2, 1.5L, 4}, true});
    QCOMPARE(added, 4); // the parts of a division are numbered through
    QCOMPARE(service.GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amounts(row, 1, 0, false), 2);
    QCOMPARE(service.GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amounts(row, 1.5L, 2, true), 4);
    QCOMPARE(service.GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_LengthWidth(row, 2, 1.5L, true), 4);
    QCOMPARE(service.GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_LengthWidth(row, 2, 1.5L, false), 0);
    QCOMPARE(service.GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amount3(row, 4, true), 4);
    QCOMPARE(service.GoodDetailDivisionDetailItemsTemp_Get_Amount1_By_OperationRow(2), 1.0L);
    QCOMPARE(service.GoodDetailDivisionDetailItemsTemp_Get_Amount3_By_OperationRow(4), 4.0L);
    QCOMPARE(service.GoodDetailDivisionDetailItemsTemp_Sum(row).Amount1, 9.0L);
    service.GoodDetailDivisionDetailItemsTempUpdateRow({1, row, 4, {7, 0, 0, 0, 0, 1}, false});
    QVERIFY(service.GoodDetailDivisionDetailItemsTemp_Row(row, 4)->Amounts.Amount1 == 7);
    const auto accepted = [&] {
        return m_database->Rows(u"select OperationRow from #GoodDetailDivisionDetailItemsTemp where Tmp = 0 and "
                                "DivisionRow = %1 order by ID"_s.arg(row));
    };
    service.GoodDetailDivisionDetailItemsTemp_Discard();
    QCOMPARE(accepted(), (QStringList{u"2"_s, u"3"_s}));
    service.GoodDetailDivisionDetailItemsTemp_Begin(1, row);
    service.GoodDetailDivisionDetailItemsTempDeleteRow(row, 2);
    service.GoodDetailDivisionDetailItemsTemp_Update_Tmp(row, 1, 0);
    QCOMPARE(accepted(), QStringList{u"3"_s});
    QVERIFY(service.GoodDetailDivisionDetailTemp_Row(row)->Source.OnHand.Amount1 == 12.4L);
    QCOMPARE(service.GoodDetailDivisionDetailTemp_Get_Comment(row), u"c"_s);

    QVERIFY(!divider.Save().isEmpty()); // 2 of the 3
    divider.Drop(row);
    QCOMPARE(divider.Save(), QString());
    host::Dataset list(m_desk->connection);
    for (const auto &[from, to, found] : {std::tuple{u""_s, u""_s, 1},
                                          {u"1405/02/03"_s, u"1405/02/03"_s, 1},
                                          {u"1405/02/04"_s, u""_s, 0},
                                          {u""_s, u"1405/02/02"_s, 0}}) {
        service.GoodDetailDivision_GetALL(list, {from, to});
        QCOMPARE(list.RecordCount(), found);
    }
}

/// Not before its units came, not behind the use of its parts; the opening stock was always there.
void TestDivisions::keepsItsDay()
{
    test::Divider divider(m_desk->desk.host);
    divider.Open();
    divider.Take(5101, u"W"_s, {4}, {{4, 0, 0, 0, 0, 2}});
    QCOMPARE(divider.Save(), QString());
    divider.Open();
    divider.header.Date = u"1405/02/02"_s;
    divider.Take(5101, u"W/1"_s, {1.5L}, {{1.5L, 0, 0, 0, 0, 1}});
    QCOMPARE(
        divider.Save(),
        u"کاربر گرامی، این اقلام در تاریخ تقسیم (۱۴۰۵/۰۲/۰۲) به این مقدار در انبار نبوده‌اند. تاریخ را اصلاح کنید.\n«W/1» (g، انبار «a»): آخرین ورود در ۱۴۰۵/۰۲/۰۳"_s);
    divider.header.Date = u"1405/02/03"_s;
    QCOMPARE(divider.Save(), QString());
    divider.Open(1, TFormMode::Edit);
    divider.header.Date = u"1405/02/04"_s;
    QVERIFY(divider.Save().endsWith(u"«W» (g5101، انبار «a»): نخستین بار در ۱۴۰۵/۰۲/۰۳"_s));
    divider.header.Date = u"1404/01/01"_s;
    QCOMPARE(divider.Save(), QString());
}

void TestDivisions::sendsAsManyStatementsForManyParts()
{
    QSet<quint64> sent;
    test::Divider divider(m_desk->desk.host);
    for (const int parts : {2, 500}) {
        divider.Open();
        QList<TAmounts> typed(parts, {0.01L, 0, 0, 0, 0, 1});
        typed << TAmounts{5, 0, 0, 0, 0, host::Quantity(parts)};
        divider.Take(5101, u"W"_s, {5 + parts * 0.01L}, typed);
        const quint64 before = host::StatementsSent();
        QCOMPARE(divider.Save(), QString());
        divider.Open(divider.header.Code, TFormMode::Edit);
        QCOMPARE(divider.Save(), QString());
        QCOMPARE(Parts(divider.header.Code).size(), 2 * parts);
        QCOMPARE(divider.Delete(divider.header.Code), QString());
        sent << host::StatementsSent() - before;
    }
    QCOMPARE(sent.size(), 1);
}

REGISTER_TEST(TestDivisions)
#include "tst_divisions.moc"
