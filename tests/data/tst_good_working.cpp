// The working rows of an open good editor: prices, opening stock, detail types, categories, photos.

#include "data/goods/opening_copy.h"
#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "tests/data/desk_fixture.h"
#include "tests/support/test_main.h"

#include <QTest>

using fixture::Desk;
using fixture::Good;

class TestGoodWorking : public fixture::Test
{
    Q_OBJECT

private slots:
    void pricesOfANewGood();
    void pricesOfAnOldGood();
    void singleStoreOpening_data();
    void singleStoreOpening();
    void severalStores();
    void savingOpeningStockSeesOtherDesks();
    void openingVoucher();
    void detailTypes();
    void detailOrder();
    void detailTypesOfManyGoods_data();
    void detailTypesOfManyGoods();
    void categories();
    void categoriesOfTwoDesks();
    void photos();
    void lists();

private:
    QStringList Rows(const QString &text) const { return m_database->Rows(text); }
    void MakeDetailTypes() const
    {
        m_database->Exec(u"insert into DetailTypes (Title, DetailType) values (N'رنگ', 1), (N'شرح', 2), (N'سریال', 3), "
                         "(N'وزن', 4), (N'تاریخ', 5), (N'بارکد', 6), (N'وضعیت', 7)"_s);
    }
};

void TestGoodWorking::pricesOfANewGood()
{
    TGood_DM &goods = m_desk->goods;
    goods.CostLevel_Prepare(501, 2);
    goods.CostLevel_Prepare(501, 2); // an editor closed without clearing leaves nothing twice
    QCOMPARE(Rows(u"select Status, count(*), count(distinct CostLevelCode), max(Cost), max(cast([Default] as int)) "
                  "from tmpCostList where Type = 3 and TypeCode = 501 group by Status order by Status"_s),
             QStringList({u"0|10|10|0|0"_s, u"1|10|10|0|0"_s}));
    // Levels are shown by their numbers, in whatever order the database gives the rows.
    m_database->Exec(u"delete from tmpCostList where Status = 0 and CostLevelCode = 1; insert into tmpCostList (Type, "
                     "Status, TypeCode, CostLevelCode, Cost, [Default]) values (3, 0, 501, 1, 0, 0)"_s);
    goods.CostLevel_Sell_GetAll(501);
    goods.CostLevel_Buy_GetAll(501);
    QVERIFY(goods.CostLevel_Sell_NotSelect(4));
    QVERIFY(goods.SellDetails_QRY.Locate(u"CostLevelCode", 4));
    const int row = goods.SellDetails_QRY.CurrentRow();
    QVERIFY(goods.SellDetails_QRY.setData(goods.SellDetails_QRY.index(row, goods.SellDetails_QRY.ColumnIndex(u"Cost")),
                                          u"۱٬۵۰۰٫۱۲۵"_s));
    goods.SellDetails_QRY.Post();
    QVERIFY(!goods.CostLevel_Sell_NotSelect(4));
    QVERIFY(goods.CostLevel_Buy_NotSelect(4));

    goods.CostLevel_Sell_Update(501, 2);
    goods.CostLevel_Buy_Update(501, 7);
    goods.CostLevel_Sell_Update(501, 4);
    goods.CostLevel_Sell_GetAll(501);
    goods.CostLevel_Buy_GetAll(501);
    QCOMPARE(goods.SellDetails_QRY.RecordCount(), 10);
    for (int i = 0; i < 10; ++i) {
        QCOMPARE(goods.SellDetails_QRY.FieldAt(i, u"CostLevelCode").toInt(), i + 1);
        const bool isDefault = i + 1 == 4;
        QCOMPARE(goods.SellDetails_QRY.FieldAt(i, u"deftitle").toString(), isDefault ? u"*"_s : QString());
    }

    goods.Good_Insert(Good(501));
    const quint64 before = host::StatementsSent();
    goods.CostLevel_Save(501);
    QCOMPARE(host::StatementsSent() - before, quint64(1));
    goods.CostLevel_DeleteTemp(501);
    QCOMPARE(Rows(u"select CostLevel_Sell_3, CostLevel_Sell_4, Default_CostLevel_Sell_Number, CostLevel_Buy_7, "
                  "Default_CostLevel_Buy_Number, Discount_Sell_2 from GoodCostDiscount"_s),
             QStringList{u"0|1500.125|4|0|7|2.5"_s});
    QCOMPARE(m_database->Scalar(u"select count(*) from tmpCostList"_s).toInt(), 0);
}

void TestGoodWorking::pricesOfAnOldGood()
{
    TGood_DM &goods = m_desk->goods;
    goods.Good_Insert(Good(501));
    QStringList set;
    for (int level = 1; level <= 10; ++level) {
        set += u"CostLevel_Sell_%1 = 12345678901234.12345678%1 % 1000 + %1, CostLevel_Buy_%1 = %1.%1"_s.arg(level);
    }
    m_database->Exec(
        u"update GoodCostDiscount set Default_CostLevel_Sell_Number = 3, Default_CostLevel_Buy_Number = 10, "_s +
        set.join(u", "));
    const QStringList saved = Rows(u"select * from GoodCostDiscount"_s);
    m_database->Exec(
        u"insert into tmpCostList (Type, Status, TypeCode, CostLevelCode, Cost) values (3, 0, 999, 1, 5)"_s);
    goods.CostLevel_Prepare(501, 3);
    goods.CostLevel_Sell_GetAll(501);
    goods.CostLevel_Buy_GetAll(501);
    const quint64 before = host::StatementsSent();
    goods.CostLevel_Save(501);
    QCOMPARE(host::StatementsSent(), before); // nothing was changed
    QCOMPARE(Rows(u"select * from GoodCostDiscount"_s), saved);

    // Another desk types prices and does not save, a third changes what is stored.
    Desk other(m_database->AnotherConnection(), *m_database);
    other.goods.CostLevel_Prepare(501, 3);
    m_database->Exec(u"update tmpCostList set Cost = 777 where TypeCode = 501 "
                     "update GoodCostDiscount set CostLevel_Sell_5 = 55, CostLevel_Buy_1 = 11"_s);
    goods.CostLevel_Save(501);
    QVERIFY(goods.SellDetails_QRY.Locate(u"CostLevelCode", 4));
    goods.SellDetails_QRY.Edit();
    goods.SellDetails_QRY.SetField(u"Cost", u"44"_s);
    QVERIFY(goods.CostLevel_Restore(TGood_DM::Side::Sell, 501));
    goods.CostLevel_Save(501);
    QCOMPARE(Rows(u"select CostLevel_Sell_4, CostLevel_Sell_5, CostLevel_Buy_1, CostLevel_Buy_2 from "
                  "GoodCostDiscount"_s),
             QStringList{u"44|55|11|2.2"_s});
    QList<host::Entity> levels;
    const int chosen = goods.CostLevel_Sell_Fill(levels, 501);
    QCOMPARE(levels.size(), 1 + m_database->Scalar(u"select count(*) from CostLevel where CostType = 1"_s).toInt());
    QCOMPARE(levels[0].Name, u"پيش فرض"_s);
    QCOMPARE(levels[chosen].Code, 3);
    QCOMPARE(levels[chosen].Name, goods.CostLevel_GetTitle(3));
    levels.clear();
    const int bought = goods.CostLevel_Buy_Fill(levels, 501);
    QCOMPARE(levels[bought].Code, 10);
    QCOMPARE(host::QuantityToText(goods.GoodDefaultCost(501)),
             Rows(u"select CostLevel_Sell_3 from GoodCostDiscount"_s).first());
}

void TestGoodWorking::singleStoreOpening_data()
{
    QTest::addColumn<QString>("working"); // store:amount
    QTest::addColumn<QString>("store");
    QTest::addColumn<long double>("amount");
    QTest::addColumn<bool>("single");
    QTest::addColumn<QStringList>("after");
    const auto row = [](const char *name, const QString &working, const QString &store, long double amount, bool single,
                        const QStringList &after) {
        QTest::newRow(name) << working << store << amount << single << after;
    };
    row("first quantity", QString(), u"2"_s, 0.3L, true, {u"2|0.3|7|1"_s});
    row("nothing to write", QString(), u"2"_s, 0, true, {});
    row("no store", QString(), QString(), 5, true, {});
    row("quantity changes, store stays", u"1:4"_s, u"2"_s, 5, true, {u"1|5|7|1"_s});
    row("quantity goes", u"1:4"_s, u"1"_s, 0, true, {});
    row("one row in another store", u"3:4"_s, u"3"_s, 5, false, {u"3|5|7|1"_s});
    row("several stores are left alone", u"1:4,2:5"_s, u"1"_s, 9, false, {u"1|4|0|1"_s, u"2|5|0|2"_s});
    row("several stores and no quantity", u"1:4,2:5"_s, u"1"_s, 0, false, {u"1|4|0|1"_s, u"2|5|0|2"_s});
}

void TestGoodWorking::singleStoreOpening()
{
    QFETCH(QString, working);
    QFETCH(QString, store);
    QFETCH(long double, amount);
    QFETCH(bool, single);
    QFETCH(QStringList, after);
    m_database->Exec(
        u"insert into GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1) values (999, 3, 1, 1), (501, 3, 0, 1)"_s);
    int radif = 0;
    for (const QString &part : working.split(u',', Qt::SkipEmptyParts)) {
        m_database->Exec(
            u"insert into GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1, Radif) values (501, %1, 1, %2, %3)"_s.arg(
                part.section(u':', 0, 0), part.section(u':', 1), QString::number(++radif)));
    }
    QCOMPARE(m_desk->goods.FirstAsset_NotIsMultiStore(501), single);
    m_desk->goods.FirstAsset_MultiStore(501, store, amount, 7);
    QCOMPARE(Rows(u"select StoreCode, Amount1, Amount2, Radif from GoodFirstAsset where tmp = 1 and GoodCode = 501 "
                  "order by Radif"_s),
             after);
    QCOMPARE(Rows(u"select GoodCode, tmp from GoodFirstAsset where GoodCode = 999 or tmp = 0 order by GoodCode"_s),
             QStringList({u"501|0"_s, u"999|1"_s}));
}

void TestGoodWorking::severalStores()
{
    TGood_DM &goods = m_desk->goods;
    goods.FirstAsset_FillTemp(501);
    QCOMPARE(goods.GoodFirstAsset_GetNewCode(501), 1);
    TGoodFirstAsset_Rec rec{0, 501, 1, 1, 12.5L, 1, u"قفسه '۱'"_s, 1};
    goods.GoodFirstAsset_Insert(rec);
    rec.StoreCode = 3;
    rec.Radif = 3;
    rec.Amount1 = 0.1L;
    goods.GoodFirstAsset_Insert(rec);
    QCOMPARE(goods.GoodFirstAsset_GetNewCode(501), 4);
    QVERIFY(goods.ValidateGoodFirstAsset_Insert(501, 3, 1));
    QVERIFY(!goods.ValidateGoodFirstAsset_Insert(501, 3, 3));
    QCOMPARE(goods.GoodFirstAsset_RecordCount(501, 3), 1);

    TGoodFirstAsset_Rec read;
    QVERIFY(goods.GoodFirstAsset_GetByID(501, 3, read));
    QCOMPARE(read.Comment, rec.Comment);
    read.Amount1 *= 3;
    read.StoreCode = 2;
    goods.GoodFirstAsset_Update(read);
    QVERIFY(!goods.GoodFirstAsset_GetByID(501, 2, read));
    host::Quantity amount1 = 0;
    host::Quantity amount2 = 0;
    goods.GoodFirstAsset_GetAmount(501, amount1, amount2);
    QCOMPARE(host::QuantityToText(amount1), u"12.8"_s);
    QCOMPARE(host::QuantityToText(amount2), u"2"_s);

    goods.GoodFirstAsset_GetAll(501, 1, 2, 12);
    QVERIFY(goods.FirstAssetList_QRY.Locate(u"StoreCode", 1));
    QCOMPARE(goods.FirstAssetList_QRY.TextField(u"StoreName"), u"فروشگاه"_s);
    QCOMPARE(goods.FirstAssetList_QRY.TextField(u"Unit2"), u"کارتن"_s);
    QCOMPARE(goods.FirstAssetList_QRY.TextField(u"Joz"), u"1"_s);

    goods.FirstAsset_SaveTemp(501);
    goods.FirstAsset_FillTemp(501);
    goods.GoodFirstAsset_Delete(1);
    QCOMPARE(Rows(u"select tmp, StoreCode, Amount1, Comment from GoodFirstAsset order by tmp, Radif"_s),
             QStringList({u"0|1|12.5|قفسه '۱'"_s, u"0|2|0.3|قفسه '۱'"_s, u"1|2|0.3|قفسه '۱'"_s}));
    goods.FirstAsset_DeleteTemp(501);
    goods.GoodFirstAsset_GetAmount(501, amount1, amount2);
    QCOMPARE(amount1, 0.0L);
}

void TestGoodWorking::savingOpeningStockSeesOtherDesks()
{
    TGood_DM &goods = m_desk->goods;
    m_database->Exec(
        u"insert into GoodFirstAsset (GoodCode, StoreCode, tmp, Amount1, Radif) values (501, 1, 0, 4, 1), (501, 2, 0, "
        "5, 2)"_s);
    Desk other(m_database->AnotherConnection(), *m_database);
    goods::OpeningCopy mine(goods, m_desk->entities);
    goods::OpeningCopy theirs(other.goods, other.entities);
    mine.Begin(501);
    theirs.Begin(501);
    // Row 1 of each, and the end of the one copy, leave the other alone.
    theirs.Delete(1);
    mine.Insert({0, 0, 3, 1, 6, 0, {}, mine.NewNumber()});
    mine.Delete(1);
    QCOMPARE(theirs.Rows().size(), 1);
    QCOMPARE(mine.Rows().size(), 2);
    QCOMPARE(mine.NewNumber(), 4);
    QCOMPARE(mine.GoneNumbers(), QList<int>{1});
    theirs.Save(501);
    theirs.End();
    mine.Refresh();
    QCOMPARE(mine.Totals().first, 11.0L);
    QVERIFY_THROWS_EXCEPTION(host::DatabaseError, mine.Save(501));
    QCOMPARE(Rows(u"select tmp, StoreCode, Amount1 from GoodFirstAsset order by tmp, StoreCode"_s),
             QStringList({u"0|2|5"_s, u"1|2|5"_s, u"1|3|6"_s}));
    mine.End();
    mine.Begin(501);
    mine.Update({0, 0, 2, 1, 8, 0, u"شمارش"_s, 2});
    mine.Save(501);
    QCOMPARE(Rows(u"select GoodCode, tmp, StoreCode, Amount1, Comment, Radif from GoodFirstAsset"_s),
             QStringList{u"501|0|2|8|شمارش|2"_s});
}

void TestGoodWorking::openingVoucher()
{
    TGood_DM &goods = m_desk->goods;
    goods.Good_Insert(Good(501));
    goods.GoodFirstAsset(501, u"1"_s, u"24"_s, u"2"_s);
    goods.FirstAsset_SaveTemp(501);
    TGood_DM::FirstPeriodVoucher voucher;
    voucher.SaveType = 1;
    voucher.SanadDate = goods.GetFirstPeriodVoucherDate();
    voucher.Codes = u"501,"_s;
    const int code = goods.AutoVoucherFirstPriodGoods(voucher);
    QVERIFY(code > 0);
    QCOMPARE(goods.Good_GetVoucherCode(501), code);
    QCOMPARE(Rows(u"select Bedehkar from VoucherLines where GoodCode = 501"_s), QStringList{u"28812"_s});
    QVERIFY(!goods.Good_HasSanadDetail(501));
    voucher.Codes = u"1') --"_s;
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.AutoVoucherFirstPriodGoods(voucher));
}

void TestGoodWorking::detailTypes()
{
    TGood_DM &goods = m_desk->goods;
    MakeDetailTypes();
    goods.CreateGoodDetailTempTable();
    QCOMPARE(goods.DetailTypesTmp_GetCode(), u"0"_s);
    QVERIFY(!goods.GoodDetailTemp_CheckExists());
    goods.GoodDetailTemp_Insert(u"4,1,4,"_s, 501);
    QCOMPARE(Rows(u"select GoodCode, GoodDetailID, GoodDetailTitle from #GoodDetails order by ID"_s),
             QStringList({u"501|4|وزن"_s, u"501|1|رنگ"_s}));
    QCOMPARE(goods.DetailTypesTmp_GetCode(), u"4,1"_s);
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.GoodDetailTemp_Insert(u"2,5"_s, 501));
    QCOMPARE(goods.DetailTypesTmp_GetCode(), u"4,1"_s); // all of a list or nothing
    goods.GoodDetailTemp_Insert(u"2,3,5,6,7,"_s, 501);
    QCOMPARE(goods.DetailTypesTmp_GetCode(), u"4,1,2,3,5"_s);
    goods.GoodDetailTemp_GetAll();
    QCOMPARE(goods.GoodDetails_QRY.RecordCount(), 5);
    goods.GoodDetailTemp_Delete(Rows(u"select ID from #GoodDetails where GoodDetailID in (4,2)"_s).join(u','));
    QCOMPARE(goods.DetailTypesTmp_GetCode(), u"1,3,5"_s);
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.GoodDetailTemp_Delete(u"1) or (1=1"_s));
    goods.GoodDetailTemp_DeleteAll();
    QVERIFY(!goods.GoodDetailTemp_CheckExists());
    QCOMPARE(goods.GetDetailTypeTitle(99), QString());

    m_database->Exec(
        u"insert into DetailTypes_SelectedLists (Code, Title, DefaultSelectedList) values (1, N'الف', 0), "
        "(2, N'ب', 1) insert into DetailTypes_SelectedList_Detail (SL_Code, Code, Radif) values (1, 1, 1), "
        "(2, 6, 1)"_s);
    goods.InsertDefaultDetailTypesSelectedListInNewGood(u"501"_s);
    QCOMPARE(goods.DetailTypesTmp_GetCode(), u"6"_s);
}

void TestGoodWorking::detailOrder()
{
    TGood_DM &goods = m_desk->goods;
    MakeDetailTypes();
    goods.Good_Insert(Good(501));
    goods.CreateGoodDetailTempTable();
    goods.GoodDetailTemp_Insert(u"2,6,1,3,"_s, 501);
    std::array<int, 5> d{9, 9, 9, 9, 9};
    QVERIFY(!goods.GetGoodDetailTempID(d[0], d[1], d[2], d[3], d[4]));
    QCOMPARE(d, (std::array<int, 5>{}));
    m_desk->settings.record.GoodDetails = true;
    QVERIFY(goods.GetGoodDetailTempID(d[0], d[1], d[2], d[3], d[4]));
    QCOMPARE(d, (std::array<int, 5>{3, 6, 2, 1, 0}));
    QVERIFY(goods.InsertGoodDetailRelation(501, d[0], d[1], d[2], d[3], d[4]));
    goods.FillGoodDetails(501);
    QCOMPARE(goods.DetailTypesTmp_GetCode(), u"3,6,2,1"_s);
    QVERIFY_THROWS_EXCEPTION(host::DatabaseError, goods.UpdateGoodDetailRelation(501, 5, 99, 0, 0, 0));
    QCOMPARE(Rows(u"select count(*) from GoodDetailRelation where GoodCode = 501"_s), QStringList{u"4"_s});
    goods.UpdateGoodDetailRelation(501, 0, 0, 0, 0, 0);
    QCOMPARE(Rows(u"select count(*) from GoodDetailRelation"_s), QStringList{u"0"_s});
}

void TestGoodWorking::detailTypesOfManyGoods_data()
{
    QTest::addColumn<int>("scope");
    QTest::addColumn<QStringList>("after");
    QTest::newRow("marked") << 1 << QStringList{u"501|1"_s, u"501|2"_s, u"502|3"_s};
    QTest::newRow("all") << 2 << QStringList{u"501|1"_s, u"501|2"_s, u"502|1"_s, u"502|2"_s};
}

void TestGoodWorking::detailTypesOfManyGoods()
{
    QFETCH(int, scope);
    QFETCH(QStringList, after);
    MakeDetailTypes();
    m_desk->goods.Good_Insert(Good(501));
    m_desk->goods.Good_Insert(Good(502));
    m_database->Exec(u"insert into GoodDetailRelation (GoodCode, DetailID) values (501, 3), (502, 3)"_s);
    QVERIFY(m_desk->goods.InsertGoodDetailTypesForGoods(u"501,"_s, u"1,2,"_s, scope));
    QCOMPARE(Rows(u"select GoodCode, DetailID from GoodDetailRelation order by GoodCode, DetailID"_s), after);
}

void TestGoodWorking::categories()
{
    TGood_DM &goods = m_desk->goods;
    QVERIFY(!goods.cat_checker(501, 1)); // has branches
    QVERIFY(!goods.cat_checker(501, 9));
    QVERIFY(goods.cat_checker(501, 2));
    goods.InsertUpdateToKalaCategory(501, 2, 1);
    QVERIFY(!goods.cat_checker(501, 2));
    goods.TempToGoodCat(501);
    goods.DeleteTmpCategory();
    goods.Fill_grid(501);
    QCOMPARE(goods.KalaCategory_Qry.TextField(u"NAME"), u"خوراکی / چای"_s);

    // Taken off and put on again, another one put on and taken off: closing without saving changes nothing.
    const auto play = [&goods] {
        goods.Fill_grid(501);
        goods.GoodCatToTemp(goods.KalaCategory_Qry.IntField(u"Id"), 2);
        goods.Fill_grid(501);
        QVERIFY(goods.KalaCategory_Qry.IsEmpty());
        QVERIFY(goods.cat_checker(501, 2));
        goods.InsertUpdateToKalaCategory(501, 3, 1);
        goods.Fill_grid(501);
        goods.GoodCatToTemp(goods.KalaCategory_Qry.IntField(u"Id"), 2);
        goods.InsertUpdateToKalaCategory(501, 2, 1);
    };
    play();
    goods.undodelete_category(501);
    goods.DeleteTmpCategory();
    QCOMPARE(Rows(u"select Category_code, tmp from Kala_category"_s), QStringList{u"2|0"_s});
    play();
    goods.TempToGoodCat(501);
    goods.DeleteTmpCategory();
    goods.undodelete_category(501);
    QCOMPARE(Rows(u"select Category_code, tmp from Kala_category"_s), QStringList{u"2|0"_s});
}

void TestGoodWorking::categoriesOfTwoDesks()
{
    TGood_DM &goods = m_desk->goods;
    m_database->Exec(u"insert into Kala_category (Kala_code, Category_code) values (501, 2), (502, 2)"_s);
    goods.Fill_grid(501);
    goods.GoodCatToTemp(goods.KalaCategory_Qry.IntField(u"Id"), 2);
    goods.InsertUpdateToKalaCategory(501, 3, 1);
    Desk other(m_database->AnotherConnection(), *m_database);
    other.goods.DeleteTmpCategory(); // another editor opens
    other.goods.Fill_grid(501);
    QCOMPARE(other.goods.KalaCategory_Qry.IntField(u"Category_code"), 2); // what is not saved is not seen
    QVERIFY(other.goods.cat_checker(501, 3));
    other.goods.InsertUpdateToKalaCategory(501, 3, 1);
    other.goods.undodelete_category(501);
    goods.Fill_grid(501);
    QCOMPARE(goods.KalaCategory_Qry.IntField(u"Category_code"), 3);
    other.goods.DeleteTmpCategory();
    goods.TempToGoodCat(501);
    other.goods.InsertUpdateToKalaCategory(502, 3, 1);
    other.goods.Fill_grid(501);
    other.goods.TempToGoodCat(501);
    other.goods.DeleteTmpCategory();
    QCOMPARE(Rows(u"select Kala_code, Category_code, tmp from Kala_category order by Kala_code"_s),
             QStringList({u"501|3|0"_s, u"502|2|0"_s}));
}

void TestGoodWorking::photos()
{
    m_database->Exec(
        u"insert into PhotoGallery (GRPCode, Id_pic, Picture, tmp) values (102, 501, 0x01, 1), (102, 502, 0x02, 1), "
        "(105, 501, 0x03, 1)"_s);
    m_desk->goods.TmpToMainPhoto(501);
    m_desk->goods.DeleteTmpphoto(502);
    QCOMPARE(Rows(u"select GRPCode, Id_pic, tmp from PhotoGallery order by GRPCode"_s),
             QStringList({u"102|501|0"_s, u"105|501|1"_s}));
}

void TestGoodWorking::lists()
{
    TGood_DM &goods = m_desk->goods;
    QVERIFY(!goods.ExistTag());
    m_database->Exec(
        u"insert into colors (code, Name, Value, [h-img]) values (4, N'سرخ', '#ff0000', 0x89) "
        "insert into TagS (Code, Name, color_code) values (8, N'تازه', 4) "
        "insert into SelectedLists (Code, Title, Enable, DisplayType) values (1, N'الف', 1, 1), (2, N'ب', 0, 0)"_s);
    QVERIFY(goods.ExistTag());
    goods.GetAllTagsWithColor();
    QCOMPARE(goods.Tags_qry.IntField(u"ID"), 8);
    QCOMPARE(goods.Tags_qry.Field(u"image").toByteArray(), QByteArray("\x89"));
    const TGood_DM::Tag tag = goods.GetTagsByColorCode(8);
    QCOMPARE(tag.Name, u"تازه"_s);
    QCOMPARE(tag.ColorCode, 4);
    QCOMPARE(tag.Image, QByteArray("\x89"));
    QCOMPARE(goods.GetTagsByColorCode(9).Code, 0);

    QList<host::Entity> selected;
    goods.GoodSelectedList_Fill(selected);
    QCOMPARE(selected.size(), 2);
    QCOMPARE(selected[0].Name, u"هيچکدام"_s);
    QCOMPARE(selected[1].Code, 1);
    QVERIFY(goods.GoodSelectedIndex_IsChecked(1));
    QVERIFY(!goods.GoodSelectedIndex_IsChecked(2));

    QList<host::Entity> groups;
    goods.GoodGroup_Fill(groups);
    QCOMPARE(groups.size(), 3);
    QCOMPARE(groups[1].Name, u"نوشیدنی"_s);
    goods.GoodGroup_GetAll();
    QVERIFY(goods.GoodGroup_List_QRY.Locate(u"Name", u"شوینده"_s));
    QCOMPARE(goods.GoodGroup_List_QRY.IntField(u"Code"), 7);

    goods.Good_Insert(Good(501));
    QCOMPARE(goods.GetTagsOfGoods(u"501,"_s), (QList<QPair<int, QString>>{{501, u"1,2"_s}}));
    goods.Good_GetAll(1, 1, 0, 1, u"Code,Name,Cost1"_s);
    QCOMPARE(goods.Good_List_QRY.TextField(u"Name"), u"چای سبز 501"_s);
    goods.UpdateMogodiKala(255);
    const TGood_DM::Stock stock =
        goods.GetStockMogodi(u"select 0.1 as MeghdarKol, 2 as Mojod union all select 0.2, 3"_s);
    QCOMPARE(host::QuantityToText(stock.MeghdarKol), u"0.3"_s);
    QCOMPARE(host::QuantityToText(stock.Mojod), u"5"_s);
}

REGISTER_TEST(TestGoodWorking)
#include "tst_good_working.moc"
