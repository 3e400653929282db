#include "host/controls/date_edit.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QHBoxLayout>
#include <QtTest>

class TestDateEdit : public QObject
{
    Q_OBJECT

private slots:
    void typing_data();
    void typing();
    void stepping();
};

void TestDateEdit::typing_data()
{
    QTest::addColumn<bool>("solar");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date");
    QTest::newRow("persian digits") << true << u"۱۴۰۳/۰۵/۰۹"_s << u"1403/05/09"_s << QDate(2024, 7, 30);
    QTest::newRow("short parts") << true << u"1403-5-9"_s << u"1403/05/09"_s << QDate(2024, 7, 30);
    QTest::newRow("no marks") << true << u"14030509"_s << u"1403/05/09"_s << QDate(2024, 7, 30);
    QTest::newRow("two digits of this century") << true << u"03.5.9"_s << u"1403/05/09"_s << QDate(2024, 7, 30);
    QTest::newRow("two digits of the last century") << true << u"99/1/1"_s << u"1399/01/01"_s << QDate(2020, 3, 20);
    QTest::newRow("leap day") << true << u"1403/12/30"_s << u"1403/12/30"_s << QDate(2025, 3, 20);
    QTest::newRow("no leap day") << true << u"1404/12/30"_s << u"1404/12/30"_s << QDate();
    QTest::newRow("31st of the second half") << true << u"1403/07/31"_s << u"1403/07/31"_s << QDate();
    QTest::newRow("month 13") << true << u"1403/13/01"_s << u"1403/13/01"_s << QDate();
    QTest::newRow("letters are refused") << true << u"1403/a05ب/09"_s << u"1403/05/09"_s << QDate(2024, 7, 30);
    QTest::newRow("gregorian") << false << u"2024/2/29"_s << u"2024/02/29"_s << QDate(2024, 2, 29);
    QTest::newRow("gregorian two digits") << false << u"24/7/30"_s << u"2024/07/30"_s << QDate(2024, 7, 30);
    QTest::newRow("gregorian no leap day") << false << u"2023/02/29"_s << u"2023/02/29"_s << QDate();
    QTest::newRow("empty") << true << u""_s << u""_s << QDate();
}

void TestDateEdit::typing()
{
    QFETCH(bool, solar);
    QFETCH(QString, typed);
    QFETCH(QDate, date);
    QWidget window;
    auto *row = new QHBoxLayout(&window);
    auto *edit = new host::DateEdit(&window);
    auto *other = new QLineEdit(&window);
    row->addWidget(edit);
    row->addWidget(other);
    edit->setSolar(solar);
    test::Show(window);
    edit->setFocus();
    test::Type(typed);
    other->setFocus();
    QTEST(edit->text(), "text");
    QCOMPARE(edit->Date(), date);
    QCOMPARE(edit->IsValid(), date.isValid() || typed.isEmpty());
    QCOMPARE(edit->Text(), date.isValid() ? edit->text() : QString());
}

void TestDateEdit::stepping()
{
    QWidget window;
    host::DateEdit edit(&window);
    edit.SetDate(QDate(2025, 3, 20)); // the last day of a leap year
    test::Show(window);
    edit.setFocus();
    QList<QDate> reported;
    connect(&edit, &host::DateEdit::DateChanged, this, [&](QDate date) { reported << date; });
    test::Press(Qt::Key_Up);
    QCOMPARE(edit.text(), u"1404/01/01"_s);
    test::Press(Qt::Key_Down);
    QCOMPARE(edit.text(), u"1403/12/30"_s);
    test::Press(Qt::Key_PageDown);
    QCOMPARE(edit.text(), u"1403/11/30"_s);
    QCOMPARE(reported.size(), 3);
}

REGISTER_TEST(TestDateEdit)
#include "tst_date_edit.moc"
