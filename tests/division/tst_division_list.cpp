// The list of divisions, by keys.

#include "division/division_list.h"
#include "host/controls/grid.h"
#include "tests/division/division_fixture.h"
#include "tests/support/test_main.h"

#include <QLabel>
#include <QtTest>

namespace {

/// Divisions 1 to 3 of sheets 1, 2 and again the larger part of sheet 1.
struct List : fixture::Divisions
{
    List()
    {
        Divide(u"200034001"_s, u"1403/05/01"_s, u"سفارش کابینت"_s);
        Divide(u"200034002"_s, u"1403/05/09"_s, u"برش نمونه"_s);
    }
    void Open(const std::function<void(QWidget *list, host::Grid &grid)> &drive)
    {
        TGoodDetailDivision_List_FRM list(desk.host, Picker());
        test::Drive([&] { list.ShowModally(); },
                    [&](QWidget *screen) {
                        drive(screen, test::Find<host::Grid>(screen, u"Division_GRD"_s));
                        for (int i = 0; i < 2 && screen->isVisible(); ++i) // the first empties the search
                            test::Press(Qt::Key_Escape);
                    });
    }
};

} // namespace

class TestDivisionList : public QObject
{
    Q_OBJECT

private slots:
    void filters();
    void editsAndDeletes();
};

void TestDivisionList::filters()
{
    List shop;
    shop.Open([](QWidget *screen, host::Grid &grid) {
        QCOMPARE(screen->windowTitle(), u"لیست تقسیم جزئیات"_s);
        QCOMPARE(grid.VisibleCaptions(), u"کد,تاریخ,توضیحات"_s.split(u','));
        QCOMPARE(grid.VisibleTexts(0), u"۱,۱۴۰۳/۰۵/۰۱,سفارش کابینت"_s.split(u','));
        test::Picture(*screen, u"division-list"_s);
        for (const auto &[from, to, codes] : {std::tuple(u"1403/5/2"_s, QString(), u"2"_s),
                                              {QString(), u"1403/5/1"_s, u"1"_s},
                                              {u"1403/5/2"_s, u"1403/5/8"_s, QString()},
                                              {u"1403/5/1"_s, u"1403/5/9"_s, u"1 2"_s}}) {
            test::Enter(screen, u"FromDate_EDT"_s, from);
            test::Enter(screen, u"ToDate_EDT"_s, to);
            test::Focus(screen, u"Division_GRD"_s);
            QCOMPARE(grid.ShownKeys().join(u' '), codes);
        }
        test::Type(u"نمونه"_s);
        QCOMPARE(grid.ShownKeys(), QStringList{u"2"_s});
    });
}

void TestDivisionList::editsAndDeletes()
{
    List shop;
    shop.Sell(u"200034001/1"_s);
    const QString ledger = u"SELECT COUNT(*) FROM GoodDetailKardex WHERE OperationType IN (24, 25)"_s;
    const int rows = shop.database.Scalar(ledger).toInt();
    shop.Open([&](QWidget *, host::Grid &grid) {
        test::Press(Qt::Key_F7);
        QCOMPARE(shop.messages.TakeAll(), QStringList{u"ShowSmartMessage(10006, تقسیم جزئیات)"_s});
        test::Press(Qt::Key_Down);
        test::Drive([] { test::Press(Qt::Key_Return); },
                    [](QWidget *editor) {
                        test::Enter(editor, u"Comment_EDT"_s, u"برش دوم"_s);
                        test::Press(Qt::Key_F3);
                    });
        shop.messages.TakeAll();
        QCOMPARE(grid.CurrentKey(), u"2"_s);
        QCOMPARE(grid.CurrentValue(u"Comment"_s).toString(), u"برش دوم"_s);
        shop.messages.Answer(false);
        test::Press(Qt::Key_F7);
        QCOMPARE(grid.RowCount(), 2);
        shop.messages.Answer(true);
        test::Press(Qt::Key_F7);
        QCOMPARE(shop.messages.TakeAll(), QStringList(2, u"MsgDeleteItem(تقسیم جزئیات)"_s));
        QCOMPARE(grid.ShownKeys(), QStringList{u"1"_s});
        shop.database.Exec(u"DELETE FROM UserRights WHERE SoftwarePart = 314"_s);
        for (const Qt::Key key : {Qt::Key_F4, Qt::Key_F5, Qt::Key_F7}) {
            test::Press(key);
            QCOMPARE(shop.messages.TakeAll().size(), 1);
        }
    });
    QCOMPARE(shop.database.Scalar(ledger).toInt(), rows / 2);
    QCOMPARE(shop.Saved().constFirst(), u"1|1403/05/01|سفارش کابینت"_s);
}

REGISTER_TEST(TestDivisionList)
#include "tst_division_list.moc"
