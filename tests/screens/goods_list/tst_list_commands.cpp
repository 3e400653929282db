#include "host/controls/numeric_edit.h"
#include "tests/screens/goods_list/list_fixture.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

namespace {

const QString Saved = u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_s;

/// Types what a good cannot be saved without, and saves it.
void SaveGood(QWidget *editor, const QString &name, const QString &smsCode)
{
    auto &pages = test::Find<QTabWidget>(editor, u"PageControl1"_s);
    test::Enter(editor, u"Name_EDT"_s, name);
    test::Enter(editor, u"Unit_Entity1"_s, u"1"_s);
    test::Enter(editor, u"Store_Entity"_s, u"1"_s);
    pages.setCurrentWidget(&test::Find(editor, u"Complete_TPC"_s));
    test::Enter(editor, u"SmsCode_EDT"_s, smsCode);
    test::Press(Qt::Key_F3);
}

} // namespace

/// Adding goods from the list, and what the list keeps from one opening to the next.
class TestListCommands : public QObject
{
    Q_OBJECT

private slots:
    void newGoods_data()
    {
        QTest::addColumn<int>("saved");
        QTest::addColumn<int>("stockTab");
        QTest::addColumn<bool>("shown");
        QTest::newRow("one") << 1 << 2 << true;
        QTest::newRow("two in a row: the list stands on the last") << 2 << 2 << true;
        QTest::newRow("without stock, where only stock is shown") << 1 << 0 << false;
        QTest::newRow("the same while choosing: Enter is to mean it") << 1 << 0 << true;
        QTest::newRow("given up") << 0 << 2 << false;
    }

    /// F4 adds to the group that is shown; the search makes way for the new good, but not when nothing was saved.
    void newGoods()
    {
        QFETCH(int, saved);
        QFETCH(int, stockTab);
        QFETCH(bool, shown);
        Screen screen;
        const bool choosing = shown && stockTab == 0;
        screen.Open(choosing ? TFormMode::Selection : TFormMode::DockedList);
        TGood_List_FRM &list = screen.list;
        host::Grid &grid = screen.grid;
        test::Find<QTabBar>(&list, u"Search_TBC"_s).setCurrentIndex(stockTab);
        test::Press(Qt::Key_F11, Qt::ControlModifier);
        test::Type(u"لبنيات"_s);
        test::Press(Qt::Key_Return);
        const QStringList before = grid.ShownKeys();
        QVERIFY(!before.isEmpty());
        test::Type(u"زرافه"_s);
        QTRY_VERIFY(grid.IsEmpty());
        const int last = screen.database.Scalar(u"select max(Code) from GoodInf where GrpCode = 15"_s).toInt();

        test::Drive([] { test::Press(Qt::Key_F4); },
                    [&](QWidget *editor) {
                        QCOMPARE(test::Find<host::NumericEdit>(editor, u"Code_EDT"_s).text(),
                                 QString::number(last + 1));
                        for (int good = 1; good <= saved; ++good) {
                            SaveGood(editor, u"ماست %1"_s.arg(good), QString::number(987650 + good));
                            QCOMPARE(screen.host.messages.TakeAll(), QStringList{Saved});
                        }
                        test::Press(Qt::Key_Escape);
                    });
        QStringList added;
        for (int good = 1; good <= saved; ++good)
            added << u"%1|15"_s.arg(last + good);
        QCOMPARE(
            screen.database.Rows(u"select Code, GrpCode from GoodInf where Code > %1 and GrpCode = 15"_s.arg(last)),
            added);
        const QString typed = test::Find<QLineEdit>(&list, u"Text_EDT"_s).text();
        QCOMPARE(typed, saved == 0 ? u"زرافه"_s : QString());
        if (shown) {
            QCOMPARE(grid.CurrentKey(), QString::number(last + saved));
            QCOMPARE(grid.ShownKeys().size(), choosing ? screen.Codes().size() : before.size() + saved);
        } else {
            QCOMPARE(grid.ShownKeys(), saved == 0 ? QStringList() : before);
        }
        list.done(0);
    }

    /// Widths, order of the columns, stock tab and panels come back in the next list of this kind, and only there.
    void layoutComesBack()
    {
        Screen screen;
        screen.Open();
        TGood_List_FRM &list = screen.list;
        int width = 0;
        {
            QHeaderView *header = screen.grid.horizontalHeader();
            // The left edge of a caption is the one to pull, right to left.
            const QPoint edge(header->sectionViewportPosition(1) + 1, header->height() / 2);
            const int was = header->sectionSize(1);
            QTest::mousePress(header->viewport(), Qt::LeftButton, {}, edge);
            QTest::mouseMove(header->viewport(), edge - QPoint(20, 0));
            QTest::mouseMove(header->viewport(), edge - QPoint(40, 0));
            QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, edge - QPoint(40, 0));
            width = header->sectionSize(1);
            QVERIFY2(width > was, "the column follows the mouse");
            QVERIFY(screen.grid.SortedBy().isEmpty()); // pulling an edge is no click on the caption
            header->moveSection(header->visualIndex(3), 1);
            test::Find<QPushButton>(&list, u"Tags_btn"_s).click();
            test::Find<QTabBar>(&list, u"Search_TBC"_s).setCurrentIndex(0);
            screen.grid.setFocus();
            test::Press(Qt::Key_Escape);
            QVERIFY(!list.isVisible());
        }
        TGood_List_FRM next(screen.host, TFormMode::DockedList);
        QVERIFY(next.ShowDocked() && QTest::qWaitForWindowActive(&next));
        auto &grid = test::Find<host::Grid>(&next, u"GoodListDB_GRD"_s);
        QCOMPARE(grid.horizontalHeader()->sectionSize(1), width);
        QCOMPARE(grid.VisibleFields().first(), u"Name"_s);
        QVERIFY(test::Find(&next, u"Tags_pnl"_s).isVisible() && !test::Find(&next, u"Pic_Show"_s).isVisible());
        QCOMPARE(grid.ShownKeys(),
                 screen.database.Rows(u"select Code from GoodInf g where exists (select 1 from GoodStock s where "
                                      "s.GoodCode = g.Code and s.Amount1 > 0) order by Code"_s));
        test::Press(Qt::Key_Escape);

        TGood_List_FRM chooser(screen.host, TFormMode::Selection);
        test::Drive([&] { chooser.ShowModally(); },
                    [&](QWidget *) {
                        QCOMPARE(test::Find<host::Grid>(&chooser, u"GoodListDB_GRD"_s).VisibleFields().first(),
                                 u"Code"_s);
                        QVERIFY(!test::Find(&chooser, u"Tags_pnl"_s).isVisible());
                        test::Press(Qt::Key_Escape);
                    });
    }
};

REGISTER_TEST(TestListCommands)
#include "tst_list_commands.moc"
