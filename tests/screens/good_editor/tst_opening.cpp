#include "host/controls/numeric_edit.h"
#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QtTest>

/// The opening stock of a good that is saved: what fixes it, and what becomes of its voucher.
class TestGoodOpening : public QObject
{
    Q_OBJECT

private slots:
    void fixedOpeningStock_data()
    {
        using Way = std::function<void(EditorFixture &)>;
        QTest::addColumn<Way>("fix");
        QTest::addColumn<bool>("fixed");
        QTest::newRow("free") << Way([](EditorFixture &) {}) << false;
        QTest::newRow("period closed") << Way([](EditorFixture &f) { f.host.vouchers.constStartPeriod = true; })
                                       << true;
        QTest::newRow("details entered, also for the second unit") << Way([](EditorFixture &f) {
            f.host.goodDetails.entered = f.host.settings.record.TwoUnitVariableRatio = true;
            f.database.Exec(u"update GoodInf set Unit2=2,Meghdar_Formool=12,AvaBgPrd2=1"_s);
            f.database.Exec(u"update GoodFirstAsset set Amount2=1"_s);
        }) << true;
        QTest::newRow("other voucher") << Way([](EditorFixture &f) {
            f.database.Exec(u"insert into Vouchers(Code,Kind,[Date]) values(1,2,'1405/01/01')"_s);
            f.database.Exec(u"insert into VoucherLines(VoucherCode,GoodCode,Sharh) values(1,500009,N'x')"_s);
        }) << true;
    }
    void fixedOpeningStock()
    {
        using Way = std::function<void(EditorFixture &)>;
        QFETCH(Way, fix);
        QFETCH(bool, fixed);
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"update GoodInf set AvaBgPrd=4,CostBgPrd=1"_s);
        f.database.Exec(u"insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Radif) values(500009,1,0,4,1)"_s);
        fix(f);
        const QString state =
            u"select StoreCode,tmp,Amount1,AvaBgPrd,AvaBgPrd2 from GoodFirstAsset,GoodInf order by Radif"_s;
        const QStringList before = f.database.Rows(state);
        f.OpenGood(500009, [&](QWidget *screen) {
            const auto &quantity = test::Find<host::NumericEdit>(screen, u"AvaBgPrd_EDT"_s);
            QCOMPARE(!quantity.isEnabled() || quantity.isReadOnly(), fixed);
            test::Focus(screen, u"AvaBgPrd_EDT"_s); // passing through changes nothing
            test::Enter(screen, u"Name_EDT"_s, u"ماست"_s);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.database.Rows(state), before);
    }

    void severalStoresAreLeftAlone_data()
    {
        QTest::addColumn<QString>("rows"); // store, quantities
        QTest::addColumn<QStringList>("totals");
        QTest::newRow("one, not the first") << u"(500009,2,36,3,5)"_s << QStringList{u"36"_s, u"3"_s, u"0"_s};
        QTest::newRow("two, parts left over")
            << u"(500009,1,30,2,1),(500009,2,30,2,2)"_s << QStringList{u"60"_s, u"4"_s, u"12"_s};
    }
    void severalStoresAreLeftAlone()
    {
        QFETCH(QString, rows);
        QFETCH(QStringList, totals);
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"update GoodInf set AvaBgPrd=36,AvaBgPrd2=3,CostBgPrd=1,Unit2=2,Meghdar_Formool=12 "
                        "insert into GoodFirstAsset(GoodCode,StoreCode,Amount1,Amount2,Radif) values%1 update "
                        "GoodFirstAsset set tmp=0"_s.arg(rows));
        const QString state = u"select a.*,AvaBgPrd,AvaBgPrd2 from GoodFirstAsset a join GoodInf on Code=GoodCode"_s;
        const QStringList before = f.database.Rows(state);
        for (const QString &formula : {u"12"_s, u"6"_s, QString()})
            f.OpenGood(500009, [&](QWidget *screen) {
                QStringList shown;
                for (const QString &edit : {u"Meghdar_Joz_EDT"_s, u"MeghdarKol_EDT"_s, u"MeghdarJoz_EDT"_s}) {
                    QVERIFY(!test::Find(screen, edit).isEnabled());
                    shown << test::Find<host::NumericEdit>(screen, edit).text();
                }
                if (formula == u"12")
                    QCOMPARE(shown, totals);
                if (!formula.isEmpty())
                    test::Enter(screen, u"Formool_EDT"_s, formula);
                // Another desk opens the same good and leaves.
                f.database.Exec(u"delete from GoodFirstAsset where tmp=1"_s);
                test::Press(Qt::Key_F3);
                QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
            });
        QCOMPARE(f.database.Rows(state), before);
        QVERIFY(f.host.vouchers.calls.isEmpty());
    }

    void theRowKeepsItsStore_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("meanwhile");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("another quantity") << u"AvaBgPrd_EDT"_s << u"3"_s << QString() << QStringList{u"1|3|شمارش|2"_s};
        QTest::newRow("another store") << u"Store_Entity"_s << u"3"_s << QString() << QStringList{u"3|4|شمارش|3"_s};
        QTest::newRow("another desk's rows") << u"AvaBgPrd_EDT"_s << u"3"_s
                                             << u"insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Radif) "
                                                "values(500009,3,0,5,2)"_s
                                             << QStringList{u"1|4|شمارش|2"_s, u"3|5|NULL|2"_s};
    }
    void theRowKeepsItsStore()
    {
        QFETCH(QString, control);
        QFETCH(QString, typed);
        QFETCH(QString, meanwhile);
        EditorFixture f;
        f.host.settings.record.ControlNegativeStock = true;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.host.entities.lists[105] << host::Entity{3, u"سرد"_s};
        f.database.Exec(u"insert into Stores(Code,Name) values(3,N'سرد') update GoodInf set AvaBgPrd=4,CostBgPrd=1,"
                        "Store=2 insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Comment,Radif) "
                        "values(500009,1,0,4,N'شمارش',1)"_s);
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Enter(screen, control, typed);
            if (!meanwhile.isEmpty())
                f.database.Exec(meanwhile);
            test::Press(Qt::Key_F3);
            const QString told = f.host.messages.Take();
            QCOMPARE(told == Saved, meanwhile.isEmpty());
            QCOMPARE(told.contains(u"در جای دیگری تغییر کرده است"_s), !meanwhile.isEmpty());
            if (!meanwhile.isEmpty())
                f.Leave();
        });
        QTEST(f.database.Rows(u"select StoreCode,Amount1,a.Comment,Store from GoodFirstAsset a join GoodInf on "
                              "Code=GoodCode order by StoreCode"_s),
              "rows");
        // What leaves a store leaves the one where it stood.
        QVERIFY(f.host.stock.calls.value(0).contains(u"StoreCode = 1"_s));
    }

    void aRefusedSaveLeavesTheRowsOfBefore()
    {
        EditorFixture f;
        f.host.settings.record.ControlNegativeStock = true;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"update GoodInf set AvaBgPrd=4,CostBgPrd=1 insert into GoodFirstAsset(GoodCode,StoreCode,tmp,"
                        "Amount1) values(500009,1,0,4)"_s);
        f.OpenGood(500009, [&](QWidget *screen) {
            f.host.stock.shortage = u"فروخته شد"_s;
            test::Enter(screen, u"AvaBgPrd_EDT"_s, u"3"_s);
            test::Press(Qt::Key_F3);
            QVERIFY(f.host.messages.Take().contains(f.host.stock.shortage));
            test::Enter(screen, u"AvaBgPrd_EDT"_s, u"4"_s);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.database.Rows(u"select Amount1 from GoodFirstAsset"_s), QStringList{u"4"_s});
    }

    void theOpeningVoucherFollows_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("voucher");
        QTest::addColumn<bool>("closed"); // the period, while the good is open
        QTest::addColumn<QString>("call");
        QTest::newRow("same amount") << 20 << 5 << false << QString();
        QTest::newRow("no voucher yet") << 0 << 0 << false << u"SaveInLineAutoVoucher(500009)"_s;
        QTest::newRow("another amount") << 7 << 5 << false << u"ChangeAutoVouchers(500009, 5, 1405/01/01)"_s;
        QTest::newRow("emptied before") << 0 << 5 << false << u"SaveAutoVouchersAgain(500009)"_s;
        QTest::newRow("period closed") << 7 << 5 << true << QString();
    }
    void theOpeningVoucherFollows()
    {
        QFETCH(int, before);
        QFETCH(int, voucher);
        QFETCH(bool, closed);
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"update GoodInf set AvaBgPrd=%1,CostBgPrd=1,VoucherCode=%2"_s.arg(before).arg(voucher));
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Enter(screen, u"AvaBgPrd_EDT"_s, u"2"_s);
            test::Enter(screen, u"CostBgPrd_EDT"_s, u"10"_s);
            f.host.vouchers.constStartPeriod = closed;
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QTEST(f.host.vouchers.calls.mid(1).value(0), "call"); // behind the question whether it is approved
    }
};

REGISTER_TEST(TestGoodOpening)
#include "tst_opening.moc"
