#pragma once

#include "data/goods/good_dm.h"
#include "data/goods/opening_copy.h"
#include "host/screens/refusals.h"
#include "screens/opening_stock/opening_details.h"

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

    GoodValidation(host::Host &host, TGood_DM &data, goods::OpeningCopy &rows, const OpeningDetails &details,
                   const Pages &pages)
        : m_host(host), m_data(data), m_rows(rows), m_details(details), m_pages(pages)
    {}

    /// What is being typed counts, and an empty number is zero, for all checks alike.
    void BeforeChecks();
    std::vector<host::Check> Checks(const Subject &subject);

private:
    host::Refused TotalCostInRange() const;
    host::Refused OpeningVoucherOpen() const;
    host::Refused StockStaysPositive() const;
    QStringList StockProbes() const;
    bool EveryRowHasDetails();
    host::Refused FocusedFieldLeft() const;
    host::Refused CodeGiven() const;
    host::Refused OpeningDetailsEntered();
    host::Refused SmsCodeUnique() const;
    host::Refused NameUnique() const;

    host::Host &m_host;
    TGood_DM &m_data;
    goods::OpeningCopy &m_rows;
    const OpeningDetails &m_details;
    Pages m_pages;
    Subject m_subject;
};
