#include "desk/settings/rights.h"
#include "desk/settings/settings_screen.h"
#include "host/controls/grid.h"
#include "host/data/persian_text.h"
#include "tests/desk/desk_fixture.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableWidget>
#include <QtTest>

using host::TSoftwarePart;

/// The desk's own screens, worked by keys, on the demo data.
class TestScreens : public QObject
{
    Q_OBJECT

private slots:
    void groupIsAddedCorrectedAndDeleted();
    void choosingGivesTheCodeBack();
    void editorRefuses_data();
    void editorRefuses();
    void anotherDeskIsWriting_data();
    void anotherDeskIsWriting();
    void rightsTakeEffect();
    void rightsAskBeforeTheyAreLost();
    void usersAreAddedAndRenamed();
    void settingsAreKept();
};

void TestScreens::groupIsAddedCorrectedAndDeleted()
{
    test::Desk t;
    const auto name = [&] {
        return t.database.Rows(u"SELECT Name FROM GoodGrpS WHERE Code = (SELECT MAX(Code) FROM GoodGrpS)"_s);
    };
    const int before = t.database.Scalar(u"SELECT COUNT(*) FROM GoodGrpS"_s).toInt();
    test::Drive([&] { t.desk.entities.Call_GroupList(TSoftwarePart::GoodsGroups); },
                [&](QWidget *list) {
                    test::Drive([] { test::Press(Qt::Key_F4); },
                                [](QWidget *editor) {
                                    test::Picture(*editor, u"group-editor"_s);
                                    QCOMPARE(test::Focused(), u"Name_EDT"_s);
                                    test::Type(u"لوازم 'خانگی'"_s);
                                    test::Press(Qt::Key_F3);
                                });
                    QCOMPARE(name(), QStringList{u"لوازم 'خانگی'"_s});
                    test::Picture(*list, u"group-list"_s);
                    test::Drive([] { test::Press(Qt::Key_F5); },
                                [](QWidget *editor) {
                                    test::Enter(editor, u"Name_EDT"_s, u"ابزار باغبانی"_s);
                                    test::Press(Qt::Key_F3);
                                });
                    QCOMPARE(name(), QStringList{u"ابزار باغبانی"_s});
                    test::Drive([] { test::Press(Qt::Key_F7); },
                                [](QWidget *question) {
                                    QVERIFY(qobject_cast<QMessageBox *>(question)->text().contains(u"«ابزار باغبانی»"));
                                    test::Press(Qt::Key_Tab);
                                    test::Press(Qt::Key_Space);
                                });
                    QCOMPARE(t.database.Scalar(u"SELECT COUNT(*) FROM GoodGrpS"_s).toInt(), before);
                    test::Press(Qt::Key_Escape);
                });
}

void TestScreens::choosingGivesTheCodeBack()
{
    test::Desk t;
    int chosen = -1;
    test::Drive([&] { chosen = t.desk.entities.Select_GroupList(TSoftwarePart::Stores, u"2"_s); },
                [](QWidget *) { test::Press(Qt::Key_Return); });
    QCOMPARE(chosen, 2);
    test::Drive([&] { chosen = t.desk.entities.Select_GroupList(TSoftwarePart::Stores, {}); },
                [](QWidget *) { test::Press(Qt::Key_Escape); });
    QCOMPARE(chosen, 0);
    QString several;
    test::Drive([&] { several = t.desk.entities.Select_Entity_Multible_Param(TSoftwarePart::Stores, {u"1"_s}); },
                [](QWidget *) {
                    test::Press(Qt::Key_Down);
                    test::Press(Qt::Key_Down);
                    test::Press(Qt::Key_Space);
                    test::Press(Qt::Key_Up);
                    test::Press(Qt::Key_Space);
                    test::Press(Qt::Key_Return);
                });
    QCOMPARE(several, u"3,2,"_s);
}

void TestScreens::editorRefuses_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("says");
    QTest::addColumn<QString>("focus");
    QTest::newRow("code too large") << u"40000"_s << u"نو"_s << u"32767"_s << u"Code_EDT"_s;
    QTest::newRow("code taken") << u"1"_s << u"نو"_s << u"«کد» تکراری"_s << u"Code_EDT"_s;
    QTest::newRow("no name") << u"900"_s << u"  "_s << u"«نام»"_s << u"Name_EDT"_s;
    QTest::newRow("name taken") << u"900"_s << u"کیلوگرم"_s << u"«نام» تکراری"_s << u"Name_EDT"_s;
}

void TestScreens::editorRefuses()
{
    QFETCH(QString, code);
    QFETCH(QString, name);
    QFETCH(QString, says);
    QFETCH(QString, focus);
    test::Desk t;
    const int before = t.database.Scalar(u"SELECT COUNT(*) FROM Units"_s).toInt();
    test::Drive([&] { t.desk.entities.New_Group(TSoftwarePart::Units); },
                [&](QWidget *editor) {
                    test::Enter(editor, u"Code_EDT"_s, code);
                    test::Enter(editor, u"Name_EDT"_s, name);
                    test::Drive([] { test::Press(Qt::Key_F3); },
                                [&](QWidget *box) {
                                    const QString text = qobject_cast<QMessageBox *>(box)->text();
                                    QVERIFY2(text.contains(says), qPrintable(text));
                                    test::Press(Qt::Key_Return);
                                });
                    QCOMPARE(test::Focused(), focus);
                    QCOMPARE(t.database.Scalar(u"SELECT COUNT(*) FROM Units"_s).toInt(), before);
                    // Leaving asks, because something was typed.
                    test::Drive([] { test::Press(Qt::Key_Escape); },
                                [](QWidget *) {
                                    test::Press(Qt::Key_Tab);
                                    test::Press(Qt::Key_Space);
                                });
                });
}

void TestScreens::anotherDeskIsWriting_data()
{
    QTest::addColumn<bool>("patient");
    QTest::newRow("the user waits") << true;
    QTest::newRow("the user gives up") << false;
}

/// The wait shows itself. It ends with the other's work, or when the user gives up, and then his input stays.
void TestScreens::anotherDeskIsWriting()
{
    if (test::Database::OnServer())
        QSKIP("the file has one writer at a time");
    QFETCH(bool, patient);
    test::Desk t;
    t.database.Exec(u"SET LOCK_TIMEOUT 50"_s);
    QSqlDatabase other = t.database.AnotherConnection();
    const auto added = [&] { return t.database.Scalar(u"SELECT COUNT(*) FROM Units WHERE Name = N'بشکه'"_s).toInt(); };
    test::Drive([&] { t.desk.entities.New_Group(TSoftwarePart::Units); },
                [&](QWidget *editor) {
                    test::Type(u"بشکه"_s);
                    QVERIFY(other.transaction());
                    test::Drive([] { test::Press(Qt::Key_F3); },
                                [&](QWidget *wait) {
                                    QCOMPARE(wait->objectName(), u"LockWait_PRG"_s);
                                    test::Picture(*wait, u"lock-wait"_s);
                                    test::Press(Qt::Key_Return); // a scanner's: gives nothing up
                                    if (patient)
                                        QVERIFY(other.commit());
                                    else
                                        test::Press(Qt::Key_Escape);
                                });
                    QCOMPARE(added(), patient ? 1 : 0);
                    if (patient)
                        return;
                    QCOMPARE(test::Find<QLineEdit>(editor, u"Name_EDT"_s).text(), u"بشکه"_s);
                    QVERIFY(other.rollback());
                    test::Press(Qt::Key_F3);
                    QCOMPARE(added(), 1);
                });
}

void TestScreens::rightsTakeEffect()
{
    test::Desk t;
    const host::TUserInfo clerk{2, {}, 0};
    const auto may = [&] {
        return t.desk.permissions.HavePermission(clerk, TSoftwarePart::Goods, host::TPermission::Create, false, false,
                                                 {});
    };
    QVERIFY(!may());
    desk::TRights_FRM rights(t.desk.host, t.desk.permissions);
    test::Drive([&] { rights.ShowModally(); },
                [&](QWidget *screen) {
                    test::Picture(*screen, u"rights"_s);
                    auto &users = test::Find<QComboBox>(screen, u"User_CMB"_s);
                    users.setFocus();
                    test::Press(Qt::Key_Down);
                    QCOMPARE(users.currentData().toInt(), 2);
                    auto &grid = test::Find<QTableWidget>(screen, u"Rights_GRD"_s);
                    grid.setFocus();
                    grid.setCurrentCell(0, 1);
                    QCOMPARE(grid.currentItem()->checkState(), Qt::Unchecked);
                    test::Press(Qt::Key_Space);
                    QVERIFY(!may());
                    test::Press(Qt::Key_F3);
                    QVERIFY(may());
                    test::Press(Qt::Key_Escape);
                });
    // What the screen did not touch is as it was.
    QCOMPARE(t.database.Rows(u"SELECT SoftwarePart, Permission FROM UserRights WHERE UserCode = 2 ORDER BY 1, 2"_s),
             (QStringList{u"102|1"_s, u"102|6"_s, u"104|6"_s, u"105|6"_s, u"202|6"_s, u"309|6"_s}));
}

void TestScreens::rightsAskBeforeTheyAreLost()
{
    test::Desk t;
    const QStringList before = t.database.Rows(u"SELECT * FROM UserRights ORDER BY 1, 2, 3"_s);
    desk::TRights_FRM rights(t.desk.host, t.desk.permissions);
    test::Drive([&] { rights.ShowModally(); },
                [&](QWidget *screen) {
                    test::Press(Qt::Key_Space);
                    test::Drive([] { test::Press(Qt::Key_Escape); }, [](QWidget *) { test::Press(Qt::Key_Escape); });
                    QVERIFY(!screen->isHidden());
                    test::Drive([] { test::Press(Qt::Key_Escape); },
                                [](QWidget *) {
                                    test::Press(Qt::Key_Tab);
                                    test::Press(Qt::Key_Space);
                                });
                });
    QCOMPARE(t.database.Rows(u"SELECT * FROM UserRights ORDER BY 1, 2, 3"_s), before);
}

void TestScreens::usersAreAddedAndRenamed()
{
    test::Desk t;
    const QStringList before = t.database.Rows(u"SELECT Code, Name FROM Users ORDER BY Code"_s);
    const auto name = [](const QString &text) {
        return [text](QWidget *) {
            test::Type(text);
            test::Press(Qt::Key_Return);
        };
    };
    desk::TRights_FRM rights(t.desk.host, t.desk.permissions);
    test::Drive(
        [&] { rights.ShowModally(); },
        [&](QWidget *screen) {
            const auto &users = test::Find<QComboBox>(screen, u"User_CMB"_s);
            test::Drive([] { test::Press(Qt::Key_F4); }, [](QWidget *) { test::Press(Qt::Key_Escape); });
            QCOMPARE(t.database.Rows(u"SELECT Code, Name FROM Users ORDER BY Code"_s), before);
            // A name that somebody has, in another spelling, is refused and asked for again.
            test::Drive([] { test::Press(Qt::Key_F4); },
                        [&](QWidget *dialog) {
                            test::Drive([&] { name(u"مدير سيستم"_s)(dialog); },
                                        [&](QWidget *box) {
                                            QVERIFY(qobject_cast<QMessageBox *>(box)->text().contains(u"تکراری"));
                                            test::Press(Qt::Key_Return);
                                        });
                            test::Press(Qt::Key_A, Qt::ControlModifier);
                            name(u"  زهرا 'صندوق'  "_s)(dialog);
                        });
            QCOMPARE(users.currentText(),
                     u"زهرا 'صندوق' (%1)"_s.arg(host::PersianDigits(users.currentData().toString())));
            QCOMPARE(test::Find<QTableWidget>(screen, u"Rights_GRD"_s).item(0, 0)->checkState(), Qt::Unchecked);
            test::Focus(screen, u"Rights_GRD"_s);
            test::Press(Qt::Key_Space);
            test::Drive([] { test::Press(Qt::Key_F2); }, name(u"زهرا"_s));
            test::Press(Qt::Key_F3); // renaming did not lose the right that was just given
            QCOMPARE(t.database.Rows(u"SELECT Name, SoftwarePart, Permission FROM Users u JOIN UserRights r "
                                     "ON r.UserCode = u.Code WHERE u.Code = %1"_s.arg(users.currentData().toInt())),
                     QStringList{u"زهرا|102|6"_s});
            test::Press(Qt::Key_Escape);
        });
    QCOMPARE(t.database.Scalar(u"SELECT COUNT(*) FROM Users"_s).toInt(), before.size() + 1);
}

void TestScreens::settingsAreKept()
{
    test::Desk t;
    QVERIFY(t.desk.settings.SettingRecord().StockOnGoodsList);
    {
        desk::TSettings_FRM settings(t.desk.host, t.desk.settings);
        test::Drive([&] { settings.ShowModally(); },
                    [&](QWidget *screen) {
                        test::Picture(*screen, u"settings"_s);
                        test::Focus(screen, u"StockOnGoodsList_CHK"_s);
                        test::Press(Qt::Key_Space);
                        test::Enter(screen, u"Barcode2_EDT"_s, u"77'1"_s);
                        test::Press(Qt::Key_F3);
                        test::Press(Qt::Key_Escape);
                    });
    }
    QVERIFY(!t.desk.settings.SettingRecord().StockOnGoodsList);
    const desk::Settings read(t.database.Main());
    QVERIFY(!read.SettingRecord().StockOnGoodsList);
    QCOMPARE(read.SettingRecord().ReservedBarcodes[1], u"77'1"_s);
    QVERIFY(read.SettingRecord().TwoUnitGoods);
}

REGISTER_TEST(TestScreens)
#include "tst_screens.moc"
