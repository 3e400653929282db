// Pages of the main window: the goods lists that dock in it, and what becomes of them when the user changes.

#include "host/controls/grid.h"
#include "tests/desk/window_fixture.h"
#include "tests/support/test_main.h"

#include <QLabel>
#include <QMessageBox>
#include <QStatusBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>

namespace {

/// Goods of the list on the page that is shown.
int GoodsShown(const test::DeskWindow &shop)
{
    auto &grid = test::Find<host::Grid>(shop.pages->currentWidget(), u"GoodListDB_GRD"_s);
    return static_cast<int>(grid.ShownKeys().size());
}

/// Another user is chosen, so many lines below the present one.
void ChangeUser(const test::DeskWindow &shop, int down)
{
    test::Drive([&] { shop.Run(u"User_ACT"_s); },
                [&](QWidget *) {
                    for (int i = 0; i < down; ++i)
                        test::Press(Qt::Key_Down);
                    test::Press(Qt::Key_Return);
                });
}

/// Closes the message that stands over the window, after a look at its text.
void Dismiss(QWidget *box, const QString &says)
{
    const auto *message = qobject_cast<QMessageBox *>(box);
    QVERIFY(message);
    QVERIFY2(message->text().contains(says), qPrintable(message->text()));
    test::Press(Qt::Key_Return);
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void goodsListsDock();
    void pagesGiveTheKeysBack();
    void aScanReachesTheListThatWasJustOpened();
    void everyTileRuns();
    void anotherUserBeginsAnew();
    void pagesTurnWithoutTheDatabase();
    void helpStandsOverItsScreen();
};

/// Two lists stand side by side as pages, a third one is refused; each closes by its own keys.
void TestMainWindow::goodsListsDock()
{
    const test::DeskWindow shop;
    shop.Run(u"GoodsList_ACT"_s);
    QCOMPARE(shop.pages->count(), 2);
    QCOMPARE(shop.pages->tabText(1), u"لیست کالاها"_s);
    QWidget *first = shop.pages->currentWidget();
    QCOMPARE(test::Focused(), u"GoodListDB_GRD"_s);
    QVERIFY(first->isVisible() && !first->isWindow());
    shop.Run(u"GoodsList_ACT"_s);
    QCOMPARE(shop.pages->count(), 3);
    test::Drive([&] { shop.Run(u"GoodsList_ACT"_s); },
                [](QWidget *box) { Dismiss(box, u"امکان نمایش مجدد لیست کالاها وجود ندارد."_s); });

    shop.pages->setCurrentWidget(first);
    test::Focus(first, u"GoodListDB_GRD"_s);
    test::Press(Qt::Key_Escape);
    QCOMPARE(shop.pages->count(), 2);
    QVERIFY(shop.pages->currentWidget() != first);
    shop.Run(u"GoodsList_ACT"_s); // its place is free again
    QCOMPARE(shop.pages->count(), 3);
    QCOMPARE(shop.pages->currentWidget(), first);
    shop.window->close();
    QCOMPARE(shop.pages->count(), 1);
    QVERIFY(!shop.window->isVisible());
}

/// Coming to a page, by its tab or because another one closed, goes on where that page was left.
void TestMainWindow::pagesGiveTheKeysBack()
{
    const test::DeskWindow shop;
    QCOMPARE(test::Focused(), u"GoodsList_ACT_Tile"_s);
    test::Press(Qt::Key_Left);
    QCOMPARE(test::Focused(), u"NewGood_ACT_Tile"_s); // the next one in a right-to-left row
    shop.Run(u"GoodsList_ACT"_s);
    shop.Run(u"Choose_ACT"_s);
    QCOMPARE(test::Focused(), u"LocateCode_EDT"_s);
    shop.pages->setCurrentIndex(1);
    QCOMPARE(test::Focused(), u"GoodListDB_GRD"_s);
    shop.Run(u"Choose_ACT"_s);
    QCOMPARE(test::Focused(), u"LocateCode_EDT"_s);
    test::Press(Qt::Key_Escape);
    QCOMPARE(test::Focused(), u"GoodListDB_GRD"_s);
    test::Press(Qt::Key_Escape);
    QCOMPARE(test::Focused(), u"NewGood_ACT_Tile"_s);
}

void TestMainWindow::aScanReachesTheListThatWasJustOpened()
{
    const test::DeskWindow shop;
    test::Press(Qt::Key_Return); // on the tile
    const auto &grid = test::Find<host::Grid>(shop.window.get(), u"GoodListDB_GRD"_s);
    // Scan follows scan, also after one that found nothing.
    for (const auto &[barcode, code] : {std::pair(u"6261100011011"_s, u"110001"_s),
                                        {u"4006381333931"_s, {}},
                                        {u"6261951015015"_s, u"150001"_s},
                                        {u"6261100011011"_s, u"110001"_s}}) {
        test::Type(barcode);
        test::Press(Qt::Key_Return);
        QTRY_COMPARE(grid.RowCount(), code.isEmpty() ? 0 : 1);
        QCOMPARE(grid.CurrentKey(), code);
    }
    // The window goes with the list still in it.
}

/// A command of the module, of the base data and of the system each stand on the first page.
void TestMainWindow::everyTileRuns()
{
    const test::DeskWindow shop;
    QStringList tiles;
    const auto buttons = shop.pages->widget(0)->findChildren<QToolButton *>();
    for (const QToolButton *tile : buttons)
        if (tile->isVisible())
            tiles << tile->objectName().section(u"_ACT"_s, 0, 0);
    test::Picture(*shop.window, u"desk"_s);
    QCOMPARE(tiles, u"GoodsList NewGood DetailTypes Choose Documents NewSale NewPurchase Divisions Groups "
                    "Stores Units OpeningStock DetailHistory Rights Settings User"_s.split(u' '));
    for (const QString &tile : tiles) {
        auto &button = test::Find<QToolButton>(shop.window.get(), tile + u"_ACT_Tile"_s);
        const auto press = [&button] {
            button.setFocus();
            test::Press(Qt::Key_Space);
        };
        if (tile == u"GoodsList" || tile == u"Choose" || tile == u"Documents" || tile == u"OpeningStock") {
            press();
            QCOMPARE(shop.pages->count(), 2);
            test::Press(Qt::Key_Escape);
        } else {
            test::Drive(press, [&shop](QWidget *screen) {
                // Over the middle of the window, with its buttons on the screen.
                const QRect place = screen->geometry();
                QVERIFY2(place.bottom() <= screen->screen()->availableGeometry().bottom(),
                         qPrintable(screen->objectName()));
                const int lower = place.center().y() - shop.window->geometry().center().y();
                QVERIFY2(qAbs(lower) < 40, qPrintable(screen->objectName()));
                test::Press(Qt::Key_Escape);
            });
        }
        QCOMPARE(shop.pages->count(), 1);
    }
}

/// What the former user had open is closed: the next one sees the goods, and has the rights, that are his.
void TestMainWindow::anotherUserBeginsAnew()
{
    const test::DeskWindow shop;
    shop.t.database.Exec(u"update Users set ManageType = 0 where Code = 2 "
                         "insert into UserDeniedGroups (UserCode, GrpCode) values (2, 15) "
                         "delete from UserRights where UserCode = 2 "
                         "insert into UserRights (UserCode, SoftwarePart, Permission) values (2, 102, 6)"_s);
    const auto &user = test::Find<QLabel>(shop.window.get(), u"User_LBL"_s);
    const QString manager = user.text();
    shop.Run(u"GoodsList_ACT"_s);
    const int all = GoodsShown(shop);
    ChangeUser(shop, 0); // the same user again
    QCOMPARE(user.text(), manager);
    QCOMPARE(shop.pages->count(), 2);

    ChangeUser(shop, 1);
    QVERIFY(user.text() != manager);
    QCOMPARE(shop.t.desk.settings.UserInfo().Code, 2);
    QCOMPARE(shop.pages->count(), 1);
    shop.Run(u"GoodsList_ACT"_s);
    const int denied = shop.t.database.Scalar(u"select count(*) from GoodInf where GrpCode = 15"_s).toInt();
    QVERIFY(denied > 0);
    QCOMPARE(GoodsShown(shop), all - denied);
    test::Drive([] { test::Press(Qt::Key_F7); }, [](QWidget *box) { Dismiss(box, u"حذف"_s); });
    test::Drive([&] { shop.Run(u"Rights_ACT"_s); }, [](QWidget *box) { Dismiss(box, u"تغییر دسترسی"_s); });
    shop.window->close();
}

/// The first page shows figures of the database: when they cannot be read a line says so and the pages still turn.
void TestMainWindow::pagesTurnWithoutTheDatabase()
{
    const test::DeskWindow shop;
    shop.Run(u"Choose_ACT"_s);
    shop.t.database.Exec(u"DROP TABLE inf_co"_s);
    shop.pages->setCurrentIndex(0);
    QVERIFY(shop.window->statusBar()->currentMessage().contains(u"inf_co"));
    shop.window->close();
    QVERIFY(!shop.window->isVisible());
}

/// F1 opens the page of the screen that has the keys, modal or not, and Esc gives them back.
void TestMainWindow::helpStandsOverItsScreen()
{
    const test::DeskWindow shop;
    const auto read = [](const QString &title) {
        const QWidget *screen = QApplication::activeWindow();
        const QString focus = test::Focused();
        test::Press(Qt::Key_F1);
        QTRY_COMPARE(QApplication::activeWindow()->objectName(), u"Guide_FRM"_s);
        auto &page = test::Find<QTextBrowser>(QApplication::activeWindow(), u"Guide_TXT"_s);
        const auto shown = [&page] { return page.document()->firstBlock(); };
        QCOMPARE(shown().text(), title);
        QCOMPARE(shown().textDirection(), Qt::RightToLeft);
        const QVariant picture = page.loadResource(QTextDocument::ImageResource, QUrl(u"../pictures/desk.png"_s));
        QVERIFY(!picture.value<QImage>().isNull());
        test::Picture(page, u"guide"_s);
        test::Press(Qt::Key_F1);
        QCOMPARE(shown().text(), u"راهنما"_s);
        test::Press(Qt::Key_Backspace);
        QCOMPARE(shown().text(), title);
        test::Press(Qt::Key_Escape);
        QTRY_COMPARE(QApplication::activeWindow(), screen);
        QCOMPARE(test::Focused(), focus);
    };
    read(u"راهنما"_s);
    shop.Run(u"GoodsList_ACT"_s);
    read(u"لیست کالاها"_s);
    test::Drive([&] { shop.Run(u"NewGood_ACT"_s); },
                [&read](QWidget *) {
                    read(u"اطلاعات کالا"_s);
                    test::Press(Qt::Key_Escape);
                });
    shop.window->close();
}

REGISTER_TEST(TestMainWindow)
#include "tst_main_window.moc"
