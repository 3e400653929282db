#include "bench/division.h"

#include "bench/report.h"
#include "bench/shop.h"
#include "division/division_save.h"
#include "gooddetail/serial_dm.h"
#include "host/data/query.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

/// Typed one by one, and once more as the pieces of one row.
constexpr int Parts = 500;
/// A power tool of the demo shop, with a serial; it has come in with the details that are measured before.
constexpr int Good = 200001;
constexpr int Store = 4;
constexpr qint64 Serial = 100;

class Division
{
public:
    explicit Division(Shop &shop) : m_host(shop.Host()), m_service(m_host.detailDivisions), m_data(m_host) {}

    /// Half the unit in `parts` rows, half of it in as many pieces of one row.
    void Type(int parts)
    {
        m_header = {division::NewCode(m_host), u"1405/09/02"_s, {}, 0};
        m_service.CreateGoodDetailDivisionDetailTempTable();
        m_service.CreateGoodDetailDivisionDetailItemsTempTable();
        const host::TDocumentLine line{Good, Store, 1, 24, false, m_header.Code, 1, 0};
        const auto source = m_service.GoodDetailDivision_Source(line, Value());
        if (!source)
            throw std::runtime_error("division: the unit is not on hand");
        const host::Quantity each = host::Quantity(1) / (2 * parts);
        for (int part = 0; part < parts; ++part)
            m_service.GoodDetailDivisionDetailItemsTempInsertRow(
                {m_header.Code, 1, 0, {each, 0, each, 0, 0, 1}, false});
        m_service.GoodDetailDivisionDetailItemsTempInsertRow(
            {m_header.Code, 1, 0, {0.5L, 0, 0.5L, 0, 0, host::Quantity(parts)}, false});
        const host::TDivisionRow row{m_header.Code, 1, *source, {}, {}, {1, 0, 1}, {}};
        m_service.InsertGoodDetailDivisionDetailTemp_Row(row);
        m_service.GoodDetailDivisionDetailItemsTemp_Update_Tmp(1, 1, 0);
        m_service.Insert_GoodDetailKardexExit_Temp_Row(row);
    }
    void Save(host::TFormMode mode) { division::Save(m_host, m_header, mode); }
    void Load()
    {
        TGoodDetailDivision_Rec record;
        m_data.GoodDetailDivision_Fill(m_header.Code, record);
        m_header.Revision = m_service.GoodDetailDivision_Header(m_header.Code)->Revision;
    }
    void Delete() { division::Delete(m_host, m_header.Code); }
    int Made() const
    {
        return host::Scalar(
                   m_host.DM.ADOConnection1,
                   u"SELECT COUNT(*) FROM GoodDetailKardex WHERE OperationType = 25 AND OperationCode = %1"_s.arg(
                       m_header.Code))
            .toInt();
    }

private:
    int Value() const
    {
        return host::Scalar(m_host.DM.ADOConnection1,
                            u"SELECT MIN(v.ID) FROM GoodDetailValues AS v INNER JOIN GoodDetailValueDetails AS d ON "
                            "d.DetailValueID = v.ID WHERE v.GoodCode = %1 AND d.[Value] = N'%2'"_s.arg(Good)
                                .arg(Serial))
            .toInt();
    }

    host::Host &m_host;
    host::DetailDivisionService &m_service;
    TSerial_DM m_data;
    host::TDivisionHeader m_header;
};

} // namespace

void MeasureDivision(Report &report, Shop &shop)
{
    Division division(shop);
    const auto once = [&](const QString &what, std::optional<double> limit, const std::function<void()> &operation) {
        const quint64 before = host::StatementsSent();
        Line line{what, 0, {}, limit, 0};
        line.milliseconds = Timed(operation);
        line.statements = static_cast<double>(host::StatementsSent() - before);
        report.Add(line);
    };
    // The same statements, whatever the parts.
    for (const int parts : {10, Parts}) {
        const QString many = u"unit divided in %1 parts with serials"_s.arg(2 * parts);
        const std::optional<double> limit = parts == Parts ? std::optional<double>(1000) : std::nullopt;
        division.Type(parts);
        once(many + u", saved"_s, limit, [&] { division.Save(host::TFormMode::New); });
        if (division.Made() != 2 * parts)
            throw std::runtime_error("division: parts are missing");
        division.Load();
        once(many + u", saved again"_s, limit, [&] { division.Save(host::TFormMode::Edit); });
        once(many + u", deleted"_s, limit, [&] { division.Delete(); });
        if (division.Made() != 0)
            throw std::runtime_error("division: parts are left");
    }
}

} // namespace bench
