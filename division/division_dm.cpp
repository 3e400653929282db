#include "division/division_dm.h"

#include "division/division_save.h"
#include "gooddetail/serial_dm.h"
#include "host/data/query.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto Part = host::TSoftwarePart::GoodDetailDivision;
constexpr auto Exit = host::TOperationType::DivisionExit;
constexpr int AcceptedParts = 0;

} // namespace

TDivision_DM::TDivision_DM(host::Host &host)
    : Division_QRY(host.DM.ADOConnection1), Rows_QRY(host.DM.ADOConnection1), Items_QRY(host.DM.ADOConnection1),
      m_host(host)
{
    Division_QRY.ReadInBlocks();
}

void TDivision_DM::OpenList(const host::TDayRange &days)
{
    m_host.detailDivisions.GoodDetailDivision_GetALL(Division_QRY, days);
}

bool TDivision_DM::MayDelete(int code, int row) const
{
    return m_host.detailDivisions.CheckGoodDetailDivisionDelete(code, row, 0);
}

int TDivision_DM::NewCode()
{
    host::Transaction transaction(m_host.DM.ADOConnection1);
    m_host.entities.ReleaseCodes(Part); // and those of desks that are gone
    int code = division::NewCode(m_host);
    while (!m_host.entities.ReserveCode(Part, code))
        ++code;
    transaction.Commit();
    return code;
}

QString TDivision_DM::UsedBy(int code, int row) const
{
    return division::UsedText(m_host, code, row, 0).section(u'\n', 1);
}

void TDivision_DM::Begin()
{
    m_host.detailDivisions.CreateGoodDetailDivisionDetailTempTable();
    m_host.detailDivisions.CreateGoodDetailDivisionDetailItemsTempTable();
}

std::optional<host::TDivisionHeader> TDivision_DM::Load(int code)
{
    // Header and rows are of one moment: by the header the save finds out whether another desk was faster.
    host::Transaction transaction(m_host.DM.ADOConnection1);
    auto header = m_host.detailDivisions.GoodDetailDivision_Header(code);
    TGoodDetailDivision_Rec filled;
    if (!header || !TSerial_DM(m_host).GoodDetailDivision_Fill(code, filled))
        return std::nullopt;
    m_host.entities.ReserveCode(Part, code); // where another desk has it, the later one of two saves is told
    transaction.Commit();
    return header;
}

void TDivision_DM::Leave(int code)
{
    Rows_QRY.Close();
    Items_QRY.Close();
    m_host.detailDivisions.DropGoodDetailDivisionDetailTempTable();
    m_host.detailDivisions.DropGoodDetailDivisionDetailItemsTempTable();
    if (code == 0)
        return;
    m_host.detailMovements.ExitGoodDetails_DeleteAll(static_cast<quint8>(Exit), code);
    m_host.entities.ReleaseCodes(Part);
}

QString TDivision_DM::RowText(int code)
{
    return u"SELECT ID FROM GoodDetailDivision WHERE Code = %1"_s.arg(code);
}

void TDivision_DM::OpenRows()
{
    m_host.detailDivisions.GoodDetailDivisionDetail_Get(Rows_QRY);
}

void TDivision_DM::OpenItems(int divisionRow)
{
    m_host.detailDivisions.GoodDetailDivisionDetailItems_Get(Items_QRY, divisionRow, AcceptedParts);
}

void TDivision_DM::DeleteRow(int code, int row)
{
    host::Transaction transaction(m_host.DM.ADOConnection1);
    m_host.detailDivisions.Delete_GoodDetailKardexTemp(Exit, code, row);
    m_host.detailDivisions.GoodDetailDivisionDetailTempDelete(code, row);
    m_host.detailDivisions.GoodDetailDivisionDetailItemsTempDelete(code, row);
    transaction.Commit();
}

QList<TPrintedPart> TDivision_DM::Parts() const
{
    QList<TPrintedPart> parts;
    for (host::Query rows(m_host.DM.ADOConnection1,
                          u"SELECT DivisionRow, OperationRow, Amount1, Amount2, [Length], Width, Amount3, Waste FROM "
                          "#GoodDetailDivisionDetailItemsTemp WHERE Tmp = 0 ORDER BY DivisionRow, OperationRow"_s);
         !rows.Eof(); rows.Next()) {
        TPrintedPart part{rows.Int(u"DivisionRow"), rows.Int(u"OperationRow"), {}, rows.Bool(u"Waste")};
        part.Amounts = {rows.Number(u"Amount1"), rows.Number(u"Amount2"), rows.Number(u"Amount1"),
                        rows.Number(u"Length"),  rows.Number(u"Width"),   rows.Number(u"Amount3")};
        parts << part;
    }
    return parts;
}
