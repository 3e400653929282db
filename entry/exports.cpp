#include "entry/exports.h"

#include "entry/module.h"

using entry::Module;

namespace {

QString text(const char16_t *value)
{
    return value ? QString::fromUtf16(value) : QString();
}

/// The results of the last calls of `Select_Good_Multible` and `Select_DetailTypes_Multible`.
std::u16string chosenGoods;
std::u16string chosenDetailTypes;

} // namespace

extern "C" {

void Open_GoodList()
{
    Module::run([](Module &module) { module.openGoodList(); });
}

std::int32_t Select_Good(const char16_t *param)
{
    return Module::run([&](Module &module) { return module.selectGood(text(param)); });
}

const char16_t *Select_Good_Multible(const char16_t *param)
{
    chosenGoods = Module::run([&](Module &module) { return module.selectGoods(text(param)).toStdU16String(); });
    return chosenGoods.c_str();
}

void Call_GoodGet(std::int32_t goodId, std::uint8_t kind)
{
    Module::run([=](Module &module) { module.callGoodGet(goodId, kind); });
}

std::int32_t Edit_Good(std::int32_t value)
{
    return Module::run([=](Module &module) { return module.editGood(value); });
}

std::int32_t Select_GoodGroup()
{
    Module::run([](Module &module) { module.select(host::TSoftwarePart::GoodsGroups, {}); });
    return 0;
}

std::int32_t Edit_GoodGroup(std::int32_t groupId)
{
    Module::run([=](Module &module) { module.edit(host::TSoftwarePart::GoodsGroups, groupId); });
    return 0;
}

std::int32_t Open_StoreList()
{
    return Module::run([](Module &module) { return module.openList(host::TSoftwarePart::Stores); });
}

std::int32_t Select_Store(const char16_t *param)
{
    return Module::run([&](Module &module) { return module.select(host::TSoftwarePart::Stores, text(param)); });
}

std::int32_t Edit_Store(std::int32_t storeId)
{
    Module::run([=](Module &module) { module.edit(host::TSoftwarePart::Stores, storeId); });
    return 0;
}

std::int32_t Open_Units()
{
    return Module::run([](Module &module) { return module.openList(host::TSoftwarePart::Units); });
}

std::int32_t Select_Unit()
{
    return Module::run([](Module &module) { return module.select(host::TSoftwarePart::Units, {}); });
}

void Call_DetailTypes_List()
{
    Module::run([](Module &module) { module.openDetailTypes(); });
}

const char16_t *Select_DetailTypes_Multible(const char16_t *openingText, std::int32_t previousCount,
                                            std::int32_t withCategories, std::uint8_t inList,
                                            const char16_t *previousCodes)
{
    chosenDetailTypes = Module::run([&](Module &module) {
        return module
            .selectDetailTypes(text(openingText),
                               {previousCount, text(previousCodes), inList != 0, withCategories != 0})
            .toStdU16String();
    });
    return chosenDetailTypes.c_str();
}
}
