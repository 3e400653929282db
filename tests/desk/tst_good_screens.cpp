// The screens of goods over the desk's own services.

#include "host/data/statement.h"
#include "screens/good_editor/good_get.h"
#include "screens/goods_list/good_list.h"
#include "tests/desk/desk_fixture.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QAction>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

class TestGoodScreens : public QObject
{
    Q_OBJECT

private slots:
    void publishedNumbers();
    void roundTrips();
};

/// Six published examples, one in each edit: what is typed without its check digit is saved with it.
void TestGoodScreens::publishedNumbers()
{
    const QStringList published{u"9780143007234"_s, u"4006381333931"_s, u"5901234123457"_s,
                                u"96385074"_s,      u"73513537"_s,      u"9780201379624"_s};
    test::QuietDesk fixture;
    test::FakeMessages &messages = fixture.messages;
    const int code = fixture.database.Scalar(u"select min(Code) from GoodInf"_s).toInt();
    TGood_Get_FRM editor(fixture.desk.host);
    test::Drive([&] { editor.Open(code, host::TFormMode::Edit, {}); },
                [&](QWidget *screen) {
                    auto &pages = test::Find<QTabWidget>(screen, u"PageControl1"_s);
                    for (int number = 1; number <= published.size(); ++number) {
                        const QString name = u"BarCode%1_EDT"_s.arg(number);
                        auto &edit = test::Find<QLineEdit>(screen, name);
                        pages.setCurrentWidget(&test::Find(screen, number == 1 ? u"General_TPC"_s : u"Complete_TPC"_s));
                        test::Enter(screen, name, published.at(number - 1).chopped(1));
                        test::Find<QAction>(&edit, u"complete"_s).trigger();
                        QCoreApplication::processEvents();
                        QCOMPARE(edit.text(), published.at(number - 1));
                    }
                    // Other goods of the shop come in the same measure.
                    messages.Answer(true);
                    test::Press(Qt::Key_F3);
                    QCOMPARE(messages.TakeAll(), (QStringList{u"ContinueWithRepeatedField(شاخص کالا)"_s,
                                                              u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_s}));
                });
    QCOMPARE(fixture.database.Scalar(u"select AbbName from GoodInf where Code = %1"_s.arg(code)).toString(),
             u'!' + published.join(u'!') + u'!');
}

/// What users wait for over a network: how many statements a command sends, transactions aside, in the demo shop and in
/// one with long lists of everything that a screen shows.
void TestGoodScreens::roundTrips()
{
    const auto countIn = [](bool large, QList<qsizetype> &sent) {
        test::QuietDesk shop;
        if (large)
            shop.database.Exec(u"declare @i int = 0 begin tran while @i < 200 begin set @i = @i + 1 "
                               "insert Categories(Code, ParentCode, Name, Path) select 10000 + @i, case when @i > 30 "
                               "then 10000 + @i % 30 + 1 end, N'شاخه', ',' "
                               "insert Units(Code, Name) values(1000 + @i, N'واحد') "
                               "insert Stores(Code, Name) values(1000 + @i, N'انبار') "
                               "insert GoodGrpS(Code, Name) values(1000 + @i, N'گروه') "
                               "insert TagS(Code, Name, color_code) values(1000 + @i, N'برچسب', 1) end commit"_s);
        QStringList texts;
        host::WatchStatements([&texts](const QString &text) { texts << text; });
        const auto stop = qScopeGuard([] { host::WatchStatements({}); });
        const auto count = [&] { sent << std::exchange(texts, {}).size(); };
        const int good = shop.database.Scalar(u"select max(GoodCode) from GoodFirstAsset where tmp = 0"_s).toInt();
        TGood_Get_FRM editor(shop.desk.host);
        test::Drive([&] { editor.Open(good, host::TFormMode::Edit); },
                    [&](QWidget *screen) {
                        count();
                        test::Enter(screen, u"MinAva_EDT"_s, u"7"_s);
                        test::Press(Qt::Key_F3);
                    });
        count();
        QCOMPARE(shop.messages.TakeAll(), QStringList{u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_s});
        test::Drive([&] { editor.Open({}, host::TFormMode::New, u"11"_s); },
                    [&](QWidget *screen) {
                        count();
                        test::Enter(screen, u"Name_EDT"_s, u"کالای تازه"_s);
                        test::Enter(screen, u"Unit_Entity1"_s, u"1"_s);
                        test::Enter(screen, u"Store_Entity"_s, u"1"_s);
                        test::Enter(screen, u"AvaBgPrd_EDT"_s, u"3"_s);
                        test::Enter(screen, u"CostBgPrd_EDT"_s, u"50"_s);
                        test::Find<QLineEdit>(screen, u"SmsCode_EDT"_s).setText(u"987654"_s);
                        test::Focus(screen, u"Name_EDT"_s);
                        texts.clear();
                        editor.SetCloseAfterNew(true);
                        test::Press(Qt::Key_F3);
                    });
        count();
        QCOMPARE(shop.messages.TakeAll(), QStringList{u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_s});
        TGood_List_FRM list(shop.desk.host, host::TFormMode::DockedList);
        texts.clear();
        QVERIFY(list.ShowDocked());
        QTest::qWait(200);
        count();
        list.done(0);
    };
    QList<qsizetype> small, large;
    countIn(false, small);
    countIn(true, large);
    QCOMPARE(large, small);
    // Opening a good, saving it, opening a new one, saving it, opening the list.
    const QList<qsizetype> most{30, 15, 30, 15, 10};
    for (qsizetype i = 0; i < most.size(); ++i)
        QVERIFY2(small.at(i) <= most.at(i), qPrintable(u"%1: %2"_s.arg(i).arg(small.at(i))));
}

REGISTER_TEST(TestGoodScreens)
#include "tst_good_screens.moc"
