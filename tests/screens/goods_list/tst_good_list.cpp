#include "host/data/persian_text.h"
#include "tests/screens/goods_list/list_fixture.h"
#include "tests/support/printed_pages.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPrintPreviewDialog>
#include <QPushButton>
#include <QTabBar>

/// What the list shows: its columns, search, groups, stock tabs and order.
class TestGoodList : public QObject
{
    Q_OBJECT

private slots:
    void showsGoodsRightToLeft();
    void tabOrder();
    void search_data();
    void search();
    void groupIsFoundByTyping();
    void stockTabs_data();
    void stockTabs();
    void columnsAskForTheirData();
    void orderOfPrices();
    void preview();
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

/// Tab goes from the goods through the groups and the stock tabs to the commands, and by the search back.
void TestGoodList::tabOrder()
{
    Screen screen;
    screen.Open();
    QCOMPARE(test::TabRound().join(u' '),
             u"GoodListDB_GRD SearchGroup_EDT GoodGroupDB_GRD Group_BTN Search_TBC ADVSearch_CHK ADVSearch_BTN "
             "New_BTN Edit_BTN Review_BTN Del_BTN Show_BTN PrintList_BTN Tags_btn ShowPicture_BTN EXit_BTN "
             "CategoryList_BTN CostList_BTN UpdatePrice_BTN Discount_BTN Barcode_BTN SaveGroupGoodType_BTN "
             "SelectedList_BTN Import_BTN UpdateAssets_BTN SmartButton_VLK1 Column_CMB Text_EDT Reverse_CHK"_s);
    test::Press(Qt::Key_Escape);
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

    // Nor does the host's list of groups, nor closing the list.
    const auto &groups = test::Find<host::Grid>(&screen.list, u"GoodGroupDB_GRD"_s);
    test::Press(Qt::Key_F11);
    QCOMPARE(groups.CurrentKey(), u"15"_s);
    test::Press(Qt::Key_Escape);
    screen.Open();
    QCOMPARE(groups.CurrentKey(), u"15"_s);
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes(u"GrpCode = 15"_s));

    test::Focus(&screen.list, u"GoodGroupDB_GRD"_s);
    test::Press(Qt::Key_Home, Qt::ControlModifier);
    test::Press(Qt::Key_Return);
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes());
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
    QTRY_VERIFY(grid.CurrentValue(u"Cost2"_s).toDouble() > 0); // a list that takes long is read behind the rows
    QCOMPARE(
        grid.CurrentValue(u"Cost2"_s).toDouble(),
        screen.database.Scalar(u"select CostLevel_Sell_2 from GoodCostDiscount where GoodCode="_s + grid.CurrentKey())
            .toDouble());
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

/// The page shows what the list shows: its columns from right to left, the rows in their order, the names of tags.
void TestGoodList::preview()
{
    Screen screen;
    screen.Open();
    test::PrintedPages printer;
    test::Drive([] { test::Press(Qt::Key_F9); },
                [&](QWidget *shown) {
                    auto *preview = qobject_cast<QPrintPreviewDialog *>(shown);
                    QVERIFY(preview);
                    test::Picture(*preview, u"preview"_s);
                    emit preview->paintRequested(&printer);
                    test::Press(Qt::Key_Escape);
                });
    screen.Activate();
    QCOMPARE(screen.grid.CurrentKey(), u"110001"_s);
    const QString tag = screen.database.Scalar(u"select Name from TagS where Code = 1"_s).toString();
    QVERIFY2(screen.grid.VisibleTexts(0).contains(tag), qPrintable(screen.grid.VisibleTexts(0).join(u'|')));
    const QString pages = host::PersianDigits(QString::number(printer.Pages().size()));
    QVERIFY(printer.Pages().size() > 2);
    int row = 0;
    int number = 0;
    for (const auto &page : printer.Pages()) {
        const QString outside = page.Outside().remove(u'\u200f');
        QVERIFY2(outside.contains(screen.list.Title()) && outside.contains(u"۱۴۰۳/۰۵/۰۹"), qPrintable(outside));
        QVERIFY2(outside.contains(u"صفحه %1 از %2"_s.arg(host::PersianDigits(QString::number(++number)), pages)),
                 qPrintable(outside));
        QList<QStringList> rows = page.Rows();
        QCOMPARE(rows.takeFirst().size(), screen.grid.VisibleCaptions().size());
        for (const QStringList &printed : std::as_const(rows)) {
            QStringList texts = screen.grid.VisibleTexts(row++);
            texts.removeAll(QString());
            QCOMPARE(printed.size(), texts.size());
            for (qsizetype cell = 0; cell < texts.size(); ++cell) {
                const QString text = QString(printed.at(cell)).remove(u'\u200f').remove(u'\u200d');
                const QString whole = QString(texts.at(cell)).remove(u'\u200f');
                // Numbers are painted in runs of their own, which stand the other way round.
                const bool same =
                    text == whole || std::is_permutation(text.begin(), text.end(), whole.begin(), whole.end());
                QVERIFY2(text.endsWith(u'…') ? whole.startsWith(text.chopped(1)) : same,
                         qPrintable(text + u" for "_s + whole));
            }
        }
    }
    QCOMPARE(row, screen.grid.RowCount());
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
