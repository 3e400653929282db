#include "desk/services/permissions.h"

#include "desk/messages/catalogue.h"
#include "host/data/query.h"
#include "host/data/transaction.h"

#include <QtCore/QLoggingCategory>

#include <algorithm>

namespace desk {

namespace {

Q_LOGGING_CATEGORY(rights, "desk.rights", QtInfoMsg)

using host::TPermission;
using host::TSoftwarePart;

QString NameOf(TPermission permission)
{
    for (const NamedPermission &each : AllPermissions()) {
        if (each.permission == permission)
            return each.name;
    }
    return QString::number(static_cast<int>(permission));
}

QString NameOf(TSoftwarePart part)
{
    for (const NamedPart &each : AllParts()) {
        if (each.part == part)
            return each.name;
    }
    return QString::number(static_cast<int>(part));
}

} // namespace

const QList<NamedPermission> &AllPermissions()
{
    static const QList<NamedPermission> all{
        {TPermission::OpenList, u"مشاهده‌ی لیست"_qs},
        {TPermission::Create, u"ایجاد"_qs},
        {TPermission::Change, u"ویرایش"_qs},
        {TPermission::Delete, u"حذف"_qs},
        {TPermission::GoodsListExtra, u"امکانات لیست"_qs},
        {TPermission::Photo, u"عکس"_qs},
        {TPermission::SelectedLists, u"لیست‌های انتخابی"_qs},
    };
    return all;
}

const QList<NamedPart> &AllParts()
{
    static const QList<TPermission> basic{TPermission::OpenList, TPermission::Create, TPermission::Change,
                                          TPermission::Delete};
    static const QList<TPermission> goods =
        basic + QList<TPermission>{TPermission::GoodsListExtra, TPermission::Photo, TPermission::SelectedLists};
    static const QList<NamedPart> all{
        {TSoftwarePart::Goods, u"کالاها"_qs, goods},
        {TSoftwarePart::GoodsGroups, u"گروه‌های کالا"_qs, basic},
        {TSoftwarePart::Stores, u"انبارها"_qs, basic},
        {TSoftwarePart::Units, u"واحدهای سنجش"_qs, basic},
        {TSoftwarePart::OpeningStock, u"موجودی اول دوره"_qs, basic},
        {TSoftwarePart::DetailTypes, u"انواع جزئیات"_qs, basic + QList<TPermission>{TPermission::SelectedLists}},
        {TSoftwarePart::GoodDetails, u"ورود و خروج جزئیات کالا"_qs, basic},
        {TSoftwarePart::GoodDetailDivision, u"تقسیم جزئیات کالا"_qs, basic},
    };
    return all;
}

Permissions::Permissions(const QSqlDatabase &connection, host::MessageService &messages)
    : connection_(connection), messages_(messages)
{}

bool Permissions::IsGranted(int user, TSoftwarePart part, TPermission permission) const
{
    return host::Exists(connection_, u"SELECT UserCode FROM UserRights WHERE UserCode = %1 AND SoftwarePart = %2 "
                                     "AND Permission = %3"_qs.arg(user)
                                         .arg(static_cast<int>(part))
                                         .arg(static_cast<int>(permission)));
}

bool Permissions::HavePermission(const host::TUserInfo &user, TSoftwarePart part, TPermission permission, bool inform,
                                 bool record, const QString &text)
{
    if (IsGranted(user.Code, part, permission))
        return true;
    if (record)
        qCInfo(rights, "user %d was refused permission %d of part %d", user.Code, static_cast<int>(permission),
               static_cast<int>(part));
    if (inform) {
        const QString words = text.isEmpty() ? MessageText(message::NoRight, {NameOf(permission), NameOf(part)})
                                             : MessageText(message::NoRightTo, {text});
        messages_.ShowMessage(words, host::MessageIcon::Warning);
    }
    return false;
}

void Permissions::Replace(int user, const QList<std::pair<TSoftwarePart, TPermission>> &rights)
{
    QStringList rows;
    for (const auto &[part, permission] : rights)
        rows << u"(%1, %2, %3)"_qs.arg(user).arg(static_cast<int>(part)).arg(static_cast<int>(permission));
    host::Transaction transaction(connection_);
    host::Exec(connection_, u"DELETE FROM UserRights WHERE UserCode = %1"_qs.arg(user));
    if (!rows.isEmpty())
        host::Exec(connection_,
                   u"INSERT INTO UserRights (UserCode, SoftwarePart, Permission) VALUES "_qs + rows.join(u", "));
    transaction.Commit();
}

} // namespace desk
