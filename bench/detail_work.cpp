#include "bench/detail_work.h"

#include "desk/documents/document_store.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Good = 200001;

void Expect(int found, int wanted)
{
    if (found != wanted)
        throw std::runtime_error("good details: " + std::to_string(found) + " instead of " + std::to_string(wanted));
}

} // namespace

DetailWork::DetailWork(host::Host &host) : m_host(host), m_data(host), m_details(host.detailValues.DetailsOf(Good))
{
    m_details.Values[1] = u"قرمز"_s;
}

host::TDocumentLine DetailWork::Line(int type, int code)
{
    return {Good, 4, 1, quint8(type), false, code, 1, 0};
}

void DetailWork::Enter(const host::TDocumentLine &line, qint64 from, qint64 count)
{
    const host::TSerialBatch batch{
        m_data.EnterGoodDetail_Table(), line, m_details, {1, 0, 1}, host::TSerialRange{from, from + count - 1}};
    Expect(m_host.serialBatches.EnterSerials(batch).Written, static_cast<int>(count));
}

void DetailWork::Keep(const host::TDocumentLine &line)
{
    Movements().EnterGoodDetails_Keep(m_data.EnterGoodDetail_Table(), line);
}

void DetailWork::Save(const host::TDocumentLine &line)
{
    Expect(static_cast<int>(Movements().GoodDetailsOperation_Save(line.OperationType, line.OperationCode).size()), 0);
}

void DetailWork::Choose(const host::TDocumentLine &line, qint64 from)
{
    Expect(m_host.serialBatches.ChooseSerials(line, {from, from + Range - 1}, {1}).value_or(-1), Range);
}

void DetailWork::SaveDocument(const host::TDocumentLine &kept)
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

} // namespace bench
