#pragma once

#include "host/data/quantity.h"

#include <QList>
#include <QRectF>

/// How rectangular parts may be cut from the sheets that are taken: a proposal to look at, drawn and printed. It
/// refuses nothing: the shop may cut in another way.
namespace division {

/// Sheets that are alike.
struct SheetStock
{
    host::Quantity Length = 0;
    host::Quantity Width = 0;
    int Count = 0;
};

/// Parts that are alike.
struct SheetPart
{
    host::Quantity Length = 0;
    host::Quantity Width = 0;
    int Count = 0;
    int Row = 0;        ///< of the part; 0 while it is typed
    bool Waste = false; ///< drawn hatched
};

/// A piece on its sheet: lengths run along x, widths along y, from the corner where the sheet begins.
struct PlacedPiece
{
    QRectF Place;
    bool Turned = false; ///< its length runs along the sheet's width
    int Row = 0;
    bool Waste = false;
};

struct SheetPlan
{
    SheetStock Sheet;
    QList<QList<PlacedPiece>> Sheets; ///< for each sheet that is taken what is cut from it
    QList<SheetPart> Left;            ///< what did not find a place, with how many
};

/// Places the pieces on the sheets, the larger ones first, turned by a quarter where that helps. The same parts in the
/// same order give the same plan.
SheetPlan PlanSheets(const SheetStock &sheet, const QList<SheetPart> &parts);

} // namespace division
