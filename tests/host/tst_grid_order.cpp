#include "host/controls/text_order.h"
#include "tests/host/block_model.h"

#include <QCollator>
#include <QHeaderView>
#include <QRandomGenerator>

#include <numeric>

using namespace Qt::StringLiterals;

/// The order of the rows.
class TestGridOrder : public QObject
{
    Q_OBJECT

private slots:
    void caption_orders_the_rows_data();
    void caption_orders_the_rows();
    void order_outlives_search_and_requery();
    void menu_of_columns_by_keys();
    void order_is_the_collators_data();
    void order_is_the_collators();
};

void TestGridOrder::caption_orders_the_rows_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QStringList>("values"); // in the order wanted
    QTest::newRow("letters of Persian") << u"Name"_s << QStringList{u""_s,    u"آلو"_s, u"برنج"_s, u"پنیر"_s, u"جو"_s,
                                                                    u"چای"_s, u"کره"_s, u"گردو"_s, u"نان"_s,  u"یخ"_s};
    QTest::newRow("spellings of a letter") << u"Name"_s << QStringList{u"شیر الف"_s, u"شير ب"_s, u"شیر پ"_s};
    QTest::newRow("numbers in a text") << u"Name"_s << QStringList{u"قند ۲ کیلو"_s, u"قند 10 کیلو"_s};
    QTest::newRow("prices") << u"Cost1"_s << QStringList{u"95000"_s, u"450000.500000000"_s, u"1250000"_s};
    QTest::newRow("quantities") << u"Mogodi"_s << QStringList{u""_s, u"-12"_s, u"-3"_s, u"0"_s, u"0.25"_s};
    QTest::newRow("codes") << u"Code"_s << QStringList{u"9"_s, u"12"_s, u"100"_s};
}

/// First click ascending, second descending, third the list's own order; rows that have not arrived yet take part.
void TestGridOrder::caption_orders_the_rows()
{
    QFETCH(QString, field);
    QFETCH(QStringList, values);
    const QStringList fields{u"Code"_s, u"AbbName"_s, u"Name"_s, u"Mogodi"_s, u"Cost1"_s};
    const auto column = static_cast<int>(fields.indexOf(field));
    QList<QStringList> rows;
    QStringList listed; // the odd places first, so that nothing is in order
    for (const int odd : {1, 0})
        for (qsizetype place = odd; place < values.size(); place += 2) {
            rows << QStringList{QString::number(50 + place), {}, {}, {}, {}};
            rows.last()[column] = values.at(place);
            listed << values.at(place);
        }
    BlockModel model(fields, rows, 2);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetColumnVisible(u"AbbName"_s, true);
    grid.SetSource(&model);
    grid.SetSortable(true);
    grid.resize(700, 300);
    test::Show(grid);
    const auto shown = [&] {
        QStringList texts;
        for (int row = 0; row < grid.RowCount(); ++row)
            texts << grid.model()->index(row, column + 1).data(Qt::EditRole).toString();
        return texts;
    };
    const auto click = [&] {
        const QHeaderView *header = grid.horizontalHeader();
        const int at = header->sectionViewportPosition(column + 1) + header->sectionSize(column + 1) / 2;
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {at, header->height() / 2});
    };
    const QString key = grid.CurrentKey();
    click();
    QCOMPARE(shown(), values);
    QCOMPARE(grid.CurrentKey(), key);
    click();
    QStringList backwards = values;
    std::reverse(backwards.begin(), backwards.end());
    QCOMPARE(shown(), backwards);
    click();
    QCOMPARE(shown(), listed);
    QCOMPARE(grid.CurrentKey(), key);
}

void TestGridOrder::order_outlives_search_and_requery()
{
    BlockModel model({u"Code"_s, u"AbbName"_s, u"Name"_s, u"Mogodi"_s, u"Cost1"_s}, SomeGoods(), 1);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.SortBy(u"Cost1"_s);
    const QStringList byPrice{u"115"_s, u"102"_s, u"101"_s, u"201"_s};
    QCOMPARE(grid.ShownKeys(), byPrice);
    grid.Search({u"Name"_s, false, u"چای"_s, {}});
    QCOMPARE(grid.ShownKeys(), (QStringList{u"102"_s, u"101"_s}));
    QVERIFY(grid.Locate(u"101"_s));
    QCOMPARE(grid.currentIndex().row(), 1);
    grid.Search({u"Name"_s, true, u"چای"_s, {}});
    QCOMPARE(grid.ShownKeys(), (QStringList{u"115"_s, u"201"_s}));
    model.Requery();
    QTRY_COMPARE(grid.ShownKeys(), (QStringList{u"115"_s, u"201"_s}));
    grid.Search({});
    QVERIFY(grid.Locate(u"102"_s));
    QCOMPARE(grid.currentIndex().row(), 1);
    model.Requery();
    grid.FetchFor(0);
    QCOMPARE(grid.RowCount(), 0);     // no row is shown where it does not belong
    QTRY_COMPARE(grid.RowCount(), 4); // they come in idle time
    QCOMPARE(grid.CurrentKey(), u"115"_s);
    model.Requery();
    QVERIFY(grid.Locate(u"101"_s)); // at once, where it is asked for
    QCOMPARE(grid.currentIndex().row(), 2);
    QVERIFY(grid.Locate(u"102"_s));
    model.RemoveRow(0);
    QCOMPARE(grid.ShownKeys(), (QStringList{u"115"_s, u"102"_s, u"201"_s}));
    grid.SetColumnVisible(u"Cost1"_s, false); // what is not shown orders nothing
    QCOMPARE(grid.ShownKeys(), (QStringList{u"102"_s, u"115"_s, u"201"_s}));

    // A source that gives out leaves what came, in order, and is not asked over and over.
    grid.SetColumnVisible(u"Cost1"_s, true);
    model.Requery();
    model.refuse = true;
    QSignalSpy failed(&grid, &host::Grid::FetchFailed);
    grid.SortBy(u"Cost1"_s);
    QTest::qWait(30);
    QCOMPARE(failed.size(), 1);
    QCOMPARE(grid.RowCount(), 1);
}

/// Alt+Down opens what clicks on the captions do: which columns are shown, and their order, turned round the second
/// time.
void TestGridOrder::menu_of_columns_by_keys()
{
    BlockModel model({u"Code"_s, u"AbbName"_s, u"Name"_s, u"Mogodi"_s, u"Cost1"_s}, SomeGoods(), 2);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.SetSortable(true);
    test::Show(grid);
    grid.setFocus();
    constexpr auto Down = Qt::Key_Down;
    constexpr auto Up = Qt::Key_Up;
    constexpr auto Enter = Qt::Key_Return;
    const struct
    {
        QList<Qt::Key> keys;
        QString fields, rows;
    } steps[] = {
        {{Down, Down, Enter}, u"Code AbbName Name Mogodi Cost1"_s, u"101 102 115 201"_s},
        {{Down, Enter}, u"AbbName Name Mogodi Cost1"_s, u"101 102 115 201"_s},
        {{Up, Enter, Up, Enter}, u"AbbName Name Mogodi Cost1"_s, u"115 102 101 201"_s},
        {{Up, Enter, Up, Enter}, u"AbbName Name Mogodi Cost1"_s, u"201 101 102 115"_s},
        {{Down, Qt::Key_Escape}, u"AbbName Name Mogodi Cost1"_s, u"201 101 102 115"_s},
        {{Up, Enter, Enter}, u"AbbName Name Mogodi Cost1"_s, u"101 102 115 201"_s},
    };
    for (const auto &step : steps) {
        test::DriveMenu([] { test::Press(Qt::Key_Down, Qt::AltModifier); },
                        [&step] {
                            for (const Qt::Key key : step.keys)
                                test::Press(key);
                        });
        QCOMPARE(grid.VisibleFields().join(u' '), step.fields);
        QCOMPARE(grid.ShownKeys().join(u' '), step.rows);
    }
}

void TestGridOrder::order_is_the_collators_data()
{
    QTest::addColumn<QString>("letters");
    QTest::addColumn<int>("foreign"); // one text in so many has a character beyond Persian and ASCII
    const QString persian = u"ابپتثجچحخدذرزژسشصضطظعغفقکگلمنوهیء"_s;
    QTest::newRow("Persian") << persian << 0;
    QTest::newRow("other spellings") << persian + u"ئيىكةۀأإآؤ\u200cـًٔ"_s << 0;
    QTest::newRow("signs and Latin") << u"ابی abAZ ()-_.,/%+*&'\"«»؟،؛#"_s << 0;
    QTest::newRow("numbers") << u"ا 0019۰۱۹٠٩.-"_s << 0;
    QTest::newRow("a few foreign letters") << persian + u" 12ab"_s << 40;
    QTest::newRow("mostly foreign letters") << persian + u" 12ab"_s << 2;
}

/// Thousands of texts at random, long and short, many of them alike.
void TestGridOrder::order_is_the_collators()
{
    QFETCH(QString, letters);
    QFETCH(int, foreign);
    const QString foreigners = u"éßøЖя漢×®—²"_s;
    QRandomGenerator dice(1405);
    const auto any = [&dice](const QString &of) { return of.at(dice.bounded(static_cast<int>(of.size()))); };
    host::FoldedTexts texts;
    QList<QString> folded;
    for (int text = 0; text < 4000; ++text) {
        QString made = text % 3 == 0 ? u"روغن مایع "_s : QString();
        for (int length = dice.bounded(text % 5 == 0 ? 3 : 14); length > 0; --length)
            made += any(letters);
        if (foreign > 0 && text % foreign == 0)
            made.insert(dice.bounded(static_cast<int>(made.size()) + 1), any(foreigners));
        texts.Append(made);
        folded << texts.At(text).toString();
    }
    QCollator collator(QLocale(QLocale::Persian, QLocale::Iran));
    collator.setNumericMode(true);
    std::vector<int> expected(static_cast<size_t>(folded.size()));
    std::iota(expected.begin(), expected.end(), 0);
    std::vector<int> backwards = expected;
    std::stable_sort(expected.begin(), expected.end(),
                     [&](int left, int right) { return collator.compare(folded.at(left), folded.at(right)) < 0; });
    std::stable_sort(backwards.begin(), backwards.end(),
                     [&](int left, int right) { return collator.compare(folded.at(right), folded.at(left)) < 0; });
    QVERIFY(host::SortedTexts(texts, Qt::AscendingOrder) == expected);
    QVERIFY(host::SortedTexts(texts, Qt::DescendingOrder) == backwards);
}

REGISTER_TEST(TestGridOrder)
#include "tst_grid_order.moc"
