#include "screens/labels/label_rows.h"
#include "tests/support/test_main.h"

#include <QtTest>

using namespace labels;

/// What is counted, placed and kept, without a screen.
class TestLabelRules : public QObject
{
    Q_OBJECT

private slots:
    void WhichBarcode_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("printed");
        QTest::addColumn<int>("symbology");
        const auto row = [](const QString &stored, const QString &printed, int symbology) {
            QTest::newRow(qPrintable(stored)) << stored << printed << symbology;
        };
        const int ean8 = int(Symbology::Ean8);
        const int ean13 = int(Symbology::Ean13);
        const int code128 = int(Symbology::Code128);
        row(u"!6260998877662!"_s, u"6260998877662"_s, ean13);
        row(u"!6260998877663!"_s, u"6260998877663"_s, code128); // wrong check digit
        row(u"!۶۲۶۰۹۹۸۸۷۷۶۶۲!"_s, u"6260998877662"_s, ean13);
        row(u"!12345670!"_s, u"12345670"_s, ean8);
        row(u"!12345671!"_s, u"12345671"_s, code128);
        row(u"!0000000000000!"_s, u"0000000000000"_s, ean13);
        row(u"!123456789012!"_s, u"123456789012"_s, code128);
        row(u"!شیر!!AB-12!"_s, u"AB-12"_s, code128); // a short name has no bars, the next barcode has
        row(u"007"_s, u"007"_s, code128);
        row(u"!شیر!"_s, QString(), -1);
        row(u"!!!"_s, QString(), -1);
        row(QString(), QString(), -1);
    }

    void WhichBarcode()
    {
        QFETCH(QString, stored);
        QFETCH(int, symbology);
        const QString barcode = PrintedBarcode(stored);
        QTEST(barcode, "printed");
        const auto found = SymbologyOf(barcode);
        QCOMPARE(found ? int(*found) : -1, symbology);
        QCOMPARE(Encode(barcode).has_value(), symbology >= 0);
    }

    void LabelsForStock()
    {
        for (const auto &[stock, count] :
             {std::pair(0.0L, 0), {-3.5L, 0}, {1.0L, 1}, {2.000000001L, 3}, {0.25L, 1}, {1e15L, 1'000'000}})
            QCOMPARE(CountOfStock(stock), count);
    }

    void PlacesOnSheets_data()
    {
        QTest::addColumn<QList<int>>("sheet"); // rows, columns, top and side margin, start
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("page");
        QTest::addColumn<QRectF>("at");
        QTest::newRow("the first, right above") << QList{9, 3, 0, 0, 1} << 0 << 0 << QRectF(140, 0, 70, 33);
        QTest::newRow("leftwards") << QList{9, 3, 0, 0, 1} << 2 << 0 << QRectF(0, 0, 70, 33);
        QTest::newRow("the next row") << QList{9, 3, 0, 0, 1} << 3 << 0 << QRectF(140, 33, 70, 33);
        QTest::newRow("the last") << QList{9, 3, 0, 0, 1} << 26 << 0 << QRectF(0, 264, 70, 33);
        QTest::newRow("the next page") << QList{9, 3, 0, 0, 1} << 27 << 1 << QRectF(140, 0, 70, 33);
        QTest::newRow("a used sheet goes on") << QList{9, 3, 0, 0, 27} << 0 << 0 << QRectF(0, 264, 70, 33);
        QTest::newRow("and then a full one") << QList{9, 3, 0, 0, 27} << 1 << 1 << QRectF(140, 0, 70, 33);
        QTest::newRow("margins") << QList{2, 2, 10, 5, 4} << 0 << 0 << QRectF(5, 148.5, 100, 138.5);
        QTest::newRow("one on the sheet") << QList{1, 1, 0, 0, 1} << 2 << 2 << QRectF(0, 0, 210, 297);
    }

    void PlacesOnSheets()
    {
        QFETCH(QList<int>, sheet);
        QFETCH(int, number);
        Choices choices{Layout::Sheet};
        choices.rows = sheet[0];
        choices.columns = sheet[1];
        choices.topMargin = sheet[2];
        choices.sideMargin = sheet[3];
        const Spot spot = SpotOf(PaperOf(choices), sheet[4], number);
        QTEST(spot.page, "page");
        QTEST(spot.at, "at");
        QCOMPARE(PagesFor(PaperOf(choices), sheet[4], number + 1), spot.page + 1);
        QCOMPARE(PagesFor(PaperOf(choices), sheet[4], 0), 0);
    }

    /// On every sheet that may be printed the areas lie inside the label and beneath each other.
    void AreasStayApart()
    {
        for (const Layout layout : {Layout::Shelf, Layout::Sticker, Layout::Sheet})
            for (int rows = 1; rows <= MostRows; ++rows)
                for (int columns = 1; columns <= MostColumns; ++columns) {
                    Choices choices{layout};
                    choices.rows = rows;
                    choices.columns = columns;
                    const Paper paper = PaperOf(choices);
                    const Areas areas = AreasOf(layout, paper.label);
                    const QRectF label(QPointF(), paper.label);
                    QVERIFY(IsUsable(paper));
                    QVERIFY(areas.barcode.height() > 3 && !areas.name.intersects(areas.price));
                    for (const QRectF &area : {areas.name, areas.barcode, areas.price})
                        QVERIFY(label.contains(area) && (area == areas.barcode || !area.intersects(areas.barcode)));
                }
    }

    void NamesFit_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("short") << u"شیر"_s << QStringList{u"شیر"_s};
        QTest::newRow("marks and line ends go")
            << u"\u202Eشیر\u200F\n\"کم\" چرب\u2067"_s << QStringList{u"شیر \"کم\" چرب"_s};
        QTest::newRow("two lines") << u"دستمال کاغذی صد برگ"_s << QStringList{u"دستمال کاغذی"_s, u"صد برگ"_s};
        QTest::newRow("elided")
            << u"دستمال کاغذی دویست برگی بی‌بو و بسیار نرم خانواده"_s
            << QStringList{u"دستمال کاغذی"_s, u"دویست برگی…"_s};
        QTest::newRow("one word") << QString(160, u'م') << QStringList{u"م"_s, u"م…"_s};
        QTest::newRow("empty") << QString() << QStringList();
    }

    void NamesFit()
    {
        QFETCH(QString, name);
        QFETCH(QStringList, shown);
        QFont font = QGuiApplication::font();
        font.setPixelSize(20);
        const double width = QFontMetricsF(font).horizontalAdvance(u"دستمال کاغذی د"_s);
        const QStringList lines = NameLines(name, font, width, 2);
        QCOMPARE(lines.size(), shown.size());
        for (qsizetype i = 0; i < lines.size(); ++i) {
            QVERIFY2(QFontMetricsF(font).horizontalAdvance(lines[i]) <= width, qPrintable(lines[i]));
            QVERIFY2(lines[i].startsWith(QString(shown[i]).remove(u'…')), qPrintable(lines[i]));
            QCOMPARE(lines[i].endsWith(u'…'), shown[i].endsWith(u'…'));
        }
    }

    void ChoicesAreKept()
    {
        const Choices chosen{Layout::Sheet, 4, CountBy::Stock, 12, 300, 13, 5, 10.7, 4.7, 1};
        QCOMPARE(ChoicesOf(Kept(chosen)), chosen);
        Choices usedSheet = chosen;
        usedSheet.start = 9;
        QCOMPARE(ChoicesOf(Kept(usedSheet)), chosen);
        for (const QByteArray &rubbish : {QByteArray(), QByteArray("x"), QByteArray(60, '\xff')})
            QCOMPARE(ChoicesOf(rubbish), Choices());
    }
};

REGISTER_TEST(TestLabelRules)
#include "tst_label_rules.moc"
