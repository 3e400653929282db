#include "desk/lists/deletion_rules.h"

#include "host/data/query.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::TSoftwarePart;

/// A use of an entity: `statement` gives a row for the code in place of %1 when there is one.
struct Use
{
    TSoftwarePart part;
    const char16_t *statement;
    const char16_t *reason;
};

// In the order in which a user can do something about them.
constexpr Use Uses[] = {
    {TSoftwarePart::GoodsGroups, u"SELECT TOP 1 Code FROM GoodInf WHERE GrpCode = %1",
     u"کالاهایی در این گروه ثبت شده‌اند"},

    {TSoftwarePart::Units, u"SELECT TOP 1 Code FROM GoodInf WHERE Unit = %1 OR Unit2 = %1",
     u"کالاهایی با این واحد ثبت شده‌اند"},
    {TSoftwarePart::Units,
     u"SELECT Name FROM Settings WHERE Name = 'SquareMetreUnit' AND Value = CAST(%1 AS nvarchar(10))",
     u"در تنظیمات، واحد متر مربع است"},

    {TSoftwarePart::Stores, u"SELECT TOP 1 Code FROM GoodInf WHERE Store = %1",
     u"انبار پیش‌فرض کالاهایی است"},
    {TSoftwarePart::Stores, u"SELECT TOP 1 ID FROM GoodFirstAsset WHERE StoreCode = %1",
     u"موجودی اول دوره در آن ثبت شده است"},
    {TSoftwarePart::Stores, u"SELECT TOP 1 Code FROM Kardex WHERE Anbar = %1", u"گردش کالا در آن ثبت شده است"},
    {TSoftwarePart::Stores, u"SELECT TOP 1 Code FROM Documents WHERE StoreCode = %1 OR ToStoreCode = %1",
     u"سندهایی برای آن ثبت شده است"},
    {TSoftwarePart::Stores, u"SELECT TOP 1 ID FROM GoodDetailKardex WHERE StoreCode = %1",
     u"جزئیات کالا در آن ثبت شده است"},
    {TSoftwarePart::Stores, u"SELECT TOP 1 ID FROM GoodDetailDivisionDetail WHERE StoreCode = %1",
     u"تقسیم جزئیات کالا در آن ثبت شده است"},

    {TSoftwarePart::Goods, u"SELECT TOP 1 Code FROM Kardex WHERE Kala = %1", u"برای آن گردش کالا ثبت شده است"},
    {TSoftwarePart::Goods,
     u"SELECT TOP 1 v.Code FROM Vouchers v INNER JOIN GoodInf g ON g.VoucherCode = v.Code WHERE g.Code = %1 AND "
     u"v.Approved = 1",
     u"سند اول دوره‌ی آن تأیید شده است"},
    {TSoftwarePart::Goods,
     u"SELECT TOP 1 l.ID FROM VoucherLines l INNER JOIN Vouchers v ON v.Code = l.VoucherCode WHERE l.GoodCode = %1 AND "
     u"(v.Kind <> 1 OR v.Approved = 1)",
     u"در سندهای حسابداری به کار رفته است"},
    {TSoftwarePart::Goods, u"SELECT TOP 1 ID FROM GoodDetailKardex WHERE GoodCode = %1",
     u"جزئیات آن در اسناد ثبت شده است"},
    {TSoftwarePart::Goods, u"SELECT TOP 1 ID FROM GoodDetailDivisionDetail WHERE GoodCode = %1",
     u"در تقسیم جزئیات کالا به کار رفته است"},
    {TSoftwarePart::Goods, u"SELECT TOP 1 ID FROM OnlineProduct WHERE isdelete <> 1 AND Masterid = %1",
     u"در سفارش‌گیر همراه استفاده می‌شود"},
    {TSoftwarePart::Goods, u"SELECT TOP 1 ID FROM Market.Product WHERE Deleted <> 1 AND VelakProductCode = %1",
     u"در فروشگاه اینترنتی استفاده می‌شود"},
};

} // namespace

std::optional<QString> ReasonToKeep(const QSqlDatabase &connection, TSoftwarePart part, int code)
{
    for (const Use &use : Uses) {
        if (use.part == part && host::Exists(connection, QString::fromUtf16(use.statement).arg(code)))
            return QString::fromUtf16(use.reason);
    }
    return std::nullopt;
}

QString UsedCondition(TSoftwarePart part, const QString &codeColumn)
{
    QStringList uses;
    for (const Use &use : Uses) {
        if (use.part == part)
            uses << u"EXISTS ("_s + QString::fromUtf16(use.statement).arg(codeColumn) + u')';
    }
    return u'(' + uses.join(u" OR "_s) + u')';
}

} // namespace desk
