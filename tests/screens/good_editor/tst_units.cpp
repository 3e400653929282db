#include "host/controls/numeric_edit.h"
#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace {

/// Another window takes the keys and gives them back.
void LookElsewhere()
{
    for (const QEvent::Type type : {QEvent::FocusOut, QEvent::FocusIn}) {
        QFocusEvent event(type, Qt::ActiveWindowFocusReason);
        QApplication::sendEvent(QApplication::focusWidget(), &event);
    }
}

/// "Control=text" entries, typed in their order; each field is left before the next, behind a "~" after a look
/// elsewhere. Without a text it is passed.
void TypeAll(QWidget *screen, const QStringList &entries)
{
    for (const QString &entry : entries) {
        const QString name = entry.section(u'=', 0, 0) + u"_EDT"_s;
        entry.contains(u'=') ? test::Enter(screen, name, entry.section(u'=', 1).remove(u'~'))
                             : test::Focus(screen, name);
        if (entry.endsWith(u'~'))
            LookElsewhere();
        test::Press(Qt::Key_Tab);
        QCoreApplication::processEvents();
    }
}

QString Shown(QWidget *screen, const QString &name)
{
    return host::PlainText(test::Find<QLineEdit>(screen, name + u"_EDT"_s));
}

/// The "+" of the first barcode.
QAction &Complete(QWidget *screen)
{
    return test::Find<QAction>(&test::Find(screen, u"BarCode1_EDT"_s), u"complete"_s);
}

void SetFormula(QWidget *screen, const QString &formula)
{
    test::Focus(screen, u"Formool_CHK"_s);
    test::Press(Qt::Key_Space);
    QCOMPARE(test::Focused(), u"Formool_EDT"_s);
    test::Press(Qt::Key_A, Qt::ControlModifier);
    test::Type(formula);
    test::Press(Qt::Key_Tab);
}

} // namespace

/// What leaving the fields of units, quantities and barcodes computes, refuses and asks.
class TestGoodUnits : public QObject
{
    Q_OBJECT

private slots:
    void bigAndSmallUnits_data()
    {
        QTest::addColumn<QString>("formula");
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("a total is split")
            << u"12"_s << QStringList{u"Meghdar_Joz=30"_s} << QStringList{u"MeghdarKol=2"_s, u"MeghdarJoz=6"_s};
        QTest::newRow("parts are joined")
            << u"12"_s << QStringList{u"MeghdarKol=2"_s, u"MeghdarJoz=6"_s} << QStringList{u"Meghdar_Joz=30"_s};
        QTest::newRow("without binary noise")
            << u"0.1"_s << QStringList{u"MeghdarKol=3"_s} << QStringList{u"Meghdar_Joz=0.3"_s};
        QTest::newRow("prices of the small unit")
            << u"12"_s << QStringList{u"GheymatJoz=۲۵۰"_s} << QStringList{u"GheymatKol=3000"_s};
        QTest::newRow("prices of the big unit")
            << u"12"_s << QStringList{u"GheymatKol=3000"_s} << QStringList{u"GheymatJoz=250"_s};
        QTest::newRow("formula 0") << u"0"_s << QStringList{u"MeghdarKol=2"_s, u"GheymatKol=7"_s, u"GheymatJoz=5"_s}
                                   << QStringList{u"Meghdar_Joz=0"_s, u"GheymatKol=0"_s, u"GheymatJoz=5"_s};
        QTest::newRow("another formula") << u"12"_s << QStringList{u"Meghdar_Joz=30"_s, u"Formool=10"_s}
                                         << QStringList{u"MeghdarKol=2"_s, u"MeghdarJoz=10"_s, u"Meghdar_Joz=30"_s};
        QTest::newRow("parts before the formula")
            << u"0"_s << QStringList{u"MeghdarKol=2"_s, u"MeghdarJoz=6"_s, u"Formool=12"_s}
            << QStringList{u"MeghdarKol=2"_s, u"MeghdarJoz=6"_s, u"Meghdar_Joz=30"_s};
        QTest::newRow("a price that thirds cannot tell, passed")
            << u"3"_s << QStringList{u"GheymatKol=100"_s, u"GheymatJoz"_s, u"GheymatKol"_s}
            << QStringList{u"GheymatKol=100"_s, u"GheymatJoz=33.333333333"_s};
        QTest::newRow("no formula after all")
            << u"12"_s << QStringList{u"Formool="_s} << QStringList{u"Formool=0"_s, u"MeghdarJoz=0"_s};
    }
    void bigAndSmallUnits()
    {
        QFETCH(QString, formula);
        QFETCH(QStringList, typed);
        QFETCH(QStringList, shown);
        EditorFixture f;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            SetFormula(screen, formula);
            QVERIFY(!test::Find(screen, u"AvaBgPrd_EDT"_s).isVisible());
            TypeAll(screen, typed);
            for (const QString &field : shown)
                QCOMPARE(Shown(screen, field.section(u'=', 0, 0)), field.section(u'=', 1));
            f.Leave();
        });
    }

    void quantitiesInTwoUnits_data()
    {
        QTest::addColumn<bool>("wholeUnits");
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<int>("answer"); // -1: nothing is asked
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::newRow("the second follows") << false << QStringList{u"AvaBgPrd=30"_s} << -1 << u"30"_s << u"2.5"_s;
        QTest::newRow("as numbers begin") << false << QStringList{u"AvaBgPrd=030."_s} << -1 << u"30"_s << u"2.5"_s;
        QTest::newRow("another window meanwhile")
            << false << QStringList{u"AvaBgPrd=030~"_s} << -1 << u"30"_s << u"2.5"_s;
        QTest::newRow("in whole units") << true << QStringList{u"AvaBgPrd=30"_s} << -1 << u"30"_s << u"2"_s;
        QTest::newRow("the first follows") << false << QStringList{u"AvaBgPrd2=2"_s} << -1 << u"24"_s << u"2"_s;
        QTest::newRow("typed by hand, kept")
            << false << QStringList{u"AvaBgPrd=30"_s, u"AvaBgPrd2=3"_s} << 0 << u"30"_s << u"3"_s;
        QTest::newRow("typed by hand, replaced")
            << false << QStringList{u"AvaBgPrd=30"_s, u"AvaBgPrd2=3"_s} << 1 << u"36"_s << u"3"_s;
        QTest::newRow("the second passed")
            << false << QStringList{u"AvaBgPrd=10"_s, u"AvaBgPrd2"_s} << -1 << u"10"_s << u"0.833333333"_s;
        QTest::newRow("asked once") << false << QStringList{u"AvaBgPrd=30"_s, u"AvaBgPrd2=3"_s, u"AvaBgPrd2=4"_s} << 1
                                    << u"48"_s << u"4"_s;
    }
    void quantitiesInTwoUnits()
    {
        QFETCH(bool, wholeUnits);
        QFETCH(QStringList, typed);
        QFETCH(int, answer);
        EditorFixture f;
        f.host.settings.record.TwoUnitVariableRatio = true;
        f.host.settings.record.IntegerUnits = wholeUnits;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            SetFormula(screen, u"12"_s);
            if (answer >= 0)
                f.host.messages.Answer(answer == 1);
            TypeAll(screen, typed);
            QCOMPARE(f.host.messages.Take(), answer >= 0 ? u"Confirm(20114)"_s : QString());
            QTEST(Shown(screen, u"AvaBgPrd"_s), "first");
            QTEST(Shown(screen, u"AvaBgPrd2"_s), "second");
            f.Leave();
        });
    }

    void passingChangesNothing_data()
    {
        QTest::addColumn<host::TSettingRecord>("settings");
        QTest::addColumn<QString>("stock"); // the formula and both quantities
        const auto shop = [](bool twoUnits, bool variable, bool whole = false) {
            host::TSettingRecord record;
            record.TwoUnitGoods = twoUnits;
            record.TwoUnitVariableRatio = variable;
            record.IntegerUnits = whole;
            record.GoodDetails = true;
            return record;
        };
        const host::TSettingRecord bigAndSmall = shop(true, false);
        const host::TSettingRecord both = shop(true, true);
        QTest::newRow("one unit") << shop(false, false) << u"0,10,0"_s;
        QTest::newRow("one unit, a second from before") << shop(false, false) << u"12,0,5"_s;
        QTest::newRow("two units without a formula") << both << u"0,10,7"_s;
        QTest::newRow("two units, thirds") << both << u"3,10,3.333333333"_s;
        QTest::newRow("two units, below one") << both << u"0.7,0.786419752,1.123456789"_s;
        QTest::newRow("two whole units, below one") << shop(true, true, true) << u"0.7,100,142"_s;
        QTest::newRow("two whole units, a rest") << shop(true, true, true) << u"12,30,2"_s;
        QTest::newRow("two units, a half") << both << u"7.5,10,1.333333333"_s;
        QTest::newRow("big and small, thirds") << bigAndSmall << u"3,10,3.333333333"_s;
        QTest::newRow("big and small, below one") << bigAndSmall << u"0.7,100,142.857142857"_s;
        QTest::newRow("big and small, whole units") << shop(true, false, true) << u"12,30,7"_s;
        QTest::newRow("big and small, a half") << bigAndSmall << u"7.5,100.000000001,13"_s;
    }
    void passingChangesNothing()
    {
        QFETCH(host::TSettingRecord, settings);
        QFETCH(QString, stock);
        const QString stops = settings.TwoUnitVariableRatio
                                  ? u" AvaBgPrd_EDT AvaBgPrd2_EDT CostBgPrd_EDT Store_Entity "_s
                              : settings.TwoUnitGoods ? u" Formool_EDT MeghdarKol_EDT MeghdarJoz_EDT Meghdar_Joz_EDT "
                                                        "GheymatKol_EDT GheymatJoz_EDT Store_Entity "_s
                                                      : u" Unit_Entity1 AvaBgPrd_EDT CostBgPrd_EDT Store_Entity "_s;
        EditorFixture f;
        f.host.settings.record = settings;
        f.InsertGood(500008, u"شیر"_s, 908);
        f.InsertGood(500009, u"دوغ"_s, 909);
        // With all that a rule would refuse, had it been typed now.
        f.database.Exec(
            u"update GoodInf set AbbName=N'!62!x',Pos=case %1 when 0 then NULL else N'150' end,OffPercent=150,"
            "TaxPercent=101,Unit2=2,CostBgPrd=33.333333333,Meghdar_Formool=%1,AvaBgPrd=%2,AvaBgPrd2=%3 insert into "
            "GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Amount2,Comment,Radif) select Code,1,0,AvaBgPrd,AvaBgPrd2,"
            "N'شمارش',1 from GoodInf"_s.arg(stock.section(u',', 0, 0), stock.section(u',', 1, 1),
                                            stock.section(u',', 2)));
        QStringList columns = f.database.Columns(u"select * from GoodInf"_s);
        columns.removeIf([](const QString &name) { return name.contains(u"Modified"); });
        const auto stored = [&] {
            return f.database.Rows(u"select [%1] from GoodInf order by Code"_s.arg(columns.join(u"],["))) +
                   f.database.Rows(u"select * from GoodFirstAsset order by ID"_s) +
                   f.database.Rows(u"select * from GoodCostDiscount order by GoodCode"_s);
        };
        const QStringList before = stored();
        for (const host::TFormMode mode : {host::TFormMode::Review, host::TFormMode::Edit})
            f.Open(500009, mode, {}, [&](QWidget *screen) {
                const QStringList shown = test::State(screen);
                auto &tabs = test::Find<QTabWidget>(screen, u"PageControl1"_s);
                for (int page = tabs.count() - 1; page >= 0; --page) {
                    tabs.setCurrentIndex(page);
                    const QString round = test::TabRound().join(u' ');
                    QVERIFY2(round.count(u' ') > 1 && (page > 0 || round.contains(stops)), qPrintable(round));
                    QCoreApplication::processEvents();
                }
                QCOMPARE(test::State(screen), shown);
                test::Press(mode == host::TFormMode::Edit ? Qt::Key_F3 : Qt::Key_Escape);
                QCOMPARE(f.host.messages.TakeAll().size(), mode == host::TFormMode::Edit ? 1 : 0);
            });
        QCOMPARE(stored(), before);
    }

    void aShopWithoutSecondUnitsKeepsThem()
    {
        EditorFixture f;
        f.host.settings.record.TwoUnitGoods = false;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"update GoodInf set Unit2=2,Meghdar_Formool=12,AvaBgPrd=24,AvaBgPrd2=2,CostBgPrd=1"_s);
        const auto save = [&](const QString &control, const QString &text) {
            f.OpenGood(500009, [&](QWidget *screen) {
                QVERIFY(!test::Find(screen, u"Unit_Entity2"_s).isVisible());
                test::Enter(screen, control, text);
                test::Press(Qt::Key_F3);
                QCOMPARE(f.host.messages.TakeAll().size(), 1);
            });
            return f.database.Rows(u"select Unit2,Meghdar_Formool,AvaBgPrd,AvaBgPrd2 from GoodInf"_s).value(0);
        };
        QCOMPARE(save(u"Name_EDT"_s, u"ماست"_s), u"2|12|24|2"_s);
        QCOMPARE(save(u"AvaBgPrd_EDT"_s, u"36"_s), u"2|12|36|3"_s);
        QCOMPARE(save(u"AvaBgPrd_EDT"_s, u"0"_s), u"2|12|0|0"_s);
    }

    void theFormulaNamesTheUnits()
    {
        EditorFixture f;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            const auto &unit2 = test::Find<QLabel>(screen, u"Formool_Unit2_LBL"_s);
            QCOMPARE(unit2.text(), u"عدد"_s);
            test::Enter(screen, u"Unit_Entity2"_s, u"99"_s);
            test::Press(Qt::Key_Tab);
            QCoreApplication::processEvents();
            QCOMPARE(unit2.text(), QString());
            test::Enter(screen, u"Unit_Entity2"_s, u"کیلو"_s);
            test::Press(Qt::Key_Return);
            QCOMPARE(unit2.text(), u"کیلوگرم"_s);
            SetFormula(screen, u"12"_s);
            QCOMPARE(test::Find<QLabel>(screen, u"MeghdarJoz_LBL"_s).text(), u"+۱۲×"_s);
            QCOMPARE(test::Find<QLabel>(screen, u"GheymatJoz_LBL"_s).text(), u"=۱۲÷"_s);
            f.Leave();
        });
    }

    void percentsOfVisitors_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("told");
        QTest::newRow("100") << u"100"_s << u"100"_s << false;
        QTest::newRow("above") << u"100.5"_s << u"100"_s << true;
        QTest::newRow("empty") << QString() << u"0"_s << false;
    }
    void percentsOfVisitors()
    {
        QFETCH(QString, typed);
        QFETCH(bool, told);
        EditorFixture f;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            f.ShowTab(screen, u"Complete_TPC"_s);
            TypeAll(screen, {u"Pos="_s + typed});
            QCOMPARE(f.host.messages.Take(), told ? u"MsgRequiredField(درصد کمتر از 100 )"_s : QString());
            QCOMPARE(test::Focused(), told ? u"Pos_EDT"_s : u"SmsCode_EDT"_s);
            QTEST(Shown(screen, u"Pos"_s), "shown");
            f.Leave();
        });
    }

    void leavingTheTaxLooksAtTheDiscount()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"update GoodInf set OffPercent=150,TaxPercent=9"_s);
        f.OpenGood(500009, [&](QWidget *screen) {
            f.ShowTab(screen, u"Discount_TPC"_s);
            test::Enter(screen, u"TaxPercent_edt"_s, u"101"_s);
            test::Press(Qt::Key_Tab);
            QCoreApplication::processEvents();
            QCOMPARE(f.host.messages.Take(), u"MsgRequiredField(درصد کمتر از 100 )"_s);
            QCOMPARE(test::Find<host::NumericEdit>(screen, u"OffPercent_EDT"_s).text(), u"100"_s);
            QCOMPARE(test::Find<host::NumericEdit>(screen, u"TaxPercent_edt"_s).text(), u"101"_s);
            f.Leave();
        });
    }

    void barcodesInUseAreRefused_data()
    {
        QTest::addColumn<QString>("barcode");
        QTest::addColumn<QString>("message");
        QTest::newRow("free") << u"62601"_s << QString();
        QTest::newRow("nothing") << QString() << QString();
        QTest::newRow("a part of one in use") << u"11"_s << QString();
        QTest::newRow("of the sales screen") << u"555"_s << u"MsgHasSubRecordsAnother(بارکد, بارکدهای عملیاتی)"_s;
        QTest::newRow("of another good") << u"22'2"_s << u"MsgRepeatedField( نام اختصاری/بارکد, کالا)"_s;
        QTest::newRow("of a detail") << u"777"_s
                                     << u"MsgRepeatedField( نام اختصاری/بارکد, برای جزییات کالا تعریف شده و)"_s;
    }
    void barcodesInUseAreRefused()
    {
        QFETCH(QString, barcode);
        QFETCH(QString, message);
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"update GoodInf set AbbName='!111!22''2!'"_s);
        f.host.settings.record.ReservedBarcodes[0] = u"555"_s;
        f.host.goodDetails.detailBarcodes = {u"777"_s};
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            f.ShowTab(screen, u"Complete_TPC"_s);
            TypeAll(screen, {u"BarCode2="_s + barcode});
            QCOMPARE(f.host.messages.Take(), message);
            QCOMPARE(test::Focused(), message.isEmpty() ? u"BarCode3_EDT"_s : u"BarCode2_EDT"_s);
            QCOMPARE(Shown(screen, u"BarCode2"_s), barcode);
            // At the Enter of a scanner at once: whatever it sends next must not begin in the next edit.
            test::Focus(screen, u"BarCode2_EDT"_s);
            test::Press(Qt::Key_Return);
            QCOMPARE(f.host.messages.Take(), message);
            QCOMPARE(test::Focused(), message.isEmpty() ? u"BarCode3_EDT"_s : u"BarCode2_EDT"_s);
            if (!message.isEmpty()) {
                test::Press(Qt::Key_F3); // before anything else that this good lacks
                QCOMPARE(f.host.messages.Take(), message);
                test::Type(u"222"_s);
                test::Press(Qt::Key_Return);
                QCOMPARE(Shown(screen, u"BarCode2"_s), u"222"_s);
            }
            f.Leave();
        });
        // Its own barcodes are not another good's.
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Focus(screen, u"BarCode1_EDT"_s);
            test::Press(Qt::Key_Return);
            QCoreApplication::processEvents();
            test::Press(Qt::Key_Escape);
        });
    }

    void aScannedBarcodeMovesOn_data()
    {
        QTest::addColumn<QString>("tab");
        QTest::addColumn<QString>("next");
        QTest::newRow("BarCode1_EDT") << u"General_TPC"_s << u"Unit_Entity1"_s;
        for (int number = 2; number <= 5; ++number)
            QTest::addRow("BarCode%d_EDT", number) << u"Complete_TPC"_s << u"BarCode%1_EDT"_s.arg(number + 1);
        QTest::newRow("BarCode6_EDT") << u"Complete_TPC"_s << u"Save_BTN"_s;
    }
    void aScannedBarcodeMovesOn()
    {
        QFETCH(QString, tab);
        const QString edit = QString::fromLatin1(QTest::currentDataTag());
        EditorFixture f;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            f.ShowTab(screen, tab);
            test::Focus(screen, edit);
            test::Type(u"6260100200303"_s);
            test::Press(Qt::Key_Return);
            QCoreApplication::processEvents();
            QCOMPARE(test::Find<QLineEdit>(screen, edit).text(), u"6260100200303"_s);
            QTEST(test::Focused(), "next");
            f.Leave();
        });
    }

    void furtherBarcodesFollowTheFirst()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"update GoodInf set AbbName='!!'"_s);
        f.OpenGood(500009, [&](QWidget *screen) {
            const QWidget &further = test::Find(screen, u"BarCodes_PNL"_s);
            QVERIFY(further.isHidden());
            // The mark between barcodes would tear this one apart.
            test::Enter(screen, u"BarCode1_EDT"_s, u"6!26"_s);
            QCOMPARE(Shown(screen, u"BarCode1"_s), u"626"_s);
            QVERIFY(!further.isHidden());
            f.Leave();
        });
    }

    void barcodesAreCompleted_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("message");
        QTest::newRow("7 digits") << u"9638507"_s << u"96385074"_s << QString();
        QTest::newRow("12 digits") << u"400638133393"_s << u"4006381333931"_s << QString();
        QTest::newRow("11 digits") << u"40063813339"_s << u"40063813339"_s << u"EAN8 و EAN13\n\rکامل می شوند\n\r\n\r"_s;
        QTest::newRow("13 digits") << u"4006381333931"_s << u"4006381333931"_s << u"EAN8 و EAN13\n\r"_s;
    }
    void barcodesAreCompleted()
    {
        QFETCH(QString, typed);
        QFETCH(QString, message);
        EditorFixture f;
        f.host.barcodes.completions = {{u"9638507"_s, u"96385074"_s}, {u"400638133393"_s, u"4006381333931"_s}};
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            test::Enter(screen, u"BarCode1_EDT"_s, typed);
            // A click on the button does not bring the focus to the edit.
            test::Focus(screen, u"Name_EDT"_s);
            Complete(screen).trigger();
            const QString told = f.host.messages.Take();
            QVERIFY2(message.isEmpty() ? told.isEmpty() : told.contains(message), qPrintable(told));
            QTEST(Shown(screen, u"BarCode1"_s), "shown");
            QCOMPARE(test::Focused(), message.isEmpty() ? u"Unit_Entity1"_s : u"Name_EDT"_s);
            f.Leave();
        });
    }

    void aMissingBarcodeLibraryIsTold()
    {
        EditorFixture f;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            test::Enter(screen, u"BarCode1_EDT"_s, u"9638507"_s);
            QAction &complete = Complete(screen);
            f.host.barcodes.completion = false;
            complete.trigger();
            QVERIFY(f.host.messages.Take().contains(u"تابع تعريف شده در داخل کتابخانه بارکد وجود ندارد"_s));
            f.host.barcodes.library = false;
            complete.trigger();
            QVERIFY(f.host.messages.Take().contains(u"فايل کتابخانه بارکد وجود ندارد"_s));
            f.Leave();
        });
    }

    void theKeyboardSwitches_data()
    {
        QTest::addColumn<bool>("automatic");
        QTest::addColumn<QString>("tab");
        QTest::addColumn<QString>("edit");
        QTest::addColumn<QStringList>("layouts");
        const QStringList both{u"00000409"_s, u"00000429"_s};
        QTest::newRow("barcode") << true << u"General_TPC"_s << u"BarCode1_EDT"_s << both;
        QTest::newRow("barcode, not asked for") << false << u"General_TPC"_s << u"BarCode1_EDT"_s << QStringList();
        QTest::newRow("short code, always") << false << u"Complete_TPC"_s << u"SmsCode_EDT"_s << both;
    }
    void theKeyboardSwitches()
    {
        QFETCH(bool, automatic);
        QFETCH(QString, tab);
        QFETCH(QString, edit);
        EditorFixture f;
        f.host.settings.record.AutoKeyboard = automatic;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            f.ShowTab(screen, tab);
            f.host.keyboard.switches.clear();
            test::Focus(screen, edit);
            test::Press(Qt::Key_Tab);
            QTEST(f.host.keyboard.switches, "layouts");
            test::Focus(screen, edit);
            test::Press(Qt::Key_Escape);
        });
        QCOMPARE(f.host.keyboard.layout, u"00000429"_s); // also when left from inside the edit
    }
};

REGISTER_TEST(TestGoodUnits)
#include "tst_units.moc"
