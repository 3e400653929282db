// Exact decimals: text, storage order and arithmetic.

#include "tests/support/test_main.h"
#include "tsql/values/decimal.h"
#include "tsql/values/error.h"

#include <QtTest>

using namespace Qt::StringLiterals;

using namespace tsql;

class TestDecimal : public QObject
{
    Q_OBJECT

private slots:
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
    return ok ? value : throw Error::Worded(0, u"not a number: "_s + text);
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
    row("padded", u"12.5"_s, 23, 9, u"12.500000000"_s);
    row("survives", u"12345678901234.123456789"_s, 23, 9, u"12345678901234.123456789"_s);
    row("below one", u"-.5"_s, 5, 3, u"-0.500"_s);
    row("half away from zero", u"2.345"_s, 5, 2, u"2.35"_s);
    row("negative half", u"-2.345"_s, 5, 2, u"-2.35"_s);
    row("below half", u"2.3449999"_s, 5, 2, u"2.34"_s);
    row("rounds up a digit", u"9.995"_s, 4, 2, u"10.00"_s);
    row("rounds out of the type", u"99.995"_s, 4, 2, u"8115"_s);
    row("no sign on nothing", u"-0.001"_s, 5, 2, u"0.00"_s);
    row("blanks around", u"  +7. "_s, 3, 0, u"7"_s);
    row("38 digits", QString(38, u'9'), 38, 0, QString(38, u'9'));
    row("39 digits", QString(39, u'9'), 38, 0, u"8115"_s);
    row("digits no type keeps", u"0."_s + QString(60, u'3'), 10, 4, u"0.3333"_s);
    row("empty", QString(), 5, 2, u"-"_s);
    row("two points", u"1.2.3"_s, 5, 2, u"-"_s);
    row("exponent", u"1e3"_s, 5, 2, u"-"_s);
    row("persian digits are for the screen", u"۱۲"_s, 5, 2, u"-"_s);
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
        given = ok ? value.rescaled(precision, scale).toText() : u"-"_s;
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
    row(u"0.1"_s, '+', u"0.2"_s, 3, 1, u"0.3"_s);
    row(u"0.3"_s, '-', u"0.3"_s, 3, 1, u"0.0"_s);
    row(u"12345678901234.123456789"_s, '+', u"87654321098765.876543211"_s, 24, 9, u"100000000000000.000000000"_s);
    row(u"1"_s, '-', u"0.000000001"_s, 23, 9, u"0.999999999"_s);
    row(QString(38, u'9'), '+', u"1"_s, 38, 0, u"8115"_s);
    row(u"-1.5"_s, '*', u"2.5"_s, 5, 2, u"-3.75"_s);
    row(u"12345678901234.123456789"_s, '*', u"12345678901234.123456789"_s, 38, 7,
        u"152415787532377393842473098.8107968"_s);
    row(u"0.00005"_s, '*', u"0.1"_s, 10, 5, u"0.00001"_s);
    row(QString(20, u'9'), '*', QString(20, u'9'), 38, 0, u"8115"_s);
    row(u"2"_s, '/', u"3"_s, 8, 6, u"0.666666"_s);
    row(u"-2"_s, '/', u"3"_s, 8, 6, u"-0.666666"_s);
    row(u"1"_s, '/', u"12345678901234567890123456789"_s, 38, 38, u"0.00000000000000000000000000008100000072"_s);
    row(u"99999999999999999999"_s, '/', u"0.00000000000000003"_s, 38, 0, u"3333333333333333333300000000000000000"_s);
    row(u"1"_s, '/', u"0.00"_s, 8, 6, u"8134"_s);
    row(u"7.5"_s, '%', u"-2"_s, 3, 1, u"1.5"_s);
    row(u"-7.5"_s, '%', u"2"_s, 3, 1, u"-1.5"_s);
    row(u"7.5"_s, '%', u"0"_s, 3, 1, u"8134"_s);
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
