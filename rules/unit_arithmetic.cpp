#include "rules/unit_arithmetic.h"

#include <cmath>

namespace goods {

namespace {

/// The quotient without its fraction. 0.3 ÷ 0.1 is 3, although the binary quotient lies a little below.
Quantity WholeQuotient(Quantity dividend, Quantity divisor)
{
    const Quantity quotient = dividend / divisor;
    const Quantity nearest = std::round(quotient);
    return SameQuantity(nearest * divisor, dividend) ? nearest : std::trunc(quotient);
}

} // namespace

Quantity RoundedQuantity(Quantity value)
{
    return host::QuantityFromText(host::QuantityToText(value));
}

bool SameQuantity(Quantity a, Quantity b)
{
    return host::QuantityToText(a) == host::QuantityToText(b);
}

SplitQuantity SplitTotal(Quantity total, Quantity formula)
{
    const Quantity big = WholeQuotient(total, formula);
    return {big, RoundedQuantity(total - formula * big)};
}

Quantity JoinQuantity(const SplitQuantity &parts, Quantity formula)
{
    return RoundedQuantity(parts.big * formula + parts.small);
}

Quantity SecondQuantity(Quantity first, Quantity formula, bool wholeUnits)
{
    return wholeUnits ? WholeQuotient(first, formula) : RoundedQuantity(first / formula);
}

Quantity FirstQuantity(Quantity second, Quantity formula)
{
    return RoundedQuantity(formula * second);
}

Quantity BigUnitPrice(Quantity smallUnitPrice, Quantity formula)
{
    return formula > 0 ? RoundedQuantity(smallUnitPrice * formula) : 0;
}

std::optional<Quantity> SmallUnitPrice(Quantity bigUnitPrice, Quantity formula)
{
    if (formula <= 0)
        return std::nullopt;
    return RoundedQuantity(bigUnitPrice / formula);
}

} // namespace goods
