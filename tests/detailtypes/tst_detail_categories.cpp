// The categories of detail types and their members, worked by keys.

#include "host/controls/numeric_edit.h"
#include "tests/detailtypes/list_fixture.h"
#include "tests/support/test_main.h"

#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

using namespace fixture;

class TestDetailCategories : public QObject
{
    Q_OBJECT

private slots:
    void choosesACategory_data();
    void choosesACategory();
    void switchesTheDefault();
    void gathersMembers();
    void membersNeedTheRight();
    void categoriesAreKept();
    void categoryEditorRefuses_data();
    void categoryEditorRefuses();
    void categoryEditorKeepsWhatIsEntered();
};

void TestDetailCategories::choosesACategory_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<Choice>("choice");
    QTest::addColumn<QString>("codes");
    QTest::addColumn<QString>("message");
    const QString sum = Say(
        u"کاربر گرامی تعداد موارد انتخاب شده قبلی 1 مورد و تعداد موارد لیست انتخاب شده فعلی 5 مورد می باشد که جمعا از 5 مورد بیشتر می شوند و حداکثر تعداد موارد انتخابی 5 مورد می تواند باشد"_s);
    QTest::newRow("in the members' order") << 0 << Choice{} << u"3,1"_s << QString();
    QTest::newRow("five") << 2 << Choice{} << u"1,3,6,7,4"_s << QString();
    QTest::newRow("five to one") << 2 << Choice{1, u"8"_s} << QString() << sum;
    QTest::newRow("its serial to a barcode") << 0 << Choice{1, u"2"_s} << QString() << TwoForGood;
    QTest::newRow("always worded for a good") << 1 << Choice{1, u"5"_s, true} << QString() << DatesForGood;
    QTest::newRow("without members") << 3 << Choice{} << QString() << QString();
}

void TestDetailCategories::choosesACategory()
{
    QFETCH(int, row);
    QFETCH(Choice, choice);
    QFETCH(QString, codes);
    QFETCH(QString, message);
    choice.Categories = true;
    Screen screen(TFormMode::Selection);
    screen.list.SetChoice(choice);
    const int result = screen.Open([&] {
        QVERIFY(screen.Find<QTabWidget>(u"DetailTypes_PGC"_s).tabBar()->isVisible());
        screen.GoToCategory(row);
        test::Press(Qt::Key_Return);
    });
    QCOMPARE(result, message.isEmpty() ? 1 : 0);
    QCOMPARE(screen.list.SelectedCodes(), codes);
    QCOMPARE(screen.fakes.messages.Take(), message);
}

void TestDetailCategories::switchesTheDefault()
{
    Screen screen;
    screen.database.Exec(u"update DetailTypes_SelectedLists set DefaultSelectedList = 1 where Code = 3"_s);
    auto &button = screen.Find<QPushButton>(u"Default_BTN"_s);
    screen.Open([&] {
        screen.GoToCategory(1);
        QCOMPARE(button.text(), u"پیش فر&ض"_s);
        screen.Click(u"Default_BTN"_s);
        QCOMPARE(screen.Defaults(), QStringList{u"2"_s});
        auto &grid = screen.Find<host::Grid>(u"SelectedList_List_DBTableView1"_s);
        QCOMPARE(grid.CurrentKey(), u"2"_s);
        QCOMPARE(grid.VisibleTexts(1).value(2), u"پيش فرض"_s);
        QCOMPARE(button.text(), u"غیر پیش فر&ض"_s);
        screen.Click(u"Default_BTN"_s);
        QCOMPARE(screen.Defaults(), QStringList());
        QCOMPARE(button.text(), u"پیش فر&ض"_s);
    });
}

void TestDetailCategories::gathersMembers()
{
    Screen screen;
    screen.Open([&] {
        screen.GoToCategory();
        test::Drive([&] { screen.Click(u"NewDetail_BTN"_s); },
                    [&](QWidget *) {
                        // A barcode does not go with the serial that the category has.
                        screen.Mark({2, 8});
                        test::Press(Qt::Key_Return);
                        QCOMPARE(screen.fakes.messages.Take(), TwoForList);
                        // Meanwhile another desk adds three: with one more there would be six.
                        screen.database.Exec(u"insert DetailTypes_SelectedList_Detail(SL_Code, Code, Radif) values "
                                             "(1, 6, 3), (1, 7, 4), (1, 9, 5)"_s);
                        screen.Mark({2}); // no barcode any more
                        test::Press(Qt::Key_Return);
                    });
        QVERIFY(screen.fakes.messages.Take().contains(u"تعداد موارد انتخاب شده قبلی 5 مورد"_s));
        QCOMPARE(screen.Stored(u"1"_s).size(), 5);
        screen.database.Exec(u"delete DetailTypes_SelectedList_Detail where SL_Code = 1 and Radif > 2"_s);
        screen.Regain(u"SelectedList_List_DBTableView1"_s);
        test::Press(Qt::Key_Down);
        test::Press(Qt::Key_Up);
        test::Drive([&] { screen.Click(u"NewDetail_BTN"_s); },
                    [&](QWidget *second) {
                        screen.Mark({8, 3}); // no barcode any more; the colour is a member already
                        QVERIFY(!test::Find<QTabWidget>(second, u"DetailTypes_PGC"_s).tabBar()->isVisible());
                        test::Press(Qt::Key_Return);
                    });
        QCOMPARE(screen.entities.wanted.PreviousCodes, u"3,1"_s);
        QCOMPARE(screen.Stored(u"1"_s), (QStringList{u"3|1"_s, u"1|2"_s, u"8|3"_s}));
        screen.Regain(u"DetailList_GRD"_s);
        QCOMPARE(screen.Members().ShownKeys(), (QStringList{u"3"_s, u"1"_s, u"8"_s}));

        // Marked rows go together, the others keep their places; without marks the current one goes.
        screen.fakes.messages.Answer(true);
        screen.Mark({1, 3});
        screen.Click(u"DeleteDetail_BTN"_s);
        QCOMPARE(screen.Stored(u"1"_s), QStringList{u"1|2"_s});
        screen.fakes.messages.Answer(false);
        screen.Click(u"DeleteDetail_BTN"_s);
        screen.fakes.messages.Answer(true);
        screen.Click(u"DeleteDetail_BTN"_s);
        QVERIFY(screen.Stored(u"1"_s).isEmpty());
        QVERIFY(!screen.Find(u"DeleteDetail_BTN"_s).isEnabled());
        QCOMPARE(screen.fakes.messages.TakeAll(), QStringList(3, u"MsgDeleteRow()"_s));

        test::Focus(&screen.list, u"SelectedList_List_DBTableView1"_s);
        test::Press(Qt::Key_Down);
        test::Press(Qt::Key_Down);
        screen.Click(u"NewDetail_BTN"_s);
        QCOMPARE(screen.fakes.messages.Take(),
                 Say(u"کاربر گرامی لیست های انتخابی  حداکثر 5 عضو می توانند داشته باشند"_s));
        screen.fakes.messages.Answer(true);
        screen.Click(u"DeleteAllDetail_BTN"_s);
        QCOMPARE(screen.fakes.messages.Take(), u"MsgDeleteItem(همه سطرهاي)"_s);
        QVERIFY(screen.Stored(u"3"_s).isEmpty());
        QCOMPARE(screen.Stored(u"2"_s).size(), 2);
    });
}

void TestDetailCategories::membersNeedTheRight()
{
    Screen screen;
    screen.fakes.permissions.Deny(TSoftwarePart::DetailTypes, TPermission::Change);
    screen.Open([&] {
        screen.GoToCategory();
        for (const QString &button : {u"NewDetail_BTN"_s, u"DeleteDetail_BTN"_s, u"DeleteAllDetail_BTN"_s})
            screen.Click(button);
        QCOMPARE(screen.Stored(u"1"_s).size(), 2);
        QVERIFY(screen.entities.calls.isEmpty());
    });
}

void TestDetailCategories::categoriesAreKept()
{
    Screen screen;
    screen.database.Exec(u"insert CodeLock_TBL(Status, Code, UserCode) values (513, 6, 2)"_s);
    screen.Open([&] {
        screen.GoToCategory();
        test::Drive([] { test::Press(Qt::Key_F4); },
                    [](QWidget *editor) {
                        // One beyond the code that another desk keeps.
                        QCOMPARE(test::Find<host::NumericEdit>(editor, u"Code_EDT"_s).text(), u"7"_s);
                        QCOMPARE(test::Focused(), u"Title_EDT"_s);
                        test::Type(u"ابزار 'برقی' [نو]"_s);
                        test::Press(Qt::Key_Return);
                        test::Type(u"شرح"_s);
                        test::Picture(*editor, u"detail-category"_s);
                        test::Press(Qt::Key_F3);
                    });
        QVERIFY(screen.entities.calls.contains(u"ReserveCode(513, 7)"_s));
        const QString rows =
            u"select Code, Title, Comment, DefaultSelectedList from DetailTypes_SelectedLists where Code = 7"_s;
        QCOMPARE(screen.database.Rows(rows), QStringList{u"7|ابزار 'برقی' [نو]|شرح|false"_s});
        screen.Regain(u"SelectedList_List_DBTableView1"_s);
        screen.database.Exec(u"update DetailTypes_SelectedLists set DefaultSelectedList = 1 where Code = 7"_s);
        test::Drive([] { test::Press(Qt::Key_F5); },
                    [&](QWidget *editor) {
                        QVERIFY(test::Find<QLineEdit>(editor, u"Code_EDT"_s).isReadOnly());
                        test::Enter(editor, u"Comment_EDT"_s, u"دیگر"_s);
                        // Another desk is faster.
                        screen.database.Exec(u"update DetailTypes_SelectedLists set Title = N'نو' where Code = 7"_s);
                        test::Press(Qt::Key_F3);
                    });
        QCOMPARE(screen.database.Rows(rows), QStringList{u"7|نو|دیگر|true"_s});

        // Deleting leaves the rows of the members.
        screen.Regain(u"SelectedList_List_DBTableView1"_s);
        test::Press(Qt::Key_Home, Qt::ControlModifier);
        screen.fakes.messages.Answer(true);
        test::Press(Qt::Key_F7);
        QCOMPARE(screen.fakes.messages.Take(), u"MsgDeleteItem(دسته بندی)"_s);
        QCOMPARE(screen.Stored(u"1"_s).size(), 2);
        QCOMPARE(screen.Find<host::Grid>(u"SelectedList_List_DBTableView1"_s).CurrentKey(), u"2"_s);
        QCOMPARE(screen.Members().ShownKeys(), (QStringList{u"4"_s, u"6"_s}));
    });
}

void TestDetailCategories::categoryEditorRefuses_data()
{
    QTest::addColumn<int>("row"); // -1 for a new category
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("message");
    const QString title = u"Title_EDT"_s;
    const QString taken = u"MsgRepeatedField(عنوان, ليست انتخابي)"_s;
    QTest::newRow("no code") << -1 << u"Code_EDT"_s << QString() << u"MsgRequiredField(کد)"_s;
    QTest::newRow("code of another") << -1 << u"Code_EDT"_s << u"۲"_s << u"MsgRepeatedCode(کد)"_s;
    QTest::newRow("no title") << 0 << title << u"  "_s << u"MsgRequiredField(عنوان ليست انتخابي)"_s;
    QTest::newRow("title of another") << -1 << title << u"خوراک"_s << taken;
    QTest::newRow("a title that two have") << 0 << title << u"جفت"_s << taken;
    QTest::newRow("its own title") << 1 << title << u"خوراک"_s << QString();
    QTest::newRow("long remark") << 0 << u"Comment_EDT"_s << QString(101, u'ش')
                                 << Say(u"کاربر گرامی شرح حداکثر 100 حرف می تواند داشته باشد"_s);
}

void TestDetailCategories::categoryEditorRefuses()
{
    QFETCH(int, row);
    QFETCH(QString, control);
    QFETCH(QString, typed);
    QFETCH(QString, message);
    Screen screen;
    screen.database.Exec(u"insert DetailTypes_SelectedLists(Code, Title) values (8, N'جفت'), (9, N'جفت')"_s);
    const QString all = u"select Code, Title, ISNULL(Comment, '') from DetailTypes_SelectedLists order by Code"_s;
    const QStringList before = screen.database.Rows(all);
    screen.Open([&] {
        screen.GoToCategory(qMax(row, 0));
        test::Drive([&] { test::Press(row < 0 ? Qt::Key_F4 : Qt::Key_F5); },
                    [&](QWidget *editor) {
                        if (row < 0)
                            test::Type(u"نو"_s);
                        test::Enter(editor, control, typed);
                        test::Press(Qt::Key_F3);
                        if (message.isEmpty())
                            return;
                        QCOMPARE(screen.fakes.messages.Take(), message);
                        QCOMPARE(test::Focused(), control);
                        screen.fakes.messages.Answer(true);
                        test::Press(Qt::Key_Escape);
                        screen.fakes.messages.Take();
                    });
        screen.Regain(u"SelectedList_List_DBTableView1"_s);
    });
    QCOMPARE(screen.database.Rows(all), before);
}

void TestDetailCategories::categoryEditorKeepsWhatIsEntered()
{
    Screen screen;
    screen.Open([&] {
        screen.GoToCategory();
        test::Drive([] { test::Press(Qt::Key_F4); },
                    [&](QWidget *editor) {
                        test::Type(u" یک 'دو' "_s);
                        QGuiApplication::clipboard()->setText(u" ۱۲,۳ \n"_s);
                        test::Focus(editor, u"Code_EDT"_s);
                        test::Press(Qt::Key_V, Qt::ControlModifier);
                        QSqlDatabase main = screen.database.Main();
                        main.close();
                        test::Press(Qt::Key_F3);
                        QVERIFY(main.open());
                        QCOMPARE(screen.fakes.messages.TakeAll().size(), 1);
                        test::Press(Qt::Key_F3);
                    });
        screen.Regain(u"SelectedList_List_DBTableView1"_s);
    });
    QCOMPARE(screen.database.Rows(u"select Title from DetailTypes_SelectedLists where Code = 123"_s),
             QStringList{u" یک 'دو' "_s});
}

REGISTER_TEST(TestDetailCategories)
#include "tst_detail_categories.moc"
