#include "detailtypes/detail_types_dm.h"
#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

// The categories: named groups of detail types, one of which may be the default of new goods.

void TDetailTypes_DM::DetailTypes_SelectedList_GetAll()
{
    DetailTypes_SelectedList_QRY.SetText(u"Select *,  CASE  DefaultSelectedList WHEN 0 THEN '' WHEN 1 THEN 'پيش فرض' "
                                         "END AS Defaulted  from DetailTypes_SelectedLists"_s);
}

void TDetailTypes_DM::DetailTypes_SelectedList_GetByID(int code)
{
    Get_QRY.Open(QString::asprintf("SELECT * FROM DetailTypes_SelectedLists Where Code = %d ", code));
}

bool TDetailTypes_DM::DetailTypes_SelectedList_GetByID(int code, TDetailTypes_SelectedList_Rec &record)
{
    DetailTypes_SelectedList_GetByID(code);
    if (Get_QRY.IsEmpty())
        return false;
    record = {Get_QRY.IntField(u"ID"), code, Get_QRY.TextField(u"Title"), Get_QRY.TextField(u"Comment")};
    return true;
}

bool TDetailTypes_DM::DetailTypes_SelectedList_IsNewRecordMode(int code)
{
    return !MoreThan(0, QString::asprintf("SELECT * FROM DetailTypes_SelectedLists Where Code = %d ", code));
}

QString TDetailTypes_DM::DetailTypes_SelectedList_RecoveryText(int code)
{
    return u"SELECT Code FROM DetailTypes_SelectedLists WHERE Code = "_s + QString::number(code);
}

void TDetailTypes_DM::DetailTypes_SelectedList_GetNewCode(const QString &status, int &code)
{
    Temp_QRY.Open(u"Select IsNull(Max(Code),0)+1 as MaxCode from (Select Max(Code) as Code from "
                  "DetailTypes_SelectedLists  UNION ALL Select MAX(CAST(Code AS BIGINT)) as Code FROM CodeLock_TBL "
                  "WHERE Status = "_s +
                  host::CodeText(status) + u") T1"_s);
    code = Temp_QRY.Int(u"MaxCode");
}

int TDetailTypes_DM::DetailTypes_SelectedList_ExistName(const QString &title)
{
    Temp_QRY.Open(u"select Title from DetailTypes_SelectedLists where Title = "_s + host::QuotedStr(title));
    return Temp_QRY.RecordCount();
}

bool TDetailTypes_DM::DetailTypes_SelectedList_Insert(const TDetailTypes_SelectedList_Rec &record)
{
    DetailTypes_SelectedList_GetByID(record.Code);
    Get_QRY.Append();
    const auto drop = qScopeGuard([this] { Get_QRY.Cancel(); });
    Get_QRY.SetField(u"Code", record.Code);
    Get_QRY.SetField(u"Title", record.Title);
    Get_QRY.SetField(u"Comment", record.Comment);
    Get_QRY.SetField(u"DefaultSelectedList", false);
    Get_QRY.Post();
    return true;
}

bool TDetailTypes_DM::DetailTypes_SelectedList_Update(const TDetailTypes_SelectedList_Rec &record)
{
    DetailTypes_SelectedList_GetByID(record.Code);
    if (Get_QRY.IsEmpty())
        throw host::RowGone(u"دسته بندی"_s);
    Get_QRY.Edit();
    const auto drop = qScopeGuard([this] { Get_QRY.Cancel(); });
    Get_QRY.SetField(u"Code", record.Code);
    Get_QRY.SetField(u"Title", record.Title);
    Get_QRY.SetField(u"Comment", record.Comment);
    Get_QRY.Post();
    return true;
}

void TDetailTypes_DM::DetailTypes_SelectedList_Delete(int code)
{
    host::Exec(m_main, u"Delete from DetailTypes_SelectedLists where Code="_s + QString::number(code));
}

void TDetailTypes_DM::DetailTypes_SelectedList_Default(int code, bool isDefault)
{
    host::Exec(m_main, u"UPDATE DetailTypes_SelectedLists SET DefaultSelectedList = "_s +
                           (isDefault ? u"0"_s : u"-1"_s) + u" WHERE Code = "_s + QString::number(code));
}

void TDetailTypes_DM::DetailTypes_AllSelectedList_NoDefault()
{
    host::Exec(m_main, u"Update DetailTypes_SelectedLists set DefaultSelectedList = 0 "_s);
}

void TDetailTypes_DM::DetailTypes_SelectedList_SwitchDefault(int code, bool isDefault)
{
    host::Transaction transaction(m_main);
    if (!isDefault)
        DetailTypes_AllSelectedList_NoDefault();
    DetailTypes_SelectedList_Default(code, isDefault);
    transaction.Commit();
}
