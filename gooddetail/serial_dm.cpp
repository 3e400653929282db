#include "gooddetail/serial_dm.h"

#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

TSerial_DM::TSerial_DM(host::Host &host)
    : Exist_QRY(host.DM.ADOConnection1), Exist_Detail_QRY(host.DM.ADOConnection1),
      EnterGoodDetail_QRY(host.DM.ADOConnection1), ExitGoodDetail_QRY(host.DM.ADOConnection1),
      GoodDetailDivision_QRY(host.DM.ADOConnection1), Main_QUR(host.DM.ADOConnection1),
      Temp_QUR(host.DM.ADOConnection1), FactPrint_QRY(host.DM.ADOConnection1), m_main(host.DM.ADOConnection1),
      m_host(host), tmp_QRY(m_main)
{
    ExitGoodDetail_QRY.ReadInBlocks();
    Exist_QRY.ReadInBlocks();
}

// Selecting, divisions and the serials of documents.

void TSerial_DM::GoodDetail_SelectGood_Get(const QString &column, const QString &filter, quint8 mode, bool forDivision)
{
    const QString goods =
        forDivision ? u" WHERE EXISTS (SELECT 1 FROM GoodDetailValues AS v WHERE v.GoodCode = G.Code) "_s
                    : u" WHERE g.Code NOT IN ( "
                      "      SELECT gi.Code FROM GoodInf gi JOIN GoodDetailRelation dr ON gi.Code = dr.GoodCode "
                      "                  JOIN DetailTypes dt ON dr.DetailID = dt.ID WHERE dt.DetailType = 3) "_s;
    QString text =
        u" SELECT Code, Name,   (SELECT Name FROM units WHERE Code = (SELECT Unit FROM goodinf WHERE Code = G.Code)) AS "
        "Unit1,   (SELECT Name FROM units WHERE Code = (SELECT Unit2 FROM goodinf WHERE Code = G.Code)) AS Unit2 "_s +
        column +
        u" AS Radif "
        " FROM GoodInf AS G "_s +
        goods;
    if (mode == 1)
        text += u" AND G.Meghdar_Formool = 0 "_s;
    else if (mode == 2)
        text += u" AND G.Unit = "_s + QString::number(m_host.settings.SettingRecord().SquareMetreUnit);
    if (!filter.isEmpty() && mode <= 2)
        text += (mode == 0 ? QString() : u" AND "_s) + filter;
    Exist_QRY.Open(text + u" ORDER BY Radif "_s);
}

void TSerial_DM::GoodDetail_Select(int goodCode, int comIndex, int unitType)
{
    Exist_Detail_QRY.Open(
        u"EXEC GoodDetail_Select\n\t@GoodCode = %1,\n\t@ComIndex = %2,\n\t@UnitType = %3"_s.arg(goodCode)
            .arg(comIndex)
            .arg(unitType));
}

int TSerial_DM::GetGoodDetailDivisionCode()
{
    tmp_QRY.Open(u" SELECT ISNULL(MAX(gd.Code), 0) + 1 AS DivisionCode FROM GoodDetailDivision gd "_s);
    const int code = tmp_QRY.IsEmpty() ? 0 : tmp_QRY.Int(u"DivisionCode");
    tmp_QRY.Close();
    return code;
}

QString TSerial_DM::GetGoodDetailDivisionComment(int divisionCode)
{
    tmp_QRY.Open(u"SELECT gdd.Comment FROM GoodDetailDivisionDetail gdd WHERE gdd.DivisionCode = "_s +
                 QString::number(divisionCode));
    QString comment = tmp_QRY.IsEmpty() ? QString() : tmp_QRY.Text(u"Comment");
    tmp_QRY.Close();
    return comment;
}

bool TSerial_DM::GoodDetailDivision_Fill(int divisionCode, TGoodDetailDivision_Rec &header)
{
    constexpr auto Exit = static_cast<quint8>(host::TOperationType::DivisionExit);
    tmp_QRY.Open(u"SELECT * FROM GoodDetailDivision gdd WHERE gdd.Code = "_s + QString::number(divisionCode));
    const bool found = !tmp_QRY.IsEmpty();
    if (found)
        header = {tmp_QRY.Int(u"Code"), tmp_QRY.Text(u"Date"), tmp_QRY.Text(u"Comment")};
    tmp_QRY.Close();
    if (!found)
        return false;
    host::Transaction transaction(m_main);
    host::DetailDivisionService &divisions = m_host.detailDivisions;
    divisions.CreateGoodDetailDivisionDetailTempTable();
    divisions.CreateGoodDetailDivisionDetailItemsTempTable();
    divisions.GoodDetailDivisionDetailTempInsert_Rows(divisionCode);
    divisions.GoodDetailDivisionDetailItemsTempInsert_Rows(divisionCode);
    m_host.detailMovements.ExitGoodDetails_Edit(Exit, divisionCode);
    transaction.Commit();
    return true;
}

void TSerial_DM::GoodDetailDivision_GetAll()
{
    GoodDetailDivision_QRY.Open(u"exec GoodDetail_Select_GoodDetailDivision"_s);
}

void TSerial_DM::Serials_Open(quint8 type)
{
    Main_QUR.Open(u"select * from serials where tmp<>1 and type=%1"_s.arg(type));
    Temp_QUR.Open(u"select * from serials where tmp=1 and type=%1 order by sharh"_s.arg(type));
}

void TSerial_DM::FactPrint_Open(int documentCode)
{
    FactPrint_QRY.Open(
        u"Select 'رديف('+Cast(Radif As Varchar)+')' As Radif,Sharh From Serials Where Type=2 And Code="_s +
        QString::number(documentCode));
}

int SerialRowNumber(const host::Dataset &rows)
{
    return rows.CurrentRow() < 0 ? 1 : qMin(rows.CurrentRow() + 1, rows.RecordCount());
}
