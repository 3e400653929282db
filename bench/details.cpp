#include "bench/details.h"

#include "bench/detail_work.h"
#include "bench/report.h"
#include "bench/shop.h"
#include "host/data/query.h"

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr qint64 OnHand = 100000;
constexpr int Range = DetailWork::Range;
constexpr int Purchase = DetailWork::Purchase;
constexpr int Sale = DetailWork::Sale;

void Once(Report &report, const QString &what, std::optional<double> limit, const std::function<void()> &operation)
{
    const quint64 before = host::StatementsSent();
    Line line{what, 0, {}, limit, 0};
    line.milliseconds = Timed(operation);
    line.statements = static_cast<double>(host::StatementsSent() - before);
    report.Add(line);
}

void Fill(DetailWork &details)
{
    const auto line = DetailWork::Line(Purchase, 1);
    details.Data().EnterGoodDetail_Open();
    details.Enter(line, 1, OnHand);
    details.Keep(line);
    details.Save(line);
}

/// Documents behind those of the demo shop.
void Documents(Report &report, DetailWork &details)
{
    const auto purchase = DetailWork::Line(Purchase, 1001);
    details.Data().EnterGoodDetail_Open();
    details.Enter(purchase, OnHand * 10, Range);
    Once(report, u"document with %1 serials bought, saved"_s.arg(Range), 1000, [&] {
        details.Keep(purchase);
        details.SaveDocument(purchase);
    });
    const auto sale = DetailWork::Line(Sale, 1001);
    details.Movements().ExitGoodDetails_Fill(sale);
    details.Choose(sale, OnHand * 10);
    Once(report, u"document with %1 serials sold, saved"_s.arg(Range), 1000, [&] {
        details.Movements().ExitGoodDetails_Keep(sale);
        details.SaveDocument(sale);
    });
}

} // namespace

void MeasureDetails(Report &report, Shop &shop)
{
    DetailWork details(shop.Host());
    Fill(details);
    const auto purchase = DetailWork::Line(Purchase, 2);
    const QString serials = u"%1 serials"_s.arg(Range);
    details.Data().EnterGoodDetail_Open();
    Once(report, serials + u", entered as a range"_s, 1000, [&] { details.Enter(purchase, OnHand + 1, Range); });
    Once(report, serials + u", line kept and document saved"_s, 1000, [&] {
        details.Keep(purchase);
        details.Save(purchase);
    });
    const auto sale = DetailWork::Line(Sale, 1);
    Once(report, u"%1 serials, offered for a sale"_s.arg(OnHand + Range), {},
         [&] { details.Movements().ExitGoodDetails_Fill(sale); });
    TExitNarrowing typed;
    for (const QString &serial : {u"9"_s, u"9987"_s, u"none"_s}) {
        typed.Serial = serial;
        report.Measure(u"serials on hand, narrowed to "_s + serial, 5, 100,
                       [&] { details.Data().ExitGoodDetail_Open(sale, typed); });
    }
    report.Measure(u"serials on hand, one scanned"_s, 5, 100,
                   [&] { details.Movements().ExitGoodDetails_FindRow(sale, u"98765"_s); });
    Once(report, serials + u", chosen as a range"_s, 1000, [&] { details.Choose(sale, 50001); });
    Once(report, serials + u", choice kept and document saved"_s, 1000, [&] {
        details.Movements().ExitGoodDetails_Keep(sale);
        details.Save(sale);
    });
    Documents(report, details);
}

} // namespace bench
