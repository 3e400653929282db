#include "detailtypes/detail_types_dm.h"

TDetailTypes_DM::TDetailTypes_DM(const host::Connections &connections)
    : DetailTypes_QRY(connections.ADOConnection1), DetailTypes_SelectedList_QRY(connections.ADOConnection1),
      DetailTypes_DetailList_QRY(connections.ADOConnection1), Get_QRY(connections.ADOConnection1),
      main_(connections.ADOConnection1), Temp_QRY(main_)
{
    Get_QRY.SetTable(QStringLiteral("DetailTypes_SelectedLists"), QStringLiteral("ID"));
}

bool TDetailTypes_DM::MoreThan(int limit, const QString &text)
{
    return host::MoreThan(main_, text, limit);
}
