#pragma once

#include "data/goods/good_discounts.h"
#include "data/goods/good_records.h"
#include "host/data/dataset.h"
#include "host/data/query.h"
#include "host/host.h"

#include <QString>

#include <optional>

namespace goods {

/// The rows of `GoodInf`: reading, writing and removing a good, listing goods, and what a good is used in.
class RecordStore
{
public:
    /// `list` is the connection of the goods list.
    RecordStore(const QSqlDatabase &main, const QSqlDatabase &list, host::EntityService &entities);

    host::Dataset GoodGet_QRY;   ///< the good being edited
    host::Dataset Good_List_QRY; ///< the goods list, in blocks of 1000 rows

    /// Opens `GoodGet_QRY` on the good and fills `rec`, its discounts included. False, leaving `rec` alone, when there
    /// is no such good.
    bool Good_GetByID(int code, TGoodInfoRec &rec);
    /// Only opens `GoodGet_QRY` on the good.
    void Good_GetByID(int code);
    /// True when no good has this code.
    bool Good_IsNewRecordMode(int code);
    /// The statement that finds the good, for the editor to ask whether it is still there.
    static QString Good_RecoveryText(int code);
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

    /// The voucher of the good's opening stock, 0 for none.
    int Good_GetVoucherCode(int code);
    /// True when the good has stock movements.
    bool Good_HasGardesh(int code);
    /// True when the good has voucher lines, which fix its opening stock. Lines of the opening voucher do not count.
    bool Good_HasSanadDetail(int code);
    /// Checks nothing; false.
    bool Good_FirstAssetHasSanad(int code);
    bool GoodUsedInWebService(int code);

private:
    enum class Writing { Insert, Update };

    void WriteFields(const TGoodInfoRec &rec, Writing writing);
    /// The good as it was read, null when another one was.
    const TGoodInfoRec *Read(int code) const;
    void SaveDiscounts(const TGoodInfoRec &rec);

    QSqlDatabase m_main;
    host::EntityService &m_entities;
    Discounts m_discounts;
    /// The good as Good_GetByID() read it, until it is written: what an editor did not change stays as it is then, also
    /// when another desk has changed it meanwhile.
    std::optional<TGoodInfoRec> m_read;
    host::Query Temp_QRY;
};

} // namespace goods
