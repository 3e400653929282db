#include "host/controls/category_path.h"
#include "host/controls/grid.h"
#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QPushButton>
#include <QtTest>

/// What hangs on a good: its categories, its photos.
class TestGoodLists : public QObject
{
    Q_OBJECT

private slots:
    void categoriesLastWhenSaved_data()
    {
        QTest::addColumn<bool>("save");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("others"); // photos, and working rows of any kind
        QTest::newRow("saved") << true << QStringList{u"3|0"_s} << u"1|0|0|0"_s;
        QTest::newRow("left") << false << QStringList{u"2|0"_s} << u"0|0|0|0"_s;
    }
    void categoriesLastWhenSaved()
    {
        QFETCH(bool, save);
        const QString refused = u"MsgRepeatedField(دسته, زیر شاخه خالی یا )"_s;
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.host.categories.all = {{1, 0, u"خوراکی"_s}, {2, 1, u"سرد"_s}, {3, 1, u"گرم"_s}, {4, 1, u"ترش"_s}};
        f.database.Exec(u"insert into Categories(Code,ParentCode,Name,Path) values(1,null,N'خوراکی',',1,'),"
                        "(2,1,N'سرد',',1,2,'),(3,1,N'گرم',',1,3,'),(4,1,N'ترش',',1,4,')"_s);
        // The second row was left by a desk that died.
        f.database.Exec(u"insert into Kala_category(Kala_code,Category_code,tmp) values(500009,2,0),(500009,3,1)"_s);
        f.database.Exec(u"insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Radif) values(500009,1,0,4,1)"_s);
        f.database.Exec(u"update GoodInf set AvaBgPrd=4,CostBgPrd=1"_s);
        f.OpenGood(500009, [&](QWidget *screen) {
            f.ShowTab(screen, u"Category_TBC"_s);
            QCOMPARE(test::Find<host::Grid>(screen, u"Category_GRD"_s).RowCount(), 1);
            test::Focus(screen, u"Category_frame1"_s);
            // Nothing, what the good stands in, and a branch that has branches are refused.
            for (const QString &typed : {QString(), u"سرد"_s, u"خوراک"_s, u"گرم"_s}) {
                test::Type(typed);
                test::Press(Qt::Key_Return);
                test::Focus(screen, u"Category_frame1"_s);
                test::Press(Qt::Key_F4);
                if (typed != u"گرم"_s)
                    QCOMPARE(f.host.messages.Take(), refused);
            }
            QCOMPARE(test::Find<host::CategoryPath>(screen, u"Category_frame1"_s).Text(), QString());
            f.host.messages.Answer(true);
            test::Press(Qt::Key_Down);
            QCOMPARE(test::Focused(), u"Category_GRD"_s);
            test::Press(Qt::Key_F7);
            QCOMPARE(f.host.messages.Take(), u"MsgDeleteItem(دسته)"_s);
            // Another desk opens the same good and leaves it unsaved.
            test::TestHost other({f.database.AnotherConnection(), f.database.GoodsList(), f.database.Scales()});
            TGood_Get_FRM second(other);
            test::Drive([&] { second.Open(500009, host::TFormMode::Edit); },
                        [](QWidget *) { test::Press(Qt::Key_Escape); });
            screen->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(screen));
            f.database.Exec(u"insert into PhotoGallery(GRPCode,Id_pic,Picture,tmp) values(102,500009,0x01,1)"_s);
            if (!save)
                return f.Leave();
            // What is typed counts; meanwhile another desk hangs a branch below it.
            f.database.Exec(u"insert into Categories(Code,ParentCode,Name,Path) values(5,4,N'تند',',1,4,5,')"_s);
            for (const QString &typed : {u"نیست"_s, u"ترش"_s}) {
                test::Focus(screen, u"Category_frame1"_s);
                test::Press(Qt::Key_A, Qt::ControlModifier);
                test::Type(typed);
                test::Press(Qt::Key_F3);
                QCOMPARE(f.host.messages.TakeAll(), QStringList{refused});
                QCOMPARE(test::Focused(), u"Editor"_s);
            }
            f.database.Exec(u"delete Categories where Code=5"_s);
            test::Press(Qt::Key_F4);
            f.database.Exec(u"insert into Categories(Code,ParentCode,Name,Path) values(5,4,N'تند',',1,4,5,')"_s);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{refused});
            QCOMPARE(test::Find<host::Grid>(screen, u"Category_GRD"_s).RowCount(), 1);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_s});
        });
        QTEST(f.database.Rows(u"select Category_code,tmp from Kala_category"_s), "rows");
        QTEST(f.database
                  .Rows(u"select (select count(*) from PhotoGallery),(select count(*) from PhotoGallery where "
                        "tmp>0),(select count(*) from GoodFirstAsset where tmp>0),(select count(*) from "
                        "tmpCostList)"_s)
                  .value(0),
              "others");
    }

    void photosAndStoresNeedTheirRight()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.OpenGood(500009, [&](QWidget *screen) {
            auto &button = test::Find<QPushButton>(screen, u"Picture_BTN"_s);
            button.click();
            QCOMPARE(f.host.photos.calls.size(), 1);
            QVERIFY(f.host.photos.calls.first().contains(u"500009"_s));
            f.host.permissions.Deny(host::TSoftwarePart::Goods, host::TPermission::Photo);
            button.click();
            QCOMPARE(f.host.photos.calls.size(), 1);
            test::Focus(screen, u"Store_Entity"_s);
            f.host.entities.choices = {0};
            test::Press(Qt::Key_F2);
            QCOMPARE(f.host.entities.calls.filter(u"Select_GroupList(105"_s).size(), 1);
            f.host.permissions.Deny(host::TSoftwarePart::Stores, host::TPermission::OpenList);
            test::Press(Qt::Key_F2);
            QCOMPARE(f.host.entities.calls.filter(u"Select_GroupList(105"_s).size(), 1);
            test::Press(Qt::Key_Escape);
        });
    }
};

REGISTER_TEST(TestGoodLists)
#include "tst_lists.moc"
