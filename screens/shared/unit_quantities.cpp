#include "screens/shared/unit_quantities.h"

#include "host/controls/number_text.h"
#include "host/controls/numeric_edit.h"
#include "rules/unit_arithmetic.h"
#include "screens/shared/leave_watch.h"
#include "ui_unit_quantities.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>

using namespace Qt::StringLiterals;

using goods::Quantity;
using goods::QuantityEntry;
using goods::RuleTime;

namespace {

void AddRow(QGridLayout &grid, std::initializer_list<QWidget *> fields)
{
    const int row = grid.rowCount();
    int column = 0;
    for (QWidget *field : fields)
        grid.addWidget(field, row, column++);
}

} // namespace

UnitQuantities::UnitQuantities(QWidget *parent) : QWidget(parent), m_ui(std::make_unique<Ui::UnitQuantities>())
{
    m_ui->setupUi(this);
    // What is left of a total can be negative after the formula has grown.
    m_ui->MeghdarJoz_EDT->setNegative(true);
    Bind(m_ui->Meghdar_EDT, RuleTime::AtOnce, &UnitQuantities::LeaveFirst, &UnitQuantities::m_firstTyped);
    Bind(m_ui->Meghdar2_EDT, RuleTime::Afterwards, &UnitQuantities::LeaveSecond, nullptr);
    Bind(m_ui->MeghdarKol_EDT, RuleTime::AtOnce, &UnitQuantities::LeaveParts, &UnitQuantities::m_partsTyped);
    Bind(m_ui->MeghdarJoz_EDT, RuleTime::AtOnce, &UnitQuantities::LeaveParts, &UnitQuantities::m_partsTyped);
    Bind(m_ui->Meghdar_Joz_EDT, RuleTime::AtOnce, &UnitQuantities::LeaveTotal, &UnitQuantities::m_partsTyped);
    ShowEntry();
}

UnitQuantities::~UnitQuantities() = default;

void UnitQuantities::Bind(host::NumericEdit *edit, RuleTime time, void (UnitQuantities::*rule)(),
                          bool UnitQuantities::*typed)
{
    m_edits.push_back(edit);
    connect(edit, &host::NumericEdit::ButtonClicked, this, &UnitQuantities::DetailsWanted);
    connect(edit, &QLineEdit::textEdited, this, [this, typed] {
        if (typed != nullptr)
            this->*typed = true;
        emit Changed();
    });
    goods::OnChanged(edit, time, [this, rule] {
        (this->*rule)();
        emit Changed();
    });
}

void UnitQuantities::SetNames(const Field &first, const Field &second)
{
    const auto name = [](QWidget *edit, QLabel *label, const Field &field) {
        edit->setObjectName(field.name + u"_EDT"_s);
        label->setObjectName(field.name + u"_LBL"_s);
        label->setText(field.caption);
    };
    name(m_ui->Meghdar_EDT, m_ui->Meghdar_LBL, first);
    name(m_ui->Meghdar2_EDT, m_ui->Meghdar2_LBL, second);
}

void UnitQuantities::SetUnitNames(const QString &first, const QString &second)
{
    SetUnitName(m_ui->Meghdar_EDT, m_unit1, first);
    SetUnitName(m_ui->Meghdar2_EDT, m_unit2, second);
    ShowEntry();
}

void UnitQuantities::SetUnitName(host::NumericEdit *edit, QLabel *&label, const QString &name)
{
    if (label == nullptr) {
        auto *cell = new QWidget(edit->parentWidget());
        auto *row = new QHBoxLayout(cell);
        row->setContentsMargins({});
        delete m_ui->quantityGrid->replaceWidget(edit, cell);
        label = new QLabel(cell);
        label->setObjectName(edit->objectName().chopped(4) + u"_Unit_LBL"_s);
        row->addWidget(edit, 1);
        row->addWidget(label);
    }
    label->setText(name);
}

void UnitQuantities::SetTotalCaption(const QString &caption)
{
    m_ui->Total_LBL->setText(caption);
    m_ui->Total_LBL->setBuddy(m_ui->Meghdar_Joz_EDT);
}

void UnitQuantities::SetDetailButtons(bool shown)
{
    if (shown == m_detailButtons)
        return;
    m_detailButtons = shown;
    for (host::NumericEdit *edit : m_edits)
        edit->setButtonText(shown ? u"+"_s : QString());
}

void UnitQuantities::keyPressEvent(QKeyEvent *event)
{
    // The edits leave the key to the screen.
    if (m_detailButtons && event->key() == Qt::Key_Plus)
        emit DetailsWanted();
    else
        QWidget::keyPressEvent(event);
}

void UnitQuantities::SetQuantitiesEnabled(bool enabled)
{
    for (host::NumericEdit *edit : m_edits)
        edit->setEnabled(enabled);
}

void UnitQuantities::AddUnderQuantities(std::initializer_list<QWidget *> fields)
{
    AddRow(*m_ui->quantityGrid, fields);
}

void UnitQuantities::AddUnderParts(std::initializer_list<QWidget *> fields)
{
    AddRow(*m_ui->partsGrid, fields);
}

void UnitQuantities::Clear()
{
    Show({});
    for (host::NumericEdit *edit : m_edits)
        edit->setText({});
}

void UnitQuantities::Show(const goods::UnitAmounts &amounts)
{
    m_loaded = m_shown = amounts;
    m_firstTyped = false;
    m_ui->Meghdar_EDT->SetNumber(amounts.first);
    m_ui->Meghdar2_EDT->SetNumber(amounts.second);
    SplitIntoParts();
    ShowEntry();
}

void UnitQuantities::ShowTotals(const goods::UnitAmounts &totals)
{
    m_loaded = totals;
    Replace(totals);
}

void UnitQuantities::Replace(const goods::UnitAmounts &totals)
{
    m_shown = totals;
    m_partsTyped = false;
    m_firstTyped = false;
    m_ui->Meghdar_EDT->SetNumber(totals.first);
    m_ui->Meghdar2_EDT->SetNumber(totals.second);
    m_ui->Meghdar_Joz_EDT->SetNumber(totals.first);
    if (Formula() > 0)
        ShowParts({totals.second, goods::RoundedQuantity(totals.first - Formula() * totals.second)});
}

void UnitQuantities::SetDetailsEntered(bool entered)
{
    m_detailsEntered = entered;
    for (host::NumericEdit *edit : m_edits)
        edit->setReadOnly(entered);
}

QuantityEntry UnitQuantities::Entry() const
{
    return goods::QuantityEntryFor(m_settings.twoUnitGoods, m_settings.variableRatio, FormulaOn());
}

bool UnitQuantities::FormulaOn() const
{
    return m_settings.twoUnitGoods && m_formula().has_value();
}

Quantity UnitQuantities::Formula() const
{
    return m_formula().value_or(0);
}

goods::UnitAmounts UnitQuantities::Amounts() const
{
    switch (Entry()) {
    case QuantityEntry::OneUnit:
        return {m_ui->Meghdar_EDT->Number(), HiddenSecond()};
    case QuantityEntry::BigAndSmall:
        // Big and small units only show the row until something is typed there: not every row can be told in them.
        if (m_partsTyped)
            return {m_ui->Meghdar_Joz_EDT->Number(), m_ui->MeghdarKol_EDT->Number()};
        break;
    case QuantityEntry::TwoUnits:
        break;
    }
    return {m_ui->Meghdar_EDT->Number(), m_ui->Meghdar2_EDT->Number()};
}

Quantity UnitQuantities::HiddenSecond() const
{
    const Quantity first = m_ui->Meghdar_EDT->Number();
    if (goods::SameQuantity(first, m_shown.first))
        return m_shown.second;
    if (first == 0)
        return 0;
    return Formula() > 0 ? goods::SecondQuantity(first, Formula(), m_settings.wholeUnits) : m_shown.second;
}

bool UnitQuantities::AgreesWithFormula() const
{
    const bool editable = m_ui->Meghdar_EDT->isEnabled() && !m_ui->Meghdar_EDT->isReadOnly();
    return !editable || Entry() != QuantityEntry::TwoUnits || !FormulaOn() ||
           goods::SecondFollowsFirst(Amounts(), Formula(), m_settings.wholeUnits);
}

QWidget *UnitQuantities::QuantityEdit() const
{
    return Entry() == QuantityEntry::BigAndSmall ? m_ui->Meghdar_Joz_EDT : m_ui->Meghdar_EDT;
}

QWidget *UnitQuantities::SecondEdit() const
{
    return m_ui->Meghdar2_EDT;
}

void UnitQuantities::ShowEntry()
{
    const QuantityEntry entry = Entry();
    m_ui->MeghdarJoz_CXGB->setVisible(entry == QuantityEntry::BigAndSmall);
    m_ui->Meghdar_PNL->setVisible(entry != QuantityEntry::BigAndSmall);
    m_ui->Meghdar2_EDT->setVisible(entry == QuantityEntry::TwoUnits);
    m_ui->Meghdar2_LBL->setVisible(entry == QuantityEntry::TwoUnits);
    if (m_unit2 != nullptr)
        m_unit2->setVisible(entry == QuantityEntry::TwoUnits);
    ShowFormula();
}

void UnitQuantities::ShowFormula()
{
    m_ui->MeghdarJoz_LBL->setText(u'+' + host::DisplayNumber(host::QuantityToText(Formula())) + u'×');
    m_ui->MeghdarJoz_LBL->setVisible(FormulaOn());
}

void UnitQuantities::FormulaSwitched(bool on)
{
    if (on)
        SplitIntoParts();
    else if (!m_settings.variableRatio)
        AdoptParts();
    ShowEntry();
}

void UnitQuantities::FormulaTyped()
{
    ShowFormula();
    const Quantity big = m_ui->MeghdarKol_EDT->Number();
    const Quantity total = m_ui->Meghdar_Joz_EDT->Number();
    const bool applies = FormulaOn() && Formula() != 0;
    if (applies && total == 0 && (big != 0 || m_ui->MeghdarJoz_EDT->Number() != 0))
        LeaveParts(); // typed before there was a formula to join them by
    else
        m_ui->MeghdarJoz_EDT->SetNumber(applies && total > 0 ? goods::RoundedQuantity(total - Formula() * big) : 0);
    m_partsTyped =
        m_partsTyped || (isEnabledTo(parentWidget()) && m_ui->Meghdar_Joz_EDT->isEnabledTo(this) && !m_detailsEntered);
    emit Changed();
}

void UnitQuantities::TakeTyped()
{
    for (host::NumericEdit *edit : m_edits)
        if (edit->hasFocus())
            goods::LeaveNow(edit);
}

void UnitQuantities::AdoptParts()
{
    if (!m_partsTyped)
        return;
    m_ui->Meghdar2_EDT->SetNumber(m_ui->MeghdarKol_EDT->Number());
    m_ui->Meghdar_EDT->SetNumber(m_ui->Meghdar_Joz_EDT->Number());
}

void UnitQuantities::ZeroWhenEmpty()
{
    for (host::NumericEdit *edit : {m_ui->Meghdar_EDT, m_ui->Meghdar2_EDT})
        edit->ZeroWhenEmpty();
}

void UnitQuantities::SplitIntoParts()
{
    m_partsTyped = false;
    m_ui->Meghdar_Joz_EDT->SetNumber(m_ui->Meghdar_EDT->Number());
    if (Formula() > 0) {
        LeaveTotal();
        return;
    }
    for (host::NumericEdit *part : {m_ui->MeghdarKol_EDT, m_ui->MeghdarJoz_EDT})
        part->setText({});
}

void UnitQuantities::ShowParts(const goods::SplitQuantity &parts)
{
    m_ui->MeghdarKol_EDT->SetNumber(parts.big);
    m_ui->MeghdarJoz_EDT->SetNumber(parts.small);
}

void UnitQuantities::LeaveFirst()
{
    if (FormulaOn() && Formula() > 0)
        m_ui->Meghdar2_EDT->SetNumber(
            goods::SecondQuantity(m_ui->Meghdar_EDT->Number(), Formula(), m_settings.wholeUnits));
}

void UnitQuantities::LeaveSecond()
{
    if (!FormulaOn() || Formula() <= 0)
        return;
    const goods::UnitAmounts amounts = Amounts();
    const Quantity candidate = goods::FirstQuantity(amounts.second, Formula());
    if (goods::SameQuantity(candidate, amounts.first) || (m_firstTyped && !m_mayReplace()))
        return;
    m_ui->Meghdar_EDT->SetNumber(candidate);
    m_firstTyped = false;
}

void UnitQuantities::LeaveParts()
{
    if (Formula() <= 0)
        return;
    m_ui->Meghdar_Joz_EDT->SetNumber(
        goods::JoinQuantity({m_ui->MeghdarKol_EDT->Number(), m_ui->MeghdarJoz_EDT->Number()}, Formula()));
}

void UnitQuantities::LeaveTotal()
{
    if (Formula() > 0)
        ShowParts(goods::SplitTotal(m_ui->Meghdar_Joz_EDT->Number(), Formula()));
}
