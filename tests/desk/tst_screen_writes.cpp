// What is typed into the desk's own screens comes back as typed, and is neither lost nor half-written when the database
// goes away.

#include "desk/settings/rights.h"
#include "desk/settings/settings_screen.h"
#include "host/controls/grid.h"
#include "host/data/database_error.h"
#include "tests/desk/desk_fixture.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QtTest>

using host::TSoftwarePart;
using Inner = std::function<void(QWidget *)>;

namespace {

/// A screen in which something is typed and written.
struct Writing
{
    std::function<void(test::Desk &, const Inner &)> open;
    Inner type;
    std::function<void()> write;
    QString rows;  ///< what shows that it was written
    QString typed; ///< the edit that must keep what was typed, when there is one
};

void OpenRights(test::Desk &t, const Inner &inner)
{
    desk::TRights_FRM rights(t.desk.host, t.desk.permissions);
    test::Drive([&] { rights.ShowModally(); }, inner);
}

/// A name dialog over the rights, opened by a key.
std::function<void(test::Desk &, const Inner &)> OpenName(Qt::Key key)
{
    return [key](test::Desk &t, const Inner &inner) {
        OpenRights(t, [key, &inner](QWidget *) {
            test::Drive([key] { test::Press(key); }, inner);
            test::Press(Qt::Key_Escape);
        });
    };
}

void OpenSettings(test::Desk &t, const Inner &inner)
{
    desk::TSettings_FRM settings(t.desk.host, t.desk.settings);
    test::Drive([&] { settings.ShowModally(); }, inner);
}

QMap<QString, Writing> Writings()
{
    const auto name = [](QWidget *screen) { test::Enter(screen, u"Name_EDT"_s, u"نو"_s); };
    const auto type = [](QWidget *) { test::Type(u"نو"_s); };
    const auto save = [] { test::Press(Qt::Key_F3); };
    const auto enter = [] { test::Press(Qt::Key_Return); };
    const QString users = u"SELECT Name FROM Users ORDER BY Code"_s;
    return {
        {u"new group"_s,
         {[](test::Desk &t, const Inner &inner) {
              test::Drive([&] { t.desk.entities.New_Group(TSoftwarePart::GoodsGroups); }, inner);
          },
          name, save, u"SELECT Name FROM GoodGrpS ORDER BY Code"_s, u"Name_EDT"_s}},
        {u"changed store"_s,
         {[](test::Desk &t, const Inner &inner) {
              test::Drive([&] { t.desk.entities.Edit_Group(TSoftwarePart::Stores, 2); }, inner);
          },
          name, save, u"SELECT Name FROM Stores ORDER BY Code"_s, u"Name_EDT"_s}},
        {u"rights"_s,
         {OpenRights,
          [](QWidget *) { test::Press(Qt::Key_Space); },
          save,
          u"SELECT UserCode, SoftwarePart, Permission FROM UserRights ORDER BY 1, 2, 3"_s,
          {}}},
        {u"new user"_s, {OpenName(Qt::Key_F4), type, enter, users, u"*"_s}},
        {u"renamed user"_s, {OpenName(Qt::Key_F2), type, enter, users, u"*"_s}},
        {u"settings"_s,
         {OpenSettings, [](QWidget *screen) { test::Enter(screen, u"Barcode1_EDT"_s, u"نو"_s); }, save,
          u"SELECT Name, Value FROM Settings ORDER BY Name"_s, u"Barcode1_EDT"_s}},
    };
}

} // namespace

class TestScreenWrites : public QObject
{
    Q_OBJECT

private slots:
    void databaseGoesAway_data();
    void databaseGoesAway();
    void databaseGoesAwayBeforeADeletion();
    void textsComeBackAsTyped_data();
    void textsComeBackAsTyped();
};

void TestScreenWrites::databaseGoesAway_data()
{
    QTest::addColumn<QString>("writing");
    for (const QString &name : Writings().keys())
        QTest::newRow(qPrintable(name)) << name;
}

/// The error is told, nothing is written, what was typed stands; the same key writes it when the database is back.
void TestScreenWrites::databaseGoesAway()
{
    if (test::Database::OnServer())
        QSKIP("the file of an embedded database is moved");
    QFETCH(QString, writing);
    const Writing act = Writings().value(writing);
    test::Desk t;
    const QString file = t.database.Name();
    QStringList before;
    act.open(t, [&](QWidget *screen) {
        before = t.database.Rows(act.rows);
        act.type(screen);
        QVERIFY(QFile::rename(file, file + u".away"_s));
        test::Drive(act.write, [](QWidget *box) {
            QVERIFY(qobject_cast<QMessageBox *>(box));
            test::Press(Qt::Key_Return);
        });
        QVERIFY(QFile::rename(file + u".away"_s, file));
        QCOMPARE(t.database.Rows(act.rows), before);
        QVERIFY(screen->isVisible());
        if (!act.typed.isEmpty())
            QCOMPARE(screen->findChild<QLineEdit *>(act.typed == u"*" ? QString() : act.typed)->text(), u"نو"_s);
        act.write();
        QVERIFY(t.database.Rows(act.rows) != before);
        if (screen->isVisible())
            test::Press(Qt::Key_Escape);
    });
}

void TestScreenWrites::databaseGoesAwayBeforeADeletion()
{
    if (test::Database::OnServer())
        QSKIP("the file of an embedded database is moved");
    test::QuietEntities desk;
    desk.database.Exec(u"INSERT INTO Units (Code, Name) VALUES (900, N'نو')"_s);
    const QString file = desk.database.Name();
    desk.messages.Answer(true);
    QVERIFY(QFile::rename(file, file + u".away"_s));
    QVERIFY_THROWS_EXCEPTION(host::DatabaseError, desk.entities.Delete_Entity(TSoftwarePart::Units, 900, false));
    QVERIFY(QFile::rename(file + u".away"_s, file));
    QVERIFY(desk.entities.Find(TSoftwarePart::Units, 900).has_value());
    desk.messages.Answer(true);
    QCOMPARE(desk.entities.Delete_Entity(TSoftwarePart::Units, 900, false), int(desk::Entities::Removed));
    QCOMPARE(desk.messages.TakeAll().size(), 2); // the questions
}

void TestScreenWrites::textsComeBackAsTyped_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << u"O'Brien ''\" `x`"_s;
    QTest::newRow("signs of patterns") << u"50% _a_ [b-c] [^d] \\"_s;
    QTest::newRow("places of parameters") << u"%1 و %2 %L3"_s;
    QTest::newRow("marks of a page") << u"<b>درشت</b> &amp; &x"_s;
    QTest::newRow("emoji") << u"چای \U0001F375\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
    QTest::newRow("four bytes") << u"\U00010380\U000103C9 𠮷野家"_s;
    QTest::newRow("directions") << u"\u200Fراست \u202Bچپ\u202C \u200Eabc"_s;
    QTest::newRow("both kinds of letters") << u"كيك ـ کیک ة ۀ أ"_s;
}

void TestScreenWrites::textsComeBackAsTyped()
{
    QFETCH(QString, text);
    test::Desk t;
    for (const TSoftwarePart part : {TSoftwarePart::GoodsGroups, TSoftwarePart::Stores, TSoftwarePart::Units}) {
        test::Drive([&] { t.desk.entities.New_Group(part); },
                    [&](QWidget *editor) {
                        test::Enter(editor, u"Code_EDT"_s, u"900"_s);
                        test::Enter(editor, u"Name_EDT"_s, text);
                        test::Enter(editor, u"Comment_EDT"_s, text);
                        test::Press(Qt::Key_F3);
                    });
        QCOMPARE(t.desk.entities.Find(part, 900)->Name, text);
        // The search finds it by the same keys, and the editor shows it again.
        test::Drive([&] { t.desk.entities.Call_GroupList(part); },
                    [&](QWidget *list) {
                        const auto &grid = test::Find<host::Grid>(list, u"ListDB_GRD"_s);
                        test::Type(text);
                        QTRY_COMPARE(grid.RowCount(), 1);
                        QCOMPARE(grid.CurrentKey(), u"900"_s);
                        test::Drive([] { test::Press(Qt::Key_F5); },
                                    [&](QWidget *editor) {
                                        QCOMPARE(test::Find<QLineEdit>(editor, u"Name_EDT"_s).text(), text);
                                        QCOMPARE(test::Find<QLineEdit>(editor, u"Comment_EDT"_s).text(), text);
                                        test::Press(Qt::Key_Escape);
                                    });
                        test::Press(Qt::Key_Escape);
                        test::Press(Qt::Key_Escape);
                    });
    }
    OpenRights(t, [&](QWidget *rights) {
        const auto &users = test::Find<QComboBox>(rights, u"User_CMB"_s);
        test::Drive([] { test::Press(Qt::Key_F4); },
                    [&](QWidget *) {
                        test::Type(text);
                        test::Press(Qt::Key_Return);
                    });
        QCOMPARE(t.database.Rows(u"SELECT Name FROM Users WHERE Code = %1"_s.arg(users.currentData().toInt())),
                 QStringList{text});
        QVERIFY2(users.currentText().startsWith(text + u" ("_s), qPrintable(users.currentText()));
        test::Press(Qt::Key_Escape);
    });
    OpenSettings(t, [&](QWidget *settings) {
        test::Enter(settings, u"Barcode3_EDT"_s, text);
        test::Press(Qt::Key_F3);
        test::Press(Qt::Key_Escape);
    });
    QCOMPARE(desk::Settings(t.database.Main()).SettingRecord().ReservedBarcodes[2], text);
}

REGISTER_TEST(TestScreenWrites)
#include "tst_screen_writes.moc"
