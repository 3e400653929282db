#include "division/part_entry.h"

#include "host/controls/numeric_edit.h"
#include "rules/unit_arithmetic.h"

namespace division {

using good_detail::TypedAmounts;
using goods::DividedPieces;
using goods::PartField;

PartEntry::PartEntry(const std::array<good_detail::TypedInputs::Input, 4> &inputs, QObject *parent)
    : QObject(parent), m_inputs(
                           inputs,
                           [this](const TypedAmounts &typed, int changed) {
                               return division::Recomputed(m_unitType, typed, changed, m_ratio);
                           },
                           this)
{
    connect(&m_inputs, &good_detail::TypedInputs::Edited, this, &PartEntry::Edited);
}

void PartEntry::SetUp(int unitType, const QString &unit2, const good_detail::UnitRatio &ratio)
{
    m_unitType = unitType;
    m_ratio = ratio;
    m_inputs.SetUp(PartInputsOf(unitType, unit2));
    Clear();
}

void PartEntry::Show(const DividedPieces &pieces)
{
    m_inputs.Show(division::TypedOf(m_unitType, pieces, m_ratio));
}

DividedPieces PartEntry::Pieces() const
{
    return PiecesTyped(m_unitType, m_inputs.Typed());
}

std::optional<PartField> PartEntry::Empty() const
{
    const goods::DividedBy by = DividedByOf(m_unitType);
    const DividedPieces pieces = Pieces();
    const bool typed = by == goods::DividedBy::Packages || by == goods::DividedBy::Area;
    const goods::Quantity total = typed ? Edit(PartField::Total)->Number() : goods::AmountOf(by, pieces).first;
    return goods::EmptyField(by, pieces, total);
}

bool PartEntry::IsTyped() const
{
    const TypedAmounts empty = division::TypedOf(m_unitType, DividedPieces(), m_ratio);
    const TypedAmounts typed = m_inputs.Typed();
    for (size_t i = 0; i < typed.size(); ++i)
        if (!goods::SameQuantity(typed[i], empty[i]))
            return true;
    return false;
}

host::NumericEdit *PartEntry::Edit(PartField field) const
{
    return m_inputs.Edit(InputOf(m_unitType, field));
}

QString PartEntry::Caption(PartField field) const
{
    return m_inputs.Caption(InputOf(m_unitType, field));
}

} // namespace division
