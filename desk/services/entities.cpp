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

#include <QtCore/QLoggingCategory>

namespace desk {

namespace {

Q_LOGGING_CATEGORY(entities, "desk.entities", QtInfoMsg)

using host::TSoftwarePart;

QString SelectCodeAndName(const EntityKind &kind)
{
    return u"SELECT %1 AS Code, %2 AS Name FROM %3"_qs.arg(kind.codeColumn, kind.nameColumn, kind.table);
}

host::Entity EntityOf(const host::Query &query)
{
    return {query.Int(u"Code"), query.Text(u"Name")};
}

} // namespace

Entities::Entities(const QSqlDatabase &connection, host::MessageService &messages, host::SettingsService &settings,
                   host::StockService &stock)
    : connection_(connection), messages_(messages), settings_(settings), stock_(stock)
{}

Entities::~Entities()
{
    try {
        const QList<TSoftwarePart> parts = reserved_.keys();
        for (const TSoftwarePart part : parts)
            ReleaseCodes(part);
    } catch (const host::DatabaseError &error) {
        // The database is gone: the codes stay reserved until the desk is started again.
        qCWarning(entities).noquote() << error.LogText();
    }
}

int Entities::Call_GroupList(TSoftwarePart part)
{
    TEntity_List_FRM list(*host_, KindOf(part), host::TFormMode::DockedList);
    return list.ShowModally();
}

int Entities::Select_GroupList(TSoftwarePart part, const QString &text)
{
    TEntity_List_FRM list(*host_, KindOf(part), host::TFormMode::Selection);
    list.SetParameterText(text);
    return list.ShowModally() == QDialog::Accepted ? list.ChosenCode() : 0;
}

QString Entities::Select_Entity_Multible_Param(TSoftwarePart part, const host::MultibleParam &wanted)
{
    if (part == TSoftwarePart::DetailTypes) {
        if (chooseDetailTypes_)
            return chooseDetailTypes_(wanted);
        messages_.ShowMessage(MessageText(message::ModuleMissing), host::MessageIcon::Warning);
        return {};
    }
    TEntity_List_FRM list(*host_, KindOf(part), host::TFormMode::Selection);
    list.SetMultiSelect(true);
    list.SetExcludedCodes(wanted.ExcludedCodes);
    return list.ShowModally() == QDialog::Accepted ? list.ChosenCodes() : QString();
}

bool Entities::Edit_Group(TSoftwarePart part, int id)
{
    if (part == TSoftwarePart::GoodsGroups && id == RootGroup) {
        messages_.ShowMessage(MessageText(message::RootGroup), host::MessageIcon::Information);
        return false;
    }
    TEntity_Get_FRM editor(*host_, KindOf(part));
    return editor.Open(id, host::TFormMode::Edit) == QDialog::Accepted;
}

int Entities::New_Group(TSoftwarePart part)
{
    TEntity_Get_FRM editor(*host_, KindOf(part));
    editor.Open({}, host::TFormMode::New);
    return editor.SavedKey().toInt();
}

int Entities::Delete_Entity(TSoftwarePart part, int code, bool silent)
{
    const EntityKind &kind = KindOf(part);
    const auto found = Find(part, code);
    if (!found) {
        messages_.ShowMessage(MessageText(message::EntityGone, {kind.singular}), host::MessageIcon::Warning);
        return Refused;
    }
    const QString entity = u"%1 «%2»"_qs.arg(kind.singular, found->Name.trimmed());
    if (Refuse(entity, part, code))
        return Refused;
    if (!silent && !messages_.MsgDeleteItem(entity))
        return Declined;
    host::Transaction transaction(connection_);
    // Another desk may have used it while the question stood.
    if (Refuse(entity, part, code))
        return Refused;
    DeleteRows(part, code);
    transaction.Commit();
    return Removed;
}

bool Entities::Refuse(const QString &entity, TSoftwarePart part, int code)
{
    if (part == TSoftwarePart::GoodsGroups && code == RootGroup) {
        messages_.ShowMessage(MessageText(message::RootGroup), host::MessageIcon::Information);
        return true;
    }
    const auto reason = ReasonToKeep(connection_, part, code);
    if (reason)
        messages_.ShowMessage(MessageText(message::InUse, {entity, *reason}), host::MessageIcon::Warning);
    return reason.has_value();
}

void Entities::DeleteRows(TSoftwarePart part, int code)
{
    if (part != TSoftwarePart::Goods) {
        const EntityKind &kind = KindOf(part);
        host::Exec(connection_, u"DELETE FROM %1 WHERE %2 = %3"_qs.arg(kind.table, kind.codeColumn).arg(code));
        return;
    }
    // The good leaves its opening voucher while its row is still there to be taken out.
    host::Exec(connection_, u"Exec AutoVoucherFirstPriodGoods @SaveType = 3, @Codes = '%1'"_qs.arg(code));
    stock_.DeleteStorageAutoOperation(part, code);
    host::Exec(connection_, u"Exec GoodInf_Delete @Code = %1"_qs.arg(code));
}

std::optional<host::Entity> Entities::Find(TSoftwarePart part, int code)
{
    const EntityKind &kind = KindOf(part);
    const host::Query query(connection_, SelectCodeAndName(kind) + u" WHERE %1 = %2"_qs.arg(kind.codeColumn).arg(code));
    if (query.IsEmpty())
        return std::nullopt;
    return EntityOf(query);
}

QList<host::Entity> Entities::List(TSoftwarePart part, const QString &text)
{
    const EntityKind &kind = KindOf(part);
    const QString wanted = host::Fold(text);
    QList<host::Entity> found;
    for (host::Query query(connection_, SelectCodeAndName(kind) + u" ORDER BY "_qs + kind.codeColumn); !query.Eof();
         query.Next()) {
        const host::Entity entity = EntityOf(query);
        if (host::Fold(entity.Name).contains(wanted))
            found << entity;
    }
    return found;
}

bool Entities::ReserveCode(TSoftwarePart part, int code)
{
    if (reserved_.value(part).contains(code))
        return true;
    try {
        host::Exec(connection_, u"INSERT INTO CodeLock_TBL (Status, Code, UserCode) VALUES (%1, %2, %3)"_qs
                                    .arg(static_cast<int>(part))
                                    .arg(code)
                                    .arg(settings_.UserInfo().Code));
    } catch (const host::DatabaseError &error) {
        if (error.KeyViolation())
            return false;
        throw;
    }
    reserved_[part] << code;
    return true;
}

void Entities::ReleaseCodes(TSoftwarePart part)
{
    QStringList codes;
    const QSet<int> mine = reserved_.value(part);
    for (const int code : mine)
        codes << QString::number(code);
    if (codes.isEmpty())
        return;
    host::Exec(connection_,
               u"DELETE FROM CodeLock_TBL WHERE Status = %1 AND Code IN (%2)"_qs.arg(static_cast<int>(part))
                   .arg(codes.join(u',')));
    reserved_.remove(part);
}

} // namespace desk
