// Exact decimals as they are stored.

#include "tests/support/test_main.h"
#include "tsql/values/decimal.h"

#include <QtTest>

using namespace tsql;

class TestDecimal : public QObject
{
    Q_OBJECT

private slots:
    void storageKeepsValueAndOrder();
};

/** Indexes, MIN and MAX compare the stored bytes: they must sort as the numbers do. */
void TestDecimal::storageKeepsValueAndOrder()
{
    QList<Decimal> values;
    for (int digits = 0; digits < Decimal::MaxPrecision; ++digits) {
        for (const int offset : {-1, 0, 1}) {
            values.append({Decimal::Power10(digits) + offset, 9});
            values.append({-Decimal::Power10(digits) - offset, 9});
        }
        values.append({Decimal::Int(1) << (3 * digits), 9});
        values.append({-(Decimal::Int(1) << (3 * digits)), 9});
    }
    std::sort(values.begin(), values.end(), [](const Decimal &a, const Decimal &b) { return a.units < b.units; });
    for (qsizetype i = 0; i < values.size(); ++i) {
        const QByteArray stored = values[i].ToBlob();
        QVERIFY(Decimal::FromBlob(stored.constData(), int(stored.size()), 9).units == values[i].units);
        if (i > 0) {
            const int order = values[i - 1].ToBlob().compare(stored);
            QVERIFY(values[i - 1].units == values[i].units ? order == 0 : order < 0);
        }
    }
}

REGISTER_TEST(TestDecimal)
#include "tst_decimal.moc"
