#pragma once

#include "gooddetail/amount_layout.h"

/// The arithmetic of the amount inputs.
namespace good_detail {

/// What is typed, in the order of the inputs; those that a unit type does not have are 0.
using TypedAmounts = std::array<host::Quantity, 4>;

/// The ratio of a good's units.
struct UnitRatio
{
    host::Quantity Formula = 0; ///< units 1 in one unit 2; 0: none
    bool WholeUnits = false;    ///< unit 2 is counted in whole ones
};

/// What the inputs show after the one at `changed` was left with another number: the total follows from its parts, the
/// parts from the total.
TypedAmounts Recomputed(int unitType, TypedAmounts typed, int changed, const UnitRatio &ratio);

/// The amounts of a row from what is typed, and back.
host::TAmounts AmountsOf(int unitType, const TypedAmounts &typed, const UnitRatio &ratio);
TypedAmounts TypedOf(int unitType, const host::TAmounts &amounts, const UnitRatio &ratio);

/// Whether rows of the same details may be added up: the measures of what they count are the same.
bool SameMeasures(int unitType, const host::TAmounts &a, const host::TAmounts &b);
/// What both come to; the measures are those of `a`.
host::TAmounts Added(int unitType, const host::TAmounts &a, const host::TAmounts &b);

/// Adds up the rows of a line: amounts are summed, a measure is that of all rows or else 0.
class AmountTotals
{
public:
    explicit AmountTotals(int unitType) : m_unitType(unitType) {}
    void Add(const host::TAmounts &row);
    const host::TAmounts &Sum() const { return m_sum; }
    int Rows() const { return m_rows; }

private:
    int m_unitType;
    int m_rows = 0;
    host::TAmounts m_sum;
};

/// The unit type of a good by the shop's rules of quantities.
struct UnitTypeFacts
{
    bool SquareMetres = false;  ///< its unit is the one of square metres, and such goods are on
    bool TwoUnitGoods = false;  ///< the shop has goods with a second unit
    bool VariableRatio = false; ///< whose ratio differs from piece to piece
    bool HasUnit2 = false;
    bool HasFormula = false;
};
quint8 UnitTypeOf(const UnitTypeFacts &good);

} // namespace good_detail
