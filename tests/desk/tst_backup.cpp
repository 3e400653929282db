// Copies of the database: made while it is open, brought back, and what a desk begins with.

#include "desk/application/backup.h"
#include "desk/application/connections.h"
#include "desk/application/first_start.h"
#include "host/data/database_error.h"
#include "host/data/query.h"
#include "tests/desk/desk_fixture.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QScopeGuard>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class TestBackup : public QObject
{
    Q_OBJECT

private slots:
    void comesBack();
    void begins_data();
    void begins();
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
    QFile other(folder.filePath(u"other.db"_s));
    QVERIFY(other.open(QIODevice::WriteOnly) && other.write("no database at all, whatever its name says") > 0);
    other.close();
    QVERIFY_THROWS_EXCEPTION(host::DatabaseError, desk::Restore(other.fileName(), file));
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

REGISTER_TEST(TestBackup)
#include "tst_backup.moc"
