// Databases of earlier and later versions, as the desk opens them.

#include "desk/application/backup.h"
#include "desk/application/database_creation.h"
#include "desk/application/database_opening.h"
#include "desk/application/schema_check.h"
#include "host/data/database_error.h"
#include "tests/support/database.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QCryptographicHash>
#include <QMessageBox>
#include <QtTest>

class TestUpgrade : public QObject
{
    Q_OBJECT

private slots:
    void olderOnesAreBroughtUpToDate_data();
    void olderOnesAreBroughtUpToDate();
    void everythingIsMadeAgain();
    void othersAreLeftAlone_data();
    void othersAreLeftAlone();
    void failsAsAWhole();
    void scriptsAndNumberGoTogether();
};

namespace {

const QString Unnumbered = u"DELETE FROM Settings WHERE Name = 'DatabaseVersion' "_s;

/// Opens a database as the desk does. Each box that stands is answered by the next of the keys, the last one by Esc;
/// what they said is added to `said`.
std::unique_ptr<desk::OpenConnections> Open(const test::Database &database, QList<Qt::Key> keys, QStringList &said)
{
    QTimer poll;
    poll.callOnTimeout(&poll, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !box->isActiveWindow())
            return;
        said << box->text();
        test::Press(keys.isEmpty() ? Qt::Key_Escape : keys.takeFirst());
    });
    poll.start(5);
    return desk::OpenDatabase({.databaseFile = database.Name(), .connection = {}, .tourFolder = {}}, false);
}

/// Tables with their columns, whatever their order.
QStringList Structure(const test::Database &database)
{
    return database.Rows(
        u"SELECT TABLE_NAME, COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, NUMERIC_PRECISION, "
        "NUMERIC_SCALE, IS_NULLABLE FROM INFORMATION_SCHEMA.COLUMNS ORDER BY TABLE_NAME, COLUMN_NAME"_s);
}

QStringList Contents(const test::Database &database)
{
    QStringList rows;
    for (const QString &text : {u"Code, Name, CostBgPrd, MinAva FROM GoodInf ORDER BY Code"_s,
                                u"COUNT(*), SUM(Amount1), SUM(Cost) FROM Kardex"_s, u"* FROM Settings ORDER BY Name"_s,
                                u"GoodCode, Amount1 FROM GoodStock ORDER BY GoodCode"_s, u"COUNT(*) FROM CostLevel"_s,
                                u"* FROM UserRights ORDER BY UserCode, SoftwarePart, Permission"_s})
        rows += database.Rows(u"SELECT "_s + text);
    return rows;
}

QStringList CopiesOf(const test::Database &database)
{
    const QFileInfo place(database.Name());
    return place.absoluteDir().entryList({place.completeBaseName() + u"-*."_s + place.suffix()}, QDir::Files);
}

} // namespace

void TestUpgrade::olderOnesAreBroughtUpToDate_data()
{
    QTest::addColumn<QString>("change");
    QTest::newRow("another number") << Unnumbered;
    QTest::newRow("a table that is reckoned") << u"DROP TABLE GoodStock"_s;
    QTest::newRow("a table with its first rows") << u"DROP TABLE CostLevel"_s;
    QTest::newRow("a table of another schema") << u"DROP TABLE Market.Product DROP SCHEMA Market"_s;
    QTest::newRow("an index") << u"DROP INDEX IX_Kardex_Prices ON Kardex"_s;
    QTest::newRow("a procedure") << u"DROP PROCEDURE GoodInf_Delete"_s;
    QTest::newRow("an older procedure") << Unnumbered + u"DROP PROCEDURE GoodInf_Delete "
                                                        "EXEC('CREATE PROCEDURE GoodInf_Delete AS SELECT 1')"_s;
    QTest::newRow("columns of each kind")
        << u"ALTER TABLE GoodInf DROP COLUMN tags, Position, ConsumerPrice, TaxExempt, kala_type "
           "ALTER TABLE colors DROP COLUMN [h-img] ALTER TABLE Units DROP COLUMN [Type]"_s;
    QTest::newRow("rights of a new part, a setting")
        << u"DELETE FROM UserRights WHERE SoftwarePart = 314 DELETE FROM Settings WHERE Name = 'DivisionWaste' "_s +
               Unnumbered;
}

/// The user is asked, a copy is taken, what is missing comes, and what a shop has written is there as before.
void TestUpgrade::olderOnesAreBroughtUpToDate()
{
    if (test::Database::OnServer())
        QSKIP("about files");
    QFETCH(QString, change);
    const test::Database database(test::Database::Content::Demo);
    const QStringList structure = Structure(database);
    const QStringList contents = Contents(database);
    database.Exec(change + u" CREATE TABLE Own (A int)"_s); // the shop's own stays
    desk::CheckBackup(database.Name());                     // may be brought back
    QStringList said;
    QVERIFY(!Open(database, {Qt::Key_Escape}, said));
    QCOMPARE(CopiesOf(database), QStringList());
    QVERIFY(Open(database, {Qt::Key_Return}, said));
    QCOMPARE(said.size(), 2);
    const QStringList copies = CopiesOf(database);
    QCOMPARE(copies.size(), 1);
    QVERIFY2(said.last().contains(copies.first()), qPrintable(said.last()));
    for (const QString &line : said.last().split(u'\n'))
        QVERIFY2(line.isRightToLeft(), qPrintable(line));
    QCOMPARE(database.Refusal(u"DROP TABLE Own"_s), QString());
    QCOMPARE(Structure(database), structure);
    QCOMPARE(Contents(database), contents);
    database.Exec(u"INSERT INTO GoodInf (Code, GrpCode, Name) VALUES (7, 11, N'چای') EXEC GoodInf_Delete 7"_s);
    QCOMPARE(database.Scalar(u"SELECT COUNT(*) FROM GoodInf WHERE Code = 7"_s).toInt(), 0);
    QVERIFY(Open(database, {}, said));
    QCOMPARE(said.size(), 2); // nothing is asked again
}

/// All that can go and come back, at once: each column that may be NULL and is in no key or index, the procedures.
void TestUpgrade::everythingIsMadeAgain()
{
    const test::Database database;
    const QStringList structure = Structure(database);
    for (const QString &column :
         database.Rows(u"SELECT TABLE_SCHEMA + '.' + TABLE_NAME + ' DROP COLUMN [' + COLUMN_NAME "
                       "+ ']' FROM INFORMATION_SCHEMA.COLUMNS WHERE IS_NULLABLE = 'YES'"_s))
        static_cast<void>(database.Refusal(u"ALTER TABLE "_s + column)); // not the last of a table, nor one of a key
    for (const QString &routine :
         database.Rows(u"SELECT ROUTINE_TYPE + ' ' + ROUTINE_NAME FROM INFORMATION_SCHEMA.ROUTINES"_s))
        database.Exec(u"DROP "_s + routine);
    QVERIFY(Structure(database).size() + 100 < structure.size());
    desk::UpgradeSchema(database.Main());
    QCOMPARE(Structure(database), structure);
    QVERIFY(desk::CompareSchema(database.Main()).standing == desk::SchemaStanding::Current);
}

void TestUpgrade::othersAreLeftAlone_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("says"); ///< empty for one that can be worked with
    const QString comment = u"ALTER TABLE GoodInf DROP COLUMN Comment ALTER TABLE GoodInf ADD Comment "_s;
    QTest::newRow("what is wider or the shop's own")
        << comment + u"nvarchar(max) NULL ALTER TABLE GoodInf ADD Extra int NULL CREATE TABLE Own (A int)"_s
        << QString();
    QTest::newRow("narrower") << comment + u"nvarchar(400) NULL"_s << u"GoodInf.Comment (nvarchar)"_s;
    QTest::newRow("of another type") << comment + u"int NULL"_s << u"GoodInf.Comment (int)"_s;
    QTest::newRow("fewer digits")
        << u"ALTER TABLE GoodInf DROP COLUMN MinAva ALTER TABLE GoodInf ADD MinAva decimal(23,4) "
           "NOT NULL DEFAULT 0"_s
        << u"GoodInf.MinAva (decimal)"_s;
    QTest::newRow("nothing to fill a column with") << u"ALTER TABLE Units DROP COLUMN Name"_s << u"Units.Name"_s;
    QTest::newRow("without the company") << u"DROP TABLE inf_co"_s << u"inf_co"_s;
    QTest::newRow("a later version") << u"UPDATE Settings SET Value = N'9999' WHERE Name = 'DatabaseVersion' "
                                        "ALTER TABLE Units DROP COLUMN Name"_s
                                     << u"نسخه‌ی تازه‌تری"_s;
}

void TestUpgrade::othersAreLeftAlone()
{
    QFETCH(QString, change);
    QFETCH(QString, says);
    const test::Database database;
    database.Exec(change);
    const QString trouble = desk::SchemaTrouble(desk::CompareSchema(database.Main()), u"goods.db"_s);
    QVERIFY2(says.isEmpty() ? trouble.isEmpty() : trouble.contains(u"goods.db") && trouble.contains(says),
             qPrintable(trouble));
    if (says.isEmpty() || test::Database::OnServer())
        return;
    QStringList said;
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, Open(database, {}, said));
    QCOMPARE(said, QStringList());
    QVERIFY_THROWS_EXCEPTION(host::DatabaseError, desk::CheckBackup(database.Name()));
}

/// What stops in the middle leaves the database as it was, and the question again.
void TestUpgrade::failsAsAWhole()
{
    if (test::Database::OnServer())
        QSKIP("about files");
    const test::Database database;
    database.Exec(Unnumbered +
                  u"DROP TABLE BulkImportTitles DROP PROCEDURE GoodInf_Delete "
                  "DROP INDEX IX_GoodDetailDivisionDetailItems_DivisionCode ON GoodDetailDivisionDetailItems "
                  "INSERT INTO GoodDetailDivision (Code, [Date]) VALUES (1, '1405/01/01') "
                  "INSERT INTO GoodDetailDivisionDetailItems (DivisionCode, DivisionRow, OperationRow) "
                  "VALUES (1, 1, 1), (1, 1, 1)"_s);
    const QStringList structure = Structure(database);
    QStringList said;
    QVERIFY(!Open(database, {Qt::Key_Return, Qt::Key_Return, Qt::Key_Return, Qt::Key_Return, Qt::Key_Escape}, said));
    QCOMPARE(said.size(), 5);
    QVERIFY2(said.at(1).contains(u"همان است که بود") && said.at(0) == said.at(2) && said.at(0) == said.at(4),
             qPrintable(said.join(u'\n')));
    QCOMPARE(CopiesOf(database).size(), 1);
    QCOMPARE(Structure(database), structure);
    QVERIFY(database.Scalar(u"SELECT OBJECT_ID('GoodInf_Delete')"_s).isNull());
    QCOMPARE(database.Rows(u"SELECT Value FROM Settings WHERE Name = 'DatabaseVersion'"_s), QStringList());
    database.Exec(u"UPDATE GoodDetailDivisionDetailItems SET OperationRow = ID"_s);
    QVERIFY(Open(database, {Qt::Key_Return}, said));
}

/// A change of a script without a higher number would leave the databases of shops as they are.
void TestUpgrade::scriptsAndNumberGoTogether()
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    static const QRegularExpression unsaid(u"--[^\n]*|\\s+"_s);
    for (const QString &name : {u"schema.sql"_s, u"procedures.sql"_s})
        hash.addData(desk::DatabaseScript(name).remove(unsaid).toUtf8());
    const QByteArray known = "fec87f5259981428fc6a388cdfbf8371948b2256";
    QVERIFY2(hash.result().toHex() == known,
             "raise DatabaseVersion in schema.sql, then put here: " + hash.result().toHex());
}

REGISTER_TEST(TestUpgrade)
#include "tst_upgrade.moc"
