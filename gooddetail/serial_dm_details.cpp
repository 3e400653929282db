#include "gooddetail/serial_dm.h"
#include "host/data/sql_text.h"
#include "host/services/serial_batch_service.h"

#include <array>

using namespace Qt::StringLiterals;

// The details of a good, and serials on record.

namespace {

enum Kind { List = 1, Text = 2, Date = 5, Toggle = 7 };

/// The mode in which a list begins with the entry that asks to choose.
constexpr int ToChoose = 2;

} // namespace

void TSerial_DM::GetFeatureDetailsByGoodCode(const QString &goodCode, QString &features)
{
    tmp_QRY.Open(u"SELECT Code, FeaturesDetail FROM GoodInf WHERE code = "_s + host::CodeText(goodCode));
    features = tmp_QRY.IsEmpty() ? QString() : tmp_QRY.Value(1).toString();
}

void TSerial_DM::GetGoodsDetail(int goodCode, int &d1, int &d2, int &d3, int &d4, int &d5)
{
    const std::array<int *, host::MostDetails> details{&d1, &d2, &d3, &d4, &d5};
    for (int *detail : details)
        *detail = 0;
    const QString good = QString::number(goodCode);
    // The order behind it is the one in which the parts stand; by itself a union promises none.
    tmp_QRY.Open(
        u" SELECT G.ID, G.GoodCode, G.DetailID FROM (    SELECT gdr.ID, gdr.GoodCode, gdr.DetailID FROM "
        "GoodDetailRelation gdr INNER JOIN DetailTypes dt      ON gdr.DetailID = dt.ID WHERE gdr.GoodCode = "_s +
        good +
        u" AND dt.DetailType = 3 "
        "   UNION ALL "
        "   SELECT gdr.ID, gdr.GoodCode, gdr.DetailID FROM GoodDetailRelation gdr INNER JOIN DetailTypes dt "
        "     ON gdr.DetailID = dt.ID WHERE gdr.GoodCode = "_s +
        good +
        u" AND dt.DetailType = 6 "
        "   UNION ALL "
        "   SELECT gdr.ID, gdr.GoodCode, gdr.DetailID FROM GoodDetailRelation gdr INNER JOIN DetailTypes dt "
        "     ON gdr.DetailID = dt.ID WHERE gdr.GoodCode = "_s +
        good +
        u" AND dt.DetailType NOT IN (3, 6)"
        " )G ORDER BY CASE (SELECT o.DetailType FROM DetailTypes o WHERE o.ID = G.DetailID) WHEN 3 THEN 0 WHEN 6 THEN 1 "
        "ELSE 2 END, G.ID"_s);
    for (size_t i = 0; i < details.size() && !tmp_QRY.Eof(); ++i, tmp_QRY.Next())
        *details[i] = tmp_QRY.Int(u"DetailID");
    tmp_QRY.Close();
}

TGoodDetailData TSerial_DM::GetGoodDetailData(int detailId, int mode)
{
    TGoodDetailData data;
    tmp_QRY.Open(u" SELECT * FROM DetailTypes dt WHERE dt.ID = "_s + QString::number(detailId));
    if (!tmp_QRY.IsEmpty()) {
        data.Found = true;
        data.Title = tmp_QRY.Text(u"Title");
        data.IsRequired = tmp_QRY.Bool(u"IsRequired");
        data.Kind = tmp_QRY.Int(u"DetailType");
        const bool offers = data.Kind == List || data.Kind == Text;
        if (offers || data.Kind == Toggle)
            data.DefaultValue = tmp_QRY.Text(u"DefaultValue");
        if (data.Kind == Date)
            data.DateType = tmp_QRY.Int(u"DateType");
        if (data.Kind == Toggle) {
            data.ToggleTitleTrue = tmp_QRY.Text(u"ToggleTitleTrue");
            data.ToggleTitleFalse = tmp_QRY.Text(u"ToggleTitleFalse");
        }
        if (offers) {
            tmp_QRY.Open(u"SELECT * FROM DetailTypesItems dti WHERE dti.DetailID = "_s + QString::number(detailId));
            if (data.Kind == List && !tmp_QRY.IsEmpty()) {
                if (mode == ToChoose)
                    data.Items << u"انتخاب کنید..."_s;
                if (!data.IsRequired)
                    data.Items << u"خالی..."_s;
            }
            for (; !tmp_QRY.Eof(); tmp_QRY.Next())
                data.Items << tmp_QRY.Text(u"Value");
        }
    }
    tmp_QRY.Close();
    return data;
}

int TSerial_DM::GetGoodDetailTitleLength(int detailId)
{
    tmp_QRY.Open(u"SELECT LEN(dt.Title) AS TitleLength FROM DetailTypes dt WHERE dt.ID = "_s +
                 QString::number(detailId));
    const int length = tmp_QRY.IsEmpty() ? 0 : tmp_QRY.Int(u"TitleLength");
    tmp_QRY.Close();
    return length;
}

int TSerial_DM::GetGoodDetailType(int detailId)
{
    tmp_QRY.Open(u" SELECT * FROM DetailTypes dt WHERE dt.ID = "_s + QString::number(detailId));
    const int kind = tmp_QRY.IsEmpty() ? 0 : tmp_QRY.Int(u"DetailType");
    tmp_QRY.Close();
    return kind;
}

bool TSerial_DM::CheckGoodUnit_MetreMoraba(int goodCode)
{
    return host::Exists(m_main, u" SELECT * FROM GoodInf gi WHERE gi.Code = "_s + QString::number(goodCode) +
                                    u" AND gi.Unit = "_s +
                                    QString::number(m_host.settings.SettingRecord().SquareMetreUnit));
}

bool TSerial_DM::FindSerial(const QString &serial, int &detailValueId)
{
    tmp_QRY.Open(u" SELECT dvd.DetailValueID, dv.GoodCode  FROM GoodDetailValues dv INNER JOIN GoodDetailValueDetails "
                 "dvd ON dv.ID = dvd.DetailValueID       INNER JOIN DetailTypes dt ON dvd.DetailID = dt.ID  WHERE "
                 "dt.DetailType = 3 AND dvd.[Value] = "_s +
                 host::NQuotedStr(host::SerialText(serial)));
    const bool found = !tmp_QRY.IsEmpty();
    detailValueId = found ? tmp_QRY.Int(u"DetailValueID") : 0;
    tmp_QRY.Close();
    return found;
}

bool TSerial_DM::CheckSerialDetailValueID_1(const QString &serial)
{
    int id = 0;
    if (!FindSerial(serial, id))
        return false;
    const QString value = QString::number(id);
    tmp_QRY.Open(u" SELECT SUM(Amount1) AS Amount1 FROM (  SELECT ISNULL(SUM(dk.Amount1), 0) AS Amount1 FROM "
                 "GoodDetailKardex dk WHERE dk.DetailValueID = "_s +
                 value +
                 u" UNION ALL "
                 " SELECT ISNULL(SUM(Amount1), 0) AS Amount1 FROM GoodDetailKardexEnter_Temp WHERE DetailValueID = "_s +
                 value + u" )T1 "_s);
    const bool taken = tmp_QRY.Number(u"Amount1") > 0;
    tmp_QRY.Close();
    return taken;
}

bool TSerial_DM::CheckSerialDetailValueID_2(const QString &serial, int &detailValueId)
{
    if (!FindSerial(serial, detailValueId))
        return false;
    tmp_QRY.Open(u" SELECT ISNULL(SUM(dk.Amount1), 0) AS Amount1 FROM GoodDetailKardex dk WHERE dk.DetailValueID = "_s +
                 QString::number(detailValueId));
    const bool taken = tmp_QRY.Number(u"Amount1") > 0;
    tmp_QRY.Close();
    return taken;
}

bool TSerial_DM::CheckSerialRangeDetailValueID(const QString &from, const QString &to, QString &list)
{
    const host::TSerialRange range{host::SerialText(from).toLongLong(), host::SerialText(to).toLongLong()};
    list.clear();
    if (range.IsEmpty())
        return false;
    const QString number = u"TRY_CAST(dvd.[Value] AS bigint)"_s;
    const QString known =
        u" FROM GoodDetailValueDetails dvd INNER JOIN GoodDetailValues dv ON dv.ID = dvd.DetailValueID "
        "INNER JOIN DetailTypes dt ON dvd.DetailID = dt.ID "_s;
    // The few numbers of a range look for their serials; a range beyond that is compared with every serial.
    const QString values =
        range.IsTooLong()
            ? u"SELECT %1 AS N, MIN(dvd.DetailValueID) AS ValueID%2WHERE dt.DetailType = 3 AND %1 BETWEEN %3 AND %4 AND "
              "dvd.[Value] = CAST(%1 AS nvarchar(20)) GROUP BY %1"_s.arg(number, known, QString::number(range.From),
                                                                         QString::number(range.To))
            : u"SELECT n.N, MIN(dvd.DetailValueID) AS ValueID%1INNER JOIN (%2) n ON dvd.[Value] = CAST(n.N AS "
              "nvarchar(20)) WHERE dt.DetailType = 3 GROUP BY n.N"_s.arg(known, host::CountedText(range));
    QStringList taken;
    // What the single check asks, of all serials that are the plain text of a number in the range.
    tmp_QRY.Open(
        u"SELECT s.N FROM (%1) s WHERE (SELECT ISNULL(SUM(dk.Amount1), 0) FROM GoodDetailKardex dk WHERE dk.DetailValueID = s.ValueID) + "
        "(SELECT ISNULL(SUM(et.Amount1), 0) FROM GoodDetailKardexEnter_Temp et WHERE et.DetailValueID = s.ValueID) > 0 "
        "ORDER BY s.N"_s.arg(values));
    for (; !tmp_QRY.Eof(); tmp_QRY.Next())
        taken << tmp_QRY.Value(0).toString();
    tmp_QRY.Close();
    list = taken.join(u',');
    return !taken.isEmpty();
}
