#include "tests/support/test_host.h"

#include "host/data/persian_text.h"
#include "host/look/theme.h"

#include <QtTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace test {
namespace {

/// "name(1, 2, text)"
template <typename... Parts> QString Call(const char *name, const Parts &...parts)
{
    QStringList texts;
    const auto text = [](const auto &part) {
        if constexpr (std::is_enum_v<std::decay_t<decltype(part)>>)
            return QString::number(int(part));
        else if constexpr (std::is_integral_v<std::decay_t<decltype(part)>>)
            return QString::number(part);
        else
            return QString(part);
    };
    (texts << ... << text(parts));
    return QLatin1String(name) + u'(' + texts.join(u", "_s) + u')';
}

} // namespace

int FakeEntities::Call_GroupList(host::TSoftwarePart part)
{
    calls << Call("Call_GroupList", part);
    return 1;
}

int FakeEntities::Select_GroupList(host::TSoftwarePart part, const QString &text)
{
    calls << Call("Select_GroupList", part, text);
    if (choices.isEmpty())
        QTest::qFail("a list opened that no choice was queued for", __FILE__, __LINE__);
    return choices.isEmpty() ? 0 : choices.takeFirst();
}

bool FakeEntities::Edit_Group(host::TSoftwarePart part, int id)
{
    calls << Call("Edit_Group", part, id);
    return true;
}

int FakeEntities::New_Group(host::TSoftwarePart part)
{
    calls << Call("New_Group", part);
    return 0;
}

int FakeEntities::Delete_Entity(host::TSoftwarePart part, int code, bool silent)
{
    calls << Call("Delete_Entity", part, code, silent);
    if (deleting)
        deleting(code);
    return refuseDelete;
}

QString FakeEntities::Select_Entity_Multible_Param(host::TSoftwarePart part, const host::MultibleParam &param)
{
    calls << Call("Select_Entity_Multible_Param", part, param.ExcludedCodes);
    wanted = param;
    return choosing ? choosing(param) : multipleChoice;
}

std::optional<host::Entity> FakeEntities::Find(host::TSoftwarePart part, int code)
{
    for (const host::Entity &entity : lists.value(int(part)))
        if (entity.Code == code)
            return entity;
    return {};
}

QList<host::Entity> FakeEntities::List(host::TSoftwarePart part, const QString &text)
{
    QList<host::Entity> found;
    for (const host::Entity &entity : lists.value(int(part)))
        if (host::Fold(entity.Name).contains(host::Fold(text)))
            found << entity;
    return found;
}

bool FakeEntities::ReserveCode(host::TSoftwarePart part, int code)
{
    calls << Call("ReserveCode", part, code);
    return true;
}

void FakeEntities::ReleaseCodes(host::TSoftwarePart part)
{
    calls << Call("ReleaseCodes", part);
}

bool FakeVouchers::IsVoucherApproved(int code, int kind, const QString &caption, const QString &voucherTitle)
{
    calls << Call("IsVoucherApproved", code, kind, caption, voucherTitle);
    return approved;
}

void FakeVouchers::SaveInLineAutoVoucher(int goodCode)
{
    calls << Call("SaveInLineAutoVoucher", goodCode);
}

void FakeVouchers::ChangeAutoVouchers(int goodCode, int voucherCode, const QString &date)
{
    calls << Call("ChangeAutoVouchers", goodCode, voucherCode, date);
}

void FakeVouchers::SaveAutoVouchersAgain(int goodCode)
{
    calls << Call("SaveAutoVouchersAgain", goodCode);
}

bool FakeStock::Check_TockMinus(const QString &probe, const QString &date)
{
    calls << Call("Check_TockMinus", probe, date);
    return enough;
}

void FakeStock::SaveStorageAutoOperation(host::TSoftwarePart part, int code)
{
    calls << Call("SaveStorageAutoOperation", part, code);
}

void FakeStock::DeleteStorageAutoOperation(host::TSoftwarePart part, int code)
{
    calls << Call("DeleteStorageAutoOperation", part, code);
}

void FakeGoodDetails::EnterGoodDetailSave(int goodCode, host::TOperationType operation)
{
    calls << Call("EnterGoodDetailSave", goodCode, operation);
}

void FakePhotos::Open_Gallery(host::TSoftwarePart part, int code)
{
    calls << Call("Open_Gallery", part, code);
}

QList<host::Category> FakeCategories::Branches(int parent)
{
    QList<host::Category> found;
    std::copy_if(all.begin(), all.end(), std::back_inserter(found),
                 [parent](const host::Category &category) { return category.Parent == parent; });
    return found;
}

QList<host::Category> FakeCategories::Path(int code)
{
    for (const host::Category &category : all)
        if (category.Code == code)
            return Path(category.Parent) << category;
    return {};
}

QColor FakeTheme::CaptionColor() const
{
    return host::theme::Accent();
}

QFont FakeTheme::TitleFont() const
{
    return host::theme::TitleFont();
}

TestHost::TestHost(const host::Connections &connections)
    : host{.DM = connections,
           .permissions = permissions,
           .messages = messages,
           .settings = settings,
           .entities = entities,
           .vouchers = vouchers,
           .stock = stock,
           .goodDetails = goodDetails,
           .photos = photos,
           .categories = categories,
           .scales = scales,
           .keyboard = keyboard,
           .clock = clock,
           .barcodes = barcodes,
           .finance = finance,
           .theme = theme,
           .numbers = numbers}
{}

TestHost::~TestHost() = default;

} // namespace test
