#pragma once

#include "rules/quantity_entry.h"

#include <optional>

/// What may be taken of a unit on hand that is divided into parts, and what the parts may come to: all that is taken is
/// divided, no more and no less. Products are rounded to the decimals that the database keeps, sums are exact.
namespace goods {

/// What a unit is divided by, and so what its pieces have in common.
enum class DividedBy {
    Amount,     ///< pieces of an amount
    TwoAmounts, ///< pieces of an amount in each unit
    Packages,   ///< packages of an amount each
    Area,       ///< rectangles
};

/// Pieces that are alike. Of the unit that is divided: one of its pieces.
struct DividedPieces
{
    Quantity amount = 0; ///< of one piece, in the main unit; what a package holds
    Quantity second = 0; ///< of one piece, in the second unit
    Quantity length = 0; ///< of a rectangle
    Quantity width = 0;
    Quantity count = 1;
};

/// The unit that is divided.
struct DividedStock
{
    DividedBy by = DividedBy::Amount;
    DividedPieces piece; ///< its measures; `count` is how many the store has, of what is divided by amount 0
    UnitAmounts onHand;
};

/// What pieces come to together.
UnitAmounts AmountOf(DividedBy by, const DividedPieces &pieces);
/// What is divided when `taken` is typed: a count of packages or rectangles, amounts otherwise. All pieces of the store
/// are all it has, also where the sum of what came in was rounded in another way.
UnitAmounts TotalToDivide(const DividedStock &stock, const UnitAmounts &taken);

/// Why so much may not be taken; the first that holds.
enum class CountFault { None, MoreThanStock, Zero, LessThanParts };
CountFault CountFaultOf(const DividedStock &stock, const UnitAmounts &taken, const UnitAmounts &parts);

/// What is asked of a part, in the order in which it is missed.
enum class PartField { Amount, Length, Width, Count, Total };
/// The first field without which there is no part. `total` is what its field shows.
std::optional<PartField> EmptyField(DividedBy by, const DividedPieces &pieces, Quantity total);

/// More than `limit` would be divided: the parts so far, less what the one that is changed came to before, and what is
/// entered for it.
bool OverLimit(const UnitAmounts &limit, const UnitAmounts &parts, const UnitAmounts &entered,
               const UnitAmounts &before = {});
/// Of either unit.
UnitAmounts LeftToDivide(const UnitAmounts &limit, const UnitAmounts &parts);
/// Nothing is left in either unit.
bool IsDivided(const UnitAmounts &limit, const UnitAmounts &parts);

/// What is left as one last part, with what is typed of it: rectangles of the typed length or width, or else those of
/// the sheet, one or as few as fit on it. Nothing when nothing is left, or when no rectangle has exactly this area.
std::optional<DividedPieces> RestAsPart(const DividedStock &stock, const UnitAmounts &left, const DividedPieces &typed);

} // namespace goods
