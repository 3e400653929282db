#include "data/goods/good_dm.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int ListBlock = 1000;

} // namespace

TGood_DM::TGood_DM(const host::Connections &connections, const host::SettingsService &settings,
                   host::EntityService &entities)
    : GoodGet_QRY(connections.ADOConnection1), Good_List_QRY(connections.FDConnection1),
      GoodGroup_List_QRY(connections.ADOConnection1), Tags_qry(connections.ADOConnection1),
      colors_qry(connections.ADOConnection1), KalaCategory_Qry(connections.ADOConnection1),
      SellDetails_QRY(connections.ADOConnection1), BuyDetails_QRY(connections.ADOConnection1),
      GoodDetails_QRY(connections.ADOConnection1), GoodFirstAsset_QRY(connections.ADOConnection1),
      FirstAssetList_QRY(connections.ADOConnection1), GoodCostDiscount_QRY(connections.ADOConnection1),
      m_main(connections.ADOConnection1), m_list(connections.FDConnection1), m_scale(connections.DibalConnection),
      m_settings(settings), m_entities(entities), Temp_QRY(m_main), TMP_OnLine_QRY(m_scale)
{
    GoodGet_QRY.SetTable(u"GoodInf"_s, u"Code"_s);
    GoodCostDiscount_QRY.SetTable(u"GoodCostDiscount"_s, u"GoodCode"_s);
    Good_List_QRY.SetBlockSize(ListBlock);
    for (host::Dataset *prices : {&SellDetails_QRY, &BuyDetails_QRY}) {
        prices->SetTable(u"tmpCostList"_s, u"Id"_s);
        prices->SetEditableFields({u"Cost"_s});
    }
    GoodFirstAsset_QRY.SetTable(u"GoodFirstAsset"_s, u"ID"_s);
}
