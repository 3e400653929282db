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
    const auto typed = [this](std::initializer_list<host::NumericEdit *> edits, bool OpeningFields::*mark) {
        for (host::NumericEdit *edit : edits)
            connect(edit, &QLineEdit::textEdited, this, [this, mark] { this->*mark = true; });
    };
    typed({ui_.AvaBgPrd_EDT}, &OpeningFields::typedByHand_);
    typed({ui_.MeghdarKol_EDT, ui_.MeghdarJoz_EDT, ui_.Meghdar_Joz_EDT}, &OpeningFields::partsTyped_);
    typed({ui_.GheymatKol_EDT, ui_.GheymatJoz_EDT}, &OpeningFields::partPriceTyped_);
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
        goods::OnChanged(picker->Edit(), RuleTime::Afterwards, [picker = picker, name = name] {
            if (!picker->IsEmpty())
                name->setText(picker->Name());
        });
    }
}

void OpeningFields::BindLeaveRules()
{
    const auto bind = [this](host::NumericEdit *edit, void (OpeningFields::*rule)(), RuleTime time) {
        ruled_.push_back(edit);
        goods::OnChanged(edit, time, [this, rule] { (this->*rule)(); });
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
    for (host::NumericEdit *edit : {ui_.CostBgPrd_EDT, ui_.Formool_EDT})
        edit->SetNumber(0);
    ui_.Formool_CHK->setChecked(false);
    SetDetailsEntered(false);
    Begin({}, 0);
    // The quantities of a new good are empty, not 0.
    for (host::NumericEdit *edit :
         {ui_.AvaBgPrd_EDT, ui_.AvaBgPrd2_EDT, ui_.MeghdarKol_EDT, ui_.MeghdarJoz_EDT, ui_.Meghdar_Joz_EDT})
        edit->setText({});
}

void OpeningFields::Show(const TGoodInfoRec &rec)
{
    SetDetailsEntered(false);
    ui_.Unit_Entity1->SetCode(rec.Unit);
    ui_.Unit_Entity2->SetCode(rec.Unit2);
    ui_.Store_Entity->SetCode(rec.Store);
    ui_.CostBgPrd_EDT->SetNumber(rec.CostBgPrd);
    ui_.Formool_EDT->SetNumber(rec.Meghdar_Formool);
    ui_.Formool_CHK->setChecked(rec.Meghdar_Formool != 0);
    Begin({rec.AvaBgPrd, rec.AvaBgPrd2, rec.CostBgPrd}, rec.Store);
}

void OpeningFields::Begin(const goods::OpeningValues &values, int store)
{
    loaded_ = values;
    loadedStore_ = store;
    rowStore_ = 0;
    typedByHand_ = false;
    ui_.AvaBgPrd_EDT->SetNumber(values.first);
    ui_.AvaBgPrd2_EDT->SetNumber(values.second);
    SplitIntoBigAndSmall();
    ShowUnitNames();
    ShowEntry();
}

void OpeningFields::ShowTotals(Quantity first, Quantity second)
{
    loaded_.first = first;
    loaded_.second = second;
    ui_.AvaBgPrd_EDT->SetNumber(first);
    ui_.AvaBgPrd2_EDT->SetNumber(second);
    ui_.Meghdar_Joz_EDT->SetNumber(first);
    if (Formula() > 0)
        ShowParts({second, goods::RoundedQuantity(first - Formula() * second)});
}

void OpeningFields::Store(TGoodInfoRec &rec) const
{
    const goods::OpeningValues values = Values();
    rec.Unit = ui_.Unit_Entity1->Code();
    // The totals of several stores are shown, not entered.
    if (QuantitiesChanged()) {
        rec.AvaBgPrd = values.first;
        rec.AvaBgPrd2 = values.second;
    }
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
    goods::OpeningValues values{ui_.AvaBgPrd_EDT->Number(), ui_.AvaBgPrd2_EDT->Number(), ui_.CostBgPrd_EDT->Number()};
    switch (Entry()) {
    case OpeningEntry::BigAndSmall:
        // Big and small units only show the row until something is typed there: not every row can be told in them.
        if (partsTyped_) {
            values.first = ui_.Meghdar_Joz_EDT->Number();
            values.second = ui_.MeghdarKol_EDT->Number();
        }
        if (partPriceTyped_)
            values.price = ui_.GheymatJoz_EDT->Number();
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
    return !goods::SameQuantity(values.first, loaded_.first) || !goods::SameQuantity(values.second, loaded_.second);
}

bool OpeningFields::RowChanged() const
{
    return QuantitiesChanged() || (rowStore_ != 0 && RowStore() != rowStore_);
}

int OpeningFields::RowStore() const
{
    return rowStore_ != 0 && StoreCode() == loadedStore_ ? rowStore_ : StoreCode();
}

Quantity OpeningFields::HiddenSecond() const
{
    const Quantity first = ui_.AvaBgPrd_EDT->Number();
    if (goods::SameQuantity(first, loaded_.first))
        return loaded_.second;
    if (first == 0)
        return 0;
    return Formula() > 0 ? goods::SecondQuantity(first, Formula(), host_.settings.SettingRecord().IntegerUnits)
                         : loaded_.second;
}

int OpeningFields::StoreCode() const
{
    return ui_.Store_Entity->Code();
}

void OpeningFields::SetLocked(bool locked, bool severalStores)
{
    severalStores_ = severalStores;
    locked_ = locked || severalStores;
    for (QWidget *panel : {ui_.Opening_PNL, ui_.MeghdarJoz_CXGB})
        panel->setEnabled(!locked_);
    // A new good needs its default store even when the opening period is closed.
    ui_.Store_PNL->setEnabled(!locked_ || StoreCode() == 0);
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
    partsTyped_ = partPriceTyped_ = false;
    ui_.Meghdar_Joz_EDT->SetNumber(ui_.AvaBgPrd_EDT->Number());
    ui_.GheymatJoz_EDT->SetNumber(ui_.CostBgPrd_EDT->Number());
    LeaveSmallPrice();
    if (Formula() > 0) {
        LeaveTotal();
        return;
    }
    for (host::NumericEdit *part : {ui_.MeghdarKol_EDT, ui_.MeghdarJoz_EDT})
        part->setText({});
}

void OpeningFields::ShowParts(const goods::SplitQuantity &parts)
{
    ui_.MeghdarKol_EDT->SetNumber(parts.big);
    ui_.MeghdarJoz_EDT->SetNumber(parts.small);
}

void OpeningFields::CopyBigAndSmall()
{
    if (partsTyped_) {
        ui_.AvaBgPrd2_EDT->SetNumber(ui_.MeghdarKol_EDT->Number());
        ui_.AvaBgPrd_EDT->SetNumber(ui_.Meghdar_Joz_EDT->Number());
    }
    if (partPriceTyped_)
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
    const Quantity big = ui_.MeghdarKol_EDT->Number();
    const Quantity total = ui_.Meghdar_Joz_EDT->Number();
    const bool applies = FormulaOn() && Formula() != 0;
    if (applies && total == 0 && (big != 0 || ui_.MeghdarJoz_EDT->Number() != 0))
        LeaveParts(); // typed before there was a formula to join them by
    else
        ui_.MeghdarJoz_EDT->SetNumber(applies && total > 0 ? goods::RoundedQuantity(total - Formula() * big) : 0);
    partsTyped_ = partsTyped_ || !(locked_ || detailsEntered_);
    // Otherwise a change of the big unit's price would not meet the small one's.
    if (ui_.GheymatJoz_EDT->Number() != 0)
        LeaveSmallPrice();
}

void OpeningFields::LeaveFirst()
{
    if (FormulaOn() && Formula() > 0)
        ui_.AvaBgPrd2_EDT->SetNumber(
            goods::SecondQuantity(ui_.AvaBgPrd_EDT->Number(), Formula(), host_.settings.SettingRecord().IntegerUnits));
}

void OpeningFields::LeaveSecond()
{
    if (!FormulaOn() || Formula() <= 0)
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
    if (Formula() <= 0)
        return;
    ui_.Meghdar_Joz_EDT->SetNumber(
        goods::JoinQuantity({ui_.MeghdarKol_EDT->Number(), ui_.MeghdarJoz_EDT->Number()}, Formula()));
}

void OpeningFields::LeaveTotal()
{
    if (Formula() > 0)
        ShowParts(goods::SplitTotal(ui_.Meghdar_Joz_EDT->Number(), Formula()));
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
    for (host::NumericEdit *edit : ruled_)
        if (HasFocus(edit))
            goods::LeaveNow(edit);
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
    // Where the price is locked nobody could mend it.
    if (values.price != 0 || locked_ || (values.first == 0 && !secondCounts))
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
