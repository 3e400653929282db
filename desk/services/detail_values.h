#pragma once

#include "host/services/detail_value_service.h"
#include "host/services/settings_service.h"

#include <QSqlDatabase>

namespace desk {

/// Detail values out of the tables of the desk.
class DetailValues : public host::DetailValueService
{
public:
    DetailValues(const QSqlDatabase &connection, const host::SettingsService &settings);

    host::TDetailValues DetailsOf(int goodCode) override;
    int FindDetailValue(int goodCode, const host::TDetailValues &details) override;
    int ResolveDetailValue(int goodCode, const host::TDetailValues &details) override;
    bool DeleteUnusedDetailValue(int detailValueId) override;
    void DeleteUnusedDetailValues(const QList<int> &detailValueIds) override;
    std::optional<host::TKnownDetail> FindByText(int goodCode, const QString &serialOrBarcode) override;
    host::DetailOwner SerialOwner(int goodCode, const QString &serial) override;
    host::DetailOwner BarcodeOwner(int goodCode, const QString &barcode) override;

private:
    host::DetailOwner OwnerByValue(int goodCode, int kind, const QString &text);

    QSqlDatabase m_connection;
    const host::SettingsService &m_settings;
};

} // namespace desk
