#pragma once

namespace host {

/// The tables of this connection on which the screens of divisions work, and divisions read into them. Their columns
/// are those of `#GoodDetailDivisionDetailTemp` (source rows) and `#GoodDetailDivisionDetailItemsTemp` (parts).
/// All throw DatabaseError.
class DetailDivisionService
{
public:
    virtual ~DetailDivisionService() = default;

    /// Each makes its table anew, empty.
    virtual void CreateGoodDetailDivisionDetailTempTable() = 0;
    virtual void CreateGoodDetailDivisionDetailItemsTempTable() = 0;
    virtual void DropGoodDetailDivisionDetailTempTable() = 0;
    virtual void DropGoodDetailDivisionDetailItemsTempTable() = 0;
    /// Reads the rows of a saved division, or its parts, into the table, which exists.
    virtual void GoodDetailDivisionDetailTempInsert_Rows(int divisionCode) = 0;
    virtual void GoodDetailDivisionDetailItemsTempInsert_Rows(int divisionCode) = 0;
};

} // namespace host
