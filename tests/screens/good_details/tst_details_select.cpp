// Choosing detail values of goods without serials, by keys.

#include "gooddetail/details_select.h"
#include "host/controls/grid.h"
#include "tests/screens/good_details/details_fixture.h"
#include "tests/support/test_main.h"

#include <QComboBox>
#include <QLabel>
#include <QtTest>

namespace {

/// Beside the goods of the fixture: 5005 in square metres, 5006 in cartons that differ, 5007 in pieces; 5004 is out of
/// the way. List 1 holds 5006, 5003 and one with serials, list 2 is switched off.
struct Screen : fixture::Shop
{
    Screen()
    {
        fakes.settings.record.TwoUnitVariableRatio = true;
        fakes.settings.record.SquareMetreGoods = true;
        fakes.settings.record.SquareMetreUnit = 3;
        database.Exec(
            u"insert Units(Code, Name, [Type]) values (3, N'متر مربع', 0) delete GoodInf where Code = 5004 insert "
            "GoodInf(Code, GrpCode, Name, Unit, Unit2, Store) values (5005, 5, N'q', 3, NULL, 1), (5006, 5, N'r', 1, 2, "
            "1), (5007, 5, N'w', 1, NULL, 1) "
            "insert GoodDetailRelation(GoodCode, DetailID) values (5005, 2), (5006, 2), (5007, 3), (5007, 2) "
            "insert SelectedLists(Code, Title, Enable, [Type]) values (1, N'بهار', 1, 0), (2, N'کهنه', 0, 0), "
            "(3, N'دیگر', 1, 1) insert SelectedList_Detail(SL_Code, Code, Radif) values (1, 5006, 1), (1, 5003, 2), "
            "(1, 5001, 3) "
            "insert GoodDetailValues(GoodCode) values (5003), (5003), (5007), (5005), (5006) "
            "insert GoodDetailValueDetails(DetailValueID, DetailID, [Value]) values (1, 2, N'قرمز'), (2, 2, N'آبی'), "
            "(3, 2, N'سبز'), (3, 3, N'نخ''ی'), (4, 2, N'کرم'), (5, 2, N'سیاه') "
            "insert GoodDetailKardex(DetailValueID, StoreCode, GoodCode, Amount1, Amount2, TotalAmount, [Length], Width, "
            "Amount3, OperationType, OperationCode) values (1, 1, 5003, 12.5, 0, 1.041666667, 0, 0, 0, 1, 1), "
            "(2, 2, 5003, 7, 0, 0.58, 0, 0, 0, 1, 1), (4, 1, 5005, 12, 0, 12, 3, 2, 2, 1, 1), "
            "(5, 1, 5006, 30, 3, 30, 0, 0, 10, 1, 1), (5, 1, 5006, -10, -1, -10, 0, 0, -10, 2, 1)"_s);
    }
    /// What a screen in this mode gives back when these keys are pressed on it.
    QString Choose(int mode, const std::function<void(QWidget *screen)> &drive)
    {
        TGoodDetails_Select_FRM select(host, Pack(good_detail::SelectOpening{mode, 0, u"a;b"_s, 7}), u"عنوان"_s);
        int result = 0;
        test::Drive([&] { result = select.ShowModally(); },
                    [&](QWidget *screen) {
                        drive(screen);
                        for (int i = 0; i < 2 && screen->isVisible(); ++i) // the first empties the search
                            test::Press(Qt::Key_Escape);
                    });
        return result == QDialog::Accepted ? select.Chosen() : u"-"_s;
    }
    static host::Grid &Goods(QWidget *screen) { return test::Find<host::Grid>(screen, u"Goods_List_GRD"_s); }
    static host::Grid &Details(QWidget *screen) { return test::Find<host::Grid>(screen, u"Details_List_GRD"_s); }
    static QString State(QWidget *screen) { return test::Find<QLabel>(screen, u"State_LBL"_s).text(); }
};

void Press(const QList<Qt::Key> &keys)
{
    for (const Qt::Key key : keys)
        test::Press(key);
}

} // namespace

class TestDetailsSelect : public QObject
{
    Q_OBJECT

private slots:
    void goodsByModeAndList_data();
    void goodsByModeAndList();
    void marksOverGoods();
    void singleChoice_data();
    void singleChoice();
    void runningDownTheList();
    void layoutsByUnitType();
};

void TestDetailsSelect::goodsByModeAndList_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("goods");
    QTest::addColumn<QString>("listed");
    QTest::newRow("several") << 0 << u"5003 5005 5006 5007"_s << u"5006 5003"_s;
    QTest::newRow("without formula") << 1 << u"5005 5006 5007"_s << u"5006"_s;
    QTest::newRow("square metres") << 2 << u"5005"_s << QString();
}

void TestDetailsSelect::goodsByModeAndList()
{
    QFETCH(int, mode);
    Screen shop;
    shop.Choose(mode, [&](QWidget *screen) {
        QCOMPARE(screen->windowTitle(), u"عنوان"_s);
        QCOMPARE(test::Focused(), u"Goods_List_GRD"_s);
        QTEST(Screen::Goods(screen).ShownKeys().join(u' '), "goods");
        auto &lists = test::Find<QComboBox>(screen, u"SelectedList_CMB"_s);
        QCOMPARE(lists.count(), 2);
        QCOMPARE(lists.itemText(0), u"هيچکدام"_s);
        test::Focus(screen, u"SelectedList_CMB"_s);
        test::Press(Qt::Key_Down);
        QTEST(Screen::Goods(screen).ShownKeys().join(u' '), "listed");
        QCOMPARE(Screen::State(screen), mode == 2 ? u"کالایی برای انتخاب نیست"_s : QString());
        QCOMPARE(Screen::Details(screen).IsEmpty(), mode == 2);
        test::Press(Qt::Key_Up);
        QTEST(Screen::Goods(screen).ShownKeys().join(u' '), "goods");
    });
}

void TestDetailsSelect::marksOverGoods()
{
    Screen shop;
    QCOMPARE(shop.Choose(0,
                         [&](QWidget *screen) {
                             Press({Qt::Key_Return, Qt::Key_Down, Qt::Key_Space});
                             QCOMPARE(test::Focused(), u"Details_List_GRD"_s);
                             test::Focus(screen, u"Goods_List_GRD"_s);
                             Press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return, Qt::Key_Space});
                             QCOMPARE(Screen::State(screen), u"۲ مورد علامت خورده"_s);
                             test::Press(Qt::Key_Return);
                         }),
             u"2,5"_s);
    // Without marks it is the current one; a screen that is left gives nothing.
    QCOMPARE(shop.Choose(0, [](QWidget *) { Press({Qt::Key_Return, Qt::Key_Return}); }), u"1"_s);
    QCOMPARE(shop.Choose(0, [](QWidget *) { Press({Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape}); }), u"-"_s);
}

void TestDetailsSelect::singleChoice_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("search");
    QTest::addColumn<QString>("captions");
    QTest::addColumn<QString>("cells");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("nothing on hand") << 1 << u"w"_s << u"انبار|شرح|رنگ|مقدار (عدد)"_s << QString() << u"-"_s;
    QTest::newRow("packed") << 1 << u"r"_s << u"انبار|رنگ|هر کارتن (عدد)|تعداد (کارتن)|مقدار کل (عدد)"_s
                            << u"مرکزی|سیاه|۱۰|۲|۲۰"_s << u"5;1;5006;20.00;2.00;0.00;0.00;10.00;"_s;
    QTest::newRow("area") << 2 << u"q"_s << u"انبار|رنگ|طول|عرض|تعداد|مقدار (متر مربع)"_s << u"مرکزی|کرم|۳|۲|۲|۱۲"_s
                          << u"4;1;5005;12.00;0.00;3.00;2.00;2.00;"_s;
    QTest::newRow("total and part") << 5 << u"پارچه"_s << u"انبار|رنگ|مقدار کل (کارتن)|مقدار جزء (عدد)"_s
                                    << u"مرکزی|قرمز|۱٫۰۴۱۷|۱۲٫۵"_s << u"1;1;5003;12.50;0.00;0.00;0.00;0.00;"_s;
}

void TestDetailsSelect::singleChoice()
{
    QFETCH(int, mode);
    QFETCH(QString, search);
    QFETCH(QString, cells);
    Screen shop;
    shop.fakes.settings.record.TwoUnitVariableRatio = mode != 5;
    QString chosen = shop.Choose(mode, [&](QWidget *screen) {
        test::Type(search);
        test::Press(Qt::Key_Return);
        QVERIFY(!Screen::Details(screen).IsMultiSelect());
        QTEST(Screen::Details(screen).VisibleCaptions().join(u'|'), "captions");
        QCOMPARE(Screen::Details(screen).IsEmpty(), cells.isEmpty());
        if (!cells.isEmpty())
            QCOMPARE(Screen::Details(screen).VisibleTexts(0).join(u'|'), cells);
        else
            QCOMPARE(Screen::State(screen), u"از جزئیات این کالا چیزی موجود نیست"_s);
        test::Press(Qt::Key_Return);
        QCOMPARE(screen->isVisible(), cells.isEmpty());
    });
    QTEST(chosen, "chosen");
}

void TestDetailsSelect::runningDownTheList()
{
    Screen shop;
    shop.Choose(0, [&](QWidget *screen) {
        const quint64 before = host::StatementsSent();
        Press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down});
        QCOMPARE(host::StatementsSent(), before);
        QTRY_COMPARE(Screen::State(screen), u"از جزئیات این کالا چیزی موجود نیست"_s);
        QCOMPARE(host::StatementsSent() - before, 3U);
    });
}

void TestDetailsSelect::layoutsByUnitType()
{
    Screen shop;
    const auto look = [&](const std::function<void(QWidget *, host::Grid &)> &at) {
        shop.Choose(0, [&](QWidget *screen) {
            Press({Qt::Key_Return});
            at(screen, Screen::Details(screen));
        });
    };
    look([](QWidget *, host::Grid &details) { details.SetColumnVisible(u"StoreName"_s, false); });
    look([](QWidget *screen, host::Grid &details) {
        QVERIFY(!details.IsColumnVisible(u"StoreName"_s));
        test::Focus(screen, u"Goods_List_GRD"_s);
        Press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
        QVERIFY(details.IsColumnVisible(u"StoreName"_s)); // other columns, another layout
        test::Picture(*screen, u"details-select"_s);
    });
}

REGISTER_TEST(TestDetailsSelect)
#include "tst_details_select.moc"
