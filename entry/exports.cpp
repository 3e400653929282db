#include "entry/exports.h"

#include "entry/module.h"
#include "gooddetail/opening_texts.h"

#include <array>

using entry::Module;

namespace {

QString Text(const char16_t *value)
{
    return value ? QString::fromUtf16(value) : QString();
}

/// Where a host wants the quantities of a line: results 1 to 7 of a screen.
using Places = std::array<long double *, 7>;

void Give(const Places &to, const good_detail::DetailLineResult &result)
{
    const host::TAmounts &a = result.Amounts;
    const long double given[] = {
        a.Amount1, a.Amount2, a.TotalAmount, a.Length, a.Width, a.Amount3, static_cast<long double>(result.Rows)};
    for (size_t i = 0; i < to.size(); ++i)
        if (to[i])
            *to[i] = given[i];
}

/// `opening` makes the opening inside the boundary: it makes texts.
template <typename Opening> Module::LineDetails EnterDetails(std::int32_t mode, const Opening &opening)
{
    return Module::Run([&](Module &module) {
        const good_detail::EnterOpening told = opening();
        return module.EnterDetails(mode, told.Key, good_detail::Pack(told));
    });
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

std::uint8_t Open_GoodDetail_Enter(std::int32_t mode, std::uint8_t operationType, std::int32_t good,
                                   const char16_t *reserved, const char16_t *storeName, const char16_t *unitName,
                                   const char16_t *unit2Name, const char16_t *goodName, long double *amount2,
                                   long double *amount1, std::int32_t unitType, std::int32_t store,
                                   std::int32_t operationCode, std::int32_t foreignOperationCode,
                                   std::int32_t operationRow)
{
    const Module::LineDetails details = EnterDetails(mode, [&] {
        return good_detail::EnterOpening{{operationType, good, store, operationRow, foreignOperationCode, unitType},
                                         {Text(goodName), Text(unitName), Text(storeName), Text(unit2Name)},
                                         operationCode,
                                         Text(reserved)};
    });
    if (details.Opened)
        Give({amount1, amount2}, details.Result);
    return details.Opened;
}

std::uint8_t Open_GoodDetail_Enter_Form(std::int32_t mode, std::uint8_t operationType, std::int32_t good,
                                        const char16_t *reserved, const char16_t *storeName, const char16_t *unitName,
                                        const char16_t *unit2Name, const char16_t *goodName, long double *rows,
                                        long double *amount3, long double *width, long double *length,
                                        long double *totalAmount, long double *amount2, long double *amount1,
                                        std::int32_t unitType, std::int32_t store, std::int32_t operationCode,
                                        std::int32_t foreignOperationCode, std::int32_t operationRow)
{
    const Module::LineDetails details = EnterDetails(mode, [&] {
        return good_detail::EnterOpening{{operationType, good, store, operationRow, foreignOperationCode, unitType},
                                         {Text(goodName), Text(unitName), Text(storeName), Text(unit2Name)},
                                         operationCode,
                                         Text(reserved)};
    });
    if (details.Accepted)
        Give({amount1, amount2, totalAmount, length, width, amount3, rows}, details.Result);
    return details.Accepted;
}

std::uint8_t Open_Enter_GoodDetail(std::int32_t mode, std::uint8_t operationType, std::int32_t good,
                                   std::uint8_t reserved21, std::uint8_t reserved20, long double wanted,
                                   const char16_t *storeName, const char16_t *unit2Name, std::int32_t reserved16,
                                   const char16_t *unitName, std::int32_t reserved14, const char16_t *goodName,
                                   std::int32_t reserved12, std::int32_t reserved11, std::int32_t reserved10,
                                   std::int32_t reserved9, std::int32_t isReturn, long double *rows,
                                   long double *amount3, long double *width, long double *length,
                                   long double *totalAmount, long double *amount2, long double *amount1,
                                   std::int32_t unitType, std::int32_t foreignOperationCode, std::int32_t operationRow,
                                   std::int32_t operationCode, std::int32_t store)
{
    const Module::LineDetails details = Module::Run([&](Module &module) {
        const good_detail::EnterLineOpening opening{{operationType, good, store, operationCode, operationRow,
                                                     foreignOperationCode, unitType, isReturn, reserved9, reserved10,
                                                     reserved11, reserved12},
                                                    Text(goodName),
                                                    reserved14,
                                                    Text(unitName),
                                                    reserved16,
                                                    Text(unit2Name),
                                                    Text(storeName),
                                                    wanted,
                                                    reserved20,
                                                    reserved21};
        return module.EnterDetails(mode, operationCode, good_detail::Pack(opening), wanted);
    });
    if (details.Accepted)
        Give({amount1, amount2, totalAmount, length, width, amount3, rows}, details.Result);
    return details.Accepted;
}

std::uint8_t Open_Exit_GoodDetail(std::int32_t mode, std::uint8_t operationType, std::int32_t good,
                                  const char16_t *storeName, std::int32_t reserved10, std::int32_t reserved9,
                                  std::int32_t isReturn, long double *rows, long double *amount3, long double *width,
                                  long double *length, long double *totalAmount, long double *amount2,
                                  long double *amount1, std::int32_t unitType, std::int32_t foreignOperationCode,
                                  std::int32_t operationRow, std::int32_t operationCode, std::int32_t store)
{
    const Module::LineDetails details = Module::Run([&](Module &module) {
        const good_detail::ExitOpening opening{{operationType, good, store, operationCode, operationRow,
                                                foreignOperationCode, unitType, isReturn, reserved9, reserved10},
                                               Text(storeName)};
        return module.ExitDetails(mode, operationCode, good_detail::Pack(opening));
    });
    if (details.Accepted)
        Give({amount1, amount2, totalAmount, length, width, amount3, rows}, details.Result);
    return details.Accepted;
}

std::uint8_t Open_GoodDetail(std::int32_t, std::uint8_t, std::int32_t, const char16_t *, std::int32_t, std::int32_t,
                             std::int32_t, long double *, long double *, long double *, long double *, long double *,
                             long double *, long double *, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                             std::int32_t)
{
    return 0;
}

const char16_t *Select_GoodDetail_Multible(const char16_t *caption, std::int32_t company, std::uint8_t mode,
                                           const char16_t *text, std::uint8_t kind)
{
    chosenDetails = Module::Run([&](Module &module) {
        return module.SelectGoodDetails(Text(caption), {mode, kind, Text(text), company}).toStdU16String();
    });
    return chosenDetails.c_str();
}

void Open_GoodDetailDivision()
{
    Module::Run([](Module &module) { module.OpenDivisions(); });
}

std::uint8_t Open_GoodDetailDivision_DetailItems(std::int32_t detailValue, std::int32_t store, std::int32_t good,
                                                 long double amount1, long double amount2, long double length,
                                                 long double width, long double amount3)
{
    return Module::Run([&](Module &module) {
        return module.DivideDetail({{detailValue, store, good}, {amount1, amount2, length, width, amount3}});
    });
}
}
