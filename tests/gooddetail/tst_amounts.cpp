// Amounts by unit type: inputs, columns and arithmetic.

#include "gooddetail/amount_entry.h"
#include "host/data/quantity.h"
#include "tests/support/test_main.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace good_detail;

class TestAmounts : public QObject
{
    Q_OBJECT

private slots:
    void typedAndStored_data();
    void typedAndStored();
    void columns();
    void addsUp();
    void unitTypes();
};

void TestAmounts::typedAndStored_data()
{
    QTest::addColumn<int>("unitType");
    QTest::addColumn<QList<int>>("typed");
    QTest::addColumn<int>("changed");
    QTest::addColumn<QString>("shown");  // the inputs after the changed one was left
    QTest::addColumn<QString>("stored"); // Amount1, Amount2, TotalAmount, Length, Width, Amount3
    QTest::newRow("one unit") << 1 << QList<int>{7} << 0 << u"7"_s << u"7 0 7 0 0 0"_s;
    QTest::newRow("two units, second by formula") << 2 << QList<int>{30, 0} << 0 << u"30 2.5"_s << u"30 2.5 30 0 0 0"_s;
    QTest::newRow("two units, second typed") << 2 << QList<int>{30, 3} << 1 << u"30 3"_s << u"30 3 30 0 0 0"_s;
    QTest::newRow("packed") << 3 << QList<int>{12, 3, 0} << 1 << u"12 3 36"_s << u"36 3 36 0 0 12"_s;
    QTest::newRow("packed, total") << 3 << QList<int>{12, 0, 30} << 2 << u"12 2.5 30"_s << u"30 2.5 30 0 0 12"_s;
    QTest::newRow("big and small") << 4 << QList<int>{2, 6, 0} << 1 << u"2 6 30"_s << u"30 0 2.5 0 0 0"_s;
    QTest::newRow("all in small") << 4 << QList<int>{0, 0, 30} << 2 << u"2 6 30"_s << u"30 0 2.5 0 0 0"_s;
    QTest::newRow("area") << 5 << QList<int>{3, 2, 4, 0} << 2 << u"3 2 4 24"_s << u"24 0 24 3 2 4"_s;
    QTest::newRow("area, pieces from it") << 5 << QList<int>{3, 2, 0, 24} << 3 << u"3 2 4 24"_s << u"24 0 24 3 2 4"_s;
}

void TestAmounts::typedAndStored()
{
    QFETCH(int, unitType);
    QFETCH(QList<int>, typed);
    QFETCH(int, changed);
    TypedAmounts amounts{};
    for (int i = 0; i < typed.size(); ++i)
        amounts[static_cast<size_t>(i)] = typed[i];
    const UnitRatio ratio{12, false};
    const auto text = [](std::initializer_list<host::Quantity> numbers, qsizetype count) {
        QStringList texts;
        for (const host::Quantity number : numbers)
            texts << host::QuantityToText(number);
        return texts.first(count).join(u' ');
    };
    const TypedAmounts shown = Recomputed(unitType, amounts, changed, ratio);
    const auto typedText = [&](const TypedAmounts &t) { return text({t[0], t[1], t[2], t[3]}, typed.size()); };
    QTEST(typedText(shown), "shown");
    const host::TAmounts a = AmountsOf(unitType, shown, ratio);
    QTEST(text({a.Amount1, a.Amount2, a.TotalAmount, a.Length, a.Width, a.Amount3}, 6), "stored");
    QCOMPARE(typedText(TypedOf(unitType, a, ratio)), typedText(shown));
}

void TestAmounts::columns()
{
    const QStringList expected{u"Amount1 مقدار (عدد)"_s, u"Amount1 مقدار (عدد), Amount2 مقدار 2 (کارتن)"_s,
                               u"Amount3 هر کارتن (عدد), Amount2 تعداد (کارتن), TotalAmount مقدار کل (عدد)"_s,
                               u"TotalAmount مقدار کل (کارتن), Amount1 مقدار جزء (عدد)"_s,
                               u"Length طول, Width عرض, Amount3 تعداد, TotalAmount مقدار (عدد)"_s};
    const QStringList captions{u"&مقدار :"_s, u"&مقدار :, م&قدار2 :"_s, u"&هر کارتن :, &تعداد :, مقدار &کل :"_s,
                               u"مقدار &کل :, مقدار &جزء :, &مقدار :"_s, u"&طول :, &عرض :, &تعداد :, &مقدار :"_s};
    for (int unitType = 1; unitType <= 5; ++unitType) {
        QStringList titles;
        for (const AmountColumn &column : AmountColumnsOf(unitType, u"عدد"_s, u"کارتن"_s))
            titles << column.Field + u' ' + column.Title;
        QCOMPARE(titles.join(u", "), expected[unitType - 1]);
        QStringList inputs;
        for (const AmountInput &input : AmountInputsOf(unitType, u"کارتن"_s))
            inputs << input.Caption;
        QCOMPARE(inputs.join(u", "), captions[unitType - 1]);
    }
    QCOMPARE(PlainCaption(u"&هر A&&B :"_s), u"هر A&B"_s);
}

void TestAmounts::addsUp()
{
    AmountTotals area(Area);
    area.Add({6, 0, 6, 3, 2, 1});
    area.Add({12, 0, 12, 3, 4, 1});
    QCOMPARE(area.Sum(), (host::TAmounts{18, 0, 18, 3, 0, 2}));
    AmountTotals packed(Packed);
    packed.Add({24, 2, 24, 0, 0, 12});
    packed.Add({12, 1, 12, 0, 0, 12});
    QCOMPARE(packed.Sum(), (host::TAmounts{36, 3, 36, 0, 0, 12}));
    packed.Add({10, 1, 10, 0, 0, 10});
    QCOMPARE(packed.Sum(), (host::TAmounts{46, 4, 46, 0, 0, 0}));
    QCOMPARE(packed.Rows(), 3);
}

void TestAmounts::unitTypes()
{
    const std::pair<UnitTypeFacts, int> rows[] = {
        {{true, true, false, true, true}, Area},       {{false, true, false, false, false}, OneUnit},
        {{false, false, false, true, true}, OneUnit},  {{false, true, false, true, true}, TotalAndPart},
        {{false, true, false, true, false}, TwoUnits}, {{false, true, true, true, true}, TwoUnits},
        {{false, true, true, true, false}, Packed},
    };
    for (const auto &[facts, unitType] : rows)
        QCOMPARE(int(UnitTypeOf(facts)), unitType);
}

REGISTER_TEST(TestAmounts)
#include "tst_amounts.moc"
