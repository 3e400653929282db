#include "desk/application/database_creation.h"
#include "desk/application/options.h"
#include "host/data/database_error.h"
#include "tests/desk/desk_fixture.h"
#include "tests/support/test_main.h"

#include <QtTest>

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
    QTest::newRow("EAN-13 book") << u"978014300723"_s << u"9780143007234"_s;
    QTest::newRow("EAN-13") << u"400638133393"_s << u"4006381333931"_s;
    QTest::newRow("EAN-13, check digit 0") << u"200000000000"_s << u"2000000000008"_s;
    QTest::newRow("EAN-8") << u"9638507"_s << u"96385074"_s;
    QTest::newRow("EAN-8, second") << u"7351353"_s << u"73513537"_s;
    QTest::newRow("six digits") << u"123456"_s << QString();
    QTest::newRow("letters") << u"ABCDEFG"_s << QString();
    QTest::newRow("add-on sign") << u"12345+6"_s << QString();
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
    const QString group = u"INSERT INTO GoodGrpS (Code, Name) VALUES (900, N'نو') "_s;
    const QString store = u"INSERT INTO Stores (Code, Name) VALUES (900, N'نو') "_s;
    const QString unit = u"INSERT INTO Units (Code, Name) VALUES (900, N'نو') "_s;
    const QString good = u"INSERT INTO GoodInf (Code, GrpCode, Name) VALUES (900, 0, N'نو') "_s;
    QTest::newRow("group with goods")
        << TSoftwarePart::GoodsGroups
        << group + u"UPDATE GoodInf SET GrpCode = 900 WHERE Code = (SELECT MIN(Code) FROM GoodInf)"_s
        << u"کالاهایی در این گروه"_s;
    QTest::newRow("second unit of a good")
        << TSoftwarePart::Units
        << unit + u"UPDATE GoodInf SET Unit2 = 900 WHERE Code = (SELECT MIN(Code) FROM GoodInf)"_s
        << u"کالاهایی با این واحد"_s;
    QTest::newRow("unit of square metres")
        << TSoftwarePart::Units << unit + u"UPDATE Settings SET Value = N'900' WHERE Name = 'SquareMetreUnit'"_s
        << u"متر مربع"_s;
    QTest::newRow("store of a good")
        << TSoftwarePart::Stores
        << store + u"UPDATE GoodInf SET Store = 900 WHERE Code = (SELECT MIN(Code) FROM GoodInf)"_s
        << u"انبار پیش‌فرض"_s;
    QTest::newRow("store with opening stock")
        << TSoftwarePart::Stores
        << store + good + u"INSERT INTO GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1) VALUES (900, 900, 0, 1)"_s
        << u"موجودی اول دوره"_s;
    QTest::newRow("store with movements")
        << TSoftwarePart::Stores
        << store + good +
               u"INSERT INTO Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1) VALUES (900, 900, 1, 1, '1405/02/01', 1)"_s
        << u"گردش کالا"_s;
    QTest::newRow("good with movements")
        << TSoftwarePart::Goods
        << good +
               u"INSERT INTO Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1) VALUES (900, 1, 1, 1, '1405/02/01', 1)"_s
        << u"گردش کالا"_s;
    QTest::newRow("good in an approved opening voucher")
        << TSoftwarePart::Goods
        << good +
               u"INSERT INTO Vouchers (Code, Kind, [Date], Approved) VALUES (900, 1, '1405/01/01', 1) UPDATE GoodInf SET VoucherCode = 900 WHERE Code = 900"_s
        << u"تأیید شده"_s;
    QTest::newRow("good in other vouchers")
        << TSoftwarePart::Goods
        << good +
               u"INSERT INTO Vouchers (Code, Kind, [Date]) VALUES (900, 2, '1405/03/01') INSERT INTO VoucherLines (VoucherCode, GoodCode, Sharh) VALUES (900, 900, N'فروش')"_s
        << u"سندهای حسابداری"_s;
    QTest::newRow("good in the web shop")
        << TSoftwarePart::Goods << good + u"INSERT INTO Market.Product (VelakProductCode) VALUES (900)"_s
        << u"فروشگاه اینترنتی"_s;
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
    QCOMPARE(desk.database.Rows(u"SELECT x.Code FROM (SELECT 900 AS Code UNION ALL SELECT 901) AS x WHERE "_s +
                                desk.entities.InUse(part, u"x.Code"_s)),
             QStringList{u"900"_s});
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
                  "INSERT INTO PhotoGallery (GRPCode, Id_pic, Picture) VALUES (102, 900, 0x01) "
                  "INSERT INTO SelectedList_Detail (SL_Code, Code) SELECT MIN(Code), 900 FROM SelectedLists "
                  "INSERT INTO tmpCostList ([Type], Status, TypeCode, CostLevelCode) VALUES (3, 0, 900, 1) "
                  "INSERT INTO GoodDetailRelation (GoodCode, DetailID) SELECT 900, MIN(ID) FROM DetailTypes"_s);
    desk.stock.SaveStorageAutoOperation(TSoftwarePart::Goods, 900);
    database.Exec(u"Exec AutoVoucherFirstPriodGoods @SaveType = 1, @Codes = '900'"_s);
    QCOMPARE(database.Scalar(u"SELECT Amount1 FROM GoodStock WHERE GoodCode = 900"_s).toString(), u"12.000000000"_s);
    QVERIFY(database.Scalar(u"SELECT VoucherCode FROM GoodInf WHERE Code = 900"_s).toInt() > 0);

    const QStringList places{u"GoodInf WHERE Code"_s,
                             u"GoodCostDiscount WHERE GoodCode"_s,
                             u"GoodFirstAsset WHERE GoodCode"_s,
                             u"Kala_category WHERE Kala_code"_s,
                             u"PhotoGallery WHERE Id_pic"_s,
                             u"GoodStock WHERE GoodCode"_s,
                             u"VoucherLines WHERE GoodCode"_s,
                             u"StorageAutoOperation WHERE OperationCode"_s,
                             u"StorageAutoOperationDetail WHERE GoodCode"_s,
                             u"SelectedList_Detail WHERE Code"_s,
                             u"tmpCostList WHERE TypeCode"_s,
                             u"GoodDetailRelation WHERE GoodCode"_s};
    const auto rows = [&](const QString &which) {
        QStringList counts;
        for (const QString &place : places)
            counts << database.Scalar(u"SELECT COUNT(*) FROM %1 %2 900"_s.arg(place, which)).toString();
        return counts;
    };
    const QStringList others = rows(u"<>"_s);
    desk.messages.Answer(true);
    QCOMPARE(desk.entities.Delete_Entity(TSoftwarePart::Goods, 900, false), int(desk::Entities::Removed));
    QVERIFY(desk.messages.Take().contains(u"«نو»"));
    QCOMPARE(rows(u"="_s), QStringList(places.size(), u"0"_s));
    QCOMPARE(rows(u"<>"_s), others);
}

void TestServices::declinedDeletionDeletesNothing()
{
    test::QuietEntities desk;
    desk.database.Exec(u"INSERT INTO Units (Code, Name) VALUES (900, N'نو')"_s);
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
    QTest::newRow("no fall") << u"1405/01/01"_s << 0 << true;
    QTest::newRow("down to nothing on the lowest day") << u"1405/01/01"_s << -2 << true;
    QTest::newRow("below nothing on the lowest day only") << u"1405/01/01"_s << -3 << false;
    QTest::newRow("after the lowest day") << u"1405/01/03"_s << -7 << true;
    QTest::newRow("too much at the end") << u"1405/01/03"_s << -8 << false;
    QTest::newRow("a rise is never refused") << u"1405/01/01"_s << 3 << true;
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
        "(900, 1, 2, 1, '1405/01/02', -8), (900, 1, 1, 2, '1405/01/03', 5)"_s);
    const QString probe = u"select 900 as Code, 1 as Anbar, %1 as Mogodi"_s.arg(change);
    QCOMPARE(desk.stock.Check_TockMinus(probe, date), enough);
    QCOMPARE(desk.messages.Take().contains(u"«نو»"), !enough);
}

void TestServices::detailsReplaceTheirOwnRow()
{
    test::QuietEntities desk;
    desk::DetailDesk number(desk.database.Main());
    desk::DetailValues values(desk.database.Main(), desk.settings);
    desk::DetailMovements movements(number, values);
    desk::GoodDetails details(desk.database.Main(), desk.messages, movements);
    const QString columns =
        u" (DetailValueID, GoodCode, StoreCode, OperationType, OperationCode, OperationRow, "
        "Amount1, Amount2, TotalAmount, [Length], Width, Amount3, ForeignOperationCode) "
        "SELECT ID, 900, s, t, c, r, a, 0, 0, 0, 0, 0, 0 FROM GoodDetailValues CROSS JOIN (VALUES "_s;
    const QString of = u") AS v(s, t, c, r, a) WHERE GoodCode = 900 "_s;
    desk.database.Exec(u"INSERT INTO GoodInf (Code, GrpCode, Name) VALUES (900, 0, N'نو') "
                       "INSERT INTO GoodDetailValues (GoodCode) VALUES (900) INSERT INTO GoodDetailKardex"_s +
                       columns + u"(1, 3, 900, 1, 1), (1, 3, 900, 2, 3), (1, 3, 6, 1, 4), (1, 2, 900, 1, 5)"_s + of +
                       u"INSERT INTO GoodDetailKardexEnter_Temp"_s + columns +
                       u"(1, 3, 900, 1, 9), (2, 3, 900, 2, 7)"_s + of +
                       u"INSERT INTO GoodInf (Code, GrpCode, Name) VALUES (902, 0, N'باز') INSERT INTO "
                       "GoodDetailKardexEnter_Temp"_s +
                       QString(columns).replace(u"900"_s, u"902"_s) + u"(1, 3, 0, 0, 9)"_s + of);
    // What is entered for the opening row is saved with the good itself, what is entered on a document is not.
    QVERIFY(!details.CheckGoodDetailKardexExists(902));
    desk.database.Exec(u"UPDATE GoodDetailKardexEnter_Temp SET OperationType = 2 WHERE GoodCode = 902"_s);
    QVERIFY(details.CheckGoodDetailKardexExists(902) && !details.GoodDetailsSaved(902));
    const bool recorded = details.CheckGoodDetailKardexExists(900);
    // Row 1 was entered by this desk, row 2 by another one, which goes on with it.
    desk.database.Exec(u"UPDATE GoodDetailKardexEnter_Temp SET Tmp = 0, ComIndex = %1 + OperationRow - 1 WHERE "
                       "GoodCode = 900"_s.arg(number.Number()));
    details.EnterGoodDetailSave(900, host::TOperationType::OpeningStock);
    QVERIFY(recorded && details.CheckGoodDetailKardexExists(900) && !details.CheckGoodDetailKardexExists(901));
    QCOMPARE(desk.database.Rows(u"SELECT Amount1 FROM GoodDetailKardex WHERE GoodCode = 900 ORDER BY Amount1"_s),
             QStringList({u"3"_s, u"4"_s, u"5"_s, u"9"_s}));
    QCOMPARE(desk.database.Rows(u"SELECT Amount1 FROM GoodDetailKardexEnter_Temp WHERE GoodCode = 900"_s),
             QStringList{u"7"_s});
}

void TestServices::openingVoucherFollowsTheGood()
{
    test::QuietEntities desk;
    desk::Vouchers vouchers(desk.database.Main(), desk.messages);
    desk.database.Exec(u"INSERT INTO GoodInf (Code, GrpCode, Name, CostBgPrd) VALUES (900, 0, N'نو', 1500) "
                       "INSERT INTO GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1) VALUES (900, 1, 0, 12)"_s);
    vouchers.SaveInLineAutoVoucher(900);
    const auto line = [&] {
        return desk.database.Rows(
            u"SELECT l.Bedehkar FROM VoucherLines l INNER JOIN GoodInf g ON g.Code = l.GoodCode AND "
            "g.VoucherCode = l.VoucherCode WHERE g.Code = 900"_s);
    };
    QCOMPARE(line(), QStringList{u"18000"_s});
    const int voucher = desk.database.Scalar(u"SELECT VoucherCode FROM GoodInf WHERE Code = 900"_s).toInt();

    desk.database.Exec(u"UPDATE GoodInf SET CostBgPrd = 2000 WHERE Code = 900"_s);
    vouchers.ChangeAutoVouchers(900, voucher, u"1405/01/05"_s);
    QCOMPARE(line(), QStringList{u"24000"_s});
    QCOMPARE(desk.database.Scalar(u"SELECT [Date] FROM Vouchers WHERE Code = %1"_s.arg(voucher)).toString(),
             u"1405/01/05"_s);

    desk.database.Exec(u"UPDATE Vouchers SET Approved = 1 WHERE Code = %1"_s.arg(voucher));
    QVERIFY(vouchers.IsVoucherApproved(voucher, 1, u"حذف کالا"_s, u"اول دوره"_s));
    QVERIFY(desk.messages.Take().contains(u"«اول دوره»"));
    QVERIFY_THROWS_EXCEPTION(std::exception, vouchers.ChangeAutoVouchers(900, voucher, {}));
    QCOMPARE(line(), QStringList{u"24000"_s});
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
                           "DATEADD(minute, -%2, GETDATE()))"_s.arg(code)
                               .arg(minutes));
    };
    const auto left = [&desk] { return desk.database.Rows(u"SELECT Code FROM CodeLock_TBL ORDER BY Code"_s); };
    lock(1, 30);
    lock(2, 5);
    lock(3, 30);
    QVERIFY(!desk.entities.ReserveCode(TSoftwarePart::Goods, 2));
    QVERIFY(desk.entities.ReserveCode(TSoftwarePart::Goods, 1));
    QCOMPARE(left(), (QStringList{u"1"_s, u"2"_s}));
    // Nothing of its own to give back: the abandoned ones go all the same, before the next code is proposed.
    lock(3, 30);
    desk.entities.ReleaseCodes(TSoftwarePart::Units);
    QCOMPARE(left(), (QStringList{u"1"_s, u"2"_s}));
    // Opening rows that were being entered for a store keep it no longer than their desk is there.
    desk.database.Exec(u"INSERT INTO Stores (Code, Name) VALUES (900, N'نو') INSERT INTO CodeLock_TBL (Status, Code, "
                       "UserCode) VALUES (121, 7, 1) INSERT INTO GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1) "
                       "VALUES (-7, 900, 1, 1)"_s);
    QCOMPARE(desk.entities.Delete_Entity(TSoftwarePart::Stores, 900, true), int(desk::Entities::Refused));
    desk.messages.Take();
    desk.database.Exec(u"UPDATE CodeLock_TBL SET LockedAt = DATEADD(minute, -30, GETDATE()) WHERE Status = 121"_s);
    QCOMPARE(desk.entities.Delete_Entity(TSoftwarePart::Stores, 900, true), int(desk::Entities::Removed));
}

void TestServices::scriptsSplitAtGo()
{
    QCOMPARE(desk::Batches(u"one\nGO\n\ngo  \ntwo GO\nGOAL\n"_s), (QStringList{u"one\n"_s, u"two GO\nGOAL\n\n"_s}));
}

void TestServices::commandLineIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{u"--bogus"_s};
    QTest::newRow("stray word") << QStringList{u"goods.db"_s};
    QTest::newRow("user that is no number") << QStringList{u"--user"_s, u"رضا"_s};
    QTest::newRow("two databases") << QStringList{u"--database"_s, u"a"_s, u"--connection"_s, u"b"_s};
}

void TestServices::commandLineIsRefused()
{
    QFETCH(QStringList, arguments);
    QVERIFY_THROWS_EXCEPTION(desk::OptionsError, desk::ReadOptions(QStringList{u"desk"_s} + arguments));
}

void TestServices::createdDatabaseIsWholeOrAbsent()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"new/goods.db"_s);
    const auto breakOff = [](int done, int total) {
        if (done == total / 2)
            throw std::runtime_error("power cut");
    };
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, desk::CreateDatabase(file, false, breakOff));
    QCOMPARE(QDir(folder.filePath(u"new"_s)).entryList(QDir::Files), QStringList());
    desk::CreateDatabase(file, false);
    QCOMPARE(QDir(folder.filePath(u"new"_s)).entryList(QDir::Files), QStringList{u"goods.db"_s});
    const desk::OpenConnections connections({.databaseFile = file, .connection = {}, .tourFolder = {}});
    desk::DeskHost desk(connections.Get());
    QVERIFY(desk.settings.SignIn(1));
    QVERIFY(desk::KeepsPersianLetters(connections.Get().ADOConnection1));
}

REGISTER_TEST(TestServices)
#include "tst_services.moc"
