#include "screens/good_editor/good_save.h"

#include "host/data/transaction.h"

#include <algorithm>

using host::TOperationType;
using host::TSoftwarePart;

int GoodSave::Run(Request request)
{
    TGoodInfoRec &good = request.good;
    host::Transaction transaction(data_.Connection());
    if (request.isNew)
        data_.Good_TakeCode(good.Code, good.GrpCode, host_.settings.SettingRecord().GoodCodeLength);
    WriteOpeningRow(request);
    data_.TempToGoodCat(good.Code);
    data_.DeleteTmpCategory();
    WriteGood(request);
    if (host_.settings.SettingRecord().GoodDetails)
        host_.goodDetails.EnterGoodDetailSave(good.Code, TOperationType::OpeningStock);
    host_.stock.SaveStorageAutoOperation(TSoftwarePart::Goods, good.Code);
    BookOpeningStock(request);
    data_.TmpToMainPhoto(good.Code);
    data_.CostLevel_DeleteTemp(good.Code);
    transaction.Commit();
    return good.Code;
}

void GoodSave::WriteOpeningRow(const Request &request)
{
    // What was left alone stays as it is, in any store, also when another desk has changed it meanwhile.
    if (!request.rowChanged)
        return;
    const TGoodInfoRec &good = request.good;
    data_.FirstAsset_DeleteTemp(good.Code);
    // Without a quantity the good has no opening row.
    if (good.AvaBgPrd != 0 || good.AvaBgPrd2 != 0)
        data_.GoodFirstAsset(good.Code, QString::number(request.rowStore), host::QuantityToText(good.AvaBgPrd),
                             host::QuantityToText(good.AvaBgPrd2));
    data_.FirstAsset_SaveRow(good.Code, request.loadedRowStore);
}

void GoodSave::WriteGood(Request &request)
{
    TGoodInfoRec &good = request.good;
    int d1 = 0, d2 = 0, d3 = 0, d4 = 0, d5 = 0;
    data_.GetGoodDetailTempID(d1, d2, d3, d4, d5);

    const host::TUserInfo &user = host_.settings.UserInfo();
    const QString stamp = QStringLiteral("%1 (%2)").arg(user.Name, QString::number(user.Code));
    (request.isNew ? good.CreatedTime : good.ModifiedTime) = host_.clock.NowTime();
    (request.isNew ? good.CreatedDate : good.ModifiedDate) = host_.clock.NowShamsiDate();
    (request.isNew ? good.UserCreated : good.UserModified) = stamp;
    if (request.isNew)
        data_.Good_Insert(good);
    else
        data_.Good_Update(good);
    data_.CostLevel_Save(good.Code);

    // With good details switched off the working list is not asked, and the relations stay as they are.
    if (!host_.settings.SettingRecord().GoodDetails)
        return;
    if (request.isNew)
        data_.InsertGoodDetailRelation(good.Code, d1, d2, d3, d4, d5);
    else if (const std::array now{d1, d2, d3, d4, d5};
             !std::is_permutation(now.begin(), now.end(), request.loadedDetails.begin()))
        data_.UpdateGoodDetailRelation(good.Code, d1, d2, d3, d4, d5);
}

void GoodSave::BookOpeningStock(const Request &request)
{
    const TGoodInfoRec &good = request.good;
    // Most saves leave the amount alone, and the period need not be asked for.
    if (goods::SameQuantity(request.loaded.Amount(), request.entered.Amount()))
        return;
    switch (goods::OpeningVoucherChange(request.loaded, request.entered, good.VoucherCode,
                                        host_.vouchers.IsConstStartPeriod())) {
    case goods::VoucherChange::None:
        break;
    case goods::VoucherChange::Create:
        host_.vouchers.SaveInLineAutoVoucher(good.Code);
        break;
    case goods::VoucherChange::Change:
        host_.vouchers.ChangeAutoVouchers(good.Code, good.VoucherCode, data_.GetFirstPeriodVoucherDate());
        break;
    case goods::VoucherChange::Rebuild:
        host_.vouchers.SaveAutoVouchersAgain(good.Code);
        break;
    }
}
