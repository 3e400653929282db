#pragma once

#include "tests/screens/good_details/details_fixture.h"

namespace fixture {

/// A shop that cuts: goods 6001 to 6005, of the unit type that their last digit tells, each with a colour and one
/// unit on hand in store 1, whose detail value has the same last digit. 6001: 12.5 kg; 6002: 12 in unit 1, 1 in unit 2;
/// 6003: ten rolls of 50; 6004: 30 in unit 1, 12 to a box; 6005: five sheets of 3 by 2.
struct Yard : Shop
{
    explicit Yard(bool variableRatio = true)
    {
        host::TSettingRecord &record = fakes.settings.record;
        record.TwoUnitVariableRatio = variableRatio;
        record.SquareMetreGoods = true;
        record.SquareMetreUnit = 3;
        database.Exec(
            u"insert Units(Code, Name, [Type]) values (3, N'متر مربع', 0), (4, N'متر', 0), (5, N'رول', 0) "
            "insert GoodInf(Code, GrpCode, Name, Unit, Unit2, Meghdar_Formool, Store) values "
            "(6001, 5, N'پنیر', 1, NULL, 0, 1), (6002, 5, N'کاشی', 1, 2, 12, 1), (6003, 5, N'فرش', 4, 5, 0, 1), "
            "(6004, 5, N'چای', 1, 2, 12, 1), (6005, 5, N'شیشه', 3, NULL, 0, 1) "
            "insert GoodDetailRelation(GoodCode, DetailID) select Code, 2 from GoodInf where Code > 6000 "
            "insert GoodDetailValues(GoodCode) values (6001), (6002), (6003), (6004), (6005) "
            "insert GoodDetailValueDetails(DetailValueID, DetailID, [Value]) select ID, 2, N'قرمز' from "
            "GoodDetailValues insert GoodDetailKardex(DetailValueID, StoreCode, GoodCode, OperationType, "
            "OperationCode, Amount1, Amount2, TotalAmount, [Length], Width, Amount3) values "
            "(1, 1, 6001, 1, 1, 12.5, 0, 12.5, 0, 0, 0), (2, 1, 6002, 1, 1, 12, 1, 12, 0, 0, 0), "
            "(3, 1, 6003, 1, 1, 500, 10, 500, 0, 0, 50), (4, 1, 6004, 1, 1, 30, 0, 2.5, 0, 0, 0), "
            "(5, 1, 6005, 1, 1, 30, 0, 30, 3, 2, 5)"_s);
        host.detailDivisions.CreateGoodDetailDivisionDetailTempTable();
        host.detailDivisions.CreateGoodDetailDivisionDetailItemsTempTable();
    }
};

} // namespace fixture
