#pragma once

#include "division/division_get.h"
#include "division/division_save.h"
#include "tests/desk/desk_fixture.h"
#include "tests/support/modal.h"

using namespace Qt::StringLiterals;

namespace fixture {

/// The demo shop: sheets 200034001 to 4 (2.5 × 1.5, the same, 3 × 2, 3 × 2.5) of good 200034 and rolls 210036001 to 4
/// (50, 50, 50 and 25 metres) of good 210036, all in store 4.
struct Divisions : test::QuietDesk
{
    static constexpr int Sheets = 200034;
    static constexpr int Store = 4;

    int ValueOf(const QString &serial) const
    {
        return database
            .Scalar(u"SELECT MIN(DetailValueID) FROM GoodDetailValueDetails WHERE [Value] = N'%1'"_s.arg(serial))
            .toInt();
    }
    /// Chooses `pick` for the user and notes in which mode it was asked.
    division::UnitPicker Picker()
    {
        return [this](int mode) {
            modes << mode;
            return pick;
        };
    }
    /// Saves a division of a sheet of 2.5 × 1.5 into one of 1.5 × 1.5 and two of 0.5 × 1.5, and answers its code.
    int Divide(const QString &serial, const QString &date, const QString &comment)
    {
        TDivision_DM data(desk.host);
        host::DetailDivisionService &divisions = desk.host.detailDivisions;
        const int code = data.NewCode();
        data.Begin();
        const host::TDocumentLine line{Sheets, Store, 5, static_cast<quint8>(host::TOperationType::DivisionExit),
                                       false,  code,  1};
        host::TDivisionRow row{code, 1, divisions.GoodDetailDivision_Source(line, ValueOf(serial)).value()};
        row.Taken = {3.75L, 0, 3.75L, 2.5L, 1.5L, 1};
        divisions.InsertGoodDetailDivisionDetailTemp_Row(row);
        divisions.Insert_GoodDetailKardexExit_Temp_Row(row);
        divisions.GoodDetailDivisionDetailItemsTempInsertRow({code, 1, 0, {2.25L, 0, 2.25L, 1.5L, 1.5L, 1}});
        divisions.GoodDetailDivisionDetailItemsTempInsertRow({code, 1, 0, {1.5L, 0, 1.5L, 0.5L, 1.5L, 2}});
        divisions.GoodDetailDivisionDetailItemsTemp_Update_Tmp(1, 1, 0);
        division::Save(desk.host, {code, date, comment}, host::TFormMode::New);
        data.Leave(code);
        return code;
    }
    /// Sells what the part with this serial is.
    void Sell(const QString &serial) const
    {
        database.Exec(
            u"INSERT GoodDetailKardex (DetailValueID, StoreCode, GoodCode, Amount1, TotalAmount, Amount3, "
            "OperationType, OperationCode) VALUES (%1, 4, 200034, -1, -1, -1, 2, 900)"_s.arg(ValueOf(serial)));
    }
    /// What the database says of divisions, rows and parts.
    QStringList Saved() const
    {
        return database.Rows(u"SELECT Code, [Date], Comment FROM GoodDetailDivision ORDER BY Code"_s) +
               database.Rows(u"SELECT DivisionCode, OperationRow, StoreCode, GoodCode, Amount1, Comment FROM "
                             "GoodDetailDivisionDetail ORDER BY DivisionCode, OperationRow"_s) +
               database.Rows(u"SELECT DivisionCode, DivisionRow, [Length], Width, Amount3, Amount1 FROM "
                             "GoodDetailDivisionDetailItems ORDER BY DivisionCode, OperationRow"_s);
    }

    std::optional<good_detail::ChosenDetail> pick;
    QList<int> modes;
};

} // namespace fixture
