#include "desk/services/entities.h"

#include "desk/lists/deletion_rules.h"
#include "desk/lists/entity_get.h"
#include "desk/lists/entity_kind.h"
#include "desk/lists/entity_list.h"
#include "desk/messages/catalogue.h"
#include "host/data/database_error.h"
#include "host/data/persian_text.h"
#include "host/data/query.h"
#include "host/data/transaction.h"
#include "host/host.h"

#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

Q_LOGGING_CATEGORY(entities, "desk.entities", QtInfoMsg)

using host::TSoftwarePart;

/// A desk renews its reservations every minute. One that has not been renewed for so many minutes belonged to a desk
/// that ended without giving it back: a power cut, a killed process.
constexpr int RenewMilliseconds = 60 * 1000;
constexpr int AbandonedMinutes = 10;

QString Abandoned()
{
    return u"LockedAt < DATEADD(minute, -%1, GETDATE())"_s.arg(AbandonedMinutes);
}

QString CodesOf(TSoftwarePart part, const QSet<int> &codes)
{
    QStringList list;
    for (const int code : codes)
        list << QString::number(code);
    return u"Status = %1 AND Code IN (%2)"_s.arg(static_cast<int>(part)).arg(list.join(u','));
}

QString Renewal(TSoftwarePart part, const QSet<int> &codes)
{
    return u"UPDATE CodeLock_TBL SET LockedAt = GETDATE() WHERE "_s + CodesOf(part, codes);
}

QString SelectCodeAndName(const EntityKind &kind)
{
    return u"SELECT %1 AS Code, %2 AS Name FROM %3"_s.arg(kind.codeColumn, kind.nameColumn, kind.table);
}

host::Entity EntityOf(const host::Query &query)
{
    return {query.Int(u"Code"), query.Text(u"Name")};
}

} // namespace

Entities::Entities(const QSqlDatabase &connection, host::MessageService &messages, host::SettingsService &settings,
                   host::StockService &stock)
    : m_connection(connection), m_messages(messages), m_settings(settings), m_stock(stock)
{
    m_renewal.setInterval(RenewMilliseconds);
    QObject::connect(&m_renewal, &QTimer::timeout, &m_renewal, [this] { RenewReservations(); });
}

Entities::~Entities()
{
    try {
        const QList<TSoftwarePart> parts = m_reserved.keys();
        for (const TSoftwarePart part : parts)
            Entities::ReleaseCodes(part); // not that of a class derived from it
    } catch (const host::DatabaseError &error) {
        // The database is gone: the codes stay reserved until the desk is started again.
        qCWarning(entities).noquote() << error.LogText();
    }
}

int Entities::Call_GroupList(TSoftwarePart part)
{
    TEntity_List_FRM list(*m_host, KindOf(part), host::TFormMode::DockedList);
    return list.ShowModally();
}

int Entities::Select_GroupList(TSoftwarePart part, const QString &text)
{
    TEntity_List_FRM list(*m_host, KindOf(part), host::TFormMode::Selection);
    list.SetParameterText(text);
    return list.ShowModally() == QDialog::Accepted ? list.ChosenCode() : 0;
}

QString Entities::Select_Entity_Multible_Param(TSoftwarePart part, const host::MultibleParam &wanted)
{
    if (part == TSoftwarePart::DetailTypes) {
        if (m_chooseDetailTypes)
            return m_chooseDetailTypes(wanted);
        m_messages.ShowMessage(MessageText(message::ModuleMissing), host::MessageIcon::Warning);
        return {};
    }
    TEntity_List_FRM list(*m_host, KindOf(part), host::TFormMode::Selection);
    list.SetMultiSelect(true);
    list.SetExcludedCodes(wanted.ExcludedCodes);
    return list.ShowModally() == QDialog::Accepted ? list.ChosenCodes() : QString();
}

bool Entities::Edit_Group(TSoftwarePart part, int id)
{
    if (part == TSoftwarePart::GoodsGroups && id == RootGroup) {
        m_messages.ShowMessage(MessageText(message::RootGroup), host::MessageIcon::Information);
        return false;
    }
    TEntity_Get_FRM editor(*m_host, KindOf(part));
    return editor.Open(id, host::TFormMode::Edit) == QDialog::Accepted;
}

int Entities::New_Group(TSoftwarePart part)
{
    TEntity_Get_FRM editor(*m_host, KindOf(part));
    editor.Open({}, host::TFormMode::New);
    return editor.SavedKey().toInt();
}

int Entities::Delete_Entity(TSoftwarePart part, int code, bool silent)
{
    const EntityKind &kind = KindOf(part);
    const auto found = Find(part, code);
    if (!found) {
        m_messages.ShowMessage(MessageText(message::EntityGone, {kind.singular}), host::MessageIcon::Warning);
        return Refused;
    }
    const QString entity = u"%1 «%2»"_s.arg(kind.singular, found->Name.trimmed());
    // What a killed desk was about to enter keeps no store.
    if (part == TSoftwarePart::Stores)
        ReleaseAbandonedCodes();
    if (Refuse(entity, part, code))
        return Refused;
    if (!silent && !m_messages.MsgDeleteItem(entity))
        return Declined;
    host::Transaction transaction(m_connection);
    // Another desk may have used it while the question stood.
    if (Refuse(entity, part, code))
        return Refused;
    DeleteRows(part, code);
    transaction.Commit();
    return Removed;
}

QString Entities::InUse(TSoftwarePart part, const QString &code) const
{
    return UsedCondition(part, code);
}

bool Entities::Refuse(const QString &entity, TSoftwarePart part, int code)
{
    if (part == TSoftwarePart::GoodsGroups && code == RootGroup) {
        m_messages.ShowMessage(MessageText(message::RootGroup), host::MessageIcon::Information);
        return true;
    }
    const auto reason = ReasonToKeep(m_connection, part, code);
    if (reason)
        m_messages.ShowMessage(MessageText(message::InUse, {entity, *reason}), host::MessageIcon::Warning);
    return reason.has_value();
}

void Entities::DeleteRows(TSoftwarePart part, int code)
{
    if (part != TSoftwarePart::Goods) {
        const EntityKind &kind = KindOf(part);
        host::Exec(m_connection, u"DELETE FROM %1 WHERE %2 = %3"_s.arg(kind.table, kind.codeColumn).arg(code));
        return;
    }
    // The good leaves its opening voucher while its row is still there to be taken out.
    host::Exec(m_connection, u"Exec AutoVoucherFirstPriodGoods @SaveType = 3, @Codes = '%1'"_s.arg(code));
    m_stock.DeleteStorageAutoOperation(part, code);
    host::Exec(m_connection, u"Exec GoodInf_Delete @Code = %1"_s.arg(code));
}

std::optional<host::Entity> Entities::Find(TSoftwarePart part, int code)
{
    const EntityKind &kind = KindOf(part);
    const host::Query query(m_connection, SelectCodeAndName(kind) + u" WHERE %1 = %2"_s.arg(kind.codeColumn).arg(code));
    if (query.IsEmpty())
        return std::nullopt;
    return EntityOf(query);
}

QList<host::Entity> Entities::List(TSoftwarePart part, const QString &text)
{
    const EntityKind &kind = KindOf(part);
    const QString wanted = host::Fold(text);
    QList<host::Entity> found;
    for (host::Query query(m_connection, SelectCodeAndName(kind) + u" ORDER BY "_s + kind.codeColumn); !query.Eof();
         query.Next()) {
        const host::Entity entity = EntityOf(query);
        if (host::Fold(entity.Name).contains(wanted))
            found << entity;
    }
    return found;
}

bool Entities::ReserveCode(TSoftwarePart part, int code)
{
    if (m_reserved.value(part).contains(code))
        return true;
    if (!TryReserve(part, code)) {
        // The holder may be gone for good.
        if (host::Exec(m_connection, u"DELETE FROM CodeLock_TBL WHERE "_s + Abandoned()) == 0 ||
            !TryReserve(part, code))
            return false;
    }
    m_reserved[part] << code;
    m_renewal.start();
    return true;
}

bool Entities::TryReserve(TSoftwarePart part, int code)
{
    try {
        host::Exec(m_connection, u"INSERT INTO CodeLock_TBL (Status, Code, UserCode) VALUES (%1, %2, %3)"_s
                                     .arg(static_cast<int>(part))
                                     .arg(code)
                                     .arg(m_settings.UserInfo().Code));
        return true;
    } catch (const host::DatabaseError &error) {
        if (error.KeyViolation())
            return false;
        throw;
    }
}

/// Takes the abandoned reservations along: this runs before a new code is proposed.
void Entities::ReleaseCodes(TSoftwarePart part)
{
    const QSet<int> mine = m_reserved.value(part);
    const QString own = mine.isEmpty() ? QString() : u" OR "_s + CodesOf(part, mine);
    host::Exec(m_connection, u"DELETE FROM CodeLock_TBL WHERE "_s + Abandoned() + own);
    m_reserved.remove(part);
    if (m_reserved.isEmpty())
        m_renewal.stop();
}

void Entities::ReleaseAbandonedCodes()
{
    host::Transaction transaction(m_connection);
    // After a sleep of the computer the own ones look abandoned.
    for (auto part = m_reserved.cbegin(); part != m_reserved.cend(); ++part)
        host::Run(m_connection, Renewal(part.key(), part.value()));
    host::Run(m_connection, u"DELETE FROM CodeLock_TBL WHERE "_s + Abandoned());
    // The working copy of opening rows stands under a reserved number turned negative.
    host::Run(
        m_connection,
        u"DELETE FROM GoodFirstAsset WHERE tmp = 1 AND GoodCode < 0 AND NOT EXISTS (SELECT 1 FROM CodeLock_TBL AS "
        "l WHERE l.Status = %1 AND l.Code = -GoodFirstAsset.GoodCode)"_s.arg(
            static_cast<int>(TSoftwarePart::OpeningStock)));
    transaction.Commit();
}

void Entities::RenewReservations()
{
    try {
        for (auto part = m_reserved.cbegin(); part != m_reserved.cend(); ++part)
            host::Exec(m_connection, Renewal(part.key(), part.value()));
    } catch (const host::DatabaseError &error) {
        // The next minute tries again; the save itself checks the code once more.
        qCWarning(entities).noquote() << error.LogText();
    }
}

} // namespace desk
