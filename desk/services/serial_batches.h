#pragma once

#include "desk/services/detail_desk.h"
#include "host/services/detail_movement_service.h"
#include "host/services/serial_batch_service.h"

namespace desk {

/// Serials as sets, over a temporary table of the connection with a row for each.
class SerialBatches : public host::SerialBatchService
{
public:
    SerialBatches(DetailDesk &desk, host::DetailMovementService &movements);

    host::TSerialBatchResult EnterSerials(const host::TSerialBatch &batch) override;
    host::TSerialBatchResult JudgeSerials(const host::TSerialBatch &batch) override;
    std::optional<int> ChooseSerials(const host::TDocumentLine &line, const host::TSerialRange &range,
                                     const host::TAmounts &amounts) override;

private:
    void Run(const QString &text);
    void Judge(const host::TSerialBatch &batch);
    void List(const host::TSerialBatch &batch);
    void FindKnown(const host::TSerialBatch &batch);
    void FindInLine(const host::TSerialBatch &batch);
    void AddUp(const host::TSerialBatch &batch);
    void FindReturnable(const host::TSerialBatch &batch);
    void Decide();
    void DecideReturn(const host::TSerialBatch &batch);
    void MakeValues(const host::TSerialBatch &batch);
    void MakeRows(const host::TSerialBatch &batch);
    host::TSerialBatchResult Read();

    DetailDesk &m_desk;
    host::DetailMovementService &m_movements;
    QSqlDatabase m_connection;
};

} // namespace desk
