#include "desk/messages/catalogue.h"
#include "desk/services/messages.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

class TestMessages : public QObject
{
    Q_OBJECT

private slots:
    void questionIsAnsweredByKeys_data();
    void questionIsAnsweredByKeys();
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
    test::Drive([&] { answered = messages.Ask(u"آیا ادامه می‌دهید؟"_s, defaultYes); },
                [&](QWidget *box) {
                    QCOMPARE(box->windowTitle(), u"پیغام"_s);
                    for (const Qt::Key key : keys)
                        test::Press(key);
                });
    QCOMPARE(answered, answer);
}

void TestMessages::boxSaysWhatTheCatalogueSays()
{
    desk::Messages messages;
    test::Drive(
        [&] { messages.NotSaveable(u"کليه کالاها"_s, u"کالايي"_s); },
        [&](QWidget *box) {
            QCOMPARE(
                qobject_cast<QMessageBox *>(box)->text(),
                u"کاربر گرامی، در «کليه کالاها» نمی‌توان کالايي ثبت کرد."_s);
            const auto buttons = box->findChildren<QPushButton *>();
            QCOMPARE(buttons.size(), 1);
            QCOMPARE(buttons.first()->text().remove(u'&'), u"تأیید"_s);
            test::Press(Qt::Key_Escape);
        });
}

void TestMessages::parametersStayAsTheyAre()
{
    // A good may be called "%2".
    QCOMPARE(desk::MessageText(desk::message::RepeatedField, {u"%2"_s, u"کالاها"_s}),
             u"کاربر گرامی، «%2» تکراری است؛ در فهرست کالاها مورد دیگری با همین مقدار ثبت شده است."_s);
    QVERIFY(desk::MessageText(99999, {u"الف"_s}).contains(u"99999"));
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
    messages.ShowSmartMessage(10325, {u"کالا"_s, u"6 رقم"_s}, 400, &edit);
    auto *balloon = window.findChild<QWidget *>(u"Balloon"_s);
    QVERIFY(balloon);
    QCOMPARE(balloon->findChild<QLabel *>()->text(),
             u"کاربر گرامی، کد کالا نمی‌تواند بیش از 6 رقم باشد."_s);
    const QRect target(edit.mapToGlobal(QPoint(0, 0)), edit.size());
    QVERIFY(balloon->geometry().intersects(target.adjusted(-2, -2, 2, 2)));
    QVERIFY(edit.hasFocus());
    QTRY_VERIFY(!window.findChild<QWidget *>(u"Balloon"_s));
}

REGISTER_TEST(TestMessages)
#include "tst_messages.moc"
