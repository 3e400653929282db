#include "bench/details.h"

#include "bench/report.h"
#include "bench/shop.h"
#include "desk/documents/document_store.h"
#include "gooddetail/serial_dm.h"
#include "host/data/query.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr qint64 OnHand = 100000;
constexpr int Range = 10000;
constexpr int Purchase = 1;
constexpr int Sale = 2;
/// A power tool of the demo shop, with serial, colour and warranty.
constexpr int Good = 200001;

class Details
{
public:
    explicit Details(Shop &shop) : m_host(shop.Host()), m_data(m_host), m_details(m_host.detailValues.DetailsOf(Good))
    {
        m_details.Values[1] = u"قرمز"_s;
    }

    TSerial_DM &Data() { return m_data; }
    static host::TDocumentLine Line(int type, int code) { return {Good, 4, 1, quint8(type), false, code, 1, 0}; }

    void Enter(const host::TDocumentLine &line, qint64 from, qint64 count)
    {
        const host::TSerialBatch batch{
            m_data.EnterGoodDetail_Table(), line, m_details, {1, 0, 1}, host::TSerialRange{from, from + count - 1}};
        Expect(m_host.serialBatches.EnterSerials(batch).Written, static_cast<int>(count));
    }
    void Save(const host::TDocumentLine &line)
    {
        Expect(static_cast<int>(
                   m_host.detailMovements.GoodDetailsOperation_Save(line.OperationType, line.OperationCode).size()),
               0);
    }
    void Choose(const host::TDocumentLine &line, qint64 from)
    {
        Expect(m_host.serialBatches.ChooseSerials(line, {from, from + Range - 1}, {1}).value_or(-1), Range);
    }
    host::DetailMovementService &Movements() { return m_host.detailMovements; }
    /// The whole document around what is kept for its line: header, line, movement, details, stock.
    void SaveDocument(const host::TDocumentLine &kept)
    {
        desk::Document document;
        document.Kind = kept.OperationType;
        document.Code = kept.OperationCode;
        document.Date = u"1405/09/01"_s;
        document.StoreCode = kept.StoreCode;
        desk::DocumentLine line;
        line.OperationRow = kept.OperationRow;
        line.Good.Code = kept.GoodCode;
        line.StoreCode = kept.StoreCode;
        line.Amount1 = Range;
        document.Lines << line;
        desk::DocumentStore(m_host).Save(document);
    }

    static void Expect(int found, int wanted)
    {
        if (found != wanted)
            throw std::runtime_error("good details: " + std::to_string(found) + " instead of " +
                                     std::to_string(wanted));
    }

private:
    host::Host &m_host;
    TSerial_DM m_data;
    host::TDetailValues m_details;
};

void Once(Report &report, const QString &what, std::optional<double> limit, const std::function<void()> &operation)
{
    const quint64 before = host::StatementsSent();
    Line line{what, 0, {}, limit, 0};
    line.milliseconds = Timed(operation);
    line.statements = static_cast<double>(host::StatementsSent() - before);
    report.Add(line);
}

void Fill(Details &details)
{
    const auto line = Details::Line(Purchase, 1);
    details.Data().EnterGoodDetail_Open();
    details.Enter(line, 1, OnHand);
    details.Movements().EnterGoodDetails_Keep(details.Data().EnterGoodDetail_Table(), line);
    details.Save(line);
}

/// Documents behind those of the demo shop.
void Documents(Report &report, Details &details)
{
    const auto purchase = Details::Line(Purchase, 1001);
    details.Data().EnterGoodDetail_Open();
    details.Enter(purchase, OnHand * 10, Range);
    Once(report, u"document with %1 serials bought, saved"_s.arg(Range), 1000, [&] {
        details.Movements().EnterGoodDetails_Keep(details.Data().EnterGoodDetail_Table(), purchase);
        details.SaveDocument(purchase);
    });
    const auto sale = Details::Line(Sale, 1001);
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
    Details details(shop);
    Fill(details);
    const auto purchase = Details::Line(Purchase, 2);
    const QString serials = u"%1 serials"_s.arg(Range);
    details.Data().EnterGoodDetail_Open();
    Once(report, serials + u", entered as a range"_s, 1000, [&] { details.Enter(purchase, OnHand + 1, Range); });
    Once(report, serials + u", line kept and document saved"_s, 1000, [&] {
        details.Movements().EnterGoodDetails_Keep(details.Data().EnterGoodDetail_Table(), purchase);
        details.Save(purchase);
    });
    const auto sale = Details::Line(Sale, 1);
    Once(report, u"%1 serials, offered for a sale"_s.arg(OnHand + Range), {},
         [&] { details.Movements().ExitGoodDetails_Fill(sale); });
    TExitNarrowing typed;
    for (const QString &serial : {u"9"_s, u"9987"_s, u"none"_s}) {
        typed.Serial = serial;
        report.Measure(u"serials on hand, narrowed to "_s + serial, 5, 100,
                       [&] { details.Data().ExitGoodDetail_Open(sale, typed); });
    }
    Once(report, serials + u", chosen as a range"_s, 1000, [&] { details.Choose(sale, 50001); });
    Once(report, serials + u", choice kept and document saved"_s, 1000, [&] {
        details.Movements().ExitGoodDetails_Keep(sale);
        details.Save(sale);
    });
    Documents(report, details);
}

} // namespace bench
