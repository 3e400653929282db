#include "screens/good_editor/opening_fields.h"

#include "host/controls/entity_picker.h"
#include "host/controls/number_text.h"
#include "rules/unit_arithmetic.h"
#include "screens/good_editor/leave_watch.h"
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
    connect(m_ui.AvaBgPrd_EDT, &QLineEdit::textEdited, this, [this] { m_typedByHand = true; });
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
        goods::OnLeave(picker->focusProxy(), RuleTime::Afterwards, [picker = picker, name = name] {
            if (!picker->IsEmpty())
                name->setText(picker->Name());
        });
    }
}

void OpeningFields::BindLeaveRules()
{
    const auto bind = [this](QWidget *edit, void (OpeningFields::*rule)(), RuleTime time) {
        m_leaveRules.emplace_back(edit, [this, rule] { (this->*rule)(); });
        goods::OnLeave(edit, time, m_leaveRules.back().second);
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
    for (host::NumericEdit *edit :
         {m_ui.AvaBgPrd_EDT, m_ui.AvaBgPrd2_EDT, m_ui.MeghdarKol_EDT, m_ui.MeghdarJoz_EDT, m_ui.Meghdar_Joz_EDT})
        edit->clear();
    for (host::NumericEdit *edit : {m_ui.CostBgPrd_EDT, m_ui.GheymatKol_EDT, m_ui.GheymatJoz_EDT, m_ui.Formool_EDT})
        edit->SetNumber(0);
    m_ui.Formool_CHK->setChecked(false);
    m_loaded = {};
    m_loadedStore = 0;
    m_typedByHand = false;
    SetDetailsEntered(false);
    ShowUnitNames();
    ShowEntry();
}

void OpeningFields::Show(const TGoodInfoRec &rec)
{
    SetDetailsEntered(false);
    m_ui.Unit_Entity1->SetCode(rec.Unit);
    m_ui.Unit_Entity2->SetCode(rec.Unit2);
    m_ui.Store_Entity->SetCode(rec.Store);
    m_ui.CostBgPrd_EDT->SetNumber(rec.CostBgPrd);
    m_ui.AvaBgPrd_EDT->SetNumber(rec.AvaBgPrd);
    m_ui.AvaBgPrd2_EDT->SetNumber(rec.AvaBgPrd2);
    m_ui.Formool_EDT->SetNumber(rec.Meghdar_Formool);
    m_ui.Formool_CHK->setChecked(rec.Meghdar_Formool != 0);
    m_loaded = {rec.AvaBgPrd, rec.AvaBgPrd2, rec.CostBgPrd};
    m_loadedStore = rec.Store;
    m_typedByHand = false;
    SplitIntoBigAndSmall();
    ShowUnitNames();
    ShowEntry();
}

void OpeningFields::Store(TGoodInfoRec &rec) const
{
    const goods::OpeningValues values = Values();
    rec.Unit = m_ui.Unit_Entity1->Code();
    rec.AvaBgPrd = values.first;
    rec.AvaBgPrd2 = values.second;
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
    switch (Entry()) {
    case OpeningEntry::BigAndSmall:
        return {m_ui.Meghdar_Joz_EDT->Number(), m_ui.MeghdarKol_EDT->Number(), m_ui.GheymatJoz_EDT->Number()};
    case OpeningEntry::TwoUnits:
        return {m_ui.AvaBgPrd_EDT->Number(), m_ui.AvaBgPrd2_EDT->Number(), m_ui.CostBgPrd_EDT->Number()};
    case OpeningEntry::OneUnit:
        break;
    }
    return {m_ui.AvaBgPrd_EDT->Number(), HiddenSecond(), m_ui.CostBgPrd_EDT->Number()};
}

Quantity OpeningFields::HiddenSecond() const
{
    const Quantity first = m_ui.AvaBgPrd_EDT->Number();
    if (first == 0 || goods::SameQuantity(first, m_loaded.first) || Formula() <= 0)
        return first == 0 ? 0 : m_loaded.second;
    return goods::SecondQuantity(first, Formula(), m_host.settings.SettingRecord().IntegerUnits);
}

int OpeningFields::StoreCode() const
{
    return m_ui.Store_Entity->Code();
}

void OpeningFields::SetLocked(bool locked, bool severalStores)
{
    m_severalStores = severalStores;
    const bool enabled = !locked && !severalStores;
    for (QWidget *panel : {m_ui.Opening_PNL, m_ui.MeghdarJoz_CXGB})
        panel->setEnabled(enabled);
    // A new good needs its default store even when the opening period is closed.
    m_ui.Store_PNL->setEnabled(enabled || StoreCode() == 0);
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
    m_ui.Meghdar_Joz_EDT->SetNumber(m_ui.AvaBgPrd_EDT->Number());
    m_ui.GheymatJoz_EDT->SetNumber(m_ui.CostBgPrd_EDT->Number());
    if (Formula() > 0) {
        LeaveTotal();
        LeaveSmallPrice();
    }
}

void OpeningFields::CopyBigAndSmall()
{
    m_ui.AvaBgPrd2_EDT->SetNumber(m_ui.MeghdarKol_EDT->Number());
    m_ui.AvaBgPrd_EDT->SetNumber(m_ui.Meghdar_Joz_EDT->Number());
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
    const Quantity total = m_ui.Meghdar_Joz_EDT->Number();
    const bool applies = FormulaOn() && Formula() != 0 && total > 0;
    m_ui.MeghdarJoz_EDT->SetNumber(applies ? goods::RoundedQuantity(total - Formula() * m_ui.MeghdarKol_EDT->Number())
                                           : 0);
    // Otherwise passing through the price of the big unit would wipe out the small one's.
    if (m_ui.GheymatJoz_EDT->Number() != 0)
        LeaveSmallPrice();
}

void OpeningFields::LeaveFirst()
{
    if (FormulaOn() && Formula() > 0 && !m_detailsEntered)
        m_ui.AvaBgPrd2_EDT->SetNumber(goods::SecondQuantity(m_ui.AvaBgPrd_EDT->Number(), Formula(),
                                                            m_host.settings.SettingRecord().IntegerUnits));
}

void OpeningFields::LeaveSecond()
{
    if (!FormulaOn() || Formula() <= 0 || m_ui.AvaBgPrd2_EDT->isReadOnly())
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
    if (Formula() <= 0 || m_ui.MeghdarKol_EDT->isReadOnly())
        return;
    m_ui.Meghdar_Joz_EDT->SetNumber(
        goods::JoinQuantity({m_ui.MeghdarKol_EDT->Number(), m_ui.MeghdarJoz_EDT->Number()}, Formula()));
}

void OpeningFields::LeaveTotal()
{
    if (Formula() <= 0 || m_ui.Meghdar_Joz_EDT->isReadOnly())
        return;
    const goods::SplitQuantity parts = goods::SplitTotal(m_ui.Meghdar_Joz_EDT->Number(), Formula());
    m_ui.MeghdarKol_EDT->SetNumber(parts.big);
    m_ui.MeghdarJoz_EDT->SetNumber(parts.small);
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
    for (const auto &[edit, rule] : m_leaveRules)
        if (HasFocus(edit))
            rule();
    m_ui.Store_Entity->Resolve();
}

host::Refused OpeningFields::LeaveFocusedPicker()
{
    for (host::EntityPicker *picker : {m_ui.Unit_Entity1, m_ui.Unit_Entity2, m_ui.Store_Entity})
        // An unknown second unit would be dropped silently; the other two are demanded later anyway.
        if ((HasFocus(picker) || picker == m_ui.Unit_Entity2) && !picker->Resolve())
            return host::ToldAlready(picker);
    return {};
}

host::Refused OpeningFields::CheckUnit() const
{
    if (m_ui.Unit_Entity1->Code() != 0)
        return {};
    return host::Required(m_ui.Unit_Entity1, u"واحد کالا"_s);
}

host::Refused OpeningFields::CheckPrice() const
{
    const goods::OpeningValues values = Values();
    const bool secondCounts = Entry() == OpeningEntry::TwoUnits && values.second != 0;
    if (values.price != 0 || (values.first == 0 && !secondCounts))
        return {};
    if (Entry() == OpeningEntry::BigAndSmall)
        return host::Required(m_ui.GheymatJoz_EDT, u"قيمت اول دوره"_s);
    return host::Required(m_ui.CostBgPrd_EDT, u"قيمت"_s);
}

host::Refused OpeningFields::CheckStore()
{
    m_ui.Store_Entity->Resolve();
    if (StoreCode() != 0)
        return {};
    return host::Required(m_ui.Store_Entity, u"انبار"_s);
}

host::Refused OpeningFields::CheckFormula() const
{
    if (!FormulaOn() || Formula() != 0)
        return {};
    return host::Required(m_ui.Formool_EDT, u"فرمول کالا"_s);
}

host::Refused OpeningFields::CheckSecondQuantity() const
{
    const bool editable = m_ui.AvaBgPrd_EDT->isEnabled() && !m_ui.AvaBgPrd_EDT->isReadOnly();
    if (!editable || Entry() != OpeningEntry::TwoUnits || !FormulaOn() ||
        goods::SecondFollowsFirst(Values(), Formula(), m_host.settings.SettingRecord().IntegerUnits))
        return {};
    return host::SmartMessage(m_ui.AvaBgPrd2_EDT, host::message::SecondQuantityDiffers);
}

QWidget *OpeningFields::QuantityEdit() const
{
    return Entry() == OpeningEntry::BigAndSmall ? m_ui.Meghdar_Joz_EDT : m_ui.AvaBgPrd_EDT;
}
