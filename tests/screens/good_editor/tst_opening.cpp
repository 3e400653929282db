#include "host/controls/numeric_edit.h"
#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QLineEdit>
#include <QtTest>

namespace {

const QString Saved = u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_qs;

} // namespace

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
            f.database.Exec(u"update GoodInf set Unit2=2,Meghdar_Formool=12,AvaBgPrd2=1"_qs);
            f.database.Exec(u"update GoodFirstAsset set Amount2=1"_qs);
        }) << true;
        QTest::newRow("other voucher") << Way([](EditorFixture &f) {
            f.database.Exec(u"insert into Vouchers(Code,Kind,[Date]) values(1,2,'1405/01/01')"_qs);
            f.database.Exec(u"insert into VoucherLines(VoucherCode,GoodCode,Sharh) values(1,500009,N'x')"_qs);
        }) << true;
        QTest::newRow("another store than the first")
            << Way([](EditorFixture &f) { f.database.Exec(u"update GoodFirstAsset set StoreCode=2"_qs); }) << true;
        QTest::newRow("several stores") << Way([](EditorFixture &f) {
            f.database.Exec(
                u"insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Radif) values(500009,2,0,3,2)"_qs);
            f.database.Exec(u"update GoodInf set AvaBgPrd=7"_qs);
        }) << true;
    }
    void fixedOpeningStock()
    {
        using Way = std::function<void(EditorFixture &)>;
        QFETCH(Way, fix);
        QFETCH(bool, fixed);
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_qs, 909);
        f.database.Exec(u"update GoodInf set AvaBgPrd=4,CostBgPrd=1"_qs);
        f.database.Exec(u"insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Radif) values(500009,1,0,4,1)"_qs);
        fix(f);
        const QString state =
            u"select StoreCode,tmp,Amount1,AvaBgPrd,AvaBgPrd2 from GoodFirstAsset,GoodInf order by Radif"_qs;
        const QStringList before = f.database.Rows(state);
        f.OpenGood(500009, [&](QWidget *screen) {
            const auto &quantity = test::Find<host::NumericEdit>(screen, u"AvaBgPrd_EDT"_qs);
            QCOMPARE(!quantity.isEnabled() || quantity.isReadOnly(), fixed);
            test::Focus(screen, u"AvaBgPrd_EDT"_qs); // passing through changes nothing
            test::Enter(screen, u"Name_EDT"_qs, u"ماست"_qs);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.database.Rows(state), before);
    }

    void theOpeningVoucherFollows_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("voucher");
        QTest::addColumn<bool>("closed"); // the period, while the good is open
        QTest::addColumn<QString>("call");
        QTest::newRow("same amount") << 20 << 5 << false << QString();
        QTest::newRow("no voucher yet") << 0 << 0 << false << u"SaveInLineAutoVoucher(500009)"_qs;
        QTest::newRow("another amount") << 7 << 5 << false << u"ChangeAutoVouchers(500009, 5, 1405/01/01)"_qs;
        QTest::newRow("emptied before") << 0 << 5 << false << u"SaveAutoVouchersAgain(500009)"_qs;
        QTest::newRow("period closed") << 7 << 5 << true << QString();
    }
    void theOpeningVoucherFollows()
    {
        QFETCH(int, before);
        QFETCH(int, voucher);
        QFETCH(bool, closed);
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_qs, 909);
        f.database.Exec(u"update GoodInf set AvaBgPrd=%1,CostBgPrd=1,VoucherCode=%2"_qs.arg(before).arg(voucher));
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Enter(screen, u"AvaBgPrd_EDT"_qs, u"2"_qs);
            test::Enter(screen, u"CostBgPrd_EDT"_qs, u"10"_qs);
            f.host.vouchers.constStartPeriod = closed;
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QTEST(f.host.vouchers.calls.mid(1).value(0), "call"); // behind the question whether it is approved
    }
};

REGISTER_TEST(TestGoodOpening)
#include "tst_opening.moc"
