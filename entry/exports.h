#pragma once

/// The functions that a host application calls, by name, after it loaded the module and installed itself with
/// `host::install`. All of them run on the user-interface thread and return after their screen has closed, except
/// `Open_GoodList`, which leaves a docked screen open in the host.
///
/// Texts are zero-terminated UTF-16; a null pointer counts as an empty text. A returned text belongs to the module and
/// is valid until the next call of the same function. No exception leaves a function: an error is shown through the
/// host's message service and the function returns its neutral result.

#include <cstdint>

#define GOODS_EXPORT __attribute__((visibility("default")))

extern "C" {

/// Opens the docked goods list (right: goods, open list). At most two are open at a time.
GOODS_EXPORT void Open_GoodList();

/// Lets the user choose one good; its code, 0 when none was chosen. `param` is "<locate code>#LC#<selection text>":
/// the list stands on the good with the locate code when that is a whole number.
GOODS_EXPORT std::int32_t Select_Good(const char16_t *param);

/// Lets the user choose several goods: their codes in the order in which they were marked, each followed by ",";
/// an empty text when none was chosen. `param` as in `Select_Good`, its selection text unused.
GOODS_EXPORT const char16_t *Select_Good_Multible(const char16_t *param);

/// Opens the editor on a good: for review when `kind` is 2, for editing otherwise.
GOODS_EXPORT void Call_GoodGet(std::int32_t goodId, std::uint8_t kind);

/// Above 0: edits that good and returns 1 when it was saved, else 0. Otherwise: opens the editor for a new good of
/// the group with the absolute value as its code, and returns 0 whatever the user did.
GOODS_EXPORT std::int32_t Edit_Good(std::int32_t value);

/// Opens the host's goods groups for choosing. Computes no result: always 0.
GOODS_EXPORT std::int32_t Select_GoodGroup();

/// Edits a goods group; 0 makes a new one. Computes no result: always 0.
GOODS_EXPORT std::int32_t Edit_GoodGroup(std::int32_t groupId);

/// Opens the host's list of stores (right: stores, open list); the host's result.
GOODS_EXPORT std::int32_t Open_StoreList();

/// Lets the user choose a store, `param` being the opening text of the host's list; its code, 0 for none.
GOODS_EXPORT std::int32_t Select_Store(const char16_t *param);

/// Edits a store; 0 makes a new one. Computes no result: always 0.
GOODS_EXPORT std::int32_t Edit_Store(std::int32_t storeId);

/// Opens the host's list of units (right: units, open list); the host's result.
GOODS_EXPORT std::int32_t Open_Units();

/// Lets the user choose a unit; its code, 0 for none.
GOODS_EXPORT std::int32_t Select_Unit();

/// Opens the list of detail types and their categories.
GOODS_EXPORT void Call_DetailTypes_List();

/// Lets the user choose detail types for a good, or for a category when `inList` is not 0: their codes, each followed
/// by ","; an empty text when none was chosen. The owner has `previousCount` of them already, `previousCodes` being
/// their codes joined by ",". When `withCategories` is not 0 a whole category can be chosen as well. `openingText` is
/// kept by the screen.
GOODS_EXPORT const char16_t *Select_DetailTypes_Multible(const char16_t *openingText, std::int32_t previousCount,
                                                         std::int32_t withCategories, std::uint8_t inList,
                                                         const char16_t *previousCodes);

// Details of goods on a document's line. `mode` 2 opens for new rows, any other value on those that were recorded. The
// quantities given back are those of all rows of the line: in unit 1, in unit 2, in total, length, width (of all rows,
// else 0) and the number of pieces (of packed goods: how much is in each package); then the number of rows. Null
// pointers are passed over. An argument called `reserved` is handed on without a meaning. Unit type 1 to 5; 0 is found
// from the good. Names that are empty are looked up. When the good or the store does not exist the user is told, 0 is
// returned and no quantity is written. `long double` is the 80-bit extended number of the x87.

/// Records the details of a line. 1 whenever the screen opened, however it was closed: the quantities are those that
/// are kept for the line then.
GOODS_EXPORT std::uint8_t Open_GoodDetail_Enter(std::int32_t mode, std::uint8_t operationType, std::int32_t good,
                                                const char16_t *reserved, const char16_t *storeName,
                                                const char16_t *unitName, const char16_t *unit2Name,
                                                const char16_t *goodName, long double *amount2, long double *amount1,
                                                std::int32_t unitType, std::int32_t store, std::int32_t operationCode,
                                                std::int32_t foreignOperationCode, std::int32_t operationRow);

/// The same with all quantities; 1, and quantities, only when the screen was closed with OK.
GOODS_EXPORT std::uint8_t Open_GoodDetail_Enter_Form(std::int32_t mode, std::uint8_t operationType, std::int32_t good,
                                                     const char16_t *reserved, const char16_t *storeName,
                                                     const char16_t *unitName, const char16_t *unit2Name,
                                                     const char16_t *goodName, long double *rows, long double *amount3,
                                                     long double *width, long double *length, long double *totalAmount,
                                                     long double *amount2, long double *amount1, std::int32_t unitType,
                                                     std::int32_t store, std::int32_t operationCode,
                                                     std::int32_t foreignOperationCode, std::int32_t operationRow);

/// The same for a line that says whether it is a return (`isReturn` 1, with operation type 4) and how much it is meant
/// to come to (`wanted`, in unit 1; 0: not said), which the screen shows beside its totals.
GOODS_EXPORT std::uint8_t Open_Enter_GoodDetail(
    std::int32_t mode, std::uint8_t operationType, std::int32_t good, std::uint8_t reserved21, std::uint8_t reserved20,
    long double wanted, const char16_t *storeName, const char16_t *unit2Name, std::int32_t reserved16,
    const char16_t *unitName, std::int32_t reserved14, const char16_t *goodName, std::int32_t reserved12,
    std::int32_t reserved11, std::int32_t reserved10, std::int32_t reserved9, std::int32_t isReturn, long double *rows,
    long double *amount3, long double *width, long double *length, long double *totalAmount, long double *amount2,
    long double *amount1, std::int32_t unitType, std::int32_t foreignOperationCode, std::int32_t operationRow,
    std::int32_t operationCode, std::int32_t store);

/// Lets the user choose what goes out with a line. `mode` 2 chooses anew, 3 changes what was chosen; any other value
/// shows it and changes nothing. `isReturn` 1: back to the supplier. 1 only when the screen was closed with OK;
/// otherwise no quantity is written.
GOODS_EXPORT std::uint8_t Open_Exit_GoodDetail(std::int32_t mode, std::uint8_t operationType, std::int32_t good,
                                               const char16_t *storeName, std::int32_t reserved10,
                                               std::int32_t reserved9, std::int32_t isReturn, long double *rows,
                                               long double *amount3, long double *width, long double *length,
                                               long double *totalAmount, long double *amount2, long double *amount1,
                                               std::int32_t unitType, std::int32_t foreignOperationCode,
                                               std::int32_t operationRow, std::int32_t operationCode,
                                               std::int32_t store);

/// Does nothing and computes no result: always 0.
GOODS_EXPORT std::uint8_t Open_GoodDetail(std::int32_t mode, std::uint8_t operationType, std::int32_t good,
                                          const char16_t *text, std::int32_t reserved5, std::int32_t reserved6,
                                          std::int32_t reserved7, long double *reserved8, long double *reserved9,
                                          long double *reserved10, long double *reserved11, long double *reserved12,
                                          long double *reserved13, long double *reserved14, std::int32_t reserved15,
                                          std::int32_t reserved16, std::int32_t reserved17, std::int32_t reserved18,
                                          std::int32_t reserved19);

/// Lets the user choose detail values on hand of goods without serials. With `mode` 0 several: their DetailValueIDs,
/// each followed by ",". With 1 (goods without a quantity formula) or 2 (goods in square metres) one: its
/// DetailValueID, StoreCode, GoodCode, Amount1, Amount2, Length, Width and Amount3, each followed by ";". An empty text
/// when none was chosen. `caption` is the screen's title, empty for its own; `company` the one whose stock is asked
/// for; `text` and `kind` have no meaning.
GOODS_EXPORT const char16_t *Select_GoodDetail_Multible(const char16_t *caption, std::int32_t company,
                                                        std::uint8_t mode, const char16_t *text, std::uint8_t kind);

/// Opens the list of divisions of details, from which they are made, changed and removed. Tells why when the settings
/// leave nothing to divide. It asks for no right: the host decides who may call it.
GOODS_EXPORT void Open_GoodDetailDivision();

/// Divides one unit on hand into parts and saves that as a division of today: the unit that
/// `Select_GoodDetail_Multible` gives in mode 1 or 2, its fields in their order. 1 only when the screen was closed with
/// OK. What the store has of the unit counts, not the quantities that are handed in.
GOODS_EXPORT std::uint8_t Open_GoodDetailDivision_DetailItems(std::int32_t detailValue, std::int32_t store,
                                                              std::int32_t good, long double amount1,
                                                              long double amount2, long double length,
                                                              long double width, long double amount3);
}
