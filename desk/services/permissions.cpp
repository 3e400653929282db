#include "desk/services/permissions.h"

#include "desk/messages/catalogue.h"
#include "host/data/query.h"
#include "host/data/transaction.h"

#include <QLoggingCategory>

#include <algorithm>

using namespace Qt::StringLiterals;

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
        {TPermission::OpenList, u"مشاهده‌ی لیست"_s},
        {TPermission::Create, u"ایجاد"_s},
        {TPermission::Change, u"ویرایش"_s},
        {TPermission::Delete, u"حذف"_s},
        {TPermission::GoodsListExtra, u"امکانات لیست"_s},
        {TPermission::Photo, u"عکس"_s},
        {TPermission::SelectedLists, u"لیست‌های انتخابی"_s},
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
        {TSoftwarePart::Goods, u"کالاها"_s, goods},
        {TSoftwarePart::GoodsGroups, u"گروه‌های کالا"_s, basic},
        {TSoftwarePart::Stores, u"انبارها"_s, basic},
        {TSoftwarePart::Units, u"واحدهای سنجش"_s, basic},
        {TSoftwarePart::OpeningStock, u"موجودی اول دوره"_s, basic},
        {TSoftwarePart::Sales, u"اسناد فروش"_s, basic},
        {TSoftwarePart::Purchases, u"اسناد خرید"_s, basic},
        {TSoftwarePart::SaleReturns, u"برگشت از فروش"_s, basic},
        {TSoftwarePart::PurchaseReturns, u"برگشت از خرید"_s, basic},
        {TSoftwarePart::Transfers, u"انتقال بین انبارها"_s, basic},
        {TSoftwarePart::DetailTypes, u"انواع جزئیات"_s, basic + QList<TPermission>{TPermission::SelectedLists}},
        {TSoftwarePart::GoodDetails, u"ورود و خروج جزئیات کالا"_s, basic},
        {TSoftwarePart::GoodDetailDivision, u"تقسیم جزئیات کالا"_s, basic},
    };
    return all;
}

Permissions::Permissions(const QSqlDatabase &connection, host::MessageService &messages)
    : m_connection(connection), m_messages(messages)
{}

bool Permissions::IsGranted(int user, TSoftwarePart part, TPermission permission) const
{
    return host::Exists(m_connection, u"SELECT UserCode FROM UserRights WHERE UserCode = %1 AND SoftwarePart = %2 "
                                      "AND Permission = %3"_s.arg(user)
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
        m_messages.ShowMessage(words, host::MessageIcon::Warning);
    }
    return false;
}

void Permissions::Replace(int user, const QList<std::pair<TSoftwarePart, TPermission>> &rights)
{
    QStringList rows;
    for (const auto &[part, permission] : rights)
        rows << u"(%1, %2, %3)"_s.arg(user).arg(static_cast<int>(part)).arg(static_cast<int>(permission));
    host::Transaction transaction(m_connection);
    host::Exec(m_connection, u"DELETE FROM UserRights WHERE UserCode = %1"_s.arg(user));
    if (!rows.isEmpty())
        host::Exec(m_connection,
                   u"INSERT INTO UserRights (UserCode, SoftwarePart, Permission) VALUES "_s + rows.join(u", "));
    transaction.Commit();
}

} // namespace desk
