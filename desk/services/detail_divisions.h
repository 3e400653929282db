#pragma once

#include "desk/services/detail_movements.h"
#include "host/services/detail_division_service.h"

namespace desk {

/// Divisions out of the tables of the desk.
class DetailDivisions : public host::DetailDivisionService
{
public:
    /// Both outlive the service.
    DetailDivisions(DetailDesk &desk, DetailMovements &movements);

    void CreateGoodDetailDivisionDetailTempTable() override;
    void CreateGoodDetailDivisionDetailItemsTempTable() override;
    void DropGoodDetailDivisionDetailTempTable() override;
    void DropGoodDetailDivisionDetailItemsTempTable() override;
    void GoodDetailDivisionDetailTempInsert_Rows(int divisionCode) override;
    void GoodDetailDivisionDetailItemsTempInsert_Rows(int divisionCode) override;

    void GoodDetailDivision_GetALL(host::Dataset &query, const host::TDayRange &days) override;
    void GoodDetailDivisionDetail_Get(host::Dataset &query) override;
    void GoodDetailDivisionDetailItems_Get(host::Dataset &query, int divisionRow, int mode) override;
    std::optional<host::TDivisionHeader> GoodDetailDivision_Header(int code) override;

    std::optional<host::TDivisionSource> GoodDetailDivision_Source(const host::TDocumentLine &line,
                                                                   int detailValueId) override;
    QList<host::TDivisionSource> GoodDetailDivision_FindUnits(const QString &serialOrBarcode) override;

    int GetOperationRow() override;
    void InsertGoodDetailDivisionDetailTemp_Row(const host::TDivisionRow &row) override;
    std::optional<host::TDivisionRow> GoodDetailDivisionDetailTemp_Row(int operationRow) override;
    QString GoodDetailDivisionDetailTemp_Get_Comment(int operationRow) override;
    void GoodDetailDivisionDetailTempDelete(int code, int operationRow) override;
    void GoodDetailDivisionDetailItemsTempDelete(int code, int operationRow) override;
    void Insert_GoodDetailKardexExit_Temp_Row(const host::TDivisionRow &row) override;
    void Delete_GoodDetailKardexTemp(host::TOperationType type, int code, int operationRow) override;

    void GoodDetailDivisionDetailItemsTemp_Begin(int code, int divisionRow) override;
    void GoodDetailDivisionDetailItemsTemp_Discard() override;
    int GoodDetailDivisionDetailItemsTempInsertRow(const host::TDivisionPart &part) override;
    void GoodDetailDivisionDetailItemsTempUpdateRow(const host::TDivisionPart &part) override;
    void GoodDetailDivisionDetailItemsTempDeleteRow(int divisionRow, int operationRow) override;
    void GoodDetailDivisionDetailItemsTempDeleteAllRow(int divisionRow) override;
    std::optional<host::TDivisionPart> GoodDetailDivisionDetailItemsTemp_Row(int divisionRow,
                                                                             int operationRow) override;
    host::Quantity GoodDetailDivisionDetailItemsTemp_Get_Amount1_By_OperationRow(int operationRow) override;
    host::Quantity GoodDetailDivisionDetailItemsTemp_Get_Amount3_By_OperationRow(int operationRow) override;
    int GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amount3(int divisionRow, host::Quantity amount3,
                                                                      bool waste) override;
    int GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_LengthWidth(int divisionRow, host::Quantity length,
                                                                          host::Quantity width, bool waste) override;
    int GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amounts(int divisionRow, host::Quantity amount1,
                                                                      host::Quantity amount2, bool waste) override;
    host::TAmounts GoodDetailDivisionDetailItemsTemp_Sum(int divisionRow) override;
    void GoodDetailDivisionDetailItemsTemp_Update_Tmp(int divisionRow, int from, int to) override;

    bool CheckGoodDetailDivisionDelete(int code, int operationRow, int part) override;
    QList<host::TDetailRefusal> GoodDetailDivision_UsedParts(int code, int operationRow, int part) override;
    void InsertGoodDetailDivision(const host::TDivisionHeader &header, int status) override;
    QList<host::TDetailRefusal> InsertGoodDetailDivisionDetail(int code) override;
    QList<host::TDetailRefusal> InsertGoodDetailDivisionDetailItems(int code) override;
    void DeleteGoodDetailDivision(int code) override;

private:
    void Run(const QString &text);
    QString Mine(host::TOperationType type, int code);
    int TypedRow(int divisionRow, bool waste, const QString &measure);
    host::Quantity TypedAmount(const QString &column, int operationRow);
    void NoteBefore(int code);
    QList<host::TDetailRefusal> Used(int code, const QString &which);
    void ListChangedParts(int code);
    void ListPieces(int code);
    void NumberPieces();
    void MakePieceValues();
    void KeepPieces(int code);

    DetailDesk &m_desk;
    DetailMovements &m_movements;
    QSqlDatabase m_connection;
};

} // namespace desk
