// Numbers, SQL text and Persian text: the pure half of the data access.

#include "host/data/database_error.h"
#include "host/data/persian_text.h"
#include "host/data/quantity.h"
#include "host/data/sql_text.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace host;

class TestText : public QObject
{
    Q_OBJECT

private slots:
    void typedNumbers_data();
    void typedNumbers();
    void shownNumbers_data();
    void shownNumbers();
    void databaseNumbersSurvive_data();
    void databaseNumbersSurvive();
    void codeLists_data();
    void codeLists();
    void parameters_data();
    void parameters();
    void quotedTextEndsWhereItShould_data();
    void quotedTextEndsWhereItShould();
    void quotedTextIsWhole();
    void logsHideValues_data();
    void logsHideValues();
    void folding_data();
    void folding();
};

void TestText::typedNumbers_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("number"); // empty: refused
    const auto row = [](const char *name, const QString &typed, const QString &number) {
        QTest::newRow(name) << typed << number;
    };
    row("persian digits", u"۱۲۳۴"_s, u"1234"_s);
    row("arabic digits", u"٤٥٦"_s, u"456"_s);
    row("persian marks", u"۱٬۲۳۴٫۵"_s, u"1234.5"_s);
    row("slash as decimal mark", u"۱۲/۵"_s, u"12.5"_s);
    row("grouped", u"1,234,567.50"_s, u"1234567.5"_s);
    row("blanks and direction marks", u"\u200F 12 \u200E"_s, u"12"_s);
    row("minus", u"-0.25"_s, u"-0.25"_s);
    row("typographic minus", u"\u2212۳"_s, u"-3"_s);
    row("zero has no sign", u"-0.00"_s, u"0"_s);
    row("leading zeros", u"0007"_s, u"7"_s);
    row("no whole part", u".5"_s, u"0.5"_s);
    row("23 digits", u"12345678901234.123456789"_s, u"12345678901234.123456789"_s);
    row("empty", QString(), QString());
    row("sign only", u"-"_s, QString());
    row("sign inside", u"1-2"_s, QString());
    row("two decimal marks", u"1.2.3"_s, QString());
    row("grouping after the decimal mark", u"1.2,3"_s, QString());
    row("letters", u"12a"_s, QString());
    row("exponent", u"1e5"_s, QString());
    row("statement", u"1;drop table GoodInf"_s, QString());
}

void TestText::typedNumbers()
{
    QFETCH(QString, typed);
    QFETCH(QString, number);
    const std::optional<QString> read = NormalizeDecimal(typed);
    QCOMPARE(read.has_value(), !number.isEmpty());
    QCOMPARE(read.value_or(QString()), number);
}

void TestText::shownNumbers_data()
{
    QTest::addColumn<long double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("shown");
    QTest::newRow("0.1 x 3") << 0.1L * 3 << 9 << u"0.3"_s;
    QTest::newRow("1 / 3") << 1.0L / 3 << 9 << u"0.333333333"_s;
    QTest::newRow("whole") << 12.0L << 9 << u"12"_s;
    QTest::newRow("rounds up") << 2.0L / 3 << 4 << u"0.6667"_s;
    QTest::newRow("vanishing negative") << -0.0000000001L << 9 << u"0"_s;
    QTest::newRow("no decimals wanted") << 99.5L << 0 << u"100"_s;
    QTest::newRow("beyond double") << 9007199254740993.0L << 9 << u"9007199254740993"_s;
    QTest::newRow("nineteen digits") << 1234567890.123456789L << 9 << u"1234567890.123456789"_s;
    QTest::newRow("noise of a large value") << 999999999999.1L << 9 << u"999999999999.1"_s;
    QTest::newRow("huge") << 1e22L << 9 << u"10000000000000000000000"_s;
}

void TestText::shownNumbers()
{
    QFETCH(long double, value);
    QFETCH(int, decimals);
    QFETCH(QString, shown);
    QCOMPARE(QuantityToText(value, decimals), shown);
}

void TestText::databaseNumbersSurvive_data()
{
    QTest::addColumn<QString>("database");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("grouped");
    QTest::newRow("scale 9") << u"12.500000000"_s << u"12.5"_s << u"12.5"_s;
    QTest::newRow("no leading zero") << u"-.250000000"_s << u"-0.25"_s << u"-0.25"_s;
    QTest::newRow("nothing") << u".000000000"_s << u"0"_s << u"0"_s;
    QTest::newRow("hundred") << u"100"_s << u"100"_s << u"100"_s;
    QTest::newRow("six figures negative") << u"-123456.00"_s << u"-123456"_s << u"-123,456"_s;
    QTest::newRow("seven figures") << u"1234567.5"_s << u"1234567.5"_s << u"1,234,567.5"_s;
}

void TestText::databaseNumbersSurvive()
{
    QFETCH(QString, database);
    QFETCH(QString, text);
    QFETCH(QString, grouped);
    QCOMPARE(TrimDecimal(database), text);
    QCOMPARE(QuantityToText(QuantityFromText(database)), text);
    QCOMPARE(GroupDigits(text), grouped);
}

void TestText::codeLists_data()
{
    QTest::addColumn<QString>("codes");
    QTest::addColumn<QString>("spliced"); // empty: refused
    QTest::newRow("one") << u"12"_s << u"12"_s;
    QTest::newRow("trailing comma of a selection") << u"4,9,"_s << u"4,9"_s;
    QTest::newRow("none") << QString() << u"0"_s;
    QTest::newRow("blank") << u"1, 2"_s << QString();
    QTest::newRow("negative") << u"-1"_s << QString();
    QTest::newRow("persian digits are no code") << u"۱۲"_s << QString();
    QTest::newRow("statement") << u"1) or (1=1"_s << QString();
    QTest::newRow("comment") << u"1--"_s << QString();
}

void TestText::codeLists()
{
    QFETCH(QString, codes);
    QFETCH(QString, spliced);
    if (!spliced.isEmpty()) {
        QCOMPARE(CodeList(codes), spliced);
        return;
    }
    try {
        CodeList(codes);
        QFAIL("the list was taken");
    } catch (const RefusedText &refused) {
        QVERIFY2(refused.Text().contains(codes), qPrintable(refused.Text()));
        QVERIFY2(!refused.Expected().contains(codes), "the part for the log quotes what was typed");
    }
    QVERIFY_THROWS_EXCEPTION(RefusedText, Codes(codes));
}

void TestText::parameters_data()
{
    QTest::addColumn<QString>("params");
    QTest::addColumn<QString>("without");
    QTest::newRow("first") << u"@GrpCode = 5,@UserCode = 1"_s << u"@UserCode = 1"_s;
    QTest::newRow("last, other case, blanks") << u"@UserCode = 1 , @grpcode=5 "_s << u"@UserCode = 1"_s;
    QTest::newRow("only") << u"@GrpCode = NULL"_s << QString();
    QTest::newRow("twice") << u"@GrpCode = 1,@A = 2,@GrpCode = 3"_s << u"@A = 2"_s;
    QTest::newRow("longer name stays") << u"@GrpCode2 = 1,@GrpCode = 2"_s << u"@GrpCode2 = 1"_s;
    QTest::newRow("name and commas inside a text")
        << u"@Name = N'a,@GrpCode = 7,''b',@GrpCode = 1"_s << u"@Name = N'a,@GrpCode = 7,''b'"_s;
    QTest::newRow("not there") << u"@A = 'x',@B = 2"_s << u"@A = 'x',@B = 2"_s;
}

void TestText::parameters()
{
    QFETCH(QString, params);
    QFETCH(QString, without);
    QCOMPARE(DeleteParam(params, u"@GrpCode"), without);
    QCOMPARE(DeleteParam(ADDParam(without, u"@GrpCode", u"9"), u"@GrpCode"), without);
}

void TestText::quotedTextEndsWhereItShould_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quote") << u"d'or"_s;
    QTest::newRow("ends in quotes") << u"12''"_s;
    QTest::newRow("only a quote") << u"'"_s;
    QTest::newRow("comma and parameter") << u"',@GrpCode = 1,'"_s;
    QTest::newRow("emoji and marks") << u"چای 🍵\u200Fسبز"_s;
}

void TestText::quotedTextEndsWhereItShould()
{
    QFETCH(QString, text);
    const QString params = u"@Name = "_s + NQuotedStr(text);
    QCOMPARE(SplitParams(ADDParam(params, u"@Last", u"1")), QStringList({params, u"@Last = 1"_s}));
}

/// Half of a character, which no encoding can write, never gets into a statement.
void TestText::quotedTextIsWhole()
{
    const QString emoji = QString::fromUcs4(U"\U0001F600");
    QCOMPARE(QuotedStr(u'a' + emoji.left(1) + u'b' + emoji.right(1) + emoji + emoji.left(1)), u"'ab"_s + emoji + u'\'');
}

void TestText::logsHideValues_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("masked");
    QTest::newRow("text and number") << u"select Code from GoodInf where Code <> 12 AND Name = 'علی ''x'"_s
                                     << u"select Code from GoodInf where Code <> ? AND Name = ?"_s;
    QTest::newRow("unicode literal") << u"VALUES (N'راز', 12.5, -3)"_s << u"VALUES (N?, ?, -?)"_s;
    QTest::newRow("names with digits stay") << u"Cost1 + t1.D2"_s << u"Cost1 + t1.D2"_s;
    QTest::newRow("text without an end") << u"Name = 'راز"_s << u"Name = ?"_s;
}

void TestText::logsHideValues()
{
    QFETCH(QString, statement);
    QFETCH(QString, masked);
    QCOMPARE(MaskLiterals(statement), masked);
    const DatabaseError error(QSqlError(QString(), u"duplicate value 'راز'"_s, QSqlError::StatementError, u"2627"_s),
                              statement);
    QVERIFY(error.KeyViolation());
    QVERIFY2(!error.LogText().contains(u"راز"), qPrintable(error.LogText()));
}

void TestText::folding_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");
    QTest::newRow("arabic yeh and kaf") << u"كيك"_s << u"کیک"_s;
    QTest::newRow("alef maksura") << u"مصطفى"_s << u"مصطفی"_s;
    QTest::newRow("half-space") << u"نیم\u200Cفاصله"_s << u"نیمفاصله"_s;
    QTest::newRow("direction marks") << u"\u202Bچای\u202C"_s << u"چای"_s;
    QTest::newRow("digits") << u"٤۵6"_s << u"۴5۶"_s;
    QTest::newRow("case") << u"NIVEA"_s << u"nivea"_s;
    QTest::newRow("vowels and tatweel") << u"مُـرَبّا"_s << u"مربا"_s;
    QTest::newRow("hamza and madda") << u"آبمیوة أناناس"_s << u"ابمیوه اناناس"_s;
    QTest::newRow("decomposed madda") << u"ا\u0653ب"_s << u"آب"_s;
    QTest::newRow("no-break space") << u"چای\u00A0سبز"_s << u"چای سبز"_s;
}

void TestText::folding()
{
    QFETCH(QString, typed);
    QFETCH(QString, stored);
    QCOMPARE(Fold(typed), Fold(stored));
    QCOMPARE(Fold(Fold(typed)), Fold(typed));
}

REGISTER_TEST(TestText)
#include "tst_text.moc"
