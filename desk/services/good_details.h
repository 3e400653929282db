#pragma once

#include "desk/services/vouchers.h"
#include "host/services/detail_movement_service.h"
#include "host/services/good_detail_service.h"

namespace desk {

/// What is known of the details of goods, out of the detail ledger.
class GoodDetails : public host::GoodDetailService
{
public:
    /// `movements` outlives the service.
    GoodDetails(const QSqlDatabase &connection, host::MessageService &messages, host::DetailMovementService &movements);

    bool ExistsGoodDetailInsertedForOperation(int goodCode, host::TOperationType operation) override;
    void EnterGoodDetailSave(int goodCode, host::TOperationType operation) override;
    bool EnterGoodDetails_Get(int goodCode, host::TOperationType operation) override;
    bool CheckGoodDetailKardexExists(int goodCode) override;
    bool GoodDetailsSaved(int goodCode) override;
    bool CheckBarcodeInGoodDetail(const QString &barcode) override;
    bool UniqueDetailCodeInUse(int goodCode) override;

private:
    QSqlDatabase m_connection;
    host::MessageService &m_messages;
    host::DetailMovementService &m_movements;
};

} // namespace desk
