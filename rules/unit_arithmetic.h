#pragma once

#include "host/data/quantity.h"

#include <optional>

/// Arithmetic between the two units of a good. The formula says how many small units (unit 1) one big unit (unit 2)
/// holds. Everything is calculated in 80 bits and rounded to the nine decimals that the database keeps, so that no
/// binary noise is ever shown or stored.
namespace goods {

using host::Quantity;

/// The value as the database would give it back.
Quantity RoundedQuantity(Quantity value);
/// Whether two values are the same to the database.
bool SameQuantity(Quantity a, Quantity b);

/// A total in small units, taken apart.
struct SplitQuantity
{
    Quantity big = 0;   ///< whole big units
    Quantity small = 0; ///< what is left, in small units; carries the sign of the total
};

/// The total in big units, the fraction cut off toward zero, and the rest. Formula above 0.
/// JoinQuantity() of the parts is the total again.
SplitQuantity SplitTotal(Quantity total, Quantity formula);
Quantity JoinQuantity(const SplitQuantity &parts, Quantity formula);

/// What quantity 1 comes to in unit 2; whole units only, cut toward zero, when the shop counts in whole units.
/// Formula above 0.
Quantity SecondQuantity(Quantity first, Quantity formula, bool wholeUnits);
/// What quantity 2 comes to in unit 1.
Quantity FirstQuantity(Quantity second, Quantity formula);

/// The price of one big unit; 0 without a formula.
Quantity BigUnitPrice(Quantity smallUnitPrice, Quantity formula);
/// The price of one small unit; nothing without a formula.
std::optional<Quantity> SmallUnitPrice(Quantity bigUnitPrice, Quantity formula);

} // namespace goods
