#include "data/goods/good_scales.h"

#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace goods {

Scales::Scales(const QSqlDatabase &main, const QSqlDatabase &scale)
    : m_scale(scale), Temp_QRY(main), TMP_OnLine_QRY(scale)
{}

bool Scales::CheckGoodInScale(int code)
{
    TMP_OnLine_QRY.Open(u" SELECT * FROM Items i WHERE i.ScaleType = 1 AND i.Code = "_s + QString::number(code));
    return !TMP_OnLine_QRY.IsEmpty();
}

void Scales::DeleteGoodInScale(int code)
{
    host::Exec(m_scale, u" UPDATE Items SET ChangeType = 3 WHERE Code = "_s + QString::number(code));
}

void Scales::Change_Price_Scale(int code, int costLevel)
{
    if (costLevel < 1 || costLevel > 10) {
        throw host::RefusedText(u"سطح قیمتی ۱ تا ۱۰"_s, QString::number(costLevel));
    }
    const QString good = QString::number(code);
    Temp_QRY.Open(
        u"SELECT Name, SUBSTRING(AbbName, 2, ABS(CHARINDEX('!', AbbName, 2) - 2)) AS BarCode, CAST ((SELECT [Type] "
        "FROM [Units] WHERE units.Code = GoodInf.Unit)  AS INT) AS [Type]  FROM GoodInf WHERE Code ="_s +
        good);
    if (Temp_QRY.IsEmpty()) {
        return;
    }
    const QString name = Temp_QRY.Text(u"Name");
    const QString barcode = Temp_QRY.Text(u"BarCode");
    const int type = Temp_QRY.Int(u"Type");
    Temp_QRY.Open(u"select CostLevel_Sell_"_s + QString::number(costLevel) +
                  u" from GoodCostDiscount where GoodCode = "_s + good);
    if (Temp_QRY.IsEmpty()) {
        return; // no price row: the scale keeps the price it has
    }
    const QString price = host::DecimalLiteral(Temp_QRY.Number(0));
    TMP_OnLine_QRY.Open(u"SELECT * FROM Items WHERE Code = "_s + good);
    if (!TMP_OnLine_QRY.IsEmpty()) {
        host::Exec(m_scale, u" UPDATE Items SET Name1 = "_s + host::QuotedStr(name) + u", Price = "_s + price +
                                u", BarCode = "_s + host::QuotedStr(barcode) + u", Type = "_s + QString::number(type) +
                                u", ChangeType = 2 "
                                " WHERE Code = "_s +
                                good);
    }
}

} // namespace goods
