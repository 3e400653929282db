#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QLineEdit>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QString Saved = u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_s;

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
            f.database.Exec(u"update GoodInf set Unit2=2,Meghdar_Formool=12,AvaBgPrd2=1"_s);
            f.database.Exec(u"update GoodFirstAsset set Amount2=1"_s);
        }) << true;
        QTest::newRow("other voucher") << Way([](EditorFixture &f) {
            f.database.Exec(u"insert into Vouchers(Code,Kind,[Date]) values(1,2,'1405/01/01')"_s);
            f.database.Exec(u"insert into VoucherLines(VoucherCode,GoodCode,Sharh) values(1,500009,N'x')"_s);
        }) << true;
        QTest::newRow("another store than the first")
            << Way([](EditorFixture &f) { f.database.Exec(u"update GoodFirstAsset set StoreCode=2"_s); }) << true;
        QTest::newRow("several stores") << Way([](EditorFixture &f) {
            f.database.Exec(
                u"insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Radif) values(500009,2,0,3,2)"_s);
            f.database.Exec(u"update GoodInf set AvaBgPrd=7"_s);
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
            const auto &quantity = test::Find<QLineEdit>(screen, u"AvaBgPrd_EDT"_s);
            QCOMPARE(!quantity.isEnabled() || quantity.isReadOnly(), fixed);
            test::Focus(screen, u"AvaBgPrd_EDT"_s); // passing through changes nothing
            test::Enter(screen, u"Name_EDT"_s, u"ماست"_s);
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
