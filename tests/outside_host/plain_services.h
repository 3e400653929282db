#pragma once

#include "host/host.h"

#include <cstdio>

using namespace Qt::StringLiterals;

/// The least that a host can supply: everybody may do everything, nothing is in the way, messages go to stderr.
namespace plain {

struct Permissions : host::PermissionService
{
    bool HavePermission(const host::TUserInfo &, host::TSoftwarePart, host::TPermission, bool, bool,
                        const QString &) override
    {
        return true;
    }
};

struct Messages : host::MessageService
{
    void Say(const QString &text) { std::fprintf(stderr, "message: %s\n", qUtf8Printable(text)); }
    void MsgRequiredField(const QString &caption) override { Say(caption); }
    void MsgRepeatedField(const QString &field, const QString &) override { Say(field); }
    void MsgRepeatedCode(const QString &caption) override { Say(caption); }
    void NotZeroValue(const QString &caption) override { Say(caption); }
    void MsgPercent(const QString &caption) override { Say(caption); }
    void NotSaveable(const QString &parent, const QString &) override { Say(parent); }
    void MsgHasSubRecordsAnother(const QString &what, const QString &) override { Say(what); }
    bool MsgDeleteRow() override { return false; }
    bool MsgDeleteItem(const QString &) override { return false; }
    bool ContinueWithRepeatedField(const QString &) override { return false; }
    void MSGCompeletedSuccessfully(const QString &what) override { Say(what); }
    void ShowSmartMessage(int, const QStringList &, int, QWidget *) override {}
    bool Confirm(int, const QStringList &) override { return false; }
    void ShowFlashMessage(const QString &text, int) override { Say(text); }
    void ShowMessage(const QString &text, host::MessageIcon, const QString &) override { Say(text); }
    bool Ask(const QString &, bool) override { return false; }
};

struct Settings : host::SettingsService
{
    const host::TUserInfo &UserInfo() const override { return user; }
    const host::TSettingRecord &SettingRecord() const override { return record; }
    QByteArray LoadState(const QString &) override { return {}; }
    void SaveState(const QString &, const QByteArray &) override {}
    host::TUserInfo user{1, u"کاربر"_s, 1};
    host::TSettingRecord record;
};

struct Entities : host::EntityService
{
    int Call_GroupList(host::TSoftwarePart) override { return 0; }
    int Select_GroupList(host::TSoftwarePart, const QString &) override { return 0; }
    bool Edit_Group(host::TSoftwarePart, int) override { return false; }
    int New_Group(host::TSoftwarePart) override { return 0; }
    int Delete_Entity(host::TSoftwarePart, int, bool) override { return 1; }
    QString Select_Entity_Multible_Param(host::TSoftwarePart, const host::MultibleParam &) override { return {}; }
    std::optional<host::Entity> Find(host::TSoftwarePart, int) override { return std::nullopt; }
    QList<host::Entity> List(host::TSoftwarePart, const QString &) override { return {}; }
    bool ReserveCode(host::TSoftwarePart, int) override { return true; }
    void ReleaseCodes(host::TSoftwarePart) override {}
};

struct Vouchers : host::VoucherService
{
    bool IsVoucherApproved(int, int, const QString &, const QString &) override { return false; }
    bool IsConstStartPeriod() override { return false; }
    bool Validate_TotalCost(long double, long double, host::TSoftwarePart) override { return true; }
    void SaveInLineAutoVoucher(int) override {}
    void ChangeAutoVouchers(int, int, const QString &) override {}
    void SaveAutoVouchersAgain(int) override {}
};

struct Stock : host::StockService
{
    bool Check_TockMinus(const QString &, const QString &) override { return true; }
    void SaveStorageAutoOperation(host::TSoftwarePart, int) override {}
    void DeleteStorageAutoOperation(host::TSoftwarePart, int) override {}
};

struct GoodDetails : host::GoodDetailService
{
    bool ExistsGoodDetailInsertedForOperation(int, host::TOperationType) override { return false; }
    void EnterGoodDetailSave(int, host::TOperationType) override {}
    bool EnterGoodDetails_Get(int, host::TOperationType) override { return false; }
    bool CheckBarcodeInGoodDetail(const QString &) override { return false; }
    bool UniqueDetailCodeInUse(int) override { return false; }
};

struct PhotoStore : host::PhotoGalleryService
{
    void Open_Gallery(host::TSoftwarePart, int) override {}
    QList<QByteArray> Photos(host::TSoftwarePart, int) override { return {}; }
};

struct Categories : host::CategoryService
{
    QList<host::Category> Tree() override { return {}; }
    QList<host::Category> Path(int) override { return {}; }
};

struct Scales : host::ScaleService
{
    bool Enabled() const override { return false; }
};

struct Keyboard : host::KeyboardService
{
    QString GetKeyboardLayoutName() override { return QString::fromUtf16(Persian); }
    void LoadKeyboardLayout(const QString &) override {}
};

struct Clock : host::ClockService
{
    QString NowTime() override { return u"12:00:00"_s; }
    QString NowDate() override { return u"2026/01/01"_s; }
    QString NowShamsiDate() override { return u"1404/10/11"_s; }
};

struct Barcodes : host::BarcodeService
{
    bool LibraryFound() const override { return false; }
    bool CompletionFound() const override { return false; }
    QString Complete_Barcode(const QString &) override { return {}; }
};

struct Finance : host::FinanceService
{
    QList<host::Entity> Fill_FinanceGoodTypes() override { return {}; }
};

struct Theme : host::ThemeService
{
    QColor CaptionColor() const override { return Qt::darkBlue; }
    QFont TitleFont() const override { return {}; }
};

struct Numbers : host::NumberService
{
    int Save_Global_ID(host::TSoftwarePart) override { return 1; }
    void Delete_Global_ID(host::TSoftwarePart, int) override {}
};

} // namespace plain
