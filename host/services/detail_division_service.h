#pragma once

#include "host/data/dataset.h"
#include "host/services/detail_movement_service.h"

namespace host {

/// A recorded unit on hand that may be divided: a sheet, a roll, a wheel of cheese, or many alike.
struct TDivisionSource
{
    int DetailValueID = 0;
    int StoreCode = 0;
    int GoodCode = 0;
    std::array<QString, MostDetails> DetailTitle; ///< its values in the good's order
    QString GoodDetail;                           ///< the same as one text for display
    /// In the store, for the row that asks: without what other rows of the division take, with what it takes itself.
    /// Length and Width are those of one piece; Amount3 of packed goods is what one package holds.
    TAmounts OnHand;
};

/// A source row of a division: what is taken of one unit.
struct TDivisionRow
{
    int DivisionCode = 0;
    int OperationRow = 0; ///< within the division
    TDivisionSource Source;
    QString StoreName;
    QString GoodName;
    TAmounts Taken;
    QString Comment;
};

/// What a source row becomes: pieces alike. Amounts are those of all pieces together, but for the measures of one
/// piece (Length, Width, and Amount3 of packed goods, what one package holds).
struct TDivisionPart
{
    int DivisionCode = 0;
    int DivisionRow = 0;
    int OperationRow = 0; ///< unique within the division; it stays while the part is edited
    TAmounts Amounts;     ///< Amount3 counts the pieces, but for packed goods, which are counted by Amount2
    bool Waste = false;   ///< kept in stock under its own mark until it is written off
};

/// The header of a division.
struct TDivisionHeader
{
    int Code = 0;
    QString Date; ///< solar, ten characters with "/"
    QString Comment;
    int Revision = 0; ///< which of its saves was read; 0 before the first
};

/// Solar days, both ends included; an empty one is open.
struct TDayRange
{
    QString From;
    QString To;
};

/// Divisions: documents that take recorded units of goods and record them again as several smaller parts, under
/// operation type 24 (what is taken) and 25 (the parts). While one is edited its rows and parts stand in two tables of
/// the connection, `#GoodDetailDivisionDetailTemp` and `#GoodDetailDivisionDetailItemsTemp`.
///
/// A part of the items screen has Tmp 1 until the screen closes with OK, then 0. All throw DatabaseError; what writes
/// joins the caller's transaction.
class DetailDivisionService
{
public:
    virtual ~DetailDivisionService() = default;

    // Working tables -----------------------------------------------------------------------------------------------

    /// Each makes its table anew, empty.
    virtual void CreateGoodDetailDivisionDetailTempTable() = 0;
    virtual void CreateGoodDetailDivisionDetailItemsTempTable() = 0;
    virtual void DropGoodDetailDivisionDetailTempTable() = 0;
    virtual void DropGoodDetailDivisionDetailItemsTempTable() = 0;
    /// Reads the rows of a saved division, or its parts, into the table, which exists.
    virtual void GoodDetailDivisionDetailTempInsert_Rows(int divisionCode) = 0;
    virtual void GoodDetailDivisionDetailItemsTempInsert_Rows(int divisionCode) = 0;

    // Lists --------------------------------------------------------------------------------------------------------

    /// Opens the divisions of these days: ID, Code, Date, Comment.
    virtual void GoodDetailDivision_GetALL(Dataset &query, const TDayRange &days) = 0;
    /// Opens the source rows with the names of their units.
    virtual void GoodDetailDivisionDetail_Get(Dataset &query) = 0;
    /// Opens the parts of a source row: in mode 0 (editor) those that are accepted, in mode 1 (items screen) those that
    /// are being typed.
    virtual void GoodDetailDivisionDetailItems_Get(Dataset &query, int divisionRow, int mode) = 0;
    /// The header of a saved division; nothing when there is none.
    virtual std::optional<TDivisionHeader> GoodDetailDivision_Header(int code) = 0;

    // Sources ------------------------------------------------------------------------------------------------------

    /// A unit as the row may take it; nothing when the store has none of it.
    virtual std::optional<TDivisionSource> GoodDetailDivision_Source(const TDocumentLine &line, int detailValueId) = 0;
    /// The units on hand that carry this serial or barcode, of whichever good, those that are exactly it first.
    virtual QList<TDivisionSource> GoodDetailDivision_FindUnits(const QString &serialOrBarcode) = 0;

    // Source rows --------------------------------------------------------------------------------------------------

    /// The next free row number of the division.
    virtual int GetOperationRow() = 0;
    /// Writes one source row.
    virtual void InsertGoodDetailDivisionDetailTemp_Row(const TDivisionRow &row) = 0;
    /// The source row as it was accepted, with what its unit has on hand for it; nothing when there is none.
    virtual std::optional<TDivisionRow> GoodDetailDivisionDetailTemp_Row(int operationRow) = 0;
    virtual QString GoodDetailDivisionDetailTemp_Get_Comment(int operationRow) = 0;
    /// Removes a source row, or the accepted parts of one.
    virtual void GoodDetailDivisionDetailTempDelete(int code, int operationRow) = 0;
    virtual void GoodDetailDivisionDetailItemsTempDelete(int code, int operationRow) = 0;
    /// Keeps what the row takes for this desk, so that other rows and other desks reckon with it until the division is
    /// saved; and gives it back.
    virtual void Insert_GoodDetailKardexExit_Temp_Row(const TDivisionRow &row) = 0;
    virtual void Delete_GoodDetailKardexTemp(TOperationType type, int code, int operationRow) = 0;

    // Parts that are being typed -----------------------------------------------------------------------------------

    /// Makes the parts being typed of a row anew: a copy of its accepted ones.
    virtual void GoodDetailDivisionDetailItemsTemp_Begin(int code, int divisionRow) = 0;
    /// Forgets those that are not accepted.
    virtual void GoodDetailDivisionDetailItemsTemp_Discard() = 0;
    /// Adds a part; its OperationRow is given here and answered.
    virtual int GoodDetailDivisionDetailItemsTempInsertRow(const TDivisionPart &part) = 0;
    virtual void GoodDetailDivisionDetailItemsTempUpdateRow(const TDivisionPart &part) = 0;
    virtual void GoodDetailDivisionDetailItemsTempDeleteRow(int divisionRow, int operationRow) = 0;
    virtual void GoodDetailDivisionDetailItemsTempDeleteAllRow(int divisionRow) = 0;
    virtual std::optional<TDivisionPart> GoodDetailDivisionDetailItemsTemp_Row(int divisionRow, int operationRow) = 0;
    virtual Quantity GoodDetailDivisionDetailItemsTemp_Get_Amount1_By_OperationRow(int operationRow) = 0;
    virtual Quantity GoodDetailDivisionDetailItemsTemp_Get_Amount3_By_OperationRow(int operationRow) = 0;
    /// The part of the row with this measure, marked as waste or not; 0 when there is none.
    virtual int GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amount3(int divisionRow, Quantity amount3,
                                                                              bool waste) = 0;
    virtual int GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_LengthWidth(int divisionRow, Quantity length,
                                                                                  Quantity width, bool waste) = 0;
    /// Goods without measures: the part whose single piece has these amounts.
    virtual int GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amounts(int divisionRow, Quantity amount1,
                                                                              Quantity amount2, bool waste) = 0;
    /// What the parts being typed of a row come to.
    virtual TAmounts GoodDetailDivisionDetailItemsTemp_Sum(int divisionRow) = 0;
    /// Moves the parts of a row from one state to another; those that had the second go first.
    virtual void GoodDetailDivisionDetailItemsTemp_Update_Tmp(int divisionRow, int from, int to) = 0;

    // The division -------------------------------------------------------------------------------------------------

    /// False when something was done since with parts of the division; row and part narrow what is asked about, 0
    /// meaning all.
    virtual bool CheckGoodDetailDivisionDelete(int code, int operationRow, int part) = 0;
    /// The same told unit by unit: detail values of these parts that something was done with, the text naming by what.
    virtual QList<TDetailRefusal> GoodDetailDivision_UsedParts(int code, int operationRow, int part) = 0;
    /// Writes the header. `status` is that of the editor: 2 a new division, 3 one that is written again.
    virtual void InsertGoodDetailDivision(const TDivisionHeader &header, int status) = 0;
    /// Write the rows, and the parts, out of the working tables, with their movements in the detail ledger. Parts that
    /// are as they were keep their detail values. What comes back must be told and nothing committed.
    virtual QList<TDetailRefusal> InsertGoodDetailDivisionDetail(int code) = 0;
    virtual QList<TDetailRefusal> InsertGoodDetailDivisionDetailItems(int code) = 0;
    /// Removes header, rows and parts; the ledger is left to `GoodDetailsOperation_Delete` and the two above.
    virtual void DeleteGoodDetailDivision(int code) = 0;
};

} // namespace host
