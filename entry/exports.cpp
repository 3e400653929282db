#include "entry/exports.h"

#include "entry/module.h"

using entry::Module;

namespace {

QString Text(const char16_t *value)
{
    return value ? QString::fromUtf16(value) : QString();
}

/// The results of the last calls of `Select_Good_Multible`, `Select_DetailTypes_Multible` and so on.
std::u16string chosenGoods;
std::u16string chosenDetailTypes;
std::u16string chosenDetails;

} // namespace

extern "C" {

void Open_GoodList()
{
    Module::Run([](Module &module) { module.OpenGoodList(); });
}

std::int32_t Select_Good(const char16_t *param)
{
    return Module::Run([&](Module &module) { return module.SelectGood(Text(param)); });
}

const char16_t *Select_Good_Multible(const char16_t *param)
{
    chosenGoods = Module::Run([&](Module &module) { return module.SelectGoods(Text(param)).toStdU16String(); });
    return chosenGoods.c_str();
}

void Call_GoodGet(std::int32_t goodId, std::uint8_t kind)
{
    Module::Run([=](Module &module) { module.CallGoodGet(goodId, kind); });
}

std::int32_t Edit_Good(std::int32_t value)
{
    return Module::Run([=](Module &module) { return module.EditGood(value); });
}

std::int32_t Select_GoodGroup()
{
    Module::Run([](Module &module) { module.Select(host::TSoftwarePart::GoodsGroups, {}); });
    return 0;
}

std::int32_t Edit_GoodGroup(std::int32_t groupId)
{
    Module::Run([=](Module &module) { module.Edit(host::TSoftwarePart::GoodsGroups, groupId); });
    return 0;
}

std::int32_t Open_StoreList()
{
    return Module::Run([](Module &module) { return module.OpenList(host::TSoftwarePart::Stores); });
}

std::int32_t Select_Store(const char16_t *param)
{
    return Module::Run([&](Module &module) { return module.Select(host::TSoftwarePart::Stores, Text(param)); });
}

std::int32_t Edit_Store(std::int32_t storeId)
{
    Module::Run([=](Module &module) { module.Edit(host::TSoftwarePart::Stores, storeId); });
    return 0;
}

std::int32_t Open_Units()
{
    return Module::Run([](Module &module) { return module.OpenList(host::TSoftwarePart::Units); });
}

std::int32_t Select_Unit()
{
    return Module::Run([](Module &module) { return module.Select(host::TSoftwarePart::Units, {}); });
}

void Call_DetailTypes_List()
{
    Module::Run([](Module &module) { module.OpenDetailTypes(); });
}

const char16_t *Select_DetailTypes_Multible(const char16_t *openingText, std::int32_t previousCount,
                                            std::int32_t withCategories, std::uint8_t inList,
                                            const char16_t *previousCodes)
{
    chosenDetailTypes = Module::Run([&](Module &module) {
        return module
            .SelectDetailTypes(Text(openingText),
                               {previousCount, Text(previousCodes), inList != 0, withCategories != 0})
            .toStdU16String();
    });
    return chosenDetailTypes.c_str();
}

const char16_t *Select_GoodDetail_Multible(const char16_t *caption, std::int32_t company, std::uint8_t mode,
                                           const char16_t *text, std::uint8_t kind)
{
    chosenDetails = Module::Run([&](Module &module) {
        return module.SelectGoodDetails(Text(caption), {mode, kind, Text(text), company}).toStdU16String();
    });
    return chosenDetails.c_str();
}
}
