#include "gooddetail/serial_dm.h"

using namespace Qt::StringLiterals;

// What the screen for choosing detail values lists.

namespace {

const QString DetailOrder = u" ORDER BY CASE dt.DetailType WHEN 3 THEN 0 WHEN 6 THEN 1 ELSE 2 END, gdr.ID"_s;

} // namespace

QList<TSelectedList_Rec> TSerial_DM::SelectedLists_Get()
{
    QList<TSelectedList_Rec> lists;
    for (tmp_QRY.Open(u"SELECT Code, Title, Enable FROM SelectedLists WHERE Type = 0"_s); !tmp_QRY.Eof();
         tmp_QRY.Next())
        if (tmp_QRY.Bool(u"Enable"))
            lists << TSelectedList_Rec{tmp_QRY.Int(u"Code"), tmp_QRY.Text(u"Title")};
    tmp_QRY.Close();
    return lists;
}

void TSerial_DM::GoodDetail_SelectGood_Open(int listCode, quint8 mode, bool forDivision)
{
    const QString list = QString::number(listCode);
    const QString column =
        listCode == 0 ? u" ,Code "_s
                      : u" ,(SELECT Radif FROM SelectedList_Detail WHERE SL_Code = "_s + list + u" AND Code=G.Code) "_s;
    // Code 0 stands for no good.
    QString filter = u"Code <> 0"_s;
    if (listCode != 0)
        filter = u"  Code IN (SELECT Code FROM SelectedList_Detail WHERE SL_Code = "_s + list + u") AND "_s + filter;
    // Only the other modes join the filter with AND themselves.
    GoodDetail_SelectGood_Get(column, mode == 0 ? u" AND "_s + filter : filter, mode, forDivision);
}

QStringList TSerial_DM::GetGoodDetailTitles(int goodCode)
{
    QStringList titles;
    tmp_QRY.Open(
        u"SELECT TOP %1 dt.Title FROM GoodDetailRelation gdr INNER JOIN DetailTypes dt ON gdr.DetailID = dt.ID "
        "WHERE gdr.GoodCode = %2"_s.arg(host::MostDetails)
            .arg(goodCode) +
        DetailOrder);
    for (; !tmp_QRY.Eof(); tmp_QRY.Next())
        titles << tmp_QRY.Text(u"Title");
    tmp_QRY.Close();
    return titles;
}
