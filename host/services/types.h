#pragma once

#include <QString>
#include <QtCore/qglobal.h>

#include <array>

namespace host {

/// A feature area of the suite. The same number is stored as the area code in `CodeLock_TBL.Status` and
/// `PhotoGallery.GRPCode`, so the values are fixed for good.
enum class TSoftwarePart : int {
    Goods = 102,
    Units = 104,
    Stores = 105,
    OpeningStock = 121,
    GoodsGroups = 122,
    Purchases = 201,
    Sales = 202,
    SaleReturns = 204,
    PurchaseReturns = 205,
    Transfers = 206,
    GoodDetails = 309,
    GoodDetailDivision = 314,
    DetailTypes = 513,
};

/// A right within a feature area.
enum class TPermission : int {
    Create = 1,
    Change = 2, ///< also the bulk change of marked goods
    Delete = 3,
    OpenList = 6,
    GoodsListExtra = 9,
    Photo = 10,
    SelectedLists = 34,
};

/// How a screen was opened. Hosts and stored layouts know the numbers.
enum class TFormMode : quint8 {
    DockedList = 1,
    New = 2,
    Edit = 3,
    Review = 4,
    Selection = 5,
};

/// The kind of document that a movement, a detail row or an opening quantity belongs to. The numbers are stored.
enum class TOperationType : quint8 {
    Purchase = 1,
    Sale = 2,
    OpeningStock = 3,
    SaleReturn = 4,
    PurchaseReturn = 5,
    TransferOut = 6, ///< also the kind of the document itself
    TransferIn = 7,  ///< what a transfer brings into its second store
    DivisionExit = 24,
    DivisionEntry = 25,
};

/// The user who signed in to the host.
struct TUserInfo
{
    int Code = 0;
    QString Name;
    int ManageType = 0; ///< 1 for managers; list procedures widen what they return by it
};

/// The settings of the suite that goods depend on. Plain values: the host fills them from its settings screen.
struct TSettingRecord
{
    bool GoodDetails = false;                ///< details (serials, colours …) are kept per unit of a good
    bool GoodDetailsForOpening = false;      ///< opening quantities must have their details entered
    bool TakeOnlyDetail = true;              ///< when one serial is found, all of it is proposed to go out
    bool DivisionWaste = false;              ///< a division marks parts that are waste
    bool TwoUnitGoods = true;                ///< goods may have a second unit
    bool TwoUnitVariableRatio = false;       ///< two-unit goods whose ratio differs from piece to piece
    bool SquareMetreGoods = false;           ///< goods measured by area
    int SquareMetreUnit = 0;                 ///< the unit code of square metres
    bool StockOnGoodsList = true;            ///< show stock on hand and the stock tabs on the goods list
    bool AutoKeyboard = false;               ///< switch the keyboard layout on entering barcode and serial fields
    bool IntegerUnits = false;               ///< second-unit quantities are whole numbers
    bool ControlNegativeStock = false;       ///< refuse what would make stock negative
    bool FinalPrices = false;                ///< prices may be marked as final (toll, tax, discounts included)
    bool RowDiscounts = false;               ///< documents carry discounts per row
    bool ValueAddedTax = false;              ///< documents carry value-added toll and tax
    int GoodCodeLength = 6;                  ///< digits of a group-prefixed good code, 1 to 6
    std::array<QString, 3> ReservedBarcodes; ///< barcodes that operate the sales screens; no good may carry them
};

} // namespace host
