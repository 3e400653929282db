#include "desk/services/detail_sql.h"
#include "division/division_save.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "tests/desk/document_fixture.h"
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

/// One desk at work on a division.
struct Divider
{
    explicit Divider(Desk &used) : desk(used), service(used.desk.detailDivisions) {}

    void Open(int code, TFormMode mode)
    {
        header = {code, u"1405/02/03"_s, u"cut"_s, 0};
        openedAs = mode;
        if (mode == TFormMode::Edit) {
            TGoodDetailDivision_Rec record;
            QVERIFY(desk.serials.GoodDetailDivision_Fill(code, record));
            header.Revision = service.GoodDetailDivision_Header(code)->Revision;
            return;
        }
        service.CreateGoodDetailDivisionDetailTempTable();
        service.CreateGoodDetailDivisionDetailItemsTempTable();
    }
    /// Takes of a unit, as the items screen does on OK; each part has the amounts of its pieces together.
    int Take(int good, const QString &serial, const TAmounts &taken, const QList<TAmounts> &parts, bool waste = false)
    {
        return Retake(service.GetOperationRow(), good, serial, taken, parts, waste);
    }
    int Retake(int row, int good, const QString &serial, const TAmounts &taken, const QList<TAmounts> &parts,
               bool waste = false)
    {
        host::TDocumentLine line{good, 1, quint8(good == 5103 ? 3 : 1), 24, false, header.Code, row, 0};
        const int value = host::Scalar(desk.connection, u"select MIN(v.ID) from GoodDetailValues v inner join "
                                                        "GoodDetailValueDetails d on d.DetailValueID = v.ID where "
                                                        "v.GoodCode = %1 and d.[Value] = N'%2'"_s.arg(good)
                                                            .arg(serial))
                              .toInt();
        const auto source = service.GoodDetailDivision_Source(line, value);
        if (!source)
            return 0;
        service.GoodDetailDivisionDetailItemsTemp_Begin(header.Code, row);
        service.GoodDetailDivisionDetailItemsTempDeleteAllRow(row);
        for (const TAmounts &part : parts)
            service.GoodDetailDivisionDetailItemsTempInsertRow({header.Code, row, 0, part, waste});
        service.GoodDetailDivisionDetailTempDelete(header.Code, row);
        const host::TDivisionRow accepted{header.Code, row, *source, u"a"_s, u"g"_s, taken, u"c"_s};
        service.InsertGoodDetailDivisionDetailTemp_Row(accepted);
        service.GoodDetailDivisionDetailItemsTemp_Update_Tmp(row, 1, 0);
        service.Insert_GoodDetailKardexExit_Temp_Row(accepted);
        return row;
    }
    void Drop(int row)
    {
        service.Delete_GoodDetailKardexTemp(host::TOperationType::DivisionExit, header.Code, row);
        service.GoodDetailDivisionDetailTempDelete(header.Code, row);
        service.GoodDetailDivisionDetailItemsTempDelete(header.Code, row);
    }
    QString Save()
    {
        return Told([&] { division::Save(desk.desk.host, header, openedAs); });
    }
    QString Delete(int code)
    {
        return Told([&] { division::Delete(desk.desk.host, code); });
    }
    template <typename Step> static QString Told(const Step &step)
    {
        try {
            step();
            return {};
        } catch (const DivisionRefused &refused) {
            return refused.Text();
        }
    }

    Desk &desk;
    host::DetailDivisionService &service;
    host::TDivisionHeader header;
    TFormMode openedAs = TFormMode::New;
};

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

private:
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
    Divider divider(*m_desk);
    divider.Open(division::NewCode(m_desk->desk.host), TFormMode::New);
    const auto before = m_database->Rows(u"select Amount1 from GoodStoreStock where GoodCode = %1"_s.arg(good));
    QCOMPARE(divider.Take(good, unit, taken, parts), 1);
    QCOMPARE(divider.Save(), QString());
    QTEST(Parts(1), "ledger");
    QCOMPARE(m_database->Rows(u"select Amount1 from GoodStoreStock where GoodCode = %1"_s.arg(good)), before);
    QCOMPARE(m_database->Scalar(u"select count(*) from Kardex where OperationType in (24, 25)"_s).toInt(),
             1 + int(parts.size()));
    QCOMPARE(divider.Delete(1), QString());
    QCOMPARE(m_database->Scalar(u"select count(*) from GoodDetailValueDetails where [Value] like N'%/%'"_s).toInt(), 0);
    QCOMPARE(m_database->Rows(u"select OperationType from GoodDetailKardex where GoodCode = %1"_s.arg(good)),
             QStringList{u"3"_s});
}

REGISTER_TEST(TestDivisions)
#include "tst_divisions.moc"
