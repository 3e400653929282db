// The menu entry of detail types, through the module that the desk loads.

#include "host/controls/grid.h"
#include "tests/desk/window_fixture.h"
#include "tests/support/test_main.h"

class TestDetailTypesMenu : public QObject
{
    Q_OBJECT

private slots:
    void opensTheListAndChoosesMembers();
    void needsTheRight();
};

namespace {

void StandOn(QWidget *list, const QString &grid, const QString &key)
{
    test::Focus(list, grid);
    test::Press(Qt::Key_Home, Qt::ControlModifier);
    const auto &rows = test::Find<host::Grid>(list, grid);
    for (int i = 0; rows.CurrentKey() != key && i < rows.RowCount(); ++i)
        test::Press(Qt::Key_Down);
    QCOMPARE(rows.CurrentKey(), key);
}

} // namespace

void TestDetailTypesMenu::opensTheListAndChoosesMembers()
{
    const test::DeskWindow shop;
    const test::Database &database = shop.t.database;
    database.Exec(u"insert DetailTypes_SelectedLists(Code, Title) values (900, N'آزمایش')"_s);
    const QString serial = database.Scalar(u"select min(ID) from DetailTypes where DetailType = 3"_s).toString();
    const QString number = database.Scalar(u"select min(ID) from DetailTypes where DetailType = 4"_s).toString();
    test::Drive([&] { shop.Run(u"DetailTypes_ACT"_s); },
                [&](QWidget *list) {
                    test::Press(Qt::Key_Tab, Qt::ControlModifier);
                    StandOn(list, u"SelectedList_List_DBTableView1"_s, u"900"_s);
                    auto &add = test::Find(list, u"NewDetail_BTN"_s);
                    test::Drive([&] { QTest::mouseClick(&add, Qt::LeftButton); },
                                [&](QWidget *chooser) {
                                    for (const QString &id : {number, serial}) {
                                        StandOn(chooser, u"DetailTypes_List_GRD"_s, id);
                                        test::Press(Qt::Key_Space);
                                    }
                                    test::Press(Qt::Key_Return);
                                });
                    test::Press(Qt::Key_Escape);
                });
    QCOMPARE(database.Rows(u"select Code from DetailTypes_SelectedList_Detail where SL_Code = 900 order by Radif"_s),
             (QStringList{number, serial}));
}

void TestDetailTypesMenu::needsTheRight()
{
    const test::DeskWindow shop;
    shop.t.database.Exec(u"delete from UserRights where SoftwarePart = 513 and Permission = 6"_s);
    test::Drive([&] { shop.Run(u"DetailTypes_ACT"_s); },
                [](QWidget *message) {
                    QVERIFY(!message->findChild<host::Grid *>());
                    test::Press(Qt::Key_Escape);
                });
}

REGISTER_TEST(TestDetailTypesMenu)
#include "tst_detail_types.moc"
