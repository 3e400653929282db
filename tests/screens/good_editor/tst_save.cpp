#include "host/controls/entity_picker.h"
#include "host/controls/grid.h"
#include "host/controls/numeric_edit.h"
#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QtTest>

namespace {

/// Types into every edit of the screen that takes it.
void TypeEverywhere(QWidget *screen)
{
    auto &tabs = test::Find<QTabWidget>(screen, u"PageControl1"_s);
    for (int page = 0; page < tabs.count(); ++page) {
        tabs.setCurrentIndex(page);
        for (QLineEdit *edit : tabs.widget(page)->findChildren<QLineEdit *>())
            if (edit->isVisible() && edit->isEnabled() && !edit->isReadOnly()) {
                edit->setFocus(Qt::TabFocusReason);
                test::Press(Qt::Key_A, Qt::ControlModifier);
                test::Type(u"7"_s);
            }
    }
}

} // namespace

/// Saving a good: what is typed becomes rows, all of them or none.
class TestGoodSave : public QObject
{
    Q_OBJECT

private slots:
    void aNewGoodByKeysAlone()
    {
        EditorFixture f;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            QCOMPARE(test::Focused(), u"Name_EDT"_s);
            test::Type(u"شیر"_s);
            test::Press(Qt::Key_Return);
            test::Type(u"پرچرب"_s);
            test::Press(Qt::Key_Return);
            test::Type(u"یک لیتری"_s);
            QCOMPARE(test::Find<QLabel>(screen, u"FullName_LBL"_s).text(), u"شیر پرچرب یک لیتری"_s);
            QVERIFY(test::RightOf(test::Find(screen, u"Name_EDT"_s), test::Find(screen, u"Kala_Type_EDT"_s)));
            test::Press(Qt::Key_Return);
            // A scanner: fast keys and Enter.
            QCOMPARE(test::Focused(), u"BarCode1_EDT"_s);
            test::Type(u"6260100200303"_s);
            test::Press(Qt::Key_Return);
            QCOMPARE(test::Focused(), u"Unit_Entity1"_s);
            test::Type(u"۱"_s);
            test::Enter(screen, u"AvaBgPrd_EDT"_s, u"۲٫۵"_s);
            test::Enter(screen, u"CostBgPrd_EDT"_s, u"۱۰۰۰"_s);
            test::Enter(screen, u"Store_Entity"_s, u"2"_s);
            test::Press(Qt::Key_4, Qt::ControlModifier);
            QCOMPARE(f.CurrentTab(screen), u"Discount_TPC"_s); // without good details their tab is not there
            test::Press(Qt::Key_3, Qt::ControlModifier);
            test::Enter(screen, u"SmsCode_EDT"_s, u"۱۲۳"_s);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
            // Ready for the next good of the group.
            QCOMPARE(test::Focused(), u"Name_EDT"_s);
            QCOMPARE(test::Find<host::NumericEdit>(screen, u"Code_EDT"_s).text(), u"500002"_s);
            QCOMPARE(test::Find<QLineEdit>(screen, u"BarCode1_EDT"_s).text(), QString());
            test::Press(Qt::Key_3, Qt::ControlModifier);
            QCOMPARE(test::Focused(), u"Weight_EDT"_s); // not where the last good was left
            f.database.Exec(u"insert PhotoGallery(GRPCode,Id_pic,Picture,tmp) values(102,500002,0x01,1)"_s);
            test::Find<QAbstractButton>(screen, u"Picture_BTN"_s).click();
            f.host.messages.Answer(true);
            test::Press(Qt::Key_Escape);
            QVERIFY(f.host.messages.Take().startsWith(u"Ask("_s)); // its photo would go with it
        });
        QCOMPARE(f.database.Rows(u"select Code,GrpCode,Name,AbbName,Unit,AvaBgPrd,CostBgPrd,Store,SMSCode,UserCreated,"
                                 "CreatedDate,CreatedTime from GoodInf"_s),
                 QStringList{u"500001|5|شیر پرچرب یک لیتری|!6260100200303!!!!!!|1|2.5|1000|2|123|مریم احمدی (7)|"
                             "1403/05/09|10:20:30"_s});
        QCOMPARE(f.database.Rows(u"select GoodCode,StoreCode,tmp,Amount1,Amount2,Radif from GoodFirstAsset"_s),
                 QStringList{u"500001|2|0|2.5|0|1"_s});
        QCOMPARE(f.host.vouchers.calls.filter(u"SaveInLineAutoVoucher"_s).size(), 1);
        // Nothing of the next, unsaved good is left behind, nor is its code kept.
        QCOMPARE(f.host.entities.calls.value(f.host.entities.calls.size() - 1), u"ReleaseCodes(102)"_s);
        QCOMPARE(f.database.Rows(u"select * from tmpCostList"_s), QStringList());
    }

    void everyFieldComesBack()
    {
        EditorFixture f;
        f.database.Exec(u"insert into Stores(Code,Name) values(3,N'سرد')"_s);
        const QString nasty = u"O'ب%_[x]\u200f\u200c😀"_s;
        const QList<std::pair<QString, QString>> general{
            {u"Name_EDT"_s, u"شیر "_s + nasty},
            {u"Kala_Type_EDT"_s, nasty},
            {u"Kala_Index_EDT"_s, u"ي ك"_s},
            {u"BarCode1_EDT"_s, u"a'b"_s},
            {u"Unit_Entity1"_s, u"3"_s},
            {u"Unit_Entity2"_s, u"2"_s},
            {u"AvaBgPrd_EDT"_s, u"0.000000001"_s},
            {u"AvaBgPrd2_EDT"_s, u"7"_s},
            {u"CostBgPrd_EDT"_s, u"12345678901234"_s},
            {u"Store_Entity"_s, u"1"_s},
            {u"MinAva_EDT"_s, u"12.5"_s},
            {u"ConsumerPrice_EDT"_s, u"99999.999"_s},
        };
        const QList<std::pair<QString, QString>> complete{
            {u"Weight_EDT"_s, u"1.1"_s},   {u"Length_EDT"_s, u"2.2"_s},
            {u"Width_EDT"_s, u"3.3"_s},    {u"Heigth_EDT"_s, u"4.4"_s},
            {u"Pos_EDT"_s, u"100"_s},      {u"SmsCode_EDT"_s, u"987654321012345678"_s},
            {u"Position_EDT"_s, nasty},    {u"DetailUniqueCode_EDT"_s, u"0012"_s},
            {u"BarCode2_EDT"_s, nasty},    {u"BarCode4_EDT"_s, u"44"_s},
            {u"BarCode6_EDT"_s, u"6!6"_s},
        };
        const QList<std::pair<QString, QString>> discounts{
            {u"Discount_Sell_1_EDT"_s, u"0.5"_s},
            {u"Discount_Sell_4_EDT"_s, u"100"_s},
            {u"Discount_Buy_2_EDT"_s, u"12.25"_s},
            {u"TaxPercent_edt"_s, u"9"_s},
        };
        f.OpenNew(u"6"_s, [&](QWidget *screen) {
            // Without the code, which each new good has for itself, and the tab.
            const auto inputs = [screen] {
                return test::State(screen).replaceInStrings(QRegularExpression(u"^(Code_EDT|PageControl1|qt).*"_s), {});
            };
            const QStringList blank = inputs();
            for (const auto &[control, text] : general)
                test::Enter(screen, control, text);
            f.ShowTab(screen, u"Complete_TPC"_s);
            for (const auto &[control, text] : complete)
                test::Enter(screen, control, text);
            test::Enter(screen, u"Comment_EDT"_s, u"خط "_s + nasty);
            test::Press(Qt::Key_Return); // a line of its own, not the next control
            test::Focus(screen, u"DaraiGoodType_CMB"_s);
            test::Press(Qt::Key_End);
            f.ShowTab(screen, u"Discount_TPC"_s);
            for (const QString &button : {u"TaxPercent_RB"_s, u"ChargeExempt_RB"_s, u"GroupDiscount_CHK"_s}) {
                test::Focus(screen, button);
                test::Press(Qt::Key_Space);
            }
            for (const auto &[control, text] : discounts)
                test::Enter(screen, control, text);
            test::Focus(screen, u"Default_Discount_Sell_CMB"_s);
            test::Press(Qt::Key_End);
            QVERIFY(inputs() != blank);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
            // The next good begins with nothing of this one.
            QCOMPARE(inputs(), blank);
            test::Press(Qt::Key_Escape);
        });
        f.OpenGood(600001, [&](QWidget *screen) {
            for (const auto &fields : {general, complete, discounts})
                for (const auto &[control, text] : fields) {
                    QWidget &widget = test::Find(screen, control);
                    const auto *combo = qobject_cast<QComboBox *>(&widget);
                    const auto *edit = qobject_cast<QLineEdit *>(&widget);
                    const QString shown = combo  ? combo->currentText()
                                          : edit ? host::PlainText(*edit)
                                                 : QString::number(qobject_cast<host::EntityPicker *>(&widget)->Code());
                    QVERIFY2(shown == text, qPrintable(control + u": "_s + shown));
                }
            QCOMPARE(test::Find<QPlainTextEdit>(screen, u"Comment_EDT"_s).toPlainText(), u"خط "_s + nasty + u'\n');
            QCOMPARE(test::Find<QComboBox>(screen, u"DaraiGoodType_CMB"_s).currentData().toInt(), 2);
            QVERIFY(test::Find<QAbstractButton>(screen, u"ChargeExempt_RB"_s).isChecked());
            QVERIFY(!test::Find<QAbstractButton>(screen, u"GroupDiscount_CHK"_s).isChecked());
            QCOMPARE(test::Find<QComboBox>(screen, u"Default_Discount_Sell_CMB"_s).currentIndex(), 3);
            QVERIFY(test::Find<QLineEdit>(screen, u"Code_EDT"_s).isReadOnly());
            test::Press(Qt::Key_Escape);
        });
    }

    void aSecondRecordInTheSameScreen_data()
    {
        QTest::addColumn<host::TFormMode>("mode");
        QTest::newRow("new") << host::TFormMode::New;
        QTest::newRow("edit") << host::TFormMode::Edit;
        QTest::newRow("review") << host::TFormMode::Review;
    }
    void aSecondRecordInTheSameScreen()
    {
        QFETCH(host::TFormMode, mode);
        EditorFixture f;
        f.host.settings.record.GoodDetails = f.host.settings.record.FinalPrices = true;
        f.host.categories.all = {{3, 0, u"گرم"_s}};
        f.InsertGood(500008, u"شیر"_s, 908);
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(
            u"insert into Categories(Code,Name,Path) values(3,N'گرم',',3,') insert into Kala_category(Kala_code,"
            "Category_code) values(500008,3) insert into DetailTypes(Title,DetailType) values(N'رنگ',2) insert into "
            "GoodDetailRelation(GoodCode,DetailID) select 500008,ID from DetailTypes update GoodInf set GrpCode=6,"
            "kala_type=N'ب',kala_index=N'ج',AbbName='!1!2!3!4!5!6!',Pos='9',Position=N'قفسه',OffPercent=8,MinAva=7,"
            "Unit=3,Unit2=2,AvaBgPrd=36,AvaBgPrd2=3,CostBgPrd=9,Store=2,ChargeExempt=1,TaxPercent=9,Meghdar_Formool=12,"
            "Weight=1,Height=2,Width=3,[Length]=4,GroupDiscount=0,DetailUniqueCode=N'77',Tax_In_SellCosts=1,"
            "Tax_In_BuyCosts=1,Comment=N'شرح',ConsumerPrice=5,DaraiGoodType=2 where Code=500008 update "
            "GoodCostDiscount set Discount_Sell_1=1,Discount_Sell_4=4,Discount_Buy_2=2,Default_Discount_Sell_Number=2,"
            "Default_Discount_Buy_Number=3,CostLevel_Sell_2=200,CostLevel_Buy_3=300,Default_CostLevel_Sell_Number=2 "
            "where GoodCode=500008 insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Amount2,Radif) "
            "values(500008,1,0,36,3,1)"_s);
        const auto second = [&] {
            QStringList state;
            f.Open(500009, mode, u"5"_s, [&](QWidget *screen) {
                state = test::State(screen);
                test::Press(Qt::Key_Escape);
            });
            return state;
        };
        const QStringList fresh = second();
        f.keepsScreen = true;
        for (const host::TFormMode first : {host::TFormMode::Edit, host::TFormMode::Review}) {
            f.Open(500008, first, {}, [&](QWidget *screen) {
                TypeEverywhere(screen);
                f.Leave();
            });
            QCOMPARE(second(), fresh);
        }
        // The first good's amounts are not behind a formula that the second one is given.
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Focus(screen, u"Formool_CHK"_s);
            test::Press(Qt::Key_Space);
            test::Type(u"10"_s);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.database.Rows(u"select AvaBgPrd,AvaBgPrd2,CostBgPrd,(select count(*) from GoodFirstAsset where "
                                 "GoodCode=Code) from GoodInf where Code=500009"_s),
                 QStringList{u"0|0|0|0"_s});
    }

    void allOrNothing_data()
    {
        QTest::addColumn<QString>("table"); // the one whose statement fails, in the order of writing
        QTest::addColumn<QString>("columns");
        QTest::newRow("behind the good") << u"GoodDetailRelation"_s << u"GoodCode int, DetailID int"_s;
        QTest::newRow("after everything else") << u"PhotoGallery"_s << u"GRPCode int, Id_pic int, tmp int"_s;
    }
    void allOrNothing()
    {
        QFETCH(QString, table);
        QFETCH(QString, columns);
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.host.settings.record.GoodDetails = true;
        f.database.Exec(u"insert into DetailTypes(Title,DetailType) values(N'رنگ',1)"_s);
        const QString state =
            u"select g.Code,g.Name,g.AvaBgPrd,c.Discount_Sell_1,c.CostLevel_Sell_1,(select count(*) from "
            "GoodFirstAsset where tmp=0) from GoodInf g join GoodCostDiscount c on c.GoodCode=g.Code"_s;
        const QStringList before = f.database.Rows(state);
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Enter(screen, u"Name_EDT"_s, u"ماست"_s);
            test::Enter(screen, u"AvaBgPrd_EDT"_s, u"3"_s);
            test::Enter(screen, u"CostBgPrd_EDT"_s, u"10"_s);
            f.ShowTab(screen, u"Discount_TPC"_s);
            test::Enter(screen, u"Discount_Sell_1_EDT"_s, u"7"_s);
            f.database.Exec(u"insert into #GoodDetails(GoodCode,GoodDetailID,GoodDetailTitle) select "
                            "500009,ID,Title from DetailTypes"_s);
            f.database.Exec(u"drop table "_s + table);
            test::Press(Qt::Key_F3);
            QVERIFY(f.host.messages.Take().contains(table));
            const QStringList asked =
                f.host.goodDetails.calls + f.host.stock.calls + f.host.vouchers.calls.filter(u"Save"_s);
            QCOMPARE(asked,
                     (QStringList{u"EnterGoodDetailSave(500009, 3)"_s, u"SaveStorageAutoOperation(102, 500009)"_s,
                                  u"SaveInLineAutoVoucher(500009)"_s}));
            QCOMPARE(f.database.Rows(state), before);
            QCOMPARE(test::Find<host::NumericEdit>(screen, u"Discount_Sell_1_EDT"_s).text(), u"7"_s);
            // Repaired, the same save goes through without typing anything again.
            f.database.Exec(u"create table %1(ID int identity(1,1) not null, %2)"_s.arg(table, columns));
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.result, 1);
        QCOMPARE(f.database.Rows(state), QStringList{u"500009|ماست  |3|7|100|1"_s});
    }

    void theDatabaseGoesAwayAndComesBack()
    {
        EditorFixture f;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            f.FillRequired(screen);
            QSqlDatabase main = f.database.Main();
            main.close();
            test::Press(Qt::Key_F3);
            QVERIFY(f.host.messages.TakeAll().join(u' ').contains(u"باقی است"_s));
            QCOMPARE(test::Find<QComboBox>(screen, u"Name_EDT"_s).currentText(), u"شیر"_s);
            QVERIFY(main.open());
            QCOMPARE(f.database.Scalar(u"select count(*) from GoodInf"_s).toInt(), 0);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
            main.close();
            test::Press(Qt::Key_Escape);
            QVERIFY(!f.host.messages.TakeAll().join(u' ').contains(u"باقی است"_s)); // the form goes all the same
            QVERIFY(main.open());
        });
        QCOMPARE(f.database.Rows(u"select Code,Name from GoodInf"_s), QStringList{u"500001|شیر  "_s});
    }

    /// Many goods change while one of them is open: its save writes what was typed, and nothing of before the change.
    void manyGoodsChangeMeanwhile()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.InsertGood(500010, u"کشک"_s, 910);
        TGood_DM other({f.database.AnotherConnection(), f.database.GoodsList(), f.database.Scales()}, f.host.settings,
                       f.host.entities);
        const goods::GoodsScope all{goods::ScopeKind::All, {}};
        const goods::BulkOrder order{u"x"_s, u"u (1)"_s, u"1405/01/01"_s, u"10:00:00"_s, {}};
        goods::GroupDiscount discount;
        discount.sellTicked[0] = true;
        discount.sell[0] = 7;
        QList<int> changes;
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Enter(screen, u"Name_EDT"_s, u"ماست"_s);
            changes << other.AssetType_Apply(all, 5, order).change
                    << other.ApplyGroupDiscount(all, discount, order).change;
            other.BulkPrices_Prepare(all, {goods::PriceKind::Sale, 1, 3, 11, 1, 0});
            changes << other.BulkPrices_Apply(order).change;
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.Take(), Saved);
        });
        const QString goods = u"select kala_name,DaraiGoodType,Discount_Sell_1,CostLevel_Sell_1 from GoodInf join "
                              "GoodCostDiscount on GoodCode=Code order by Code"_s;
        QCOMPARE(f.database.Rows(goods), (QStringList{u"ماست|5|7|111"_s, u"کشک|5|7|111"_s}));
        for (const int change : std::as_const(changes))
            QCOMPARE(other.BulkChange_TakeBack(change, order).left, 0);
        QCOMPARE(f.database.Rows(goods), (QStringList{u"ماست|0|0|100"_s, u"کشک|0|0|100"_s}));
    }

    void anotherDeskTakesTheCode_data()
    {
        QTest::addColumn<bool>("fails");
        QTest::newRow("the first save") << false;
        QTest::newRow("a save that failed before") << true;
    }
    void anotherDeskTakesTheCode()
    {
        QFETCH(bool, fails);
        EditorFixture f;
        f.database.Exec(u"insert into Categories(Code,Name,Path) values(3,N'گرم',',3,')"_s);
        f.host.categories.all = {{3, 0, u"گرم"_s}};
        // A photo that a desk has left behind under the code, and below one of this good.
        f.database.Exec(u"insert PhotoGallery(GRPCode,Id_pic,Picture,tmp) values(102,500001,0x02,1)"_s);
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            f.FillRequired(screen);
            test::Enter(screen, u"AvaBgPrd_EDT"_s, u"3"_s);
            test::Enter(screen, u"CostBgPrd_EDT"_s, u"10"_s);
            f.ShowTab(screen, u"Category_TBC"_s);
            test::Focus(screen, u"Category_frame1"_s);
            test::Type(u"گرم"_s);
            test::Press(Qt::Key_Return); // chosen, and added by the save
            f.ShowTab(screen, u"Cost_Level_TPC"_s);
            test::Focus(screen, u"SellDetails_GRD"_s);
            test::Type(u"250"_s);
            f.database.Exec(u"insert PhotoGallery(GRPCode,Id_pic,Picture,tmp) values(102,500001,0x01,1)"_s);
            f.InsertGood(500001, u"دوغ"_s, 909);
            if (fails) {
                f.database.Exec(u"create unique index UX_Once on GoodInf(GrpCode)"_s);
                test::Press(Qt::Key_F3);
                QVERIFY(!f.host.messages.Take().isEmpty());
                f.database.Exec(u"drop index UX_Once on GoodInf"_s);
            }
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.Take(), Saved);
            const QString told = f.host.messages.Take();
            QVERIFY(told.contains(u"۵۰۰۰۰۱"_s) && told.contains(u"۵۰۰۰۰۲"_s));
            test::Press(Qt::Key_Escape);
        });
        // All that was entered for the good is under its own code.
        QCOMPARE(
            f.database.Rows(u"select Code,kala_name,CostLevel_Sell_1,(select max(Amount1) from GoodFirstAsset where "
                            "tmp=0 and GoodCode=Code),(select max(Category_code) from Kala_category where tmp=0 "
                            "and Kala_code=Code),(select count(*) from PhotoGallery where tmp=0 and "
                            "Id_pic=Code) from GoodInf join GoodCostDiscount on GoodCode=Code order by Code"_s),
            (QStringList{u"500001|دوغ|100|NULL|NULL|0"_s, u"500002|شیر|250|3|3|1"_s}));
    }

    void whatWasTakenOffComesBackWithoutTheDatabase()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"insert into Categories(Code,Name,Path) values(3,N'گرم',',3,') insert into "
                        "Kala_category(Kala_code,Category_code) values(500009,3)"_s);
        f.keepsScreen = true;
        f.OpenGood(500009, [&](QWidget *screen) {
            f.ShowTab(screen, u"Category_TBC"_s);
            f.host.messages.Answer(true);
            test::Find<QAbstractButton>(screen, u"DellCat_BTN"_s).click();
            f.host.messages.Take();
            QSqlDatabase main = f.database.Main();
            main.close();
            f.Leave();
            QVERIFY(!f.host.messages.TakeAll().isEmpty());
            QVERIFY(main.open());
        });
        f.OpenGood(500009, [&](QWidget *screen) {
            QCOMPARE(test::Find<host::Grid>(screen, u"Category_GRD"_s).RowCount(), 1);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.database.Rows(u"select Category_code from Kala_category"_s), QStringList{u"3"_s});
    }

    void anotherGroupAnotherCode()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"update GoodInf set FeaturesDetail=N'سبز'"_s); // which no control shows
        f.database.Exec(u"insert into Categories(Code,Name,Path) values(3,N'گرم',',3,')"_s);
        f.host.categories.all = {{3, 0, u"گرم"_s}};
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            f.ShowTab(screen, u"Category_TBC"_s);
            test::Focus(screen, u"Category_frame1"_s);
            test::Type(u"گرم"_s);
            test::Press(Qt::Key_Return);
            test::Press(Qt::Key_F4);
            f.ShowTab(screen, u"General_TPC"_s);
            const auto &code = test::Find<host::NumericEdit>(screen, u"Code_EDT"_s);
            QCOMPARE(code.text(), u"500010"_s);
            test::Focus(screen, u"Group_CMB"_s);
            test::Press(Qt::Key_Down);
            f.host.messages.Answer(true);
            QCOMPARE(code.text(), u"600001"_s);
            test::Find<QAbstractButton>(screen, u"DellCat_BTN"_s).click(); // the category came along
            QCOMPARE(f.host.messages.Take(), u"MsgDeleteItem(دسته)"_s);
            f.Leave();
        });
        // An existing good keeps its code.
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Focus(screen, u"Group_CMB"_s);
            test::Press(Qt::Key_Down);
            QCOMPARE(test::Find<host::NumericEdit>(screen, u"Code_EDT"_s).text(), u"500009"_s);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.database.Rows(u"select Code,GrpCode,UserModified,ModifiedDate,ModifiedTime,isnull(UserCreated,''),"
                                 "FeaturesDetail from GoodInf"_s),
                 QStringList{u"500009|6|مریم احمدی (7)|1403/05/09|10:20:30||سبز"_s});
    }

    void namesAreSuggestedWhenAskedFor()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.InsertGood(500008, u"دو%ابل"_s, 908);
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            test::Type(u"دو%"_s);
            test::Press(Qt::Key_Down);
            QVERIFY(QApplication::activePopupWidget());
            test::Press(Qt::Key_Escape); // closes the list, not the screen
            QVERIFY(screen->isVisible() && !QApplication::activePopupWidget());
            for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_Up})
                test::Press(key);
            QCOMPARE(test::Find<QComboBox>(screen, u"Name_EDT"_s).currentText(), u"دو%"_s);
            test::Press(Qt::Key_Down, Qt::AltModifier);
            test::Press(Qt::Key_Down);
            test::Press(Qt::Key_Return);
            QCOMPARE(test::Find<QComboBox>(screen, u"Name_EDT"_s).currentText(), u"دو%ابل"_s);
            f.Leave();
        });
    }

    void opensOnTheTabAskedFor()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        TGood_Get_FRM screen(f.host);
        const auto opened = [&] {
            QString tab;
            test::Drive([&] { screen.Open(500009, host::TFormMode::Edit); },
                        [&](QWidget *shown) {
                            tab = f.CurrentTab(shown);
                            test::Press(Qt::Key_Escape);
                        });
            return tab;
        };
        screen.SetOpeningPage(1);
        QCOMPARE(opened(), u"Cost_Level_TPC"_s);
        QCOMPARE(opened(), u"General_TPC"_s); // asked for once
        screen.SetOpeningPage(99);
        QCOMPARE(opened(), u"General_TPC"_s);
    }

    void whatOthersChangeMeanwhileStays()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"update GoodInf set AvaBgPrd=4,CostBgPrd=10"_s);
        f.database.Exec(u"insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Radif) values(500009,1,0,4,1)"_s);
        f.host.settings.record.GoodDetails = true;
        f.OpenGood(500009, [&](QWidget *screen) {
            f.ShowTab(screen, u"Cost_Level_TPC"_s);
            test::Focus(screen, u"SellDetails_GRD"_s);
            test::Type(u"250"_s);
            test::Press(Qt::Key_Return);
            // Another desk opens the same good, enters its opening stock and leaves.
            f.database.Exec(u"update GoodInf set AvaBgPrd=6,VoucherCode=7,Comment=N'شمارش'"_s);
            f.database.Exec(u"update GoodFirstAsset set Amount1=6 where tmp=0"_s);
            f.database.Exec(u"update GoodCostDiscount set CostLevel_Buy_1=95,CostLevel_Sell_9=99,Discount_Sell_3=3"_s);
            f.database.Exec(u"insert DetailTypes(Title,DetailType) values(N'رنگ',1) "
                            "insert GoodDetailRelation(GoodCode,DetailID) select 500009,ID from DetailTypes"_s);
            f.database.Exec(u"delete from tmpCostList"_s);
            test::Type(u"300"_s);
            test::Press(Qt::Key_Return);
            QCOMPARE(test::Find<host::Grid>(screen, u"SellDetails_GRD"_s).currentIndex().row(), 2);
            test::Press(Qt::Key_Escape);
            f.database.Exec(u"delete from tmpCostList"_s);
            test::Focus(screen, u"SellDefault_CMB"_s);
            test::Press(Qt::Key_Down);
            f.database.Exec(u"delete from tmpCostList"_s);
            f.ShowTab(screen, u"General_TPC"_s);
            test::Enter(screen, u"Name_EDT"_s, u"ماست"_s);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(
            f.database.Rows(u"select kala_name,AvaBgPrd,VoucherCode,Comment,CostLevel_Sell_1,CostLevel_Sell_2,"
                            "Default_CostLevel_Sell_Number,CostLevel_Buy_1,CostLevel_Sell_9,Discount_Sell_3,(select "
                            "count(*) from GoodDetailRelation) from GoodInf join GoodCostDiscount on "
                            "GoodCode=Code"_s),
            QStringList{u"ماست|6|7|شمارش|250|300|2|95|99|3|1"_s});
        QCOMPARE(f.database.Rows(u"select tmp,Amount1 from GoodFirstAsset"_s), QStringList{u"0|6"_s});
        QCOMPARE(f.host.vouchers.calls.filter(u"Save"_s), QStringList());
    }

    void whatControlsCannotShowStays_data()
    {
        QTest::addColumn<bool>("edited");
        QTest::addColumn<QString>("row");
        QTest::newRow("left alone") << false << u"1\r\n2|9,1||5"_s;
        QTest::newRow("edited") << true << u"1\r\n2\r\n3|1,2,9|7|0"_s;
    }
    void whatControlsCannotShowStays()
    {
        QFETCH(bool, edited);
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        // Tag 9 is in no list any more, and an exempt good has kept its percent.
        f.database.Exec(u"insert colors(code,Name,Value) values(1,N'سرخ','#ff0000') insert TagS(Code,Name,color_code) "
                        u"values(1,N'نو',1),(2,N'کم',1) "
                        "update GoodInf set Comment='1'+char(13)+char(10)+'2',tags='9,1',Pos='',TaxExempt=1,"
                        "TaxPercent=5"_s);
        f.OpenGood(500009, [&](QWidget *screen) {
            f.ShowTab(screen, u"Complete_TPC"_s);
            if (edited) {
                test::Enter(screen, u"Pos_EDT"_s, u"7"_s);
                test::Focus(screen, u"Comment_EDT"_s);
                test::Press(Qt::Key_End, Qt::ControlModifier);
                test::Press(Qt::Key_Return);
                test::Type(u"3"_s);
                test::Focus(screen, u"Tag_editor"_s);
                test::Press(Qt::Key_Space);
                test::Press(Qt::Key_Down);
                test::Press(Qt::Key_Return);
                f.ShowTab(screen, u"Discount_TPC"_s);
                test::Focus(screen, u"TaxGlobalSetting_RB"_s);
                test::Press(Qt::Key_Space);
                f.ShowTab(screen, u"General_TPC"_s);
                QGuiApplication::clipboard()->setText(u"دوغ\tساده\r\n"_s);
                test::Focus(screen, u"Name_EDT"_s);
                test::Press(Qt::Key_A, Qt::ControlModifier);
                test::Press(Qt::Key_V, Qt::ControlModifier);
            }
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QTEST(f.database.Rows(u"select Comment,tags,Pos,TaxPercent from GoodInf"_s).value(0), "row");
        QCOMPARE(f.database.Scalar(u"select kala_name from GoodInf"_s).toString(), edited ? u"دوغ ساده"_s : u"دوغ"_s);
    }

    void aGoodDeletedMeanwhile()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Enter(screen, u"Name_EDT"_s, u"ماست"_s);
            f.database.Exec(u"delete from GoodInf"_s);
            test::Press(Qt::Key_F3);
            QVERIFY(f.host.messages.Take().contains(u"توسط کاربر دیگری حذف شده است"_s));
            QCOMPARE(test::Find<QComboBox>(screen, u"Name_EDT"_s).currentText(), u"ماست"_s);
            f.Leave();
        });
        TGood_Get_FRM screen(f.host);
        QCOMPARE(screen.Open(500009, host::TFormMode::Edit), 0);
        QCOMPARE(f.host.messages.Take(), u"ShowMessage(این کالا دیگر وجود ندارد.)"_s);
        QCOMPARE(f.database.Rows(u"select Code from GoodInf"_s), QStringList());
    }

    void whatReviewLocksIsNotOpenedByEditing()
    {
        EditorFixture f;
        f.host.settings.record.FinalPrices = true;
        f.InsertGood(500008, u"دوغ"_s, 908);
        f.InsertGood(500009, u"شیر"_s, 909);
        f.database.Exec(u"update GoodInf set TaxExempt=1,ChargeExempt=1 where Code=500009"_s);
        TGood_Get_FRM screen(f.host);
        QStringList shown;
        // What may be changed: the quantity, the sale prices being final, the default level.
        const auto open = [&](int code, host::TFormMode mode) {
            test::Drive([&] { screen.Open(code, mode); },
                        [&](QWidget *) {
                            shown << u"%1%2%3"_s
                                         .arg(int(!test::Find<QLineEdit>(&screen, u"AvaBgPrd_EDT"_s).isReadOnly()))
                                         .arg(int(test::Find(&screen, u"Cost_with_Tax_Sell_CHK"_s).isEnabled()))
                                         .arg(int(test::Find(&screen, u"SellDefault_CMB"_s).isEnabled()));
                            test::Press(Qt::Key_Escape);
                        });
        };
        open(500008, host::TFormMode::Review);
        f.host.goodDetails.entered = true;
        open(500009, host::TFormMode::Edit);
        f.host.goodDetails.entered = false;
        open(500008, host::TFormMode::Edit);
        QCOMPARE(shown, (QStringList{u"000"_s, u"001"_s, u"111"_s}));
    }

    void reviewingWritesNothing()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"insert into tmpCostList(Type,Status,TypeCode,CostLevelCode,Cost) values(3,0,500009,1,7)"_s);
        f.Open(500009, host::TFormMode::Review, {}, [&](QWidget *screen) {
            test::Enter(screen, u"Name_EDT"_s, u"ماست"_s);
            QCOMPARE(test::Find<QComboBox>(screen, u"Name_EDT"_s).currentText(), u"دوغ"_s);
            test::Find<QAction>(&test::Find(screen, u"BarCode1_EDT"_s), u"complete"_s).trigger();
            QVERIFY(!test::Find(screen, u"Save_BTN"_s).isVisible());
            test::Press(Qt::Key_F3);
            // Another desk's unsaved prices are not touched, nor shown.
            QCOMPARE(test::Find<host::Grid>(screen, u"SellDetails_GRD"_s).VisibleTexts(0).at(1), u"۱۰۰"_s);
            test::Press(Qt::Key_Escape);
        });
        QCOMPARE(f.database.Rows(u"select Cost from tmpCostList"_s), QStringList{u"7"_s});
        QCOMPARE(f.database.Rows(u"select Name from GoodInf"_s), QStringList{u"دوغ  "_s});
    }
};

REGISTER_TEST(TestGoodSave)
#include "tst_save.moc"
