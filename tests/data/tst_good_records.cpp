// A good and its code: what is saved is what is read, whole or not at all, and no two goods share what must be unique.

#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"
#include "tests/data/desk_fixture.h"
#include "tests/support/test_main.h"

#include <QTest>

#include <atomic>
#include <thread>

using fixture::Desk;
using fixture::Good;

namespace {

/// Everything of a good that the database holds, so that two goods compare as one text.
QStringList Stored(const test::Database &database, int code)
{
    return database.Rows(u"select * from GoodInf where Code = %1"_s.arg(code)) +
           database.Rows(u"select * from GoodCostDiscount where GoodCode = %1"_s.arg(code));
}

void MakeGoods(const test::Database &database, const QString &values)
{
    database.Exec(u"insert into GoodInf (Code, GrpCode, Name, kala_index, AbbName, SMSCode) values "_s + values);
}

} // namespace

class TestGoodRecords : public fixture::Test
{
    Q_OBJECT

private slots:
    void savedIsWhatIsRead();
    void updateKeepsCreationAndLeavesOthersAlone();
    void whatOthersChangeStays_data();
    void whatOthersChangeStays();
    void oneUnitGoodHasNoSecondUnit();
    void failedSaveWritesNothing_data();
    void failedSaveWritesNothing();
    void deletingIsTheHostsBusiness();
    void newCodes_data();
    void newCodes();
    void takenCodeIsReplaced();
    void desksSavingAtOnce();
    void uniqueness_data();
    void uniqueness();
    void unquotedValuesAreDigits_data();
    void unquotedValuesAreDigits();
    void barcodes_data();
    void barcodes();
    void useElsewhere_data();
    void useElsewhere();
    void scales();
};

void TestGoodRecords::savedIsWhatIsRead()
{
    TGoodInfoRec rec = Good(501);
    rec.kala_name = u"چای d'or [۵۰%] 🍵\u200F"_s;
    QVERIFY(m_desk->goods.Good_Insert(rec));
    TGoodInfoRec read;
    QVERIFY(Desk(m_database->AnotherConnection(), *m_database).goods.Good_GetByID(501, read));
    QCOMPARE(read.Name, u"چای d'or [۵۰%] 🍵\u200F سبز 501"_s);
    QCOMPARE(read.Length, 0.123456789L);
    QCOMPARE(read.Price.Discount_Buy[3], 100.0L);
    QCOMPARE(read.Price.Discount_Sell[1], 2.5L);
    QCOMPARE(read.Price.Default_Discount_Sell_Number, 3);

    // What was read, saved under another code, gives the same row: no member is lost on the way.
    TGoodInfoRec copy = read;
    copy.Code = 502;
    QVERIFY(m_desk->goods.Good_Insert(copy));
    QStringList original = Stored(*m_database, 501);
    original.replaceInStrings(QRegularExpression(u"^501"_s), u"502"_s);
    QCOMPARE(Stored(*m_database, 502), original);
    QVERIFY(!original.first().contains(u"|NULL|"_s) || original.first().count(u"NULL"_s) == 3); // the three of a change
    QVERIFY(!m_desk->goods.Good_GetByID(999, read));
    QCOMPARE(read.Code, 501);
}

void TestGoodRecords::updateKeepsCreationAndLeavesOthersAlone()
{
    m_desk->goods.Good_Insert(Good(501));
    m_desk->goods.Good_Insert(Good(502));
    const QStringList other = Stored(*m_database, 502);
    TGoodInfoRec rec;
    m_desk->goods.Good_GetByID(501, rec);
    rec.kala_type = QString();
    rec.GrpCode = 7;
    rec.CreatedTime = u"00:00:00"_s;
    rec.ModifiedTime = u"11:12:13"_s;
    rec.ModifiedDate = u"1405/02/03"_s;
    rec.UserModified = u"کاربر (2)"_s;
    rec.VoucherCode = 44;
    rec.Price.Discount_Sell[0] = 99.5L;
    QVERIFY(m_desk->goods.Good_Update(rec));
    QCOMPARE(
        m_database->Rows(u"select Name, GrpCode, CreatedTime, ModifiedTime, ModifiedDate, UserModified, VoucherCode, "
                         "Discount_Sell_1 from GoodInf join GoodCostDiscount on GoodCode = Code where Code = 501"_s),
        QStringList{u"چای  501|7|10:20:30|11:12:13|1405/02/03|کاربر (2)|44|99.5"_s});
    QCOMPARE(Stored(*m_database, 502), other);

    // A good that was not the last one read, and one that is gone.
    rec = Good(502);
    rec.Comment = u"تازه"_s;
    QVERIFY(m_desk->goods.Good_Update(rec));
    QCOMPARE(m_database->Scalar(u"select Comment from GoodInf where Code = 502"_s), QVariant(u"تازه"_s));
    m_database->Exec(u"delete from GoodInf where Code = 502"_s);
    QVERIFY_THROWS_EXCEPTION(host::DatabaseError, m_desk->goods.Good_Update(rec));
}

void TestGoodRecords::whatOthersChangeStays_data()
{
    using Change = std::function<void(TGoodInfoRec &)>;
    QTest::addColumn<Change>("change"); // on this desk
    QTest::addColumn<QString>("other"); // on another one, between reading and writing
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QString>("row");
    QTest::newRow("another column") << Change([](TGoodInfoRec &rec) { rec.Weight = 7; }) << u"Comment='x'"_s
                                    << u"Weight,Comment"_s << u"7|x"_s;
    QTest::newRow("parts of the name") << Change([](TGoodInfoRec &rec) { rec.kala_index = u"B"_s; })
                                       << u"kala_type='x',Name='x'"_s << u"Name,kala_type,kala_index"_s
                                       << u"چای سبز B|سبز|B"_s;
    QTest::newRow("name left alone") << Change([](TGoodInfoRec &) {}) << u"kala_type='x',Name='y'"_s
                                     << u"Name,kala_type"_s << u"y|x"_s;
    QTest::newRow("the stamp") << Change([](TGoodInfoRec &rec) { rec.ModifiedDate = u"1405/02/03"_s; })
                               << u"ModifiedTime='9',ModifiedDate='9',UserModified='9'"_s
                               << u"ModifiedTime,ModifiedDate,UserModified"_s << u"|1405/02/03|"_s;
    QTest::newRow("tax and its percent") << Change([](TGoodInfoRec &rec) { rec.TaxExempt = false; })
                                         << u"TaxPercent=9,ChargePercent=8"_s
                                         << u"TaxExempt+0,TaxPercent,ChargePercent"_s << u"0|0|8"_s;
    QTest::newRow("opening stock and its store")
        << Change([](TGoodInfoRec &rec) { rec.Store = 2; }) << u"AvaBgPrd=5,CostBgPrd=6"_s
        << u"Store,AvaBgPrd,CostBgPrd"_s << u"2|24|6"_s;
    QTest::newRow("units and their ratio") << Change([](TGoodInfoRec &rec) { rec.Meghdar_Formool = 6; }) << u"Unit2=1"_s
                                           << u"Unit2,Meghdar_Formool"_s << u"2|6"_s;
    QTest::newRow("discounts one by one")
        << Change([](TGoodInfoRec &rec) { rec.Price.Discount_Sell[0] = 50; })
        << u"Weight=1 update GoodCostDiscount set Discount_Sell_2=60,Default_Discount_Buy_Number=2"_s
        << u"Discount_Sell_1,Discount_Sell_2,Default_Discount_Buy_Number"_s << u"50|60|2"_s;
}

void TestGoodRecords::whatOthersChangeStays()
{
    QFETCH(std::function<void(TGoodInfoRec &)>, change);
    QFETCH(QString, other);
    QFETCH(QString, columns);
    m_desk->goods.Good_Insert(Good(501));
    TGoodInfoRec rec;
    m_desk->goods.Good_GetByID(501, rec);
    change(rec);
    {
        host::Transaction taken(m_database->Main());
        m_desk->goods.Good_Update(rec); // a save that fails further on, and is tried again
    }
    m_database->Exec(u"update GoodInf set "_s + other);
    m_desk->goods.Good_Update(rec);
    QTEST(m_database->Rows(u"select %1 from GoodInf join GoodCostDiscount on GoodCode=Code"_s.arg(columns)).value(0),
          "row");
}

void TestGoodRecords::oneUnitGoodHasNoSecondUnit()
{
    TGoodInfoRec rec = Good(501);
    m_desk->goods.Good_Insert(rec);
    rec.Unit2 = 0;
    m_desk->goods.Good_Update(rec);
    rec.Code = 502;
    rec.SMSCode.clear();
    rec.Store = 0;
    m_desk->goods.Good_Insert(rec);
    QCOMPARE(m_database->Rows(u"select Code, Unit2, SMSCode, Store from GoodInf order by Code"_s),
             QStringList({u"501|NULL|501|1"_s, u"502|NULL|NULL|NULL"_s}));
}

void TestGoodRecords::failedSaveWritesNothing_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("group");
    QTest::addColumn<int>("nameLength");
    QTest::addColumn<QString>("smsCode");
    QTest::newRow("code is taken") << 501 << 5 << 5 << u"9"_s;
    QTest::newRow("no such group") << 502 << 99 << 5 << u"9"_s;
    QTest::newRow("name too long") << 502 << 5 << 51 << u"9"_s;
    QTest::newRow("no number") << 502 << 5 << 5 << u"9; delete from GoodInf"_s;
}

void TestGoodRecords::failedSaveWritesNothing()
{
    QFETCH(int, code);
    QFETCH(int, group);
    QFETCH(int, nameLength);
    QFETCH(QString, smsCode);
    m_desk->goods.Good_Insert(Good(501));
    const QStringList before = Stored(*m_database, 501);
    TGoodInfoRec rec = Good(code, group);
    rec.kala_name = QString(nameLength, u'ن');
    rec.SMSCode = smsCode;
    rec.Price.Discount_Sell = {50, 50, 50, 50};
    QVERIFY_THROWS_EXCEPTION(std::exception, m_desk->goods.Good_Insert(rec));
    QVERIFY(!host::Transaction::IsActive(m_database->Main()));
    QCOMPARE(Stored(*m_database, 501), before);
    QCOMPARE(Stored(*m_database, 502), QStringList());
    QVERIFY(m_desk->goods.Good_Insert(Good(503))); // the module is fit for the next try
    QCOMPARE(m_database->Rows(u"select Code from GoodInf order by Code"_s), QStringList({u"501"_s, u"503"_s}));
}

void TestGoodRecords::deletingIsTheHostsBusiness()
{
    QVERIFY(m_desk->goods.Good_Delete(501));
    m_desk->entities.refuseDelete = 2;
    QVERIFY(!m_desk->goods.Good_Delete(502));
    QCOMPARE(m_desk->entities.calls, QStringList({u"Delete_Entity(102, 501, 0)"_s, u"Delete_Entity(102, 502, 0)"_s}));
}

void TestGoodRecords::newCodes_data()
{
    QTest::addColumn<QString>("goods"); // code:group
    QTest::addColumn<QString>("reserved");
    QTest::addColumn<int>("code");
    QTest::newRow("nothing yet") << QString() << QString() << 1;
    QTest::newRow("after the group's last") << u"5001:5,5003:5,6000:7"_s << QString() << 5004;
    QTest::newRow("next one is another group's") << u"5001:5,5002:5,5003:5,5004:7"_s << QString() << 5005;
    QTest::newRow("next one is reserved") << u"5001:5,9000:7"_s << u"5002"_s << 9001;
    QTest::newRow("beyond the reserved ones") << u"5001:5"_s << u"5002,8000"_s << 8001;
    QTest::newRow("empty group beside others") << u"1:7,2:7"_s << QString() << 3;
    QTest::newRow("reserved for another part") << u"5001:5"_s << u"-5002"_s << 5002;
}

void TestGoodRecords::newCodes()
{
    QFETCH(QString, goods);
    QFETCH(QString, reserved);
    QFETCH(int, code);
    for (const QString &good : goods.split(u',', Qt::SkipEmptyParts)) {
        MakeGoods(*m_database,
                  u"(%1, %2, N'x', N'', N'', NULL)"_s.arg(good.section(u':', 0, 0), good.section(u':', 1)));
    }
    for (const QString &lock : reserved.split(u',', Qt::SkipEmptyParts)) {
        m_database->Exec(
            u"insert into CodeLock_TBL (Status, Code) values (%1, %2)"_s.arg(lock.startsWith(u'-') ? 104 : 102)
                .arg(lock.mid(lock.startsWith(u'-') ? 1 : 0)));
    }
    QCOMPARE(m_desk->goods.Good_GetNewCode(u"5"_s), code);
    const TGood_DM::GoodCodes all = m_desk->goods.GetGoodCodes();
    QCOMPARE(all.GoodCount, int(goods.split(u',', Qt::SkipEmptyParts).size()));
    QCOMPARE(all.GoodCodes.split(u',', Qt::SkipEmptyParts).size(), all.GoodCount);
}

void TestGoodRecords::takenCodeIsReplaced()
{
    TGood_DM &goods = m_desk->goods;
    int code = goods.Good_GetNewCode_GrpCode(u"5"_s, u"6"_s);
    const int proposed = code;
    goods.CostLevel_Prepare(code, 2);
    goods.GoodFirstAsset(code, u"1"_s, u"3.5"_s, u"0"_s);
    goods.InsertUpdateToKalaCategory(code, 2, 1);
    {
        host::Transaction free(m_database->Main());
        QVERIFY(!goods.Good_TakeCode(code, 5, 6));
        QCOMPARE(code, proposed);
    }
    Desk(m_database->AnotherConnection(), *m_database).goods.Good_Insert(Good(proposed));

    host::Transaction transaction(m_database->Main());
    QVERIFY(goods.Good_TakeCode(code, 5, 6));
    QVERIFY(code != proposed);
    goods.FirstAsset_SaveTemp(code);
    goods.TempToGoodCat(code);
    goods.Good_Insert(Good(code));
    goods.CostLevel_Save(code);
    transaction.Commit();
    QCOMPARE(m_database->Rows(u"select GoodCode, tmp, Amount1 from GoodFirstAsset"_s),
             QStringList{u"%1|0|3.5"_s.arg(code)});
    QCOMPARE(m_database->Rows(u"select Kala_code, Category_code, tmp from Kala_category"_s),
             QStringList{u"%1|2|0"_s.arg(code)});
    QCOMPARE(m_database->Rows(u"select distinct TypeCode from tmpCostList"_s), QStringList{QString::number(code)});
}

void TestGoodRecords::desksSavingAtOnce()
{
    // The worst order: both propose, both save.
    Desk other(m_database->AnotherConnection(), *m_database);
    TGoodInfoRec first = Good(m_desk->goods.Good_GetNewCode_GrpCode(u"5"_s, u"6"_s));
    TGoodInfoRec second = Good(other.goods.Good_GetNewCode_GrpCode(u"5"_s, u"6"_s));
    QCOMPARE(second.Code, first.Code);
    m_desk->goods.Good_Insert(first);
    QVERIFY_THROWS_EXCEPTION(host::DatabaseError, other.goods.Good_Insert(second));

    constexpr int Desks = 3;
    constexpr int Each = 15;
    std::atomic<int> replaced = 0;
    std::atomic<int> failed = 0;
    const auto work = [&](int number) {
        const QString name = u"desk %1"_s.arg(number);
        {
            const QSqlDatabase main = m_database->Connect(name);
            test::FakeSettings settings;
            test::FakeEntities entities;
            TGood_DM goods({main, main, main}, settings, entities);
            try {
                for (int i = 0; i < Each; ++i) {
                    TGoodInfoRec rec = Good(goods.Good_GetNewCode_GrpCode(u"5"_s, u"6"_s));
                    host::Transaction transaction(main);
                    replaced += goods.Good_TakeCode(rec.Code, 5, 6) ? 1 : 0;
                    goods.Good_Insert(rec);
                    transaction.Commit();
                }
            } catch (const std::exception &error) {
                qWarning("%s", error.what());
                ++failed;
            }
        }
        QSqlDatabase::removeDatabase(name);
    };
    std::vector<std::thread> desks;
    desks.reserve(Desks);
    for (int i = 0; i < Desks; ++i) {
        desks.emplace_back(work, i);
    }
    for (std::thread &thread : desks) {
        thread.join();
    }
    QCOMPARE(failed.load(), 0);
    QVERIFY2(replaced.load() > 0, "the desks never met");
    QCOMPARE(m_database->Rows(u"select count(*), count(distinct Code) from GoodInf"_s), QStringList{u"46|46"_s});
    QCOMPARE(m_database->Rows(u"select count(*) from GoodCostDiscount"_s), QStringList{u"46"_s});
}

void TestGoodRecords::uniqueness_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("index");
    QTest::newRow("plain") << u"چای سبز ۱"_s << u"۱"_s;
    QTest::newRow("quotes") << u"d'or 'x'"_s << u"'"_s;
    QTest::newRow("percent and brackets are letters") << u"[50%] a_b"_s << u"%"_s;
    QTest::newRow("emoji") << u"چای 🍵"_s << u"🍵"_s;
    QTest::newRow("direction marks") << u"\u200Fچای\u200C سبز"_s << u"\u200Ex"_s;
}

void TestGoodRecords::uniqueness()
{
    QFETCH(QString, name);
    QFETCH(QString, index);
    MakeGoods(*m_database, u"(1, 5, %1, %2, N'', 77), (2, 5, N'دیگر', N'دیگر', N'', 78)"_s.arg(
                               host::NQuotedStr(name), host::NQuotedStr(index)));
    TGood_DM &goods = m_desk->goods;
    QCOMPARE(goods.Good_ExistName(1, name), 0);
    QCOMPARE(goods.Good_ExistName(2, name), 1);
    QCOMPARE(goods.Good_ExistName(2, name + u'x'), 0);
    QCOMPARE(goods.Good_ExistIndex(1, index), 0);
    QCOMPARE(goods.Good_ExistIndex(3, index), 1);
    QVERIFY(goods.Good_IsExistSMSCode(2, u"77"_s));
    QVERIFY(goods.Good_IsExistSMSCode(2, u"0077"_s));
    QVERIFY(!goods.Good_IsExistSMSCode(1, u"77"_s));
    QVERIFY(!goods.Good_IsNewRecordMode(2));
    QVERIFY(goods.Good_IsNewRecordMode(3));
}

void TestGoodRecords::unquotedValuesAreDigits_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("empty") << QString();
    QTest::newRow("statement") << u"1 or 1=1"_s;
    QTest::newRow("sign") << u"-1"_s;
    QTest::newRow("persian digits") << u"۱۲"_s;
    QTest::newRow("quote") << u"1'"_s;
}

void TestGoodRecords::unquotedValuesAreDigits()
{
    QFETCH(QString, value);
    MakeGoods(*m_database, u"(1, 5, N'x', N'', N'', 77)"_s);
    TGood_DM &goods = m_desk->goods;
    const quint64 before = host::StatementsSent(); // NOLINT(clang-analyzer-deadcode.DeadStores): compared at the end
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.Good_IsExistSMSCode(2, value));
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.Good_GetNewCode(value));
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.Good_GetNewCode_GrpCode(value, u"6"_s));
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.Good_GetNewCode_GrpCode(u"5"_s, value));
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.GoodFirstAsset(1, value, u"1"_s, u"1"_s));
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.GoodFirstAsset(1, u"1"_s, u"1,1"_s, u"1"_s));
    if (!value.isEmpty()) {
        QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.InsertGoodDetailTypesForGoods(value, u"1"_s, 1));
    }
    QCOMPARE(host::StatementsSent(), before);
}

void TestGoodRecords::barcodes_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<bool>("found");
    QTest::newRow("first") << u"!111!222!"_s << u"111"_s << true;
    QTest::newRow("last") << u"!111!222!"_s << u"222"_s << true;
    QTest::newRow("part of one") << u"!1112!222!"_s << u"111"_s << false;
    QTest::newRow("other case") << u"!AbC!"_s << u"aBc"_s << true;
    QTest::newRow("quote") << u"!a'b!"_s << u"a'b"_s << true;
    QTest::newRow("persian short name") << u"!چای!"_s << u"چای"_s << true;
    QTest::newRow("percent finds itself") << u"!a%b!"_s << u"a%b"_s << true;
    QTest::newRow("percent finds no other") << u"!axxb!"_s << u"a%b"_s << false;
    QTest::newRow("underscore finds no other") << u"!axb!"_s << u"a_b"_s << false;
    QTest::newRow("underscore finds itself") << u"!a_b!"_s << u"a_b"_s << true;
    QTest::newRow("bracket finds itself") << u"![1]!"_s << u"[1]"_s << true;
    QTest::newRow("bracket finds no other") << u"!1!"_s << u"[1]"_s << false;
    QTest::newRow("open bracket") << u"!a[b!"_s << u"a[b"_s << true;
}

void TestGoodRecords::barcodes()
{
    QFETCH(QString, stored);
    QFETCH(QString, asked);
    QFETCH(bool, found);
    MakeGoods(*m_database, u"(1, 5, N'x', N'', %1, NULL)"_s.arg(host::NQuotedStr(stored)));
    QCOMPARE(m_desk->goods.CheckBarcodeCode(asked), found ? 1 : 0);
    QCOMPARE(m_desk->goods.Good_ExistBarCode(2, asked), found);
    QVERIFY(!m_desk->goods.Good_ExistBarCode(1, asked));

    QVERIFY(!m_desk->goods.BarcodeUsedInSetting(asked));
    m_desk->settings.record.ReservedBarcodes[1] = asked;
    QVERIFY(m_desk->goods.BarcodeUsedInSetting(asked));
    QVERIFY(!m_desk->goods.BarcodeUsedInSetting(QString()));
}

void TestGoodRecords::useElsewhere_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("uses"); // movement, voucher line, web shop
    QTest::newRow("nowhere") << QString() << u"000"_s;
    QTest::newRow("movement")
        << u"insert into Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1) values "
           "(501, 1, 1, 1, '1405/01/01', 1)"_s
        << u"100"_s;
    const QString voucher = u"insert into Vouchers (Code, Kind, [Date]) values (1, %1, '1405/01/01') "
                            "insert into VoucherLines (VoucherCode, GoodCode, Sharh) values (1, 501, N'x')"_s;
    QTest::newRow("opening voucher") << voucher.arg(1) << u"000"_s;
    QTest::newRow("other voucher") << voucher.arg(2) << u"010"_s;
    QTest::newRow("mobile ordering") << u"insert into OnlineProduct (Masterid) values (501)"_s << u"001"_s;
    QTest::newRow("mobile ordering no more")
        << u"insert into OnlineProduct (Masterid, isdelete) values (501, 1)"_s << u"000"_s;
    QTest::newRow("web shop only") << u"insert into Market.Product (VelakProductCode) values (501)"_s << u"001"_s;
    QTest::newRow("another good's") << u"insert into Market.Product (VelakProductCode) values (502)"_s << u"000"_s;
}

void TestGoodRecords::useElsewhere()
{
    QFETCH(QString, row);
    QFETCH(QString, uses);
    m_desk->goods.Good_Insert(Good(501));
    if (!row.isEmpty()) {
        m_database->Exec(row);
    }
    QCOMPARE(m_desk->goods.Good_HasGardesh(501), uses[0] == u'1');
    QCOMPARE(m_desk->goods.Good_HasSanadDetail(501), uses[1] == u'1');
    QCOMPARE(m_desk->goods.GoodUsedInWebService(501), uses[2] == u'1');
}

void TestGoodRecords::scales()
{
    TGood_DM &goods = m_desk->goods;
    TGoodInfoRec rec = Good(501);
    rec.kala_name = u"چای 'x'"_s;
    rec.AbbName = u"!111!222!"_s;
    rec.Unit = 2;
    goods.Good_Insert(rec);
    goods.Change_Price_Scale(501, 3);
    QVERIFY(!goods.CheckGoodInScale(501));
    m_database->Exec(u"insert into Items (Code, ScaleType, Name1, Price) values (501, 1, N'', 0), (502, 2, N'', 0)"_s);
    m_database->Exec(u"update GoodCostDiscount set CostLevel_Sell_3 = 1234.5"_s);
    QVERIFY(goods.CheckGoodInScale(501));
    QVERIFY(!goods.CheckGoodInScale(502));
    goods.Change_Price_Scale(501, 3);
    QCOMPARE(m_database->Rows(u"select Name1, Price, BarCode, [Type], ChangeType from Items where Code = 501"_s),
             QStringList{u"چای 'x' سبز 501|1234.5|111|1|2"_s});
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.Change_Price_Scale(501, 11));
    goods.DeleteGoodInScale(501);
    QCOMPARE(m_database->Rows(u"select Code, ChangeType from Items order by Code"_s),
             QStringList({u"501|3"_s, u"502|0"_s}));
}

REGISTER_TEST(TestGoodRecords)
#include "tst_good_records.moc"
