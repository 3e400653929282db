// The list of detail types, worked by keys.

#include "host/controls/search_frame.h"
#include "tests/detailtypes/list_fixture.h"
#include "tests/support/test_main.h"

#include <QMenu>
#include <QTabBar>
#include <QTabWidget>

using namespace fixture;

class TestDetailTypesList : public QObject
{
    Q_OBJECT

private slots:
    void showsBothTabs();
    void emptyCatalogueOffersOnlyNew();
    void choosesTypes_data();
    void choosesTypes();
    void typesAreAddedAndCorrected();
    void deletesTypes_data();
    void deletesTypes();
    void menuFollowsTheButtons();
};

void TestDetailTypesList::showsBothTabs()
{
    Screen screen;
    QCOMPARE(screen.Open([&] {
        QCOMPARE(screen.list.Title(), u"جزئیات کالاها"_s);
        QCOMPARE(test::Focused(), u"DetailTypes_List_GRD"_s);
        QCOMPARE(screen.Types().VisibleCaptions().join(u'|'), u"عنوان|نوع|توضیحات"_s);
        QCOMPARE(screen.Types().VisibleTexts(2).join(u'|'), u"رنگ|انتخاب از لیست|رنگ بدنه"_s);
        QVERIFY(test::RightOf(screen.Find(u"New_BTN"_s), screen.Find(u"Delete_BTN"_s)));
        QVERIFY(!screen.Find(u"Select_BTN"_s).isEnabled());
        QVERIFY(!screen.Types().IsMultiSelect());
        test::Picture(screen.list, u"detail-types"_s);
        test::Type(u"سررسيد"_s); // goes from the grid into the search; the Arabic letter finds the Persian one
        QCOMPARE(test::Focused(), u"Text_EDT"_s);
        QCOMPARE(screen.Types().ShownKeys(), QStringList{u"5"_s});
        test::Press(Qt::Key_Escape);
        QCOMPARE(screen.Types().RowCount(), 9);
        test::Focus(&screen.list, u"DetailTypes_List_GRD"_s);
        QCOMPARE(test::TabRound().join(u' '),
                 u"DetailTypes_List_GRD New_BTN Edit_BTN Delete_BTN EXit_BTN Column_CMB Text_EDT "
                 "Reverse_CHK"_s);
        screen.GoToCategory();
        QVERIFY(screen.Find(u"New_SelectedList_BTN"_s).isVisible() && !screen.Find(u"New_BTN"_s).isVisible());
        QCOMPARE(screen.Members().ShownKeys(), (QStringList{u"3"_s, u"1"_s}));
        test::Press(Qt::Key_Down);
        QCOMPARE(screen.Members().VisibleTexts(0).join(u'|'), u"۴|انقضا"_s);
        QVERIFY(!screen.Find(u"DetailTypeSelectedListSelect_BTN"_s).isEnabled());
        QVERIFY(!screen.Find(u"Hint_LBL"_s).isVisible());
        test::Picture(screen.list, u"detail-categories"_s);
    }),
             0);
}

void TestDetailTypesList::emptyCatalogueOffersOnlyNew()
{
    Screen screen(TFormMode::Selection, false);
    screen.list.SetChoice({.Categories = true});
    screen.Open([&] {
        for (const QString &name :
             {u"Edit_BTN"_s, u"Delete_BTN"_s, u"Select_BTN"_s, u"Default_BTN"_s, u"DetailTypeSelectedListSelect_BTN"_s,
              u"NewDetail_BTN"_s, u"DeleteDetail_BTN"_s, u"DeleteAllDetail_BTN"_s})
            QVERIFY2(!screen.Find(name).isEnabled(), qPrintable(name));
        QVERIFY(screen.Find(u"New_BTN"_s).isEnabled());
        test::Press(Qt::Key_Return); // chooses nothing
        QVERIFY(screen.list.isVisible());
        screen.GoToCategory();
        QVERIFY(screen.Find(u"Hint_LBL"_s).isVisible());
        test::Picture(screen.list, u"detail-categories-empty"_s);
    });
}

void TestDetailTypesList::choosesTypes_data()
{
    QTest::addColumn<Choice>("choice");
    QTest::addColumn<QList<int>>("marked");
    QTest::addColumn<QString>("codes");
    QTest::addColumn<QString>("message");
    const QString most = Say(u"کاربر گرامی امکان انتخاب حداکثر 5 مورد امکان پذیر می باشد"_s);
    const QString sum = Say(
        u"کاربر گرامی تعداد موارد انتخاب شده قبلی 2 مورد و تعداد موارد انتخاب شده فعلی 4 مورد می باشد که جمعا از 5 مورد بیشتر می شوند و حداکثر تعداد موارد لیست انتخابی 5 مورد می تواند باشد"_s);
    const auto row = [](const char *name, const Choice &choice, const QList<int> &marked, const QString &codes,
                        const QString &message = {}) { QTest::newRow(name) << choice << marked << codes << message; };
    row("the current one", {}, {}, u"1"_s);
    row("in the order of the marks", {}, {7, 3}, u"7,3"_s);
    row("five", {}, {1, 3, 4, 6, 7}, u"1,3,4,6,7"_s);
    row("six", {}, {1, 3, 4, 6, 7, 8}, {}, most);
    row("three to two", {2, u"7,8"_s}, {3, 6, 9}, u"3,6,9"_s);
    row("four to two", {2, u"7,8"_s}, {3, 4, 6, 9}, {}, sum);
    row("serial and barcode for a good", {}, {1, 2}, {}, TwoForGood);
    row("serial and barcode for a category", {.InList = true}, {1, 2}, {}, TwoForList);
    row("barcode to a serial", {1, u"1"_s}, {2}, {}, TwoForGood);
    row("serial to a serial in a category", {2, u"1,3"_s, true}, {1}, {}, TwoForList);
    row("serial to others", {2, u"3,4"_s, true}, {1}, u"1"_s);
    row("two reminders for a good", {}, {4, 5}, {}, DatesForGood);
    row("reminder to a reminder in a category", {1, u"4"_s, true}, {5}, {}, DatesForList);
    row("a date without reminder", {1, u"4"_s}, {6}, u"6"_s);
    row("serials are named before dates", {1, u"4"_s}, {1, 2, 5}, {}, TwoForGood);
}

void TestDetailTypesList::choosesTypes()
{
    QFETCH(Choice, choice);
    QFETCH(QList<int>, marked);
    QFETCH(QString, codes);
    QFETCH(QString, message);
    Screen screen(TFormMode::Selection);
    screen.list.SetChoice(choice);
    const int result = screen.Open([&] {
        QVERIFY(!screen.Find<QTabWidget>(u"DetailTypes_PGC"_s).tabBar()->isVisible());
        test::Press(Qt::Key_Tab, Qt::ControlModifier); // leads nowhere
        QVERIFY(screen.Types().isVisible());
        screen.Mark(marked);
        if (marked.isEmpty())
            screen.GoToType(1);
        test::Press(Qt::Key_Return);
        QCOMPARE(screen.list.isVisible(), !message.isEmpty());
    });
    QCOMPARE(result, message.isEmpty() ? 1 : 0);
    QCOMPARE(screen.list.SelectedCodes(), codes);
    QCOMPARE(screen.fakes.messages.Take(), message);
}

void TestDetailTypesList::typesAreAddedAndCorrected()
{
    Screen screen;
    screen.fakes.permissions.Deny(TSoftwarePart::DetailTypes, TPermission::Create);
    screen.Open([&] {
        test::Press(Qt::Key_F4); // without the right no editor opens
        QCOMPARE(QApplication::activeModalWidget(), &screen.list);
        screen.fakes.permissions.denied.clear();
        test::Drive([] { test::Press(Qt::Key_F4); },
                    [](QWidget *editor) {
                        test::Type(u"شماره [ساخت] 'ب'"_s);
                        test::Focus(editor, u"Type_CMB"_s);
                        test::Press(Qt::Key_End);
                        test::Press(Qt::Key_F3);
                    });
        screen.Regain(u"DetailTypes_List_GRD"_s);
        QCOMPARE(screen.Types().CurrentKey(), u"10"_s);
        QCOMPARE(screen.Types().VisibleTexts(9).join(u'|'), u"شماره [ساخت] 'ب'|دو وضعیتی|"_s);
        screen.GoToType(3);
        test::Drive([] { test::Press(Qt::Key_Return); },
                    [](QWidget *editor) {
                        test::Enter(editor, u"Comment_EDT"_s, u"رنگ پارچه"_s);
                        test::Focus(editor, u"DefaultValue_CMB"_s);
                        test::Press(Qt::Key_Home);
                        test::Press(Qt::Key_F3);
                    });
        screen.Regain(u"DetailTypes_List_GRD"_s);
        QCOMPARE(screen.Types().CurrentKey(), u"3"_s);
        QCOMPARE(screen.Types().VisibleTexts(2).join(u'|'), u"رنگ|انتخاب از لیست|رنگ پارچه"_s);
    });
}

void TestDetailTypesList::deletesTypes_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("right");
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("deleted");
    const QString used = u"ShowSmartMessage(10006, جزییات)"_s;
    const QString ask = u"MsgDeleteItem(جزییات)"_s;
    QTest::newRow("with its items") << 8 << true << ask << true;
    QTest::newRow("in a category only") << 7 << true << used << false;
    QTest::newRow("on a good only") << 9 << true << used << false;
    QTest::newRow("answered no") << 8 << true << ask << false;
    QTest::newRow("without the right") << 8 << false << QString() << false;
}

void TestDetailTypesList::deletesTypes()
{
    QFETCH(int, id);
    QFETCH(bool, right);
    QFETCH(QString, message);
    QFETCH(bool, deleted);
    Screen screen;
    if (!right)
        screen.fakes.permissions.Deny(TSoftwarePart::DetailTypes, TPermission::Delete);
    if (message.startsWith(u"MsgDeleteItem"))
        screen.fakes.messages.Answer(deleted);
    screen.Open([&] {
        screen.GoToType(id);
        test::Press(Qt::Key_F7);
        QCOMPARE(screen.Types().RowCount(), deleted ? 8 : 9);
    });
    QCOMPARE(screen.fakes.messages.Take(), message);
    QCOMPARE(screen.database.Rows(u"select ID from DetailTypes where ID = %1"_s.arg(id)).isEmpty(), deleted);
    QCOMPARE(screen.database.Rows(u"select ID from DetailTypesItems where DetailID = 8"_s).isEmpty(), deleted);
}

void TestDetailTypesList::menuFollowsTheButtons()
{
    Screen screen;
    screen.Open([&] {
        QStringList items;
        QTimer::singleShot(0, &screen.list, [&] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            for (const QAction *action : menu ? menu->actions() : QList<QAction *>())
                items << action->text() + (action->isEnabled() ? u"+"_s : u"-"_s);
            if (menu)
                menu->close();
        });
        emit screen.Types().customContextMenuRequested(QPoint(5, 5));
        QCOMPARE(items.join(u' '), u"جدید+ ویرایش+ حذف+ انتخاب-"_s);
    });
}

REGISTER_TEST(TestDetailTypesList)
#include "tst_detail_types_list.moc"
