#include "tests/support/database.h"
#include "tests/support/test_main.h"

#include <QtTest>

namespace {

QString Call(const QString &arguments)
{
    return u"DECLARE @r int EXEC @r = AutoVoucherFirstPriodGoods %1 SELECT @r AS r"_s.arg(arguments);
}

} // namespace

/// The voucher of the opening stock.
class TestVouchers : public QObject
{
    Q_OBJECT

private slots:
    void follows_data();
    void follows();
};

void TestVouchers::follows_data()
{
    QTest::addColumn<QStringList>("calls"); // a statement as it is, or the arguments of the procedure = its result
    QTest::addColumn<QStringList>("lines"); // voucher, good, debit, credit
    QTest::addColumn<QString>("goods");     // vouchers of the goods 10, 20, 30, 40
    const auto row = [](const char *name, const QStringList &calls, const QStringList &lines, const char *goods) {
        QTest::newRow(name) << calls << lines << QString::fromLatin1(goods);
    };
    const QStringList whole{u"1|NULL|0|1250.5"_s, u"1|10|1000|0"_s, u"1|20|250.5|0"_s};
    const QString none = u"UPDATE GoodInf SET CostBgPrd = 0"_s;
    const QString dearer = u"UPDATE GoodInf SET CostBgPrd = 200 WHERE Code = 10"_s;
    const QString approve = u"UPDATE Vouchers SET Approved = 1"_s;
    // 30 has no price, 40 has rows of an open editor only: neither is in the voucher.
    row("all goods", {u"=1"_s}, whole, "1 1 0 0");
    row("new voucher", {u"@SaveType = 1 =1"_s}, whole, "1 1 0 0");
    row("again without a change", {u"=1"_s, u"=1"_s}, whole, "1 1 0 0");
    row("one good by range", {u"2, 0, '', NULL, NULL, 10, 10, NULL =1"_s}, {u"1|NULL|0|1000"_s, u"1|10|1000|0"_s},
        "1 0 0 0");
    row("list of codes", {u"@Codes = '20,30,20' =1"_s}, {u"1|NULL|0|250.5"_s, u"1|20|250.5|0"_s}, "0 1 0 0");
    row("one good changes", {u"=1"_s, dearer, u"@Codes = '10' =1"_s},
        {u"1|NULL|0|2250.5"_s, u"1|10|2000|0"_s, u"1|20|250.5|0"_s}, "1 1 0 0");
    row("one good loses its value",
        {u"=1"_s, u"UPDATE GoodInf SET CostBgPrd = 0 WHERE Code = 20"_s, u"@Codes = '20' =1"_s},
        {u"1|NULL|0|1000"_s, u"1|10|1000|0"_s}, "1 0 0 0");
    row("nothing has a value", {none, u"=0"_s}, {}, "0 0 0 0");
    row("everything loses its value", {u"=1"_s, none, u"=0"_s}, {}, "0 0 0 0");
    row("second voucher", {u"@Codes = '10' =1"_s, u"@SaveType = 1, @Codes = '20' =2"_s},
        {u"1|NULL|0|1000"_s, u"1|10|1000|0"_s, u"2|NULL|0|250.5"_s, u"2|20|250.5|0"_s}, "1 2 0 0");
    row("number given", {u"@SanadCode = 7 =7"_s}, {u"7|NULL|0|1250.5"_s, u"7|10|1000|0"_s, u"7|20|250.5|0"_s},
        "7 7 0 0");
    row("a good moves to another voucher", {u"=1"_s, u"1, 0, '', NULL, NULL, 20, 20 =2"_s},
        {u"1|NULL|0|1000"_s, u"1|10|1000|0"_s, u"2|NULL|0|250.5"_s, u"2|20|250.5|0"_s}, "1 2 0 0");
    row("taken out", {u"=1"_s, u"@SaveType = 3, @Codes = '10' =1"_s}, {u"1|NULL|0|250.5"_s, u"1|20|250.5|0"_s},
        "0 1 0 0");
    row("last one taken out", {u"@Codes = '10' =1"_s, u"@SaveType = 3, @Codes = '10' =0"_s}, {}, "0 0 0 0");
    row("approved", {u"=1"_s, approve, dearer, u"@Codes = '10' =-1"_s}, whole, "1 1 0 0");
    row("another good beside an approved voucher", {u"@Codes = '10' =1"_s, approve, u"@Codes = '20' =2"_s},
        {u"1|NULL|0|1000"_s, u"1|10|1000|0"_s, u"2|NULL|0|250.5"_s, u"2|20|250.5|0"_s}, "1 2 0 0");
    row("created in a span", {u"@FromDate = '1405/01/10', @ToDate = '1405/01/31' =1"_s},
        {u"1|NULL|0|250.5"_s, u"1|20|250.5|0"_s}, "0 1 0 0");
    row("another kind of voucher is left alone",
        {u"INSERT INTO Vouchers (Code, Kind, [Date]) VALUES (4, 2, '1405/03/01')"_s, u"@Codes = '10' =5"_s},
        {u"5|NULL|0|1000"_s, u"5|10|1000|0"_s}, "5 0 0 0");
}

void TestVouchers::follows()
{
    QFETCH(QStringList, calls);
    test::Database database;
    database.Exec(
        u"INSERT INTO GoodGrpS (Code, Name) VALUES (1, N'یک')\nINSERT INTO Stores (Code, Name) VALUES (1, N'الف'), (2, "
        "N'ب')\n"
        "INSERT INTO GoodInf (Code, GrpCode, Name, CostBgPrd, CreatedDate) VALUES (10, 1, N'a', 100, '1405/01/05'),"
        " (20, 1, N'b', 83.5, '1405/01/20'), (30, 1, N'c', 0, '1405/01/20'), (40, 1, N'd', 9, '1405/02/01')\n"
        "INSERT INTO GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1, Radif) VALUES (10, 1, 0, 4, 1), (10, 2, 0, 6, "
        "2),"
        " (20, 1, 0, 3, 1), (30, 1, 0, 5, 1), (40, 1, 1, 5, 1)"_s);
    static const QRegularExpression procedure(u"^(.*)=(-?\\d+)$"_s);
    for (const QString &each : calls) {
        const auto match = procedure.match(each);
        if (match.hasMatch())
            QCOMPARE(database.Scalar(Call(match.captured(1))).toInt(), match.captured(2).toInt());
        else
            database.Exec(each);
    }
    QTEST(database.Rows(u"SELECT VoucherCode, GoodCode, Bedehkar, Bestankar FROM VoucherLines"
                        " ORDER BY VoucherCode, GoodCode"_s),
          "lines");
    QTEST(database.Rows(u"SELECT VoucherCode FROM GoodInf ORDER BY Code"_s).join(u' '), "goods");
    QCOMPARE(database.Rows(u"SELECT Code FROM Vouchers WHERE Kind = 1 AND NOT EXISTS (SELECT 1 FROM VoucherLines l"
                           " WHERE l.VoucherCode = Vouchers.Code)"_s),
             QStringList());
}

REGISTER_TEST(TestVouchers)
#include "tst_vouchers.moc"
