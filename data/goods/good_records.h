#pragma once

#include "host/data/quantity.h"

#include <QString>

#include <array>

/// Discounts of a good, percents from 0 to 100: four for sale, four for purchase, and which of the four (1 to 4) is the
/// default of its side.
struct TGoodPrice_Rec
{
    std::array<host::Quantity, 4> Discount_Sell{};
    std::array<host::Quantity, 4> Discount_Buy{};
    int Default_Discount_Sell_Number = 1;
    int Default_Discount_Buy_Number = 1;
};

/// One good: the row of `GoodInf`, in the order of its columns, and its discounts, which are saved with it.
struct TGoodInfoRec // NOLINT(clang-analyzer-optin.performance.Padding)
{
    int Code = 0;    ///< at most six digits
    int GrpCode = 0; ///< goods group; 0, the root, holds no goods
    QString tags;    ///< tag codes
    /// The full name as the database has it. Read only: it is always composed from its three parts when written.
    QString Name;
    QString kala_name;
    QString kala_type;
    QString kala_index;
    QString AbbName;               ///< the barcodes, each between "!" marks
    QString Pos;                   ///< the visitor's percent, as text
    QString Position;              ///< place in the store
    host::Quantity OffPercent = 0; ///< discount percent
    host::Quantity MinAva = 0;     ///< minimum stock, main units
    int Unit = 0;
    int Unit2 = 0;                ///< 0 for a good with one unit, which is stored without a second unit
    host::Quantity AvaBgPrd = 0;  ///< opening quantity, main units
    host::Quantity AvaBgPrd2 = 0; ///< opening quantity, second units
    host::Quantity CostBgPrd = 0; ///< opening price of one main unit
    qint16 Store = 0;             ///< default store
    QString SMSCode;              ///< digits
    bool ChargeExempt = false;
    host::Quantity ChargePercent = 0; ///< 0: as the general settings say
    bool TaxExempt = false;
    host::Quantity TaxPercent = 0;      ///< 0: as the general settings say
    host::Quantity Meghdar_Formool = 0; ///< main units in one second unit; 0: no formula
    host::Quantity Weight = 0;
    host::Quantity Height = 0;
    host::Quantity Width = 0;
    host::Quantity Length = 0;
    bool GroupDiscount = true; ///< group discounts of invoices apply to it
    QString DetailUniqueCode;
    bool Tax_In_SellCosts = false;
    bool Tax_In_BuyCosts = false;
    QString Comment;
    QString CreatedTime;  ///< with ":"; written by insert only, like the next two
    QString CreatedDate;  ///< with "/"
    QString UserCreated;  ///< name (code)
    QString ModifiedTime; ///< written by update only, like the next two
    QString ModifiedDate;
    QString UserModified;
    int VoucherCode = 0; ///< voucher of the opening stock; written by update only
    QString FeaturesDetail;
    host::Quantity ConsumerPrice = 0;
    qint16 DaraiGoodType = 0; ///< asset class

    TGoodPrice_Rec Price;
};

/// One opening row: a good's opening quantity in one store.
struct TGoodFirstAsset_Rec
{
    int ID = 0;
    int GoodCode = 0;
    int StoreCode = 0;
    int tmp = 1;
    host::Quantity Amount1 = 0; ///< main units
    host::Quantity Amount2 = 0; ///< second units
    QString Comment;
    int Radif = 0; ///< 1, 2, … within the good's working copy
};
