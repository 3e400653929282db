#include "host/controls/grid.h"
#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

/// Titles of levels that are changed while a good is being edited.
class TestLevelTitles : public QObject
{
    Q_OBJECT

private slots:
    void CaptionsChangeUnderWhatIsTyped();
    void ReviewOffersNone();
};

void TestLevelTitles::CaptionsChangeUnderWhatIsTyped()
{
    EditorFixture f;
    f.InsertGood(501, u"شیر"_s, 77);
    const QString title = u"A&B <b>%1"_s;
    f.host.levels.changing = [&] {
        f.database.Exec(u"update CostLevel set Name = N'%1' where Code = 2"_s.arg(title));
        f.host.levels.discounts = {QString(), title, QString(50, u'W'), QString()};
        return true;
    };
    f.OpenGood(501, [&](QWidget *screen) {
        QCOMPARE(test::Find<QLabel>(screen, u"Discount_Buy_2_LBL"_s).text(), u"تخفیف نوع 2 :"_s);
        f.ShowTab(screen, u"Discount_TPC"_s);
        test::Enter(screen, u"Discount_Sell_2_EDT"_s, u"12"_s);
        test::Focus(screen, u"Default_Discount_Sell_CMB"_s);
        test::Press(Qt::Key_Down);
        test::Focus(screen, u"DiscountLevel_BTN"_s);
        test::Press(Qt::Key_Space);
        const auto &rates = test::Find<QComboBox>(screen, u"Default_Discount_Sell_CMB"_s);
        QCOMPARE(rates.currentText(), title);
        QCOMPARE(rates.itemText(0), u"تخفیف نوع 1"_s);
        QCOMPARE(test::Find<QLabel>(screen, u"Discount_Buy_2_LBL"_s).text(), u"A&&B <b>%1 :"_s);
        QVERIFY(test::Find<QLabel>(screen, u"Discount_Buy_3_LBL"_s).toolTip().size() == 59); // as rich text
        test::Picture(*screen, u"discount-titles"_s);

        f.ShowTab(screen, u"Cost_Level_TPC"_s);
        auto &prices = test::Find<host::Grid>(screen, u"SellDetails_GRD"_s);
        test::Focus(screen, u"SellDetails_GRD"_s);
        test::Press(Qt::Key_Down);
        test::Type(u"250"_s); // still in its cell
        test::Find<QPushButton>(screen, u"CostLevel_BTN"_s).click();
        QCOMPARE(f.host.levels.calls, (QStringList{u"discount"_s, u"cost"_s}));
        QCOMPARE(prices.CurrentValue(u"Name"_s).toString(), title);
        QCOMPARE(prices.CurrentValue(u"Cost"_s).toString().toDouble(), 250.0);
        const auto &level = test::Find<QComboBox>(screen, u"SellDefault_CMB"_s);
        QCOMPARE(level.itemText(2), title);
        QCOMPARE(level.currentData().toInt(), 1);
        test::Press(Qt::Key_F3);
        f.host.messages.TakeAll();
    });
    QCOMPARE(
        f.database.Rows(u"select CostLevel_Sell_1, CostLevel_Sell_2, Discount_Sell_2, Default_Discount_Sell_Number, "
                        "Default_CostLevel_Sell_Number from GoodCostDiscount"_s),
        QStringList{u"100|250|12|2|1"_s});
}

void TestLevelTitles::ReviewOffersNone()
{
    EditorFixture f;
    f.InsertGood(501, u"شیر"_s, 77);
    f.Open(501, host::TFormMode::Review, {}, [&](QWidget *screen) {
        for (const QString &name : {u"CostLevel_BTN"_s, u"DiscountLevel_BTN"_s})
            QVERIFY(!test::Find(screen, name).isVisible());
        test::Press(Qt::Key_Escape);
    });
}

REGISTER_TEST(TestLevelTitles)
#include "tst_level_titles.moc"
