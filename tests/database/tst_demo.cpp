#include "tests/support/database.h"
#include "tests/support/test_main.h"

#include <QImage>
#include <QSet>
#include <QSqlQuery>
#include <QtTest>

/// The demo data agree with what the program would have written.
class TestDemo : public QObject
{
    Q_OBJECT

private slots:
    void hasNoRows_data();
    void hasNoRows();
    void barcodesAreValidAndUnique();
    void proposesNextCodes();
    void picturesCanBeShown();
    void isWrittenInPersianLetters();

private:
    test::Database m_database{test::Database::Content::Demo};
};

/// Each row is a SELECT of what must not be there.
void TestDemo::hasNoRows_data()
{
    QTest::addColumn<QString>("faults");
    const auto row = [](const char *name, const char *faults) { QTest::newRow(name) << QString::fromUtf8(faults); };
    row("too few goods", "SELECT 1 FROM (SELECT COUNT(*) AS n FROM GoodInf) t WHERE n < 380");
    row("group without goods",
        "SELECT Code FROM GoodGrpS WHERE Code <> 0 AND Code NOT IN (SELECT GrpCode FROM GoodInf)");
    row("name is not composed",
        "SELECT Code FROM GoodInf WHERE Name <> kala_name + N' ' + kala_type + N' ' + kala_index");
    row("name twice", "SELECT Name FROM GoodInf GROUP BY Name HAVING COUNT(*) > 1");
    row("code outside its group", "SELECT Code FROM GoodInf WHERE Code / 10000 <> GrpCode");
    row("no price", "SELECT g.Code FROM GoodInf g LEFT JOIN GoodCostDiscount c ON c.GoodCode = g.Code"
                    " WHERE c.GoodCode IS NULL OR c.CostLevel_Sell_1 <= c.CostLevel_Buy_1 OR c.CostLevel_Buy_1 <= 0"
                    " OR c.CostLevel_Sell_2 > c.CostLevel_Sell_1 OR g.ConsumerPrice < c.CostLevel_Sell_1");
    row("price of no good", "SELECT GoodCode FROM GoodCostDiscount WHERE GoodCode NOT IN (SELECT Code FROM GoodInf)");
    row("ratio without second unit",
        "SELECT Code FROM GoodInf WHERE (Meghdar_Formool > 0 AND Unit2 IS NULL) OR (Meghdar_Formool = 0 AND Unit2 IS NOT"
        " NULL AND Code NOT IN (SELECT GoodCode FROM GoodDetailRelation)) OR Unit IS NULL OR Unit = Unit2");
    row("a piece without its measures",
        "SELECT DetailValueID FROM GoodDetailKardex WHERE [Length] * Width * Amount3 <> CASE WHEN [Length] > 0 THEN"
        " Amount1 ELSE 0 END");
    row("opening total",
        "SELECT g.Code FROM GoodInf g LEFT JOIN (SELECT GoodCode, SUM(Amount1) AS a1, SUM(Amount2) AS a2 FROM"
        " GoodFirstAsset WHERE tmp = 0 GROUP BY GoodCode) a ON a.GoodCode = g.Code"
        " WHERE g.AvaBgPrd <> ISNULL(a.a1, 0) OR g.AvaBgPrd2 <> ISNULL(a.a2, 0)");
    row("row of an editor",
        "SELECT ID FROM GoodFirstAsset WHERE tmp <> 0 UNION ALL SELECT Id FROM Kala_category WHERE tmp <> 0");
    row("category is no leaf", "SELECT k.Id FROM Kala_category k WHERE EXISTS (SELECT 1 FROM Categories c WHERE"
                               " c.ParentCode = k.Category_code)");
    row("path of a category", "SELECT c.Code FROM Categories c LEFT JOIN Categories p ON p.Code = c.ParentCode"
                              " WHERE c.Path <> ISNULL(p.Path, ',') + CAST(c.Code AS varchar(11)) + ','");
    row("good without category", "SELECT Code FROM GoodInf WHERE Code NOT IN (SELECT Kala_code FROM Kala_category)");
    row("negative stock", "SELECT GoodCode FROM GoodStoreStock WHERE Amount1 < 0");
    row("stock tabs",
        "SELECT 1 FROM (SELECT SUM(CASE WHEN Amount1 > 0 THEN 1 ELSE 0 END) AS n, COUNT(*) AS m FROM GoodStock) t"
        " WHERE n < 300 OR n > 390 OR m - n < 10");
    row("goods without voucher", "SELECT Code FROM GoodInf WHERE (AvaBgPrd > 0 AND VoucherCode <> 1) OR"
                                 " (AvaBgPrd = 0 AND VoucherCode <> 0)");
    row("voucher is not balanced", "SELECT VoucherCode FROM VoucherLines GROUP BY VoucherCode HAVING SUM(Bedehkar) <>"
                                   " SUM(Bestankar) OR SUM(Bedehkar) = 0");
    row("clerk may change", "SELECT 1 FROM UserRights WHERE UserCode = 2 AND Permission <> 6");
    row("manager may not",
        "SELECT Permission FROM UserRights WHERE UserCode <> 1 AND CAST(SoftwarePart AS int) * 100 + Permission"
        " NOT IN (SELECT CAST(SoftwarePart AS int) * 100 + Permission FROM UserRights WHERE UserCode = 1)");
}

void TestDemo::hasNoRows()
{
    QFETCH(QString, faults);
    QCOMPARE(m_database.Rows(faults), QStringList());
}

void TestDemo::barcodesAreValidAndUnique()
{
    QSet<QString> seen;
    for (const QString &text : m_database.Rows(u"SELECT AbbName FROM GoodInf"_s)) {
        QVERIFY2(text.startsWith(u'!') && text.endsWith(u'!'), qPrintable(text));
        for (const QString &barcode : text.split(u'!', Qt::SkipEmptyParts)) {
            QVERIFY2(barcode.size() == 13 && barcode.startsWith(u"626"), qPrintable(barcode));
            int sum = 0;
            for (int i = 0; i < 13; ++i)
                sum += barcode.at(i).digitValue() * (i % 2 == 0 ? 1 : 3);
            QVERIFY2(sum % 10 == 0, qPrintable(barcode));
            QVERIFY2(!seen.contains(barcode), qPrintable(barcode));
            seen << barcode;
        }
    }
    QVERIFY(seen.size() > 380);
}

void TestDemo::proposesNextCodes()
{
    for (const QString &group : m_database.Rows(u"SELECT Code FROM GoodGrpS WHERE Code <> 0"_s))
        QCOMPARE(m_database.Scalar(u"EXEC GetGoodInfCode %1, 6"_s.arg(group)).toInt(),
                 m_database.Scalar(u"SELECT MAX(Code) + 1 FROM GoodInf WHERE GrpCode = %1"_s.arg(group)).toInt());
}

void TestDemo::picturesCanBeShown()
{
    QSqlQuery pictures(m_database.Main());
    pictures.setForwardOnly(true);
    QVERIFY(pictures.exec(u"SELECT [h-img] FROM colors UNION ALL SELECT Picture FROM PhotoGallery"_s));
    int count = 0;
    for (; pictures.next(); ++count)
        QVERIFY(!QImage::fromData(pictures.value(0).toByteArray()).isNull());
    QVERIFY(count > 20);
}

void TestDemo::isWrittenInPersianLetters()
{
    // A long text comes whole from either database, and a bit looks the same.
    const QString remark = QString(u"یادداشت "_s).repeated(60).trimmed();
    const QString row =
        u"SELECT CAST(N'%1' AS nvarchar(500)), CAST(1 AS bit), CAST(0.50 AS decimal(9,2))"_s.arg(remark);
    QCOMPARE(m_database.Rows(row), QStringList{remark + u"|true|0.5"_s});
    QCOMPARE(m_database.Scalar(row).toString(), remark);
    for (const QString &text :
         m_database.Rows(u"SELECT Name FROM GoodInf UNION SELECT Name FROM GoodGrpS UNION SELECT Name "
                         "FROM Categories UNION SELECT Name FROM Units"_s))
        QVERIFY2(!text.contains(u'ي') && !text.contains(u'ك') && !text.isEmpty(), qPrintable(text));
}

REGISTER_TEST(TestDemo)
#include "tst_demo.moc"
