#include "entry/module.h"

#include "detailtypes/detail_types_list.h"
#include "division/division_items.h"
#include "division/division_list.h"
#include "entry/opening_entry.h"
#include "entry/selection_param.h"
#include "gooddetail/details_select.h"
#include "gooddetail/enter_serial.h"
#include "gooddetail/exit_serial.h"
#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "screens/good_editor/good_get.h"
#include "screens/goods_list/good_list.h"

#include <QApplication>
#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::StringLiterals;

using host::TFormMode;
using host::TSoftwarePart;

namespace entry {

namespace {

const QString ListBusy = u"امکان نمایش مجدد لیست کالاها وجود ندارد."_s;
const QString DetailTypesBusy = u"امکان نمایش مجدد لیست جزئیات وجود ندارد."_s;
const QString DetailsOff =
    u"کاربر گرامی برای استفاده از تقسیم جزئیات می بایست از تنظیمات نرم افزار جزئیات کالا را فعال نمایید"_s;
const QString NothingDivisible =
    u"کاربر گرامی تقسیم جزئیات فقط برای کالاهای دو واحدی با ضریب متغیر و کالاهای از نوع متر مربع معنی دارد"_s;
constexpr int ReviewKind = 2;

/// The unit on hand that is to be divided, chosen by the user.
std::optional<good_detail::ChosenDetail> PickUnit(host::Host &host, int mode)
{
    TGoodDetails_Select_FRM screen(host, Pack(good_detail::SelectOpening{mode, 0, {}, 0}));
    screen.SetForDivision(true);
    screen.SetKeyboardLayoutName(host.keyboard.GetKeyboardLayoutName());
    screen.SetFormTheme();
    if (screen.ShowModally() != QDialog::Accepted)
        return std::nullopt;
    return good_detail::ParseChosen(screen.Chosen());
}

/// The module of this process. The screens must go before the application object and before the library's code,
/// whichever goes first.
struct Holder
{
    std::unique_ptr<Module> module;
    std::vector<std::unique_ptr<Module>> former; ///< of hosts that were replaced while a screen was open

    ~Holder()
    {
        qRemovePostRoutine(Module::Release);
        module.reset();
        former.clear();
    }
};

Holder holder;

QString Describe(const std::exception_ptr &error)
{
    try {
        std::rethrow_exception(error);
    } catch (const host::DatabaseError &failure) {
        return failure.Text();
    } catch (const host::RefusedText &refused) {
        return refused.Text();
    } catch (const std::exception &failure) {
        return QString::fromUtf8(failure.what());
    } catch (...) {
        return u"خطای ناشناخته"_s;
    }
}

} // namespace

Module::Module(host::Host &host) : m_host(host)
{}

Module::~Module()
{
    for (const auto &list : m_browse)
        delete list.data();
}

Module &Module::Instance()
{
    host::Host &host = host::installed();
    if (holder.module && &holder.module->m_host != &host) {
        if (holder.module->IsShowing())
            holder.former.push_back(std::move(holder.module));
        holder.module.reset();
    }
    if (!holder.module) {
        holder.module = std::make_unique<Module>(host);
        qRemovePostRoutine(Release);
        qAddPostRoutine(Release);
    }
    return *holder.module;
}

bool Module::IsShowing() const
{
    const auto showing = [](const auto &screen) { return screen && screen->IsShowing(); };
    return m_detailTypes || showing(m_editor) || std::any_of(m_browse.begin(), m_browse.end(), showing) ||
           std::any_of(m_selection.begin(), m_selection.end(), showing);
}

void Module::Release()
{
    qRemovePostRoutine(Release);
    holder.module.reset();
    holder.former.clear();
}

void Module::Report(const std::exception_ptr &error) noexcept
{
    try {
        const QString text = Describe(error);
        if (holder.module)
            holder.module->m_host.messages.ShowMessage(text, host::MessageIcon::Error);
        else
            qCritical("%s", qPrintable(text));
    } catch (...) {
        qCritical("an error could not be shown");
    }
}

bool Module::MayOpenList(TSoftwarePart part)
{
    return host::Granted(m_host, part, host::TPermission::OpenList);
}

void Module::OpenGoodList()
{
    if (!MayOpenList(TSoftwarePart::Goods))
        return;
    auto &slot = m_browse[0] && m_browse[0]->IsShowing() ? m_browse[1] : m_browse[0];
    if (slot && slot->IsShowing()) {
        m_host.messages.ShowMessage(ListBusy, host::MessageIcon::Information);
        return;
    }
    if (!slot)
        slot = new TGood_List_FRM(m_host, TFormMode::DockedList, QString());
    slot->SetDetailEntry(OpeningDetailEntry(m_host));
    slot->SetKeyboardLayoutName(m_host.keyboard.GetKeyboardLayoutName());
    slot->SetFormTheme();
    slot->SetFormMode(TFormMode::DockedList);
    if (slot->RunModally())
        slot->ShowModally();
    else
        slot->ShowDocked();
}

TGood_List_FRM *Module::FreeSelectionSlot(const QString &openingText)
{
    for (auto &slot : m_selection) {
        if (!slot)
            slot = std::make_unique<TGood_List_FRM>(m_host, TFormMode::Selection, openingText);
        slot->SetDetailEntry(OpeningDetailEntry(m_host));
        if (!slot->IsShowing())
            return slot.get();
    }
    m_host.messages.ShowMessage(ListBusy, host::MessageIcon::Information);
    return nullptr;
}

int Module::SelectGood(const QString &param)
{
    if (!MayOpenList(TSoftwarePart::Goods))
        return 0;
    TGood_List_FRM *list = FreeSelectionSlot(param);
    if (!list)
        return 0;
    const SelectionParam parts = SplitSelectionParam(param);
    list->SetKeyboardLayoutName(m_host.keyboard.GetKeyboardLayoutName());
    list->SetFormTheme();
    list->SetLocateCode(parts.LocateCode);
    list->SetMultiSelect(false);
    list->SetFormMode(TFormMode::Selection);
    list->SetParameterText(parts.SelectionText);
    const bool chosen = list->ShowModally() == QDialog::Accepted;
    list->SetParameterText({});
    return chosen ? list->ChosenCode() : 0;
}

QString Module::SelectGoods(const QString &param)
{
    if (!MayOpenList(TSoftwarePart::Goods))
        return {};
    TGood_List_FRM *list = FreeSelectionSlot(param);
    if (!list)
        return {};
    list->SetKeyboardLayoutName(m_host.keyboard.GetKeyboardLayoutName());
    list->SetFormMode(TFormMode::Selection);
    list->SetFormTheme();
    list->SetLocateCode(param.isEmpty() ? QString() : SplitSelectionParam(param).LocateCode);
    list->SetMultiSelect(true);
    list->SetParameterText({});
    if (list->ShowModally() != QDialog::Accepted || list->ChosenCodes().isEmpty())
        return {};
    return list->ChosenCodes() + u',';
}

TGood_Get_FRM *Module::FreeEditor()
{
    if (!m_editor)
        m_editor = std::make_unique<TGood_Get_FRM>(m_host);
    m_editor->SetDetailEntry(OpeningDetailEntry(m_host));
    if (!m_editor->IsShowing())
        return m_editor.get();
    m_editor->raise();
    return nullptr;
}

void Module::CallGoodGet(int goodId, int kind)
{
    if (TGood_Get_FRM *editor = FreeEditor())
        editor->Open(goodId, kind == ReviewKind ? TFormMode::Review : TFormMode::Edit);
}

int Module::EditGood(int value)
{
    TGood_Get_FRM *editor = FreeEditor();
    if (!editor)
        return 0;
    if (value > 0)
        return editor->Open(value, TFormMode::Edit) == QDialog::Accepted ? 1 : 0;
    // Widened first: the absolute value of the smallest integer does not fit.
    editor->Open({}, TFormMode::New, QString::number(-static_cast<qint64>(value)));
    return 0;
}

void Module::OpenDetailTypes()
{
    if (m_detailTypes) {
        m_host.messages.ShowMessage(DetailTypesBusy, host::MessageIcon::Information);
        return;
    }
    TDetailTypes_List_FRM list(m_host, TFormMode::DockedList);
    const QScopedValueRollback showing(m_detailTypes, &list);
    list.ShowModally();
}

QString Module::SelectDetailTypes(const QString &openingText, const detail_types::Choice &choice)
{
    TDetailTypes_List_FRM list(m_host, TFormMode::Selection, openingText);
    list.SetChoice(choice);
    if (list.ShowModally() != QDialog::Accepted || list.SelectedCodes().isEmpty())
        return {};
    return list.SelectedCodes() + u',';
}

Module::LineDetails Module::EnterDetails(int mode, int key, const QString &openingText, host::Quantity wanted)
{
    const bool anew = mode == static_cast<int>(TFormMode::New);
    TEnter_Serial_FRM screen(m_host);
    screen.SetKeyboardLayoutName(m_host.keyboard.GetKeyboardLayoutName());
    if (wanted > 0)
        screen.SetWanted(wanted);
    const int result = screen.OpenText(anew ? QVariant() : key, anew ? TFormMode::New : TFormMode::Edit, openingText);
    return {!screen.Aborted(), result == QDialog::Accepted, screen.Result()};
}

Module::LineDetails Module::ExitDetails(int mode, int key, const QString &openingText)
{
    const bool edits = mode == static_cast<int>(TFormMode::Edit);
    const TFormMode opening = mode == static_cast<int>(TFormMode::New) ? TFormMode::New
                              : edits                                  ? TFormMode::Edit
                                                                       : TFormMode::Review;
    TExit_Serial_FRM screen(m_host);
    screen.SetKeyboardLayoutName(m_host.keyboard.GetKeyboardLayoutName());
    const int result = screen.OpenText(edits ? key : 0, opening, openingText);
    return {!screen.Aborted(), result == QDialog::Accepted, screen.Result()};
}

QString Module::SelectGoodDetails(const QString &caption, const good_detail::SelectOpening &opening)
{
    TGoodDetails_Select_FRM screen(m_host, Pack(opening), caption);
    screen.SetKeyboardLayoutName(m_host.keyboard.GetKeyboardLayoutName());
    screen.SetFormMode(TFormMode::Selection);
    screen.SetFormTheme();
    if (screen.ShowModally() != QDialog::Accepted || screen.Chosen().isEmpty())
        return {};
    return opening.Flag == 0 ? screen.Chosen() + u',' : screen.Chosen();
}

void Module::OpenDivisions()
{
    const host::TSettingRecord &settings = m_host.settings.SettingRecord();
    if (!settings.GoodDetails)
        return m_host.messages.ShowMessage(DetailsOff, host::MessageIcon::Information);
    if (!(settings.TwoUnitGoods && settings.TwoUnitVariableRatio) &&
        !(settings.SquareMetreGoods && settings.SquareMetreUnit != 0))
        return m_host.messages.ShowMessage(NothingDivisible, host::MessageIcon::Information);
    TGoodDetailDivision_List_FRM list(m_host, [&host = m_host](int mode) { return PickUnit(host, mode); });
    list.SetKeyboardLayoutName(m_host.keyboard.GetKeyboardLayoutName());
    list.SetFormTheme();
    list.ShowModally();
}

bool Module::DivideDetail(const good_detail::DivisionItemsOpening &opening)
{
    m_host.detailDivisions.CreateGoodDetailDivisionDetailTempTable();
    m_host.detailDivisions.CreateGoodDetailDivisionDetailItemsTempTable();
    TGoodDetailDivision_DetailItems_Get_FRM screen(m_host);
    screen.SetKeyboardLayoutName(m_host.keyboard.GetKeyboardLayoutName());
    screen.SetFormTheme();
    return screen.OpenText(Pack(opening)) == QDialog::Accepted;
}

int Module::OpenList(TSoftwarePart part)
{
    return MayOpenList(part) ? m_host.entities.Call_GroupList(part) : 0;
}

int Module::Select(TSoftwarePart part, const QString &text)
{
    return m_host.entities.Select_GroupList(part, text);
}

void Module::Edit(TSoftwarePart part, int id)
{
    if (id == 0)
        m_host.entities.New_Group(part);
    else
        m_host.entities.Edit_Group(part, id);
}

} // namespace entry
