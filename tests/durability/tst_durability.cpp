// A desk killed in the middle of its work leaves whole goods or none.

#include "tests/support/database.h"
#include "tests/support/test_main.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

class TestDurability : public QObject
{
    Q_OBJECT

private slots:
    void killedWhileSaving();
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
        QProcess desk;
        desk.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        desk.start(QString::fromUtf8(SAVING_DESK), {database.Name()});
        QVERIFY2(desk.waitForReadyRead(30000), "the desk saved nothing");
        // A save takes some milliseconds: anywhere within several of them.
        QThread::usleep(QRandomGenerator::global()->bounded(60000U));
        desk.kill();
        QVERIFY(desk.waitForFinished());
        QCOMPARE(desk.exitStatus(), QProcess::CrashExit);

        const QStringList broken = database.Rows(Broken);
        QVERIFY2(broken.isEmpty(), qPrintable(broken.join(u'\n')));
        const int after = database.Scalar(u"SELECT COUNT(*) FROM GoodInf"_s).toInt();
        QVERIFY2(after > before, "what was saved before the kill is gone");
        before = after;
    }
}

REGISTER_TEST(TestDurability)
#include "tst_durability.moc"
