#include "rules/division_limits.h"

#include "rules/unit_arithmetic.h"

#include <cmath>

namespace goods {

namespace {

/// Rounding of what came in one by one: far less than anybody cuts.
constexpr Quantity RoundingOfSums = 1e-6L;
/// Rectangles of a rest; more of them are not what is left over.
constexpr int MostRestPieces = 1000;

bool Less(Quantity a, Quantity b)
{
    return RoundedQuantity(b - a) > 0;
}

bool Less(const UnitAmounts &a, const UnitAmounts &b)
{
    return Less(a.first, b.first) || Less(a.second, b.second);
}

bool IsCounted(DividedBy by)
{
    return by == DividedBy::Packages || by == DividedBy::Area;
}

bool FitsOn(const DividedPieces &sheet, Quantity length, Quantity width)
{
    return (!Less(sheet.length, length) && !Less(sheet.width, width)) ||
           (!Less(sheet.length, width) && !Less(sheet.width, length));
}

/// The rest in rectangles of this side, as few as fit on the sheet; the other side, 0 when there are none.
DividedPieces RestAlong(const DividedPieces &sheet, Quantity side, Quantity area)
{
    DividedPieces rest;
    if (side <= 0)
        return rest;
    const Quantity least = std::ceil(area / (sheet.length * sheet.width));
    if (least > MostRestPieces)
        return rest;
    for (int count = std::max(static_cast<int>(least), 1); count <= MostRestPieces; ++count) {
        const Quantity other = RoundedQuantity(area / (side * count));
        if (!FitsOn(sheet, side, other))
            continue;
        if (other > 0 && SameQuantity(side * other * count, area))
            rest = {0, 0, side, other, Quantity(count)};
        break;
    }
    return rest;
}

std::optional<DividedPieces> RestOfSheet(const DividedPieces &sheet, Quantity area, const DividedPieces &typed)
{
    if (sheet.length <= 0 || sheet.width <= 0)
        return std::nullopt;
    if (const Quantity each = typed.length * typed.width; each > 0) {
        const Quantity count = std::round(area / each);
        if (count >= 1 && SameQuantity(each * count, area))
            return DividedPieces{0, 0, typed.length, typed.width, count};
    }
    const std::pair<Quantity, bool> sides[] = {
        {typed.length, false}, {typed.width, true}, {sheet.length, false}, {sheet.width, true}};
    for (const auto &[side, isWidth] : sides) {
        DividedPieces rest = RestAlong(sheet, side, area);
        if (rest.length <= 0)
            continue;
        if (isWidth)
            std::swap(rest.length, rest.width);
        return rest;
    }
    return std::nullopt;
}

} // namespace

UnitAmounts AmountOf(DividedBy by, const DividedPieces &pieces)
{
    if (by == DividedBy::Area)
        return {RoundedQuantity(pieces.length * pieces.width * pieces.count), 0};
    const Quantity second = by == DividedBy::TwoAmounts ? pieces.second : 0;
    return {RoundedQuantity(pieces.amount * pieces.count), RoundedQuantity(second * pieces.count)};
}

UnitAmounts TotalToDivide(const DividedStock &stock, const UnitAmounts &taken)
{
    if (!IsCounted(stock.by))
        return {taken.first, stock.by == DividedBy::TwoAmounts ? taken.second : 0};
    DividedPieces pieces = stock.piece;
    pieces.count = taken.first;
    const UnitAmounts total = AmountOf(stock.by, pieces);
    const bool all =
        SameQuantity(taken.first, stock.piece.count) && std::fabs(total.first - stock.onHand.first) < RoundingOfSums;
    return {all ? stock.onHand.first : total.first, 0};
}

CountFault CountFaultOf(const DividedStock &stock, const UnitAmounts &taken, const UnitAmounts &parts)
{
    const UnitAmounts total = TotalToDivide(stock, taken);
    UnitAmounts onHand = stock.onHand;
    if (stock.by != DividedBy::TwoAmounts)
        onHand.second = 0;
    if (Less(onHand, total))
        return CountFault::MoreThanStock;
    if (taken.first <= 0)
        return CountFault::Zero;
    return Less(total, parts) ? CountFault::LessThanParts : CountFault::None;
}

std::optional<PartField> EmptyField(DividedBy by, const DividedPieces &pieces, Quantity total)
{
    using Field = std::pair<PartField, Quantity>;
    const Field count{PartField::Count, pieces.count};
    const Field amount{PartField::Amount, pieces.amount};
    const Field all{PartField::Total, total};
    // Less than one of the second unit may round to none of it.
    const Field counted[] = {amount, count, all};
    const Field rectangle[] = {{PartField::Length, pieces.length}, {PartField::Width, pieces.width}, count, all};
    const Field *field = by == DividedBy::Area ? std::begin(rectangle) : std::begin(counted);
    const Field *end = by == DividedBy::Area ? std::end(rectangle) : std::end(counted);
    for (; field != end; ++field)
        if (field->second <= 0)
            return field->first;
    return std::nullopt;
}

bool OverLimit(const UnitAmounts &limit, const UnitAmounts &parts, const UnitAmounts &entered,
               const UnitAmounts &before)
{
    return Less(limit, {parts.first - before.first + entered.first, parts.second - before.second + entered.second});
}

UnitAmounts LeftToDivide(const UnitAmounts &limit, const UnitAmounts &parts)
{
    return {RoundedQuantity(limit.first - parts.first), RoundedQuantity(limit.second - parts.second)};
}

bool IsDivided(const UnitAmounts &limit, const UnitAmounts &parts)
{
    return !Less(parts, limit);
}

std::optional<DividedPieces> RestAsPart(const DividedStock &stock, const UnitAmounts &left, const DividedPieces &typed)
{
    if (left.first <= 0 || left.second < 0)
        return std::nullopt;
    if (stock.by == DividedBy::Area)
        return RestOfSheet(stock.piece, left.first, typed);
    return DividedPieces{left.first, stock.by == DividedBy::TwoAmounts ? left.second : 0, 0, 0, 1};
}

} // namespace goods
