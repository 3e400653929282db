#include "host/controls/search_frame.h"
#include "tests/host/block_model.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

/// Searching in a grid.
class TestGridSearch : public QObject
{
    Q_OBJECT

private slots:
    void search_data();
    void search();
    void search_goes_on_as_rows_arrive();
    void search_frame_offers_the_right_edit();
};

void TestGridSearch::search_data()
{
    QTest::addColumn<host::SearchDescription>("description");
    QTest::addColumn<QStringList>("found");
    const auto row = [](const char *name, const host::SearchDescription &what, const QStringList &found) {
        QTest::newRow(name) << what << found;
    };
    row("arabic letters and half-space", {u""_s, false, u"کیسهای"_s, {}}, {u"101"_s});
    row("words in any order", {u""_s, false, u"احمد چای"_s, {}}, {u"101"_s});
    row("persian digits", {u"Name"_s, false, u"1 کیلو"_s, {}}, {u"115"_s});
    row("case", {u"Name"_s, false, u"nesCAFE"_s, {}}, {u"201"_s});
    row("reverse", {u"Name"_s, true, u"چای"_s, {}}, {u"115"_s, u"201"_s});
    row("reverse of nothing is everything", {u"Name"_s, true, u" "_s, {}}, {u"101"_s, u"102"_s, u"115"_s, u"201"_s});
    row("a scanned barcode", {u""_s, false, u"6260000000028"_s, {}}, {u"102"_s});
    row("signs are letters", {u"AbbName"_s, false, u"%_["_s, {}}, {u"201"_s});
    row("first digits of a code", {u"Code"_s, false, {}, u"1"_s}, {u"101"_s, u"102"_s, u"115"_s});
    row("digits inside a code do not count", {u"Code"_s, false, {}, u"15"_s}, {});
    row("price", {u"Cost1"_s, false, {}, u"98"_s}, {u"102"_s});
    row("quantity without its zeros", {u"Mogodi"_s, false, {}, u"12.5"_s}, {u"101"_s});
    row("amounts are no part of a general search", {u""_s, false, u"450000"_s, {}}, {});
    row("nowhere", {u""_s, false, u"قهوه"_s, {}}, {});
}

void TestGridSearch::search()
{
    QFETCH(host::SearchDescription, description);
    BlockModel model({u"Code"_s, u"abbname"_s, u"Name"_s, u"Mogodi"_s, u"Cost1"_s}, SomeGoods(), 2);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.Search(description);
    QTEST(grid.ShownKeys(), "found");
    grid.Search({});
    QCOMPARE(grid.RowCount(), 4);
}

void TestGridSearch::search_goes_on_as_rows_arrive()
{
    QList<QStringList> rows;
    for (int code = 1; code <= 3000; ++code)
        rows << QStringList{QString::number(code), code % 1000 == 0 ? u"نادر"_s : u"کالا"_s};
    BlockModel model({u"Code"_s, u"Name"_s}, rows, 100);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.Search({u"Name"_s, false, u"نادر"_s, {}});
    QCOMPARE(grid.RowCount(), 0);
    QTRY_COMPARE(grid.RowCount(), 3);
    QVERIFY(grid.Locate(u"2000"_s));
    QCOMPARE(grid.CurrentSourceRow(), 1999);
    QVERIFY(!grid.Locate(u"1999"_s)); // there, but not shown
    grid.Search({});
    QTRY_COMPARE(grid.RowCount(), 3000);
    QCOMPARE(grid.CurrentKey(), u"2000"_s);
}

void TestGridSearch::search_frame_offers_the_right_edit()
{
    BlockModel model({u"Code"_s, u"AbbName"_s, u"Name"_s, u"Mogodi"_s, u"Cost1"_s}, SomeGoods(), 10);
    QWidget window;
    auto *column = new QVBoxLayout(&window);
    auto *frame = new host::SearchFrame(&window);
    auto *grid = new host::Grid(&window);
    grid->setObjectName(u"Grid"_s);
    column->addWidget(frame);
    column->addWidget(grid);
    grid->SetColumns(columns);
    grid->SetSource(&model);
    frame->SetGrid(grid);
    test::Show(window);

    frame->Focus();
    QCOMPARE(test::Focused(), u"Text_EDT"_s);
    test::Type(u"چای"_s);
    QCOMPARE(grid->ShownKeys(), (QStringList{u"101"_s, u"102"_s}));
    test::Find<QCheckBox>(frame, u"Reverse_CHK"_s).click();
    QCOMPARE(grid->ShownKeys(), (QStringList{u"115"_s, u"201"_s}));
    test::Press(Qt::Key_Escape); // empties the search before it closes anything
    QCOMPARE(grid->RowCount(), 4);

    auto &chooser = test::Find<QComboBox>(frame, u"Column_CMB"_s);
    test::Find<QCheckBox>(frame, u"Reverse_CHK"_s).click();
    chooser.setCurrentIndex(chooser.findText(u"فی فروش"_s));
    QCOMPARE(test::Focused(), u"Price_EDT"_s);
    test::Type(u"۹۸"_s);
    QCOMPARE(grid->ShownKeys(), QStringList{u"102"_s});
    test::Press(Qt::Key_Down);
    QCOMPARE(test::Focused(), u"Grid"_s);
    chooser.setCurrentIndex(chooser.findText(u"کد"_s));
    QCOMPARE(grid->RowCount(), 4); // its own edit is empty
    frame->Clear();
    QCOMPARE(grid->RowCount(), 4);
}

REGISTER_TEST(TestGridSearch)
#include "tst_grid_search.moc"
