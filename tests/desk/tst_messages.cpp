#include "desk/messages/catalogue.h"
#include "desk/services/messages.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QtTest/QtTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

class TestMessages : public QObject
{
    Q_OBJECT

private slots:
    void questionIsAnsweredByKeys_data();
    void questionIsAnsweredByKeys();
    void boxSaysWhatTheCatalogueSays_data();
    void boxSaysWhatTheCatalogueSays();
    void parametersStayAsTheyAre();
    void notificationStandsBesideItsControl();
};

void TestMessages::questionIsAnsweredByKeys_data()
{
    QTest::addColumn<bool>("defaultYes");
    QTest::addColumn<QList<Qt::Key>>("keys");
    QTest::addColumn<bool>("answer");
    QTest::newRow("Enter takes a default Yes") << true << QList{Qt::Key_Return} << true;
    QTest::newRow("Enter takes a default No") << false << QList{Qt::Key_Return} << false;
    QTest::newRow("Esc is No") << true << QList{Qt::Key_Escape} << false;
    QTest::newRow("Tab goes to the other button") << false << QList{Qt::Key_Tab, Qt::Key_Space} << true;
}

void TestMessages::questionIsAnsweredByKeys()
{
    QFETCH(bool, defaultYes);
    QFETCH(QList<Qt::Key>, keys);
    QFETCH(bool, answer);
    desk::Messages messages;
    bool answered = !answer;
    test::Drive([&] { answered = messages.Ask(u"آیا ادامه می‌دهید؟"_qs, defaultYes); },
                [&](QWidget *box) {
                    QCOMPARE(box->windowTitle(), u"پیغام"_qs);
                    for (const Qt::Key key : keys)
                        test::Press(key);
                });
    QCOMPARE(answered, answer);
}

void TestMessages::boxSaysWhatTheCatalogueSays_data()
{
    using Say = std::function<void(desk::Messages &)>;
    QTest::addColumn<Say>("say");
    QTest::addColumn<QString>("text");
    QTest::newRow("required") << Say([](desk::Messages &m) { m.MsgRequiredField(u"نام کالا"_qs); })
                              << u"کاربر گرامی، لطفاً «نام کالا» را وارد کنید."_qs;
    QTest::newRow("percent") << Say([](desk::Messages &m) { m.MsgPercent(u"تخفیف نوع 4"_qs); })
                             << u"کاربر گرامی، مقدار «تخفیف نوع 4» باید بین ۰ و ۱۰۰ باشد."_qs;
    QTest::newRow("two parameters") << Say([](desk::Messages &m) {
        m.NotSaveable(u"کليه کالاها"_qs, u"کالايي"_qs);
    }) << u"کاربر گرامی، در «کليه کالاها» نمی‌توان کالايي ثبت کرد."_qs;
}

void TestMessages::boxSaysWhatTheCatalogueSays()
{
    QFETCH(std::function<void(desk::Messages &)>, say);
    QFETCH(QString, text);
    desk::Messages messages;
    test::Drive([&] { say(messages); },
                [&](QWidget *box) {
                    QCOMPARE(qobject_cast<QMessageBox *>(box)->text(), text);
                    const auto buttons = box->findChildren<QPushButton *>();
                    QCOMPARE(buttons.size(), 1);
                    QCOMPARE(buttons.first()->text().remove(u'&'), u"تأیید"_qs);
                    test::Press(Qt::Key_Escape);
                });
}

void TestMessages::parametersStayAsTheyAre()
{
    // A good may be called "%2".
    QCOMPARE(desk::MessageText(desk::message::RepeatedField, {u"%2"_qs, u"کالاها"_qs}),
             u"کاربر گرامی، «%2» تکراری است؛ در فهرست کالاها مورد دیگری با همین مقدار ثبت شده است."_qs);
    QVERIFY(desk::MessageText(99999, {u"الف"_qs}).contains(u"99999"));
}

void TestMessages::notificationStandsBesideItsControl()
{
    QWidget window;
    window.resize(400, 300);
    QLineEdit edit(&window);
    edit.setGeometry(200, 100, 120, 30);
    test::Show(window);
    edit.setFocus();
    desk::Messages messages;
    messages.ShowSmartMessage(10325, {u"کالا"_qs, u"6 رقم"_qs}, 400, &edit);
    auto *balloon = window.findChild<QWidget *>(u"Balloon"_qs);
    QVERIFY(balloon);
    QCOMPARE(balloon->findChild<QLabel *>()->text(),
             u"کاربر گرامی، کد کالا نمی‌تواند بیش از 6 رقم باشد."_qs);
    const QRect target(edit.mapToGlobal(QPoint(0, 0)), edit.size());
    QVERIFY(balloon->geometry().intersects(target.adjusted(-2, -2, 2, 2)));
    QVERIFY(edit.hasFocus());
    QTRY_VERIFY(!window.findChild<QWidget *>(u"Balloon"_qs));
}

Q_DECLARE_METATYPE(std::function<void(desk::Messages &)>)

REGISTER_TEST(TestMessages)
#include "tst_messages.moc"
