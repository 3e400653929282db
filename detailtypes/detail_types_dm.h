#pragma once

#include "detailtypes/detail_type_records.h"
#include "host/data/dataset.h"
#include "host/data/query.h"
#include "host/host.h"

#include <QStringList>

/// The data module of detail types: the types, the items of list and text types, the categories and their members.
///
/// It shows no messages. Checks answer a boolean or a count; operations that answer a boolean say true, and throw
/// `host::DatabaseError` when the database refuses. Lists of codes that are not digits and commas throw
/// `host::RefusedText`. Operations of several statements are one transaction, or part of the caller's when it has one
/// open on Connection().
class TDetailTypes_DM
{
public:
    /// Works on the main connection of the host, which stays open.
    explicit TDetailTypes_DM(const host::Connections &connections);
    TDetailTypes_DM(const TDetailTypes_DM &) = delete;
    TDetailTypes_DM &operator=(const TDetailTypes_DM &) = delete;

    /// The main connection, for a transaction around several operations.
    const QSqlDatabase &Connection() const { return m_main; }

    // The row sets that grids show. Owned by the data module.

    host::Dataset DetailTypes_QRY;              ///< all types, with the names of their kinds in `DetailTypeName`
    host::Dataset DetailTypes_SelectedList_QRY; ///< all categories, with the mark of the default in `Defaulted`
    host::Dataset DetailTypes_DetailList_QRY;   ///< the members of one category: Code, Name, Radif
    host::Dataset Get_QRY;                      ///< the category being edited

    // Types --------------------------------------------------------------------------------------------------------

    /// Opens `DetailTypes_QRY` anew.
    void DetailTypes_GetAll();
    /// Fills `record`. False, leaving it alone, when there is no such type.
    bool DetailTypes_GetByID(int id, TDetailType_Rec &record);
    /// The statement that finds the type, for the editor to ask whether it is still there.
    static QString DetailTypes_RecoveryText(int id);
    /// Adds the type without its items; `newId` is its key. The columns of modification stay empty.
    bool DetailTypes_Insert(const TDetailType_Rec &record, int &newId);
    /// Changes the type with this ID, without its items; the columns of creation stay. Throws when the type is gone.
    bool DetailTypes_Update(const TDetailType_Rec &record);
    /// Adds the type and its items, in their order, as one. `items` is for list and text types.
    bool DetailTypes_InsertWithItems(const TDetailType_Rec &record, const QStringList &items, int &newId);
    /// Changes the type and rewrites its items as one; without `items` the type has none afterwards.
    bool DetailTypes_UpdateWithItems(const TDetailType_Rec &record, const QStringList &items);
    /// Removes the items, then the type.
    bool DetailTypes_Delete(int id);
    /// The number of types with this title. Blanks before and after a title count.
    int DetailTypesTitle_Exist(const QString &title);
    /// Whether a category holds the type, or a good carries it: such a type may not be deleted.
    bool UseGoodDetailType(int id);
    /// Whether some good has recorded values of this date type and of a date type with reminder: the reminder of this
    /// one may not be switched on then, because a good has room for one.
    bool ExistsGoodDetailBeforeEditForDateAlarmDetail(const QVariant &id);
    /// Whether more than `limit` of the types are serials or barcodes.
    bool CheckDetailTypeCodes_SerialAndBarcode(const QString &codes, int limit);
    /// Whether some owner has this type beside another one that is a serial or a barcode: a good, or else (`inList`) a
    /// category.
    bool MeetsSerialOrBarcode(int id, bool inList);
    /// Whether more than `limit` of the types are dates with reminder.
    bool CheckDetailTypeCodes_DateTypeForDateAllarm(const QString &codes, int limit);

    // Items --------------------------------------------------------------------------------------------------------

    /// The items of a type in their order.
    QStringList DetailTypesItems(int id);
    bool DetailTypesItems_Delete(int id);
    /// `row` counts from 1.
    void DetailTypesItems_Insert(int id, int row, const QString &value);

    // Categories ---------------------------------------------------------------------------------------------------

    /// Gives `DetailTypes_SelectedList_QRY` its text; the caller opens it.
    void DetailTypes_SelectedList_GetAll();
    /// Opens `Get_QRY` on the category.
    void DetailTypes_SelectedList_GetByID(int code);
    /// The same, and fills `record`. False, leaving it alone, when there is no such category.
    bool DetailTypes_SelectedList_GetByID(int code, TDetailTypes_SelectedList_Rec &record);
    bool DetailTypes_SelectedList_IsNewRecordMode(int code);
    /// The statement that finds the category, for the editor to ask whether it is still there.
    static QString DetailTypes_SelectedList_RecoveryText(int code);
    /// One beyond the highest code that is in use or reserved by an open editor; `status` is the area of the
    /// reservations, as digits.
    void DetailTypes_SelectedList_GetNewCode(const QString &status, int &code);
    /// The number of categories with this title.
    int DetailTypes_SelectedList_ExistName(const QString &title);
    /// Adds the category to `Get_QRY`; it is not the default.
    bool DetailTypes_SelectedList_Insert(const TDetailTypes_SelectedList_Rec &record);
    /// Changes the category that `Get_QRY` stands on; reads it when another one, or none, is open. Throws when the
    /// category is gone.
    bool DetailTypes_SelectedList_Update(const TDetailTypes_SelectedList_Rec &record);
    /// Removes the category; the rows of its members stay.
    void DetailTypes_SelectedList_Delete(int code);
    /// Turns the mark of the default round: `isDefault` is what the category is now.
    void DetailTypes_SelectedList_Default(int code, bool isDefault);
    /// No category is the default any more.
    void DetailTypes_AllSelectedList_NoDefault();
    /// The command of the list: a category that is not the default becomes the only one, the default becomes none.
    void DetailTypes_SelectedList_SwitchDefault(int code, bool isDefault);

    // Members of categories ----------------------------------------------------------------------------------------

    /// Opens `DetailTypes_DetailList_QRY` on the members of a category.
    void DetailTypes_SelectedList_DetailGetAll(int code);
    /// The members' codes in their order, joined by ","; "0" when there are none. True when there are any.
    bool DetailTypes_SelectedList_GetCode(int code, QString &codes);
    /// Keeps the members for this desk until the end of the caller's transaction.
    void DetailTypes_SelectedList_Lock(int code);
    /// Puts the types of the code list `codes` behind the members of category `code`, leaving out those it has.
    void DetailTypes_SelectedList_InsertDetail(const QString &codes, int code);
    /// Takes the types of the code list out of the category; the others keep their places.
    void DetailTypes_SelectedList_DeleteDetail(int code, const QString &codes);
    void DetailTypes_SelectedList_DeleteAll(int code);

private:
    enum class Writing { Insert, Update };
    static void WriteType(host::Dataset &row, const TDetailType_Rec &record, Writing writing);
    void InsertItems(int id, const QStringList &items);
    bool MoreThan(int limit, const QString &text);

    QSqlDatabase m_main;
    host::Query Temp_QRY;
};
