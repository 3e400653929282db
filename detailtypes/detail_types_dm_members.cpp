#include "detailtypes/detail_types_dm.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <algorithm>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

// The members of a category.

void TDetailTypes_DM::DetailTypes_SelectedList_DetailGetAll(int code)
{
    DetailTypes_DetailList_QRY.Open(
        u" SELECT TOP 100 PERCENT dsl.Code, dt.Title AS Name, dsl.Radif "
        " FROM DetailTypes_SelectedList_Detail AS dsl JOIN DetailTypes AS dt ON dsl.Code=dt.ID "
        " WHERE dsl.SL_Code = "_s +
        QString::number(code) + u" ORDER BY Radif "_s);
}

bool TDetailTypes_DM::DetailTypes_SelectedList_GetCode(int code, QString &codes)
{
    Temp_QRY.Open(u"SELECT * FROM DetailTypes_SelectedList_Detail dsd WHERE dsd.SL_Code = "_s + QString::number(code));
    std::vector<std::pair<int, QString>> members;
    for (; !Temp_QRY.Eof(); Temp_QRY.Next())
        members.emplace_back(Temp_QRY.Int(u"Radif"), Temp_QRY.Text(u"Code"));
    Temp_QRY.Close();
    // The statement leaves the order to the database.
    std::stable_sort(members.begin(), members.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    QStringList inOrder;
    for (const auto &[place, member] : members)
        inOrder += member;
    codes = inOrder.isEmpty() ? u"0"_s : inOrder.join(u',');
    return !inOrder.isEmpty();
}

void TDetailTypes_DM::DetailTypes_SelectedList_Lock(int code)
{
    host::Scalar(m_main, u"select Code from DetailTypes_SelectedLists with (updlock, holdlock) where Code = "_s +
                             QString::number(code));
}

void TDetailTypes_DM::DetailTypes_SelectedList_InsertDetail(const QString &codes, int code)
{
    const QString category = QString::number(code);
    host::Transaction transaction(m_main);
    int place = host::Scalar(m_main, u"Select IsNull(Max(Radif),0)+1 as MaxRadif from DetailTypes_SelectedList_Detail "
                                     "where SL_Code="_s +
                                         category)
                    .toInt();
    host::Dataset members(m_main);
    members.SetTable(u"DetailTypes_SelectedList_Detail"_s, u"Code"_s);
    members.Open(u"Select * from DetailTypes_SelectedList_Detail where SL_Code="_s + category);
    const QList<int> added = host::Codes(codes);
    for (const int member : added) {
        if (members.Locate(u"Code", member))
            continue;
        members.Append();
        members.SetField(u"SL_Code", code);
        members.SetField(u"Code", member);
        members.SetField(u"Radif", place++);
        members.Post();
    }
    transaction.Commit();
}

void TDetailTypes_DM::DetailTypes_SelectedList_DeleteDetail(int code, const QString &codes)
{
    host::Exec(m_main, u"DELETE FROM DetailTypes_SelectedList_Detail WHERE SL_Code = "_s + QString::number(code) +
                           u" AND Code IN ("_s + host::CodeList(codes) + u')');
}

void TDetailTypes_DM::DetailTypes_SelectedList_DeleteAll(int code)
{
    host::Exec(m_main, u"Delete from DetailTypes_SelectedList_Detail where SL_Code="_s + QString::number(code));
}
