#include "division/sheet_layout.h"
#include "tests/support/test_main.h"

#include <QRandomGenerator>
#include <QtTest>

using division::PlanSheets;
using division::SheetPart;
using division::SheetPlan;
using division::SheetStock;

namespace {

/// What is wrong with a plan: pieces beyond their sheet or over each other, and area that came or went.
QString Faults(const SheetPlan &plan, const QList<SheetPart> &parts)
{
    double asked = 0;
    for (const SheetPart &part : parts)
        asked += static_cast<double>(part.Length * part.Width) * part.Count;
    for (const SheetPart &part : plan.Left)
        asked -= static_cast<double>(part.Length * part.Width) * part.Count;
    const QRectF sheet(0, 0, static_cast<double>(plan.Sheet.Length), static_cast<double>(plan.Sheet.Width));
    double placed = 0;
    for (const auto &pieces : plan.Sheets) {
        for (qsizetype i = 0; i < pieces.size(); ++i) {
            const QRectF &place = pieces[i].Place;
            placed += place.width() * place.height();
            if (!sheet.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(place))
                return u"beyond the sheet"_s;
            for (qsizetype j = 0; j < i; ++j)
                if (pieces[j].Place.adjusted(1e-6, 1e-6, -1e-6, -1e-6).intersects(place))
                    return u"over each other"_s;
        }
    }
    return qAbs(placed - asked) > 1e-6 ? u"area %1 of %2"_s.arg(placed).arg(asked) : QString();
}

} // namespace

class TestSheetLayout : public QObject
{
    Q_OBJECT

private slots:
    void places_data()
    {
        QTest::addColumn<SheetStock>("sheet");
        QTest::addColumn<QList<SheetPart>>("parts");
        QTest::addColumn<QString>("told"); // sheets cut, pieces turned, pieces left
        const SheetStock one{3, 2, 1};
        QTest::newRow("the whole sheet") << one << QList<SheetPart>{{3, 2, 1, 1}} << u"1 0 0"_s;
        QTest::newRow("turned") << one << QList<SheetPart>{{2, 3, 1, 1}} << u"1 1 0"_s;
        QTest::newRow("six squares") << one << QList<SheetPart>{{1, 1, 6, 1}} << u"1 0 0"_s;
        QTest::newRow("one too many") << one << QList<SheetPart>{{1, 1, 7, 1}} << u"1 0 1"_s;
        QTest::newRow("the area would do, the shape does not") << one << QList<SheetPart>{{6, 1, 1, 1}} << u"0 0 1"_s;
        QTest::newRow("the larger ones first") << one << QList<SheetPart>{{1, 1, 2, 1}, {2, 2, 1, 2}} << u"1 0 0"_s;
        QTest::newRow("sheet by sheet") << SheetStock{3, 2, 3} << QList<SheetPart>{{2, 2, 2, 1}} << u"2 0 0"_s;
        QTest::newRow("thirds") << one << QList<SheetPart>{{3, 0.666666666L, 3, 1}} << u"1 0 0"_s;
        QTest::newRow("rolls are not turned")
            << SheetStock{50, 0, 2} << QList<SheetPart>{{30, 0, 2, 1}, {20, 0, 2, 2}} << u"2 0 0"_s;
        QTest::newRow("a roll too short") << SheetStock{50, 0, 2} << QList<SheetPart>{{60, 0, 1, 1}} << u"0 0 1"_s;
        QTest::newRow("nothing taken") << SheetStock{3, 2, 0} << QList<SheetPart>{{1, 1, 1, 1}} << u"0 0 1"_s;
    }
    void places()
    {
        QFETCH(SheetStock, sheet);
        QFETCH(QList<SheetPart>, parts);
        const SheetPlan plan = PlanSheets(sheet, parts);
        if (!sheet.IsBar())
            QCOMPARE(Faults(plan, parts), QString());
        int turned = 0;
        for (const auto &pieces : plan.Sheets) {
            for (const auto &piece : pieces)
                turned += piece.Turned;
        }
        int left = 0;
        for (const SheetPart &part : plan.Left)
            left += part.Count;
        QTEST(u"%1 %2 %3"_s.arg(plan.Sheets.size()).arg(turned).arg(left), "told");
    }

    void anyPiecesKeepTheirPlace()
    {
        QRandomGenerator random(20260311);
        for (int round = 0; round < 60; ++round) {
            QList<SheetPart> parts;
            for (int row = 1; row <= 8; ++row)
                parts << SheetPart{random.bounded(1, 3000) / 1000.0L, random.bounded(1, 2000) / 1000.0L,
                                   random.bounded(1, 12), row};
            const SheetStock sheet{3, 2, 1 + round % 8};
            const SheetPlan plan = PlanSheets(sheet, parts);
            QCOMPARE(Faults(plan, parts), QString());
            QVERIFY(plan.Sheets.size() <= sheet.Count);
            QCOMPARE(PlanSheets(sheet, parts).Sheets.size(), plan.Sheets.size());
        }
    }

    void aThousandPiecesAreSoonPlaced()
    {
        QElapsedTimer timer;
        timer.start();
        const SheetPlan plan = PlanSheets({3, 2, 40}, {{0.3L, 0.4L, 500, 1}, {0.25L, 0.35L, 500, 2}});
        QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(plan.Left.isEmpty());
        QVERIFY(PlanSheets({3, 2, 40}, {{0.001L, 0.001L, division::MostPieces + 1, 1}}).TooMany);
    }
};

REGISTER_TEST(TestSheetLayout)
#include "tst_sheet_layout.moc"
