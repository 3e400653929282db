#include "host/controls/text_order.h"
#include "tests/host/block_model.h"

#include <QtCore/QCollator>
#include <QtCore/QRandomGenerator>
#include <QtWidgets/QHeaderView>

#include <numeric>

/// The order of the rows.
class TestGridOrder : public QObject
{
    Q_OBJECT

private slots:
    void caption_orders_the_rows_data();
    void caption_orders_the_rows();
    void order_outlives_search_and_requery();
    void order_is_the_collators_data();
    void order_is_the_collators();
};

void TestGridOrder::caption_orders_the_rows_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QStringList>("values"); // in the order wanted
    QTest::newRow("letters of Persian") << u"Name"_qs
                                        << QStringList{u""_qs,    u"آلو"_qs, u"برنج"_qs, u"پنیر"_qs, u"جو"_qs,
                                                       u"چای"_qs, u"کره"_qs, u"گردو"_qs, u"نان"_qs,  u"یخ"_qs};
    QTest::newRow("spellings of a letter") << u"Name"_qs << QStringList{u"شیر الف"_qs, u"شير ب"_qs, u"شیر پ"_qs};
    QTest::newRow("numbers in a text") << u"Name"_qs << QStringList{u"قند ۲ کیلو"_qs, u"قند 10 کیلو"_qs};
    QTest::newRow("prices") << u"Cost1"_qs << QStringList{u"95000"_qs, u"450000.500000000"_qs, u"1250000"_qs};
    QTest::newRow("quantities") << u"Mogodi"_qs << QStringList{u""_qs, u"-12"_qs, u"-3"_qs, u"0"_qs, u"0.25"_qs};
    QTest::newRow("codes") << u"Code"_qs << QStringList{u"9"_qs, u"12"_qs, u"100"_qs};
}

/// First click ascending, second descending, third the list's own order; rows that have not arrived yet take part.
void TestGridOrder::caption_orders_the_rows()
{
    QFETCH(QString, field);
    QFETCH(QStringList, values);
    const QStringList fields{u"Code"_qs, u"AbbName"_qs, u"Name"_qs, u"Mogodi"_qs, u"Cost1"_qs};
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
    grid.SetColumnVisible(u"AbbName"_qs, true);
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
    BlockModel model({u"Code"_qs, u"AbbName"_qs, u"Name"_qs, u"Mogodi"_qs, u"Cost1"_qs}, SomeGoods(), 1);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.SortBy(u"Cost1"_qs);
    const QStringList byPrice{u"115"_qs, u"102"_qs, u"101"_qs, u"201"_qs};
    QCOMPARE(grid.ShownKeys(), byPrice);
    grid.Search({u"Name"_qs, false, u"چای"_qs, {}});
    QCOMPARE(grid.ShownKeys(), (QStringList{u"102"_qs, u"101"_qs}));
    QVERIFY(grid.Locate(u"101"_qs));
    QCOMPARE(grid.currentIndex().row(), 1);
    grid.Search({u"Name"_qs, true, u"چای"_qs, {}});
    QCOMPARE(grid.ShownKeys(), (QStringList{u"115"_qs, u"201"_qs}));
    model.Requery();
    QTRY_COMPARE(grid.ShownKeys(), (QStringList{u"115"_qs, u"201"_qs}));
    grid.Search({});
    QVERIFY(grid.Locate(u"102"_qs));
    QCOMPARE(grid.currentIndex().row(), 1);
    model.Requery();
    grid.FetchFor(0);
    QCOMPARE(grid.RowCount(), 0);     // no row is shown where it does not belong
    QTRY_COMPARE(grid.RowCount(), 4); // they come in idle time
    QCOMPARE(grid.CurrentKey(), u"115"_qs);
    model.Requery();
    QVERIFY(grid.Locate(u"101"_qs)); // at once, where it is asked for
    QCOMPARE(grid.currentIndex().row(), 2);
    QVERIFY(grid.Locate(u"102"_qs));
    model.RemoveRow(0);
    QCOMPARE(grid.ShownKeys(), (QStringList{u"115"_qs, u"102"_qs, u"201"_qs}));
    grid.SetColumnVisible(u"Cost1"_qs, false); // what is not shown orders nothing
    QCOMPARE(grid.ShownKeys(), (QStringList{u"102"_qs, u"115"_qs, u"201"_qs}));

    // A source that gives out leaves what came, in order, and is not asked over and over.
    grid.SetColumnVisible(u"Cost1"_qs, true);
    model.Requery();
    model.refuse = true;
    QSignalSpy failed(&grid, &host::Grid::FetchFailed);
    grid.SortBy(u"Cost1"_qs);
    QTest::qWait(30);
    QCOMPARE(failed.size(), 1);
    QCOMPARE(grid.RowCount(), 1);
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
