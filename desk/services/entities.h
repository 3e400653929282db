#pragma once

#include "host/services/entity_service.h"
#include "host/services/message_service.h"
#include "host/services/settings_service.h"
#include "host/services/stock_service.h"

#include <QMap>
#include <QSet>
#include <QSqlDatabase>
#include <QTimer>

#include <functional>

namespace host {
struct Host;
}

namespace desk {

/// Groups, stores and units with their lists and editors, and the deletion of any entity.
class Entities : public host::EntityService
{
public:
    Entities(const QSqlDatabase &connection, host::MessageService &messages, host::SettingsService &settings,
             host::StockService &stock);
    /// Gives back the codes that are still reserved.
    ~Entities() override;
    Entities(const Entities &) = delete;
    Entities &operator=(const Entities &) = delete;

    /// The host that screens are made with; it holds this service, so it comes after the constructor.
    void SetHost(host::Host &host) { m_host = &host; }

    /// How several detail types are chosen: on the list of the goods module, which comes after the services. Without it
    /// the user is told that there is no module.
    using DetailTypeChooser = std::function<QString(const host::MultibleParam &)>;
    void SetDetailTypeChooser(DetailTypeChooser chooser) { m_chooseDetailTypes = std::move(chooser); }

    int Call_GroupList(host::TSoftwarePart part) override;
    int Select_GroupList(host::TSoftwarePart part, const QString &text) override;
    bool Edit_Group(host::TSoftwarePart part, int id) override;
    int New_Group(host::TSoftwarePart part) override;
    int Delete_Entity(host::TSoftwarePart part, int code, bool silent) override;
    QString InUse(host::TSoftwarePart part, const QString &code) const override;
    QString Select_Entity_Multible_Param(host::TSoftwarePart part, const host::MultibleParam &wanted) override;

    std::optional<host::Entity> Find(host::TSoftwarePart part, int code) override;
    QList<host::Entity> List(host::TSoftwarePart part, const QString &text) override;

    bool ReserveCode(host::TSoftwarePart part, int code) override;
    void ReleaseCodes(host::TSoftwarePart part) override;
    void ReleaseAbandonedCodes() override;

    /// Results of Delete_Entity.
    enum DeleteResult { Removed = 0, Refused = 1, Declined = 2 };

private:
    bool Refuse(const QString &entity, host::TSoftwarePart part, int code);
    void DeleteRows(host::TSoftwarePart part, int code);
    bool TryReserve(host::TSoftwarePart part, int code);
    void RenewReservations();

    QSqlDatabase m_connection;
    host::MessageService &m_messages;
    host::SettingsService &m_settings;
    host::StockService &m_stock;
    host::Host *m_host = nullptr;
    DetailTypeChooser m_chooseDetailTypes;
    QMap<host::TSoftwarePart, QSet<int>> m_reserved;
    QTimer m_renewal; ///< runs while codes are reserved
};

} // namespace desk
