#include "screens/good_editor/opening_fields.h"

#include "host/controls/entity_picker.h"
#include "host/controls/number_text.h"
#include "rules/unit_arithmetic.h"
#include "screens/shared/leave_watch.h"
#include "ui_general_page.h"

#include <QApplication>

using namespace Qt::StringLiterals;

using goods::OpeningEntry;
using goods::Quantity;
using goods::RuleTime;
using host::TSoftwarePart;

namespace {

/// Stands in the formula sentence until a unit is chosen.
QString UnnamedUnit()
{
    return u"عدد"_s;
}

bool HasFocus(const QWidget *control)
{
    const QWidget *focus = QApplication::focusWidget();
    return focus != nullptr && (focus == control || control->isAncestorOf(focus));
}

} // namespace

OpeningFields::OpeningFields(Ui::GeneralPage &ui, host::Host &host, TGood_DM &data, QObject *parent)
    : QObject(parent), m_ui(ui), m_host(host), m_data(data)
{
    // What is left of a total can be negative after the formula has grown.
    m_ui.MeghdarJoz_EDT->setNegative(true);
    // The list of opening rows belongs to another screen.
    m_ui.GoodFirstAsset_BTN->hide();
    BindPickers();
    BindLeaveRules();
    connect(m_ui.Formool_CHK, &QCheckBox::clicked, this, &OpeningFields::FormulaClicked);
    const auto typed = [this](std::initializer_list<host::NumericEdit *> edits, bool OpeningFields::*mark) {
        for (host::NumericEdit *edit : edits)
            connect(edit, &QLineEdit::textEdited, this, [this, mark] { this->*mark = true; });
    };
    typed({m_ui.AvaBgPrd_EDT}, &OpeningFields::m_typedByHand);
    typed({m_ui.MeghdarKol_EDT, m_ui.MeghdarJoz_EDT, m_ui.Meghdar_Joz_EDT}, &OpeningFields::m_partsTyped);
    typed({m_ui.GheymatKol_EDT, m_ui.GheymatJoz_EDT}, &OpeningFields::m_partPriceTyped);
}

void OpeningFields::BindPickers()
{
    m_ui.Unit_Entity1->SetSource(m_host.entities, TSoftwarePart::Units);
    m_ui.Unit_Entity2->SetSource(m_host.entities, TSoftwarePart::Units);
    m_ui.Store_Entity->SetSource(m_host.entities, TSoftwarePart::Stores);
    m_ui.Store_Entity->SetChooseGuard(
        [this] { return host::Granted(m_host, TSoftwarePart::Stores, host::TPermission::OpenList); });
    for (const auto &[picker, name] :
         {std::pair(m_ui.Unit_Entity1, m_ui.Formool_Unit1_LBL), std::pair(m_ui.Unit_Entity2, m_ui.Formool_Unit2_LBL)}) {
        connect(picker, &host::EntityPicker::Changed, this,
                [picker = picker, name = name] { name->setText(picker->Name()); });
        goods::OnChanged(picker->Edit(), RuleTime::Afterwards, [picker = picker, name = name] {
            if (!picker->IsEmpty())
                name->setText(picker->Name());
        });
    }
}

void OpeningFields::BindLeaveRules()
{
    const auto bind = [this](host::NumericEdit *edit, void (OpeningFields::*rule)(), RuleTime time) {
        m_ruled.push_back(edit);
        goods::OnChanged(edit, time, [this, rule] { (this->*rule)(); });
    };
    bind(m_ui.Formool_EDT, &OpeningFields::LeaveFormula, RuleTime::AtOnce);
    bind(m_ui.AvaBgPrd_EDT, &OpeningFields::LeaveFirst, RuleTime::AtOnce);
    bind(m_ui.MeghdarKol_EDT, &OpeningFields::LeaveParts, RuleTime::AtOnce);
    bind(m_ui.MeghdarJoz_EDT, &OpeningFields::LeaveParts, RuleTime::AtOnce);
    bind(m_ui.Meghdar_Joz_EDT, &OpeningFields::LeaveTotal, RuleTime::AtOnce);
    bind(m_ui.GheymatJoz_EDT, &OpeningFields::LeaveSmallPrice, RuleTime::AtOnce);
    bind(m_ui.GheymatKol_EDT, &OpeningFields::LeaveBigPrice, RuleTime::AtOnce);
    bind(m_ui.AvaBgPrd2_EDT, &OpeningFields::LeaveSecond, RuleTime::Afterwards);
}

void OpeningFields::Clear()
{
    for (host::EntityPicker *picker : {m_ui.Unit_Entity1, m_ui.Unit_Entity2, m_ui.Store_Entity})
        picker->Clear();
    for (host::NumericEdit *edit : {m_ui.CostBgPrd_EDT, m_ui.Formool_EDT})
        edit->SetNumber(0);
    m_ui.Formool_CHK->setChecked(false);
    SetDetailsEntered(false);
    Begin({}, 0);
    // The quantities of a new good are empty, not 0.
    for (host::NumericEdit *edit :
         {m_ui.AvaBgPrd_EDT, m_ui.AvaBgPrd2_EDT, m_ui.MeghdarKol_EDT, m_ui.MeghdarJoz_EDT, m_ui.Meghdar_Joz_EDT})
        edit->setText({});
}

void OpeningFields::Show(const TGoodInfoRec &rec)
{
    SetDetailsEntered(false);
    m_ui.Unit_Entity1->SetCode(rec.Unit);
    m_ui.Unit_Entity2->SetCode(rec.Unit2);
    m_ui.Store_Entity->SetCode(rec.Store);
    m_ui.CostBgPrd_EDT->SetNumber(rec.CostBgPrd);
    m_ui.Formool_EDT->SetNumber(rec.Meghdar_Formool);
    m_ui.Formool_CHK->setChecked(rec.Meghdar_Formool != 0);
    Begin({rec.AvaBgPrd, rec.AvaBgPrd2, rec.CostBgPrd}, rec.Store);
}

void OpeningFields::Begin(const goods::OpeningValues &values, int store)
{
    m_loaded = values;
    m_loadedStore = store;
    m_rowStore = 0;
    m_typedByHand = false;
    m_ui.AvaBgPrd_EDT->SetNumber(values.first);
    m_ui.AvaBgPrd2_EDT->SetNumber(values.second);
    SplitIntoBigAndSmall();
    ShowUnitNames();
    ShowEntry();
}

void OpeningFields::ShowTotals(Quantity first, Quantity second)
{
    m_loaded.first = first;
    m_loaded.second = second;
    m_ui.AvaBgPrd_EDT->SetNumber(first);
    m_ui.AvaBgPrd2_EDT->SetNumber(second);
    m_ui.Meghdar_Joz_EDT->SetNumber(first);
    if (Formula() > 0)
        ShowParts({second, goods::RoundedQuantity(first - Formula() * second)});
}

void OpeningFields::Store(TGoodInfoRec &rec) const
{
    const goods::OpeningValues values = Values();
    rec.Unit = m_ui.Unit_Entity1->Code();
    // The totals of several stores are shown, not entered.
    if (QuantitiesChanged()) {
        rec.AvaBgPrd = values.first;
        rec.AvaBgPrd2 = values.second;
    }
    rec.CostBgPrd = values.price;
    rec.Store = static_cast<qint16>(StoreCode());
    // A shop that has switched second units off keeps what its goods had.
    if (!m_host.settings.SettingRecord().TwoUnitGoods)
        return;
    rec.Unit2 = m_ui.Unit_Entity2->Code();
    rec.Meghdar_Formool = FormulaOn() ? Formula() : 0;
}

goods::OpeningValues OpeningFields::Values() const
{
    goods::OpeningValues values{m_ui.AvaBgPrd_EDT->Number(), m_ui.AvaBgPrd2_EDT->Number(),
                                m_ui.CostBgPrd_EDT->Number()};
    switch (Entry()) {
    case OpeningEntry::BigAndSmall:
        // Big and small units only show the row until something is typed there: not every row can be told in them.
        if (m_partsTyped) {
            values.first = m_ui.Meghdar_Joz_EDT->Number();
            values.second = m_ui.MeghdarKol_EDT->Number();
        }
        if (m_partPriceTyped)
            values.price = m_ui.GheymatJoz_EDT->Number();
        break;
    case OpeningEntry::TwoUnits:
        break;
    case OpeningEntry::OneUnit:
        values.second = HiddenSecond();
        break;
    }
    return values;
}

bool OpeningFields::QuantitiesChanged() const
{
    const goods::OpeningValues values = Values();
    return !goods::SameQuantity(values.first, m_loaded.first) || !goods::SameQuantity(values.second, m_loaded.second);
}

bool OpeningFields::RowChanged() const
{
    return QuantitiesChanged() || (m_rowStore != 0 && RowStore() != m_rowStore);
}

int OpeningFields::RowStore() const
{
    return m_rowStore != 0 && StoreCode() == m_loadedStore ? m_rowStore : StoreCode();
}

Quantity OpeningFields::HiddenSecond() const
{
    const Quantity first = m_ui.AvaBgPrd_EDT->Number();
    if (goods::SameQuantity(first, m_loaded.first))
        return m_loaded.second;
    if (first == 0)
        return 0;
    return Formula() > 0 ? goods::SecondQuantity(first, Formula(), m_host.settings.SettingRecord().IntegerUnits)
                         : m_loaded.second;
}

int OpeningFields::StoreCode() const
{
    return m_ui.Store_Entity->Code();
}

void OpeningFields::SetLocked(bool locked, bool severalStores)
{
    m_severalStores = severalStores;
    m_locked = locked || severalStores;
    for (QWidget *panel : {m_ui.Opening_PNL, m_ui.MeghdarJoz_CXGB})
        panel->setEnabled(!m_locked);
    // A new good needs its default store even when the opening period is closed.
    m_ui.Store_PNL->setEnabled(!m_locked || StoreCode() == 0);
}

void OpeningFields::SetDetailsEntered(bool entered)
{
    m_detailsEntered = entered;
    for (host::NumericEdit *edit :
         {m_ui.AvaBgPrd_EDT, m_ui.AvaBgPrd2_EDT, m_ui.MeghdarKol_EDT, m_ui.MeghdarJoz_EDT, m_ui.Meghdar_Joz_EDT})
        edit->setReadOnly(entered);
}

bool OpeningFields::FormulaOn() const
{
    return m_host.settings.SettingRecord().TwoUnitGoods && m_ui.Formool_CHK->isChecked();
}

Quantity OpeningFields::Formula() const
{
    return m_ui.Formool_EDT->Number();
}

OpeningEntry OpeningFields::Entry() const
{
    const host::TSettingRecord &settings = m_host.settings.SettingRecord();
    return goods::OpeningEntryFor(settings.TwoUnitGoods, settings.TwoUnitVariableRatio, FormulaOn());
}

void OpeningFields::ShowEntry()
{
    const OpeningEntry entry = Entry();
    const bool twoUnits = entry != OpeningEntry::OneUnit;
    for (QWidget *control : {static_cast<QWidget *>(m_ui.Unit_Entity2), static_cast<QWidget *>(m_ui.Unit_Entity2_LBL),
                             static_cast<QWidget *>(m_ui.Formool_CHK)})
        control->setVisible(twoUnits);
    m_ui.Formol_CXGB->setVisible(FormulaOn());
    m_ui.MeghdarJoz_CXGB->setVisible(entry == OpeningEntry::BigAndSmall);
    m_ui.Opening_PNL->setVisible(entry != OpeningEntry::BigAndSmall);
    m_ui.AvaBgPrd2_EDT->setVisible(entry == OpeningEntry::TwoUnits);
    m_ui.AvaBgPrd2_LBL->setVisible(entry == OpeningEntry::TwoUnits);
    ShowFormulaHints();
}

void OpeningFields::ShowUnitNames()
{
    for (const auto &[picker, name] :
         {std::pair(m_ui.Unit_Entity1, m_ui.Formool_Unit1_LBL), std::pair(m_ui.Unit_Entity2, m_ui.Formool_Unit2_LBL)})
        name->setText(picker->IsEmpty() ? UnnamedUnit() : picker->Name());
}

void OpeningFields::ShowFormulaHints()
{
    const QString formula = host::DisplayNumber(host::QuantityToText(Formula()));
    m_ui.MeghdarJoz_LBL->setText(u'+' + formula + u'×');
    m_ui.GheymatJoz_LBL->setText(u'=' + formula + u'÷');
    m_ui.MeghdarJoz_LBL->setVisible(FormulaOn());
    m_ui.GheymatJoz_LBL->setVisible(FormulaOn());
}

void OpeningFields::FormulaClicked(bool on)
{
    // The other way of typing goes on with what was typed so far.
    if (on)
        SplitIntoBigAndSmall();
    else if (!m_host.settings.SettingRecord().TwoUnitVariableRatio)
        CopyBigAndSmall();
    ShowEntry();
    if (on)
        m_ui.Formool_EDT->setFocus();
}

void OpeningFields::SplitIntoBigAndSmall()
{
    m_partsTyped = m_partPriceTyped = false;
    m_ui.Meghdar_Joz_EDT->SetNumber(m_ui.AvaBgPrd_EDT->Number());
    m_ui.GheymatJoz_EDT->SetNumber(m_ui.CostBgPrd_EDT->Number());
    LeaveSmallPrice();
    if (Formula() > 0) {
        LeaveTotal();
        return;
    }
    for (host::NumericEdit *part : {m_ui.MeghdarKol_EDT, m_ui.MeghdarJoz_EDT})
        part->setText({});
}

void OpeningFields::ShowParts(const goods::SplitQuantity &parts)
{
    m_ui.MeghdarKol_EDT->SetNumber(parts.big);
    m_ui.MeghdarJoz_EDT->SetNumber(parts.small);
}

void OpeningFields::CopyBigAndSmall()
{
    if (m_partsTyped) {
        m_ui.AvaBgPrd2_EDT->SetNumber(m_ui.MeghdarKol_EDT->Number());
        m_ui.AvaBgPrd_EDT->SetNumber(m_ui.Meghdar_Joz_EDT->Number());
    }
    if (m_partPriceTyped)
        m_ui.CostBgPrd_EDT->SetNumber(m_ui.GheymatJoz_EDT->Number());
}

void OpeningFields::AdoptBigAndSmall()
{
    if (Entry() == OpeningEntry::BigAndSmall)
        CopyBigAndSmall();
}

void OpeningFields::ZeroWhenEmpty()
{
    for (host::NumericEdit *edit : {m_ui.AvaBgPrd_EDT, m_ui.CostBgPrd_EDT, m_ui.AvaBgPrd2_EDT})
        edit->ZeroWhenEmpty();
}

void OpeningFields::LeaveFormula()
{
    m_ui.Formool_EDT->ZeroWhenEmpty();
    ShowFormulaHints();
    const Quantity big = m_ui.MeghdarKol_EDT->Number();
    const Quantity total = m_ui.Meghdar_Joz_EDT->Number();
    const bool applies = FormulaOn() && Formula() != 0;
    if (applies && total == 0 && (big != 0 || m_ui.MeghdarJoz_EDT->Number() != 0))
        LeaveParts(); // typed before there was a formula to join them by
    else
        m_ui.MeghdarJoz_EDT->SetNumber(applies && total > 0 ? goods::RoundedQuantity(total - Formula() * big) : 0);
    m_partsTyped = m_partsTyped || !(m_locked || m_detailsEntered);
    // Otherwise a change of the big unit's price would not meet the small one's.
    if (m_ui.GheymatJoz_EDT->Number() != 0)
        LeaveSmallPrice();
}

void OpeningFields::LeaveFirst()
{
    if (FormulaOn() && Formula() > 0)
        m_ui.AvaBgPrd2_EDT->SetNumber(goods::SecondQuantity(m_ui.AvaBgPrd_EDT->Number(), Formula(),
                                                            m_host.settings.SettingRecord().IntegerUnits));
}

void OpeningFields::LeaveSecond()
{
    if (!FormulaOn() || Formula() <= 0)
        return;
    const goods::OpeningValues values = Values();
    const Quantity candidate = goods::FirstQuantity(values.second, Formula());
    if (goods::SameQuantity(candidate, values.first))
        return;
    if (m_typedByHand && !m_host.messages.Confirm(host::message::ReplaceTypedQuantity, {}))
        return;
    m_ui.AvaBgPrd_EDT->SetNumber(candidate);
    m_typedByHand = false;
}

void OpeningFields::LeaveParts()
{
    if (Formula() <= 0)
        return;
    m_ui.Meghdar_Joz_EDT->SetNumber(
        goods::JoinQuantity({m_ui.MeghdarKol_EDT->Number(), m_ui.MeghdarJoz_EDT->Number()}, Formula()));
}

void OpeningFields::LeaveTotal()
{
    if (Formula() > 0)
        ShowParts(goods::SplitTotal(m_ui.Meghdar_Joz_EDT->Number(), Formula()));
}

void OpeningFields::LeaveSmallPrice()
{
    m_ui.GheymatKol_EDT->SetNumber(goods::BigUnitPrice(m_ui.GheymatJoz_EDT->Number(), Formula()));
}

void OpeningFields::LeaveBigPrice()
{
    if (const auto price = goods::SmallUnitPrice(m_ui.GheymatKol_EDT->Number(), Formula()))
        m_ui.GheymatJoz_EDT->SetNumber(*price);
}

void OpeningFields::TakeTyped()
{
    for (host::NumericEdit *edit : m_ruled)
        if (HasFocus(edit))
            goods::LeaveNow(edit);
    m_ui.Store_Entity->Resolve();
}

goods::Refused OpeningFields::LeaveFocusedPicker()
{
    for (host::EntityPicker *picker : {m_ui.Unit_Entity1, m_ui.Unit_Entity2, m_ui.Store_Entity})
        // An unknown second unit would be dropped silently; the other two are demanded later anyway.
        if ((HasFocus(picker) || picker == m_ui.Unit_Entity2) && !picker->Resolve())
            return goods::ToldAlready(picker);
    return {};
}

goods::Refused OpeningFields::CheckUnit() const
{
    if (m_ui.Unit_Entity1->Code() != 0)
        return {};
    return goods::RequiredField(m_ui.Unit_Entity1, u"واحد کالا"_s);
}

goods::Refused OpeningFields::CheckPrice() const
{
    const goods::OpeningValues values = Values();
    const bool secondCounts = Entry() == OpeningEntry::TwoUnits && values.second != 0;
    // Where the price is locked nobody could mend it.
    if (values.price != 0 || m_locked || (values.first == 0 && !secondCounts))
        return {};
    if (Entry() == OpeningEntry::BigAndSmall)
        return goods::RequiredField(m_ui.GheymatJoz_EDT, u"قيمت اول دوره"_s);
    return goods::RequiredField(m_ui.CostBgPrd_EDT, u"قيمت"_s);
}

goods::Refused OpeningFields::CheckStore()
{
    m_ui.Store_Entity->Resolve();
    if (StoreCode() != 0)
        return {};
    return goods::RequiredField(m_ui.Store_Entity, u"انبار"_s);
}

goods::Refused OpeningFields::CheckFormula() const
{
    if (!FormulaOn() || Formula() != 0)
        return {};
    return goods::RequiredField(m_ui.Formool_EDT, u"فرمول کالا"_s);
}

goods::Refused OpeningFields::CheckSecondQuantity() const
{
    const bool editable = m_ui.AvaBgPrd_EDT->isEnabled() && !m_ui.AvaBgPrd_EDT->isReadOnly();
    if (!editable || Entry() != OpeningEntry::TwoUnits || !FormulaOn() ||
        goods::SecondFollowsFirst(Values(), Formula(), m_host.settings.SettingRecord().IntegerUnits))
        return {};
    return goods::SmartMessage(m_ui.AvaBgPrd2_EDT, host::message::SecondQuantityDiffers);
}

QWidget *OpeningFields::QuantityEdit() const
{
    return Entry() == OpeningEntry::BigAndSmall ? m_ui.Meghdar_Joz_EDT : m_ui.AvaBgPrd_EDT;
}
