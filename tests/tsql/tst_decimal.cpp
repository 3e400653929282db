// Exact decimals: text, storage order and arithmetic.

#include "tests/support/test_main.h"
#include "tsql/decimal.h"
#include "tsql/error.h"

#include <QtTest>

using namespace tsql;

class TestDecimal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
    void arithmetic_data();
    void arithmetic();
    void storageKeepsValueAndOrder();
};

namespace {

Decimal number(const QString &text)
{
    bool ok = false;
    const Decimal value = Decimal::fromText(text, ok);
    return ok ? value : throw Error(0, u"not a number: "_qs + text);
}

} // namespace

void TestDecimal::texts_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<int>("precision");
    QTest::addColumn<int>("scale");
    QTest::addColumn<QString>("shown"); // "-": not a number; an error number: refused
    const auto row = [](const char *name, const QString &written, int precision, int scale, const QString &shown) {
        QTest::newRow(name) << written << precision << scale << shown;
    };
    row("padded", u"12.5"_qs, 23, 9, u"12.500000000"_qs);
    row("survives", u"12345678901234.123456789"_qs, 23, 9, u"12345678901234.123456789"_qs);
    row("below one", u"-.5"_qs, 5, 3, u"-0.500"_qs);
    row("half away from zero", u"2.345"_qs, 5, 2, u"2.35"_qs);
    row("negative half", u"-2.345"_qs, 5, 2, u"-2.35"_qs);
    row("below half", u"2.3449999"_qs, 5, 2, u"2.34"_qs);
    row("rounds up a digit", u"9.995"_qs, 4, 2, u"10.00"_qs);
    row("rounds out of the type", u"99.995"_qs, 4, 2, u"8115"_qs);
    row("no sign on nothing", u"-0.001"_qs, 5, 2, u"0.00"_qs);
    row("blanks around", u"  +7. "_qs, 3, 0, u"7"_qs);
    row("38 digits", QString(38, u'9'), 38, 0, QString(38, u'9'));
    row("39 digits", QString(39, u'9'), 38, 0, u"8115"_qs);
    row("digits no type keeps", u"0."_qs + QString(60, u'3'), 10, 4, u"0.3333"_qs);
    row("empty", QString(), 5, 2, u"-"_qs);
    row("two points", u"1.2.3"_qs, 5, 2, u"-"_qs);
    row("exponent", u"1e3"_qs, 5, 2, u"-"_qs);
    row("persian digits are for the screen", u"۱۲"_qs, 5, 2, u"-"_qs);
}

void TestDecimal::texts()
{
    QFETCH(QString, written);
    QFETCH(int, precision);
    QFETCH(int, scale);
    QString given;
    try {
        bool ok = false;
        const Decimal value = Decimal::fromText(written, ok);
        given = ok ? value.rescaled(precision, scale).toText() : u"-"_qs;
    } catch (const Error &error) {
        given = QString::number(error.number());
    }
    QTEST(given, "shown");
}

void TestDecimal::arithmetic_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QChar>("operation");
    QTest::addColumn<QString>("b");
    QTest::addColumn<int>("precision");
    QTest::addColumn<int>("scale");
    QTest::addColumn<QString>("result"); // an error number: refused
    const auto row = [](const QString &a, char operation, const QString &b, int precision, int scale,
                        const QString &result) {
        QTest::addRow("%s %c %s", qPrintable(a), operation, qPrintable(b))
            << a << QChar(QLatin1Char(operation)) << b << precision << scale << result;
    };
    row(u"0.1"_qs, '+', u"0.2"_qs, 3, 1, u"0.3"_qs);
    row(u"0.3"_qs, '-', u"0.3"_qs, 3, 1, u"0.0"_qs);
    row(u"12345678901234.123456789"_qs, '+', u"87654321098765.876543211"_qs, 24, 9, u"100000000000000.000000000"_qs);
    row(u"1"_qs, '-', u"0.000000001"_qs, 23, 9, u"0.999999999"_qs);
    row(QString(38, u'9'), '+', u"1"_qs, 38, 0, u"8115"_qs);
    row(u"-1.5"_qs, '*', u"2.5"_qs, 5, 2, u"-3.75"_qs);
    row(u"12345678901234.123456789"_qs, '*', u"12345678901234.123456789"_qs, 38, 7,
        u"152415787532377393842473098.8107968"_qs);
    row(u"0.00005"_qs, '*', u"0.1"_qs, 10, 5, u"0.00001"_qs);
    row(QString(20, u'9'), '*', QString(20, u'9'), 38, 0, u"8115"_qs);
    row(u"2"_qs, '/', u"3"_qs, 8, 6, u"0.666666"_qs);
    row(u"-2"_qs, '/', u"3"_qs, 8, 6, u"-0.666666"_qs);
    row(u"1"_qs, '/', u"12345678901234567890123456789"_qs, 38, 38, u"0.00000000000000000000000000008100000072"_qs);
    row(u"99999999999999999999"_qs, '/', u"0.00000000000000003"_qs, 38, 0, u"3333333333333333333300000000000000000"_qs);
    row(u"1"_qs, '/', u"0.00"_qs, 8, 6, u"8134"_qs);
    row(u"7.5"_qs, '%', u"-2"_qs, 3, 1, u"1.5"_qs);
    row(u"-7.5"_qs, '%', u"2"_qs, 3, 1, u"-1.5"_qs);
    row(u"7.5"_qs, '%', u"0"_qs, 3, 1, u"8134"_qs);
}

void TestDecimal::arithmetic()
{
    QFETCH(QString, a);
    QFETCH(QChar, operation);
    QFETCH(QString, b);
    QFETCH(int, precision);
    QFETCH(int, scale);
    using Operation = Decimal (*)(const Decimal &, const Decimal &, int, int);
    static const QHash<QChar, Operation> operations = {
        {u'+', tsql::add},    {u'-', tsql::subtract},  {u'*', tsql::multiply},
        {u'/', tsql::divide}, {u'%', tsql::remainder},
    };
    const Operation work = operations.value(operation);
    QString given;
    try {
        given = work(number(a), number(b), precision, scale).toText();
    } catch (const Error &error) {
        given = QString::number(error.number());
    }
    QTEST(given, "result");
}

/** Indexes, MIN and MAX compare the stored bytes: they must sort as the numbers do. */
void TestDecimal::storageKeepsValueAndOrder()
{
    QList<Decimal> values;
    for (int digits = 0; digits < Decimal::MaxPrecision; ++digits) {
        for (const int offset : {-1, 0, 1}) {
            values.append({Decimal::power10(digits) + offset, 9});
            values.append({-Decimal::power10(digits) - offset, 9});
        }
        values.append({Decimal::Int(1) << (3 * digits), 9});
        values.append({-(Decimal::Int(1) << (3 * digits)), 9});
    }
    std::sort(values.begin(), values.end(), [](const Decimal &a, const Decimal &b) { return a.units < b.units; });
    for (qsizetype i = 0; i < values.size(); ++i) {
        const QByteArray stored = values[i].toBlob();
        QVERIFY(Decimal::fromBlob(stored.constData(), int(stored.size()), 9).units == values[i].units);
        if (i > 0) {
            const int order = values[i - 1].toBlob().compare(stored);
            QVERIFY(values[i - 1].units == values[i].units ? order == 0 : order < 0);
        }
    }
}

REGISTER_TEST(TestDecimal)

#include "tst_decimal.moc"
