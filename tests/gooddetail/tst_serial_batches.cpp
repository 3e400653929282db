// Serials as sets: every fate, against a judge that asks one serial at a time, what a range may cost, and what the
// ledger lets through.

#include "host/data/query.h"
#include "tests/gooddetail/shop_fixture.h"
#include "tests/support/test_main.h"

#include <QRandomGenerator>
#include <QtTest>

using fixture::Desk;
using host::TSerialFate;

class TestSerialBatches : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<test::Database>();
        fixture::Furnish(*m_database);
        m_desk = std::make_unique<Desk>(*m_database);
        m_desk->serials.EnterGoodDetail_Open();
    }
    void cleanup()
    {
        m_desk.reset();
        m_database.reset();
    }
    void judgesAsOneByOne();
    void returnsWhatWasSold_data();
    void returnsWhatWasSold();
    void costsTheSame();
    void refusesWhatIsNoRange();
    void keepsHostileSerials_data();
    void keepsHostileSerials();
    void choosesPlainNumbersOnly();
    void holdsReturnsToTheirSale();
    void measuresAndAmounts();
    void freesSerialsGivenUp();
    void keepsWhatAnotherDeskDropped();
    void knowsTheLine();
    void cleansBarcodes();

private:
    TSerialFate Oracle(const QString &serial);
    QString Ledger(const QString &what, const QString &where = u"1 = 1"_s) const
    {
        return m_database->Rows(u"select %1 from GoodDetailKardex where %2"_s.arg(what, where)).join(u' ');
    }
    QStringList WorkingSerials() const
    {
        return m_database->Rows(u"select DetailTitle1 from "_s + m_desk->serials.EnterGoodDetail_Table() +
                                u" order by ID"_s);
    }

    std::unique_ptr<test::Database> m_database;
    std::unique_ptr<Desk> m_desk;
};

/// The rules as a clerk would apply them to one serial, by the checks of the data module.
TSerialFate TestSerialBatches::Oracle(const QString &serial)
{
    if (WorkingSerials().contains(serial))
        return TSerialFate::InLine;
    if (m_desk->serials.CheckSerialDetailValueID_1(serial))
        return TSerialFate::InStock;
    int id = 0;
    m_desk->serials.CheckSerialDetailValueID_2(serial, id);
    if (id == 0)
        return TSerialFate::New;
    return m_desk->desk.detailValues.FindDetailValue(5001, m_desk->Details(serial)) == id ? TSerialFate::Known
                                                                                          : TSerialFate::OtherValues;
}

void TestSerialBatches::judgesAsOneByOne()
{
    auto &values = m_desk->desk.detailValues;
    QRandomGenerator random(20);
    QString rows;
    for (int n = 1; n <= 120; ++n) {
        const int fate = random.bounded(7);
        if (fate == 0)
            continue;
        const int good = fate == 1 ? 5002 : 5001;
        const int id =
            values.ResolveDetailValue(good, m_desk->Details(QString::number(n), fate == 2 ? u"blue"_s : u"red"_s));
        const QString row =
            u"(DetailValueID, StoreCode, GoodCode, Amount1, OperationType, OperationCode, OperationRow) "
            "values (%1, 1, %2, %3, 1, 90, 1) "_s;
        if (fate >= 3)
            rows += u"insert GoodDetailKardex "_s + row.arg(id).arg(good).arg(1);
        if (fate == 4 || fate == 5)
            rows += u"insert GoodDetailKardex "_s + row.arg(id).arg(good).arg(-1);
        if (fate == 5)
            rows += u"insert GoodDetailKardexEnter_Temp "_s + row.arg(id).arg(good).arg(1);
    }
    m_database->Exec(rows);
    const host::TDocumentLine line = Desk::Line(1, 7);
    QSet<int> seen;
    for (const host::TSerialRange &range :
         {host::TSerialRange{30, 60}, {5, 3}, {55, 130}, {1, 110}, {7, 7}, {98, 101}}) {
        QStringList expected;
        QStringList left;
        for (qint64 n = range.From; n <= range.To; ++n) {
            const TSerialFate fate = Oracle(QString::number(n));
            seen << int(fate);
            (fate >= TSerialFate::Known ? expected : left)
                << (fate >= TSerialFate::Known ? QString::number(n) : u"%1:%2"_s.arg(n).arg(int(fate)));
        }
        const QStringList before = WorkingSerials();
        QCOMPARE(Desk::Left(m_desk->desk.serialBatches.JudgeSerials(m_desk->Range(line, range))), left);
        QCOMPARE(WorkingSerials(), before);
        const auto result = m_desk->desk.serialBatches.EnterSerials(m_desk->Range(line, range));
        QCOMPARE(Desk::Left(result), left);
        QCOMPARE(result.Written, int(expected.size()));
        QCOMPARE(WorkingSerials(), before + expected);
    }
    QCOMPARE(seen.size(), 5);
    QCOMPARE(
        m_database->Rows(u"select d.[Value] from GoodDetailValueDetails d where d.DetailID = 1 group by d.[Value], "
                         "d.DetailID having count(*) > 1"_s),
        QStringList());
    QCOMPARE(
        m_database->Rows(u"select ID from GoodDetailValues v where not exists (select 1 from GoodDetailValueDetails d "
                         "where d.DetailValueID = v.ID and d.DetailID = 1)"_s),
        QStringList());
}

void TestSerialBatches::returnsWhatWasSold_data()
{
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QString>("colour");
    QTest::addColumn<int>("amount");
    QTest::addColumn<int>("second");
    QTest::addColumn<QString>("left");
    // 1 to 4 were sold on 50, 4 has come back; 9 was sold on 51, 8 is on hand in blue.
    const std::tuple<const char *, const char16_t *, const char16_t *, int, int, const char16_t *> rows[] = {
        {"sold", u"1", u"red", 1, 0, u""},
        {"sold, Persian digits", u"۱", u"red", 1, 0, u""},
        {"another colour was not sold", u"1", u"green", 1, 0, u"1:4"},
        {"on record in blue", u"8", u"red", 1, 0, u"8:3"},
        {"sold on another document", u"9", u"red", 1, 0, u"9:5"},
        {"has come back", u"4", u"red", 1, 0, u"4:5"},
        {"more than was sold", u"2", u"red", 2, 0, u"2:7"},
        {"a serial of its own", u"77", u"red", 1, 0, u""},
        {"of its own, more than was sold", u"78", u"red", 4, 0, u"78:8"},
        {"more in the second unit than was sold", u"2", u"red", 1, 1, u"2:7"},
        {"of its own, more in the second unit", u"79", u"red", 1, 1, u"79:8"},
    };
    for (const auto &[name, serial, colour, amount, second, left] : rows)
        QTest::newRow(name) << QString::fromUtf16(serial) << QString::fromUtf16(colour) << amount << second
                            << QString::fromUtf16(left);
}

void TestSerialBatches::returnsWhatWasSold()
{
    Desk &desk = *m_desk;
    const auto buy = Desk::Line(1, 1);
    QCOMPARE(desk.Enter(buy, desk.Range(buy, {1, 9})), QStringList());
    const auto blue = Desk::Line(1, 2);
    QCOMPARE(desk.Enter(blue, desk.Batch(blue, u"8"_s, u"blue"_s)), QStringList{u"8:2"_s});
    QCOMPARE(desk.Exit(Desk::Line(2, 50), {1, 4}), QStringList());
    QCOMPARE(desk.Exit(Desk::Line(2, 51), {8, 9}), QStringList());
    m_database->Exec(
        u"update GoodDetailValueDetails set [Value] = N'blue' where DetailID = 2 and DetailValueID = (select "
        "DetailValueID from GoodDetailValueDetails where DetailID = 1 and [Value] = N'8')"_s);
    const auto first = Desk::Line(4, 60, 1, 1, 50);
    QCOMPARE(desk.Enter(first, desk.Range(first, {4, 4})), QStringList());

    QFETCH(QString, serial);
    QFETCH(QString, colour);
    QFETCH(int, amount);
    QFETCH(int, second);
    QFETCH(QString, left);
    const auto line = Desk::Line(4, 61, 1, 1, 50);
    desk.serials.EnterGoodDetail_Open();
    host::TSerialBatch batch = desk.Batch(line, serial, colour);
    batch.Amounts.Amount1 = amount;
    batch.Amounts.Amount2 = second;
    QCOMPARE(Desk::Left(desk.desk.serialBatches.EnterSerials(batch)).join(u','), left);
    QCOMPARE(WorkingSerials().size(), left.isEmpty() ? 1 : 0);
    if (!left.isEmpty())
        return;
    QCOMPARE(Desk::Left(desk.desk.serialBatches.EnterSerials(batch)).size(), 1); // no second time on the line

    batch.Range = host::TSerialRange{100, 102}; // three are left to come back, one of them is on the line
    QCOMPARE(Desk::Left(desk.desk.serialBatches.EnterSerials(batch)), QStringList{u"102:8"_s});
}

void TestSerialBatches::costsTheSame()
{
    const auto statements = [this](qint64 from, qint64 count) {
        const auto line = Desk::Line(1, 7);
        const quint64 before = host::StatementsSent();
        const auto result =
            m_desk->desk.serialBatches.EnterSerials(m_desk->Range(line, host::TSerialRange{from, from + count - 1}));
        const quint64 sent = host::StatementsSent() - before;
        return result.Written == count ? sent : 0;
    };
    statements(1, 1); // takes the desk's number
    const quint64 few = statements(100, 10);
    QVERIFY(few > 0 && few <= 30);
    QCOMPARE(statements(1000, 10000), few);
}

void TestSerialBatches::refusesWhatIsNoRange()
{
    QCOMPARE(host::SerialRange(u"a1", u"5").has_value(), false);
    QCOMPARE(host::SerialRange(u"", u"5").has_value(), false);
    QCOMPARE(host::SerialRange(u"1", u"99999999999999999999").has_value(), false);
    const auto padded = host::SerialRange(u"۰۰۹۸", u"0101");
    QVERIFY(padded && padded->From == 98 && padded->To == 101);
    const auto widest = host::SerialRange(u"-9223372036854775808", u"9223372036854775807");
    QVERIFY(widest && widest->IsTooLong());
    QVERIFY((!host::TSerialRange{1, 100000}.IsTooLong() && host::TSerialRange{0, 100000}.IsTooLong()));
    auto &batches = m_desk->desk.serialBatches;
    QVERIFY(batches.EnterSerials(m_desk->Range(Desk::Line(1, 7), *widest)).TooLong);
    QVERIFY(!batches.ChooseSerials(Desk::Line(2, 7), *widest, {1}));
    QCOMPARE(batches.EnterSerials(m_desk->Range(Desk::Line(1, 7), {5, 3})).Written, 0);
    QCOMPARE(batches.EnterSerials(m_desk->Range(Desk::Line(1, 7), {9223372036854775806, 9223372036854775807})).Written,
             2);
    QCOMPARE(WorkingSerials(), (QStringList{u"9223372036854775806"_s, u"9223372036854775807"_s}));
}

void TestSerialBatches::keepsHostileSerials_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("kept");
    const std::tuple<const char *, const char16_t *, const char16_t *> rows[] = {
        {"quotes", u"O'Neil''s", u"O'Neil''s"},
        {"signs of patterns", u"50%_[a-z]", u"50%_[a-z]"},
        {"places of a format", u"%1 %2", u"%1 %2"},
        {"zeros in front", u"007", u"007"},
        {"marks and digits", u"\u200F ۱۲۳-٤٥ \u202B", u"123-45"},
        {"fifty", u"01234567890123456789012345678901234567890123456789",
         u"01234567890123456789012345678901234567890123456789"},
        {"a statement", u"'; DROP TABLE GoodInf --", u"'; DROP TABLE GoodInf --"},
    };
    for (const auto &[name, typed, kept] : rows)
        QTest::newRow(name) << QString::fromUtf16(typed) << QString::fromUtf16(kept);
}

void TestSerialBatches::keepsHostileSerials()
{
    QFETCH(QString, typed);
    QFETCH(QString, kept);
    Desk &desk = *m_desk;
    const auto buy = Desk::Line(1, 1);
    QCOMPARE(desk.Enter(buy, desk.Batch(buy, typed)), QStringList());
    QCOMPARE(desk.Enter(Desk::Line(1, 2), desk.Batch(Desk::Line(1, 2), kept)), QStringList{kept + u":2"_s});
    QVERIFY(desk.serials.CheckSerialDetailValueID_1(typed));
    QCOMPARE(desk.desk.detailValues.FindByText(5001, typed).value_or(host::TKnownDetail()).Details.Values[0], kept);
    QCOMPARE(desk.desk.detailValues.SerialOwner(5002, typed), host::DetailOwner::OtherGood);
    const auto sale = Desk::Line(2, 1);
    desk.desk.detailMovements.ExitGoodDetails_Fill(sale);
    TExitNarrowing narrowing;
    narrowing.Serial = typed;
    desk.serials.ExitGoodDetail_Open(sale, narrowing);
    QCOMPARE(desk.serials.ExitGoodDetail_QRY.RecordCount(), 1);
    QCOMPARE(desk.serials.ExitGoodDetail_QRY.TextField(u"DetailTitle1"), kept);
    QVERIFY(desk.desk.detailMovements.ExitGoodDetails_FindRow(sale, typed) > 0);
    narrowing.Serial = u"%4%"_s;
    desk.serials.ExitGoodDetail_Open(sale, narrowing);
    QVERIFY(desk.serials.ExitGoodDetail_QRY.IsEmpty());
}

void TestSerialBatches::choosesPlainNumbersOnly()
{
    Desk &desk = *m_desk;
    const QStringList texts{u"9"_s,    u"010"_s, u"10"_s,  u"11a"_s,  u"1e1"_s, u"112"_s,
                            u"1203"_s, u"12"_s,  u"+11"_s, u"11.0"_s, u"۱۱x"_s, u"99999999999999999999"_s};
    for (int i = 0; i < texts.size(); ++i) {
        const auto line = Desk::Line(1, 100 + i);
        QCOMPARE(desk.Enter(line, desk.Batch(line, texts[i])), QStringList());
    }
    const auto sale = Desk::Line(2, 1);
    desk.desk.detailMovements.ExitGoodDetails_Fill(sale);
    const auto listed = [&](const TExitNarrowing &typed) {
        desk.serials.ExitGoodDetail_Open(sale, typed);
        QStringList found;
        for (int i = 0; i < desk.serials.ExitGoodDetail_QRY.RecordCount(); ++i)
            found << desk.serials.ExitGoodDetail_QRY.FieldAt(i, u"DetailTitle1").toString();
        return found.join(u' ');
    };
    TExitNarrowing typed;
    QCOMPARE(listed(typed).split(u' ').size(), texts.size());
    typed.SerialFrom = 10;
    QCOMPARE(listed(typed).split(u' ').size(), texts.size());
    typed.SerialTo = 12;
    QCOMPARE(listed(typed), u"010 10 12 +11"_s);
    typed.Serial = u"12"_s;
    QCOMPARE(listed(typed), u"112 1203 12"_s);
    QCOMPARE(desk.desk.serialBatches.ChooseSerials(sale, {10, 12}, {2}), 0); // there is one of each
    QCOMPARE(desk.desk.serialBatches.ChooseSerials(sale, {10, 12}, {1}), 2);
    typed.OnlySelected = true;
    QCOMPARE(listed(typed), u"10 12"_s);
    QCOMPARE(desk.desk.serialBatches.ChooseSerials(sale, {11, 12}, {}), 1); // taken back
    QCOMPARE(listed(typed), u"10"_s);
    // Words are found in whichever letters the keyboard has.
    const auto black = Desk::Line(1, 200);
    QCOMPARE(desk.Enter(black, desk.Batch(black, u"B"_s, u"مشکی ۱۲ ک[٪"_s)), QStringList());
    desk.desk.detailMovements.ExitGoodDetails_Fill(sale);
    typed = {};
    typed.Details[2] = {u"ي 12 ك["_s, true};
    QCOMPARE(listed(typed), u"B"_s);
}

void TestSerialBatches::holdsReturnsToTheirSale()
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
        desk->serials.EnterGoodDetail_Refresh();
        QCOMPARE(desk->serials.EnterGoodDetail_QRY.FieldAt(2, u"Amount1_Ret").toDouble(), 3.0);
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

void TestSerialBatches::measuresAndAmounts()
{
    struct Case // NOLINT(clang-analyzer-optin.performance.Padding): in the order in which a row is read
    {
        quint8 unitType;
        host::TAmounts in, out;
        const char16_t *left; ///< and the length that went out
    };
    const Case cases[] = {{1, {100, 0, 100}, {30, 0, 30}, u"100|0|0|0"}, // a roll
                          {3, {40, 4, 40, 0, 0, 10}, {10, 1, 10, 0, 0, 10}, u"40|4|10|0"},
                          {5, {24, 0, 24, 4, 2, 3}, {4, 0, 4, 2, 2, 1}, u"24|0|3|2"}};
    auto &movements = m_desk->desk.detailMovements;
    for (const auto &[unitType, in, out, left] : cases) {
        const auto line = [kind = unitType](quint8 type, int code, int foreign = 0) {
            auto made = Desk::Line(type, kind * 100 + code, 1, 1, foreign == 0 ? 0 : kind * 100 + foreign);
            made.UnitType = kind;
            return made;
        };
        auto batch = m_desk->Batch(line(1, 1), QString::number(unitType));
        batch.Amounts = in;
        QCOMPARE(m_desk->Enter(batch.Line, batch), QStringList());
        for (int i = 50; i < 53; ++i) { // three times: what is measured is not used up
            movements.ExitGoodDetails_Fill(line(2, i));
            QCOMPARE(m_desk->desk.serialBatches.ChooseSerials(line(2, i), {unitType, unitType}, out), 1);
            movements.ExitGoodDetails_Keep(line(2, i));
            QCOMPARE(m_desk->Save(line(2, i)), QStringList());
        }
        for (int i = 50; i < 53; ++i) {
            m_desk->serials.EnterGoodDetail_Open();
            batch = m_desk->Batch(line(4, i, i), QString::number(unitType));
            batch.Amounts = out;
            batch.Amounts.Amount1 += 1;
            QCOMPARE(Desk::Left(m_desk->desk.serialBatches.JudgeSerials(batch)),
                     QStringList{batch.Details.Values[0] + u":7"_s});
            batch.Amounts = out;
            QCOMPARE(m_desk->Enter(batch.Line, batch), QStringList());
        }
        movements.ExitGoodDetails_Fill(line(2, 70));
        QCOMPARE(
            m_database->Rows(u"select Amount1, Amount2, Amount3, (select MIN([Length]) from GoodDetailKardex where "
                             "OperationCode = %1) from GoodDetailKardexExit_Temp where Tmp = 1 and DetailTitle1 = "
                             "'%2' and OperationCode = %3"_s.arg(unitType * 100 + 50)
                                 .arg(unitType)
                                 .arg(unitType * 100 + 70)),
            QStringList{QString::fromUtf16(left)});
    }
}

void TestSerialBatches::freesSerialsGivenUp()
{
    auto &movements = m_desk->desk.detailMovements;
    auto &serials = m_desk->serials;
    int code = 0;
    for (const QString &how : {u"row"_s, u"all"_s, u"cancelled"_s, u"kept without"_s, u"discarded"_s, u"deleted"_s}) {
        const auto line = Desk::Line(1, ++code);
        const qint64 first = qint64{10} * code;
        serials.EnterGoodDetail_Open();
        const auto keep = [&] { movements.EnterGoodDetails_Keep(serials.EnterGoodDetail_Table(), line); };
        QCOMPARE(m_desk->desk.serialBatches.EnterSerials(m_desk->Range(line, {first, first + 2})).Written, 3);
        if (how != u"row" && how != u"all" && how != u"cancelled")
            keep();
        if (how == u"row")
            for (int id = 1; id <= 3; ++id)
                serials.EnterGoodDetailRow_Delete(id);
        else if (how == u"all" || how == u"kept without")
            serials.EnterGoodDetailRow_DeleteAll(1, 1, {});
        else if (how == u"discarded")
            movements.GoodDetailsOperation_Discard(1, code);
        else if (how == u"deleted")
            QCOMPARE(m_desk->Save(line) + m_desk->Delete(line), QStringList());
        if (how == u"kept without")
            keep();
        const auto again = Desk::Line(1, ++code);
        QCOMPARE(m_desk->Enter(again, m_desk->Range(again, {first, first + 2}, u"blue"_s)), QStringList());
    }
    QCOMPARE(
        m_database->Rows(u"select [Value], COUNT(*) from GoodDetailValueDetails where DetailID = 2 group by [Value]"_s),
        QStringList{u"blue|18"_s});
}

void TestSerialBatches::keepsWhatAnotherDeskDropped()
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

void TestSerialBatches::knowsTheLine()
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

void TestSerialBatches::cleansBarcodes()
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

REGISTER_TEST(TestSerialBatches)
#include "tst_serial_batches.moc"
