// A desk killed in the middle of its work leaves whole goods or none, and changes of many goods whole or not at all;
// documents with movements, details and stock likewise.

#include "tests/support/database.h"
#include "tests/support/test_main.h"

#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

class TestDurability : public QObject
{
    Q_OBJECT

private slots:
    void killedWhileSaving();
    void killedWhileChangingMany_data();
    void killedWhileChangingMany();
    void killedWhileSelling_data();
    void killedWhileSelling();
};

namespace {

/// Goods whose rows are not all there, and rows whose good is not there.
const QString Broken =
    u"SELECT g.Code, 'lacks rows' FROM GoodInf g WHERE"
    "  NOT EXISTS (SELECT 1 FROM GoodCostDiscount d WHERE d.GoodCode = g.Code AND d.Discount_Sell_1 = 5"
    "              AND d.Default_CostLevel_Sell_Number = 3)"
    "  OR NOT EXISTS (SELECT 1 FROM GoodFirstAsset a WHERE a.GoodCode = g.Code AND a.tmp = 0 AND a.Amount1 = g.Code)"
    "  OR NOT EXISTS (SELECT 1 FROM Kala_category k WHERE k.Kala_code = g.Code AND k.tmp = 0)"
    "  OR NOT EXISTS (SELECT 1 FROM GoodDetailRelation r WHERE r.GoodCode = g.Code)"
    " UNION ALL SELECT d.GoodCode, 'price without a good' FROM GoodCostDiscount d"
    "  WHERE d.GoodCode NOT IN (SELECT Code FROM GoodInf)"
    " UNION ALL SELECT a.GoodCode, 'opening row without a good' FROM GoodFirstAsset a"
    "  WHERE a.tmp = 0 AND a.GoodCode NOT IN (SELECT Code FROM GoodInf)"
    " UNION ALL SELECT k.Kala_code, 'category without a good' FROM Kala_category k"
    "  WHERE k.tmp = 0 AND k.Kala_code NOT IN (SELECT Code FROM GoodInf)"_s;

/// Goods that have not what the last change gave them, the old value when it was taken back, and changes that lack
/// goods. %1: what the change gives, in the price row d or the good g.
const QString HalfChanged =
    u"SELECT g.Code, 'has another value' FROM GoodInf g INNER JOIN GoodCostDiscount d ON d.GoodCode = g.Code WHERE NOT "
    "EXISTS (SELECT 1 FROM BulkChanges c INNER JOIN BulkChangeGoods j ON j.ChangeID = c.ID INNER JOIN BulkChangeFields f "
    "ON f.ChangeID = c.ID AND f.Place = 1 WHERE c.ID = (SELECT MAX(ID) FROM BulkChanges)"
    "  AND j.GoodCode = g.Code AND j.IsLeft = 0"
    "  AND %1 = CASE WHEN c.GoodsTakenBack IS NULL THEN ISNULL(j.NewPrice, f.NewValue) ELSE j.Old1 END)"
    " UNION ALL SELECT c.ID, 'lacks goods' FROM BulkChanges c WHERE c.Goods <>"
    "  (SELECT COUNT(*) FROM BulkChangeGoods j WHERE j.ChangeID = c.ID)"
    " UNION ALL SELECT c.ID, 'lacks its column' FROM BulkChanges c WHERE NOT EXISTS"
    "  (SELECT 1 FROM BulkChangeFields f WHERE f.ChangeID = c.ID)"_s;

/// Starts a desk, waits for its first work, kills it at a random moment within `span` microseconds.
void KillAtWork(const QStringList &arguments, quint32 span, const char *program = SAVING_DESK)
{
    QProcess desk;
    desk.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    desk.start(QString::fromUtf8(program), arguments);
    QVERIFY2(desk.waitForReadyRead(30000), "the desk saved nothing");
    QThread::usleep(QRandomGenerator::global()->bounded(span));
    desk.kill();
    QVERIFY(desk.waitForFinished());
    QCOMPARE(desk.exitStatus(), QProcess::CrashExit);
}

} // namespace

void TestDurability::killedWhileSaving()
{
    if (test::Database::OnServer())
        QSKIP("about the file of the embedded database");
    test::Database database;
    database.Exec(
        u"INSERT INTO GoodGrpS (Code, Name) VALUES (1, N'گروه')"
        " INSERT INTO Units (Code, Name) VALUES (1, N'عدد')"
        " IF NOT EXISTS (SELECT 1 FROM Stores WHERE Code = 1) INSERT INTO Stores (Code, Name) VALUES (1, N'انبار')"
        " INSERT INTO Categories (Code, Name, Path) VALUES (1, N'دسته', ',1,')"
        " INSERT INTO DetailTypes (Title, DetailType) VALUES (N'رنگ', 2)"
        " INSERT INTO DetailTypes_SelectedLists (Code, Title, DefaultSelectedList) VALUES (1, N'پیش فرض', 1)"
        " INSERT INTO DetailTypes_SelectedList_Detail (SL_Code, Code, Radif)"
        "  SELECT 1, ID, 1 FROM DetailTypes"_s);

    constexpr int Kills = 50;
    int before = 0;
    for (int kill = 0; kill < Kills; ++kill) {
        // A save takes some milliseconds: anywhere within several of them.
        KillAtWork({database.Name()}, 60000);
        if (QTest::currentTestFailed())
            return;
        const QStringList broken = database.Rows(Broken);
        QVERIFY2(broken.isEmpty(), qPrintable(broken.join(u'\n')));
        const int after = database.Scalar(u"SELECT COUNT(*) FROM GoodInf"_s).toInt();
        QVERIFY2(after > before, "what was saved before the kill is gone");
        before = after;
    }
}

void TestDurability::killedWhileChangingMany_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("prices") << u"d.CostLevel_Sell_1"_s;
    QTest::newRow("discounts") << u"d.Discount_Sell_1 = d.Discount_Buy_4 AND d.Discount_Sell_1"_s;
    QTest::newRow("types") << u"g.DaraiGoodType"_s;
}

void TestDurability::killedWhileChangingMany()
{
    QFETCH(QString, value);
    if (test::Database::OnServer())
        QSKIP("about the file of the embedded database");
    test::Database database;
    database.Exec(u"INSERT INTO GoodGrpS (Code, Name) VALUES (1, N'گروه')"_s);
    database.Exec(
        u"INSERT INTO GoodInf (Code, GrpCode, Name) SELECT TOP 1500 ROW_NUMBER() OVER (ORDER BY a.Permission), 1, "
        "N'کالا' FROM UserRights a CROSS JOIN UserRights b"
        " INSERT INTO GoodCostDiscount (GoodCode, CostLevel_Sell_1) SELECT Code, 100 FROM GoodInf"_s);
    constexpr int Kills = 10; // of each kind of change
    for (int kill = 0; kill < Kills; ++kill) {
        KillAtWork({database.Name(), QString::fromUtf8(QTest::currentDataTag())}, 400000);
        if (QTest::currentTestFailed())
            return;
        const QStringList broken = database.Rows(HalfChanged.arg(value));
        QVERIFY2(broken.isEmpty(), qPrintable(QString::number(kill) + u": "_s + broken.join(u'\n').left(500)));
    }
}

void TestDurability::killedWhileSelling_data()
{
    QTest::addColumn<QStringList>("work");
    QTest::addColumn<QString>("counted");
    QTest::newRow("documents") << QStringList() << u"SELECT COUNT(*) FROM Documents"_s;
    QTest::newRow("divisions") << QStringList{u"divide"_s} << u"SELECT COUNT(*) FROM GoodDetailDivision"_s;
}

/// What the check of goods-sql asks is true after each kill.
void TestDurability::killedWhileSelling()
{
    if (test::Database::OnServer())
        QSKIP("about the file of the embedded database");
    QFETCH(QStringList, work);
    QFETCH(QString, counted);
    const test::Database database(test::Database::Content::Demo);
    QFile script(QString::fromUtf8(GOODS_SOURCES) + u"/desk/database/check.sql"_s);
    QVERIFY(script.open(QIODevice::ReadOnly));
    const QStringList checks = QString::fromUtf8(script.readAll()).split(u"\nGO\n"_s, Qt::SkipEmptyParts);
    QVERIFY(checks.size() > 5);
    int before = 0;
    for (int kill = 0; kill < 50; ++kill) {
        KillAtWork(QStringList{database.Name()} + work, 300000, SELLING_DESK); // several documents long
        if (QTest::currentTestFailed())
            return;
        for (const QString &check : checks)
            QCOMPARE(database.Rows(check), QStringList());
        const int after = database.Scalar(counted).toInt();
        QVERIFY2(after > before, "what was saved before the kill is gone");
        before = after;
    }
}

REGISTER_TEST(TestDurability)
#include "tst_durability.moc"
