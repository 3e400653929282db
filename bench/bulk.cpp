#include "bench/bulk.h"

#include "bench/report.h"
#include "bench/shop.h"
#include "host/data/query.h"

#include <algorithm>
#include <array>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

using namespace goods;

const GoodsScope AllGoods{ScopeKind::All, {}};
const PriceInstruction FivePercent{PriceKind::Sale, 1, 2, 5, 1, 10};

BulkOrder Order()
{
    return {u"پنج درصد اضافه"_s, u"مدیر (1)"_s, u"1405/08/30"_s, u"10:00:00"_s, {}};
}

/// A change and its way back, three times; the medians.
class ThereAndBack
{
public:
    ThereAndBack(Report &report, Shop &shop) : m_report(report), m_shop(shop) {}

    void Measure(const QString &what, std::optional<double> limit, const std::function<void()> &prepare,
                 const std::function<BulkResult()> &change)
    {
        std::array<double, 3> there{};
        std::array<double, 3> back{};
        quint64 thereStatements = 0;
        quint64 backStatements = 0;
        for (size_t i = 0; i < there.size(); ++i) {
            prepare();
            BulkResult done;
            BulkResult taken;
            thereStatements = Timed(there[i], [&] { done = change(); });
            backStatements = Timed(back[i], [&] { taken = m_shop.Data().BulkChange_TakeBack(done.change, Order()); });
            if (done.written < m_shop.size() * 9 / 10 || taken.written != done.written)
                throw std::runtime_error("a change of all goods did not change them");
        }
        Add(what + u", written"_s, there, limit, thereStatements);
        Add(what + u", taken back"_s, back, 3000, backStatements);
    }

private:
    static quint64 Timed(double &milliseconds, const std::function<void()> &work)
    {
        const quint64 before = host::StatementsSent();
        milliseconds = bench::Timed(work);
        return host::StatementsSent() - before;
    }
    void Add(const QString &what, std::array<double, 3> &times, std::optional<double> limit, quint64 statements)
    {
        std::sort(times.begin(), times.end());
        m_report.Add({what, times[1], {}, limit, static_cast<double>(statements)});
    }

    Report &m_report;
    Shop &m_shop;
};

void Preview(Report &report, TGood_DM &data, const QString &of, const GoodsScope &scope)
{
    report.Measure(u"+5 % on one price of "_s + of + u", previewed"_s, 3, 1000, [&] {
        data.BulkPrices_Prepare(scope, FivePercent);
        data.BulkPrices_GetAll();
    });
    report.Measure(u"+5 % of "_s + of + u": rows of the preview alone"_s, 3, {}, [&] { data.BulkPrices_GetAll(); });
}

} // namespace

void MeasureBulk(Report &report, Shop &shop)
{
    TGood_DM &data = shop.Data();
    const QSqlDatabase &main = shop.Host().DM.ADOConnection1;
    host::Exec(main, u"update GoodCostDiscount set CostLevel_Sell_1 = 1000 + GoodCode"_s);
    GoodsScope marked;
    for (host::Query codes(main, u"select Code from GoodInf"_s); !codes.Eof(); codes.Next())
        marked.codes += codes.Int(0);

    Preview(report, data, u"all goods"_s, AllGoods);
    Preview(report, data, u"as many marked goods"_s, marked);
    PriceInstruction highest = FivePercent;
    highest.option = 1;
    highest.value = 3;
    report.Measure(u"highest sale price to one level of all goods, previewed"_s, 3, {},
                   [&] { data.BulkPrices_Prepare(AllGoods, highest); });
    ThereAndBack bulk(report, shop);
    bulk.Measure(
        u"+5 % of all goods"_s, 2000, [&] { data.BulkPrices_Prepare(AllGoods, FivePercent); },
        [&] { return data.BulkPrices_Apply(Order()); });
    GroupDiscount discount;
    discount.sellTicked = {true, true, true, true};
    discount.sell = {11, 12, 13, 14.5L};
    discount.defaultSellTicked = true;
    discount.defaultSell = 2;
    bulk.Measure(
        u"discounts of all goods"_s, 2000, [] {}, [&] { return data.ApplyGroupDiscount(AllGoods, discount, Order()); });
    bulk.Measure(
        u"asset type of all goods"_s, 2000, [] {}, [&] { return data.AssetType_Apply(AllGoods, 5, Order()); });
    bulk.Measure(
        u"two detail types for all goods"_s, {}, [] {},
        [&] { return data.DetailTypes_Apply(AllGoods, u"2,3"_s, Order()); });
    data.BulkPrices_Close();
}

} // namespace bench
