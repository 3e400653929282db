#include "host/controls/search_frame.h"
#include "tests/host/block_model.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

/// Searching in a grid.
class TestGridSearch : public QObject
{
    Q_OBJECT

private slots:
    void search_data();
    void search();
    void search_goes_on_as_rows_arrive();
    void search_frame_offers_the_right_edit();
    void hundred_thousand_rows_answer_a_key();
};

void TestGridSearch::search_data()
{
    QTest::addColumn<host::SearchDescription>("description");
    QTest::addColumn<QStringList>("found");
    const auto row = [](const char *name, const host::SearchDescription &what, const QStringList &found) {
        QTest::newRow(name) << what << found;
    };
    row("arabic letters and half-space", {u""_qs, false, u"کیسهای"_qs, {}}, {u"101"_qs});
    row("words in any order", {u""_qs, false, u"احمد چای"_qs, {}}, {u"101"_qs});
    row("persian digits", {u"Name"_qs, false, u"1 کیلو"_qs, {}}, {u"115"_qs});
    row("case", {u"Name"_qs, false, u"nesCAFE"_qs, {}}, {u"201"_qs});
    row("reverse", {u"Name"_qs, true, u"چای"_qs, {}}, {u"115"_qs, u"201"_qs});
    row("reverse of nothing is everything", {u"Name"_qs, true, u" "_qs, {}},
        {u"101"_qs, u"102"_qs, u"115"_qs, u"201"_qs});
    row("a scanned barcode", {u""_qs, false, u"6260000000028"_qs, {}}, {u"102"_qs});
    row("signs are letters", {u"AbbName"_qs, false, u"%_["_qs, {}}, {u"201"_qs});
    row("first digits of a code", {u"Code"_qs, false, {}, u"1"_qs}, {u"101"_qs, u"102"_qs, u"115"_qs});
    row("digits inside a code do not count", {u"Code"_qs, false, {}, u"15"_qs}, {});
    row("price", {u"Cost1"_qs, false, {}, u"98"_qs}, {u"102"_qs});
    row("quantity without its zeros", {u"Mogodi"_qs, false, {}, u"12.5"_qs}, {u"101"_qs});
    row("amounts are no part of a general search", {u""_qs, false, u"450000"_qs, {}}, {});
    row("nowhere", {u""_qs, false, u"قهوه"_qs, {}}, {});
}

void TestGridSearch::search()
{
    QFETCH(host::SearchDescription, description);
    BlockModel model({u"Code"_qs, u"abbname"_qs, u"Name"_qs, u"Mogodi"_qs, u"Cost1"_qs}, SomeGoods(), 2);
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
        rows << QStringList{QString::number(code), code % 1000 == 0 ? u"نادر"_qs : u"کالا"_qs};
    BlockModel model({u"Code"_qs, u"Name"_qs}, rows, 100);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.Search({u"Name"_qs, false, u"نادر"_qs, {}});
    QCOMPARE(grid.RowCount(), 0);
    QTRY_COMPARE(grid.RowCount(), 3);
    QVERIFY(grid.Locate(u"2000"_qs));
    QCOMPARE(grid.CurrentSourceRow(), 1999);
    QVERIFY(!grid.Locate(u"1999"_qs)); // there, but not shown
    grid.Search({});
    QTRY_COMPARE(grid.RowCount(), 3000);
    QCOMPARE(grid.CurrentKey(), u"2000"_qs);
}

void TestGridSearch::search_frame_offers_the_right_edit()
{
    BlockModel model({u"Code"_qs, u"AbbName"_qs, u"Name"_qs, u"Mogodi"_qs, u"Cost1"_qs}, SomeGoods(), 10);
    QWidget window;
    auto *column = new QVBoxLayout(&window);
    auto *frame = new host::SearchFrame(&window);
    auto *grid = new host::Grid(&window);
    grid->setObjectName(u"Grid"_qs);
    column->addWidget(frame);
    column->addWidget(grid);
    grid->SetColumns(columns);
    grid->SetSource(&model);
    frame->SetGrid(grid);
    test::Show(window);

    frame->Focus();
    QCOMPARE(test::Focused(), u"Text_EDT"_qs);
    test::Type(u"چای"_qs);
    QCOMPARE(grid->ShownKeys(), (QStringList{u"101"_qs, u"102"_qs}));
    test::Find<QCheckBox>(frame, u"Reverse_CHK"_qs).click();
    QCOMPARE(grid->ShownKeys(), (QStringList{u"115"_qs, u"201"_qs}));
    test::Press(Qt::Key_Escape); // empties the search before it closes anything
    QCOMPARE(grid->RowCount(), 4);

    auto &chooser = test::Find<QComboBox>(frame, u"Column_CMB"_qs);
    test::Find<QCheckBox>(frame, u"Reverse_CHK"_qs).click();
    chooser.setCurrentIndex(chooser.findText(u"فی فروش"_qs));
    QCOMPARE(test::Focused(), u"Price_EDT"_qs);
    test::Type(u"۹۸"_qs);
    QCOMPARE(grid->ShownKeys(), QStringList{u"102"_qs});
    test::Press(Qt::Key_Down);
    QCOMPARE(test::Focused(), u"Grid"_qs);
    chooser.setCurrentIndex(chooser.findText(u"کد"_qs));
    QCOMPARE(grid->RowCount(), 4); // its own edit is empty
    frame->Clear();
    QCOMPARE(grid->RowCount(), 4);
}

void TestGridSearch::hundred_thousand_rows_answer_a_key()
{
    const QStringList words{u"چای"_qs, u"قند"_qs, u"برنج"_qs, u"روغن"_qs, u"شکر"_qs, u"ماکارونی"_qs, u"پنیر"_qs};
    QList<QStringList> rows;
    rows.reserve(100'000);
    for (int code = 1; code <= 100'000; ++code)
        rows << QStringList{
            QString::number(code), u"!62600%1!"_qs.arg(code, 8, 10, QChar(u'0')),
            u"%1 %2 بسته %3 گرمی درجه یک"_qs.arg(words.at(code % 7), words.at(code % 5)).arg(code % 900), u"15"_qs,
            QString::number(code * 10)};
    BlockModel model({u"Code"_qs, u"AbbName"_qs, u"Name"_qs, u"Mogodi"_qs, u"Cost1"_qs}, rows, 1000);
    host::Grid grid;
    grid.SetColumns(columns);
    test::Show(grid);
    grid.SetSource(&model);

    // Rows and their texts arrive in idle time; no turn of the event loop may be felt.
    qint64 longest = 0;
    QElapsedTimer turn;
    while (!grid.IsComplete()) {
        turn.start();
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        longest = std::max(longest, turn.elapsed());
    }
    QTest::qWait(200);
    qint64 slowest = 0;
    const QString phrase = u"روغن ۸۹۹ گرمی"_qs;
    for (int length = 1; length <= phrase.size(); ++length) {
        turn.start();
        grid.Search({u"Name"_qs, false, phrase.left(length), {}});
        slowest = std::max(slowest, turn.elapsed());
    }
    qInfo("longest idle turn %lld ms, slowest key %lld ms", longest, slowest);
    const QStringList found = grid.ShownKeys();
    QVERIFY(!found.isEmpty());
    for (const QString &key : found)
        QVERIFY(key.toInt() % 900 == 899 && (key.toInt() % 7 == 3 || key.toInt() % 5 == 3));
}

REGISTER_TEST(TestGridSearch)
#include "tst_grid_search.moc"
