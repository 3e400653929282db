#pragma once

#include "host/data/database_error.h"
#include "host/host.h"
#include "tests/support/fake_messages.h"

#include <QHash>
#include <QSet>

#include <functional>

using namespace Qt::StringLiterals;

namespace test {

/// "name(1, 2, text)"
template <typename... Parts> QString Call(const char *name, const Parts &...parts)
{
    QStringList texts;
    const auto text = [](const auto &part) {
        if constexpr (std::is_enum_v<std::decay_t<decltype(part)>>)
            return QString::number(int(part));
        else if constexpr (std::is_integral_v<std::decay_t<decltype(part)>>)
            return QString::number(part);
        else
            return QString(part);
    };
    (texts << ... << text(parts));
    return QLatin1String(name) + u'(' + texts.join(u", "_s) + u')';
}

/// Grants everything but what a test takes away.
struct FakePermissions : host::PermissionService
{
    void Deny(host::TSoftwarePart part, host::TPermission permission) { denied.insert({int(part), int(permission)}); }
    bool HavePermission(const host::TUserInfo &, host::TSoftwarePart part, host::TPermission permission, bool, bool,
                        const QString &) override
    {
        return !denied.contains({int(part), int(permission)});
    }
    QSet<std::pair<int, int>> denied;
};

struct FakeSettings : host::SettingsService
{
    const host::TUserInfo &UserInfo() const override { return user; }
    const host::TSettingRecord &SettingRecord() const override { return record; }
    QByteArray LoadState(const QString &screen) override { return states.value(screen); }
    void SaveState(const QString &screen, const QByteArray &state) override { states.insert(screen, state); }

    host::TUserInfo user{7, u"مریم احمدی"_s, 1};
    host::TSettingRecord record;
    QHash<QString, QByteArray> states;
};

/// Lists in memory. Choosing takes the next of `choices` and records the opening text.
struct FakeEntities : host::EntityService
{
    FakeEntities() = default;
    ~FakeEntities() override;
    FakeEntities(const FakeEntities &) = delete;
    FakeEntities &operator=(const FakeEntities &) = delete;
    int Call_GroupList(host::TSoftwarePart part) override { return Note(Call("Call_GroupList", part)); }
    int Select_GroupList(host::TSoftwarePart part, const QString &text) override;
    bool Edit_Group(host::TSoftwarePart part, int id) override { return Note(Call("Edit_Group", part, id)); }
    int New_Group(host::TSoftwarePart part) override { return !Note(Call("New_Group", part)); }
    int Delete_Entity(host::TSoftwarePart part, int code, bool silent) override;
    QString InUse(host::TSoftwarePart part, const QString &code) const override;
    QString Select_Entity_Multible_Param(host::TSoftwarePart part, const host::MultibleParam &param) override;
    std::optional<host::Entity> Find(host::TSoftwarePart part, int code) override;
    QList<host::Entity> List(host::TSoftwarePart part, const QString &text) override;
    /// Two hosts of a test are two desks: what one has reserved the other does not get.
    bool ReserveCode(host::TSoftwarePart part, int code) override;
    void ReleaseCodes(host::TSoftwarePart part) override;
    void ReleaseAbandonedCodes() override {}

    QHash<int, QList<host::Entity>> lists; ///< by software part
    QList<int> choices;                    ///< what the user will choose, 0 for nothing
    QString multipleChoice;
    host::MultibleParam wanted; ///< what the last choice of several was asked for
    int refuseDelete = 0;       ///< what Delete_Entity returns
    /// What a deletion and a choice of several really do, where a test is about that.
    std::function<void(int code)> deleting;
    std::function<QString(const host::MultibleParam &)> choosing;
    QStringList calls; ///< "Select_GroupList(104, کار)"

private:
    bool Note(const QString &call)
    {
        calls << call;
        return true;
    }
};

struct FakeVouchers : host::VoucherService
{
    bool IsVoucherApproved(int code, int kind, const QString &caption, const QString &title) override
    {
        calls << Call("IsVoucherApproved", code, kind, caption, title);
        return approved;
    }
    bool IsConstStartPeriod() override { return constStartPeriod; }
    bool Validate_TotalCost(long double, long double, host::TSoftwarePart) override { return totalCostValid; }
    void SaveInLineAutoVoucher(int good) override { calls << Call("SaveInLineAutoVoucher", good); }
    void ChangeAutoVouchers(int good, int voucher, const QString &date) override
    {
        calls << Call("ChangeAutoVouchers", good, voucher, date);
    }
    void SaveAutoVouchersAgain(int good) override { calls << Call("SaveAutoVouchersAgain", good); }

    bool approved = false;
    bool constStartPeriod = false;
    bool totalCostValid = true;
    QStringList calls;
};

struct FakeStock : host::StockService
{
    bool Check_TockMinus(const QString &probe, const QString &date) override
    {
        calls << Call("Check_TockMinus", probe, date);
        return enough;
    }
    QString StockShortage(const QString &, const QString &) override { return shortage; }
    void SaveStorageAutoOperation(host::TSoftwarePart part, int code) override
    {
        calls << Call("SaveStorageAutoOperation", part, code);
    }
    void DeleteStorageAutoOperation(host::TSoftwarePart part, int code) override
    {
        calls << Call("DeleteStorageAutoOperation", part, code);
    }
    void SaveStorageAutoOperation(host::TOperationType type, int code) override
    {
        calls << Call("SaveStorageAutoOperation", int(type), code);
    }
    void DeleteStorageAutoOperation(host::TOperationType type, int code) override
    {
        calls << Call("DeleteStorageAutoOperation", int(type), code);
    }

    bool enough = true;
    QString shortage; ///< another desk sold between the check and the save
    QStringList calls;
};

struct FakeGoodDetails : host::GoodDetailService
{
    bool ExistsGoodDetailInsertedForOperation(int, host::TOperationType) override { return entered; }
    void EnterGoodDetailSave(int good, host::TOperationType operation) override
    {
        calls << Call("EnterGoodDetailSave", good, operation);
        if (!refusal.isEmpty())
            throw host::DatabaseError(refusal);
    }
    bool EnterGoodDetails_Get(int, host::TOperationType) override { return entered; }
    bool CheckGoodDetailKardexExists(int good) override { return recorded.contains(good) || unsaved.contains(good); }
    bool GoodDetailsSaved(int good) override { return recorded.contains(good); }
    bool CheckBarcodeInGoodDetail(const QString &barcode) override { return detailBarcodes.contains(barcode); }
    bool UniqueDetailCodeInUse(int) override { return uniqueCodeInUse; }

    bool entered = false;
    bool uniqueCodeInUse = false;
    QString refusal;    ///< of EnterGoodDetailSave
    QSet<int> recorded; ///< goods with quantities of their details
    QSet<int> unsaved;  ///< and those with such of documents that are not saved
    QStringList detailBarcodes;
    QStringList calls;
};

struct FakeDetailValues : host::DetailValueService
{
    host::TDetailValues DetailsOf(int) override { return details; }
    int FindDetailValue(int, const host::TDetailValues &) override { return value; }
    int ResolveDetailValue(int, const host::TDetailValues &) override { return value; }
    bool DeleteUnusedDetailValue(int id) override { return !(deleted << id).isEmpty(); }
    void DeleteUnusedDetailValuesAmong(const QString &) override {}
    void DeleteUnusedDetailValues(const QList<int> &ids) override { deleted << ids; }
    std::optional<host::TKnownDetail> FindByText(int, const QString &text) override
    {
        return known.contains(text) ? std::optional(known.value(text)) : std::nullopt;
    }
    host::DetailOwner SerialOwner(int, const QString &serial) override { return owners.value(serial); }
    host::DetailOwner BarcodeOwner(int, const QString &barcode) override { return owners.value(barcode); }

    host::TDetailValues details;
    int value = 0; ///< of every combination
    QHash<QString, host::TKnownDetail> known;
    QHash<QString, host::DetailOwner> owners;
    QList<int> deleted;
};

struct FakeDetailMovements : host::DetailMovementService
{
    using Line = host::TDocumentLine;
    using Refusals = QList<host::TDetailRefusal>;
    void EnterGoodDetails_Load(const QString &table, const Line &) override { calls << Call("Load", table); }
    void EnterGoodDetails_Keep(const QString &table, const Line &) override { calls << Call("Keep", table); }
    QHash<int, host::TAmounts> EnterGoodDetails_Totals(quint8, int) override { return totals; }
    void EnterGoodDetails_Remember(const Line &line) override { calls << Call("Remember", line.OperationRow); }
    void EnterGoodDetails_Restore(const Line &line) override { calls << Call("Restore", line.OperationRow); }
    void ExitGoodDetails_Fill(const Line &line) override { calls << Call("Fill", line.GoodCode); }
    QString ExitGoodDetails_Condition(const Line &line) override { return u"GoodCode = %1"_s.arg(line.GoodCode); }
    int ExitGoodDetails_FindRow(const Line &, const QString &) override { return 0; }
    void ExitGoodDetails_Keep(const Line &line) override { calls << Call("KeepExit", line.GoodCode); }
    void ExitGoodDetails_Clear(const Line &line) override { calls << Call("Clear", line.GoodCode); }
    void ExitGoodDetails_DeleteAll(quint8 type, int code) override { calls << Call("DeleteAll", int(type), code); }
    QList<int> ReturnedDetailValues(const Line &) override { return returned; }
    bool IsReturned(const Line &, int value) override { return returned.contains(value); }
    std::optional<host::TAmounts> Returnable(const Line &, int value) override
    {
        return returnable.contains(value) ? std::optional(returnable.value(value)) : std::nullopt;
    }
    bool ChangeStore(const Line &, int store) override { return !(calls << Call("ChangeStore", store)).isEmpty(); }
    Refusals GoodDetailsOperation_Save(quint8, int) override { return refusals; }
    Refusals GoodDetailsOperation_Delete(quint8 type, int code, int row) override
    {
        calls << Call("Delete", int(type), code, row);
        return refusals;
    }
    void ExitGoodDetails_Edit(quint8 type, int code) override { calls << Call("Edit", int(type), code); }
    std::optional<host::TAmounts> ExitGoodDetails_Take(const Line &, int) override { return {}; }
    std::optional<host::TAmounts> EnterGoodDetails_Return(const Line &, int) override { return {}; }
    int RowsOfLine(const Line &) override { return 0; }
    QString DetailsOfLine(const Line &) override { return {}; }
    void GoodDetailsOperation_KeepLines(quint8 type, int code, const QString &) override
    {
        calls << Call("KeepLines", int(type), code);
    }
    Refusals GoodDetailsOperation_Transfer(quint8, quint8, int, int) override { return refusals; }
    void GoodDetailsOperation_Discard(quint8 type, int code) override { calls << Call("Discard", int(type), code); }

    QList<int> returned;
    QHash<int, host::TAmounts> returnable;
    QHash<int, host::TAmounts> totals;
    Refusals refusals;
    QStringList calls;
};

struct FakeSerialBatches : host::SerialBatchService
{
    host::TSerialBatchResult EnterSerials(const host::TSerialBatch &) override { return result; }
    host::TSerialBatchResult JudgeSerials(const host::TSerialBatch &) override { return result; }
    std::optional<int> ChooseSerials(const host::TDocumentLine &, const host::TSerialRange &range,
                                     const host::TAmounts &) override
    {
        return range.IsTooLong() ? std::nullopt : std::optional(result.Written);
    }

    host::TSerialBatchResult result;
};

/// Knows no division and no unit; records what is written.
struct FakeDetailDivisions : host::DetailDivisionService
{
    using Refusals = QList<host::TDetailRefusal>;
    using Quantity = host::Quantity;
    void CreateGoodDetailDivisionDetailTempTable() override { calls << u"CreateRows"_s; }
    void CreateGoodDetailDivisionDetailItemsTempTable() override { calls << u"CreateItems"_s; }
    void DropGoodDetailDivisionDetailTempTable() override { calls << u"DropRows"_s; }
    void DropGoodDetailDivisionDetailItemsTempTable() override { calls << u"DropItems"_s; }
    void GoodDetailDivisionDetailTempInsert_Rows(int code) override { calls << Call("Rows", code); }
    void GoodDetailDivisionDetailItemsTempInsert_Rows(int code) override { calls << Call("Items", code); }
    void GoodDetailDivision_GetALL(host::Dataset &, const host::TDayRange &) override {}
    void GoodDetailDivisionDetail_Get(host::Dataset &) override {}
    void GoodDetailDivisionDetailItems_Get(host::Dataset &query, int, int) override
    {
        if (!parts.isEmpty())
            query.Open(parts);
    }
    std::optional<host::TDivisionHeader> GoodDetailDivision_Header(int) override { return {}; }
    std::optional<host::TDivisionSource> GoodDetailDivision_Source(const host::TDocumentLine &, int) override
    {
        return source;
    }
    QList<host::TDivisionSource> GoodDetailDivision_FindUnits(const QString &) override { return {}; }
    int GetOperationRow() override { return 1; }
    void InsertGoodDetailDivisionDetailTemp_Row(const host::TDivisionRow &) override {}
    std::optional<host::TDivisionRow> GoodDetailDivisionDetailTemp_Row(int) override { return {}; }
    QString GoodDetailDivisionDetailTemp_Get_Comment(int) override { return {}; }
    void GoodDetailDivisionDetailTempDelete(int, int row) override { calls << Call("DeleteRow", row); }
    void GoodDetailDivisionDetailItemsTempDelete(int, int row) override { calls << Call("DeleteItems", row); }
    void Insert_GoodDetailKardexExit_Temp_Row(const host::TDivisionRow &) override {}
    void Delete_GoodDetailKardexTemp(host::TOperationType, int, int) override {}
    void GoodDetailDivisionDetailItemsTemp_Begin(int, int) override {}
    void GoodDetailDivisionDetailItemsTemp_Discard() override {}
    int GoodDetailDivisionDetailItemsTempInsertRow(const host::TDivisionPart &) override { return 1; }
    void GoodDetailDivisionDetailItemsTempUpdateRow(const host::TDivisionPart &) override {}
    void GoodDetailDivisionDetailItemsTempDeleteRow(int, int) override {}
    void GoodDetailDivisionDetailItemsTempDeleteAllRow(int) override {}
    std::optional<host::TDivisionPart> GoodDetailDivisionDetailItemsTemp_Row(int, int) override { return {}; }
    Quantity GoodDetailDivisionDetailItemsTemp_Get_Amount1_By_OperationRow(int) override { return 0; }
    Quantity GoodDetailDivisionDetailItemsTemp_Get_Amount3_By_OperationRow(int) override { return 0; }
    int GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amount3(int, Quantity, bool) override { return 0; }
    int GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_LengthWidth(int, Quantity, Quantity, bool) override
    {
        return 0;
    }
    int GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amounts(int, Quantity, Quantity, bool) override
    {
        return 0;
    }
    host::TAmounts GoodDetailDivisionDetailItemsTemp_Sum(int) override { return {}; }
    void GoodDetailDivisionDetailItemsTemp_Update_Tmp(int, int, int) override {}
    bool CheckGoodDetailDivisionDelete(int, int, int) override { return true; }
    Refusals GoodDetailDivision_UsedParts(int, int, int) override { return {}; }
    void InsertGoodDetailDivision(const host::TDivisionHeader &, int status) override
    {
        calls << Call("Header", status);
    }
    Refusals InsertGoodDetailDivisionDetail(int code) override
    {
        calls << Call("InsertRows", code);
        return {};
    }
    Refusals InsertGoodDetailDivisionDetailItems(int code) override
    {
        calls << Call("InsertItems", code);
        return {};
    }
    void DeleteGoodDetailDivision(int code) override { calls << Call("Delete", code); }

    std::optional<host::TDivisionSource> source;
    QString parts; ///< the statement that gives the parts of a row
    QStringList calls;
};

struct FakePhotos : host::PhotoGalleryService
{
    void Open_Gallery(host::TSoftwarePart part, int code) override { calls << Call("Open_Gallery", part, code); }
    QList<QByteArray> Photos(host::TSoftwarePart, int code) override { return photos.value(code); }

    QHash<int, QList<QByteArray>> photos;
    QStringList calls;
};

struct FakeCategories : host::CategoryService
{
    QList<host::Category> Tree() override { return all; }
    QList<host::Category> Path(int code) override;
    void Open_Categories() override { ++opened; }

    QList<host::Category> all;
    int opened = 0;
};

/// Titles in memory; opening one of the lists counts, and answers that titles were changed by `changing`.
struct FakeLevels : host::LevelService
{
    bool Open_CostLevels() override { return Opened(u"cost"_s); }
    bool Open_DiscountLevels() override { return Opened(u"discount"_s); }
    QStringList DiscountLevels() override { return discounts; }

    std::function<bool()> changing;
    QStringList discounts;
    QStringList calls;

private:
    bool Opened(const QString &kind)
    {
        calls << kind;
        return changing && changing();
    }
};

struct FakeSelectedLists : host::SelectedListService
{
    void Call_SelectedLists(int code) override { calls << Call("Call_SelectedLists", code); }
    int AddToSelectedList(const QString &goods) override
    {
        calls << Call("AddToSelectedList", goods);
        return 1;
    }
    QStringList calls;
};

struct FakeScales : host::ScaleService
{
    bool Enabled() const override { return enabled; }
    bool enabled = false;
};

struct FakeKeyboard : host::KeyboardService
{
    QString GetKeyboardLayoutName() override { return layout; }
    void LoadKeyboardLayout(const QString &name) override
    {
        layout = name;
        switches << name;
    }
    QString layout = QString::fromUtf16(Persian);
    QStringList switches;
};

struct FakeClock : host::ClockService
{
    QString NowTime() override { return time; }
    QString NowDate() override { return date; }
    QString NowShamsiDate() override { return shamsi; }
    QString time = u"10:20:30"_s;
    QString date = u"2024/07/30"_s;
    QString shamsi = u"1403/05/09"_s;
};

struct FakeBarcodes : host::BarcodeService
{
    bool LibraryFound() const override { return library; }
    bool CompletionFound() const override { return completion; }
    QString Complete_Barcode(const QString &digits) override { return completions.value(digits); }
    bool library = true;
    bool completion = true;
    QHash<QString, QString> completions;
};

struct FakeFinance : host::FinanceService
{
    QList<host::Entity> Fill_FinanceGoodTypes() override { return types; }
    QList<host::Entity> types{{1, u"مواد اولیه"_s}, {2, u"کالای ساخته شده"_s}};
};

struct FakeTheme : host::ThemeService
{
    QColor CaptionColor() const override;
    QFont TitleFont() const override;
};

struct FakeHelp : host::HelpService
{
    void Show(const QString &) override {}
};

struct FakeNumbers : host::NumberService
{
    int Save_Global_ID(host::TSoftwarePart) override { return ++last; }
    void Save_Global_ID(host::TSoftwarePart, int number) override { last = number; }
    void Delete_Global_ID(host::TSoftwarePart, int number) override { deleted << number; }
    int last = 0;
    QList<int> deleted;
};

/// A host of a test's making. One per test: a test changes what it needs (`host.settings.record`, `host.vouchers`) and
/// gives `host` where a host::Host is wanted. Its end checks that every message was accounted for.
class TestHost
{
public:
    explicit TestHost(const host::Connections &connections = {});
    ~TestHost();
    TestHost(const TestHost &) = delete;
    TestHost &operator=(const TestHost &) = delete;

    /// Makes this host the installed one, for tests that go through the exports.
    void Install() { host::install(host); }
    operator host::Host &() { return host; }

    FakePermissions permissions;
    FakeMessages messages;
    FakeSettings settings;
    FakeEntities entities;
    FakeVouchers vouchers;
    FakeStock stock;
    FakeGoodDetails goodDetails;
    FakeDetailValues detailValues;
    FakeDetailMovements detailMovements;
    FakeSerialBatches serialBatches;
    FakeDetailDivisions detailDivisions;
    FakePhotos photos;
    FakeCategories categories;
    FakeLevels levels;
    FakeSelectedLists selectedLists;
    FakeScales scales;
    FakeKeyboard keyboard;
    FakeClock clock;
    FakeBarcodes barcodes;
    FakeFinance finance;
    FakeTheme theme;
    FakeNumbers numbers;
    FakeHelp help;
    host::Host host;
};

} // namespace test
