#pragma once

#include "host/data/quantity.h"

#include <QList>
#include <QRectF>

/// How rectangular parts may be cut from the sheets that are taken: a proposal to look at, drawn and printed. It
/// refuses nothing: the shop may cut in another way.
namespace division {

/// Sheets that are alike; rolls, and amounts of whatever else, are bars of a length without a width.
struct SheetStock
{
    host::Quantity Length = 0;
    host::Quantity Width = 0; ///< 0: a bar
    int Count = 0;

    bool IsBar() const { return Width <= 0; }
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

/// A piece on its sheet: lengths run along x, widths along y, from the corner where the sheet begins. Bars are 1 wide.
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
    QList<QList<PlacedPiece>> Sheets; ///< what is cut from each sheet; those behind the last one stay whole
    QList<SheetPart> Left;            ///< what did not find a place, with how many
    bool TooMany = false;             ///< more pieces than anybody looks at: nothing was placed
};

/// The most pieces that are placed.
constexpr int MostPieces = 2000;

/// Places the pieces on the sheets, the larger ones first, turned by a quarter where that helps. The same parts in the
/// same order give the same plan.
SheetPlan PlanSheets(const SheetStock &sheet, const QList<SheetPart> &parts);

} // namespace division
