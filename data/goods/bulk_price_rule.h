#pragma once

#include "data/goods/good_bulk_records.h"

#include <QString>

namespace goods {

/// The parts of the statements that an instruction on prices comes to. In them `g` is the good's row of GoodInf and `c`
/// its price row.
struct PriceRule
{
    QString column;     ///< the price that is changed
    QString ofPriceRow; ///< "c" or "g": where it stands
    QString old;        ///< the old price; 0 for a good without a price row
    /// Fills the empty `#BulkSource` (Code, Price) with the prices that option 1 takes, none of them 0; uses
    /// `#BulkMoves`, of the same form. Empty for the others, which start from the old price.
    QString sources;
    QString noSource;  ///< condition: there is no price to start from
    QString belowZero; ///< condition on `OldPrice`: the result would be below 0
    QString above;     ///< condition on `OldPrice`: before rounding the result is above 0, where it is not below
    QString result;    ///< of `OldPrice` and `Source`, rounded; may be larger than a price, NULL where it is far larger
};

/// The largest price: what the columns hold.
inline const QString MostPrice = QString::fromUtf16(u"9999999999999999999.999999999");

/// Throws RefusedText for an instruction that makes no sense: level, option, direction, rounding, or a percent or
/// amount below 0 or beyond its limit.
PriceRule RuleOf(const PriceInstruction &instruction);

} // namespace goods
