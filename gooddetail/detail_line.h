#pragma once

#include "host/services/good_detail_records.h"

#include <optional>

/// What is said between the screens of good details and whoever opens them inside the module. The exports pack the same
/// into a text, which keeps two decimals; here nothing is lost.
namespace good_detail {

/// The line that a screen of details is opened on.
struct DetailLineOpening
{
    host::TDocumentLine Line; ///< unit type 0: found from the good
    QString GoodName = {};    ///< a name that is empty is looked up
    QString StoreName = {};
    QString UnitName = {};
    QString Unit2Name = {};
    std::optional<host::TAmounts> Wanted =
        {}; ///< the quantities of the document's line; the totals show what is missing
    host::TFormMode Mode = host::TFormMode::New; ///< Review: nothing can be changed
};

/// What the rows of the line come to. Length, width and the amount in a package are those of all rows, or else 0.
struct DetailLineResult
{
    host::TAmounts Amounts;
    int Rows = 0;
};

} // namespace good_detail
