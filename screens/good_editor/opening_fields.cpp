#include "screens/good_editor/opening_fields.h"

#include "host/controls/entity_picker.h"
#include "host/controls/number_text.h"
#include "rules/unit_arithmetic.h"
#include "screens/shared/leave_watch.h"
#include "ui_general_page.h"

#include <QApplication>

using namespace Qt::StringLiterals;

using goods::Quantity;
using goods::QuantityEntry;
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

OpeningFields::OpeningFields(Ui::GeneralPage &ui, host::Host &host, QObject *parent)
    : QObject(parent), m_ui(ui), m_host(host)
{
    BindPickers();
    PlaceQuantities();
    BindPrices();
    goods::OnChanged(m_ui.Formool_EDT, RuleTime::AtOnce, [this] { LeaveFormula(); });
    connect(m_ui.Formool_CHK, &QCheckBox::clicked, this, &OpeningFields::FormulaClicked);
}

void OpeningFields::BindPickers()
{
    m_ui.Unit_Entity1->SetSource(m_host.entities, TSoftwarePart::Units);
    m_ui.Unit_Entity2->SetSource(m_host.entities, TSoftwarePart::Units);
    m_ui.Store_Entity->SetSource(m_host.entities, TSoftwarePart::Stores);
    connect(m_ui.Store_Entity, &host::EntityPicker::Changed, this, &OpeningFields::StoreChanged);
    connect(m_ui.Quantities, &UnitQuantities::DetailsWanted, this, &OpeningFields::DetailsWanted);
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

void OpeningFields::PlaceQuantities()
{
    UnitQuantities &quantities = *m_ui.Quantities;
    quantities.SetNames({u"AvaBgPrd"_s, u"مقدار (اول دوره) :"_s}, {u"AvaBgPrd2"_s, u"مقدار2 (اول دوره ):"_s});
    quantities.AddUnderQuantities({m_ui.CostBgPrd_LBL, m_ui.CostBgPrd_EDT});
    quantities.AddUnderParts({m_ui.GheymatKol_LBL, m_ui.GheymatKol_EDT, m_ui.GheymatJoz_LBL, m_ui.GheymatJozCaption_LBL,
                              m_ui.GheymatJoz_EDT});
    quantities.SetFormula([this] { return m_ui.Formool_CHK->isChecked() ? std::optional(Formula()) : std::nullopt; });
    quantities.SetReplaceQuestion([this] { return m_host.messages.Confirm(host::message::ReplaceTypedQuantity, {}); });
    QWidget *before = m_ui.Formool_EDT;
    for (host::NumericEdit *edit : quantities.Edits()) {
        QWidget::setTabOrder(before, edit);
        before = edit;
    }
}

void OpeningFields::BindPrices()
{
    for (const auto &[edit, rule] : {std::pair(m_ui.GheymatKol_EDT, &OpeningFields::LeaveBigPrice),
                                     std::pair(m_ui.GheymatJoz_EDT, &OpeningFields::LeaveSmallPrice)}) {
        connect(edit, &QLineEdit::textEdited, this, [this] { m_partPriceTyped = true; });
        goods::OnChanged(edit, RuleTime::AtOnce, [this, rule = rule] { (this->*rule)(); });
    }
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
    m_ui.Quantities->Clear();
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
    m_loadedPrice = values.price;
    m_loadedStore = store;
    m_rowStore = 0;
    const host::TSettingRecord &settings = m_host.settings.SettingRecord();
    m_ui.Quantities->SetSettings({settings.TwoUnitGoods, settings.TwoUnitVariableRatio, settings.IntegerUnits});
    m_ui.Quantities->Show({values.first, values.second});
    SplitPrice();
    ShowUnitNames();
    ShowUnits();
}

void OpeningFields::ShowTotals(const goods::UnitAmounts &totals)
{
    m_ui.Quantities->ShowTotals(totals);
}

void OpeningFields::TakeTotals(const goods::UnitAmounts &totals)
{
    m_ui.Quantities->Replace(totals);
}

void OpeningFields::SuggestStore(int store)
{
    if (StoreCode() == 0)
        m_ui.Store_Entity->SetCode(store);
}

void OpeningFields::SetRowStore(int store)
{
    m_rowStore = store;
    m_loadedStore = StoreCode();
}

goods::OpeningGood OpeningFields::Good() const
{
    goods::OpeningGood good;
    good.unit1 = m_ui.Unit_Entity1->Code();
    good.unit1Name = m_ui.Unit_Entity1->Name();
    if (Entry() == QuantityEntry::OneUnit)
        return good;
    good.unit2 = m_ui.Unit_Entity2->Code();
    good.unit2Name = m_ui.Unit_Entity2->Name();
    good.formula = FormulaOn() ? Formula() : 0;
    good.twoUnits = Entry() == QuantityEntry::TwoUnits && good.unit2 != 0;
    return good;
}

void OpeningFields::Store(TGoodInfoRec &rec) const
{
    const goods::OpeningValues values = Values();
    rec.Unit = m_ui.Unit_Entity1->Code();
    // The totals of several stores are shown, not entered.
    if (m_ui.Quantities->IsChanged()) {
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
    const goods::UnitAmounts amounts = m_ui.Quantities->Amounts();
    const bool partPrice = Entry() == QuantityEntry::BigAndSmall && m_partPriceTyped;
    return {amounts.first, amounts.second, partPrice ? m_ui.GheymatJoz_EDT->Number() : m_ui.CostBgPrd_EDT->Number()};
}

goods::OpeningValues OpeningFields::Loaded() const
{
    const goods::UnitAmounts &amounts = m_ui.Quantities->Loaded();
    return {amounts.first, amounts.second, m_loadedPrice};
}

bool OpeningFields::RowChanged() const
{
    return m_ui.Quantities->IsChanged() || (m_rowStore != 0 && RowStore() != m_rowStore);
}

int OpeningFields::RowStore() const
{
    return m_rowStore != 0 && StoreCode() == m_loadedStore ? m_rowStore : StoreCode();
}

int OpeningFields::StoreCode() const
{
    return m_ui.Store_Entity->Code();
}

void OpeningFields::SetLocked(bool locked, bool severalStores)
{
    m_severalStores = severalStores;
    m_locked = locked || severalStores;
    // A price that is missing could be given nowhere else.
    m_priceFixed = locked || (severalStores && m_ui.CostBgPrd_EDT->Number() != 0);
    m_ui.Quantities->setEnabled(!m_priceFixed);
    m_ui.Quantities->SetQuantitiesEnabled(!m_locked);
    // A new good needs its default store even when the opening period is closed.
    m_ui.Store_PNL->setEnabled(!m_locked || StoreCode() == 0);
}

void OpeningFields::SetDetailsEntered(bool entered)
{
    m_ui.Quantities->SetDetailsEntered(entered);
}

bool OpeningFields::DetailsEntered() const
{
    return m_ui.Quantities->DetailsEntered();
}

void OpeningFields::SetDetailButtons(bool shown)
{
    m_ui.Quantities->SetDetailButtons(shown);
}

void OpeningFields::ShowStore(int store)
{
    m_ui.Store_Entity->SetCode(store);
}

QWidget *OpeningFields::StoreEdit() const
{
    return m_ui.Store_Entity;
}

bool OpeningFields::FormulaOn() const
{
    return m_host.settings.SettingRecord().TwoUnitGoods && m_ui.Formool_CHK->isChecked();
}

Quantity OpeningFields::Formula() const
{
    return m_ui.Formool_EDT->Number();
}

QuantityEntry OpeningFields::Entry() const
{
    return m_ui.Quantities->Entry();
}

void OpeningFields::ShowUnits()
{
    const bool twoUnits = Entry() != QuantityEntry::OneUnit;
    for (QWidget *control : {static_cast<QWidget *>(m_ui.Unit_Entity2), static_cast<QWidget *>(m_ui.Unit_Entity2_LBL),
                             static_cast<QWidget *>(m_ui.Formool_CHK)})
        control->setVisible(twoUnits);
    m_ui.Formol_CXGB->setVisible(FormulaOn());
    ShowPriceHint();
}

void OpeningFields::ShowUnitNames()
{
    for (const auto &[picker, name] :
         {std::pair(m_ui.Unit_Entity1, m_ui.Formool_Unit1_LBL), std::pair(m_ui.Unit_Entity2, m_ui.Formool_Unit2_LBL)})
        name->setText(picker->IsEmpty() ? UnnamedUnit() : picker->Name());
}

void OpeningFields::ShowPriceHint()
{
    m_ui.GheymatJoz_LBL->setText(u'=' + host::DisplayNumber(host::QuantityToText(Formula())) + u'÷');
    m_ui.GheymatJoz_LBL->setVisible(FormulaOn());
}

void OpeningFields::FormulaClicked(bool on)
{
    m_ui.Quantities->FormulaSwitched(on);
    if (on)
        SplitPrice();
    else if (!m_host.settings.SettingRecord().TwoUnitVariableRatio)
        AdoptPartPrice();
    ShowUnits();
    if (on)
        m_ui.Formool_EDT->setFocus();
}

void OpeningFields::SplitPrice()
{
    m_partPriceTyped = false;
    m_ui.GheymatJoz_EDT->SetNumber(m_ui.CostBgPrd_EDT->Number());
    LeaveSmallPrice();
}

void OpeningFields::AdoptPartPrice()
{
    if (m_partPriceTyped)
        m_ui.CostBgPrd_EDT->SetNumber(m_ui.GheymatJoz_EDT->Number());
}

void OpeningFields::AdoptBigAndSmall()
{
    if (Entry() != QuantityEntry::BigAndSmall)
        return;
    m_ui.Quantities->AdoptParts();
    AdoptPartPrice();
}

void OpeningFields::ZeroWhenEmpty()
{
    m_ui.Quantities->ZeroWhenEmpty();
    m_ui.CostBgPrd_EDT->ZeroWhenEmpty();
}

void OpeningFields::LeaveFormula()
{
    m_ui.Formool_EDT->ZeroWhenEmpty();
    ShowPriceHint();
    m_ui.Quantities->FormulaTyped();
    // Otherwise a change of the big unit's price would not meet the small one's.
    if (m_ui.GheymatJoz_EDT->Number() != 0)
        LeaveSmallPrice();
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
    m_ui.Quantities->TakeTyped();
    for (host::NumericEdit *edit : {m_ui.Formool_EDT, m_ui.GheymatKol_EDT, m_ui.GheymatJoz_EDT})
        if (HasFocus(edit))
            goods::LeaveNow(edit);
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

host::Refused OpeningFields::CheckUnitForRows()
{
    for (host::EntityPicker *picker : {m_ui.Unit_Entity1, m_ui.Unit_Entity2})
        if (!picker->Resolve())
            return host::ToldAlready(picker);
    return host::When(m_ui.Unit_Entity1->Code() == 0, host::Required(m_ui.Unit_Entity1, u"کد واحد"_s));
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
    const bool secondCounts = Entry() == QuantityEntry::TwoUnits && values.second != 0;
    // Where the price is locked nobody could mend it.
    if (values.price != 0 || m_priceFixed || (values.first == 0 && !secondCounts))
        return {};
    if (Entry() == QuantityEntry::BigAndSmall)
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
    if (m_ui.Quantities->AgreesWithFormula())
        return {};
    return host::SmartMessage(m_ui.Quantities->SecondEdit(), host::message::SecondQuantityDiffers);
}

QWidget *OpeningFields::QuantityEdit() const
{
    return m_ui.Quantities->QuantityEdit();
}
