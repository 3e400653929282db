#include "host/data/persian_text.h"
#include "host/data/query.h"
#include "host/screens/base_dock.h"
#include "tests/screens/goods_list/list_fixture.h"

#include <QLabel>

namespace {

constexpr int Good = 110001;
using Texts = QStringList;

/// The rows as they are shown, in ASCII digits.
Texts Rows(const host::Grid &grid)
{
    Texts rows;
    for (int row = 0; row < grid.RowCount(); ++row)
        rows << host::FoldDigits(grid.VisibleTexts(row).join(u'|')).remove(u'٬').replace(u'٫', u'.');
    return rows;
}

} // namespace

/// F2 on the goods list: what came in and went out of the current good.
class TestMovements : public QObject
{
    Q_OBJECT

private slots:
    void RowsAndBalances_data();
    void RowsAndBalances();
    void SecondUnit();
    void ManyMovements();
    void NothingToShow();

private:
    struct Fixture : Screen
    {
        Fixture()
        {
            database.Exec(
                u"delete from Kardex where Kala = %1 delete from GoodFirstAsset where GoodCode = %1 "
                "update GoodInf set Unit = 1, Unit2 = null, CostBgPrd = 900 where Code = %1 "
                "update Stores set Name = N'الف' where Code = 1 update Stores set Name = N'ب ''%1' where Code = 2 "
                "update Units set Name = N'عدد' where Code = 1 "
                "insert into GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1, Amount2) values "
                "(%1, 1, 0, 10, 1), (%1, 2, 0, 5.5, 2), (%1, 1, 1, 99, 9)"_s.arg(Good));
            // Entered in another order than that of their days.
            Move(1, 2, 7, u"1405/03/01"_s, -4);
            Move(1, 1, 3, u"1405/02/01"_s, 20, 1500);
            Move(2, 24, 8, u"1405/03/01"_s, -0.5);
            Move(1, 77, 9, u"1405/02/01"_s, 1);
        }
        void Move(int store, int kind, int number, const QString &day, double amount, int cost = 0) const
        {
            database.Exec(u"insert into Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1, Amount2, "
                          "Cost) values (%1, %2, %3, %4, '%5', %6, %6, %7)"_s.arg(Good)
                              .arg(store)
                              .arg(kind)
                              .arg(number)
                              .arg(day)
                              .arg(amount)
                              .arg(cost));
        }
        void Look(const std::function<void(QWidget *screen, host::Grid &rows)> &drive)
        {
            Open();
            QVERIFY(grid.Locate(QString::number(Good)));
            test::Drive([] { test::Press(Qt::Key_F2); },
                        [&](QWidget *screen) {
                            drive(screen, test::Find<host::Grid>(screen, u"Movements_GRD"_s));
                            test::Picture(*screen, u"movements"_s);
                            test::Focus(screen, u"Movements_GRD"_s);
                            test::Press(Qt::Key_Escape);
                        });
        }
    };
};

void TestMovements::RowsAndBalances_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("store");
    QTest::addColumn<Texts>("rows");
    QTest::addColumn<QString>("total");
    const Texts all = {u"1|1405/01/01|موجودی اول دوره||الف|10||900|10|10"_s,
                       u"2|1405/01/01|موجودی اول دوره||ب 'X|5.5||900|5.5|15.5"_s,
                       u"3|1405/02/01|خرید|3|الف|20||1500|30|35.5"_s,
                       u"4|1405/02/01|سند نوع 77|9|الف|1||0|31|36.5"_s,
                       u"5|1405/03/01|فروش|7|الف||4|0|27|32.5"_s,
                       u"6|1405/03/01|خروج برای تقسیم جزئیات|8|ب 'X||0.5||5|32"_s};
    QTest::newRow("all") << QString() << QString() << QString() << all
                         << u"اول: 15.5 · وارده: 21 · صادره: 4.5 · مانده: 32"_s;
    QTest::newRow("until a day") << QString() << u"۱۴۰۵/۲/۲۸"_s << QString() << all.mid(0, 4)
                                 << u"اول: 15.5 · وارده: 21 · صادره: 0 · مانده: 36.5"_s;
    QTest::newRow("from a day: the rest is brought forward")
        << u"1405-3-1"_s << QString() << QString()
        << Texts{u"1|1405/03/01|مانده از قبل||الف|31|||31|31"_s, u"2|1405/03/01|مانده از قبل||ب 'X|5.5|||5.5|36.5"_s,
                 u"3|1405/03/01|فروش|7|الف||4|0|27|32.5"_s, u"4|1405/03/01|خروج برای تقسیم جزئیات|8|ب 'X||0.5||5|32"_s}
        << u"اول: 36.5 · وارده: 0 · صادره: 4.5 · مانده: 32"_s;
    QTest::newRow("one store") << QString() << QString() << u"2"_s
                               << Texts{u"1|1405/01/01|موجودی اول دوره||ب 'X|5.5||900|5.5|5.5"_s,
                                        u"2|1405/03/01|خروج برای تقسیم جزئیات|8|ب 'X||0.5||5|5"_s}
                               << u"اول: 5.5 · وارده: 0 · صادره: 0.5 · مانده: 5"_s;
    QTest::newRow("one store, a range without movements")
        << u"1405/02/02"_s << u"1405/02/28"_s << u"1"_s << Texts{u"1|1405/02/02|مانده از قبل||الف|31|||31|31"_s}
        << u"مانده: 31"_s;
    QTest::newRow("the last day before the first")
        << u"1405/02/28"_s << u"1405/02/02"_s << u"1"_s << Texts{u"1|1405/02/02|مانده از قبل||الف|31|||31|31"_s}
        << u"مانده: 31"_s;
    QTest::newRow("no date: everything stays") << u"1405/13/40"_s << QString() << QString() << all << u"مانده: 32"_s;
}

void TestMovements::RowsAndBalances()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QString, store);
    QFETCH(Texts, rows);
    QFETCH(QString, total);
    Fixture f;
    rows.replaceInStrings(u"'X"_s, u"'%1"_s.arg(Good));
    f.Look([&](QWidget *screen, host::Grid &grid) {
        for (const auto &[edit, text] :
             {std::pair(u"FromDate_EDT"_s, from), {u"ToDate_EDT"_s, to}, {u"Store_Entity"_s, store}}) {
            if (text.isEmpty())
                continue;
            test::Enter(screen, edit, text);
            test::Press(Qt::Key_Return);
        }
        QCOMPARE(Rows(grid), rows);
        QString shown = host::FoldDigits(test::Find<QLabel>(screen, u"Total1_LBL"_s).text()).simplified();
        QVERIFY2(shown.replace(u'٫', u'.').contains(total), qPrintable(shown));
        QVERIFY(!test::Find(screen, u"Total2_LBL"_s).isVisible());
    });
    // The next good begins with everything, without another connection.
    const qsizetype connections = QSqlDatabase::connectionNames().size();
    f.Activate();
    test::Drive([] { test::Press(Qt::Key_F2); },
                [&](QWidget *screen) {
                    QCOMPARE(test::Find<host::Grid>(screen, u"Movements_GRD"_s).RowCount(), 6);
                    test::Press(Qt::Key_Escape);
                });
    QCOMPARE(QSqlDatabase::connectionNames().size(), connections);
}

void TestMovements::SecondUnit()
{
    Fixture f;
    f.database.Exec(
        u"update GoodInf set Unit2 = 2 where Code = %1 update Units set Name = N'کارتن' where Code = 2"_s.arg(Good));
    f.Look([&](QWidget *screen, host::Grid &grid) {
        QVERIFY(grid.VisibleCaptions().contains(u"وارده (کارتن)"_s));
        QCOMPARE(Rows(grid).constLast(),
                 u"6|1405/03/01|خروج برای تقسیم جزئیات|8|ب '%1||0.5||0.5||5|1.5|32|19.5"_s.arg(Good));
        QVERIFY(test::Find<QLabel>(screen, u"Total2_LBL"_s).text().contains(u"کارتن"_s));
    });
}

void TestMovements::ManyMovements()
{
    const auto statements = [](int movements) {
        Fixture f;
        f.database.Exec(
            u"insert into Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1) select top (%1) "
            "%2, 1, 1, 5, '1405/05/01', 1 from GoodInf a cross join GoodInf b"_s.arg(movements)
                .arg(Good));
        quint64 before = 0;
        quint64 sent = 0;
        f.Open();
        f.grid.Locate(QString::number(Good));
        before = host::StatementsSent();
        test::Drive([] { test::Press(Qt::Key_F2); },
                    [&](QWidget *screen) {
                        auto &grid = test::Find<host::Grid>(screen, u"Movements_GRD"_s);
                        sent = host::StatementsSent() - before;
                        test::Press(Qt::Key_End);
                        QTRY_COMPARE(grid.RowCount(), movements + 6);
                        QCOMPARE(grid.CurrentValue(u"Balance1"_s).toDouble(), movements + 32.0);
                        test::Press(Qt::Key_Escape);
                    });
        return sent;
    };
    const quint64 few = statements(3);
    QVERIFY(few <= 4);
    QCOMPARE(statements(3000), few);
}

void TestMovements::NothingToShow()
{
    Fixture f;
    f.Open();
    QVERIFY(f.grid.Locate(QString::number(Good)));
    f.database.Exec(
        u"delete from Kardex where Kala = %1 delete DocumentLines where GoodCode = %1 delete from GoodInf where Code = %1"_s
            .arg(Good));
    test::Press(Qt::Key_F2);
    QVERIFY(f.host.messages.Take().contains(u"کالا"_s));
    QTRY_VERIFY(!f.grid.ShownKeys().contains(QString::number(Good)));
}

REGISTER_TEST(TestMovements)
#include "tst_movements.moc"
