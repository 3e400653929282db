#pragma once

#include "host/data/quantity.h"

#include <QString>

namespace goods {

using host::Quantity;

/// A good as the screens of its opening rows know it: the good itself may not be saved yet.
struct OpeningGood
{
    int code = 0;
    QString name;
    int unit1 = 0;         ///< codes of the units, 0 for none
    int unit2 = 0;         ///< …
    Quantity formula = 0;  ///< units 1 in one unit 2; 0 for none
    bool twoUnits = false; ///< a quantity in each unit is typed
    QString unit1Name;
    QString unit2Name;
};

/// What opens the editor of one opening row. The row is 0 for a new one.
struct OpeningRowOpening
{
    OpeningGood good;
    int row = 0;
};

/// "%d;%s;%d;%d;%f;%d;%d;%s;%s": good code, name, unit 1, unit 2, formula, two-unit flag, row, names of the units. The
/// text keeps two decimals of the formula; inside the module the struct travels.
QString PackOpeningRow(const OpeningRowOpening &opening);

} // namespace goods
