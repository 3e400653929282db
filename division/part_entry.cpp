#include "division/part_entry.h"

#include "host/controls/numeric_edit.h"
#include "rules/unit_arithmetic.h"
#include "screens/shared/leave_watch.h"

#include <QLabel>

namespace division {

using good_detail::TypedAmounts;
using goods::DividedPieces;
using goods::PartField;

PartEntry::PartEntry(const std::array<Input, 4> &inputs, QObject *parent) : QObject(parent), m_inputs(inputs)
{
    for (size_t i = 0; i < m_inputs.size(); ++i) {
        goods::OnChanged(m_inputs[i].Edit, goods::RuleTime::AtOnce, [this, i] {
            ShowTyped(division::Recomputed(m_unitType, Typed(), static_cast<int>(i), m_ratio));
            emit Edited();
        });
        connect(m_inputs[i].Edit, &QLineEdit::textEdited, this, &PartEntry::Edited);
    }
}

void PartEntry::SetUp(int unitType, const QString &unit2, const good_detail::UnitRatio &ratio)
{
    m_unitType = unitType;
    m_ratio = ratio;
    m_layout = PartInputsOf(unitType, unit2);
    for (size_t i = 0; i < m_inputs.size(); ++i) {
        const bool used = i < static_cast<size_t>(m_layout.size());
        m_inputs[i].Caption->setVisible(used);
        m_inputs[i].Edit->setVisible(used);
        if (used)
            m_inputs[i].Caption->setText(m_layout[static_cast<qsizetype>(i)].Caption);
    }
    Clear();
}

void PartEntry::Show(const DividedPieces &pieces)
{
    ShowTyped(division::TypedOf(m_unitType, pieces, m_ratio));
    for (const Input &input : m_inputs)
        input.Edit->setModified(false);
}

DividedPieces PartEntry::Pieces() const
{
    return PiecesTyped(m_unitType, Typed());
}

void PartEntry::Take()
{
    for (const Input &input : m_inputs)
        goods::LeaveNow(input.Edit);
}

std::optional<PartField> PartEntry::Empty() const
{
    const goods::DividedBy by = DividedByOf(m_unitType);
    const DividedPieces pieces = Pieces();
    const bool typed = by == goods::DividedBy::Packages || by == goods::DividedBy::Area;
    const goods::Quantity total =
        typed ? m_inputs[PlaceOf(PartField::Total)].Edit->Number() : goods::AmountOf(by, pieces).first;
    return goods::EmptyField(by, pieces, total);
}

bool PartEntry::IsTyped() const
{
    const TypedAmounts empty = division::TypedOf(m_unitType, DividedPieces(), m_ratio);
    const TypedAmounts typed = Typed();
    for (size_t i = 0; i < typed.size(); ++i)
        if (!goods::SameQuantity(typed[i], empty[i]))
            return true;
    return false;
}

host::NumericEdit *PartEntry::Edit(PartField field) const
{
    return m_inputs[PlaceOf(field)].Edit;
}

QString PartEntry::Caption(PartField field) const
{
    return good_detail::PlainCaption(m_layout[static_cast<qsizetype>(PlaceOf(field))].Caption);
}

host::NumericEdit *PartEntry::Last() const
{
    return m_inputs[static_cast<size_t>(m_layout.size()) - 1].Edit;
}

size_t PartEntry::PlaceOf(PartField field) const
{
    const good_detail::AmountPart part = InputOf(m_unitType, field);
    for (qsizetype i = 0; i < m_layout.size(); ++i)
        if (m_layout[i].Part == part)
            return static_cast<size_t>(i);
    return 0;
}

TypedAmounts PartEntry::Typed() const
{
    TypedAmounts typed{};
    for (size_t i = 0; i < static_cast<size_t>(m_layout.size()); ++i)
        typed[i] = m_inputs[i].Edit->Number();
    return typed;
}

void PartEntry::ShowTyped(const TypedAmounts &typed)
{
    for (size_t i = 0; i < m_inputs.size(); ++i) {
        host::NumericEdit *edit = m_inputs[i].Edit;
        if (edit->IsEmpty() || !goods::SameQuantity(edit->Number(), typed[i]))
            edit->SetNumber(typed[i]);
    }
}

} // namespace division
