// What the ledger of details lets through, and what becomes of detail values that are given up.

#include "host/data/query.h"
#include "tests/gooddetail/shop_fixture.h"
#include "tests/support/test_main.h"

#include <QtTest>

using fixture::Desk;
using host::TAmounts;

class TestDetailLedger : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<test::Database>();
        fixture::Furnish(*m_database);
        m_desk = std::make_unique<Desk>(*m_database);
    }
    void cleanup()
    {
        m_desk.reset();
        m_database.reset();
    }
    void holdsReturnsToTheirSale();
    void measuresAndAmounts_data();
    void measuresAndAmounts();
    void freesSerialsGivenUp_data();
    void freesSerialsGivenUp();
    void keepsWhatAnotherDeskDropped();
    void knowsTheLine();
    void cleansBarcodes();

private:
    QString Ledger(const QString &what, const QString &where = u"1 = 1"_s) const
    {
        return m_database->Rows(u"select %1 from GoodDetailKardex where %2"_s.arg(what, where)).join(u' ');
    }
    QString Buy(int code, const QString &serial, TAmounts amounts, quint8 unitType = 1)
    {
        auto line = Desk::Line(1, code);
        line.UnitType = unitType;
        auto batch = m_desk->Batch(line, serial);
        batch.Amounts = amounts;
        return m_desk->Enter(line, batch).join(u' ');
    }
    QString Take(host::TDocumentLine line, qint64 serial, TAmounts amounts, quint8 unitType = 1)
    {
        line.UnitType = unitType;
        m_desk->desk.detailMovements.ExitGoodDetails_Fill(line);
        m_desk->desk.serialBatches.ChooseSerials(line, {serial, serial}, amounts);
        m_desk->desk.detailMovements.ExitGoodDetails_Keep(line);
        return m_desk->Save(line).join(u' ');
    }
    std::unique_ptr<test::Database> m_database;
    std::unique_ptr<Desk> m_desk;
};

void TestDetailLedger::holdsReturnsToTheirSale()
{
    const auto buy = Desk::Line(1, 1);
    const auto sale = Desk::Line(2, 50);
    QCOMPARE(m_desk->Enter(buy, m_desk->Range(buy, {1, 3})), QStringList());
    QCOMPARE(m_desk->Exit(sale, {1, 3}), QStringList());
    // Two desks return all three under serials of their own, neither is saved when the other one enters.
    Desk other(*m_database, m_database->AnotherConnection());
    const auto back = [&](Desk *desk) { return Desk::Line(4, desk == &other ? 61 : 60, 1, 1, 50); };
    for (Desk *desk : {m_desk.get(), &other}) {
        const qint64 first = desk == &other ? 201 : 101;
        desk->serials.EnterGoodDetail_Open();
        QCOMPARE(desk->desk.serialBatches.EnterSerials(desk->Range(back(desk), {first, first + 2})).Written, 3);
    }
    for (Desk *desk : {m_desk.get(), &other})
        desk->desk.detailMovements.EnterGoodDetails_Keep(desk->serials.EnterGoodDetail_Table(), back(desk));
    QCOMPARE(m_desk->Save(Desk::Line(4, 60)), QStringList());
    QCOMPARE(other.Save(Desk::Line(4, 61)), QStringList{u"not of it 203 red"_s});
    QCOMPARE(m_desk->Delete(sale), QStringList{u"returned 103 red"_s});
    other.desk.detailMovements.GoodDetailsOperation_Discard(4, 61);
    // The same serial back: its sale stays, and so does each serial of it.
    QCOMPARE(m_desk->Delete(Desk::Line(4, 60)), QStringList());
    const auto same = Desk::Line(4, 62, 1, 1, 50);
    QCOMPARE(m_desk->Enter(same, m_desk->Range(same, {1, 1})), QStringList());
    QVERIFY(!m_desk->Delete(sale).isEmpty());
    m_desk->desk.detailMovements.ExitGoodDetails_Fill(sale);
    m_desk->desk.serialBatches.ChooseSerials(sale, {1, 1}, {});
    m_desk->desk.detailMovements.ExitGoodDetails_Keep(sale);
    QVERIFY(!m_desk->Save(sale).isEmpty());
    m_desk->desk.detailMovements.GoodDetailsOperation_Discard(2, 50);
    QCOMPARE(Ledger(u"SUM(Amount1)"_s), u"1"_s);
    QVERIFY(m_desk->desk.detailMovements.IsReturned(sale, 1));
    m_database->Exec(u"update GoodDetailKardex set ForeignOperationCode = 1 where OperationType = 4"_s);
    QVERIFY(!m_desk->desk.detailMovements.IsReturned(buy, 1)); // a sale 1 is meant, not the purchase
}

void TestDetailLedger::measuresAndAmounts_data()
{
    QTest::addColumn<int>("unitType");
    QTest::addColumn<QList<double>>("in");
    QTest::addColumn<QList<double>>("out");
    QTest::addColumn<QString>("left");
    using Row = QList<double>;
    QTest::newRow("roll") << 1 << Row{100, 0, 100} << Row{30, 0, 30} << u"100|0|0|NULL"_s;
    QTest::newRow("packed") << 3 << Row{40, 4, 40, 0, 0, 10} << Row{10, 1, 10, 0, 0, 10} << u"40|4|10|NULL"_s;
    QTest::newRow("area") << 5 << Row{24, 0, 24, 4, 2, 3} << Row{4, 0, 4, 2, 2, 1} << u"24|0|3|2"_s;
}

void TestDetailLedger::measuresAndAmounts()
{
    QFETCH(int, unitType);
    QFETCH(QList<double>, in);
    QFETCH(QList<double>, out);
    QFETCH(QString, left);
    const auto amounts = [](const QList<double> &a) {
        return TAmounts{a[0], a[1], a[2], a.value(3), a.value(4), a.value(5)};
    };
    QCOMPARE(Buy(1, u"7"_s, amounts(in), quint8(unitType)), QString());
    for (int code = 50; code < 53; ++code) // three times: what is measured is not used up
        QCOMPARE(Take(Desk::Line(2, code), 7, amounts(out), quint8(unitType)), QString());
    auto back = Desk::Line(4, 60, 1, 1, 50);
    for (; back.ForeignOperationCode < 53; ++back.ForeignOperationCode, ++back.OperationCode) {
        back.UnitType = quint8(unitType);
        m_desk->serials.EnterGoodDetail_Open();
        auto batch = m_desk->Batch(back, u"7"_s);
        batch.Amounts = amounts(out);
        batch.Amounts.Amount1 += 1;
        QCOMPARE(Desk::Left(m_desk->desk.serialBatches.JudgeSerials(batch)), QStringList{u"7:7"_s});
        batch.Amounts.Amount1 -= 1;
        QCOMPARE(m_desk->Enter(back, batch), QStringList());
    }
    const auto next = Desk::Line(2, 70);
    auto line = next;
    line.UnitType = quint8(unitType);
    m_desk->desk.detailMovements.ExitGoodDetails_Fill(line);
    const QString lengths = u"(select MIN([Length]) from GoodDetailKardex where OperationType = 2 and [Length] > 0)"_s;
    QCOMPARE(m_database->Rows(
                 u"select Amount1, Amount2, Amount3, %1 from GoodDetailKardexExit_Temp where Tmp = 1"_s.arg(lengths)),
             QStringList{left});
}

void TestDetailLedger::freesSerialsGivenUp_data()
{
    QTest::addColumn<QString>("how");
    for (const char *how : {"row", "all", "cancelled", "kept without", "discarded", "deleted"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void TestDetailLedger::freesSerialsGivenUp()
{
    QFETCH(QString, how);
    const auto line = Desk::Line(1, 1);
    auto &movements = m_desk->desk.detailMovements;
    auto &serials = m_desk->serials;
    serials.EnterGoodDetail_Open();
    const auto keep = [&] { movements.EnterGoodDetails_Keep(serials.EnterGoodDetail_Table(), line); };
    QCOMPARE(m_desk->desk.serialBatches.EnterSerials(m_desk->Range(line, {1, 3})).Written, 3);
    if (how == u"kept without" || how == u"discarded" || how == u"deleted")
        keep();
    if (how == u"row")
        for (int id = 1; id <= 3; ++id)
            serials.EnterGoodDetailRow_Delete(id);
    else if (how == u"all" || how == u"kept without")
        serials.EnterGoodDetailRow_DeleteAll(1, 1, {});
    else if (how == u"discarded")
        movements.GoodDetailsOperation_Discard(1, 1);
    else if (how == u"deleted")
        QCOMPARE(m_desk->Save(line) + m_desk->Delete(line), QStringList());
    if (how == u"kept without")
        keep();
    const auto again = Desk::Line(1, 2);
    QCOMPARE(m_desk->Enter(again, m_desk->Range(again, {2, 4}, u"blue"_s)), QStringList());
    QCOMPARE(
        m_database->Rows(u"select [Value], COUNT(*) from GoodDetailValueDetails where DetailID = 2 group by [Value]"_s),
        QStringList{u"blue|3"_s});
}

void TestDetailLedger::keepsWhatAnotherDeskDropped()
{
    const auto line = Desk::Line(1, 1);
    m_desk->serials.EnterGoodDetail_Open();
    QCOMPARE(m_desk->desk.serialBatches.EnterSerials(m_desk->Range(line, {1, 4})).Written, 4);
    Desk other(*m_database, m_database->AnotherConnection());
    for (int id = 1; id <= 3; ++id)
        QVERIFY(other.desk.detailValues.DeleteUnusedDetailValue(id));
    const int three = other.desk.detailValues.ResolveDetailValue(5001, other.Details(u"3"_s));
    m_desk->desk.detailMovements.EnterGoodDetails_Keep(m_desk->serials.EnterGoodDetail_Table(), line);
    QCOMPARE(m_desk->Save(line), QStringList());
    QCOMPARE(
        m_database->Rows(u"select d.[Value], COUNT(*) from GoodDetailKardex k inner join GoodDetailValueDetails d on "
                         "d.DetailValueID = k.DetailValueID group by d.[Value] order by d.[Value]"_s),
        (QStringList{u"1|1"_s, u"2|1"_s, u"3|1"_s, u"4|1"_s, u"red|4"_s}));
    QCOMPARE(Ledger(u"COUNT(*)"_s, u"DetailValueID = %1"_s.arg(three)), u"1"_s);
}

void TestDetailLedger::knowsTheLine()
{
    auto &movements = m_desk->desk.detailMovements;
    auto &goods = m_desk->desk.goodDetails;
    const auto opened = host::TOperationType::OpeningStock;
    auto line = Desk::Line(3, 5001);
    auto batch = m_desk->Batch(line, u"1"_s);
    QCOMPARE(m_desk->Enter(line, batch), QStringList());
    QVERIFY(goods.ExistsGoodDetailInsertedForOperation(5001, opened));
    m_desk->serials.EnterGoodDetail_Open();
    movements.EnterGoodDetails_Keep(m_desk->serials.EnterGoodDetail_Table(), line); // emptied
    QVERIFY(!goods.ExistsGoodDetailInsertedForOperation(5001, opened));
    movements.GoodDetailsOperation_Discard(3, 5001);
    auto changed = line; // another good on the line
    changed.GoodCode = 5002;
    movements.EnterGoodDetails_Load(m_desk->serials.EnterGoodDetail_Table(), changed);
    m_desk->serials.EnterGoodDetail_Refresh();
    QVERIFY(m_desk->serials.EnterGoodDetail_QRY.IsEmpty());
    // Nothing chosen: nothing to forget in another store.
    const auto sale = Desk::Line(2, 1);
    QCOMPARE(m_desk->Exit(sale, {1, 1}), QStringList());
    movements.ExitGoodDetails_Fill(sale);
    m_desk->desk.serialBatches.ChooseSerials(sale, {1, 1}, {});
    movements.ExitGoodDetails_Keep(sale);
    QVERIFY(!movements.ChangeStore(sale, 2));
    QCOMPARE(m_desk->Save(sale), QStringList());
    QCOMPARE(Ledger(u"SUM(Amount1)"_s), u"1"_s);
    // A row without amounts moves nothing, and a value without details is in the stock.
    batch = m_desk->Batch(Desk::Line(1, 9), u"5"_s);
    batch.Amounts = {};
    QCOMPARE(m_desk->Enter(batch.Line, batch), QStringList());
    QCOMPARE(Ledger(u"COUNT(*)"_s, u"OperationCode = 9"_s), u"0"_s);
    m_database->Exec(u"delete from GoodDetailValueDetails where DetailValueID = 1"_s);
    m_desk->serials.GoodDetail_Select(5001, 1, 1);
    QCOMPARE(m_desk->serials.Exist_Detail_QRY.RecordCount(), 1);
}

void TestDetailLedger::cleansBarcodes()
{
    m_database->Exec(
        u"insert DetailTypes(Title, DetailType) values (N'b', 6) insert GoodDetailRelation(GoodCode, DetailID) "
        "values (5003, 4)"_s);
    const auto resolve = [&](const QString &barcode) {
        return m_desk->desk.detailValues.ResolveDetailValue(5003, {{4, 2}, {barcode, u"red"_s}});
    };
    QCOMPARE(resolve(u" ۱۲\u200F"_s), resolve(u"12"_s));
    QVERIFY(m_desk->desk.goodDetails.CheckBarcodeInGoodDetail(u"۱۲ "_s));
}

REGISTER_TEST(TestDetailLedger)
#include "tst_detail_ledger.moc"
