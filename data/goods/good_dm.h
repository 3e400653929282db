#pragma once

#include "data/goods/good_records.h"
#include "host/data/dataset.h"
#include "host/data/query.h"
#include "host/host.h"

#include <QList>
#include <QMap>
#include <QString>

#include <array>
#include <optional>

/// The goods data module: every statement of the goods screens on a good, its code, barcodes, prices, detail types,
/// opening stock, categories, tags and photos, and its links to scales and the web shop.
///
/// It shows no messages. Checks answer a boolean or a count. Database errors (`host::DatabaseError`) and values that
/// may not be spliced into a statement (`host::RefusedText`) are thrown to the screen that called. Operations of
/// several statements are one transaction, the caller's when it has one open on the main connection.
///
/// The working rows of an open editor (prices, opening stock, categories, photo) stand in tables that all desks share,
/// keyed by the good's code. An editor of a new good therefore reserves its proposed code before it makes working rows,
/// and calls Good_ChangeCode() when the code changes.
class TGood_DM
{
public:
    /// Keeps references to the services; the connections are the host's open ones.
    TGood_DM(const host::Connections &connections, const host::SettingsService &settings,
             host::EntityService &entities);
    TGood_DM(const TGood_DM &) = delete;
    TGood_DM &operator=(const TGood_DM &) = delete;

    /// The main connection, for the transaction around a save.
    const QSqlDatabase &Connection() const { return m_main; }

    // The datasets that grids show. Owned by the data module.

    host::Dataset GoodGet_QRY;        ///< the good being edited
    host::Dataset Good_List_QRY;      ///< the goods list, in blocks of 1000 rows
    host::Dataset GoodGroup_List_QRY; ///< groups: Code, Name, Comment
    host::Dataset Tags_qry;           ///< all tags with their colours
    host::Dataset colors_qry;         ///< all colours
    host::Dataset
        KalaCategory_Qry;          ///< the categories of the good being edited: Id, Kala_code, Category_code, tmp, NAME
    host::Dataset SellDetails_QRY; ///< working sale prices of the good being edited; `Cost` is edited in place
    host::Dataset BuyDetails_QRY;  ///< working purchase prices
    host::Dataset GoodDetails_QRY; ///< working detail types of the good being edited
    host::Dataset GoodFirstAsset_QRY; ///< the opening row being edited
    host::Dataset FirstAssetList_QRY; ///< working opening rows with store and unit names

    // Records ------------------------------------------------------------------------------------------------------

    /// Opens `GoodGet_QRY` on the good and fills `rec`, its discounts included. False, leaving `rec` alone, when there
    /// is no such good.
    bool Good_GetByID(int code, TGoodInfoRec &rec);
    /// Only opens `GoodGet_QRY` on the good.
    void Good_GetByID(int code);
    /// True when no good has this code.
    bool Good_IsNewRecordMode(int code);
    /// Saves the discounts and the good's row. True; throws when the code is taken.
    bool Good_Insert(const TGoodInfoRec &rec);
    /// Writes what differs from what Good_GetByID() read of the same good, discounts included, and the stamp; all of it
    /// when another good, or none, was read. Throws when the good is gone.
    bool Good_Update(const TGoodInfoRec &rec);
    /// Has the host delete the good by its own rules, which tells the user why not. True when it is deleted.
    bool Good_Delete(int code);
    /// Opens the goods list with fixed values.
    void Good_GetAll(int manageType, int userCode, int slCode, int displayType, const QString &requestedColumns);
    struct GoodCodes
    {
        QString GoodCodes; ///< ascending, joined by ","; empty when there is no good
        int GoodCount = 0;
    };
    GoodCodes GetGoodCodes();
    /// Gives the asset class to goods; `codes` is a code list.
    void Good_UpdateDaraiGoodType(int goodType, const QString &codes);
    /// The voucher of the good's opening stock, 0 for none.
    int Good_GetVoucherCode(int code);

    // Codes --------------------------------------------------------------------------------------------------------

    /// The next code of a group, or beyond all codes when that one is taken or reserved. `grpCode` is digits.
    int Good_GetNewCode(const QString &grpCode);
    /// The next code in the group-prefixed numbering; both texts are digits.
    int Good_GetNewCode_GrpCode(const QString &grpCode, const QString &codeLength);
    /// For the start of a save of a new good, inside its transaction and before anything is written: when another desk
    /// took the code meanwhile, a new one of the group is taken, the working rows go over to it, `code` is changed and
    /// the answer is true, so that the screen tells the user. On SQL Server the code stays locked until the end of the
    /// transaction; on the embedded database the transaction holds the write lock anyway.
    bool Good_TakeCode(int &code, int grpCode, int codeLength);
    /// Moves all working rows (prices, opening stock, categories, photo, detail types) from one code to another.
    void Good_ChangeCode(int newCode, int oldCode);
    /// The good's price on its default level.
    host::Quantity GoodDefaultCost(int code);

    /// A column of the name that the user types in three parts.
    enum class NamePart { Name, Type, Index };
    /// The first 50 texts, in order, that goods have in this part of their name and that begin with `beginning`.
    QStringList Good_NameParts(NamePart part, const QString &beginning);

    // Uniqueness; `code` is the good being edited, whose own row does not count ---------------------------------------

    int Good_ExistName(int code, const QString &name);
    int Good_ExistIndex(int code, const QString &index);
    int Good_ExistDetailUniqueCode(int code, const QString &uniqueCode);
    bool Good_ExistBarCode(int code, const QString &barcode);
    /// `smsCode` is digits; throws RefusedText otherwise.
    bool Good_IsExistSMSCode(int code, const QString &smsCode);

    // Barcodes -----------------------------------------------------------------------------------------------------

    /// The good that carries the barcode, 0 when none does.
    int CheckBarcodeCode(const QString &barcode);
    /// True for the barcodes that operate the sales screens.
    bool BarcodeUsedInSetting(const QString &barcode) const;

    // Use ----------------------------------------------------------------------------------------------------------

    /// True when the good has stock movements.
    bool Good_HasGardesh(int code);
    /// True when the good has voucher lines, which fix its opening stock. Lines of the opening voucher do not count.
    bool Good_HasSanadDetail(int code);
    /// Checks nothing; false.
    bool Good_FirstAssetHasSanad(int code);
    bool GoodUsedInWebService(int code);

    // Scales, on the connection of the scale database ----------------------------------------------------------------

    bool CheckGoodInScale(int code);
    /// Marks the scale item for deletion at the next synchronisation.
    void DeleteGoodInScale(int code);
    /// Brings name, price of the level (1 to 10), first barcode and unit type of the scale item in step with the good
    /// and marks it as changed. Nothing happens for a good that no scale has.
    void Change_Price_Scale(int code, int costLevel);

    // Groups and selected lists ------------------------------------------------------------------------------------

    void GoodGroup_GetAll();
    void GoodGroup_Fill(QList<host::Entity> &list);
    void GoodSelectedList_Fill(QList<host::Entity> &list);
    /// The list's `DisplayType`: true when its goods are the ones left out, false when they are the ones to show. The
    /// parameter @DisplayType of GoodInf_List_SP says the opposite: 0 leaves them out.
    bool GoodSelectedIndex_IsChecked(int code);
    /// Recomputes stock on hand: 255, then 254.
    void UpdateMogodiKala(int kind);
    /// Opening date of the books, as text.
    QString GetFirstPeriodVoucherDate();
    struct Stock
    {
        host::Quantity MeghdarKol = 0; ///< total
        host::Quantity Mojod = 0;      ///< on hand
    };
    /// Totals of a detail list; `inner` is a SELECT made by the program with the columns MeghdarKol and Mojod.
    Stock GetStockMogodi(const QString &inner);

    // Tags ---------------------------------------------------------------------------------------------------------

    bool ExistTag();
    /// Opens `Tags_qry`.
    void GetAllTagsWithColor();
    void GetAllColors();
    struct Tag
    {
        int Code = 0;
        int ColorCode = 0;
        QString Name;
        QByteArray Image;
    };
    /// The tag of this code; Code is 0 when there is none.
    Tag GetTagsByColorCode(int code);
    /// The tag codes of several goods, as stored: pairs of good and tags. `codes` is a code list.
    QList<QPair<int, QString>> GetTagsOfGoods(const QString &codes);

    // Categories ---------------------------------------------------------------------------------------------------

    /// Kind 1 attaches a category for the time of editing, kind 2 makes it last.
    void InsertUpdateToKalaCategory(int goodCode, int categoryCode, int kind);
    /// True when the category may hold goods (has no branches) and the good, as this desk shows it, lacks it.
    bool cat_checker(int goodCode, int categoryCode);
    /// Kind 2 takes the row of `KalaCategory_Qry` with this Id off the good until the save decides; kind 1 puts it
    /// back.
    void GoodCatToTemp(int id, int kind);
    /// Opens `KalaCategory_Qry` on the good's categories as this desk has them: what other desks have attached or taken
    /// off and not saved is not seen.
    void Fill_grid(int goodCode);
    /// On save: categories attached on this desk last, those taken off here are gone.
    void TempToGoodCat(int goodCode);
    /// Drops the categories attached but not saved, of all desks; TempToGoodCat() restores this module's own.
    void DeleteTmpCategory();
    /// Forgets the categories taken off the good but not saved.
    void undodelete_category(int goodCode);

    // Photos -------------------------------------------------------------------------------------------------------

    void TmpToMainPhoto(int goodCode);
    void DeleteTmpphoto(int goodCode);

    // Price levels -------------------------------------------------------------------------------------------------

    QString CostLevel_GetTitle(int code);
    /// Makes the good's twenty working prices: of its price row, or zeros for a new good (kind 2). The former working
    /// rows are cleared first. A good without a price row gets none.
    void CostLevel_Prepare(int goodCode, int kind);
    /// Opens the working prices of one side on `SellDetails_QRY` / `BuyDetails_QRY`.
    void CostLevel_Sell_GetAll(int goodCode);
    void CostLevel_Buy_GetAll(int goodCode);
    /// Opens the stored prices of one side, in the same columns, for looking at them: the working rows, which another
    /// desk may be editing, stay as they are.
    void CostLevel_Sell_View(int goodCode);
    void CostLevel_Buy_View(int goodCode);
    /// Makes a level (1 to 10) the default of its side.
    void CostLevel_Sell_Update(int goodCode, int level);
    void CostLevel_Buy_Update(int goodCode, int level);
    /// Fills a chooser with "default" (code 0) and the levels; returns the index of the entry to choose.
    int CostLevel_Sell_Fill(QList<host::Entity> &list, int goodCode);
    int CostLevel_Buy_Fill(QList<host::Entity> &list, int goodCode);
    /// True when the side shows working prices but none, or zero, at the level.
    bool CostLevel_Sell_NotSelect(int level) const;
    bool CostLevel_Buy_NotSelect(int level) const;
    /// Puts the working prices of one side that `SellDetails_QRY` / `BuyDetails_QRY` shows, with what is being typed,
    /// in the place of those that the table holds: another desk that opens or leaves the same good clears them. True
    /// when they were others; the rows are open anew then.
    bool CostLevel_Sell_Restore(int goodCode);
    bool CostLevel_Buy_Restore(int goodCode);
    /// Writes the prices and default levels that `SellDetails_QRY` / `BuyDetails_QRY` show and that were changed since
    /// CostLevel_Prepare() to the good's price row, in one statement or none. Working rows are not asked: they may be
    /// another desk's.
    void CostLevel_Save(int goodCode);
    /// Clears the good's working prices.
    void CostLevel_DeleteTemp(int goodCode);

    // Detail types -------------------------------------------------------------------------------------------------

    /// Makes the empty working list of the connection.
    void CreateGoodDetailTempTable();
    /// Fills a fresh working list from the good's relations, serial first, barcode next, the others after.
    void FillGoodDetails(int goodCode);
    void InsertDefaultDetailTypesSelectedListInNewGood(const QString &goodCode);
    /// Opens `GoodDetails_QRY`.
    void GoodDetailTemp_GetAll();
    bool GoodDetailTemp_CheckExists();
    /// Adds detail types; `idList` has a "," after every id. Types already there and beyond the fifth are skipped.
    void GoodDetailTemp_Insert(QString idList, int goodCode);
    /// `ids` is a code list of row ids of the working list.
    void GoodDetailTemp_Delete(const QString &ids);
    void GoodDetailTemp_DeleteAll();
    /// The detail types of the working list as a code list, "0" when it is empty.
    QString DetailTypesTmp_GetCode();
    QString GetDetailTypeTitle(int id);
    /// The detail types of the working list in detail order, 0 for none. False when it is empty or good details are
    /// switched off.
    bool GetGoodDetailTempID(int &d1, int &d2, int &d3, int &d4, int &d5);
    bool InsertGoodDetailRelation(int goodCode, int d1, int d2, int d3, int d4, int d5);
    bool UpdateGoodDetailRelation(int goodCode, int d1, int d2, int d3, int d4, int d5);
    /// Gives goods exactly these detail types; scope below 2: the goods of the code list, 2: all goods.
    bool InsertGoodDetailTypesForGoods(const QString &goodCodes, const QString &detailIds, int scope);

    // Opening stock ------------------------------------------------------------------------------------------------

    void FirstAsset_DeleteTemp(int goodCode);
    /// Makes the working copy of the saved rows.
    void FirstAsset_FillTemp(int goodCode);
    /// True when the working copy is empty or is one row in store 1.
    bool FirstAsset_NotIsMultiStore(int goodCode);
    /// The same; `store` becomes that of the only row, 0 when there is none or more than one.
    bool FirstAsset_NotIsMultiStore(int goodCode, int &store);
    /// Keeps the single working row in step with the editor's fields; `store` is digits, or empty for none.
    void FirstAsset_MultiStore(int goodCode, const QString &store, host::Quantity amount1, host::Quantity amount2);
    /// Adds a working row with row number 1; the amounts are decimal texts.
    void GoodFirstAsset(int goodCode, const QString &store, const QString &amount1, const QString &amount2);
    void GoodFirstAsset_GetAmount(int goodCode, host::Quantity &amount1, host::Quantity &amount2);
    void GoodFirstAsset_UpdateAllGoodCodes(int newCode, int oldCode);
    /// Opens `FirstAssetList_QRY`. The good may not be saved yet, so its units (0: none) and its formula (main units in
    /// one second unit, 0: none) are the caller's.
    void GoodFirstAsset_GetAll(int goodCode, int unit1, int unit2, host::Quantity formula);
    int GoodFirstAsset_GetNewCode(int goodCode);
    /// False, leaving `rec` alone, when there is no such row.
    bool GoodFirstAsset_GetByID(int goodCode, int radif, TGoodFirstAsset_Rec &rec);
    void GoodFirstAsset_GetByID(int goodCode, int radif);
    bool GoodFirstAsset_Insert(const TGoodFirstAsset_Rec &rec);
    bool GoodFirstAsset_Update(const TGoodFirstAsset_Rec &rec);
    void GoodFirstAsset_Delete(int radif);
    int GoodFirstAsset_RecordCount(int goodCode, int storeCode);
    /// True when another working row of the good uses the store.
    bool ValidateGoodFirstAsset_Insert(int goodCode, int storeCode, int radif);
    /// On save: the working copy replaces the saved rows. `amount1` and `amount2` are the totals that the user saw;
    /// throws when the working rows add up to something else because another desk changed them.
    void GoodFirstAsset_SaveTemp(int goodCode, host::Quantity amount1, host::Quantity amount2);
    /// On save of a good that is kept in one store: the working row, if there is one, replaces the saved row, which
    /// stood in `formerStore` (0: there was none). Throws when another desk has entered rows for further stores.
    void FirstAsset_SaveRow(int goodCode, int formerStore);

    /// The opening voucher of goods, as the procedure of that name takes it.
    struct FirstPeriodVoucher
    {
        std::optional<int> SaveType;
        int SanadCode = 0;
        QString SanadDate;
        QString FromDate; ///< null: no limit
        QString ToDate;   ///< null: no limit
        int FromCode = 0;
        int ToCode = 0;
        QString Codes; ///< a code list; null: no list
    };
    /// Makes or changes the opening voucher; the procedure's return value.
    int AutoVoucherFirstPriodGoods(const FirstPeriodVoucher &voucher);

private:
    enum Side { Sell, Buy };

    enum class Writing { Insert, Update };

    void SaveDiscounts(int code, const TGoodPrice_Rec &price);
    void ReadDiscounts(int code, TGoodPrice_Rec &price);
    void WriteFields(const TGoodInfoRec &rec, Writing writing);
    /// The good as it was read, null when another one was.
    const TGoodInfoRec *Read(int code) const;
    bool CodeIsTaken(int code);
    /// How many other goods have the value in this column.
    int CountOthers(int code, const QString &column, const QString &value);
    int FreshCode(int grpCode, int codeLength);
    void RestoreAttached(int goodCode);
    void OpenCostLevels(host::Dataset &dataset, int goodCode, Side side);
    void ViewCostLevels(host::Dataset &dataset, int goodCode, Side side);
    void SetDefaultCostLevel(int goodCode, int level, Side side);
    int FillCostLevels(QList<host::Entity> &list, int goodCode, Side side);
    bool RestoreCostLevels(host::Dataset &dataset, int goodCode, Side side);
    void WriteFirstAsset(const TGoodFirstAsset_Rec &rec);
    void ReplaceSavedFirstAsset(int goodCode);
    /// The codes of the categories that `rows` has for the good, for an IN list; one that no category has when none.
    static QString CategoryList(const QList<QPair<int, int>> &rows, int goodCode);
    void InsertRelations(int goodCode, const std::array<int, 5> &details);

    /// The good as Good_GetByID() read it, until it is written: what an editor did not change stays as it is then, also
    /// when another desk has changed it meanwhile.
    std::optional<TGoodInfoRec> m_read;
    host::Dataset GoodCostDiscount_QRY; ///< the price row being saved
    QSqlDatabase m_main;
    QSqlDatabase m_list;
    QSqlDatabase m_scale;
    const host::SettingsService &m_settings;
    host::EntityService &m_entities;
    host::Query Temp_QRY;
    host::Query TMP_OnLine_QRY;
    /// The prices of one side.
    struct CostLevels
    {
        QMap<int, QString> costs; ///< by level, decimal texts
        int defaultLevel = 0;     ///< 0 for none
    };
    static CostLevels ShownCostLevels(const host::Dataset &dataset);
    /// What each side showed first after CostLevel_Prepare().
    std::array<std::optional<CostLevels>, 2> m_prepared;
    /// Pairs of good and category attached, and taken off, by this module since the last save or clearing. Other desks
    /// clear the marks in the table.
    QList<QPair<int, int>> m_attached;
    QList<QPair<int, int>> m_takenOff;
};
