#include "host/data/quantity.h"
#include "rules/barcode_text.h"
#include "rules/levy_state.h"
#include "rules/unit_arithmetic.h"
#include "tests/support/test_main.h"

#include <QRandomGenerator>
#include <QtTest>

using goods::Barcodes;
using goods::Quantity;
using host::QuantityFromText;
using host::QuantityToText;

/// The pure rules of the good editor.
class TestGoodRules : public QObject
{
    Q_OBJECT

private slots:
    void splitsTotals_data()
    {
        QTest::addColumn<QString>("total");
        QTest::addColumn<QString>("formula");
        QTest::addColumn<QString>("big");
        QTest::addColumn<QString>("small");
        QTest::newRow("binary noise below a whole number") << u"0.3"_s << u"0.1"_s << u"3"_s << u"0"_s;
        QTest::newRow("negative") << u"-30"_s << u"12"_s << u"-2"_s << u"-6"_s;
        QTest::newRow("less than one") << u"5"_s << u"12"_s << u"0"_s << u"5"_s;
        QTest::newRow("nine decimals") << u"1.000000001"_s << u"0.5"_s << u"2"_s << u"0.000000001"_s;
        QTest::newRow("fifteen digits") << u"99999999999999"_s << u"7"_s << u"14285714285714"_s << u"1"_s;
    }
    void splitsTotals()
    {
        QFETCH(QString, total);
        QFETCH(QString, formula);
        const goods::SplitQuantity parts = goods::SplitTotal(QuantityFromText(total), QuantityFromText(formula));
        QTEST(QuantityToText(parts.big), "big");
        QTEST(QuantityToText(parts.small), "small");
    }

    void splittingAndJoiningLosesNothing()
    {
        QRandomGenerator random(20260311);
        for (int i = 0; i < 20000; ++i) {
            // Up to nine digits before and four after the point, by any formula from 0.0001 up.
            const Quantity total = static_cast<Quantity>(random.bounded(qint64(10'000'000'000'000))) / 10000;
            const Quantity formula = static_cast<Quantity>(random.bounded(qint64(1), qint64(100'000'000))) / 10000;
            const goods::SplitQuantity parts = goods::SplitTotal(total, formula);
            QCOMPARE(QuantityToText(goods::JoinQuantity(parts, formula)), QuantityToText(total));
            QVERIFY(parts.small >= 0 && parts.small < formula);
            QCOMPARE(QuantityToText(parts.big, 0), QuantityToText(parts.big));
        }
    }

    void convertsQuantitiesAndPrices()
    {
        QCOMPARE(QuantityToText(goods::FirstQuantity(3, QuantityFromText(u"0.1"))), u"0.3"_s);
        QCOMPARE(QuantityToText(goods::BigUnitPrice(5, 0)), u"0"_s);
        QCOMPARE(QuantityToText(goods::BigUnitPrice(QuantityFromText(u"0.1"), 3)), u"0.3"_s);
        QVERIFY(!goods::SmallUnitPrice(5, 0));
        QCOMPARE(QuantityToText(*goods::SmallUnitPrice(10, 3)), u"3.333333333"_s);
    }

    void unpacksBarcodes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("barcodes");
        QTest::newRow("nothing") << u""_s << QStringList{u""_s, u""_s, u""_s, u""_s, u""_s, u""_s};
        QTest::newRow("no mark") << u"ABC"_s << QStringList{u"ABC"_s, u""_s, u""_s, u""_s, u""_s, u""_s};
        QTest::newRow("one") << u"!111!"_s << QStringList{u"111"_s, u""_s, u""_s, u""_s, u""_s, u""_s};
        QTest::newRow("two") << u"!111!222!"_s << QStringList{u"111"_s, u"222"_s, u""_s, u""_s, u""_s, u""_s};
        QTest::newRow("gaps") << u"!1!!3!!5!6!"_s << QStringList{u"1"_s, u""_s, u"3"_s, u""_s, u"5"_s, u"6"_s};
        QTest::newRow("the sixth holds marks")
            << u"!1!2!3!4!5!6!x!"_s << QStringList{u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6!x"_s};
        QTest::newRow("no mark at the end") << u"!1!2"_s << QStringList{u"1"_s, u"2"_s, u""_s, u""_s, u""_s, u""_s};
    }
    void unpacksBarcodes()
    {
        QFETCH(QString, text);
        const Barcodes barcodes = goods::UnpackBarcodes(text);
        QTEST(QStringList(barcodes.begin(), barcodes.end()), "barcodes");
    }

    void packingAndUnpackingKeepsAnySix()
    {
        QRandomGenerator random(7);
        const QString alphabet = u"019-*%_[]' آبپ😀\u200f"_s;
        for (int i = 0; i < 5000; ++i) {
            Barcodes barcodes;
            for (QString &barcode : barcodes)
                for (int length = random.bounded(8); length > 0; --length)
                    barcode += alphabet.at(random.bounded(static_cast<int>(alphabet.size())));
            barcodes.back() += random.bounded(2) ? u"!!"_s : QString();
            QCOMPARE(goods::UnpackBarcodes(goods::PackBarcodes(barcodes, false)), barcodes);
            const Barcodes first{barcodes[0]};
            QCOMPARE(goods::UnpackBarcodes(goods::PackBarcodes(barcodes, true)), first);
        }
    }

    void keepsLevies_data()
    {
        using goods::LevyState;
        QTest::addColumn<int>("state");
        QTest::addColumn<int>("percent");
        QTest::addColumn<bool>("exempt");
        QTest::addColumn<int>("storedPercent");
        QTest::addColumn<int>("loadedState");
        QTest::newRow("general") << int(LevyState::GlobalSetting) << 0 << false << 0 << int(LevyState::GlobalSetting);
        QTest::newRow("own") << int(LevyState::OwnPercent) << 9 << false << 9 << int(LevyState::OwnPercent);
        QTest::newRow("own of 0") << int(LevyState::OwnPercent) << 0 << true << 0 << int(LevyState::Exempt);
        QTest::newRow("exempt") << int(LevyState::Exempt) << 0 << true << 0 << int(LevyState::Exempt);
    }
    void keepsLevies()
    {
        QFETCH(int, state);
        QFETCH(int, percent);
        const goods::StoredLevy stored =
            goods::Stored({static_cast<goods::LevyState>(state), static_cast<Quantity>(percent)});
        QTEST(stored.exempt, "exempt");
        QTEST(static_cast<int>(stored.percent), "storedPercent");
        QTEST(static_cast<int>(goods::Loaded(stored).state), "loadedState");
    }
};

REGISTER_TEST(TestGoodRules)
#include "tst_rules.moc"
