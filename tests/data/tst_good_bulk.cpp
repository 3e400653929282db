// Changes of many goods: what is previewed is what is written, whole or not at all, and taken back as long as nobody
// has changed it since.

#include "host/data/database_error.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "tests/data/desk_fixture.h"
#include "tests/support/test_main.h"

#include <QTest>

#include <limits>
#include <numeric>

using fixture::Desk;
using namespace goods;
using Outcome = BulkResult::Outcome;

namespace {

BulkOrder Order(const BulkProgress &progress = {})
{
    return {u"چای d'or %1 [۵۰%]"_s, u"کاربر (1)"_s, u"1405/08/30"_s, u"10:11:12"_s, progress};
}

/// Everything that changes of many goods can reach, as one list.
QStringList Snapshot(const test::Database &database)
{
    return database.Rows(u"select * from GoodCostDiscount order by GoodCode"_s) +
           database.Rows(u"select * from GoodInf order by Code"_s) +
           database.Rows(u"select GoodCode, DetailID from GoodDetailRelation order by GoodCode, DetailID"_s) +
           database.Rows(u"select * from BulkChanges"_s) + database.Rows(u"select * from BulkChangeGoods"_s);
}

QString Text(const BulkResult &result)
{
    return u"%1: %2 written, %3 left"_s.arg(static_cast<int>(result.outcome)).arg(result.written).arg(result.left);
}

QString Text(const BulkForecast &forecast)
{
    return u"%1 = %2 + %3 same + %4 protected + %5 gone"_s.arg(forecast.goods)
        .arg(forecast.changing)
        .arg(forecast.same)
        .arg(forecast.protectedOf)
        .arg(forecast.gone);
}

const GoodsScope Everything{ScopeKind::All, {}};

struct Answer
{
    BulkResult result;
    BulkForecast forecast = {};
};
/// Without an order it only says what it would do.
using Change = std::function<Answer(TGood_DM &, const GoodsScope &, const BulkOrder *)>;

/// A change that gives many goods the same.
struct Alike
{
    Change change;
    QString forecast = {}; // of goods 501 to 504 and one that is none
    QString told = {};
    QString stored = {};  // asks what the goods have
    QString texts = {};   // old and new one of the first good
    QString written = {}; // what is stored then
    QString since = {};   // what another desk does to one of them
    QString back = {};    // what is stored when the change is taken back
    int reason = 1;       // why one is left
};

} // namespace
Q_DECLARE_METATYPE(Alike)

class TestGoodBulk : public fixture::Test
{
    Q_OBJECT

private slots:
    void newPrices();
    void refused();
    void namesTheGoodsOnce();
    void writesWhatWasPreviewed();
    void givesAlike_data() { AddChanges(); }
    void givesAlike();
    void cancelled_data();
    void cancelled();
    void keepsTheLastChanges();
    void sendsToScales();

private:
    void Fill() override;
    static void AddChanges();
};

/// Goods 501 to 504; 504 has no price row, the details of 503 have quantities. Types 1 (serial), 2 and 3 (texts).
void TestGoodBulk::Fill()
{
    m_database->Exec(
        u"insert into GoodInf (Code, GrpCode, Name, ConsumerPrice, AbbName, Unit) values (501, 5, N'd''or', 100, "
        "'!62650101!', 2), (502, 5, N'ب', 100, NULL, 1), (503, 5, N'پ', 100, NULL, 1), (504, 5, N'ت', 100, NULL, 1)"
        " insert into GoodCostDiscount (GoodCode, CostLevel_Sell_2, Discount_Sell_1, Discount_Buy_4) values (501, 1000, "
        "5, 7), (502, 2000, 5, 7), (503, 0, 9, 7)"
        " insert into DetailTypes (Title, DetailType) values (N'سریال', 3), (N'رنگ', 2), (N'<جنس>', 2), (N'بارکد', 6)"
        " insert into GoodDetailRelation (GoodCode, DetailID) values (501, 1), (501, 2), (503, 3)"
        " update GoodInf set DaraiGoodType = 2 where Code = 503 insert into GoodDetailValues (GoodCode) values (503)"
        " insert into GoodDetailKardex (DetailValueID, StoreCode, GoodCode, OperationType, OperationCode) values (1, 1, "
        "503, 3, 1)"_s);
}

void TestGoodBulk::newPrices()
{
    const QString most = u"9999999999999999999.999999999"_s;
    const struct // NOLINT(clang-analyzer-optin.performance.Padding): in the order in which a row is read
    {
        const char *name;
        QString before;
        int option;
        host::Quantity value;
        int direction;
        int rounding;
        QString after; // "new price|fate|picked"
        PriceKind kind = PriceKind::Sale;
    } rows[] = {
        {"percent", u"1000"_s, 2, 5, 1, 0, u"1050|0|true"_s},
        {"purchase", u"1000"_s, 2, 5, 1, 0, u"1050|0|true"_s, PriceKind::Purchase},
        {"consumer", u"1000"_s, 2, 5, 1, 0, u"1050|0|true"_s, PriceKind::Consumer},
        {"percent off", u"1000"_s, 2, 12.5L, -1, 0, u"875|0|true"_s},
        {"all off", u"1000"_s, 2, 100, -1, 0, u"0|0|true"_s},
        {"more than all off", u"1000"_s, 2, 100.5L, -1, 0, u"NULL|3|false"_s},
        {"percent of nothing", u"0"_s, 2, 150, -1, 0, u"NULL|2|false"_s},
        {"amount to nothing", u"0"_s, 3, 500, 1, 0, u"NULL|2|false"_s},
        {"no consumer price", u"0"_s, 3, 500, 1, 0, u"NULL|2|false"_s, PriceKind::Consumer},
        {"rounded away", u"4"_s, 2, 5, 1, 10, u"NULL|7|false"_s},
        {"rounded away, taken over", u"7"_s, 1, 0, 0, 100, u"NULL|7|false"_s},
        {"amount off, rounded away", u"14"_s, 3, 10, -1, 10, u"NULL|7|false"_s},
        {"amount off, nothing to round", u"10"_s, 3, 10, -1, 10, u"0|0|true"_s},
        {"amount of 15 digits", u"1"_s, 3, 999999999999999.0L, 1, 0, u"1000000000000000|0|true"_s},
        {"exact digits", u"1234567890123456789.123456789"_s, 2, 5.5L, 1, 0, u"1302469124080246912.525246912|0|true"_s},
        {"many decimals", u"999.123456789"_s, 2, 12.345L, 1, 0, u"1122.46524753|0|true"_s},
        {"a thousandfold", u"7654321.123456789"_s, 2, 123456.789L, 1, 0, u"9457433399.891934291|0|true"_s},
        {"half away from zero", u"0.000000005"_s, 2, 10, 1, 0, u"0.000000006|0|true"_s},
        {"too little to change", u"0.000000004"_s, 2, 10, 1, 0, u"0.000000004|1|false"_s},
        {"largest", most, 2, 0, 1, 0, most + u"|1|false"_s},
        {"too large", most, 2, 1, 1, 0, u"NULL|4|false"_s},
        {"far too large", most, 2, 9999999999999.0L, 1, 0, u"NULL|4|false"_s},
        {"a large factor", u"0.5"_s, 2, 1000000000000.0L, 1, 0, u"5000000000.5|0|true"_s},
        {"rounded up", u"100"_s, 2, 5, 1, 10, u"110|0|true"_s},
        {"rounded down", u"104.9"_s, 3, 0, 1, 10, u"100|0|true"_s},
        {"rounded to itself", u"1000"_s, 2, 1, 1, 100, u"1000|1|false"_s},
        {"rounded to thousands", u"1499.999999999"_s, 3, 0, 1, 1000, u"1000|0|true"_s},
        {"rounded to ten thousands", u"5000"_s, 3, 0, 1, 10000, u"10000|0|true"_s},
        {"rounded beyond the column", most, 3, 0, 1, 10000, u"NULL|4|false"_s},
        {"amount", u"1000"_s, 3, 0.000000001L, 1, 0, u"1000.000000001|0|true"_s},
        {"amount off", u"1000"_s, 3, 1000, -1, 0, u"0|0|true"_s},
        {"amount too much off", u"1000"_s, 3, 1000.000000001L, -1, 10000, u"NULL|3|false"_s},
        {"amount too large", most, 3, 1, 1, 0, u"NULL|4|false"_s},
        {"last purchase", u"7"_s, 1, 0, 0, 0, u"30|0|true"_s},
        {"last sale", u"7"_s, 1, 1, 0, 100, u"100|0|true"_s},
        {"highest purchase, of the movements", u"7"_s, 1, 2, 0, 0, u"50|0|true"_s},
        {"highest sale, of the levels", u"7"_s, 1, 3, 0, 0, u"1900|0|true"_s},
        {"highest sale, of the last level", u"2000"_s, 1, 3, 0, 100, u"2000|1|false"_s},
    };
    // Of the same day the later movement is the last; a return, a gift and another kind of document are no price.
    m_database->Exec(u"insert into Kardex (Kala, Anbar, OperationType, OperationCode, [Date], Amount1, Cost) values "
                     "(501, 1, 1, 1, '1405/02/01', 1, 50), (501, 1, 1, 2, '1405/03/01', 1, 20), (501, 1, 1, 3, "
                     "'1405/03/01', 1, 30), (501, 1, 1, 4, '1405/04/01', -1, 60), (501, 1, 1, 5, '1405/04/01', 1, 0), "
                     "(501, 1, 9, 6, '1405/05/01', 1, 99), (501, 1, 2, 7, '1405/01/01', -1, 140), (502, 1, 1, 8, "
                     "'1405/06/01', 1, 77)"_s);
    for (const auto &row : rows) {
        m_database->Exec(
            u"update GoodCostDiscount set CostLevel_Sell_10 = %1, CostLevel_Buy_10 = %1, CostLevel_Buy_3 = "
            "40, CostLevel_Sell_4 = 1900 where GoodCode = 501 update GoodInf set ConsumerPrice = %1 where "
            "Code = 501"_s.arg(row.before));
        const int level = row.kind == PriceKind::Consumer ? NoPriceLevel : 10;
        const PriceInstruction asked{row.kind, level, row.option, row.value, row.direction, row.rounding};
        QVERIFY(m_desk->goods.BulkPrices_Prepare({ScopeKind::Marked, {501}}, asked));
        const QString after = m_database->Rows(u"select NewPrice, Fate, Picked from #BulkPrices"_s).join(u' ');
        QVERIFY2(after == row.after, qPrintable(QLatin1StringView(row.name) + u": "_s + after));
    }
    // Neither movements nor a price of a default level.
    for (const int source : {0, 1}) {
        m_desk->goods.BulkPrices_Prepare({ScopeKind::Marked, {503, 504}},
                                         {PriceKind::Sale, 1, 1, host::Quantity(source), 0, 0});
        QCOMPARE(m_database->Rows(u"select Code, Fate from #BulkPrices"_s), (QStringList{u"503|2"_s, u"504|2"_s}));
    }
}

void TestGoodBulk::refused()
{
    TGood_DM &goods = m_desk->goods;
    const host::Quantity nan = std::numeric_limits<host::Quantity>::quiet_NaN();
    const PriceInstruction prices[] = {
        {PriceKind::Sale, 11, 2, 5, 1, 0},    {PriceKind::Purchase, NoPriceLevel, 2, 5, 1, 0},
        {PriceKind::Sale, 1, 4, 5, 1, 0},     {PriceKind::Sale, 1, 1, 3.5L, 1, 0},
        {PriceKind::Sale, 1, 2, -5, 1, 0},    {PriceKind::Sale, 1, 2, nan, 1, 0},
        {PriceKind::Sale, 1, 3, 1e19L, 1, 0}, {PriceKind::Sale, 1, 3, 5, 0, 0},
        {PriceKind::Sale, 1, 3, 5, 1, 5},
    };
    const QStringList before = Snapshot(*m_database);
    for (const PriceInstruction &asked : prices)
        QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.BulkPrices_Prepare(Everything, asked));
    QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.BulkPrices_Apply(Order())); // nothing is previewed
    for (const GroupDiscount &asked : {GroupDiscount{}, GroupDiscount{{true}, {}, false, false, {100.5L}, {}, 0, 0},
                                       GroupDiscount{{}, {}, true, false, {}, {}, 5, 0}})
        QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.ApplyGroupDiscount(Everything, asked, Order()));
    // Of two types that may not stand together, that do not exist, and too many.
    for (const QString &ids : {u""_s, u"1;drop table GoodInf"_s, u"1,4"_s, u"2,99"_s, u"1,2,3,4,5,6"_s})
        QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods.DetailTypes_Apply(Everything, ids, Order()));
    QCOMPARE(Snapshot(*m_database), before);
}

void TestGoodBulk::namesTheGoodsOnce()
{
    // Codes that are no goods, repeated ones, and one more than a block.
    QList<int> codes(1001);
    std::iota(codes.begin(), codes.end(), 10000);
    codes << 502 << 501 << 502 << -1;
    const PriceInstruction asked{PriceKind::Sale, 2, 2, 5, 1, 0};
    const auto statements = [&](const QList<int> &of) {
        const quint64 before = host::StatementsSent();
        m_desk->goods.BulkPrices_Prepare({ScopeKind::Marked, of}, asked);
        return host::StatementsSent() - before;
    };
    QCOMPARE(statements(codes), statements({501}) + 1);
    m_desk->goods.BulkPrices_Prepare({ScopeKind::Marked, codes}, asked);
    m_desk->goods.BulkPrices_GetAll(BulkPrices::Rows::Staying);
    QCOMPARE(m_desk->goods.BulkPrices_QRY.RecordCount(), 1002);
    QCOMPARE(m_desk->goods.BulkPrices_QRY.IntField(u"Fate"), static_cast<int>(PriceFate::GoodGone));
    QCOMPARE(m_database->Rows(u"select Code from #BulkPrices where Fate = 0 order by Place"_s), // the list's order
             (QStringList{u"502"_s, u"501"_s}));
    QVERIFY(m_desk->goods.BulkPrices_Prepare({ScopeKind::Marked, {}}, asked));
    QCOMPARE(Text(m_desk->goods.BulkPrices_Apply(Order())), u"0: 0 written, 0 left"_s);
    QCOMPARE(m_database->Scalar(u"select count(*) from BulkChanges"_s).toInt(), 0);
}

void TestGoodBulk::writesWhatWasPreviewed()
{
    TGood_DM &goods = m_desk->goods;
    for (int code = 505; code <= 508; ++code)
        m_database->Exec(u"insert into GoodInf (Code, GrpCode, Name) values (%1, 5, N'د') insert into GoodCostDiscount "
                         "(GoodCode, CostLevel_Sell_2) values (%1, 3000)"_s.arg(code));
    goods.BulkPrices_Prepare(Everything, {PriceKind::Sale, 2, 3, 500, 1, 0});
    const QString picked = u"select count(*), sum(NewPrice - OldPrice) from #BulkPrices where Picked = 1"_s;
    QCOMPARE(m_database->Rows(picked), QStringList{u"6|3000"_s});
    goods.BulkPrices_GetAll();
    goods.BulkPrices_QRY.Locate(u"Code", 505); // one unmarked in the grid, one in a list
    goods.BulkPrices_QRY.Edit();
    goods.BulkPrices_QRY.SetField(u"Picked", false);
    goods.BulkPrices_QRY.Post();
    goods.BulkPrices_Pick({506, 9999}, false);
    QCOMPARE(m_database->Rows(picked), QStringList{u"4|2000"_s});

    // Another desk: a price, a good that goes, one that comes.
    const Desk other(m_database->AnotherConnection(), *m_database);
    host::Exec(other.goods.Connection(),
               u"update GoodCostDiscount set CostLevel_Sell_2 = 2001 where GoodCode = 502 exec GoodInf_Delete 507 "
               "insert into GoodInf (Code, GrpCode, Name) values (599, 5, N'تازه')"_s);
    const quint64 sent = host::StatementsSent();
    const BulkResult result = goods.BulkPrices_Apply(Order());
    QVERIFY(host::StatementsSent() - sent <= 10);
    QCOMPARE(Text(result), u"0: 2 written, 2 left"_s);
    const auto prices = [&] {
        return m_database->Rows(u"select GoodCode, CostLevel_Sell_2 from GoodCostDiscount order by GoodCode"_s);
    };
    QCOMPARE(prices(), (QStringList{u"501|1500"_s, u"502|2001"_s, u"503|0"_s, u"505|3000"_s, u"506|3000"_s,
                                    u"508|3500"_s})); // no price is none to be raised
    QCOMPARE(m_database->Rows(u"select Code, Fate from #BulkPrices where Fate <> 0"_s),
             (QStringList{u"502|6"_s, u"503|2"_s, u"504|2"_s, u"507|5"_s}));
    QVERIFY(m_database->Rows(u"select Code from GoodInf where ModifiedDate is not null"_s).isEmpty());
    goods.BulkChanges_GetAll();
    QCOMPARE(goods.BulkChanges_QRY.TextField(u"Title"), Order().title);
    QCOMPARE(goods.BulkChanges_QRY.IntField(u"Goods"), 2);
    goods.BulkGoods_GetAll(result.change);
    QCOMPARE(goods.BulkGoods_QRY.QuantityField(u"OldPrice"), 1000);

    // Since then one more price was changed, and another good has the code and the price of one that went.
    host::Exec(other.goods.Connection(),
               u"update GoodCostDiscount set CostLevel_Sell_2 = 1 where GoodCode = 501 exec GoodInf_Delete 508 insert "
               "into GoodInf (Code, GrpCode, Name, CreatedDate, CreatedTime) values (508, 5, N'نو', '1405/08/30', "
               "'10:11:13') insert into GoodCostDiscount (GoodCode, CostLevel_Sell_2) values (508, 3500)"_s);
    QCOMPARE(Text(goods.BulkChange_Forecast(result.change)), u"2 = 0 + 1 same + 0 protected + 1 gone"_s);
    QCOMPARE(Text(goods.BulkChange_TakeBack(result.change, Order())), u"0: 0 written, 2 left"_s);
    QCOMPARE(prices(),
             (QStringList{u"501|1"_s, u"502|2001"_s, u"503|0"_s, u"505|3000"_s, u"506|3000"_s, u"508|3500"_s}));
    goods.BulkGoods_GetLeft(result.change);
    QCOMPARE(goods.BulkLeft_QRY.RecordCount(), 2);
    QCOMPARE(goods.BulkLeft_QRY.TextField(u"Name"), u"d'or"_s);
    QCOMPARE(m_database->Rows(u"select GoodCode, IsLeft from BulkChangeGoods order by 1"_s),
             (QStringList{u"501|1"_s, u"508|2"_s}));
    QCOMPARE(Text(goods.BulkChange_TakeBack(result.change, Order())), u"2: 0 written, 0 left"_s);
    QCOMPARE(goods.BulkChange_TakeBack(99, Order()).outcome, Outcome::Refused);
}

void TestGoodBulk::AddChanges()
{
    GroupDiscount discount;
    discount.sellTicked[0] = discount.buyTicked[3] = discount.defaultBuyTicked = true;
    discount.sell = {9, 55, 55, 55};
    discount.buy = {55, 55, 55, 7};
    discount.defaultBuy = 1;
    const Change discounts = [discount](TGood_DM &goods, const GoodsScope &scope, const BulkOrder *order) -> Answer {
        const bool marked = scope.kind == ScopeKind::Marked;
        return {marked ? goods.ApplyGroupDiscount(scope.codes, scope.codes.size() - 1, discount, *order)
                       : goods.ApplyGroupDiscount(scope, discount, *order)};
    };
    const Change asset = [](TGood_DM &goods, const GoodsScope &scope, const BulkOrder *order) -> Answer {
        return {goods.AssetType_Apply(scope, 2, *order)};
    };
    const Change details = [](TGood_DM &goods, const GoodsScope &scope, const BulkOrder *order) -> Answer {
        const QString ids = u"3,1,3,"_s;
        return order ? Answer{goods.DetailTypes_Apply(scope, ids, *order)}
                     : Answer{{}, goods.DetailTypes_Forecast(scope, ids)};
    };
    QTest::addColumn<Alike>("alike");
    QTest::newRow("discounts") << Alike{
        discounts,
        {},
        u"0: 3 written, 0 left"_s,
        u"select GoodCode, Discount_Sell_1, Discount_Sell_2, Discount_Buy_4, Default_CostLevel_Sell_Number from "
        "GoodCostDiscount order by GoodCode"_s,
        u"Discount_Sell_1=5.000000000 / Discount_Buy_4=7.000000000 / Default_Discount_Buy_Number=1.000000000|"
        "Discount_Sell_1=9 / Discount_Buy_4=7 / Default_Discount_Buy_Number=1"_s,
        u"501|9|0|7|1 502|9|0|7|1 503|9|0|7|1 504|9|0|7|0"_s,
        u"update GoodInf set CreatedDate = '1405/09/01', CreatedTime = '01:00:00' where Code = 502"_s,
        u"501|5|0|7|1 502|9|0|7|1 503|9|0|7|1 504|0|0|0|0"_s,
        2};
    QTest::newRow("asset type") << Alike{asset,
                                         {},
                                         u"0: 3 written, 0 left"_s,
                                         u"select Code, DaraiGoodType from GoodInf order by Code"_s,
                                         u"تعیین نشده|مواد اولیه"_s,
                                         u"501|2 502|2 503|2 504|2"_s,
                                         u"update GoodInf set DaraiGoodType = 3 where Code = 502"_s,
                                         u"501|0 502|3 503|2 504|0"_s};
    QTest::newRow("detail types") << Alike{
        details,
        u"5 = 3 + 0 same + 1 protected + 1 gone"_s,
        u"0: 3 written, 1 left"_s,
        u"select GoodCode, DetailID from GoodDetailRelation order by GoodCode, DetailID"_s,
        u"رنگ، سریال|<جنس>، سریال"_s,
        u"501|1 501|3 502|1 502|3 503|3 504|1 504|3"_s,
        u"insert into GoodDetailValues (GoodCode) values (502) insert into GoodDetailKardex (DetailValueID, StoreCode, "
        "GoodCode, OperationType, OperationCode) values (2, 1, 502, 3, 1)"_s,
        u"501|1 501|2 502|1 502|3 503|3"_s,
        3};
}

void TestGoodBulk::givesAlike()
{
    QFETCH(Alike, alike);
    TGood_DM &goods = m_desk->goods;
    const BulkOrder order = Order();
    const GoodsScope scope{ScopeKind::Marked, {501, 502, 503, 504, 999, 501}};
    const auto stored = [&] { return m_database->Rows(alike.stored).join(u' '); };
    if (!alike.forecast.isEmpty())
        QCOMPARE(Text(alike.change(goods, scope, nullptr).forecast), alike.forecast);
    const BulkResult result = alike.change(goods, scope, &order).result;
    QCOMPARE(Text(result), alike.told);
    goods.BulkGoods_GetAll(result.change);
    QCOMPARE(goods.BulkGoods_QRY.TextField(u"OldText") + u'|' + goods.BulkGoods_QRY.TextField(u"NewText"), alike.texts);
    QCOMPARE(stored(), alike.written);
    // What is there already is no change, and no entry.
    QCOMPARE(alike.change(goods, Everything, &order).result.change, 0);
    QCOMPARE(m_database->Scalar(u"select count(*) from BulkChanges"_s).toInt(), 1);

    host::Exec(m_database->AnotherConnection(), alike.since);
    QCOMPARE(Text(goods.BulkChange_TakeBack(result.change, order)), u"0: 2 written, 1 left"_s);
    QCOMPARE(stored(), alike.back);
    goods.BulkGoods_GetLeft(result.change);
    QCOMPARE(goods.BulkLeft_QRY.IntField(u"Code"), 502);
    QCOMPARE(goods.BulkLeft_QRY.IntField(u"Left"), alike.reason);
}

void TestGoodBulk::cancelled_data()
{
    AddChanges();
    QTest::newRow("prices") << Alike{[](TGood_DM &goods, const GoodsScope &scope, const BulkOrder *order) -> Answer {
        const bool ready = goods.BulkPrices_Prepare(scope, {PriceKind::Sale, 2, 3, 5, 1, 0}, order->progress);
        return {ready ? goods.BulkPrices_Apply(*order) : BulkResult{Outcome::Cancelled}};
    }};
    QTest::newRow("taking back") << Alike{[](TGood_DM &goods, const GoodsScope &, const BulkOrder *order) -> Answer {
        return {goods.BulkChange_TakeBack(1, *order)};
    }};
}

void TestGoodBulk::cancelled()
{
    QFETCH(Alike, alike);
    const BulkOrder order = Order();
    const bool back = QTest::currentDataTag() == QByteArray("taking back");
    if (back)
        m_desk->goods.AssetType_Apply(Everything, 2, order);
    const QStringList before = Snapshot(*m_database);
    int steps = 0;
    for (Outcome outcome = Outcome::Cancelled; outcome == Outcome::Cancelled; ++steps) {
        QCOMPARE(Snapshot(*m_database), before);
        int done = 0;
        const BulkOrder giveUp = Order([&](int at, int total) { return at <= total && done++ < steps; });
        outcome = alike.change(m_desk->goods, Everything, &giveUp).result.outcome;
    }
    QVERIFY(steps > 3);
    QVERIFY(Snapshot(*m_database) != before);
}

void TestGoodBulk::keepsTheLastChanges()
{
    for (int type = 1; type <= 52; ++type)
        QCOMPARE(m_desk->goods.AssetType_Apply(Everything, type % 2 + 1, Order()).outcome, Outcome::Done);
    QCOMPARE(m_database->Rows(u"select COUNT(*), MIN(ID), MAX(ID) from BulkChanges"_s), QStringList{u"50|3|52"_s});
    QCOMPARE(m_database->Scalar(u"select COUNT(DISTINCT ChangeID) from BulkChangeGoods"_s).toInt(), 50);
    // The newest stays however many goods it names; those before it that are too many go.
    m_database->Exec(u"update BulkChanges set Goods = 600000 where ID IN (50, 51)"_s);
    m_desk->goods.AssetType_Apply(Everything, 3, Order());
    QCOMPARE(m_database->Rows(u"select ID from BulkChanges order by ID"_s), (QStringList{u"51"_s, u"52"_s, u"53"_s}));
    m_database->Exec(u"update BulkChangeFields set Field = 'Code = 1, Name'"_s);
    QVERIFY_THROWS_EXCEPTION(host::DatabaseError, m_desk->goods.BulkChange_TakeBack(53, Order()));
    QCOMPARE(m_database->Scalar(u"select count(*) from BulkChanges where GoodsTakenBack is not null"_s).toInt(), 0);
}

void TestGoodBulk::sendsToScales()
{
    TGood_DM &goods = m_desk->goods;
    m_database->Exec(
        u"insert into GoodInf (Code, GrpCode, Name) values (505, 5, N'د'), (506, 5, N'ه') insert into GoodCostDiscount "
        "(GoodCode, CostLevel_Sell_2) values (504, 20), (505, 10), (506, 10) update GoodCostDiscount set "
        "CostLevel_Buy_2 = 50, Default_CostLevel_Sell_Number = CASE GoodCode WHEN 502 THEN 1 ELSE 2 END insert into Items (Code, ChangeType, "
        "ScaleType, Price) values (501, 0, 1, 0), (502, 0, 1, 5), (503, 3, 1, 0), (504, 1, 1, 0), (505, 0, 1, 5), (506, "
        "0, 2, 5), (999, 0, 1, 5)"_s);
    const auto sent = [&](PriceKind kind) {
        goods.BulkPrices_Prepare(Everything, {kind, 2, 3, 10, -1, 0});
        return goods.BulkChange_SendToScales(goods.BulkPrices_Apply(Order()).change);
    };
    QCOMPARE(sent(PriceKind::Purchase), 0);
    // 502 shows another level, 503 is to be removed, 504 was never told of, 505 has no price, 506 is no item of goods.
    QCOMPARE(sent(PriceKind::Sale), 2);
    QCOMPARE(m_database->Rows(u"select Code, Name1, Price, BarCode, [Type], ChangeType from Items where Price <> 5"_s),
             (QStringList{u"501|d'or|990|62650101|1|2"_s, u"503|NULL|0|NULL|0|3"_s, u"504|ت|10||0|1"_s}));
}

REGISTER_TEST(TestGoodBulk)
#include "tst_good_bulk.moc"
