#include "host/controls/search_frame.h"
#include "tests/screens/goods_list/list_fixture.h"

#include <QPushButton>

/// The list opened to choose from.
class TestChoosing : public QObject
{
    Q_OBJECT

private slots:
    void choosing_data();
    void choosing();
    void selectionTextIsSearchedFor();
    void scannedBarcode_data();
    void scannedBarcode();
    void severalAreScanned();
};

void TestChoosing::choosing_data()
{
    QTest::addColumn<bool>("several");
    QTest::addColumn<QString>("locate");
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("codes");
    QTest::newRow("the current good") << false << u""_s << Keys{Qt::Key_Down, Qt::Key_Return} << 1 << 110002
                                      << u"110002"_s;
    QTest::newRow("the good to stand on") << false << u"130002"_s << Keys{Qt::Key_Return} << 1 << 130002 << u"130002"_s;
    QTest::newRow("no whole number stands nowhere")
        << false << u"13x"_s << Keys{Qt::Key_Return} << 1 << 110001 << u"110001"_s;
    QTest::newRow("one good: no marks") << false << u""_s << Keys{Qt::Key_Insert, Qt::Key_Down, Qt::Key_Return} << 1
                                        << 110002 << u"110002"_s;
    QTest::newRow("in the order of marking")
        << true << u""_s << Keys{Qt::Key_Down, Qt::Key_Down,   Qt::Key_Space,  Qt::Key_Up,
                                 Qt::Key_Up,   Qt::Key_Insert, Qt::Key_Insert, Qt::Key_Return}
        << 1 << 110003 << u"110003,110001,110002"_s;
    QTest::newRow("a mark taken off") << true << u""_s
                                      << Keys{Qt::Key_Space, Qt::Key_Space, Qt::Key_Down, Qt::Key_Enter} << 1 << 110002
                                      << u"110002"_s;
    QTest::newRow("given up") << true << u""_s << Keys{Qt::Key_Space, Qt::Key_Escape} << 0 << 0 << u""_s;
}

void TestChoosing::choosing()
{
    QFETCH(bool, several);
    QFETCH(QString, locate);
    QFETCH(Keys, keys);
    Screen screen;
    screen.list.SetFormMode(TFormMode::Selection);
    screen.list.SetMultiSelect(several);
    screen.list.SetLocateCode(locate);
    int result = -1;
    test::Drive([&] { result = screen.list.ShowModally(); },
                [&](QWidget *list) {
                    QVERIFY(test::Find(list, u"Select_BTN"_s).isVisible());
                    screen.Press(keys);
                });
    QTEST(result, "result");
    QTEST(screen.list.ChosenCode(), "code");
    QTEST(screen.list.ChosenCodes(), "codes");
    QCOMPARE(
        screen.list.ChosenName(),
        screen.database.Scalar(u"select Name from GoodInf where Code=%1"_s.arg(screen.list.ChosenCode())).toString());
}

/// What the caller's user typed is searched for, unless it led to a good already.
void TestChoosing::selectionTextIsSearchedFor()
{
    Screen screen;
    screen.list.SetFormMode(TFormMode::Selection);
    screen.list.SetParameterText(u"لاهيجان ۵۰۰"_s);
    screen.list.SetLocateCode(u"999999"_s);
    test::Drive([&] { screen.list.ShowModally(); }, [](QWidget *) { test::Press(Qt::Key_Return); });
    QCOMPARE(screen.list.ChosenCode(), 130003);
    screen.list.SetLocateCode(u"110002"_s);
    test::Drive([&] { screen.list.ShowModally(); }, [](QWidget *) { test::Press(Qt::Key_Return); });
    QCOMPARE(screen.list.ChosenCode(), 110002);
}

void TestChoosing::scannedBarcode_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("scanned");
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<int>("code");
    const Keys enter{Qt::Key_Return};
    QTest::newRow("any column") << u""_s << u"6261655013027"_s << enter << 130002;
    QTest::newRow("Persian digits") << u""_s << u"۶۲۶۱۶۵۵۰۱۳۰۲۷"_s << enter << 130002;
    QTest::newRow("while another column is searched") << u"Name"_s << u"6261655013027"_s << enter << 130002;
    QTest::newRow("while prices are searched") << u"Cost1"_s << u"6261655013027"_s << enter << 130002;
    QTest::newRow("a scanner that ends with Tab") << u""_s << u"6261655013027"_s << Keys{Qt::Key_Tab} << 130002;
    QTest::newRow("a code among the codes")
        << u"Code"_s << u"150001"_s << enter << 150001; // and a short name elsewhere
    QTest::newRow("no pattern") << u""_s << u"%"_s << enter << 0;
    QTest::newRow("withheld") << u""_s << u"6261655013027"_s << enter << 0;
}

/// The good of a barcode is taken at once, even from outside the group and the stock tab that are shown.
void TestChoosing::scannedBarcode()
{
    QFETCH(QString, field);
    QFETCH(QString, scanned);
    QFETCH(Keys, keys);
    Screen screen;
    screen.database.Exec(u"update GoodInf set AbbName=N'!150001!' where Code=110002"_s);
    const bool withheld = QLatin1String(QTest::currentDataTag()) == "withheld"_L1;
    if (withheld) {
        screen.host.settings.user = {2, {}, 0};
        screen.database.Exec(u"insert into UserDeniedGroups(UserCode,GrpCode) values(2,13)"_s);
    }
    screen.list.SetFormMode(TFormMode::Selection);
    test::Drive([&] { screen.list.ShowModally(); },
                [&](QWidget *list) {
                    test::Press(Qt::Key_F11, Qt::ControlModifier);
                    test::Type(u"لبنیات"_s);
                    test::Press(Qt::Key_Return);
                    test::Find<host::SearchFrame>(list, u"TGeneral_Search_Frame1"_s).Focus(field);
                    test::Type(scanned);
                    screen.Press(keys);
                    if (withheld) { // nothing else is shown for it, least of all chosen
                        QVERIFY(screen.host.messages.Take().contains(u"در لیست شما نیست"_s));
                        QVERIFY(screen.grid.IsEmpty());
                    }
                    if (screen.list.IsShowing())
                        screen.Press({Qt::Key_Escape, Qt::Key_Escape});
                });
    QTEST(screen.list.ChosenCode(), "code");
}

/// Each scan marks its good once; Enter without one takes all that are marked.
void TestChoosing::severalAreScanned()
{
    Screen screen;
    screen.list.SetFormMode(TFormMode::Selection);
    screen.list.SetMultiSelect(true);
    test::Drive([&] { screen.list.ShowModally(); },
                [&](QWidget *) {
                    test::Press(Qt::Key_Space);
                    for (const QString &barcode : {u"6261655013027"_s, u"6261100011011"_s, u"6261655013027"_s}) {
                        test::Type(barcode);
                        test::Press(Qt::Key_Return);
                    }
                    test::Press(Qt::Key_Return);
                });
    QCOMPARE(screen.list.ChosenCodes(), u"110001,130002"_s);
}

REGISTER_TEST(TestChoosing)
#include "tst_choosing.moc"
