#include "host/controls/grid.h"
#include "host/controls/numeric_edit.h"
#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QtTest>

namespace {

const QString Prices = u"Cost_Level_TPC"_s;

/// Something that a user does on the screen.
using Way = std::function<void(EditorFixture &, QWidget *)>;

/// Begins to type a price into the first sale level; the cell stays open.
void BeginPrice(QWidget *screen, const QString &price)
{
    EditorFixture::ShowTab(screen, Prices);
    test::Focus(screen, u"SellDetails_GRD"_s);
    test::Type(price);
    QCOMPARE(test::Focused(), u"Price_EDT"_s);
}

QString ShownPrice(QWidget *screen, int row)
{
    return test::Find<host::Grid>(screen, u"SellDetails_GRD"_s).VisibleTexts(row).at(1);
}

void Paste(const QString &text)
{
    QApplication::clipboard()->setText(text);
    test::Press(Qt::Key_V, Qt::ControlModifier);
}

} // namespace

/// What a user typed, pasted or scanned is never lost, nor changed behind the back.
class TestGoodTyping : public QObject
{
    Q_OBJECT

private slots:
    void leavingAsksFirst_data()
    {
        QTest::addColumn<Way>("type");
        QTest::addColumn<Way>("leave");
        const Way name = [](EditorFixture &, QWidget *) { test::Type(u"ماست"_s); };
        const Way price = [](EditorFixture &, QWidget *screen) { BeginPrice(screen, u"250"_s); };
        const Way tag = [](EditorFixture &, QWidget *screen) {
            EditorFixture::ShowTab(screen, u"Discount_TPC"_s);
            test::Focus(screen, u"GroupDiscount_CHK"_s);
            test::Press(Qt::Key_Space);
        };
        const Way level = [](EditorFixture &, QWidget *screen) {
            EditorFixture::ShowTab(screen, Prices);
            test::Focus(screen, u"SellDefault_CMB"_s);
            test::Press(Qt::Key_Home);
        };
        const Way escape = [](EditorFixture &, QWidget *) { test::Press(Qt::Key_Escape); };
        const Way window = [](EditorFixture &, QWidget *screen) { screen->close(); };
        const Way button = [](EditorFixture &, QWidget *screen) {
            QTest::mouseClick(&test::Find(screen, u"Exit_BTN"_s), Qt::LeftButton);
        };
        QTest::newRow("a name, Esc") << name << escape;
        QTest::newRow("a name, the window's button") << name << window;
        QTest::newRow("a name, the button") << name << button;
        QTest::newRow("a switch, Esc") << tag << escape;
        QTest::newRow("a default level, Esc") << level << escape;
        QTest::newRow("an open price, the window's button") << price << window;
        QTest::newRow("an open price, the button") << price << button;
    }
    void leavingAsksFirst()
    {
        QFETCH(Way, type);
        QFETCH(Way, leave);
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.OpenGood(500009, [&](QWidget *screen) {
            type(f, screen);
            f.host.messages.Answer(false);
            leave(f, screen);
            QVERIFY(f.host.messages.Take().startsWith(u"Ask("_s));
            QVERIFY(screen->isVisible());
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.database.Rows(u"select count(*) from GoodInf join GoodCostDiscount on GoodCode=Code where "
                                 "kala_name=N'ماست' or CostLevel_Sell_1=250 or GroupDiscount=0 or "
                                 "Default_CostLevel_Sell_Number=0"_s),
                 QStringList{u"1"_s});
    }

    void anOpenPriceIsKept_data()
    {
        QTest::addColumn<Way>("way");
        QTest::addColumn<QString>("stored");
        QTest::newRow("the save itself") << Way([](EditorFixture &, QWidget *) {}) << u"250"_s;
        QTest::newRow("another tab") << Way([](EditorFixture &, QWidget *) {
            test::Press(Qt::Key_1, Qt::ControlModifier);
        }) << u"250"_s;
        QTest::newRow("the tab's caption")
            << Way([](EditorFixture &f, QWidget *screen) { f.ShowTab(screen, u"General_TPC"_s); }) << u"250"_s;
        QTest::newRow("Tab") << Way([](EditorFixture &, QWidget *) { test::Press(Qt::Key_Tab); }) << u"250"_s;
        QTest::newRow("a click on another row") << Way([](EditorFixture &, QWidget *screen) {
            auto &grid = test::Find<host::Grid>(screen, u"SellDetails_GRD"_s);
            const QRect cell = grid.visualRect(grid.model()->index(4, 2));
            QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cell.center());
        }) << u"250"_s;
        QTest::newRow("a key of a command")
            << Way([](EditorFixture &, QWidget *) { test::Press(Qt::Key_F4); }) << u"250"_s;
        QTest::newRow("a refused save") << Way([](EditorFixture &f, QWidget *screen) {
            f.host.vouchers.totalCostValid = false;
            test::Press(Qt::Key_F3);
            QCOMPARE(f.CurrentTab(screen), Prices);
            f.host.vouchers.totalCostValid = true;
        }) << u"250"_s;
        // Esc in a cell takes back what was typed there, no more.
        QTest::newRow("Esc") << Way([](EditorFixture &, QWidget *screen) {
            test::Press(Qt::Key_Escape);
            QVERIFY(screen->isVisible());
        }) << u"100"_s;
    }
    void anOpenPriceIsKept()
    {
        QFETCH(Way, way);
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.OpenGood(500009, [&](QWidget *screen) {
            BeginPrice(screen, u"۲۵۰"_s);
            way(f, screen);
            QCoreApplication::processEvents();
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QTEST(f.database.Scalar(u"select cast(CostLevel_Sell_1 as int) from GoodCostDiscount"_s).toString(), "stored");
    }

    void pricesArePasted_data()
    {
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QString>("shown");
        QTest::newRow("grouped") << u" 1,234,567.5 "_s << u"۱٬۲۳۴٬۵۶۷٫۵"_s;
        QTest::newRow("fifteen digits, grouped") << u"123,456,789,012,345"_s << u"۱۲۳٬۴۵۶٬۷۸۹٬۰۱۲٬۳۴۵"_s;
        // A part of a number is another number.
        QTest::newRow("too long") << u"1234567890123456"_s << u"۱۰۰"_s;
    }
    void pricesArePasted()
    {
        QFETCH(QString, pasted);
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.OpenGood(500009, [&](QWidget *screen) {
            f.ShowTab(screen, Prices);
            test::Focus(screen, u"SellDetails_GRD"_s);
            Paste(pasted);
            test::Press(Qt::Key_Return);
            QTEST(ShownPrice(screen, 0), "shown");
            test::Press(Qt::Key_Escape); // the cell below
            f.Leave();
        });
    }

    void barcodesArePasted_data()
    {
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QString>("stored");
        QTest::newRow("blanks around") << u"  6260100200303\r\n"_s << u"!6260100200303!!!!!!"_s;
        QTest::newRow("Persian digits") << u"۶۲۶۰۱۰۰۲۰۰۳۰۳"_s << u"!6260100200303!!!!!!"_s;
        QTest::newRow("a short name") << u"شیر ۱"_s << u"!شیر ۱!!!!!!"_s;
        QTest::newRow("too long") << u"12345678901234567890123456"_s << u"!7!!!!!!"_s;
    }
    void barcodesArePasted()
    {
        QFETCH(QString, pasted);
        EditorFixture f;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            f.FillRequired(screen);
            test::Enter(screen, u"BarCode1_EDT"_s, u"7"_s);
            test::Press(Qt::Key_A, Qt::ControlModifier);
            Paste(pasted);
            // Saved without leaving the edit.
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
            test::Press(Qt::Key_Escape);
        });
        QTEST(f.database.Rows(u"select AbbName from GoodInf"_s).value(0), "stored");
    }

    void longStoredBarcodesComeBackWhole()
    {
        EditorFixture f;
        const QString first(30, u'1');
        const QString text = u'!' + first + u"! 2 !!!!"_s + QString(110, u'6') + u'!';
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.database.Exec(u"update GoodInf set AbbName=N'%1'"_s.arg(text));
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Focus(screen, u"BarCode1_EDT"_s);
            test::Press(Qt::Key_Return);
            test::Enter(screen, u"Kala_Type_EDT"_s, u"ساده"_s);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.database.Rows(u"select AbbName,kala_type from GoodInf"_s), QStringList{text + u"|ساده"_s});
    }

    void whatNoColumnHoldsIsNotTaken_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("stored");
        QTest::newRow("Comment_EDT") << QString(501, u'و') << u"Comment"_s << QString(500, u'و');
        QTest::newRow("SmsCode_EDT") << QString(20, u'9') << u"SMSCode"_s << QString(18, u'9');
        QTest::newRow("Weight_EDT") << QString(15, u'9') << u"Weight"_s << QString(14, u'9');
    }
    void whatNoColumnHoldsIsNotTaken()
    {
        QFETCH(QString, typed);
        QFETCH(QString, column);
        QFETCH(QString, stored);
        EditorFixture f;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            f.FillRequired(screen);
            f.ShowTab(screen, u"Complete_TPC"_s);
            test::Enter(screen, QString::fromUtf8(QTest::currentDataTag()), typed);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
            test::Press(Qt::Key_Escape);
        });
        QCOMPARE(f.database.Rows(u"select %1 from GoodInf"_s.arg(column)), QStringList{stored});
    }

    void pricesOutliveTheConnection()
    {
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        f.OpenGood(500009, [&](QWidget *screen) {
            f.ShowTab(screen, Prices);
            QSqlDatabase main = f.database.Main();
            main.close();
            BeginPrice(screen, u"250"_s);
            test::Press(Qt::Key_Return);
            QCOMPARE(f.host.messages.TakeAll().size(), 1);
            QCOMPARE(ShownPrice(screen, 0), u"۲۵۰"_s);
            // Another row is not for the taking before this one is written.
            test::Focus(screen, u"SellDetails_GRD"_s);
            test::Press(Qt::Key_Down);
            QCoreApplication::processEvents();
            QCOMPARE(f.host.messages.TakeAll().size(), 1);
            QCOMPARE(test::Find<host::Grid>(screen, u"SellDetails_GRD"_s).currentIndex().row(), 0);
            test::Focus(screen, u"SellDefault_CMB"_s);
            QCoreApplication::processEvents();
            test::Press(Qt::Key_Home);
            QCOMPARE(f.host.messages.TakeAll().size(), 2);
            QVERIFY(main.open());
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{Saved});
        });
        QCOMPARE(f.database.Rows(u"select CostLevel_Sell_1,Default_CostLevel_Sell_Number from GoodCostDiscount"_s),
                 QStringList{u"250|0"_s});
    }
};

REGISTER_TEST(TestGoodTyping)
#include "tst_typing.moc"
