#include "data/goods/good_dm.h"

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
      main_(connections.ADOConnection1), list_(connections.FDConnection1), scale_(connections.DibalConnection),
      settings_(settings), entities_(entities), Temp_QRY(main_), TMP_OnLine_QRY(scale_)
{
    GoodGet_QRY.SetTable(QStringLiteral("GoodInf"), QStringLiteral("Code"));
    GoodCostDiscount_QRY.SetTable(QStringLiteral("GoodCostDiscount"), QStringLiteral("GoodCode"));
    Good_List_QRY.SetBlockSize(ListBlock);
    for (host::Dataset *prices : {&SellDetails_QRY, &BuyDetails_QRY}) {
        prices->SetTable(QStringLiteral("tmpCostList"), QStringLiteral("Id"));
        prices->SetEditableFields({QStringLiteral("Cost")});
    }
    GoodFirstAsset_QRY.SetTable(QStringLiteral("GoodFirstAsset"), QStringLiteral("ID"));
}
