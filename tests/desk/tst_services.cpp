#include "tests/desk/desk_fixture.h"
#include "tests/support/test_main.h"

#include "desk/application/database_creation.h"
#include "desk/application/options.h"

#include <QtTest/QtTest>

using host::TPermission;
using host::TSoftwarePart;

class TestServices : public QObject
{
    Q_OBJECT

private slots:
    void barcodesAreCompleted_data();
    void barcodesAreCompleted();
    void deletionIsRefusedInUse_data();
    void deletionIsRefusedInUse();
    void goodIsDeletedWhole();
    void declinedDeletionDeletesNothing();
    void stockMayNotFallBelowZero_data();
    void stockMayNotFallBelowZero();
    void openingVoucherFollowsTheGood();
    void detailsReplaceTheirOwnRow();
    void reservedCodesBelongToOneDesk();
    void reservationsOfDeadDesksFade();
    void scriptsSplitAtGo();
    void commandLineIsRefused_data();
    void commandLineIsRefused();
    void createdDatabaseIsWholeOrAbsent();
};

void TestServices::barcodesAreCompleted_data()
{
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("completed");
    // Published examples of the standard.
    QTest::newRow("EAN-13 book") << u"978014300723"_qs << u"9780143007234"_qs;
    QTest::newRow("EAN-13") << u"400638133393"_qs << u"4006381333931"_qs;
    QTest::newRow("EAN-13, check digit 0") << u"200000000000"_qs << u"2000000000008"_qs;
    QTest::newRow("EAN-8") << u"9638507"_qs << u"96385074"_qs;
    QTest::newRow("EAN-8, second") << u"7351353"_qs << u"73513537"_qs;
    QTest::newRow("six digits") << u"123456"_qs << QString();
    QTest::newRow("letters") << u"ABCDEFG"_qs << QString();
    QTest::newRow("add-on sign") << u"12345+6"_qs << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TestServices::barcodesAreCompleted()
{
    QFETCH(QString, digits);
    QTEST(desk::Barcodes().Complete_Barcode(digits), "completed");
}

void TestServices::deletionIsRefusedInUse_data()
{
    QTest::addColumn<TSoftwarePart>("part");
    QTest::addColumn<QString>("prepare"); ///< statements that bring a new entity into use
    QTest::addColumn<QString>("reason");
    const QString group = u"INSERT INTO GoodGrpS (Code, Name) VALUES (900, N'نو') "_qs;
    const QString store = u"INSERT INTO Stores (Code, Name) VALUES (900, N'نو') "_qs;
    const QString unit = u"INSERT INTO Units (Code, Name) VALUES (900, N'نو') "_qs;
    const QString good = u"INSERT INTO GoodInf (Code, GrpCode, Name) VALUES (900, 0, N'نو') "_qs;
    QTest::newRow("group with goods")
        << TSoftwarePart::GoodsGroups
        << group + u"UPDATE GoodInf SET GrpCode = 900 WHERE Code = (SELECT MIN(Code) FROM GoodInf)"_qs
        << u"کالاهایی در این گروه"_qs;
    QTest::newRow("second unit of a good")
        << TSoftwarePart::Units
        << unit + u"UPDATE GoodInf SET Unit2 = 900 WHERE Code = (SELECT MIN(Code) FROM GoodInf)"_qs
        << u"کالاهایی با این واحد"_qs;
    QTest::newRow("unit of square metres")
        << TSoftwarePart::Units << unit + u"UPDATE Settings SET Value = N'900' WHERE Name = 'SquareMetreUnit'"_qs
        << u"متر مربع"_qs;
    QTest::newRow("store of a good")
        << TSoftwarePart::Stores
        << store + u"UPDATE GoodInf SET Store = 900 WHERE Code = (SELECT MIN(Code) FROM GoodInf)"_qs
        << u"انبار پیش‌فرض"_qs;
    QTest::newRow("store with opening stock")
        << TSoftwarePart::Stores
        << store + good + u"INSERT INTO GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1) VALUES (900, 900, 0, 1)"_qs
        << u"موجودی اول دوره"_qs;
    QTest::newRow("store with movements")
        << TSoftwarePart::Stores
        << store + good +
               u"INSERT INTO Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1) VALUES (900, 900, 1, 1, '1405/02/01', 1)"_qs
        << u"گردش کالا"_qs;
    QTest::newRow("good with movements")
        << TSoftwarePart::Goods
        << good +
               u"INSERT INTO Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1) VALUES (900, 1, 1, 1, '1405/02/01', 1)"_qs
        << u"گردش کالا"_qs;
    QTest::newRow("good in an approved opening voucher")
        << TSoftwarePart::Goods
        << good +
               u"INSERT INTO Vouchers (Code, Kind, [Date], Approved) VALUES (900, 1, '1405/01/01', 1) UPDATE GoodInf SET VoucherCode = 900 WHERE Code = 900"_qs
        << u"تأیید شده"_qs;
    QTest::newRow("good in other vouchers")
        << TSoftwarePart::Goods
        << good +
               u"INSERT INTO Vouchers (Code, Kind, [Date]) VALUES (900, 2, '1405/03/01') INSERT INTO VoucherLines (VoucherCode, GoodCode, Sharh) VALUES (900, 900, N'فروش')"_qs
        << u"سندهای حسابداری"_qs;
    QTest::newRow("good in the web shop")
        << TSoftwarePart::Goods << good + u"INSERT INTO Market.Product (VelakProductCode) VALUES (900)"_qs
        << u"فروشگاه اینترنتی"_qs;
}

void TestServices::deletionIsRefusedInUse()
{
    QFETCH(TSoftwarePart, part);
    QFETCH(QString, prepare);
    QFETCH(QString, reason);
    test::QuietEntities desk;
    desk.database.Exec(prepare);
    QCOMPARE(desk.entities.Delete_Entity(part, 900, false), int(desk::Entities::Refused));
    const QString said = desk.messages.Take();
    QVERIFY2(said.contains(u"«نو»") && said.contains(reason), qPrintable(said));
    QVERIFY(desk.entities.Find(part, 900).has_value());
}

void TestServices::goodIsDeletedWhole()
{
    test::QuietEntities desk;
    const test::Database &database = desk.database;
    // A good with opening stock, its automatic document, voucher, prices, categories and a photo, but no movement.
    database.Exec(u"INSERT INTO GoodInf (Code, GrpCode, Name, CostBgPrd) VALUES (900, 0, N'نو', 1500) "
                  "INSERT INTO GoodCostDiscount (GoodCode) VALUES (900) "
                  "INSERT INTO GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1) VALUES (900, 1, 0, 12) "
                  "INSERT INTO Kala_category (Kala_code, Category_code) SELECT 900, MIN(Code) FROM Categories "
                  "INSERT INTO PhotoGallery (GRPCode, Id_pic, Picture) VALUES (102, 900, 0x01)"_qs);
    desk.stock.SaveStorageAutoOperation(TSoftwarePart::Goods, 900);
    database.Exec(u"Exec AutoVoucherFirstPriodGoods @SaveType = 1, @Codes = '900'"_qs);
    QCOMPARE(database.Scalar(u"SELECT Amount1 FROM GoodStock WHERE GoodCode = 900"_qs).toString(), u"12.000000000"_qs);
    QVERIFY(database.Scalar(u"SELECT VoucherCode FROM GoodInf WHERE Code = 900"_qs).toInt() > 0);

    desk.messages.Answer(true);
    QCOMPARE(desk.entities.Delete_Entity(TSoftwarePart::Goods, 900, false), int(desk::Entities::Removed));
    QVERIFY(desk.messages.Take().contains(u"«نو»"));
    const QStringList places{u"GoodInf WHERE Code"_qs,
                             u"GoodCostDiscount WHERE GoodCode"_qs,
                             u"GoodFirstAsset WHERE GoodCode"_qs,
                             u"Kala_category WHERE Kala_code"_qs,
                             u"PhotoGallery WHERE Id_pic"_qs,
                             u"GoodStock WHERE GoodCode"_qs,
                             u"VoucherLines WHERE GoodCode"_qs,
                             u"StorageAutoOperation WHERE OperationCode"_qs,
                             u"StorageAutoOperationDetail WHERE GoodCode"_qs};
    for (const QString &place : places)
        QVERIFY2(database.Scalar(u"SELECT COUNT(*) FROM %1 = 900"_qs.arg(place)).toInt() == 0, qPrintable(place));
}

void TestServices::declinedDeletionDeletesNothing()
{
    test::QuietEntities desk;
    desk.database.Exec(u"INSERT INTO Units (Code, Name) VALUES (900, N'نو')"_qs);
    desk.messages.Answer(false);
    QCOMPARE(desk.entities.Delete_Entity(TSoftwarePart::Units, 900, false), int(desk::Entities::Declined));
    desk.messages.Take();
    QVERIFY(desk.entities.Find(TSoftwarePart::Units, 900).has_value());
    QCOMPARE(desk.entities.Delete_Entity(TSoftwarePart::GoodsGroups, 0, true), int(desk::Entities::Refused));
    QVERIFY(desk.messages.Take().contains(u"کليه کالاها"));
}

void TestServices::stockMayNotFallBelowZero_data()
{
    QTest::addColumn<QString>("date");
    QTest::addColumn<int>("change");
    QTest::addColumn<bool>("enough");
    // Opening 10; then 8 out on the second day, 5 in on the third: 10, 2, 7.
    QTest::newRow("no fall") << u"1405/01/01"_qs << 0 << true;
    QTest::newRow("down to nothing on the lowest day") << u"1405/01/01"_qs << -2 << true;
    QTest::newRow("below nothing on the lowest day only") << u"1405/01/01"_qs << -3 << false;
    QTest::newRow("after the lowest day") << u"1405/01/03"_qs << -7 << true;
    QTest::newRow("too much at the end") << u"1405/01/03"_qs << -8 << false;
    QTest::newRow("a rise is never refused") << u"1405/01/01"_qs << 3 << true;
}

void TestServices::stockMayNotFallBelowZero()
{
    QFETCH(QString, date);
    QFETCH(int, change);
    QFETCH(bool, enough);
    test::QuietEntities desk;
    desk.database.Exec(
        u"INSERT INTO GoodInf (Code, GrpCode, Name) VALUES (900, 0, N'نو') "
        "INSERT INTO GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1) VALUES (900, 1, 0, 10), (900, 2, 0, 99) "
        "INSERT INTO Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1) VALUES "
        "(900, 1, 2, 1, '1405/01/02', -8), (900, 1, 1, 2, '1405/01/03', 5)"_qs);
    const QString probe = u"select 900 as Code, 1 as Anbar, %1 as Mogodi"_qs.arg(change);
    QCOMPARE(desk.stock.Check_TockMinus(probe, date), enough);
    QCOMPARE(desk.messages.Take().contains(u"«نو»"), !enough);
}

void TestServices::detailsReplaceTheirOwnRow()
{
    test::QuietEntities desk;
    desk::GoodDetails details(desk.database.Main(), desk.messages);
    const QString columns =
        u" (DetailValueID, GoodCode, StoreCode, OperationType, OperationCode, OperationRow, "
        "Amount1, Amount2, TotalAmount, [Length], Width, Amount3, ForeignOperationCode) "
        "SELECT ID, 900, s, t, c, r, a, 0, 0, 0, 0, 0, 0 FROM GoodDetailValues CROSS JOIN (VALUES "_qs;
    const QString of = u") AS v(s, t, c, r, a) WHERE GoodCode = 900 "_qs;
    desk.database.Exec(u"INSERT INTO GoodInf (Code, GrpCode, Name) VALUES (900, 0, N'نو') "
                       "INSERT INTO GoodDetailValues (GoodCode) VALUES (900) INSERT INTO GoodDetailKardex"_qs +
                       columns +
                       u"(1, 3, 5, 1, 1), (2, 3, 5, 1, 2), (1, 3, 5, 2, 3), (1, 3, 6, 1, 4), (1, 2, 5, 1, 5)"_qs + of +
                       u"INSERT INTO GoodDetailKardexEnter_Temp"_qs + columns + u"(1, 3, 5, 1, 9)"_qs + of);
    details.EnterGoodDetailSave(900, host::TOperationType::OpeningStock);
    QCOMPARE(desk.database.Rows(u"SELECT Amount1 FROM GoodDetailKardex WHERE GoodCode = 900 ORDER BY Amount1"_qs),
             QStringList({u"2"_qs, u"3"_qs, u"4"_qs, u"5"_qs, u"9"_qs}));
    QVERIFY(desk.database.Rows(u"SELECT ID FROM GoodDetailKardexEnter_Temp WHERE GoodCode = 900"_qs).isEmpty());
}

void TestServices::openingVoucherFollowsTheGood()
{
    test::QuietEntities desk;
    desk::Vouchers vouchers(desk.database.Main(), desk.messages);
    desk.database.Exec(u"INSERT INTO GoodInf (Code, GrpCode, Name, CostBgPrd) VALUES (900, 0, N'نو', 1500) "
                       "INSERT INTO GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1) VALUES (900, 1, 0, 12)"_qs);
    vouchers.SaveInLineAutoVoucher(900);
    const auto line = [&] {
        return desk.database.Rows(
            u"SELECT l.Bedehkar FROM VoucherLines l INNER JOIN GoodInf g ON g.Code = l.GoodCode AND "
            "g.VoucherCode = l.VoucherCode WHERE g.Code = 900"_qs);
    };
    QCOMPARE(line(), QStringList{u"18000"_qs});
    const int voucher = desk.database.Scalar(u"SELECT VoucherCode FROM GoodInf WHERE Code = 900"_qs).toInt();

    desk.database.Exec(u"UPDATE GoodInf SET CostBgPrd = 2000 WHERE Code = 900"_qs);
    vouchers.ChangeAutoVouchers(900, voucher, u"1405/01/05"_qs);
    QCOMPARE(line(), QStringList{u"24000"_qs});
    QCOMPARE(desk.database.Scalar(u"SELECT [Date] FROM Vouchers WHERE Code = %1"_qs.arg(voucher)).toString(),
             u"1405/01/05"_qs);

    desk.database.Exec(u"UPDATE Vouchers SET Approved = 1 WHERE Code = %1"_qs.arg(voucher));
    QVERIFY(vouchers.IsVoucherApproved(voucher, 1, u"حذف کالا"_qs, u"اول دوره"_qs));
    QVERIFY(desk.messages.Take().contains(u"«اول دوره»"));
    QVERIFY_THROWS_EXCEPTION(std::exception, vouchers.ChangeAutoVouchers(900, voucher, {}));
    QCOMPARE(line(), QStringList{u"24000"_qs});
}

void TestServices::reservedCodesBelongToOneDesk()
{
    test::QuietEntities desk;
    desk::Entities other(desk.database.AnotherConnection(), desk.messages, desk.settings, desk.stock);
    QVERIFY(desk.entities.ReserveCode(TSoftwarePart::Goods, 4711));
    QVERIFY(desk.entities.ReserveCode(TSoftwarePart::Goods, 4711));
    QVERIFY(!other.ReserveCode(TSoftwarePart::Goods, 4711));
    QVERIFY(other.ReserveCode(TSoftwarePart::Units, 4711));
    other.ReleaseCodes(TSoftwarePart::Goods);
    QVERIFY(!other.ReserveCode(TSoftwarePart::Goods, 4711));
    desk.entities.ReleaseCodes(TSoftwarePart::Goods);
    QVERIFY(other.ReserveCode(TSoftwarePart::Goods, 4711));
}

void TestServices::reservationsOfDeadDesksFade()
{
    test::QuietEntities desk;
    const auto lock = [&desk](int code, int minutes) {
        desk.database.Exec(u"INSERT INTO CodeLock_TBL (Status, Code, UserCode, LockedAt) VALUES (102, %1, 1, "
                           "DATEADD(minute, -%2, GETDATE()))"_qs.arg(code)
                               .arg(minutes));
    };
    const auto left = [&desk] { return desk.database.Rows(u"SELECT Code FROM CodeLock_TBL ORDER BY Code"_qs); };
    lock(1, 30);
    lock(2, 5);
    lock(3, 30);
    QVERIFY(!desk.entities.ReserveCode(TSoftwarePart::Goods, 2));
    QVERIFY(desk.entities.ReserveCode(TSoftwarePart::Goods, 1));
    QCOMPARE(left(), (QStringList{u"1"_qs, u"2"_qs}));
    // Nothing of its own to give back: the abandoned ones go all the same, before the next code is proposed.
    lock(3, 30);
    desk.entities.ReleaseCodes(TSoftwarePart::Units);
    QCOMPARE(left(), (QStringList{u"1"_qs, u"2"_qs}));
}

void TestServices::scriptsSplitAtGo()
{
    QCOMPARE(desk::Batches(u"one\nGO\n\ngo  \ntwo GO\nGOAL\n"_qs), (QStringList{u"one\n"_qs, u"two GO\nGOAL\n\n"_qs}));
}

void TestServices::commandLineIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{u"--bogus"_qs};
    QTest::newRow("stray word") << QStringList{u"goods.db"_qs};
    QTest::newRow("user that is no number") << QStringList{u"--user"_qs, u"رضا"_qs};
    QTest::newRow("two databases") << QStringList{u"--database"_qs, u"a"_qs, u"--connection"_qs, u"b"_qs};
}

void TestServices::commandLineIsRefused()
{
    QFETCH(QStringList, arguments);
    QVERIFY_THROWS_EXCEPTION(desk::OptionsError, desk::ReadOptions(QStringList{u"desk"_qs} + arguments));
}

void TestServices::createdDatabaseIsWholeOrAbsent()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"new/goods.db"_qs);
    const auto breakOff = [](int done, int total) {
        if (done == total / 2)
            throw std::runtime_error("power cut");
    };
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, desk::CreateDatabase(file, false, breakOff));
    QCOMPARE(QDir(folder.filePath(u"new"_qs)).entryList(QDir::Files), QStringList());
    desk::CreateDatabase(file, false);
    QCOMPARE(QDir(folder.filePath(u"new"_qs)).entryList(QDir::Files), QStringList{u"goods.db"_qs});
    const desk::OpenConnections connections({.databaseFile = file, .connection = {}, .tourFolder = {}});
    desk::DeskHost desk(connections.Get());
    QVERIFY(desk.settings.SignIn(1));
    QVERIFY(desk::KeepsPersianLetters(connections.Get().ADOConnection1));
}

Q_DECLARE_METATYPE(host::TSoftwarePart)

REGISTER_TEST(TestServices)
#include "tst_services.moc"
