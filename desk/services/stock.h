#pragma once

#include "host/data/quantity.h"
#include "host/services/message_service.h"
#include "host/services/settings_service.h"
#include "host/services/stock_service.h"

#include <QSqlDatabase>

namespace desk {

/// Reckons the stock of goods anew, as UpdateMogodiKala does it for one; `goods` is a SELECT of their codes.
void ReckonStock(const QSqlDatabase &connection, const QString &goods);

/// Stock on hand out of opening stock and movements, day by day.
class Stock : public host::StockService
{
public:
    Stock(const QSqlDatabase &connection, host::MessageService &messages, const host::SettingsService &settings);

    /// A fall in stock is refused when on some day from `date` on there would be less than nothing in the store.
    bool Check_TockMinus(const QString &probe, const QString &date) override;
    QString StockShortage(const QString &probe, const QString &date) override;
    /// Writes the opening stock of a good anew as its automatic storage document, and reckons its stock on hand.
    void SaveStorageAutoOperation(host::TSoftwarePart part, int code) override;
    void DeleteStorageAutoOperation(host::TSoftwarePart part, int code) override;
    void SaveStorageAutoOperation(host::TOperationType type, int code) override;
    void DeleteStorageAutoOperation(host::TOperationType type, int code) override;

private:
    void WriteMovements(host::TOperationType type, int code, const QString &rows);
    host::Quantity LowestFrom(int good, int store, const QString &date) const;

    QSqlDatabase m_connection;
    host::MessageService &m_messages;
    const host::SettingsService &m_settings;
};

} // namespace desk
