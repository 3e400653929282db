#pragma once

#include "host/services/detail_division_service.h"

#include <QSqlDatabase>

namespace desk {

/// Divisions out of the tables of the desk.
class DetailDivisions : public host::DetailDivisionService
{
public:
    explicit DetailDivisions(const QSqlDatabase &connection) : m_connection(connection) {}

    void CreateGoodDetailDivisionDetailTempTable() override;
    void CreateGoodDetailDivisionDetailItemsTempTable() override;
    void DropGoodDetailDivisionDetailTempTable() override;
    void DropGoodDetailDivisionDetailItemsTempTable() override;
    void GoodDetailDivisionDetailTempInsert_Rows(int divisionCode) override;
    void GoodDetailDivisionDetailItemsTempInsert_Rows(int divisionCode) override;

private:
    QSqlDatabase m_connection;
};

} // namespace desk
