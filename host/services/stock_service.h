#pragma once

#include "host/services/types.h"

namespace host {

/// Stock on hand: the negative-stock check and the automatic storage operations that follow a change of opening stock.
class StockService
{
public:
    virtual ~StockService() = default;

    /// Checks what a change would do to stock. `probe` is a SELECT with the columns Code (good), Anbar (store) and
    /// Mogodi (the change, in main units); `date` is the day of the change. False, having told the user, when
    /// stock would become negative.
    virtual bool Check_TockMinus(const QString &probe, const QString &date) = 0;
    /// The same inside a transaction, which must not wait for a user: what he is to be told, empty when stock lasts.
    virtual QString StockShortage(const QString &probe, const QString &date) = 0;
    /// Brings the automatic storage documents in line with a good's opening stock. Runs inside the caller's
    /// transaction on the main connection.
    virtual void SaveStorageAutoOperation(TSoftwarePart part, int code) = 0;
    virtual void DeleteStorageAutoOperation(TSoftwarePart part, int code) = 0;
    /// The same for what a division of details takes out (24) or brings in (25), as it is saved: its movements and the
    /// stock that follows from them. They have no price: nothing is bought or sold.
    virtual void SaveStorageAutoOperation(TOperationType type, int code) = 0;
    virtual void DeleteStorageAutoOperation(TOperationType type, int code) = 0;
};

} // namespace host
