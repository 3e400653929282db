#include "tests/support/test_host.h"

#include "host/data/persian_text.h"
#include "host/look/theme.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// Part and code, and who has it.
QHash<std::pair<int, int>, const FakeEntities *> &Reserved()
{
    static QHash<std::pair<int, int>, const FakeEntities *> codes;
    return codes;
}

} // namespace

FakeEntities::~FakeEntities()
{
    Reserved().removeIf([this](auto code) { return code.value() == this; });
}

bool FakeEntities::ReserveCode(host::TSoftwarePart part, int code)
{
    Note(Call("ReserveCode", part, code));
    const FakeEntities *&holder = Reserved()[{int(part), code}];
    if (holder == nullptr)
        holder = this;
    return holder == this;
}

void FakeEntities::ReleaseCodes(host::TSoftwarePart part)
{
    Note(Call("ReleaseCodes", part));
    Reserved().removeIf([&](auto code) { return code.value() == this && code.key().first == int(part); });
}

int FakeEntities::Select_GroupList(host::TSoftwarePart part, const QString &text)
{
    calls << Call("Select_GroupList", part, text);
    if (choices.isEmpty())
        QTest::qFail("a list opened that no choice was queued for", __FILE__, __LINE__);
    return choices.isEmpty() ? 0 : choices.takeFirst();
}

int FakeEntities::Delete_Entity(host::TSoftwarePart part, int code, bool silent)
{
    calls << Call("Delete_Entity", part, code, silent);
    if (deleting)
        deleting(code);
    return refuseDelete;
}

/// Goods by what moves them, groups and units by goods.
QString FakeEntities::InUse(host::TSoftwarePart part, const QString &code) const
{
    const QString by = part == host::TSoftwarePart::Goods         ? u"Kardex u WHERE u.Kala"_s
                       : part == host::TSoftwarePart::GoodsGroups ? u"GoodInf u WHERE u.GrpCode"_s
                                                                  : u"GoodInf u WHERE u.Unit"_s;
    return u"EXISTS (SELECT 1 FROM %1 = %2)"_s.arg(by, code);
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
           .detailValues = detailValues,
           .detailMovements = detailMovements,
           .serialBatches = serialBatches,
           .detailDivisions = detailDivisions,
           .photos = photos,
           .categories = categories,
           .levels = levels,
           .selectedLists = selectedLists,
           .scales = scales,
           .keyboard = keyboard,
           .clock = clock,
           .barcodes = barcodes,
           .finance = finance,
           .theme = theme,
           .numbers = numbers,
           .help = help}
{}

TestHost::~TestHost() = default;

} // namespace test
