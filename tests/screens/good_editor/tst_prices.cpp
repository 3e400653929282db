#include "host/controls/grid.h"
#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QToolTip>
#include <QtTest>

namespace {

/// Types prices down the column, as a clerk does: digits and Enter.
void TypePrices(QWidget *screen, const QString &grid, const QStringList &prices)
{
    test::Focus(screen, grid);
    for (const QString &price : prices) {
        test::Type(price);
        test::Press(Qt::Key_Return);
    }
}

void ChooseLevel(QWidget *screen, const QString &combo, int level)
{
    test::Focus(screen, combo);
    test::Press(Qt::Key_Home);
    for (int i = 0; i < level; ++i)
        test::Press(Qt::Key_Down);
}

QStringList DefaultMarks(QWidget *screen, const QString &grid)
{
    QStringList marked;
    const QAbstractItemModel &model = *test::Find<host::Grid>(screen, grid).Source();
    for (int row = 0; row < model.rowCount(); ++row)
        for (int column = 0; column < model.columnCount(); ++column)
            if (model.index(row, column).data() == u"*"_s)
                marked << QString::number(row + 1);
    return marked;
}

} // namespace

/// Prices by level, final prices, tax and toll.
class TestGoodPrices : public QObject
{
    Q_OBJECT

private slots:
    void twentyPricesComeBack()
    {
        EditorFixture f;
        const QStringList sell{u"۱۰۰۰"_s, u"2"_s, u"3.5"_s, u"4"_s,           u"5"_s,
                               u"6"_s,    u"7"_s, u"8"_s,   u"0.000000001"_s, u"99999999999999"_s};
        const QStringList buy{u"11"_s, u"12"_s, u"13"_s, u"14"_s, u"15"_s, u"16"_s, u"17"_s, u"18"_s, u"19"_s, u"20"_s};
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            f.FillRequired(screen);
            f.ShowTab(screen, u"Cost_Level_TPC"_s);
            TypePrices(screen, u"SellDetails_GRD"_s, sell);
            QCOMPARE(test::Focused(), u"SellDefault_CMB"_s);
            TypePrices(screen, u"BuyDetails_GRD"_s, buy);
            ChooseLevel(screen, u"SellDefault_CMB"_s, 2);
            ChooseLevel(screen, u"SellDefault_CMB"_s, 4);
            ChooseLevel(screen, u"BuyDefault_CMB"_s, 1);
            QCOMPARE(DefaultMarks(screen, u"SellDetails_GRD"_s), QStringList{u"4"_s});
            QCOMPARE(DefaultMarks(screen, u"BuyDetails_GRD"_s), QStringList{u"1"_s});
            // Another group moves the good, its prices with it.
            f.ShowTab(screen, u"General_TPC"_s);
            test::Focus(screen, u"Group_CMB"_s);
            test::Press(Qt::Key_Down);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
            test::Press(Qt::Key_Escape);
        });
        QStringList stored{u"600001|1000|2|3.5|4|5|6|7|8|0.000000001|99999999999999|"
                           "11|12|13|14|15|16|17|18|19|20|4|1"_s};
        QString columns = u"GoodCode"_s;
        for (const QString &side : {u"Sell"_s, u"Buy"_s})
            for (int level = 1; level <= 10; ++level)
                columns += u",CostLevel_%1_%2"_s.arg(side).arg(level);
        const QString row = u"select "_s + columns +
                            u",Default_CostLevel_Sell_Number,Default_CostLevel_Buy_Number from GoodCostDiscount"_s;
        QCOMPARE(f.database.Rows(row), stored);
        // Loaded, passed through and saved again they are the same, even where they are longer than may be typed.
        f.database.Exec(u"update GoodCostDiscount set CostLevel_Sell_3=12345678901234.123456789"_s);
        stored.replaceInStrings(u"|3.5|"_s, u"|12345678901234.123456789|"_s);
        f.OpenGood(600001, [&](QWidget *screen) {
            QCOMPARE(test::Find<QComboBox>(screen, u"SellDefault_CMB"_s).currentData().toInt(), 4);
            f.ShowTab(screen, u"Cost_Level_TPC"_s);
            TypePrices(screen, u"SellDetails_GRD"_s, QStringList(10));
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.database.Rows(row), stored);
        QCOMPARE(f.database.Rows(u"select * from tmpCostList"_s), QStringList());
    }

    void aGoodWithoutPriceRowGetsOne()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"delete from GoodCostDiscount"_s);
        f.InsertGood(500008, u"شیر"_s, 908);
        TGood_Get_FRM kept(f.host);
        for (const auto &[code, hint] : {std::pair(500009, u"این کالا هنوز"_s), {500008, u"[ قيمت هر سطح"_s}})
            test::Drive([&, code = code] { kept.Open(code, host::TFormMode::Review); },
                        [hint = hint](QWidget *screen) {
                            QVERIFY(test::Find<QLabel>(screen, u"BuyHint_LBL"_s).text().startsWith(hint));
                            test::Press(Qt::Key_Escape);
                        });
        QString hintAndRows;
        // What each side shows: its hint, its levels, and whether a default level may be chosen.
        const auto sides = [&](QWidget *screen) {
            f.ShowTab(screen, u"Cost_Level_TPC"_s);
            QStringList shown;
            for (const QString &side : {u"Sell"_s, u"Buy"_s}) {
                const auto &hint = test::Find<QLabel>(screen, side + u"Hint_LBL"_s);
                QVERIFY2(hint.isVisible() && hint.height() >= hint.heightForWidth(hint.width()), "the hint is cut off");
                shown << u"%1|%2|%3"_s.arg(hint.text())
                             .arg(test::Find<host::Grid>(screen, side + u"Details_GRD"_s).RowCount())
                             .arg(int(test::Find(screen, side + u"Default_CMB"_s).isEnabled()));
            }
            QCOMPARE(shown.at(0), shown.at(1));
            hintAndRows = shown.at(0);
        };
        f.OpenGood(500009, [&](QWidget *screen) {
            sides(screen);
            QCOMPARE(hintAndRows, u"این کالا هنوز ردیف قیمت ندارد؛ پس از ذخیره می توانید قیمت ها را وارد کنید.|0|0"_s);
            TypePrices(screen, u"SellDetails_GRD"_s, {u"100"_s});
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.database.Rows(u"select CostLevel_Sell_1 from GoodCostDiscount where GoodCode=500009"_s),
                 QStringList{u"0"_s});
        f.OpenGood(500009, [&](QWidget *screen) {
            sides(screen);
            QCOMPARE(hintAndRows, u"[ قيمت هر سطح را با کليک کردن در مقابل آن مشخص نماييد ]|10|1"_s);
            TypePrices(screen, u"SellDetails_GRD"_s, {u"100"_s, u"200"_s});
            ChooseLevel(screen, u"SellDefault_CMB"_s, 2);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.database.Rows(u"select CostLevel_Sell_1,CostLevel_Sell_2,CostLevel_Sell_10,CostLevel_Buy_1,"
                                 "Default_CostLevel_Sell_Number from GoodCostDiscount where GoodCode=500009"_s),
                 QStringList{u"100|200|0|0|2"_s});
    }

    void aChangedPriceReachesTheScales()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"insert into Items(Code,ScaleType,ChangeType,Name1,Price) values(500009,1,0,N'دوغ',100)"_s);
        f.host.scales.enabled = true;
        const auto type = [&](const QString &price, bool secondLevel) {
            f.OpenGood(500009, [&](QWidget *screen) {
                f.ShowTab(screen, u"Cost_Level_TPC"_s);
                test::Focus(screen, u"SellDetails_GRD"_s);
                if (secondLevel)
                    test::Press(Qt::Key_Down);
                test::Type(price);
                test::Press(Qt::Key_F3);
                QCOMPARE(f.host.messages.Take(), Saved);
            });
        };
        const QString item = u"select Price,ChangeType from Items"_s;
        type(u"70"_s, true); // not the default one
        QCOMPARE(f.database.Rows(item), QStringList{u"100|0"_s});
        type(u"250"_s, false);
        QCOMPARE(f.database.Rows(item), QStringList{u"250|2"_s});
        f.database.Exec(u"drop table Items"_s);
        type(u"300"_s, false);
        QVERIFY(f.host.messages.Take().contains(
            u"قیمت‌ها ذخیره شد ولی به ترازو ارسال نشد."_s));
    }

    void bothExemptClosesFinalPrices_data()
    {
        QTest::addColumn<bool>("storedFinal"); // an existing good stored with final prices, else a new one
        QTest::newRow("new good") << false;
        QTest::newRow("stored so") << true;
    }
    void bothExemptClosesFinalPrices()
    {
        QFETCH(bool, storedFinal);
        EditorFixture f;
        f.host.settings.record.FinalPrices = true;
        f.host.settings.record.RowDiscounts = f.host.settings.record.ValueAddedTax = true;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"update GoodInf set Tax_In_SellCosts=1"_s);
        f.Open(storedFinal ? 500009 : 0, storedFinal ? host::TFormMode::Edit : host::TFormMode::New, u"5"_s,
               [&](QWidget *screen) {
                   auto &sell = test::Find<QAbstractButton>(screen, u"Cost_with_Tax_Sell_CHK"_s);
                   f.ShowTab(screen, u"Cost_Level_TPC"_s);
                   if (!storedFinal) {
                       test::Focus(screen, u"Cost_with_Tax_Sell_CHK"_s);
                       test::Press(Qt::Key_Space);
                   }
                   QVERIFY(sell.isChecked());
                   f.ShowTab(screen, u"Discount_TPC"_s);
                   for (const QString &button : {u"TaxExempt_RB"_s, u"ChargeExempt_RB"_s}) {
                       test::Focus(screen, button);
                       test::Press(Qt::Key_Space);
                   }
                   f.ShowTab(screen, u"Cost_Level_TPC"_s);
                   QCOMPARE(sell.isEnabled(), storedFinal);
                   QCOMPARE(sell.isChecked(), storedFinal);
                   QVERIFY(!test::Find<QAbstractButton>(screen, u"Cost_with_Tax_Buy_CHK"_s).isEnabled());
                   QTest::mouseClick(&test::Find(screen, u"Cost_with_Tax_Buy_ASB"_s), Qt::LeftButton);
                   QVERIFY(QToolTip::text().startsWith(u"به دلیل غیر فعال بودن تنظیمات عوارض و مالیات"_s));
                   f.Leave();
               });
    }

    void finalPricesNeedTheirSettings()
    {
        EditorFixture f;
        f.host.settings.record.FinalPrices = true;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            f.ShowTab(screen, u"Cost_Level_TPC"_s);
            for (const Qt::MouseButton button : {Qt::RightButton, Qt::LeftButton}) // only one of them switches
                QTest::mouseClick(&test::Find(screen, u"Cost_with_Tax_Sell_LBL"_s), button);
            QVERIFY(f.host.messages.Take().contains(u"تخفیف سطری و عوارض و مالیات بر ارزش افزوده"_s));
            QVERIFY(test::Find<QAbstractButton>(screen, u"Cost_with_Tax_Sell_CHK"_s).isChecked());
            f.Leave();
        });
    }
};

REGISTER_TEST(TestGoodPrices)
#include "tst_prices.moc"
