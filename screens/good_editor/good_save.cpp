#include "screens/good_editor/good_save.h"

#include "data/goods/stock_probe.h"
#include "host/data/database_error.h"
#include "host/data/transaction.h"
#include "rules/stamp.h"
#include "rules/unit_arithmetic.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using host::TOperationType;
using host::TSoftwarePart;

int GoodSave::Run(Request request)
{
    TGoodInfoRec &good = request.good;
    host::Transaction transaction(m_data.Connection());
    if (request.isNew)
        m_data.Good_TakeCode(good.Code, good.GrpCode, m_host.settings.SettingRecord().GoodCodeLength);
    WriteOpeningRows(request);
    m_data.TempToGoodCat(good.Code);
    m_data.DeleteTmpCategory();
    WriteGood(request);
    WriteOpeningDetails(request);
    m_host.stock.SaveStorageAutoOperation(TSoftwarePart::Goods, good.Code);
    BookOpeningStock(request);
    m_data.TmpToMainPhoto(good.Code);
    m_data.CostLevel_DeleteTemp(good.Code);
    transaction.Commit();
    return good.Code;
}

void GoodSave::WriteOpeningRows(const Request &request)
{
    // Without a quantity the good has no opening row.
    if (request.rowTyped)
        m_rows.SetOnlyRow(request.rowStore, {request.good.AvaBgPrd, request.good.AvaBgPrd2});
    // What was left alone stays as it is, in any store, also when another desk has changed it meanwhile. Details that
    // were entered belong to the rows as they were seen here.
    if (m_rows.IsChanged())
        m_rows.Save(request.good.Code, [&] { StockLasts(request); });
    else if (m_details.Changed() || !m_rows.GoneNumbers().isEmpty())
        m_rows.CheckSaved(request.good.Code);
}

/// Another desk may have sold since the checks of the editor.
void GoodSave::StockLasts(const Request &request)
{
    if (request.isNew || !m_host.settings.SettingRecord().ControlNegativeStock)
        return;
    const QString shortage = m_host.stock.StockShortage(goods::LoweredRowsProbe(request.good.Code, m_rows.Key()),
                                                        m_data.GetFirstPeriodVoucherDate());
    if (!shortage.isEmpty())
        throw host::DatabaseError(shortage);
}

void GoodSave::WriteOpeningDetails(const Request &request)
{
    // What was entered while details were kept goes with its row, also when they are kept no more.
    const bool rowsGone = !request.isNew && !m_rows.GoneNumbers().isEmpty();
    if (!rowsGone && !m_host.settings.SettingRecord().GoodDetails)
        return;
    if (rowsGone)
        m_details.KeepRows(goods::OpeningCopy::SavedNumbers(request.good.Code));
    // All rows at once: a serial may go from a deleted row to another one.
    m_host.goodDetails.EnterGoodDetailSave(request.good.Code, TOperationType::OpeningStock);
}

void GoodSave::WriteGood(Request &request)
{
    TGoodInfoRec &good = request.good;
    int d1 = 0, d2 = 0, d3 = 0, d4 = 0, d5 = 0;
    m_data.GetGoodDetailTempID(d1, d2, d3, d4, d5);

    const host::TUserInfo &user = m_host.settings.UserInfo();
    const QString stamp = goods::StampUser(user.Name, user.Code);
    (request.isNew ? good.CreatedTime : good.ModifiedTime) = m_host.clock.NowTime();
    (request.isNew ? good.CreatedDate : good.ModifiedDate) = m_host.clock.NowShamsiDate();
    (request.isNew ? good.UserCreated : good.UserModified) = stamp;
    if (request.isNew)
        m_data.Good_Insert(good);
    else
        m_data.Good_Update(good);
    m_data.CostLevel_Save(good.Code);

    // With good details switched off the working list is not asked, and the relations stay as they are.
    if (!m_host.settings.SettingRecord().GoodDetails)
        return;
    if (request.isNew)
        m_data.InsertGoodDetailRelation(good.Code, d1, d2, d3, d4, d5);
    else if (const std::array now{d1, d2, d3, d4, d5};
             !std::is_permutation(now.begin(), now.end(), request.loadedDetails.begin()))
        m_data.UpdateGoodDetailRelation(good.Code, d1, d2, d3, d4, d5);
}

void GoodSave::BookOpeningStock(const Request &request)
{
    const TGoodInfoRec &good = request.good;
    // Most saves leave the amount alone, and the period need not be asked for.
    if (goods::SameQuantity(request.loaded.Amount(), request.entered.Amount()))
        return;
    switch (goods::OpeningVoucherChange(request.loaded, request.entered, good.VoucherCode,
                                        m_host.vouchers.IsConstStartPeriod())) {
    case goods::VoucherChange::None:
        break;
    case goods::VoucherChange::Create:
        m_host.vouchers.SaveInLineAutoVoucher(good.Code);
        break;
    case goods::VoucherChange::Change:
        m_host.vouchers.ChangeAutoVouchers(good.Code, good.VoucherCode, m_data.GetFirstPeriodVoucherDate());
        break;
    case goods::VoucherChange::Rebuild:
        m_host.vouchers.SaveAutoVouchersAgain(good.Code);
        break;
    }
}
