// Copies of the database: made while it is open, brought back, and what a desk begins with.

#include "desk/application/backup.h"
#include "desk/application/connections.h"
#include "desk/application/first_start.h"
#include "host/data/database_error.h"
#include "host/data/query.h"
#include "tests/desk/window_fixture.h"
#include "tests/support/test_main.h"

#include <QMessageBox>
#include <QScopeGuard>
#include <QStatusBar>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class TestBackup : public QObject
{
    Q_OBJECT

private slots:
    void comesBack();
    void begins_data();
    void begins();
    void beginsWithACopy();
    void commands();
};

namespace {

/// Works on a database file and lets go of it.
QString Units(const QString &file, const QString &change = {})
{
    const auto remove = qScopeGuard([] { QSqlDatabase::removeDatabase(u"test.backup"_s); });
    QSqlDatabase database = desk::OpenEmbedded(file, u"test.backup"_s);
    const auto close = qScopeGuard([&database] { database.close(); });
    if (!change.isEmpty())
        host::Exec(database, change);
    return host::Scalar(database, u"SELECT MAX(Name) FROM Units"_s).toString();
}

/// Types the name of a file into a chooser. A box that follows adds its text to `said` and is left by `keys`.
void Choose(QWidget *chooser, const QString &file, QStringList &said, const QList<Qt::Key> &keys = {Qt::Key_Return})
{
    delete chooser->parent()->findChild<QTimer *>(u"Boxes"_s); // none came the last time
    auto *poll = new QTimer(chooser->parent());
    poll->setObjectName(u"Boxes"_s);
    QObject::connect(poll, &QTimer::timeout, poll, [=, &said] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !box->isActiveWindow() || !box->focusWidget())
            return;
        poll->deleteLater();
        poll->stop();
        said << box->text();
        for (const Qt::Key key : keys)
            test::Press(key);
    });
    poll->start(5);
    test::Enter(chooser, u"fileNameEdit"_s, file);
    test::Press(Qt::Key_Return);
}

QString LetterIn(const QTemporaryDir &folder)
{
    QFile letter(folder.filePath(u"letter.db"_s));
    return letter.open(QIODevice::WriteOnly) && letter.write("no database at all, whatever its name says") > 0
               ? letter.fileName()
               : QString();
}

} // namespace

void TestBackup::comesBack()
{
    if (test::Database::OnServer())
        QSKIP("a server has backups of its own");
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"goods.db"_s);
    const QString copy = folder.filePath(u"copy.db"_s);
    {
        test::Desk t;
        t.database.Exec(u"UPDATE Units SET Name = N'پیشین'"_s);
        desk::BackUp(t.database.Main(), file);
        desk::BackUp(t.database.Main(), copy);
        desk::BackUp(t.database.Main(), copy); // over a former one
    }
    Units(file, u"UPDATE Units SET Name = N'کنونی'"_s);
    QVERIFY_THROWS_EXCEPTION(host::DatabaseError, desk::Restore(LetterIn(folder), file));
    {
        // Another desk has it open: its journal stands beside it.
        const auto remove = qScopeGuard([] { QSqlDatabase::removeDatabase(u"test.other"_s); });
        QSqlDatabase open = desk::OpenEmbedded(file, u"test.other"_s);
        host::Exec(open, u"UPDATE Units SET Name = N'کنونی'"_s);
        QVERIFY_THROWS_EXCEPTION(host::DatabaseError, desk::Restore(copy, file));
        open.close();
        open = QSqlDatabase();
    }
    QCOMPARE(Units(file), u"کنونی"_s);
    const QString former = desk::Restore(copy, file);
    QCOMPARE(Units(file), u"پیشین"_s);
    QCOMPARE(Units(former), u"کنونی"_s);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 4); // no draft is left
}

void TestBackup::begins_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("begun");
    QTest::addColumn<bool>("demo");
    QTest::newRow("empty shop") << Qt::Key_Space << true << false;
    QTest::newRow("demo shop") << Qt::Key_Tab << true << true;
    QTest::newRow("not now") << Qt::Key_Escape << false << false;
}

void TestBackup::begins()
{
    QFETCH(Qt::Key, key);
    std::optional<desk::Beginning> beginning;
    test::Drive([&] { beginning = desk::AskForBeginning(u"/home/shop/goods.db"_s); },
                [&](QWidget *dialog) {
                    test::Picture(*dialog, u"first-start"_s);
                    test::Press(key);
                    if (key == Qt::Key_Tab)
                        test::Press(Qt::Key_Space);
                });
    QTEST(beginning.has_value(), "begun");
    QTEST(beginning.value_or(desk::Beginning()).demo, "demo");
}

/// What is no copy is told, and the choice stands as before.
void TestBackup::beginsWithACopy()
{
    if (test::Database::OnServer())
        QSKIP("about files");
    const QTemporaryDir folder;
    const test::Database copy;
    QStringList said;
    std::optional<desk::Beginning> beginning;
    test::Drive([&] { beginning = desk::AskForBeginning(folder.filePath(u"goods.db"_s)); },
                [&](QWidget *dialog) {
                    for (const QString &file : {LetterIn(folder), copy.Name()}) {
                        QVERIFY(dialog->isVisible());
                        test::Focus(dialog, u"Backup_BTN"_s);
                        test::Drive([] { test::Press(Qt::Key_Space); },
                                    [&](QWidget *chooser) { Choose(chooser, file, said); });
                    }
                });
    QCOMPARE(said.size(), 1);
    QVERIFY2(said.first().contains(u"letter.db"), qPrintable(said.first()));
    QVERIFY(beginning);
    QCOMPARE(beginning->backup, copy.Name());
}

/// The commands of the menu: a copy is written while the desk works; the desk ends only for a copy that it can bring
/// back, and when that is what the user wants.
void TestBackup::commands()
{
    if (test::Database::OnServer())
        QSKIP("a server has backups of its own");
    const QTemporaryDir folder;
    const QString copy = folder.filePath(u"copy.db"_s);
    QStringList said;
    const test::DeskWindow shop;
    const auto run = [&](const QString &command, const QString &file, const QList<Qt::Key> &keys = {Qt::Key_Return}) {
        test::Drive([&] { shop.Run(command); }, [&](QWidget *chooser) { Choose(chooser, file, said, keys); });
        return shop.window->isVisible();
    };
    QVERIFY(run(u"Backup_ACT"_s, folder.filePath(u"copy"_s)));
    QCOMPARE(said, QStringList());
    QVERIFY(shop.window->statusBar()->currentMessage().contains(copy));
    QVERIFY(!Units(copy).isEmpty());

    QVERIFY(run(u"Restore_ACT"_s, LetterIn(folder)));
    QVERIFY(run(u"Restore_ACT"_s, copy)); // No is the default
    QCOMPARE(shop.window->WantedBackup(), QString());
    QVERIFY(!run(u"Restore_ACT"_s, copy, {Qt::Key_Tab, Qt::Key_Space}));
    QCOMPARE(shop.window->WantedBackup(), copy);
    QCOMPARE(said.size(), 3);
    QVERIFY2(said.at(0).contains(u"letter.db") && said.at(1).contains(u"copy.db") && said.at(2) == said.at(1),
             qPrintable(said.join(u'\n')));
}

REGISTER_TEST(TestBackup)
#include "tst_backup.moc"
