#include "screens/good_editor/opening_fields.h"

#include "host/controls/entity_picker.h"
#include "host/controls/number_text.h"
#include "screens/good_editor/leave_watch.h"
#include "screens/good_editor/unit_arithmetic.h"
#include "ui_general_page.h"

#include <QtWidgets/QApplication>

using goods::OpeningEntry;
using goods::Quantity;
using goods::RuleTime;
using host::TSoftwarePart;

namespace {

/// Stands in the formula sentence until a unit is chosen.
QString UnnamedUnit()
{
    return QStringLiteral("عدد");
}

bool HasFocus(const QWidget *control)
{
    const QWidget *focus = QApplication::focusWidget();
    return focus != nullptr && (focus == control || control->isAncestorOf(focus));
}

} // namespace

OpeningFields::OpeningFields(Ui::GeneralPage &ui, host::Host &host, TGood_DM &data, QObject *parent)
    : QObject(parent), ui_(ui), host_(host), data_(data)
{
    // What is left of a total can be negative after the formula has grown.
    ui_.MeghdarJoz_EDT->setNegative(true);
    // The list of opening rows belongs to another screen.
    ui_.GoodFirstAsset_BTN->hide();
    BindPickers();
    BindLeaveRules();
    connect(ui_.Formool_CHK, &QCheckBox::clicked, this, &OpeningFields::FormulaClicked);
    connect(ui_.AvaBgPrd_EDT, &QLineEdit::textEdited, this, [this] { typedByHand_ = true; });
}

void OpeningFields::BindPickers()
{
    ui_.Unit_Entity1->SetSource(host_.entities, TSoftwarePart::Units);
    ui_.Unit_Entity2->SetSource(host_.entities, TSoftwarePart::Units);
    ui_.Store_Entity->SetSource(host_.entities, TSoftwarePart::Stores);
    ui_.Store_Entity->SetChooseGuard(
        [this] { return host::Granted(host_, TSoftwarePart::Stores, host::TPermission::OpenList); });
    for (const auto &[picker, name] :
         {std::pair(ui_.Unit_Entity1, ui_.Formool_Unit1_LBL), std::pair(ui_.Unit_Entity2, ui_.Formool_Unit2_LBL)}) {
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
        leaveRules_.emplace_back(edit, [this, rule] { (this->*rule)(); });
        goods::OnLeave(edit, time, leaveRules_.back().second);
    };
    bind(ui_.Formool_EDT, &OpeningFields::LeaveFormula, RuleTime::AtOnce);
    bind(ui_.AvaBgPrd_EDT, &OpeningFields::LeaveFirst, RuleTime::AtOnce);
    bind(ui_.MeghdarKol_EDT, &OpeningFields::LeaveParts, RuleTime::AtOnce);
    bind(ui_.MeghdarJoz_EDT, &OpeningFields::LeaveParts, RuleTime::AtOnce);
    bind(ui_.Meghdar_Joz_EDT, &OpeningFields::LeaveTotal, RuleTime::AtOnce);
    bind(ui_.GheymatJoz_EDT, &OpeningFields::LeaveSmallPrice, RuleTime::AtOnce);
    bind(ui_.GheymatKol_EDT, &OpeningFields::LeaveBigPrice, RuleTime::AtOnce);
    bind(ui_.AvaBgPrd2_EDT, &OpeningFields::LeaveSecond, RuleTime::Afterwards);
}

void OpeningFields::Clear()
{
    for (host::EntityPicker *picker : {ui_.Unit_Entity1, ui_.Unit_Entity2, ui_.Store_Entity})
        picker->Clear();
    for (host::NumericEdit *edit :
         {ui_.AvaBgPrd_EDT, ui_.AvaBgPrd2_EDT, ui_.MeghdarKol_EDT, ui_.MeghdarJoz_EDT, ui_.Meghdar_Joz_EDT})
        edit->clear();
    for (host::NumericEdit *edit : {ui_.CostBgPrd_EDT, ui_.GheymatKol_EDT, ui_.GheymatJoz_EDT, ui_.Formool_EDT})
        edit->SetNumber(0);
    ui_.Formool_CHK->setChecked(false);
    loaded_ = {};
    loadedStore_ = 0;
    typedByHand_ = false;
    SetDetailsEntered(false);
    ShowUnitNames();
    ShowEntry();
}

void OpeningFields::Show(const TGoodInfoRec &rec)
{
    SetDetailsEntered(false);
    ui_.Unit_Entity1->SetCode(rec.Unit);
    ui_.Unit_Entity2->SetCode(rec.Unit2);
    ui_.Store_Entity->SetCode(rec.Store);
    ui_.CostBgPrd_EDT->SetNumber(rec.CostBgPrd);
    ui_.AvaBgPrd_EDT->SetNumber(rec.AvaBgPrd);
    ui_.AvaBgPrd2_EDT->SetNumber(rec.AvaBgPrd2);
    ui_.Formool_EDT->SetNumber(rec.Meghdar_Formool);
    ui_.Formool_CHK->setChecked(rec.Meghdar_Formool != 0);
    loaded_ = {rec.AvaBgPrd, rec.AvaBgPrd2, rec.CostBgPrd};
    loadedStore_ = rec.Store;
    typedByHand_ = false;
    SplitIntoBigAndSmall();
    ShowUnitNames();
    ShowEntry();
}

void OpeningFields::Store(TGoodInfoRec &rec) const
{
    const goods::OpeningValues values = Values();
    rec.Unit = ui_.Unit_Entity1->Code();
    rec.AvaBgPrd = values.first;
    rec.AvaBgPrd2 = values.second;
    rec.CostBgPrd = values.price;
    rec.Store = static_cast<qint16>(StoreCode());
    // A shop that has switched second units off keeps what its goods had.
    if (!host_.settings.SettingRecord().TwoUnitGoods)
        return;
    rec.Unit2 = ui_.Unit_Entity2->Code();
    rec.Meghdar_Formool = FormulaOn() ? Formula() : 0;
}

goods::OpeningValues OpeningFields::Values() const
{
    switch (Entry()) {
    case OpeningEntry::BigAndSmall:
        return {ui_.Meghdar_Joz_EDT->Number(), ui_.MeghdarKol_EDT->Number(), ui_.GheymatJoz_EDT->Number()};
    case OpeningEntry::TwoUnits:
        return {ui_.AvaBgPrd_EDT->Number(), ui_.AvaBgPrd2_EDT->Number(), ui_.CostBgPrd_EDT->Number()};
    case OpeningEntry::OneUnit:
        break;
    }
    return {ui_.AvaBgPrd_EDT->Number(), HiddenSecond(), ui_.CostBgPrd_EDT->Number()};
}

Quantity OpeningFields::HiddenSecond() const
{
    const Quantity first = ui_.AvaBgPrd_EDT->Number();
    if (first == 0 || goods::SameQuantity(first, loaded_.first) || Formula() <= 0)
        return first == 0 ? 0 : loaded_.second;
    return goods::SecondQuantity(first, Formula(), host_.settings.SettingRecord().IntegerUnits);
}

int OpeningFields::StoreCode() const
{
    return ui_.Store_Entity->Code();
}

void OpeningFields::SetLocked(bool locked, bool severalStores)
{
    severalStores_ = severalStores;
    const bool enabled = !locked && !severalStores;
    for (QWidget *panel : {ui_.Opening_PNL, ui_.MeghdarJoz_CXGB})
        panel->setEnabled(enabled);
    // A new good needs its default store even when the opening period is closed.
    ui_.Store_PNL->setEnabled(enabled || StoreCode() == 0);
}

void OpeningFields::SetDetailsEntered(bool entered)
{
    detailsEntered_ = entered;
    for (host::NumericEdit *edit :
         {ui_.AvaBgPrd_EDT, ui_.AvaBgPrd2_EDT, ui_.MeghdarKol_EDT, ui_.MeghdarJoz_EDT, ui_.Meghdar_Joz_EDT})
        edit->setReadOnly(entered);
}

bool OpeningFields::FormulaOn() const
{
    return host_.settings.SettingRecord().TwoUnitGoods && ui_.Formool_CHK->isChecked();
}

Quantity OpeningFields::Formula() const
{
    return ui_.Formool_EDT->Number();
}

OpeningEntry OpeningFields::Entry() const
{
    const host::TSettingRecord &settings = host_.settings.SettingRecord();
    return goods::OpeningEntryFor(settings.TwoUnitGoods, settings.TwoUnitVariableRatio, FormulaOn());
}

void OpeningFields::ShowEntry()
{
    const OpeningEntry entry = Entry();
    const bool twoUnits = entry != OpeningEntry::OneUnit;
    for (QWidget *control : {static_cast<QWidget *>(ui_.Unit_Entity2), static_cast<QWidget *>(ui_.Unit_Entity2_LBL),
                             static_cast<QWidget *>(ui_.Formool_CHK)})
        control->setVisible(twoUnits);
    ui_.Formol_CXGB->setVisible(FormulaOn());
    ui_.MeghdarJoz_CXGB->setVisible(entry == OpeningEntry::BigAndSmall);
    ui_.Opening_PNL->setVisible(entry != OpeningEntry::BigAndSmall);
    ui_.AvaBgPrd2_EDT->setVisible(entry == OpeningEntry::TwoUnits);
    ui_.AvaBgPrd2_LBL->setVisible(entry == OpeningEntry::TwoUnits);
    ShowFormulaHints();
}

void OpeningFields::ShowUnitNames()
{
    for (const auto &[picker, name] :
         {std::pair(ui_.Unit_Entity1, ui_.Formool_Unit1_LBL), std::pair(ui_.Unit_Entity2, ui_.Formool_Unit2_LBL)})
        name->setText(picker->IsEmpty() ? UnnamedUnit() : picker->Name());
}

void OpeningFields::ShowFormulaHints()
{
    const QString formula = host::DisplayNumber(host::QuantityToText(Formula()));
    ui_.MeghdarJoz_LBL->setText(u'+' + formula + u'×');
    ui_.GheymatJoz_LBL->setText(u'=' + formula + u'÷');
    ui_.MeghdarJoz_LBL->setVisible(FormulaOn());
    ui_.GheymatJoz_LBL->setVisible(FormulaOn());
}

void OpeningFields::FormulaClicked(bool on)
{
    // The other way of typing goes on with what was typed so far.
    if (on)
        SplitIntoBigAndSmall();
    else if (!host_.settings.SettingRecord().TwoUnitVariableRatio)
        CopyBigAndSmall();
    ShowEntry();
    if (on)
        ui_.Formool_EDT->setFocus();
}

void OpeningFields::SplitIntoBigAndSmall()
{
    ui_.Meghdar_Joz_EDT->SetNumber(ui_.AvaBgPrd_EDT->Number());
    ui_.GheymatJoz_EDT->SetNumber(ui_.CostBgPrd_EDT->Number());
    if (Formula() > 0) {
        LeaveTotal();
        LeaveSmallPrice();
    }
}

void OpeningFields::CopyBigAndSmall()
{
    ui_.AvaBgPrd2_EDT->SetNumber(ui_.MeghdarKol_EDT->Number());
    ui_.AvaBgPrd_EDT->SetNumber(ui_.Meghdar_Joz_EDT->Number());
    ui_.CostBgPrd_EDT->SetNumber(ui_.GheymatJoz_EDT->Number());
}

void OpeningFields::AdoptBigAndSmall()
{
    if (Entry() == OpeningEntry::BigAndSmall)
        CopyBigAndSmall();
}

void OpeningFields::ZeroWhenEmpty()
{
    for (host::NumericEdit *edit : {ui_.AvaBgPrd_EDT, ui_.CostBgPrd_EDT, ui_.AvaBgPrd2_EDT})
        edit->ZeroWhenEmpty();
}

void OpeningFields::LeaveFormula()
{
    ui_.Formool_EDT->ZeroWhenEmpty();
    ShowFormulaHints();
    const Quantity total = ui_.Meghdar_Joz_EDT->Number();
    const bool applies = FormulaOn() && Formula() != 0 && total > 0;
    ui_.MeghdarJoz_EDT->SetNumber(applies ? goods::RoundedQuantity(total - Formula() * ui_.MeghdarKol_EDT->Number())
                                          : 0);
    // Otherwise passing through the price of the big unit would wipe out the small one's.
    if (ui_.GheymatJoz_EDT->Number() != 0)
        LeaveSmallPrice();
}

void OpeningFields::LeaveFirst()
{
    if (FormulaOn() && Formula() > 0 && !detailsEntered_)
        ui_.AvaBgPrd2_EDT->SetNumber(
            goods::SecondQuantity(ui_.AvaBgPrd_EDT->Number(), Formula(), host_.settings.SettingRecord().IntegerUnits));
}

void OpeningFields::LeaveSecond()
{
    if (!FormulaOn() || Formula() <= 0 || ui_.AvaBgPrd2_EDT->isReadOnly())
        return;
    const goods::OpeningValues values = Values();
    const Quantity candidate = goods::FirstQuantity(values.second, Formula());
    if (goods::SameQuantity(candidate, values.first))
        return;
    if (typedByHand_ && !host_.messages.Confirm(host::message::ReplaceTypedQuantity, {}))
        return;
    ui_.AvaBgPrd_EDT->SetNumber(candidate);
    typedByHand_ = false;
}

void OpeningFields::LeaveParts()
{
    if (Formula() <= 0 || ui_.MeghdarKol_EDT->isReadOnly())
        return;
    ui_.Meghdar_Joz_EDT->SetNumber(
        goods::JoinQuantity({ui_.MeghdarKol_EDT->Number(), ui_.MeghdarJoz_EDT->Number()}, Formula()));
}

void OpeningFields::LeaveTotal()
{
    if (Formula() <= 0 || ui_.Meghdar_Joz_EDT->isReadOnly())
        return;
    const goods::SplitQuantity parts = goods::SplitTotal(ui_.Meghdar_Joz_EDT->Number(), Formula());
    ui_.MeghdarKol_EDT->SetNumber(parts.big);
    ui_.MeghdarJoz_EDT->SetNumber(parts.small);
}

void OpeningFields::LeaveSmallPrice()
{
    ui_.GheymatKol_EDT->SetNumber(goods::BigUnitPrice(ui_.GheymatJoz_EDT->Number(), Formula()));
}

void OpeningFields::LeaveBigPrice()
{
    if (const auto price = goods::SmallUnitPrice(ui_.GheymatKol_EDT->Number(), Formula()))
        ui_.GheymatJoz_EDT->SetNumber(*price);
}

void OpeningFields::TakeTyped()
{
    for (const auto &[edit, rule] : leaveRules_)
        if (HasFocus(edit))
            rule();
    ui_.Store_Entity->Resolve();
}

goods::Refused OpeningFields::LeaveFocusedPicker()
{
    for (host::EntityPicker *picker : {ui_.Unit_Entity1, ui_.Unit_Entity2, ui_.Store_Entity})
        // An unknown second unit would be dropped silently; the other two are demanded later anyway.
        if ((HasFocus(picker) || picker == ui_.Unit_Entity2) && !picker->Resolve())
            return goods::ToldAlready(picker);
    return {};
}

goods::Refused OpeningFields::CheckUnit() const
{
    if (ui_.Unit_Entity1->Code() != 0)
        return {};
    return goods::RequiredField(ui_.Unit_Entity1, QStringLiteral("واحد کالا"));
}

goods::Refused OpeningFields::CheckPrice() const
{
    const goods::OpeningValues values = Values();
    const bool secondCounts = Entry() == OpeningEntry::TwoUnits && values.second != 0;
    if (values.price != 0 || (values.first == 0 && !secondCounts))
        return {};
    if (Entry() == OpeningEntry::BigAndSmall)
        return goods::RequiredField(ui_.GheymatJoz_EDT, QStringLiteral("قيمت اول دوره"));
    return goods::RequiredField(ui_.CostBgPrd_EDT, QStringLiteral("قيمت"));
}

goods::Refused OpeningFields::CheckStore()
{
    ui_.Store_Entity->Resolve();
    if (StoreCode() != 0)
        return {};
    return goods::RequiredField(ui_.Store_Entity, QStringLiteral("انبار"));
}

goods::Refused OpeningFields::CheckFormula() const
{
    if (!FormulaOn() || Formula() != 0)
        return {};
    return goods::RequiredField(ui_.Formool_EDT, QStringLiteral("فرمول کالا"));
}

goods::Refused OpeningFields::CheckSecondQuantity() const
{
    const bool editable = ui_.AvaBgPrd_EDT->isEnabled() && !ui_.AvaBgPrd_EDT->isReadOnly();
    if (!editable || Entry() != OpeningEntry::TwoUnits || !FormulaOn() ||
        goods::SecondFollowsFirst(Values(), Formula(), host_.settings.SettingRecord().IntegerUnits))
        return {};
    return goods::SmartMessage(ui_.AvaBgPrd2_EDT, host::message::SecondQuantityDiffers);
}

QWidget *OpeningFields::QuantityEdit() const
{
    return Entry() == OpeningEntry::BigAndSmall ? ui_.Meghdar_Joz_EDT : ui_.AvaBgPrd_EDT;
}
