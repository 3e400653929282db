#pragma once

#include "gooddetail/amount_entry.h"
#include "host/services/detail_division_service.h"
#include "rules/division_limits.h"

/// How the parts of a division are typed and kept, by the unit type of the good (gooddetail/amount_layout.h).
namespace division {

goods::DividedBy DividedByOf(int unitType);
/// The unit that is divided, with its measures.
goods::DividedStock StockOf(int unitType, const host::TAmounts &onHand);
/// What is taken of it, from what is typed: a count of packages or pieces, amounts otherwise; and back.
host::TAmounts TakenOf(int unitType, const host::TAmounts &onHand, const goods::UnitAmounts &typed,
                       const good_detail::UnitRatio &ratio);
goods::UnitAmounts TypedTaken(int unitType, const host::TAmounts &taken);
/// In both units, where the second one is divided too.
goods::UnitAmounts AmountsIn(int unitType, const host::TAmounts &amounts);

/// The amounts of a part, from its pieces and back.
host::TAmounts AmountsOfPart(int unitType, const goods::DividedPieces &pieces, const good_detail::UnitRatio &ratio);
goods::DividedPieces PiecesOf(int unitType, const host::TAmounts &part);

/// The inputs of a part in their order: those of a good's amounts, of a single piece, and how many of them.
QList<good_detail::AmountInput> PartInputsOf(int unitType, const QString &unit2);
/// The input of a field; that of the total where the amount is typed itself.
good_detail::AmountPart InputOf(int unitType, goods::PartField field);
good_detail::TypedAmounts TypedOf(int unitType, const goods::DividedPieces &pieces,
                                  const good_detail::UnitRatio &ratio);
goods::DividedPieces PiecesTyped(int unitType, const good_detail::TypedAmounts &typed);
/// What the inputs show after the one at `changed` was left with another number.
good_detail::TypedAmounts Recomputed(int unitType, const good_detail::TypedAmounts &typed, int changed,
                                     const good_detail::UnitRatio &ratio);

} // namespace division
