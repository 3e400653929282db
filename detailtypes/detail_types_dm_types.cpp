#include "detailtypes/detail_types_dm.h"
#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

// The types themselves.

namespace {

qsizetype TrailingBlanks(QStringView text)
{
    qsizetype blanks = 0;
    while (blanks < text.size() && text[text.size() - 1 - blanks] == u' ')
        ++blanks;
    return blanks;
}

} // namespace

void TDetailTypes_DM::DetailTypes_GetAll()
{
    using host::QuotedStr;
    DetailTypes_QRY.Open(
        u" SELECT dt.ID, dt.Title, dt.DetailType, CASE dt.DetailType WHEN 1 THEN N"_s + QuotedStr(u"انتخاب از لیست") +
        u" WHEN 2 THEN N"_s + QuotedStr(u"متنی") + u" WHEN 3 THEN N"_s + QuotedStr(u"سریال") + u" WHEN 4 THEN N"_s +
        QuotedStr(u"عددی") + u" WHEN 5 THEN N"_s + QuotedStr(u"تاریخی") + u" WHEN 6 THEN N"_s + QuotedStr(u"بارکدی") +
        u" WHEN 7 THEN N"_s + QuotedStr(u"دو وضعیتی") +
        u" END AS DetailTypeName, "
        " dt.IsRequired, dt.ToggleTitleTrue, dt.ToggleTitleFalse, dt.DefaultValue, dt.DateType, dt.DateAlarm,"
        " dt.Comment "
        " FROM DetailTypes dt "_s);
}

bool TDetailTypes_DM::DetailTypes_GetByID(int id, TDetailType_Rec &record)
{
    Temp_QRY.Open(QString::asprintf("SELECT * FROM DetailTypes WHERE ID = %d ", id));
    if (Temp_QRY.IsEmpty())
        return false;
    TDetailType_Rec read;
    read.ID = id;
    read.Title = Temp_QRY.Text(u"Title");
    read.DetailType = static_cast<TDetailKind>(Temp_QRY.Int(u"DetailType"));
    read.IsRequired = Temp_QRY.Bool(u"IsRequired");
    read.ToggleTitleTrue = Temp_QRY.Text(u"ToggleTitleTrue");
    read.ToggleTitleFalse = Temp_QRY.Text(u"ToggleTitleFalse");
    read.DefaultValue = Temp_QRY.Text(u"DefaultValue");
    read.DateType = static_cast<TDetailCalendar>(Temp_QRY.Int(u"DateType"));
    read.DateAlarm = Temp_QRY.Bool(u"DateAlarm");
    read.Comment = Temp_QRY.Text(u"Comment");
    read.CreatedTime = Temp_QRY.Text(u"CreatedTime");
    read.CreatedDate = Temp_QRY.Text(u"CreatedDate");
    read.ModifiedTime = Temp_QRY.Text(u"ModifiedTime");
    read.ModifiedDate = Temp_QRY.Text(u"ModifiedDate");
    read.UserCreated = Temp_QRY.Text(u"UserCreated");
    read.UserModified = Temp_QRY.Text(u"UserModified");
    record = read;
    return true;
}

void TDetailTypes_DM::WriteType(host::Dataset &row, const TDetailType_Rec &record, Writing writing)
{
    row.SetField(u"Title", record.Title);
    row.SetField(u"DetailType", static_cast<int>(record.DetailType));
    row.SetField(u"IsRequired", record.IsRequired);
    row.SetField(u"ToggleTitleTrue", record.ToggleTitleTrue);
    row.SetField(u"ToggleTitleFalse", record.ToggleTitleFalse);
    row.SetField(u"DefaultValue", record.DefaultValue);
    row.SetField(u"DateType", static_cast<int>(record.DateType));
    row.SetField(u"DateAlarm", record.DateAlarm);
    row.SetField(u"Comment", record.Comment);
    const bool created = writing == Writing::Insert;
    row.SetField(created ? u"CreatedTime" : u"ModifiedTime", created ? record.CreatedTime : record.ModifiedTime);
    row.SetField(created ? u"CreatedDate" : u"ModifiedDate", created ? record.CreatedDate : record.ModifiedDate);
    row.SetField(created ? u"UserCreated" : u"UserModified", created ? record.UserCreated : record.UserModified);
}

QString TDetailTypes_DM::DetailTypes_RecoveryText(int id)
{
    return u"SELECT ID FROM DetailTypes WHERE ID = "_s + QString::number(id);
}

bool TDetailTypes_DM::DetailTypes_Insert(const TDetailType_Rec &record, int &newId)
{
    host::Dataset types(m_main);
    types.SetTable(u"DetailTypes"_s, u"ID"_s);
    types.Open(u"SELECT * FROM DetailTypes"_s);
    types.Append();
    WriteType(types, record, Writing::Insert);
    types.Post();
    newId = types.IntField(u"ID");
    return true;
}

bool TDetailTypes_DM::DetailTypes_Update(const TDetailType_Rec &record)
{
    host::Dataset types(m_main);
    types.SetTable(u"DetailTypes"_s, u"ID"_s);
    types.Open(u"SELECT * FROM DetailTypes WHERE ID = "_s + QString::number(record.ID));
    if (types.IsEmpty())
        throw host::RowGone(u"نوع جزئیات"_s);
    types.Edit();
    WriteType(types, record, Writing::Update);
    types.Post();
    return true;
}

bool TDetailTypes_DM::DetailTypes_InsertWithItems(const TDetailType_Rec &record, const QStringList &items, int &newId)
{
    host::Transaction transaction(m_main);
    DetailTypes_Insert(record, newId);
    InsertItems(newId, items);
    transaction.Commit();
    return true;
}

bool TDetailTypes_DM::DetailTypes_UpdateWithItems(const TDetailType_Rec &record, const QStringList &items)
{
    host::Transaction transaction(m_main);
    DetailTypes_Update(record);
    DetailTypesItems_Delete(record.ID);
    InsertItems(record.ID, items);
    transaction.Commit();
    return true;
}

bool TDetailTypes_DM::DetailTypes_Delete(int id)
{
    const QString key = QString::number(id);
    host::Transaction transaction(m_main);
    host::Exec(m_main, u"DELETE FROM DetailTypesItems WHERE DetailID = "_s + key);
    host::Exec(m_main, u"DELETE FROM DetailTypes WHERE ID = "_s + key);
    transaction.Commit();
    return true;
}

int TDetailTypes_DM::DetailTypesTitle_Exist(const QString &title)
{
    Temp_QRY.Open(u"SELECT * FROM DetailTypes dt WHERE dt.Title = "_s + host::QuotedStr(title));
    // The database compares without the blanks at the end; they tell titles apart.
    int count = 0;
    for (; !Temp_QRY.Eof(); Temp_QRY.Next())
        count += TrailingBlanks(Temp_QRY.Text(u"Title")) == TrailingBlanks(title) ? 1 : 0;
    Temp_QRY.Close();
    return count;
}

bool TDetailTypes_DM::UseGoodDetailType(int id)
{
    return MoreThan(0, u" SELECT * FROM (SELECT dts.Code AS DetailID FROM DetailTypes_SelectedList_Detail dts "
                       " UNION ALL "
                       " SELECT gdr.DetailID AS DetailID  FROM GoodDetailRelation gdr)T "
                       " WHERE T.DetailID = "_s +
                           QString::number(id));
}

bool TDetailTypes_DM::ExistsGoodDetailBeforeEditForDateAlarmDetail(const QVariant &id)
{
    return MoreThan(0, u" SELECT g.Code, g.Name   "
                       " FROM GoodInf g JOIN GoodDetailValues dv ON g.Code = dv.GoodCode"
                       " JOIN GoodDetailValueDetails dvd ON dv.ID = dvd.DetailValueID   "
                       " JOIN DetailTypes dt ON dvd.DetailID = dt.ID "
                       " WHERE dt.DetailType = 5 AND dt.DateAlarm = 1 "
                       " GROUP BY g.Code, g.Name "
                       " INTERSECT "
                       " SELECT g.Code, g.Name   "
                       " FROM GoodInf g JOIN GoodDetailValues dv ON g.Code = dv.GoodCode"
                       " JOIN GoodDetailValueDetails dvd ON dv.ID = dvd.DetailValueID    "
                       " JOIN DetailTypes dt ON dvd.DetailID = dt.ID "
                       " WHERE dt.DetailType = 5 AND dt.ID = "_s +
                           QString::number(id.toLongLong()) + u" GROUP BY g.Code, g.Name "_s);
}

bool TDetailTypes_DM::CheckDetailTypeCodes_SerialAndBarcode(const QString &codes, int limit)
{
    return MoreThan(limit, u"SELECT * FROM DetailTypes dt WHERE dt.ID IN ("_s + host::CodeList(codes) +
                               u") AND dt.DetailType IN (3,6)"_s);
}

bool TDetailTypes_DM::MeetsSerialOrBarcode(int id, bool inList)
{
    const QString owners = inList
                               ? u"SELECT TOP 1 m.Code FROM DetailTypes_SelectedLists s "
                                 "JOIN DetailTypes_SelectedList_Detail m ON m.SL_Code = s.Code "
                                 "JOIN DetailTypes_SelectedList_Detail o ON o.SL_Code = m.SL_Code AND o.Code <> m.Code "
                                 "JOIN DetailTypes dt ON dt.ID = o.Code WHERE m.Code = "_s
                               : u"SELECT TOP 1 m.DetailID FROM GoodDetailRelation m "
                                 "JOIN GoodDetailRelation o ON o.GoodCode = m.GoodCode AND o.DetailID <> m.DetailID "
                                 "JOIN DetailTypes dt ON dt.ID = o.DetailID WHERE m.DetailID = "_s;
    return MoreThan(0, owners + QString::number(id) + u" AND dt.DetailType IN (3,6)"_s);
}

bool TDetailTypes_DM::CheckDetailTypeCodes_DateTypeForDateAllarm(const QString &codes, int limit)
{
    return MoreThan(limit, u"SELECT * FROM DetailTypes dt WHERE dt.ID IN ("_s + host::CodeList(codes) +
                               u") AND dt.DetailType IN (5) AND dt.DateAlarm = 1"_s);
}
