#pragma once

#include "division/division_save.h"
#include "gooddetail/serial_dm.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace test {

/// Divides units as the screens do, over the real services.
struct Divider
{
    explicit Divider(host::Host &used) : host(used), service(used.detailDivisions), data(used) {}

    void Open() { Open(division::NewCode(host), host::TFormMode::New); }
    void Open(int code, host::TFormMode mode)
    {
        header = {code, u"1405/02/03"_s, u"cut"_s, 0};
        openedAs = mode;
        if (mode == host::TFormMode::New) {
            service.CreateGoodDetailDivisionDetailTempTable();
            service.CreateGoodDetailDivisionDetailItemsTempTable();
            return;
        }
        TGoodDetailDivision_Rec record;
        if (!data.GoodDetailDivision_Fill(code, record))
            qFatal("no division %d", code);
        header.Revision = service.GoodDetailDivision_Header(code)->Revision;
    }
    /// A new row; each part has the amounts of its pieces together. 0 when there is no such unit.
    int Take(int good, const QString &serial, const host::TAmounts &taken, const QList<host::TAmounts> &parts,
             bool waste = false)
    {
        return Retake(service.GetOperationRow(), good, serial, taken, parts, waste);
    }
    int Retake(int row, int good, const QString &serial, const host::TAmounts &taken,
               const QList<host::TAmounts> &parts, bool waste = false)
    {
        const host::TDocumentLine line{
            good, store, quint8(taken.Amount2 != 0 && taken.Amount3 != 0 ? 3 : 1), 24, false, header.Code, row, 0};
        const int value =
            host::Scalar(host.DM.ADOConnection1,
                         u"select MIN(v.ID) from GoodDetailValues v inner join GoodDetailValueDetails d on "
                         "d.DetailValueID = v.ID where v.GoodCode = %1 and d.[Value] = %2"_s.arg(good)
                             .arg(host::NQuotedStr(serial)))
                .toInt();
        const auto source = service.GoodDetailDivision_Source(line, value);
        if (!source)
            return 0;
        service.GoodDetailDivisionDetailItemsTemp_Begin(header.Code, row);
        QList<int> typed;
        for (host::Query rows(
                 host.DM.ADOConnection1,
                 u"select OperationRow from #GoodDetailDivisionDetailItemsTemp where Tmp = 1 order by ID"_s);
             !rows.Eof(); rows.Next())
            typed << rows.Int(u"OperationRow");
        for (const host::TAmounts &part : parts) {
            if (typed.isEmpty())
                service.GoodDetailDivisionDetailItemsTempInsertRow({header.Code, row, 0, part, waste});
            else
                service.GoodDetailDivisionDetailItemsTempUpdateRow({header.Code, row, typed.takeFirst(), part, waste});
        }
        for (const int left : std::as_const(typed))
            service.GoodDetailDivisionDetailItemsTempDeleteRow(row, left);
        service.GoodDetailDivisionDetailTempDelete(header.Code, row);
        const host::TDivisionRow accepted{header.Code, row, *source, u"a"_s, u"g"_s, taken, u"c"_s};
        service.InsertGoodDetailDivisionDetailTemp_Row(accepted);
        service.GoodDetailDivisionDetailItemsTemp_Update_Tmp(row, 1, 0);
        service.Insert_GoodDetailKardexExit_Temp_Row(accepted);
        return row;
    }
    void Drop(int row)
    {
        service.Delete_GoodDetailKardexTemp(host::TOperationType::DivisionExit, header.Code, row);
        service.GoodDetailDivisionDetailTempDelete(header.Code, row);
        service.GoodDetailDivisionDetailItemsTempDelete(header.Code, row);
    }
    /// What is refused, empty when it was written.
    QString Save()
    {
        return Told([&] { division::Save(host, header, openedAs); });
    }
    QString Delete(int code)
    {
        return Told([&] { division::Delete(host, code); });
    }
    template <typename Step> static QString Told(const Step &step)
    {
        try {
            step();
            return {};
        } catch (const DivisionRefused &refused) {
            return refused.Text();
        }
    }

    host::Host &host;
    host::DetailDivisionService &service;
    TSerial_DM data;
    host::TDivisionHeader header;
    host::TFormMode openedAs = host::TFormMode::New;
    int store = 1;
};

} // namespace test
