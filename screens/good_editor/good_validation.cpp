#include "screens/good_editor/good_validation.h"

#include "data/goods/stock_probe.h"
#include "rules/unit_arithmetic.h"
#include "screens/good_editor/barcode_fields.h"
#include "screens/good_editor/category_page.h"
#include "screens/good_editor/complete_page.h"
#include "screens/good_editor/cost_level_page.h"
#include "screens/good_editor/details_page.h"
#include "screens/good_editor/discount_page.h"
#include "screens/good_editor/general_page.h"

using namespace Qt::StringLiterals;

using host::Refused;
using host::TFormMode;
using host::TSoftwarePart;

namespace {

/// The kind of voucher that opening stock is booked in.
constexpr int OpeningVoucherKind = 1;

} // namespace

void GoodValidation::BeforeChecks()
{
    OpeningFields &opening = m_pages.general.Opening();
    opening.TakeTyped();
    // After it: what is being typed may be a big or small quantity.
    opening.AdoptBigAndSmall();
    opening.ZeroWhenEmpty();
    m_pages.discounts.ZeroWhenEmpty();
}

std::vector<host::Check> GoodValidation::Checks(const Subject &subject)
{
    m_subject = subject;
    const Pages &p = m_pages;
    return {
        {u"TotalCostInRange"_s, [this] { return TotalCostInRange(); }},
        {u"OpeningVoucherOpen"_s, [this] { return OpeningVoucherOpen(); }},
        {u"StockStaysPositive"_s, [this] { return StockStaysPositive(); }},
        {u"FocusedFieldLeft"_s, [this] { return FocusedFieldLeft(); }},
        {u"GroupHoldsGoods"_s, [p] { return p.general.CheckGroup(); }},
        {u"CodeGiven"_s, [this] { return CodeGiven(); }},
        {u"OpeningDetailsEntered"_s, [this] { return OpeningDetailsEntered(); }},
        {u"DetailTypesFree"_s, [p] { return p.details.CheckStillFree(); }},
        {u"SmsCodeUnique"_s, [this] { return SmsCodeUnique(); }},
        {u"NameUnique"_s, [this] { return NameUnique(); }},
        {u"UnitGiven"_s, [p] { return p.general.Opening().CheckUnit(); }},
        {u"OpeningPriceGiven"_s, [p] { return p.general.Opening().CheckPrice(); }},
        {u"StoreGiven"_s, [p] { return p.general.Opening().CheckStore(); }},
        {u"FormulaGiven"_s, [p] { return p.general.Opening().CheckFormula(); }},
        {u"SecondQuantityFollows"_s, [p] { return p.general.Opening().CheckSecondQuantity(); }},
        {u"DefaultLevelsPriced"_s, [p] { return p.prices.CheckDefaults(); }},
        {u"SizesGiven"_s, [p] { return p.complete.CheckSizes(); }},
        {u"OwnLevyNotZero"_s, [p] { return p.discounts.CheckLevies(); }},
        {u"RatesInRange"_s, [p] { return p.discounts.CheckRates(); }},
        {u"DefaultRatesChosen"_s, [p] { return p.discounts.CheckDefaults(); }},
        {u"UniqueCodeValid"_s, [p] { return p.complete.CheckUniqueCode(p.general.Code()); }},
        {u"BarcodesNotReserved"_s, [p] { return p.barcodes.CheckReserved(); }},
        {u"CategoriesHoldGoods"_s, [p] { return p.categories.CheckCategories(); }},
    };
}

Refused GoodValidation::TotalCostInRange() const
{
    const goods::OpeningValues values = m_pages.general.Opening().Values();
    if (m_host.vouchers.Validate_TotalCost(values.first, values.price, TSoftwarePart::Goods))
        return {};
    return host::ToldAlready();
}

Refused GoodValidation::OpeningVoucherOpen() const
{
    const OpeningFields &opening = m_pages.general.Opening();
    const goods::OpeningValues now = opening.Values();
    const goods::OpeningValues &before = opening.Loaded();
    if (goods::SameQuantity(now.first, before.first) && goods::SameQuantity(now.price, before.price))
        return {};
    if (!m_host.vouchers.IsVoucherApproved(m_subject.voucherCode, OpeningVoucherKind, u"ویرایش قیمت اول دوره"_s,
                                           u"اول دوره"_s))
        return {};
    return host::ToldAlready();
}

QStringList GoodValidation::StockProbes() const
{
    const OpeningFields &opening = m_pages.general.Opening();
    const int good = m_pages.general.Code();
    if (opening.SeveralStores())
        return m_rows.IsChanged() ? QStringList{goods::LoweredRowsProbe(good, m_rows.Key())} : QStringList();
    const int store = opening.RowStore();
    const goods::Quantity now = opening.Values().first;
    if (m_rows.Saved().isEmpty())
        return store != 0 && now < opening.Loaded().first ? QStringList{goods::NegativeStockProbe(good, store, now)}
                                                          : QStringList();
    QStringList probes;
    for (const TGoodFirstAsset_Rec &saved : m_rows.Saved()) {
        // A row that is to stand elsewhere leaves the store that it stood in.
        const goods::Quantity left = saved.StoreCode == store ? now : 0;
        if (left < saved.Amount1)
            probes << goods::NegativeStockProbe(good, saved.StoreCode, left);
    }
    return probes;
}

Refused GoodValidation::StockStaysPositive() const
{
    if (!m_host.settings.SettingRecord().ControlNegativeStock)
        return {};
    const QStringList probes = StockProbes();
    for (const QString &probe : probes)
        if (!m_host.stock.Check_TockMinus(probe, m_data.GetFirstPeriodVoucherDate()))
            return host::ToldAlready(m_pages.general.Opening().QuantityEdit());
    return {};
}

Refused GoodValidation::FocusedFieldLeft() const
{
    // Takes over what is typed, as leaving the field would, and can refuse it: so it has its place among the checks.
    if (Refused refused = m_pages.general.Opening().LeaveFocusedPicker())
        return refused;
    if (Refused refused = m_pages.barcodes.CheckTyped())
        return refused;
    return m_pages.complete.LeaveFocused();
}

Refused GoodValidation::CodeGiven() const
{
    if (Refused refused = m_pages.general.CheckCodeGiven())
        return refused;
    return m_subject.mode == TFormMode::New ? m_pages.general.CheckCodeDigits() : Refused();
}

Refused GoodValidation::OpeningDetailsEntered()
{
    const host::TSettingRecord &settings = m_host.settings.SettingRecord();
    const OpeningFields &opening = m_pages.general.Opening();
    if (!settings.GoodDetails || !settings.GoodDetailsForOpening || !m_pages.details.HasRows() ||
        opening.Values().first <= 0 || EveryRowHasDetails())
        return {};
    return host::SmartMessage(opening.QuantityEdit(), host::message::OpeningDetailsMissing);
}

bool GoodValidation::EveryRowHasDetails()
{
    if (!m_host.goodDetails.ExistsGoodDetailInsertedForOperation(m_pages.general.Code(),
                                                                 host::TOperationType::OpeningStock))
        return false;
    // The good may have details of a row that is gone, or that another desk keeps and has not saved.
    const QSet<int> entered = m_details.Rows();
    if (!m_pages.general.Opening().SeveralStores())
        return entered.contains(m_rows.OnlyNumber());
    return std::all_of(m_rows.Rows().cbegin(), m_rows.Rows().cend(),
                       [&entered](const TGoodFirstAsset_Rec &row) { return entered.contains(row.Radif); });
}

Refused GoodValidation::SmsCodeUnique() const
{
    // The typed code is taken only here, behind the checks of the code itself.
    if (Refused refused = m_subject.leaveCode())
        return refused;
    return m_pages.complete.CheckSmsCode(m_pages.general.Code());
}

Refused GoodValidation::NameUnique() const
{
    if (Refused refused = m_pages.general.CheckNameGiven())
        return refused;
    if (Refused refused = m_pages.general.CheckNameUnique(m_pages.general.Code()))
        return refused;
    return m_pages.general.CheckIndexUnique(m_pages.general.Code());
}
