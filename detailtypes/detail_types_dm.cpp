#include "detailtypes/detail_types_dm.h"

using namespace Qt::StringLiterals;

TDetailTypes_DM::TDetailTypes_DM(const host::Connections &connections)
    : DetailTypes_QRY(connections.ADOConnection1), DetailTypes_SelectedList_QRY(connections.ADOConnection1),
      DetailTypes_DetailList_QRY(connections.ADOConnection1), Get_QRY(connections.ADOConnection1),
      m_main(connections.ADOConnection1), Temp_QRY(m_main)
{
    Get_QRY.SetTable(u"DetailTypes_SelectedLists"_s, u"ID"_s);
}

bool TDetailTypes_DM::MoreThan(int limit, const QString &text)
{
    return host::MoreThan(m_main, text, limit);
}
