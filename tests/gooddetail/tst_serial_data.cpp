// What the data module answers, the texts that open its screens, and desks beside each other.

#include "gooddetail/opening_texts.h"
#include "host/data/database_error.h"
#include "host/data/query.h"
#include "tests/gooddetail/shop_fixture.h"
#include "tests/support/test_host.h"
#include "tests/support/test_main.h"

#include <QRandomGenerator>
#include <QtTest>

using fixture::Desk;

class TestSerialData : public QObject
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
    void packsAndParses();
    void ordersTheDetails();
    void offersWhatAKindHas_data();
    void offersWhatAKindHas();
    void checksSerials();
    void listsGoodsOfAMode_data();
    void listsGoodsOfAMode();
    void writesEnterRows();
    void desksDoNotMeet();
    void keepsAndReopensLines();
    void readsADivision();
    void sellsOnce();
    void givesBackWhatThePurchaseBrought();
    void ledgerHoldsWhateverComes();

private:
    QString Sum(const QString &where = u"1 = 1"_s) const
    {
        return m_database->Rows(u"select ISNULL(SUM(Amount1), 0) from GoodDetailKardex where "_s + where).value(0);
    }
    std::unique_ptr<test::Database> m_database;
    std::unique_ptr<Desk> m_desk;
};

void TestSerialData::packsAndParses()
{
    using namespace good_detail;
    EnterLineOpening line;
    for (int i = 0; i < 12; ++i)
        line.Numbers[size_t(i)] = i - 3;
    line.Text13 = u"a;b"_s;
    line.Text18 = u"7;x"_s;
    line.Amount = -2.005L;
    line.Number21 = 9;
    const QString packed = Pack(line);
    QCOMPARE(packed, u"-3;-2;-1;0;1;2;3;4;5;6;7;8;a;b;0;;0;;7;x;-2.01;0;9"_s);
    const auto again = ParseEnterLine(packed);
    QVERIFY(again && again->Text13 == u"a;b" && again->Text18 == u"7;x" && again->Number21 == 9);
    QCOMPARE(Pack(*again), packed);
    QCOMPARE(Pack(ChosenDetail{1, 2, 3, 0.5L, 12.345L}), u"1;2;3;0.50;12.35;0.00;0.00;0.00;"_s);
    QVERIFY(ParseChosen(u"1;2;3;0.50;12.35;0.00;0.00;0.00;"_s)->Amount2 == 12.35L);
    QCOMPARE(Pack(DivisionItemsOpening{{1, 2, 3}, {4, 5, 6, 7, 8}}), u"1;2;3;4.00;5.00;6.00;7.00;8.00;0;0;2;1"_s);
    QCOMPARE(Pack(SelectOpening{1, 2, u"1,2"_s, 3}), u"1;2;1,2;3"_s);
    QCOMPARE(Pack(*ParseExit(u"1;2;3;4;5;6;7;8;9;10;x;y"_s)), u"1;2;3;4;5;6;7;8;9;10;x;y"_s);
    QCOMPARE(Pack(*ParseEnter(u"1;2;3;4;5;6;a;b;c;d;7;e"_s)), u"1;2;3;4;5;6;a;b;c;d;7;e"_s);
    for (const QString &bad :
         {u""_s, u"1;2;3"_s, u"1;x;3;4.00;5.00;6.00;7.00;8.00;0;0;2;1"_s, u"1;2;3;4.00;5.00;6.00;7.00;nan;0;0;2;1"_s})
        QVERIFY(!ParseDivisionItems(bad));
}

void TestSerialData::ordersTheDetails()
{
    m_database->Exec(u"insert DetailTypes(Title, DetailType) values (N'b', 6), (N'n', 4), (N'd', 5), (N't', 7) insert "
                     "GoodDetailRelation(GoodCode, DetailID) values (5001, 6), (5001, 4), (5001, 5), (5002, 4), "
                     "(5002, 3), (5002, 2), (5002, 1)"_s);
    std::array<int, 5> d{};
    const auto order = [&](int good) {
        m_desk->serials.GetGoodsDetail(good, d[0], d[1], d[2], d[3], d[4]);
        const auto service = m_desk->desk.detailValues.DetailsOf(good).DetailIDs;
        return d == service ? u"%1 %2 %3 %4 %5"_s.arg(d[0]).arg(d[1]).arg(d[2]).arg(d[3]).arg(d[4]) : u"differ"_s;
    };
    QCOMPARE(order(5001), u"1 4 3 2 6"_s); // the sixth is left out
    QCOMPARE(order(5003), u"2 0 0 0 0"_s);
    QCOMPARE(order(9), u"0 0 0 0 0"_s);
}

void TestSerialData::offersWhatAKindHas_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("required");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("items");
    QTest::newRow("required, to choose") << 1 << true << 2 << u"انتخاب کنید...|قرمز|آبی"_s;
    QTest::newRow("to choose") << 1 << false << 2 << u"انتخاب کنید...|خالی...|قرمز|آبی"_s;
    QTest::newRow("to enter") << 1 << false << 1 << u"خالی...|قرمز|آبی"_s;
    QTest::newRow("text") << 2 << false << 2 << u"قرمز|آبی"_s;
    QTest::newRow("number") << 4 << false << 2 << QString();
}

void TestSerialData::offersWhatAKindHas()
{
    QFETCH(int, kind);
    QFETCH(bool, required);
    QFETCH(int, mode);
    m_database->Exec(u"insert DetailTypes(Title, DetailType, IsRequired, DefaultValue) values (N'نوع', %1, %2, N'1'), "
                     "(N'تهی', %1, 0, N'1') insert DetailTypesItems(DetailID, Row, [Value]) values (4, 1, N'قرمز'), "
                     "(4, 2, N'آبی')"_s.arg(kind)
                         .arg(int(required)));
    const TGoodDetailData data = m_desk->serials.GetGoodDetailData(4, mode);
    QTEST(data.Items.join(u'|'), "items");
    QCOMPARE(data.IsRequired, required);
    QCOMPARE(data.DefaultValue, kind == 4 ? QString() : u"1"_s);
    QVERIFY(m_desk->serials.GetGoodDetailData(5, mode).Items.isEmpty());
    QVERIFY(!m_desk->serials.GetGoodDetailData(77, mode).Found);
    QCOMPARE(m_desk->serials.GetGoodDetailTitleLength(4) * 10 + m_desk->serials.GetGoodDetailTitleLength(77), 30);
    QCOMPARE(m_desk->serials.GetGoodDetailType(4) * 10 + m_desk->serials.GetGoodDetailType(77), kind * 10);
}

void TestSerialData::checksSerials()
{
    auto &serials = m_desk->serials;
    const auto buy = Desk::Line(1, 1);
    QCOMPARE(m_desk->Enter(buy, m_desk->Range(buy, {9, 12})), QStringList());
    QCOMPARE(m_desk->Exit(Desk::Line(2, 1), {11, 11}), QStringList());
    QCOMPARE(m_desk->Exit(Desk::Line(2, 2), {9, 9}), QStringList());
    m_database->Exec(u"insert GoodDetailKardexEnter_Temp(DetailValueID, Amount1) values (1, 1)"_s);
    QString list = u"former"_s;
    int id = 0;
    QVERIFY(serials.CheckSerialDetailValueID_1(u"9"_s));
    QVERIFY(!serials.CheckSerialDetailValueID_2(u"9"_s, id));
    QCOMPARE(id, 1);
    QVERIFY(!serials.CheckSerialDetailValueID_1(u"11"_s));
    QVERIFY(serials.CheckSerialRangeDetailValueID(u"0009"_s, u"12"_s, list));
    QCOMPARE(list, u"9,10,12"_s);
    QVERIFY(!serials.CheckSerialRangeDetailValueID(u"12"_s, u"9"_s, list));
    QCOMPARE(list, QString());
    QVERIFY(!serials.CheckSerialRangeDetailValueID(u"x"_s, u"8"_s, list));
    QVERIFY(serials.CheckSerialRangeDetailValueID(u"x"_s, u"10"_s, list));
    QVERIFY(!serials.CheckSerialDetailValueID_2(u"77"_s, id) && id == 0);
}

void TestSerialData::listsGoodsOfAMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("codes");
    QTest::newRow("all without serials") << 0 << QString() << u"5003 5004"_s;
    QTest::newRow("filter with its own AND") << 0 << u" AND Code > 5003"_s << u"5004"_s;
    QTest::newRow("without formula") << 1 << QString() << u"5003"_s;
    QTest::newRow("without formula, filtered") << 1 << u"Code > 5003"_s << QString();
    QTest::newRow("square metres") << 2 << u"Code > 1"_s << u"5004"_s;
    QTest::newRow("another mode knows no filter") << 7 << u"nonsense"_s << u"5003 5004"_s;
}

void TestSerialData::listsGoodsOfAMode()
{
    m_database->Exec(u"insert Units(Code, Name, [Type]) values (6, N'm2', 0) insert GoodInf(Code, GrpCode, Name, Unit, "
                     "Store, Meghdar_Formool) values (5004, 5, N'w', 6, 1, 2)"_s);
    test::TestHost host({m_database->Main(), m_database->GoodsList(), m_database->Scales()});
    host.settings.record.SquareMetreUnit = 6;
    TSerial_DM serials(host);
    QFETCH(int, mode);
    QFETCH(QString, filter);
    serials.GoodDetail_SelectGood_Get(u" ,Code "_s, filter, quint8(mode));
    QStringList codes;
    for (int i = 0; i < serials.Exist_QRY.RecordCount(); ++i)
        codes << serials.Exist_QRY.FieldAt(i, u"Code").toString();
    QTEST(codes.join(u' '), "codes");
    QVERIFY(serials.CheckGoodUnit_MetreMoraba(5004) && !serials.CheckGoodUnit_MetreMoraba(5003));
}

void TestSerialData::writesEnterRows()
{
    TSerial_DM &serials = m_desk->serials;
    serials.EnterGoodDetail_Open();
    TEnterGoodDetail_Rec row;
    row.DetailTitle[0] = u"الف"_s;
    row.Amounts = {1.5L, 0, 1.5L};
    row.StoreCode = 1;
    row.OperationType = 3;
    serials.EnterGoodDetailRow_Insert(row);
    row.DetailTitle[0] = u"ب"_s;
    serials.EnterGoodDetailRow_Insert(row);
    row.ID = 77; // there is none: the current row is the one
    row.Amounts.Amount1 = 9;
    serials.EnterGoodDetail_QRY.SetCurrentRow(0);
    serials.EnterGoodDetailRow_Update(row);
    const auto rows = [&] {
        return m_database->Rows(u"select DetailTitle1, Amount1, Tmp from "_s + serials.EnterGoodDetail_Table())
            .join(u' ');
    };
    QCOMPARE(rows(), u"ب|9|1 ب|1.5|1"_s);
    serials.EnterGoodDetailRow_DeleteAll(1, 3, {0});
    QVERIFY(!rows().isEmpty());
    serials.EnterGoodDetailRow_Delete(1);
    QCOMPARE(rows(), u"ب|1.5|1"_s);
    serials.EnterGoodDetail_Open();
    QCOMPARE(rows(), QString());
}

void TestSerialData::desksDoNotMeet()
{
    auto other = std::make_unique<Desk>(*m_database, m_database->AnotherConnection());
    const auto line = Desk::Line(1, 1);
    for (Desk *desk : {m_desk.get(), other.get()}) {
        desk->serials.EnterGoodDetail_Open();
        const auto batch = desk == other.get() ? desk->Range(line, {5, 9}) : desk->Range(line, {1, 3});
        QCOMPARE(desk->desk.serialBatches.EnterSerials(batch).left.size(), 0);
        desk->desk.detailMovements.EnterGoodDetails_Keep(batch.WorkingTable, line);
    }
    QVERIFY(m_desk->serials.EnterGoodDetail_Table() != other->serials.EnterGoodDetail_Table());
    m_desk->serials.EnterGoodDetail_Refresh();
    QCOMPARE(m_desk->serials.EnterGoodDetail_QRY.RecordCount(), 3);
    // What the other one has kept and not saved is taken, until nothing is heard of it.
    const auto taken = [&] { return m_desk->desk.serialBatches.JudgeSerials(m_desk->Range(line, {5, 9})).left.size(); };
    const auto silent = [&](int hours) {
        m_database->Exec(
            u"update DetailDesks set SeenAt = DATEADD(hour, -%1, GETDATE()) where Number = 2"_s.arg(hours));
    };
    QCOMPARE(taken(), 5);
    m_database->Exec(u"update GoodDetailKardexEnter_Temp set GoodCode = 5003 where ComIndex = 2"_s);
    QVERIFY(m_desk->desk.goodDetails.CheckGoodDetailKardexExists(5003));
    silent(1);
    QVERIFY(!m_desk->desk.goodDetails.CheckGoodDetailKardexExists(5003));
    m_database->Exec(u"update GoodDetailKardexEnter_Temp set GoodCode = 5001 where ComIndex = 2"_s);
    QCOMPARE(taken(), 0);
    QVERIFY(!m_desk->serials.CheckSerialDetailValueID_1(u"5"_s));
    // Awake, it has them again and saves them.
    other->serials.EnterGoodDetail_Open();
    other->desk.detailMovements.EnterGoodDetails_Load(other->serials.EnterGoodDetail_Table(), line);
    other->serials.EnterGoodDetail_Refresh();
    QCOMPARE(other->serials.EnterGoodDetail_QRY.RecordCount(), 5);
    QCOMPARE(taken(), 5);
    silent(1);
    QCOMPARE(taken(), 0);
    QCOMPARE(other->Save(line), QStringList());
    QCOMPARE(Sum(), u"5"_s);
    // Away for days it has lost what it kept: that is told, until the document is given up.
    other->desk.detailMovements.EnterGoodDetails_Keep(other->serials.EnterGoodDetail_Table(), line);
    silent(1000);
    {
        Desk third(*m_database, m_database->AnotherConnection());
        QCOMPARE(third.desk.detailDesk.Number(), 3);
        QVERIFY_THROWS_EXCEPTION(host::DatabaseError, other->Save(line));
        QVERIFY_THROWS_EXCEPTION(host::DatabaseError, other->Save(line));
        other->desk.detailMovements.GoodDetailsOperation_Discard(1, 1);
        QCOMPARE(other->Save(line), QStringList());
        QCOMPARE(other->desk.detailDesk.Number(), 4);
    }
    QCOMPARE(m_database->Rows(u"select Number from DetailDesks order by Number"_s), (QStringList{u"1"_s, u"4"_s}));
    QCOMPARE(m_desk->Delete(line), QStringList());
    QCOMPARE(Sum(), u"0"_s);
}

void TestSerialData::keepsAndReopensLines()
{
    Desk &desk = *m_desk;
    auto &movements = desk.desk.detailMovements;
    const auto buy = Desk::Line(1, 1);
    QCOMPARE(desk.Enter(buy, desk.Range(buy, {1, 5})), QStringList());
    QCOMPARE(desk.Enter(buy, desk.Range(buy, {4, 6})), (QStringList{u"4:1"_s, u"5:1"_s})); // reopened with its rows
    QCOMPARE(Sum(), u"6"_s);
    const auto sale = Desk::Line(2, 1);
    const auto chosen = [&](const host::TDocumentLine &line) {
        movements.ExitGoodDetails_Fill(line);
        return m_database
            ->Rows(u"select DetailTitle1 from GoodDetailKardexExit_Temp where Selected = 1 and "_s +
                   movements.ExitGoodDetails_Condition(line) + u" order by ID"_s)
            .join(u' ');
    };
    QCOMPARE(desk.Exit(sale, {2, 3}), QStringList());
    QCOMPARE(chosen(sale), u"2 3"_s);
    desk.desk.serialBatches.ChooseSerials(sale, {2, 2}, {});
    movements.ExitGoodDetails_Clear(sale); // given up
    QCOMPARE(chosen(sale), u"2 3"_s);
    desk.desk.serialBatches.ChooseSerials(sale, {2, 2}, {});
    movements.ExitGoodDetails_Keep(sale);
    QCOMPARE(chosen(sale), u"3"_s);
    // Another line of the document is offered what this one leaves.
    const auto second = Desk::Line(2, 1, 2);
    movements.ExitGoodDetails_Fill(second);
    QCOMPARE(m_database
                 ->Rows(u"select DetailTitle1 from GoodDetailKardexExit_Temp where "_s +
                        movements.ExitGoodDetails_Condition(second) + u" order by ID"_s)
                 .join(u' '),
             u"1 2 4 5 6"_s);
    movements.GoodDetailsOperation_Discard(2, 1);
    QCOMPARE(desk.Exit(sale, {1, 0}), QStringList()); // opened and left as it was
    QCOMPARE(Sum(u"OperationType = 2"_s), u"-2"_s);

    QCOMPARE(desk.desk.detailMovements.ReturnedDetailValues(sale), QList<int>());
    const auto back = Desk::Line(4, 1, 1, 1, 1);
    QCOMPARE(desk.Enter(back, desk.Range(back, {1, 9})).size(), 7);
    QCOMPARE(movements.ReturnedDetailValues(sale).size(), 2);
    QVERIFY(movements.Returnable(Desk::Line(4, 2, 1, 1, 1), 2)->Amount1 == 0);
    QVERIFY(movements.Returnable(back, 2)->Amount1 == 1);
    QVERIFY(!movements.Returnable(back, 1)); // never sold
    QCOMPARE(desk.Delete(back), QStringList());
    QVERIFY(!movements.ChangeStore(buy, 2)); // the entry of what was sold from store 1
    QCOMPARE(desk.Save(buy).size(), 2);
    movements.GoodDetailsOperation_Discard(1, 1);
    QVERIFY(!desk.desk.detailValues.DeleteUnusedDetailValue(2));
    QVERIFY(desk.desk.detailValues.DeleteUnusedDetailValue(
        desk.desk.detailValues.ResolveDetailValue(5001, desk.Details(u"z"_s))));
}

void TestSerialData::readsADivision()
{
    const auto buy = Desk::Line(1, 1);
    QCOMPARE(m_desk->Enter(buy, m_desk->Range(buy, {1, 2})), QStringList());
    QCOMPARE(m_desk->Exit(Desk::Line(24, 3), {2, 2}), QStringList());
    m_database->Exec(
        u"insert GoodDetailDivision(Code, [Date], Comment) values (3, '1405/01/01', N'c') insert "
        "GoodDetailDivisionDetail(DivisionCode, OperationRow, StoreCode, GoodCode, DetailValueID, Amount1, Comment) values "
        "(3, 1, 1, 5001, 2, 1, N'r') insert GoodDetailDivisionDetailItems(DivisionCode, DivisionRow, OperationRow, "
        "Amount1) values (3, 1, 1, 0.25), (3, 1, 2, 0.75)"_s);
    TSerial_DM &serials = m_desk->serials;
    TGoodDetailDivision_Rec header;
    QVERIFY(serials.GoodDetailDivision_Fill(3, header) && header.Comment == u"c" && header.Date == u"1405/01/01");
    TGoodDetailDivision_Rec none;
    QVERIFY(!serials.GoodDetailDivision_Fill(4, none) && none.Code == 0);
    QCOMPARE(m_database->Rows(u"select StoreName, GoodName, DetailTitle1, DetailTitle2, DetailTitle3, GoodDetail, "
                              "OperationType from #GoodDetailDivisionDetailTemp where Tmp = 0"_s),
             QStringList{u"a|x|2|NULL|red|2 red|24"_s});
    QCOMPARE(m_database->Rows(u"select SUM(Amount1), COUNT(*), MIN(OperationType) from "
                              "#GoodDetailDivisionDetailItemsTemp"_s),
             QStringList{u"1|2|25"_s});
    QCOMPARE(serials.GetGoodDetailDivisionCode(), 4);
    QCOMPARE(serials.GetGoodDetailDivisionComment(3) + serials.GetGoodDetailDivisionComment(4), u"r"_s);
    QCOMPARE(m_desk->Save(Desk::Line(24, 3)), QStringList()); // what was read is what was saved
    QCOMPARE(Sum(u"OperationType = 24"_s), u"-1"_s);
}

void TestSerialData::sellsOnce()
{
    const auto buy = Desk::Line(1, 1);
    QCOMPARE(m_desk->Enter(buy, m_desk->Range(buy, {1, 2})), QStringList());
    Desk other(*m_database, m_database->AnotherConnection());
    for (Desk *desk : {m_desk.get(), &other}) {
        const auto sale = Desk::Line(2, desk == &other ? 2 : 1);
        desk->desk.detailMovements.ExitGoodDetails_Fill(sale);
        desk->desk.serialBatches.ChooseSerials(sale, {1, 1}, {1});
        desk->desk.detailMovements.ExitGoodDetails_Keep(sale);
    }
    QCOMPARE(m_desk->Save(Desk::Line(2, 1)), QStringList());
    QCOMPARE(other.Save(Desk::Line(2, 2)), QStringList{u"gone 1 red"_s});
    QCOMPARE(Sum(), u"1"_s);
    QCOMPARE(m_desk->Delete(buy), QStringList{u"gone 1 red"_s});
    QCOMPARE(Sum(), u"1"_s);
}

/// A return to the supplier is offered what its purchase brought and has not gone back, whatever else is on hand.
void TestSerialData::givesBackWhatThePurchaseBrought()
{
    for (const int purchase : {1, 2}) {
        const auto buy = Desk::Line(1, purchase);
        QCOMPARE(m_desk->Enter(buy, m_desk->Range(buy, {qint64{10} * purchase, qint64{10} * purchase + 2})),
                 QStringList());
    }
    QCOMPARE(m_desk->Exit(Desk::Line(2, 1), {11, 11}), QStringList());
    const auto back = [](int code, int purchase) {
        auto line = Desk::Line(5, code, 1, 1, purchase);
        line.IsReturn = true;
        return line;
    };
    const auto offered = [this](const host::TDocumentLine &line) {
        m_desk->desk.detailMovements.ExitGoodDetails_Fill(line);
        return m_database->Rows(u"select DetailTitle1 from GoodDetailKardexExit_Temp where Tmp = 1 order by 1"_s);
    };
    QCOMPARE(offered(back(1, 1)), (QStringList{u"10"_s, u"12"_s}));
    QCOMPARE(m_desk->Exit(back(1, 1), {10, 10}), QStringList());
    QCOMPARE(offered(back(1, 1)), (QStringList{u"10"_s, u"12"_s})); // its own again
    m_desk->desk.detailMovements.ExitGoodDetails_Clear(back(1, 1));
    QCOMPARE(offered(back(2, 1)), QStringList{u"12"_s});
    m_desk->desk.detailMovements.ExitGoodDetails_Clear(back(2, 1));
    QCOMPARE(offered(back(2, 0)).size(), 4); // it names none
    QCOMPARE(m_desk->Delete(Desk::Line(1, 1)), (QStringList{u"returned 10 red"_s, u"gone 10 red"_s, u"gone 11 red"_s}));
}

void TestSerialData::ledgerHoldsWhateverComes()
{
    QRandomGenerator random(7);
    int refused = 0;
    for (int step = 1; step <= 60; ++step) {
        const qint64 from = random.bounded(1, 30);
        const host::TSerialRange range{from, from + random.bounded(6)};
        const int code = random.bounded(1, 6);
        const QString before = Sum();
        QStringList told;
        switch (random.bounded(5)) {
        case 0:
            told = m_desk->Enter(Desk::Line(1, code), m_desk->Range(Desk::Line(1, code), range));
            break;
        case 1:
            told = m_desk->Exit(Desk::Line(2, code), range);
            break;
        case 2: {
            const auto line = Desk::Line(4, code, 1, 1, random.bounded(1, 6));
            told = m_desk->Enter(line, m_desk->Range(line, range));
            break;
        }
        case 3:
            told = m_desk->Delete(Desk::Line(random.bounded(2) ? 1 : 4, code));
            break;
        default:
            told = m_desk->Delete(Desk::Line(2, code));
        }
        const bool undone = told.filter(u"gone"_s).size() + told.filter(u"repeated"_s).size() > 0;
        refused += undone;
        if (undone)
            QCOMPARE(Sum(), before);
        m_desk->desk.detailMovements.GoodDetailsOperation_Discard(1, code);
        m_desk->desk.detailMovements.GoodDetailsOperation_Discard(2, code);
        m_desk->desk.detailMovements.GoodDetailsOperation_Discard(4, code);
        QCOMPARE(m_database->Rows(u"select DetailValueID, SUM(Amount1) from GoodDetailKardex group by DetailValueID, "
                                  "StoreCode having SUM(Amount1) < 0 or SUM(Amount1) > 1"_s),
                 QStringList());
    }
    QVERIFY(refused > 0);
    QVERIFY(Sum() != u"0");
}

REGISTER_TEST(TestSerialData)
#include "tst_serial_data.moc"
