#include "data/goods/good_dm.h"

#include "host/data/transaction.h"

TGood_DM::TGood_DM(const host::Connections &connections, const host::SettingsService &settings,
                   host::EntityService &entities)
    : RecordStore(connections.ADOConnection1, connections.FDConnection1, entities),
      Codes(connections.ADOConnection1, settings), Prices(connections.ADOConnection1),
      GoodDetailTypes(connections.ADOConnection1, settings), OpeningStock(connections.ADOConnection1),
      Categories(connections.ADOConnection1), Lookups(connections.ADOConnection1),
      Scales(connections.ADOConnection1, connections.DibalConnection),
      BulkChanges(connections.ADOConnection1, static_cast<Scales &>(*this), static_cast<GoodDetailTypes &>(*this),
                  entities),
      m_main(connections.ADOConnection1)
{}

bool TGood_DM::Good_TakeCode(int &code, int grpCode, int codeLength)
{
    if (!CodeIsTaken(code)) {
        return false;
    }
    const int fresh = FreshCode(grpCode, codeLength);
    Good_ChangeCode(fresh, code);
    code = fresh;
    return true;
}

void TGood_DM::Good_ChangeCode(int newCode, int oldCode)
{
    if (newCode == oldCode) {
        return;
    }
    host::Transaction transaction(m_main);
    CostLevel_ChangeCode(newCode, oldCode);
    GoodFirstAsset_UpdateAllGoodCodes(newCode, oldCode);
    Category_ChangeCode(newCode, oldCode);
    GoodDetailTemp_ChangeCode(newCode, oldCode);
    transaction.Commit();
}
