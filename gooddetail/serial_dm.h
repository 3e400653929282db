#pragma once

#include "gooddetail/detail_line.h"
#include "gooddetail/good_detail_records.h"
#include "host/data/dataset.h"
#include "host/data/query.h"
#include "host/host.h"

#include <QUuid>

/// The good details data module: every statement of the screens that enter, take out and select details of goods.
///
/// It shows no messages. Checks answer a boolean. Database errors (`host::DatabaseError`) and values that may not be
/// spliced into a statement (`host::RefusedText`) are thrown to the screen that called. What writes detail values and
/// the ledger are the host's services, not this module.
class TSerial_DM
{
public:
    /// The host's connections are open and stay so; its services outlive the module.
    explicit TSerial_DM(host::Host &host);
    /// Gives the working table of the enter screen back.
    ~TSerial_DM();
    TSerial_DM(const TSerial_DM &) = delete;
    TSerial_DM &operator=(const TSerial_DM &) = delete;

    host::Dataset Exist_QRY;              ///< goods that may carry details
    host::Dataset Exist_Detail_QRY;       ///< stock of a good's detail values
    host::Dataset EnterGoodDetail_QRY;    ///< working rows of the enter screen
    host::Dataset ExitGoodDetail_QRY;     ///< working rows of the exit screen
    host::Dataset GoodDetailDivision_QRY; ///< the divisions
    host::Dataset Main_QUR;               ///< stored serials of one kind of document
    host::Dataset Temp_QUR;               ///< working copies of the same
    host::Dataset FactPrint_QRY;          ///< serials of a document for printing

    const QSqlDatabase &Connection() const { return m_main; }

    // Details of a good --------------------------------------------------------------------------------------------

    /// The good's features; empty when there is no such good. `goodCode` is digits only.
    void GetFeatureDetailsByGoodCode(const QString &goodCode, QString &features);
    /// The detail types of a good in the order in which they stand everywhere, a serial first, a barcode next; 0 for
    /// none. Beyond the fifth there is none.
    void GetGoodsDetail(int goodCode, int &d1, int &d2, int &d3, int &d4, int &d5);
    /// What the input of a detail type needs. `mode` 2: a list begins with the entry that asks to choose.
    TGoodDetailData GetGoodDetailData(int detailId, int mode);
    /// Letters of its title.
    int GetGoodDetailTitleLength(int detailId);
    int GetGoodDetailType(int detailId);
    /// The name, units and formula of a good.
    TLineGood_Rec GetLineGood(int goodCode);
    /// Nothing when there is no such store.
    std::optional<QString> GetStoreName(int storeCode);
    /// Whether the good is measured by area.
    bool CheckGoodUnit_MetreMoraba(int goodCode);

    // Serials on record --------------------------------------------------------------------------------------------

    /// Whether some of it is on hand, rows of documents that are not saved included. Of whichever good.
    bool CheckSerialDetailValueID_1(const QString &serial);
    /// The same out of saved documents alone; `detailValueId` is 0 when nobody has the serial.
    bool CheckSerialDetailValueID_2(const QString &serial, int &detailValueId);
    /// Which numbers of the range are taken, as check 1 sees it, in `list`, joined by ",". A text that is no number
    /// counts as 0. One statement, however long the range.
    bool CheckSerialRangeDetailValueID(const QString &from, const QString &to, QString &list);

    // Selecting ----------------------------------------------------------------------------------------------------

    /// Opens `Exist_QRY`. The column expression begins with a comma; mode 1 takes goods without a formula, 2 those in
    /// square metres. In these two the filter is joined with AND, in mode 0 it must bring its own. Goods with a serial
    /// are left out; for a division they are there too, and only goods of which units are on record.
    void GoodDetail_SelectGood_Get(const QString &column, const QString &filter, quint8 mode, bool forDivision = false);
    /// Opens `Exist_QRY` for choosing: every good in the order of codes, or those of a selected list in its order.
    /// `listCode` 0: none; `mode` as above.
    void GoodDetail_SelectGood_Open(int listCode, quint8 mode, bool forDivision = false);
    /// The selected lists of goods that are in use.
    QList<TSelectedList_Rec> SelectedLists_Get();
    /// The titles of a good's details in their order.
    QStringList GetGoodDetailTitles(int goodCode);
    /// Opens `Exist_Detail_QRY`.
    void GoodDetail_Select(int goodCode, int comIndex, int unitType);

    // Entering -----------------------------------------------------------------------------------------------------

    /// Makes the empty working table and opens `EnterGoodDetail_QRY` on it. Where another desk has the common table,
    /// this one gets a table of its own.
    void EnterGoodDetail_Open();
    /// Reads the working rows again.
    void EnterGoodDetail_Refresh();
    /// The table in use.
    const QString &EnterGoodDetail_Table() const { return m_enterTable; }
    void EnterGoodDetailRow_Insert(const TEnterGoodDetail_Rec &row);
    /// Rewrites the row with that ID; when there is none, the current one.
    void EnterGoodDetailRow_Update(const TEnterGoodDetail_Rec &row);
    /// Removes the working row.
    void EnterGoodDetailRow_Delete(int id);
    /// The same for several, in blocks of a thousand.
    void EnterGoodDetailRows_Delete(const QList<int> &ids);
    /// Removes the working rows of a store and kind of document, but for those of the given detail values.
    void EnterGoodDetailRow_DeleteAll(int storeCode, quint8 operationType, const QList<int> &keptValues);

    // Taking out ---------------------------------------------------------------------------------------------------

    /// Opens `ExitGoodDetail_QRY` on what is on hand for the line, narrowed by what was typed.
    void ExitGoodDetail_Open(const host::TDocumentLine &line, const TExitNarrowing &typed);
    /// Sets what goes out of a working row, which is chosen as soon as one amount is above 0.
    void ExitGoodDetailRow_Update(int id, const host::TAmounts &exit, int foreignOperationCode);
    /// A working row as it stands now; nothing when there is none with that ID.
    std::optional<TExitGoodDetail_Rec> ExitGoodDetail_Row(int id);
    /// What the chosen rows of the line come to.
    good_detail::DetailLineResult ExitGoodDetail_Sum(const host::TDocumentLine &line);
    /// Takes every choice of the line back; what is on hand stays on offer.
    void ExitGoodDetail_DeleteAll(const host::TDocumentLine &line);

    // Divisions ----------------------------------------------------------------------------------------------------

    int GetGoodDetailDivisionCode();
    QString GetGoodDetailDivisionComment(int divisionCode);
    /// Reads a saved division into its working tables, which are made, and what it took into the exit working rows.
    /// False, with nothing done, when there is no such division.
    bool GoodDetailDivision_Fill(int divisionCode, TGoodDetailDivision_Rec &header);
    /// Opens `GoodDetailDivision_QRY`.
    void GoodDetailDivision_GetAll();

    // Serials of documents -----------------------------------------------------------------------------------------

    /// Opens `Main_QUR` and `Temp_QUR` on the serials of one kind of document.
    void Serials_Open(quint8 type);
    /// Opens `FactPrint_QRY`.
    void FactPrint_Open(int documentCode);

private:
    bool FindSerial(const QString &serial, int &detailValueId);
    void WriteRow(const TEnterGoodDetail_Rec &row);
    void ReadyEnterRows();
    void ForgetValues(const QString &condition);
    void RemoveRows(const QString &condition);
    bool ClaimCommonTable();
    void GiveTableBack();

    QSqlDatabase m_main;
    host::Host &m_host;
    host::Query tmp_QRY;
    QString m_enterTable;
    const QString m_mark = QUuid::createUuid().toString(QUuid::WithoutBraces);
    bool m_claimed = false; ///< the common working table is this module's
};

/// The calculated row number of a grid over serials: 1 before the first record, the record count behind the last one.
int SerialRowNumber(const host::Dataset &rows);
