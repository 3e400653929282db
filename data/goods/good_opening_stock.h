#pragma once

#include "data/goods/good_records.h"
#include "host/data/dataset.h"
#include "host/data/query.h"

#include <QString>

#include <optional>

namespace goods {

/// The opening stock of a good by store. An open editor works on a copy of the saved rows in the same table
/// (`GoodFirstAsset.tmp`: 0 saved, 1 working).
class OpeningStock
{
public:
    explicit OpeningStock(const QSqlDatabase &main);

    host::Dataset GoodFirstAsset_QRY; ///< the opening row being edited
    host::Dataset FirstAssetList_QRY; ///< working opening rows with store and unit names

    // The working copy as a whole

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
    /// On save: the working copy replaces the saved rows.
    void FirstAsset_SaveTemp(int goodCode);
    /// The rows in their order: the saved ones, or the working copy.
    QList<TGoodFirstAsset_Rec> FirstAsset_Rows(int goodCode, bool working);

    // Single rows

    /// Opens `FirstAssetList_QRY`, in the order of the rows. The good may not be saved yet, so its units (0: none) and
    /// its formula (main units in one second unit, 0: none) are the caller's.
    void GoodFirstAsset_GetAll(int goodCode, int unit1, int unit2, host::Quantity formula);
    int GoodFirstAsset_GetNewCode(int goodCode);
    /// False, leaving `rec` alone, when there is no such row.
    bool GoodFirstAsset_GetByID(int goodCode, int radif, TGoodFirstAsset_Rec &rec);
    void GoodFirstAsset_GetByID(int goodCode, int radif);
    bool GoodFirstAsset_Insert(const TGoodFirstAsset_Rec &rec);
    bool GoodFirstAsset_Update(const TGoodFirstAsset_Rec &rec);
    /// Deletes every working row with this number, whosever it is; see OpeningCopy::Delete().
    void GoodFirstAsset_Delete(int radif);
    int GoodFirstAsset_RecordCount(int goodCode, int storeCode);
    /// True when another working row of the good uses the store.
    bool ValidateGoodFirstAsset_Insert(int goodCode, int storeCode, int radif);
    /// What finds a row by its ID.
    static QString FirstAsset_RecoveryText(int id);

    // The opening voucher

    /// Opening date of the books, as text.
    QString GetFirstPeriodVoucherDate();
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

    const QSqlDatabase &OpeningConnection() const { return m_main; }

private:
    void WriteFirstAsset(const TGoodFirstAsset_Rec &rec);

    QSqlDatabase m_main;
    host::Query Temp_QRY;
};

} // namespace goods
