#include "tests/screens/goods_list/list_fixture.h"

#include <QCheckBox>

/// The goods on the scales, worked from the goods list.
class TestScales : public QObject
{
    Q_OBJECT

private slots:
    void GoodsGoOnAndOff();
    void ItIsAllOrNothing();
    void WithoutScaleDatabase();

private:
    struct Fixture : Screen
    {
        /// 110001 to 110003 at 100, 200 and nothing on level 2; 110004 is the code of a stranger on the scales.
        Fixture()
        {
            database.Exec(
                u"delete from Items update Units set [Type] = 1 where Code = 1 "
                "update GoodInf set Unit = 1, Name = N'O''x %1 <b>', AbbName = N'!62''6!7!' where Code = 110001 "
                "update GoodInf set Unit = 2, Name = N'دو', AbbName = null where Code = 110002 "
                "update GoodCostDiscount set CostLevel_Sell_2 = 100 where GoodCode = 110001 "
                "update GoodCostDiscount set CostLevel_Sell_2 = 200.5 where GoodCode = 110002 "
                "update GoodCostDiscount set CostLevel_Sell_2 = 0 where GoodCode = 110003 "
                "insert into Items (Code, ScaleType, Name1) values (110004, 2, N'دیگر')"_s);
        }
        void Mark(const QStringList &codes)
        {
            Open();
            for (const QString &code : codes)
                grid.SetMarked(code, true);
        }
        void Work(const std::function<void(QWidget *)> &drive)
        {
            test::Focus(&list, u"SmartButton_VLK1"_s);
            test::Drive([] { test::Press(Qt::Key_Space); },
                        [&](QWidget *screen) {
                            test::Focus(screen, u"Level_CMB"_s);
                            test::Press(Qt::Key_Home);
                            test::Press(Qt::Key_Down);
                            drive(screen);
                            test::Picture(*screen, u"scales"_s);
                            test::Press(Qt::Key_Escape);
                        });
            Activate();
        }
        QStringList Items() const
        {
            return database.Rows(
                u"select Code, ChangeType, Price, Name1, BarCode, [Type] from Items where ScaleType = 1 "
                "order by Code"_s);
        }
    };
};

void TestScales::GoodsGoOnAndOff()
{
    Fixture f;
    f.Mark({u"110001"_s, u"110002"_s, u"110003"_s, u"110004"_s});
    const auto row = [](int code, int change, const QString &rest) { return u"%1|%2|"_s.arg(code).arg(change) + rest; };
    const QString one = u"100|O'x %1 <b>|62'6|1"_s;
    f.Work([&](QWidget *screen) {
        test::Press(Qt::Key_F4);
        const QString said = f.host.messages.Take();
        QVERIFY2(said.contains(u"۲ کالای تازه و ۰"_s) && said.contains(u"۱ کالا در این سطح قیمت ندارد"_s) &&
                     said.contains(u"کد ۱ کالا"_s),
                 qPrintable(said));
        const QStringList fresh = {row(110001, 1, one), row(110002, 1, u"200.5|دو||0"_s)};
        QCOMPARE(f.Items(), fresh);
        // The scales have read the first; the price of both is another then, and a third stays as it is.
        f.database.Exec(u"update Items set ChangeType = 0 where Code = 110001 update GoodCostDiscount set "
                        "CostLevel_Sell_2 = 300 where GoodCode in (110001, 110002)"_s);
        test::Press(Qt::Key_F8);
        QVERIFY(f.host.messages.Take().contains(u"۲ کالای تغییریافته"_s));
        const QString changed = QString(one).replace(u"100|"_s, u"300|"_s);
        QCOMPARE(f.Items(), (QStringList{row(110001, 2, changed), row(110002, 1, u"300|دو||0"_s)}));
        f.database.Exec(u"update Items set ChangeType = 0 where Code = 110001"_s);
        test::Press(Qt::Key_F8);
        QVERIFY(f.host.messages.Take().contains(u"۰ کالای تغییریافته"_s));
        auto &grid = test::Find<host::Grid>(screen, u"Items_GRD"_s);
        test::Focus(screen, u"Waiting_CHK"_s);
        test::Press(Qt::Key_Space);
        QCOMPARE(grid.ShownKeys(), QStringList{u"110002"_s});
        test::Press(Qt::Key_Space);
        QVERIFY(grid.Locate(u"110001"_s));
        f.host.messages.Answer(false);
        f.host.messages.Answer(true);
        test::Press(Qt::Key_F7);
        QCOMPARE(f.Items().constFirst(), row(110001, 0, changed));
        test::Press(Qt::Key_F7);
        f.host.messages.TakeAll();
        QCOMPARE(f.Items().constFirst(), row(110001, 3, changed));
        QVERIFY(grid.CurrentValue(u"State"_s).toString().startsWith(u"حذف"_s));
        test::Press(Qt::Key_F4); // on again
        f.host.messages.Take();
        QCOMPARE(f.Items().constFirst(), row(110001, 2, changed));
        f.host.permissions.Deny(TSoftwarePart::Goods, TPermission::Change);
        for (const Qt::Key key : {Qt::Key_F4, Qt::Key_F7, Qt::Key_F8})
            test::Press(key);
        QCOMPARE(f.Items().constFirst(), row(110001, 2, changed));
    });
    QCOMPARE(f.database.Rows(u"select ChangeType, Name1 from Items where Code = 110004"_s), QStringList{u"0|دیگر"_s});
}

void TestScales::ItIsAllOrNothing()
{
    Fixture f;
    f.database.Exec(
        u"drop table Items create table Items (Code int not null primary key, ScaleType tinyint, ChangeType "
        "tinyint, Name1 nvarchar(152), Price decimal(28,9) check (Price <> 200.5), BarCode nvarchar(100), "
        "[Type] int) insert into Items values (110001, 1, 0, N'', 0, N'', 0)"_s);
    f.Mark({u"110001"_s, u"110002"_s});
    f.Work([&](QWidget *) {
        test::Press(Qt::Key_F4);
        QVERIFY(!f.host.messages.Take().isEmpty());
    });
    QCOMPARE(f.Items(), QStringList{u"110001|0|0|||0"_s});
}

void TestScales::WithoutScaleDatabase()
{
    Fixture f;
    f.Open();
    f.database.Exec(u"drop table Items"_s);
    test::Focus(&f.list, u"SmartButton_VLK1"_s);
    test::Press(Qt::Key_Space);
    QVERIFY(f.host.messages.Take().contains(u"پایگاه داده‌ی ترازو در دسترس نیست"_s));
}

REGISTER_TEST(TestScales)
#include "tst_scales.moc"
