#include "gooddetail/serial_dm.h"

using namespace Qt::StringLiterals;

// What a screen of details says about the line it was opened on.

TLineGood_Rec TSerial_DM::GetLineGood(int goodCode)
{
    TLineGood_Rec good;
    tmp_QRY.Open(u"SELECT g.Name, ISNULL(g.Unit, 0) AS Unit, ISNULL(g.Unit2, 0) AS Unit2, ISNULL(g.Meghdar_Formool, 0) "
                 "AS Formool, u.Name AS UnitName, v.Name AS Unit2Name FROM GoodInf AS g LEFT JOIN Units AS u ON u.Code "
                 "= g.Unit LEFT JOIN Units AS v ON v.Code = g.Unit2 WHERE g.Code = "_s +
                 QString::number(goodCode));
    good.Found = !tmp_QRY.IsEmpty();
    if (good.Found) {
        good.Name = tmp_QRY.Text(u"Name");
        good.Unit = tmp_QRY.Int(u"Unit");
        good.Unit2 = tmp_QRY.Int(u"Unit2");
        good.Formool = tmp_QRY.Number(u"Formool");
        good.UnitName = tmp_QRY.Text(u"UnitName");
        good.Unit2Name = tmp_QRY.Text(u"Unit2Name");
    }
    tmp_QRY.Close();
    return good;
}

std::optional<QString> TSerial_DM::GetStoreName(int storeCode)
{
    std::optional<QString> name;
    tmp_QRY.Open(u"SELECT Name FROM Stores WHERE Code = "_s + QString::number(storeCode));
    if (!tmp_QRY.IsEmpty())
        name = tmp_QRY.Text(u"Name");
    tmp_QRY.Close();
    return name;
}
