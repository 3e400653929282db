#pragma once

#include "data/goods/good_dm.h"
#include "host/screens/refusals.h"

#include <vector>

class BarcodeFields;
class CategoryPage;
class CompletePage;
class CostLevelPage;
class DetailsPage;
class DiscountPage;
class GeneralPage;

/// The rules of saving a good, in their order. The order is part of what users know: the first rule that fails is the
/// one they hear of.
class GoodValidation
{
public:
    /// The pages that are checked.
    struct Pages
    {
        GeneralPage &general;
        CostLevelPage &prices;
        DetailsPage &details;
        CompletePage &complete;
        DiscountPage &discounts;
        BarcodeFields &barcodes;
        CategoryPage &categories;
    };
    /// What is being saved.
    struct Subject
    {
        host::TFormMode mode = host::TFormMode::New;
        int voucherCode = 0; ///< voucher of the opening stock
        /// Brings a code that is being typed up to date; refuses one in use.
        std::function<host::Refused()> leaveCode;
    };

    GoodValidation(host::Host &host, TGood_DM &data, const Pages &pages) : m_host(host), m_data(data), m_pages(pages) {}

    /// What is being typed counts, and an empty number is zero, for all checks alike.
    void BeforeChecks();
    std::vector<host::Check> Checks(const Subject &subject);

private:
    host::Refused TotalCostInRange() const;
    host::Refused OpeningVoucherOpen() const;
    host::Refused StockStaysPositive() const;
    host::Refused FocusedFieldLeft() const;
    host::Refused CodeGiven() const;
    host::Refused OpeningDetailsEntered() const;
    host::Refused SmsCodeUnique() const;
    host::Refused NameUnique() const;

    host::Host &m_host;
    TGood_DM &m_data;
    Pages m_pages;
    Subject m_subject;
};
