#include "rules/division_limits.h"
#include "rules/unit_arithmetic.h"
#include "tests/support/test_main.h"

#include <QtTest>

using goods::DividedBy;
using goods::DividedPieces;
using goods::DividedStock;
using goods::IsDivided;
using goods::OverLimit;
using goods::Quantity;
using goods::UnitAmounts;

namespace {

/// "1 2.5" as numbers; what is missing is 0.
struct Numbers : QList<Quantity>
{
    Numbers(const char *text) // NOLINT: rows of tables read better without a name
    {
        for (const QString &each : QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts))
            *this << host::QuantityFromText(each);
        resize(6);
    }
    UnitAmounts Amounts() const { return {at(0), at(1)}; }
};

/// Five sheets of 3 by 2, ten rolls of 50, 12.5 of one unit, 12 in 2.5 of the other.
DividedStock Stock(DividedBy by)
{
    switch (by) {
    case DividedBy::Area:
        return {by, {0, 0, 3, 2, 5}, {30, 0}};
    case DividedBy::Packages:
        return {by, {50, 0, 0, 0, 10}, {500, 10}};
    case DividedBy::TwoAmounts:
        return {by, {}, {12, 2.5L}};
    default:
        return {by, {}, {12.5L, 0}};
    }
}

QString Text(std::initializer_list<Quantity> numbers)
{
    QStringList texts;
    for (const Quantity number : numbers)
        texts << host::QuantityToText(number);
    return texts.join(u' ');
}

using By = DividedBy;

} // namespace

class TestDivisionLimits : public QObject
{
    Q_OBJECT

private slots:
    /// Three entries of 1.234567 by 2.345678, each rounded by itself.
    void allThereIsWhateverWasRounded()
    {
        DividedStock stock{By::Area, {0, 0, 1.234567L, 2.345678L, 3}, {8.687689952L, 0}};
        QCOMPARE(Text({TotalToDivide(stock, {3, 0}).first}), u"8.687689952"_s);
        QCOMPARE(CountFaultOf(stock, {3, 0}, {}), goods::CountFault::None);
        stock.onHand.first = 8; // not a matter of rounding
        QCOMPARE(CountFaultOf(stock, {3, 0}, {}), goods::CountFault::MoreThanStock);
    }

    void missesFieldsInOrder()
    {
        const auto missing = [](By by, const DividedPieces &pieces, Quantity total) {
            const auto field = EmptyField(by, pieces, total);
            return field ? static_cast<int>(*field) : -1;
        };
        QCOMPARE(missing(By::Area, {0, 0, 0, 0, 0}, 0), int(goods::PartField::Length));
        QCOMPARE(missing(By::Area, {0, 0, 1, 0, 0}, 0), int(goods::PartField::Width));
        QCOMPARE(missing(By::Area, {0, 0, 1, 1, 0}, 0), int(goods::PartField::Count));
        QCOMPARE(missing(By::Area, {0, 0, 1, 1, 1}, 0), int(goods::PartField::Total));
        QCOMPARE(missing(By::Packages, {0, 0, 1, 1, 0}, 1), int(goods::PartField::Amount));
        QCOMPARE(missing(By::Packages, {1, 0, 0, 0, 0}, 0), int(goods::PartField::Count));
        QCOMPARE(missing(By::TwoAmounts, {1, 0, 0, 0, 1}, 1), -1);
    }

    void limits()
    {
        QVERIFY(!OverLimit({6, 0}, {4, 0}, {2, 0}));
        QVERIFY(!OverLimit({0.3L, 0}, {0.1L, 0}, {0.2L, 0})); // binary noise
        QVERIFY(OverLimit({6, 0}, {4, 0}, {2.000000001L, 0}));
        QVERIFY(!OverLimit({6, 0}, {6, 0}, {2, 0}, {2, 0})); // a changed part counts once
        QVERIFY(OverLimit({6, 0}, {6, 0}, {2.5L, 0}, {2, 0}));
        QVERIFY(OverLimit({6, 1}, {3, 0.5L}, {3, 0.6L}));
        QVERIFY(IsDivided({6, 1}, {6, 1}) && !IsDivided({6, 1}, {6, 0.5L}) && !IsDivided({6, 0}, {5, 0}));
    }

    void computes_data()
    {
        QTest::addColumn<QString>("told");
        QTest::addColumn<QString>("found");
        // What is typed, the parts so far; the total, and the fault as a number.
        const auto count = [](const char *name, By by, const Numbers &taken, const Numbers &parts, const char *told) {
            const UnitAmounts total = TotalToDivide(Stock(by), taken.Amounts());
            const auto fault = CountFaultOf(Stock(by), taken.Amounts(), parts.Amounts());
            QTest::newRow(name) << QString::fromLatin1(told)
                                << Text({total.first, total.second, Quantity(static_cast<int>(fault))});
        };
        count("sheets", By::Area, "2", "12", "12 0 0");
        count("all sheets", By::Area, "5", "", "30 0 0");
        count("more sheets than there are", By::Area, "6", "40", "36 0 1");
        count("no sheet", By::Area, "0", "6", "0 0 2");
        count("fewer sheets than are divided", By::Area, "1", "6.000000001", "6 0 3");
        count("rolls", By::Packages, "10", "500", "500 0 0");
        count("a part of a roll", By::Packages, "0.5", "25.1", "25 0 3");
        count("an amount", By::Amount, "12.5", "12.5", "12.5 0 0");
        count("a second unit that does not count", By::Amount, "1 99", "1", "1 0 0");
        count("too much of the second unit", By::TwoAmounts, "12 2.6", "", "12 2.6 1");
        count("second unit below the parts", By::TwoAmounts, "12 2", "12 2.1", "12 2 3");
        // What is left, typed sides; amount, second, length, width, count.
        const auto rest = [](const char *name, By by, const Numbers &left, const Numbers &sides, const char *told) {
            const auto part = RestAsPart(Stock(by), left.Amounts(), {0, 0, sides[0], sides[1], 1});
            QTest::newRow(name) << QString::fromLatin1(told)
                                << (part ? Text({part->amount, part->second, part->length, part->width, part->count})
                                         : u"none"_s);
        };
        rest("an amount", By::Amount, "2.5", "", "2.5 0 0 0 1");
        rest("both amounts", By::TwoAmounts, "2.5 0.1", "", "2.5 0.1 0 0 1");
        rest("a roll", By::Packages, "7.25", "", "7.25 0 0 0 1");
        rest("nothing left", By::Amount, "0", "", "none");
        rest("too much is divided of the second unit", By::TwoAmounts, "1 -1", "", "none");
        rest("along the sheet", By::Area, "1.5", "", "0 0 3 0.5 1");
        rest("of the typed length", By::Area, "1.5", "2", "0 0 2 0.75 1");
        rest("of the typed width", By::Area, "1.5", "0 1.5", "0 0 1 1.5 1");
        rest("as many as are typed", By::Area, "1.5", "0.5 0.25", "0 0 0.5 0.25 12");
        rest("typed pieces that do not fill it", By::Area, "1.5", "1 1", "0 0 1 1.5 1");
        rest("whole sheets", By::Area, "12", "", "0 0 3 2 2");
        rest("no third to nine decimals, across then", By::Area, "1", "", "0 0 0.5 2 1");
        rest("nor across", By::Area, "0.000000001", "", "none");
        rest("a typed length that no sheet has", By::Area, "1.5", "5", "0 0 3 0.5 1");
        rest("more than one fits", By::Area, "4", "1", "0 0 1 2 2");
    }
    void computes()
    {
        QFETCH(QString, told);
        QTEST(told, "found");
    }
};

REGISTER_TEST(TestDivisionLimits)
#include "tst_division_limits.moc"
