#include "host/controls/number_text.h"
#include "host/controls/tags_panel.h"
#include "tests/screens/goods_list/list_fixture.h"

#include <QApplication>
#include <QBuffer>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

/// The panels around the goods: groups and their menu, tags, pictures.
class TestPanels : public QObject
{
    Q_OBJECT

private slots:
    void groupMenu_data();
    void groupMenu();
    void shownGroupIsDeleted();
    void tags();
    void pictures();
};

void TestPanels::groupMenu_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("entry");
    QTest::addColumn<QString>("call");
    QTest::newRow("new") << 2 << 1 << u"New_Group(122)"_s;
    QTest::newRow("edit") << 2 << 2 << u"Edit_Group(122, %1)"_s;
    QTest::newRow("delete") << 2 << 3 << u"Delete_Entity(122, %1, 0)"_s;
    QTest::newRow("all goods is no group to change") << 0 << 2 << u"New_Group(122)"_s;
}

/// The menu works on the group under the mouse, whichever is chosen, and leaves the goods of the chosen one.
void TestPanels::groupMenu()
{
    QFETCH(int, row);
    QFETCH(int, entry);
    QFETCH(QString, call);
    Screen screen;
    screen.Open();
    auto &groups = test::Find<host::Grid>(&screen.list, u"GoodGroupDB_GRD"_s);
    const QPoint at = groups.visualRect(groups.model()->index(row, 2)).center();
    QTest::mouseClick(groups.viewport(), Qt::RightButton, {}, at);
    const QString group = groups.CurrentKey();
    QContextMenuEvent menu(QContextMenuEvent::Mouse, at, groups.viewport()->mapToGlobal(at));
    QApplication::sendEvent(groups.viewport(), &menu);
    QTRY_VERIFY(QApplication::activePopupWidget());
    for (int i = 0; i < entry; ++i)
        test::Press(Qt::Key_Down);
    test::Press(Qt::Key_Return);
    QTRY_COMPARE(screen.host.entities.calls, QStringList{call.contains(u'%') ? call.arg(group) : call});
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes());
    screen.Activate();
    test::Focus(&screen.list, u"GoodListDB_GRD"_s);
    test::Press(Qt::Key_Escape);
}

/// The group that is shown goes in the list behind F11: all goods are shown, not none.
void TestPanels::shownGroupIsDeleted()
{
    Screen screen;
    screen.Open();
    test::Press(Qt::Key_F11, Qt::ControlModifier);
    test::Type(u"لبنيات"_s);
    test::Press(Qt::Key_Return);
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes(u"GrpCode = 15"_s));
    screen.database.Exec(u"update GoodInf set GrpCode = 11 where GrpCode = 15 delete from GoodGrpS where Code = 15"_s);
    test::Press(Qt::Key_F11);
    QCOMPARE(screen.grid.ShownKeys(), screen.Codes());
    test::Press(Qt::Key_Escape);
}

void TestPanels::tags()
{
    Screen screen;
    screen.database.Exec(u"update GoodInf set tags=N'1,3' where Code=110001"_s);
    screen.Open();
    test::Find<QPushButton>(&screen.list, u"Tags_btn"_s).click();
    const auto chips = [&] { return screen.list.findChildren<QToolButton *>(u"Tag_3"_s); };
    QTRY_COMPARE(chips().size(), 1);
    chips().first()->click();
    const auto stored = [&] {
        return screen.database.Scalar(u"select tags from GoodInf where Code=110001"_s).toString();
    };
    QCOMPARE(stored(), u"1"_s);
    QTRY_COMPARE(chips().size(), 0);
    QCOMPARE(screen.grid.CurrentValue(u"t2"_s).toString(), QString()); // the marks in the list follow
    test::Focus(&screen.list, u"add_btn"_s);
    test::Press(Qt::Key_Space);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    const QString name = screen.database.Scalar(u"select Name from TagS where Code=3"_s).toString();
    const auto actions = menu->actions();
    for (QAction *action : actions)
        if (action->text() == name)
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    QCOMPARE(stored(), u"1,3"_s);
    QTRY_COMPARE(chips().size(), 1);
    screen.Activate();
    QTest::qWait(300);                       // what follows the change
    QCOMPARE(test::Focused(), u"add_btn"_s); // for the next tag

    // Several marked goods show a line each, to look at.
    screen.Activate();
    screen.grid.setFocus();
    screen.Press({Qt::Key_Insert, Qt::Key_Insert});
    const auto panels = [&] { return screen.list.findChildren<host::TagsPanel *>(); };
    QTRY_COMPARE(panels().size(), 2);
    QVERIFY(panels().first()->isReadOnly() && panels().last()->isReadOnly());
    test::Press(Qt::Key_A, Qt::ControlModifier);
    QTRY_COMPARE(panels().size(), 20);
    const auto labels = test::Find(&screen.list, u"Tags1"_s).findChildren<QLabel *>();
    QCOMPARE(labels.last()->text(),
             u"و %1 کالای دیگر"_s.arg(host::DisplayNumber(QString::number(screen.grid.RowCount() - 20))));
    screen.grid.ClearMarks();
    QVERIFY(screen.grid.Locate(u"110001"_s));
    QTRY_COMPARE(panels().size(), 1);
    screen.host.permissions.Deny(TSoftwarePart::Goods, TPermission::Change);
    test::Find<QToolButton>(&screen.list, u"Tag_1"_s).click();
    QCOMPARE(stored(), u"1,3"_s);
    QTRY_VERIFY(screen.list.findChild<QWidget *>(u"Tag_1"_s));
    test::Press(Qt::Key_Escape);
}

void TestPanels::pictures()
{
    Screen screen;
    const auto picture = [](Qt::GlobalColor color) {
        QImage image(20, 10, QImage::Format_RGB32);
        image.fill(color);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        image.save(&buffer, "PNG");
        return bytes;
    };
    screen.host.photos.photos.insert(110001, {picture(Qt::red), picture(Qt::blue)});
    screen.host.photos.photos.insert(110002, {"no picture at all"});
    screen.Open();
    auto &button = test::Find<QPushButton>(&screen.list, u"ShowPicture_BTN"_s);
    QCOMPARE(button.toolTip(), u"نمايش تصوير"_s);
    button.click();
    QCOMPARE(button.toolTip(), u"عدم نمايش تصوير"_s);
    auto &panel = test::Find<QWidget>(&screen.list, u"Pic_Show"_s);
    const auto &shown = test::Find<QLabel>(&panel, u"Picture_IMG"_s);
    const auto &position = test::Find<QLabel>(&panel, u"Position_LBL"_s);
    const auto middle = [&] {
        const QImage image = shown.pixmap().toImage();
        return image.isNull() ? QColor() : image.pixelColor(image.rect().center());
    };
    QTRY_COMPARE(position.text(), u"۱ از ۲"_s);
    QCOMPARE(middle(), QColor(Qt::red));
    test::Find<QToolButton>(&panel, u"Last_BTN"_s).click();
    QCOMPARE(position.text(), u"۲ از ۲"_s);
    QCOMPARE(middle(), QColor(Qt::blue));
    QVERIFY(!test::Find<QToolButton>(&panel, u"Next_BTN"_s).isEnabled());
    screen.grid.setFocus();
    test::Press(Qt::Key_Down);
    QTRY_COMPARE(shown.text(), u"تصویر خوانده نشد"_s);
    test::Press(Qt::Key_Down);
    QTRY_COMPARE(shown.text(), u"بدون تصویر"_s);
    // The gallery behind the editor writes at once, whether or not the good is saved then.
    screen.host.photos.photos.insert(110003, {picture(Qt::red)});
    test::Drive([] { test::Press(Qt::Key_F5); }, [](QWidget *) { test::Press(Qt::Key_Escape); });
    QTRY_COMPARE(position.text(), u"۱ از ۱"_s);
    test::Find<QToolButton>(&panel, u"Close_BTN"_s).click();
    QVERIFY(!panel.isVisible() && !button.isChecked());
    test::Press(Qt::Key_Escape);
}

REGISTER_TEST(TestPanels)
#include "tst_panels.moc"
