#include "host/controls/grid.h"
#include "host/controls/search_frame.h"
#include "host/controls/tags_panel.h"
#include "screens/goods_list/good_list.h"
#include "tests/support/database.h"
#include "tests/support/modal.h"
#include "tests/support/test_host.h"
#include "tests/support/test_main.h"

#include <QtCore/QBuffer>
#include <QtGui/QContextMenuEvent>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolButton>

using host::TFormMode;
using host::TPermission;
using host::TSoftwarePart;
using namespace Qt::StringLiterals;

namespace {

using Keys = QList<Qt::Key>;

/// A goods list on the demo data.
struct Screen
{
    test::Database database{test::Database::Content::Demo};
    test::TestHost host{{database.Main(), database.GoodsList(), database.Scales()}};
    TGood_List_FRM list{host, TFormMode::DockedList};
    host::Grid &grid = test::Find<host::Grid>(&list, u"GoodListDB_GRD"_s);

    Screen()
    {
        // What the editor resolves codes by.
        for (const auto &[part, table] :
             {std::pair(TSoftwarePart::Units, u"Units"_s), {TSoftwarePart::Stores, u"Stores"_s}})
            for (const QString &row : database.Rows(u"select Code, Name from "_s + table))
                host.entities.lists[int(part)].append({row.section(u'|', 0, 0).toInt(), row.section(u'|', 1)});
    }
    void Open(TFormMode mode = TFormMode::DockedList)
    {
        list.SetFormMode(mode);
        QVERIFY(list.ShowDocked());
        Activate();
    }
    /// No window manager gives the keyboard back after a modal screen.
    void Activate()
    {
        QCoreApplication::processEvents();
        list.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&list));
    }
    QStringList Codes(const QString &where = u"1=1"_s) const
    {
        return database.Rows(u"select Code from GoodInf g where "_s + where + u" order by Code"_s);
    }
    void Press(const Keys &keys) const
    {
        for (const Qt::Key key : keys)
            test::Press(key);
    }
    /// The cell of the current row as it is shown.
    QString Shown(const QString &field) const
    {
        for (int column = 0; column < grid.Columns().size(); ++column)
            if (grid.Columns().at(column).field == field)
                return grid.currentIndex().siblingAtColumn(column + 1).data().toString();
        return {};
    }
};

/// A host whose deletion of goods succeeds, or fails with an error of the database.
struct DeletingEntities : test::FakeEntities
{
    const test::Database *database = nullptr;
    bool fail = false;
    int Delete_Entity(TSoftwarePart part, int code, bool silent) override
    {
        test::FakeEntities::Delete_Entity(part, code, silent);
        if (fail)
            throw std::runtime_error("gone");
        database->Exec(u"delete from GoodCostDiscount where GoodCode=%1 delete from Kardex where Kala=%1 "
                       "delete from Kala_category where Kala_code=%1 delete from GoodFirstAsset where GoodCode=%1 "
                       "delete from GoodInf where Code=%1"_s.arg(code));
        return 0;
    }
};

} // namespace

class TestGoodList : public QObject
{
    Q_OBJECT

private slots:
    void showsGoodsRightToLeft();
    void search_data();
    void search();
    void groupIsFoundByTyping();
    void stockTabs_data();
    void stockTabs();
    void choosing_data();
    void choosing();
    void selectionTextIsSearchedFor();
    void scannedBarcode_data();
    void scannedBarcode();
    void deletionRefused_data();
    void deletionRefused();
    void deletion();
    void editingKeepsThePlace();
    void columnsAskForTheirData();
    void tags();
    void groupMenu_data();
    void groupMenu();
    void pictures();
    void preview();
    void orderOfPrices();
    void stockUpdate();
    void errorKeepsTheRows();
};

void TestGoodList::showsGoodsRightToLeft()
{
    Screen screen;
    screen.list.SetKeyboardLayoutName(u"00000409"_s);
    screen.Open();
    QCOMPARE(
        screen.grid.VisibleCaptions().join(u'|'),
        u"کد|نام کامل کالا|موجودی 2|موجودی|واحد|واحد|خرده‌فروشی|عمده‌فروشی|همکار|نمایندگی|نشان 1|نشان 2|نشان 3"_s);
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes());
    QVERIFY(test::RightOf(test::Find(&screen.list, u"GoodGroupDB_GRD"_s), screen.grid));
    QVERIFY(test::RightOf(test::Find(&screen.list, u"New_BTN"_s), test::Find(&screen.list, u"Del_BTN"_s)));
    QVERIFY(!test::Find(&screen.list, u"Select_BTN"_s).isVisible());
    QCOMPARE(test::Find<QLabel>(&screen.list, u"DetailName_LBL"_s).text(),
             screen.database.Scalar(u"select Name from GoodInf where Code="_s + screen.grid.CurrentKey()).toString());
    test::Picture(screen.list, u"list"_s);
    test::Press(Qt::Key_Escape);
    QVERIFY(!screen.list.isVisible());
    QCOMPARE(screen.host.keyboard.switches, QStringList{u"00000409"_s});
}

void TestGoodList::search_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("where");
    QTest::newRow("Arabic letters") << u"چاي سياه"_s << u"Name like N'%چای سیاه%'"_s;
    QTest::newRow("words in any order") << u"۲۵۰ لاهیجان"_s << u"Name like N'%لاهیجان%' and Name like N'%۲۵۰%'"_s;
    QTest::newRow("without the half-space") << u"میلیلیتری"_s << u"Name like N'%میلی‌لیتری%'"_s;
    QTest::newRow("Persian digits of a code") << u"۱۳۰۰۰۲"_s << u"Code = 130002"_s;
    QTest::newRow("part of a barcode") << u"626165501302"_s << u"AbbName like '%626165501302%'"_s;
    QTest::newRow("nothing") << u"زرافه"_s << u"1=0"_s;
    QTest::newRow("wildcards are letters") << u"%"_s << u"1=0"_s;
}

/// What is typed into the grid is searched for; the first Esc gives all goods back, the second closes.
void TestGoodList::search()
{
    QFETCH(QString, typed);
    QFETCH(QString, where);
    Screen screen;
    screen.Open();
    screen.grid.FetchAll();
    test::Type(typed);
    QCOMPARE(test::Focused(), u"Text_EDT"_s);
    QTRY_COMPARE(screen.grid.ShownKeys(), screen.Codes(where));
    QCOMPARE(test::Find(&screen.list, u"Empty_LBL"_s).isVisible(), screen.grid.IsEmpty());
    test::Press(Qt::Key_Down);
    QCOMPARE(test::Focused(), u"GoodListDB_GRD"_s);
    test::Press(Qt::Key_Escape);
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes());
    QVERIFY(screen.list.isVisible());
    test::Press(Qt::Key_Escape);
    QVERIFY(!screen.list.isVisible());
}

void TestGoodList::groupIsFoundByTyping()
{
    Screen screen;
    screen.Open();
    auto &search = test::Find<QLineEdit>(&screen.list, u"SearchGroup_EDT"_s);
    QCOMPARE(search.placeholderText(), u"جستجو ... (Ctrl + F11)"_s);
    test::Press(Qt::Key_F11, Qt::ControlModifier);
    QVERIFY(search.hasFocus());
    QCOMPARE(search.placeholderText(), QString());
    test::Type(u"لبنيات"_s);
    test::Press(Qt::Key_Return);
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes(u"GrpCode = 15"_s));
    QCOMPARE(test::Focused(), u"GoodListDB_GRD"_s);

    // Looking at another group without choosing it changes nothing, not even after the next refresh.
    test::Focus(&screen.list, u"GoodGroupDB_GRD"_s);
    screen.Press({Qt::Key_Up, Qt::Key_Up});
    test::Focus(&screen.list, u"GoodListDB_GRD"_s);
    screen.host.settings.record.StockOnGoodsList = true;
    test::Find<QTabBar>(&screen.list, u"Search_TBC"_s).setCurrentIndex(1);
    test::Find<QTabBar>(&screen.list, u"Search_TBC"_s).setCurrentIndex(2);
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes(u"GrpCode = 15"_s));

    test::Focus(&screen.list, u"GoodGroupDB_GRD"_s);
    test::Press(Qt::Key_Home, Qt::ControlModifier);
    test::Press(Qt::Key_Return);
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes());
    test::Press(Qt::Key_F11);
    QCOMPARE(screen.host.entities.calls, QStringList{u"Call_GroupList(122)"_s});
    test::Press(Qt::Key_Escape);
}

void TestGoodList::stockTabs_data()
{
    QTest::addColumn<int>("left");
    QTest::addColumn<QString>("where");
    const QString inStock = u"exists (select 1 from GoodStock s where s.GoodCode = g.Code and s.Amount1 > 0)"_s;
    QTest::newRow("all") << 0 << u"1=1"_s;
    QTest::newRow("without stock") << 1 << u"not "_s + inStock;
    QTest::newRow("with stock") << 2 << inStock;
}

void TestGoodList::stockTabs()
{
    QFETCH(int, left);
    QFETCH(QString, where);
    Screen screen;
    screen.Open();
    test::Focus(&screen.list, u"Search_TBC"_s);
    for (int i = 0; i < left; ++i)
        test::Press(Qt::Key_Right); // right to left, the earlier tabs lie to the right
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes(where));
    test::Press(Qt::Key_Escape);
    screen.host.settings.record.StockOnGoodsList = false;
    screen.Open();
    QVERIFY(!test::Find(&screen.list, u"Search_TBC"_s).isVisible());
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes());
    test::Press(Qt::Key_Escape);
}

void TestGoodList::choosing_data()
{
    QTest::addColumn<bool>("several");
    QTest::addColumn<QString>("locate");
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("codes");
    QTest::newRow("the current good") << false << u""_s << Keys{Qt::Key_Down, Qt::Key_Return} << 1 << 110002
                                      << u"110002"_s;
    QTest::newRow("the good to stand on") << false << u"130002"_s << Keys{Qt::Key_Return} << 1 << 130002 << u"130002"_s;
    QTest::newRow("no whole number stands nowhere")
        << false << u"13x"_s << Keys{Qt::Key_Return} << 1 << 110001 << u"110001"_s;
    QTest::newRow("one good: no marks") << false << u""_s << Keys{Qt::Key_Insert, Qt::Key_Down, Qt::Key_Return} << 1
                                        << 110002 << u"110002"_s;
    QTest::newRow("in the order of marking")
        << true << u""_s << Keys{Qt::Key_Down, Qt::Key_Down,   Qt::Key_Space,  Qt::Key_Up,
                                 Qt::Key_Up,   Qt::Key_Insert, Qt::Key_Insert, Qt::Key_Return}
        << 1 << 110003 << u"110003,110001,110002"_s;
    QTest::newRow("a mark taken off") << true << u""_s
                                      << Keys{Qt::Key_Space, Qt::Key_Space, Qt::Key_Down, Qt::Key_Enter} << 1 << 110002
                                      << u"110002"_s;
    QTest::newRow("given up") << true << u""_s << Keys{Qt::Key_Space, Qt::Key_Escape} << 0 << 0 << u""_s;
}

void TestGoodList::choosing()
{
    QFETCH(bool, several);
    QFETCH(QString, locate);
    QFETCH(Keys, keys);
    Screen screen;
    screen.list.SetFormMode(TFormMode::Selection);
    screen.list.SetMultiSelect(several);
    screen.list.SetLocateCode(locate);
    int result = -1;
    test::Drive([&] { result = screen.list.ShowModally(); },
                [&](QWidget *list) {
                    QVERIFY(test::Find(list, u"Select_BTN"_s).isVisible());
                    screen.Press(keys);
                });
    QTEST(result, "result");
    QTEST(screen.list.ChosenCode(), "code");
    QTEST(screen.list.ChosenCodes(), "codes");
    QCOMPARE(
        screen.list.ChosenName(),
        screen.database.Scalar(u"select Name from GoodInf where Code=%1"_s.arg(screen.list.ChosenCode())).toString());
}

/// What the caller's user typed is searched for, unless it led to a good already.
void TestGoodList::selectionTextIsSearchedFor()
{
    Screen screen;
    screen.list.SetFormMode(TFormMode::Selection);
    screen.list.SetParameterText(u"لاهيجان ۵۰۰"_s);
    screen.list.SetLocateCode(u"999999"_s);
    test::Drive([&] { screen.list.ShowModally(); }, [](QWidget *) { test::Press(Qt::Key_Return); });
    QCOMPARE(screen.list.ChosenCode(), 130003);
    screen.list.SetLocateCode(u"110002"_s);
    test::Drive([&] { screen.list.ShowModally(); }, [](QWidget *) { test::Press(Qt::Key_Return); });
    QCOMPARE(screen.list.ChosenCode(), 110002);
}

void TestGoodList::scannedBarcode_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("scanned");
    QTest::addColumn<int>("code");
    QTest::newRow("any column") << u""_s << u"6261655013027"_s << 130002;
    QTest::newRow("Persian digits") << u""_s << u"۶۲۶۱۶۵۵۰۱۳۰۲۷"_s << 130002;
    QTest::newRow("while another column is searched") << u"Name"_s << u"6261655013027"_s << 130002;
    QTest::newRow("while prices are searched") << u"Cost1"_s << u"6261655013027"_s << 130002;
    QTest::newRow("no pattern") << u""_s << u"%"_s << 0;
}

/// The good of a barcode is taken at once, even from outside the group and the stock tab that are shown.
void TestGoodList::scannedBarcode()
{
    QFETCH(QString, field);
    QFETCH(QString, scanned);
    Screen screen;
    screen.list.SetFormMode(TFormMode::Selection);
    test::Drive([&] { screen.list.ShowModally(); },
                [&](QWidget *list) {
                    test::Press(Qt::Key_F11, Qt::ControlModifier);
                    test::Type(u"لبنیات"_s);
                    test::Press(Qt::Key_Return);
                    test::Find<host::SearchFrame>(list, u"TGeneral_Search_Frame1"_s).Focus(field);
                    test::Type(scanned);
                    test::Press(Qt::Key_Return);
                    if (screen.list.IsShowing())
                        screen.Press({Qt::Key_Escape, Qt::Key_Escape});
                });
    QTEST(screen.list.ChosenCode(), "code");
}

void TestGoodList::deletionRefused_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<QStringList>("asked");
    const QString voucher = u"IsVoucherApproved(12, 1, حذف کالا, اول دوره)"_s;
    QTest::newRow("right") << u"right"_s << QStringList() << QStringList();
    QTest::newRow("voucher") << u"voucher"_s << QStringList() << QStringList{voucher};
    QTest::newRow("detail code") << u"detail"_s << QStringList() << QStringList{voucher};
    const QStringList shop{u"ShowSmartMessage(10030, کالای مورد نظر به دلیل استفاده در سفارشگیر همراه یا نیلارا ، )"_s};
    QTest::newRow("web shop") << u"online"_s << shop << QStringList{voucher};
    QTest::newRow("market") << u"market"_s << shop << QStringList{voucher};
    QTest::newRow("rules of the host") << u"host"_s << QStringList() << QStringList{voucher};
    QTest::newRow("error") << u"error"_s << QStringList{u"ShowMessage(عمليات با اشکال مواجه شد.)"_s}
                           << QStringList{voucher};
}

void TestGoodList::deletionRefused()
{
    QFETCH(QString, obstacle);
    Screen screen;
    screen.database.Exec(u"update GoodInf set VoucherCode=12 where Code=110001 "
                         "insert into Items (Code, ScaleType, ChangeType) values (110001, 1, 0) "
                         "delete from OnlineProduct delete from Market.Product"_s);
    screen.host.scales.enabled = true;
    if (obstacle == u"right")
        screen.host.permissions.Deny(TSoftwarePart::Goods, TPermission::Delete);
    screen.host.vouchers.approved = obstacle == u"voucher";
    screen.host.goodDetails.uniqueCodeInUse = obstacle == u"detail";
    if (obstacle == u"online")
        screen.database.Exec(u"insert into OnlineProduct (Masterid) values (110001)"_s);
    if (obstacle == u"market")
        screen.database.Exec(u"insert into Market.Product (VelakProductCode) values (110001)"_s);
    screen.host.entities.refuseDelete = obstacle == u"host" ? 1 : 0;
    if (obstacle == u"error")
        screen.database.Exec(u"drop table Market.Product"_s);
    screen.Open();
    test::Press(Qt::Key_F7);
    QTEST(screen.host.messages.TakeAll(), "messages");
    QTEST(screen.host.vouchers.calls, "asked");
    QCOMPARE(!screen.host.entities.calls.isEmpty(), obstacle == u"host");
    QCOMPARE(screen.grid.CurrentKey(), u"110001"_s);
    QCOMPARE(screen.Codes(u"Code=110001"_s).size(), 1);
    QCOMPARE(screen.database.Scalar(u"select ChangeType from Items where Code=110001"_s).toInt(), 0);
    test::Press(Qt::Key_Escape);
}

void TestGoodList::deletion()
{
    Screen screen;
    screen.database.Exec(u"insert into Items (Code, ScaleType, ChangeType) values (110002, 1, 0)"_s);
    screen.host.scales.enabled = true;
    DeletingEntities entities;
    entities.database = &screen.database;
    const host::Host &h = screen.host.host;
    host::Host deleting{h.DM,    h.permissions, h.messages, h.settings,   entities, h.vouchers,
                        h.stock, h.goodDetails, h.photos,   h.categories, h.scales, h.keyboard,
                        h.clock, h.barcodes,    h.finance,  h.theme,      h.numbers};
    TGood_List_FRM list(deleting, TFormMode::DockedList);
    QVERIFY(list.ShowDocked() && QTest::qWaitForWindowActive(&list));
    const auto &grid = test::Find<host::Grid>(&list, u"GoodListDB_GRD"_s);
    screen.Press({Qt::Key_Down, Qt::Key_F7});
    QCOMPARE(entities.calls, QStringList{u"Delete_Entity(102, 110002, 0)"_s});
    QCOMPARE(screen.Codes(u"Code=110002"_s), QStringList());
    QCOMPARE(screen.database.Scalar(u"select ChangeType from Items where Code=110002"_s).toInt(), 3);
    QCOMPARE(grid.CurrentKey(), u"110003"_s); // the next one moved up
    entities.fail = true;
    test::Press(Qt::Key_F7);
    QCOMPARE(screen.host.messages.TakeAll(), QStringList{u"ShowMessage(عمليات با اشکال مواجه شد.)"_s});
    QCOMPARE(grid.CurrentKey(), u"110003"_s);
    test::Press(Qt::Key_Escape);
}

void TestGoodList::editingKeepsThePlace()
{
    Screen screen;
    screen.Open();
    test::Type(u"سیاه"_s);
    screen.Press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down});
    const QString code = screen.grid.CurrentKey();
    const int row = screen.grid.currentIndex().row();
    QCOMPARE(row, 2);
    test::Drive([&] { test::Press(Qt::Key_F6); }, [](QWidget *) { test::Press(Qt::Key_Escape); });
    screen.Activate();
    QCOMPARE(screen.grid.CurrentKey(), code);
    screen.host.messages.Answer(true);
    test::Drive([&] { test::Press(Qt::Key_F5); },
                [](QWidget *editor) {
                    test::Enter(editor, u"Kala_Type_EDT"_s, u"بهار ۱۴۰۵"_s);
                    test::Press(Qt::Key_F3);
                });
    QVERIFY(screen.host.messages.TakeAll().contains(u"ContinueWithRepeatedField(شاخص کالا)"_s));
    screen.Activate();
    QVERIFY(
        screen.database.Scalar(u"select Name from GoodInf where Code="_s + code).toString().contains(u"بهار ۱۴۰۵"_s));
    QCOMPARE(screen.grid.CurrentKey(), code);
    QCOMPARE(screen.grid.currentIndex().row(), row);
    QVERIFY(screen.Shown(u"Name"_s).contains(u"بهار ۱۴۰۵"_s));
    screen.Press({Qt::Key_Escape, Qt::Key_Escape});
}

/// A column that is not shown is not asked for; showing it runs the list again, and the layout is remembered.
void TestGoodList::columnsAskForTheirData()
{
    Screen screen;
    screen.Open();
    for (const QString &field : {u"Cost1"_s, u"Cost2"_s, u"Cost3"_s, u"Cost4"_s})
        screen.grid.SetColumnVisible(field, false);
    test::Press(Qt::Key_Escape);
    TGood_List_FRM again(screen.host, TFormMode::DockedList);
    QVERIFY(again.ShowDocked() && QTest::qWaitForWindowActive(&again));
    auto &grid = test::Find<host::Grid>(&again, u"GoodListDB_GRD"_s);
    QVERIFY(!grid.IsColumnVisible(u"Cost2"_s));
    QVERIFY(grid.CurrentValue(u"Cost2"_s).isNull());
    test::Press(Qt::Key_Down);
    grid.SetColumnVisible(u"Cost2"_s, true);
    QCOMPARE(
        grid.CurrentValue(u"Cost2"_s).toDouble(),
        screen.database.Scalar(u"select CostLevel_Sell_2 from GoodCostDiscount where GoodCode="_s + grid.CurrentKey())
            .toDouble());
    QVERIFY(grid.CurrentValue(u"Cost2"_s).toDouble() > 0);
    test::Press(Qt::Key_Escape);
}

void TestGoodList::tags()
{
    Screen screen;
    screen.database.Exec(u"update GoodInf set tags=N'1,3' where Code=110001"_s);
    screen.Open();
    test::Find<QPushButton>(&screen.list, u"Tags_btn"_s).click();
    const auto chips = [&] { return screen.list.findChildren<QToolButton *>(u"Tag_3"_s); };
    QTRY_COMPARE(chips().size(), 1);
    chips().first()->click();
    const auto stored = [&] {
        return screen.database.Scalar(u"select tags from GoodInf where Code=110001"_s).toString();
    };
    QCOMPARE(stored(), u"1"_s);
    QTRY_COMPARE(chips().size(), 0);
    QTest::mouseClick(&test::Find<QToolButton>(&screen.list, u"add_btn"_s), Qt::LeftButton);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    const QString name = screen.database.Scalar(u"select Name from TagS where Code=3"_s).toString();
    const auto actions = menu->actions();
    for (QAction *action : actions)
        if (action->text() == name)
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    QCOMPARE(stored(), u"1,3"_s);
    QTRY_COMPARE(chips().size(), 1);

    // Several marked goods show a line each, to look at.
    screen.Activate();
    screen.grid.setFocus();
    screen.Press({Qt::Key_Insert, Qt::Key_Insert});
    const auto panels = [&] { return screen.list.findChildren<host::TagsPanel *>(); };
    QTRY_COMPARE(panels().size(), 2);
    QVERIFY(panels().first()->isReadOnly() && panels().last()->isReadOnly());
    screen.grid.ClearMarks();
    QVERIFY(screen.grid.Locate(u"110001"_s));
    QTRY_COMPARE(panels().size(), 1);
    screen.host.permissions.Deny(TSoftwarePart::Goods, TPermission::Change);
    test::Find<QToolButton>(&screen.list, u"Tag_1"_s).click();
    QCOMPARE(stored(), u"1,3"_s);
    QTRY_VERIFY(screen.list.findChild<QWidget *>(u"Tag_1"_s));
    test::Press(Qt::Key_Escape);
}

void TestGoodList::groupMenu_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("entry");
    QTest::addColumn<QString>("call");
    QTest::newRow("new") << 2 << 1 << u"New_Group(122)"_s;
    QTest::newRow("edit") << 2 << 2 << u"Edit_Group(122, %1)"_s;
    QTest::newRow("delete") << 2 << 3 << u"Delete_Entity(122, %1, 0)"_s;
    QTest::newRow("all goods is no group to change") << 0 << 2 << u"New_Group(122)"_s;
}

/// The menu works on the group under the mouse, whichever is chosen, and leaves the goods of the chosen one.
void TestGoodList::groupMenu()
{
    QFETCH(int, row);
    QFETCH(int, entry);
    QFETCH(QString, call);
    Screen screen;
    screen.Open();
    auto &groups = test::Find<host::Grid>(&screen.list, u"GoodGroupDB_GRD"_s);
    const QPoint at = groups.visualRect(groups.model()->index(row, 2)).center();
    QTest::mouseClick(groups.viewport(), Qt::RightButton, {}, at);
    const QString group = groups.CurrentKey();
    QContextMenuEvent menu(QContextMenuEvent::Mouse, at, groups.viewport()->mapToGlobal(at));
    QApplication::sendEvent(groups.viewport(), &menu);
    QTRY_VERIFY(QApplication::activePopupWidget());
    for (int i = 0; i < entry; ++i)
        test::Press(Qt::Key_Down);
    test::Press(Qt::Key_Return);
    QTRY_COMPARE(screen.host.entities.calls, QStringList{call.contains(u'%') ? call.arg(group) : call});
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes());
    screen.Activate();
    test::Focus(&screen.list, u"GoodListDB_GRD"_s);
    test::Press(Qt::Key_Escape);
}

void TestGoodList::pictures()
{
    Screen screen;
    const auto picture = [](Qt::GlobalColor color) {
        QImage image(20, 10, QImage::Format_RGB32);
        image.fill(color);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        image.save(&buffer, "PNG");
        return bytes;
    };
    screen.host.photos.photos.insert(110001, {picture(Qt::red), picture(Qt::blue)});
    screen.host.photos.photos.insert(110002, {"no picture at all"});
    screen.Open();
    auto &button = test::Find<QPushButton>(&screen.list, u"ShowPicture_BTN"_s);
    QCOMPARE(button.toolTip(), u"نمايش تصوير"_s);
    button.click();
    QCOMPARE(button.toolTip(), u"عدم نمايش تصوير"_s);
    auto &panel = test::Find<QWidget>(&screen.list, u"Pic_Show"_s);
    const auto &shown = test::Find<QLabel>(&panel, u"Picture_IMG"_s);
    const auto &position = test::Find<QLabel>(&panel, u"Position_LBL"_s);
    const auto middle = [&] {
        const QImage image = shown.pixmap().toImage();
        return image.isNull() ? QColor() : image.pixelColor(image.rect().center());
    };
    QTRY_COMPARE(position.text(), u"۱ از ۲"_s);
    QCOMPARE(middle(), QColor(Qt::red));
    test::Find<QToolButton>(&panel, u"Last_BTN"_s).click();
    QCOMPARE(position.text(), u"۲ از ۲"_s);
    QCOMPARE(middle(), QColor(Qt::blue));
    QVERIFY(!test::Find<QToolButton>(&panel, u"Next_BTN"_s).isEnabled());
    screen.grid.setFocus();
    test::Press(Qt::Key_Down);
    QTRY_COMPARE(shown.text(), u"تصویر خوانده نشد"_s);
    test::Press(Qt::Key_Down);
    QTRY_COMPARE(shown.text(), u"بدون تصویر"_s);
    test::Find<QToolButton>(&panel, u"Close_BTN"_s).click();
    QVERIFY(!panel.isVisible() && !button.isChecked());
    test::Press(Qt::Key_Escape);
}

void TestGoodList::preview()
{
    Screen screen;
    screen.Open();
    test::Drive([] { test::Press(Qt::Key_F9); },
                [](QWidget *preview) {
                    QVERIFY(preview->inherits("QPrintPreviewDialog"));
                    test::Picture(*preview, u"preview"_s);
                    test::Press(Qt::Key_Escape);
                });
    screen.Activate();
    QCOMPARE(screen.grid.CurrentKey(), u"110001"_s);
    // A mark's colour is nothing on paper: its name is printed.
    const QString tag = screen.database.Scalar(u"select Name from TagS where Code = 1"_s).toString();
    QVERIFY2(screen.grid.VisibleTexts(0).contains(tag), qPrintable(screen.grid.VisibleTexts(0).join(u'|')));
    test::Press(Qt::Key_Escape);
}

/// Goods are put in the order of a column by a click on its caption, and stay so until the list closes.
void TestGoodList::orderOfPrices()
{
    Screen screen;
    const QStringList byPrice = screen.database.Rows(
        u"select Code from GoodInf g left join GoodCostDiscount d on d.GoodCode = g.Code order by CostLevel_Sell_1, Code"_s);
    screen.Open();
    const QHeaderView *header = screen.grid.horizontalHeader();
    int section = 1;
    while (screen.grid.model()->headerData(section, Qt::Horizontal).toString() != u"خرده‌فروشی"_s)
        ++section;
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(section) + 20, header->height() / 2});
    QCOMPARE(screen.grid.ShownKeys(), byPrice);
    QCOMPARE(screen.grid.CurrentKey(), u"110001"_s);
    test::Picture(screen.list, u"ordered"_s);
    test::Find<QTabBar>(&screen.list, u"Search_TBC"_s).setCurrentIndex(1);
    test::Find<QTabBar>(&screen.list, u"Search_TBC"_s).setCurrentIndex(2);
    QCOMPARE(screen.grid.ShownKeys(), byPrice);
    test::Press(Qt::Key_Escape);
    screen.Open();
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes());
    test::Press(Qt::Key_Escape);
}

void TestGoodList::stockUpdate()
{
    Screen screen;
    const QString stock = u"select GoodCode, Amount1 from GoodStock where GoodCode=110001"_s;
    const QStringList before = screen.database.Rows(stock);
    screen.database.Exec(u"update GoodStock set Amount1 = 98765 where GoodCode = 110001"_s);
    screen.Open();
    QCOMPARE(screen.Shown(u"Mogodi"_s), u"۹۸٬۷۶۵"_s);
    test::Find<QPushButton>(&screen.list, u"UpdateAssets_BTN"_s).click();
    QCOMPARE(screen.database.Rows(stock), before);
    QVERIFY(screen.Shown(u"Mogodi"_s) != u"۹۸٬۷۶۵"_s);
    test::Press(Qt::Key_Escape);
}

void TestGoodList::errorKeepsTheRows()
{
    Screen screen;
    screen.Open();
    screen.grid.FetchAll();
    test::Press(Qt::Key_Down);
    screen.database.Exec(u"drop procedure GoodInf_List_SP"_s);
    test::Find<QTabBar>(&screen.list, u"Search_TBC"_s).setCurrentIndex(0);
    QCOMPARE(screen.host.messages.TakeAll().size(), 1);
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes());
    QCOMPARE(screen.grid.CurrentKey(), u"110002"_s);
    test::Press(Qt::Key_Escape);
}

REGISTER_TEST(TestGoodList)
#include "tst_good_list.moc"
