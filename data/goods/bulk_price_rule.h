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
    /// The price of the price row that option 1 falls back on, NULL or 0 where there is none; empty for the others.
    QString stored;
    /// Fills `#BulkSource` (Code, Price) with prices of movements, for option 1; empty for the others.
    QString movements;
    QString belowZero; ///< condition on `OldPrice`: the result would be below 0
    QString result;    ///< of `OldPrice` and `Source`, rounded; may be larger than a price, NULL where it is far larger
};

/// The largest price: what the columns hold.
inline const QString MostPrice = QString::fromUtf16(u"9999999999999999999.999999999");

/// Throws RefusedText for an instruction that makes no sense: level, option, direction, rounding, or a percent or
/// amount below 0 or of more than 13 digits.
PriceRule RuleOf(const PriceInstruction &instruction);

} // namespace goods
