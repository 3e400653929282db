#include "host/controls/number_text.h"
#include "host/controls/numeric_edit.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QRegularExpression>
#include <QtTest>

namespace {

/// A number edit, and something to leave it for.
struct Form
{
    QWidget window;
    QHBoxLayout row{&window};
    host::NumericEdit edit;
    QLineEdit other;

    Form()
    {
        row.addWidget(&edit);
        row.addWidget(&other);
    }
};

} // namespace

class TestNumberInput : public QObject
{
    Q_OBJECT

private slots:
    void typing_data();
    void typing();
    void pasting_data();
    void pasting();
    void storedNumberWidensItsOwnRecord();
    void leaving_reports_a_change_once();
};

void TestNumberInput::typing_data()
{
    QTest::addColumn<int>("decimals");
    QTest::addColumn<bool>("negative");
    QTest::addColumn<int>("maxLength");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::newRow("ascii") << 9 << false << 15 << u"1250.5"_s << u"1250.5"_s;
    QTest::newRow("persian digits and point") << 9 << false << 15 << u"۱۲۵۰٫۷۵"_s << u"1250.75"_s;
    QTest::newRow("arabic digits") << 9 << false << 15 << u"٤٥٦"_s << u"456"_s;
    QTest::newRow("slash is a decimal mark") << 9 << false << 15 << u"2/5"_s << u"2.5"_s;
    QTest::newRow("grouping marks are passed over") << 9 << false << 15 << u"1,234٬567"_s << u"1234567"_s;
    QTest::newRow("letters are refused") << 9 << false << 15 << u"1a2بb3"_s << u"123"_s;
    QTest::newRow("one point only") << 9 << false << 15 << u"1.2.3"_s << u"1.23"_s;
    QTest::newRow("decimals end") << 2 << false << 15 << u"1.239"_s << u"1.23"_s;
    QTest::newRow("whole numbers take no point") << 0 << false << 15 << u"12.5"_s << u"125"_s;
    QTest::newRow("sign refused") << 9 << false << 15 << u"-5"_s << u"5"_s;
    QTest::newRow("sign taken") << 9 << true << 15 << u"-5"_s << u"-5"_s;
    QTest::newRow("sign only in front") << 9 << true << 15 << u"5-3"_s << u"53"_s;
    QTest::newRow("six digits of a code") << 0 << false << 6 << u"۱۲۳۴۵۶۷"_s << u"123456"_s;
    QTest::newRow("leading zeros go on leaving") << 0 << false << 6 << u"007"_s << u"7"_s;
    QTest::newRow("a bare point is nothing") << 9 << false << 6 << u"."_s << u""_s;
    QTest::newRow("a point at the end goes") << 9 << false << 6 << u"5."_s << u"5"_s;
    QTest::newRow("a quantity has fourteen digits before the point")
        << 9 << true << 30 << u"-12345678901234567.123456789"_s << u"-12345678901234.123456789"_s;
    QTest::newRow("a whole number has 64 bits")
        << 0 << false << 50 << u"92233720368547758089"_s << u"922337203685477580"_s;
    QTest::newRow("nineteen digits stay exact")
        << 0 << false << 50 << u"1234567890123456789"_s << u"1234567890123456789"_s;
}

void TestNumberInput::typing()
{
    QFETCH(int, decimals);
    QFETCH(bool, negative);
    QFETCH(int, maxLength);
    QFETCH(QString, typed);
    Form form;
    form.edit.setDecimals(decimals);
    form.edit.setNegative(negative);
    form.edit.setMaxLength(maxLength);
    test::Show(form.window);
    form.edit.setFocus();
    test::Type(typed);
    // The digits are the same with the focus and without.
    const QString digits = static_cast<QLineEdit &>(form.edit).text();
    QCOMPARE(host::PlainNumber(digits), form.edit.text());
    QVERIFY2(!digits.contains(QRegularExpression(u"[0-9.]"_s)), qPrintable(digits));
    form.other.setFocus();
    QTEST(form.edit.text(), "text");
    QCOMPARE(form.edit.IsEmpty(), form.edit.text().isEmpty());
    QCOMPARE(form.edit.Number(), form.edit.IsEmpty() ? host::Quantity(0) : *host::ParseQuantity(form.edit.text()));
}

void TestNumberInput::pasting_data()
{
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("text");
    QTest::newRow("marks not counted") << u" ۱٬۲۳۴٬۵۶۷ "_s << u"1234567"_s;
    QTest::newRow("the end of a line") << u"123\r\n"_s << u"123"_s;
    QTest::newRow("behind more blanks than an edit holds") << QString(40000, u' ') + u"12345"_s << u"12345"_s;
    QTest::newRow("no number") << u"شانزده"_s << u"77"_s;
    QTest::newRow("longer than fits") << u"1234567890"_s << u"77"_s;
}

void TestNumberInput::pasting()
{
    QFETCH(QString, pasted);
    QWidget window;
    host::NumericEdit edit(&window);
    edit.setMaxLength(9);
    edit.setText(u"77"_s);
    test::Show(window);
    QApplication::clipboard()->setText(pasted);
    // Over the selected text; by key and as the menu does.
    test::Press(Qt::Key_V, Qt::ControlModifier);
    QTEST(edit.text(), "text");
    edit.selectAll();
    edit.paste();
    QTEST(edit.text(), "text");
    // A sheet reads what is copied as a number.
    edit.selectAll();
    test::Press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), edit.text());
}

/// A stored number that is longer than may be typed is shown whole; the next record's edit is as wide as ever.
void TestNumberInput::storedNumberWidensItsOwnRecord()
{
    Form form;
    form.edit.setMaxLength(3);
    form.edit.SetStored(u"-99999999999999999999"_s);
    QCOMPARE(form.edit.text(), u"-99999999999999999999"_s);
    QCOMPARE(form.edit.Integer(), std::numeric_limits<qint64>::min());
    form.edit.SetNumber(0);
    test::Show(form.window);
    form.edit.setFocus();
    test::Type(u"1234"_s);
    QCOMPARE(form.edit.text(), u"123"_s);
    test::Press(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(form.edit.text() != u"123"_s);
}

void TestNumberInput::leaving_reports_a_change_once()
{
    Form form;
    test::Show(form.window);
    int changes = 0;
    connect(&form.edit, &host::NumericEdit::NumberChanged, this, [&] { ++changes; });
    form.edit.setFocus();
    test::Type(u"12"_s);
    form.other.setFocus();
    form.edit.setFocus();
    form.other.setFocus();
    QCOMPARE(changes, 1);
}

REGISTER_TEST(TestNumberInput)
#include "tst_number_input.moc"
