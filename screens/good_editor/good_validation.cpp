#include "screens/good_editor/good_validation.h"

#include "screens/good_editor/barcode_fields.h"
#include "screens/good_editor/complete_page.h"
#include "screens/good_editor/cost_level_page.h"
#include "screens/good_editor/details_page.h"
#include "screens/good_editor/discount_page.h"
#include "screens/good_editor/general_page.h"
#include "screens/good_editor/unit_arithmetic.h"

using goods::Refused;
using host::TFormMode;
using host::TSoftwarePart;

namespace {

/// The kind of voucher that opening stock is booked in.
constexpr int OpeningVoucherKind = 1;

} // namespace

std::vector<host::Check> GoodValidation::Checks(const Subject &subject)
{
    subject_ = subject;
    const Pages &p = pages_;
    return {
        {QStringLiteral("UserMayWrite"), [this] { return UserMayWrite(); }},
        {QStringLiteral("OpeningTyped"), [this] { return OpeningTyped(); }},
        {QStringLiteral("TotalCostInRange"), [this] { return TotalCostInRange(); }},
        {QStringLiteral("OpeningVoucherOpen"), [this] { return OpeningVoucherOpen(); }},
        {QStringLiteral("BigAndSmallCopied"), [this] { return BigAndSmallCopied(); }},
        {QStringLiteral("StockStaysPositive"), [this] { return StockStaysPositive(); }},
        {QStringLiteral("FocusedFieldLeft"), [this] { return FocusedFieldLeft(); }},
        {QStringLiteral("GroupHoldsGoods"), [p] { return p.general.CheckGroup(); }},
        {QStringLiteral("CodeGiven"), [this] { return CodeGiven(); }},
        {QStringLiteral("OpeningDetailsEntered"), [this] { return OpeningDetailsEntered(); }},
        {QStringLiteral("SmsCodeUnique"), [this] { return SmsCodeUnique(); }},
        {QStringLiteral("NameUnique"), [this] { return NameUnique(); }},
        {QStringLiteral("UnitGiven"), [this] { return UnitGiven(); }},
        {QStringLiteral("OpeningPriceGiven"), [p] { return p.general.Opening().CheckPrice(); }},
        {QStringLiteral("StoreGiven"), [p] { return p.general.Opening().CheckStore(); }},
        {QStringLiteral("FormulaGiven"), [p] { return p.general.Opening().CheckFormula(); }},
        {QStringLiteral("SecondQuantityFollows"), [p] { return p.general.Opening().CheckSecondQuantity(); }},
        {QStringLiteral("DefaultLevelsPriced"), [p] { return p.prices.CheckDefaults(); }},
        {QStringLiteral("SizesGiven"), [p] { return p.complete.CheckSizes(); }},
        {QStringLiteral("OwnLevyNotZero"), [p] { return p.discounts.CheckLevies(); }},
        {QStringLiteral("RatesInRange"), [this] { return RatesInRange(); }},
        {QStringLiteral("DefaultRatesChosen"), [p] { return p.discounts.CheckDefaults(); }},
        {QStringLiteral("UniqueCodeValid"), [p] { return p.complete.CheckUniqueCode(p.general.Code()); }},
        {QStringLiteral("BarcodesNotReserved"), [p] { return p.barcodes.CheckReserved(); }},
    };
}

Refused GoodValidation::UserMayWrite() const
{
    if (host::MayWrite(host_, TSoftwarePart::Goods, subject_.mode))
        return {};
    return goods::ToldAlready();
}

Refused GoodValidation::OpeningTyped() const
{
    // What is being typed counts for every check of the opening stock.
    pages_.general.Opening().TakeTyped();
    return {};
}

Refused GoodValidation::TotalCostInRange() const
{
    const goods::OpeningValues values = pages_.general.Opening().Values();
    if (host_.vouchers.Validate_TotalCost(values.first, values.price, TSoftwarePart::Goods))
        return {};
    return goods::ToldAlready();
}

Refused GoodValidation::OpeningVoucherOpen() const
{
    const OpeningFields &opening = pages_.general.Opening();
    const goods::OpeningValues now = opening.Values();
    const goods::OpeningValues &before = opening.Loaded();
    if (goods::SameQuantity(now.first, before.first) && goods::SameQuantity(now.price, before.price))
        return {};
    if (!host_.vouchers.IsVoucherApproved(subject_.voucherCode, OpeningVoucherKind,
                                          QStringLiteral("ویرایش قیمت اول دوره"), QStringLiteral("اول دوره")))
        return {};
    return goods::ToldAlready();
}

Refused GoodValidation::BigAndSmallCopied() const
{
    pages_.general.Opening().AdoptBigAndSmall();
    return {};
}

Refused GoodValidation::StockStaysPositive() const
{
    const OpeningFields &opening = pages_.general.Opening();
    const int store = opening.RowStore();
    const int storeBefore = opening.LoadedRowStore();
    // The row leaves the store that it stood in.
    const bool moved = storeBefore != 0 && store != storeBefore;
    const goods::Quantity now = moved ? 0 : opening.Values().first;
    if (!host_.settings.SettingRecord().ControlNegativeStock || opening.SeveralStores() || store == 0 ||
        now >= opening.Loaded().first)
        return {};
    const QString probe = goods::NegativeStockProbe(pages_.general.Code(), moved ? storeBefore : store, now);
    if (host_.stock.Check_TockMinus(probe, data_.GetFirstPeriodVoucherDate()))
        return {};
    return goods::ToldAlready(opening.QuantityEdit());
}

Refused GoodValidation::FocusedFieldLeft() const
{
    if (Refused refused = pages_.general.Opening().LeaveFocusedPicker())
        return refused;
    if (Refused refused = pages_.barcodes.CheckTyped())
        return refused;
    return pages_.complete.LeaveFocused();
}

Refused GoodValidation::CodeGiven() const
{
    if (Refused refused = pages_.general.CheckCodeGiven())
        return refused;
    return subject_.mode == TFormMode::New ? pages_.general.CheckCodeDigits() : Refused();
}

Refused GoodValidation::OpeningDetailsEntered() const
{
    const host::TSettingRecord &settings = host_.settings.SettingRecord();
    const OpeningFields &opening = pages_.general.Opening();
    if (!settings.GoodDetails || !settings.GoodDetailsForOpening || !pages_.details.HasRows() ||
        opening.Values().first <= 0 ||
        host_.goodDetails.ExistsGoodDetailInsertedForOperation(pages_.general.Code(),
                                                               host::TOperationType::OpeningStock))
        return {};
    return goods::SmartMessage(opening.QuantityEdit(), host::message::OpeningDetailsMissing);
}

Refused GoodValidation::SmsCodeUnique() const
{
    if (Refused refused = subject_.leaveCode())
        return refused;
    return pages_.complete.CheckSmsCode(pages_.general.Code());
}

Refused GoodValidation::NameUnique() const
{
    if (Refused refused = pages_.general.CheckNameGiven())
        return refused;
    if (Refused refused = pages_.general.CheckNameUnique(pages_.general.Code()))
        return refused;
    return pages_.general.CheckIndexUnique(pages_.general.Code());
}

Refused GoodValidation::UnitGiven() const
{
    if (Refused refused = pages_.general.Opening().CheckUnit())
        return refused;
    pages_.general.Opening().ZeroWhenEmpty();
    return {};
}

Refused GoodValidation::RatesInRange() const
{
    pages_.discounts.ZeroWhenEmpty();
    return pages_.discounts.CheckRates();
}
