#pragma once

#include <QList>
#include <QString>

namespace host {

/// How a column shows and searches its values.
enum class ColumnFormat {
    Text,     ///< as stored; searched by words
    Code,     ///< a whole number without grouping; searched by its first digits
    Quantity, ///< a number, grouped, without trailing zeros; searched by its first digits
    Amount,   ///< a number as documents write it: "#0.####;#0.####-;0"; searched as Quantity
    Price,    ///< as Quantity, searched in the price edit
    Flag,     ///< ✓ for anything but 0 and empty
    Date,     ///< date and time texts, in Persian digits; searched by words
};

/// One column of a grid.
struct GridColumn
{
    QString field;       ///< field of the row set, compared without case
    QString caption;     ///< as the user reads it
    int width = 100;     ///< pixels at 100 %
    bool hidden = false; ///< hidden until the user shows it
    ColumnFormat format = ColumnFormat::Text;
    bool choosable = true; ///< the user may show and hide it
};

/// What the user searches for in a grid.
struct SearchDescription
{
    QString field;        ///< the column; empty searches every column of the search frame
    bool reverse = false; ///< rows that do not match
    QString text;         ///< words that must all occur, in any order, folded
    QString number;       ///< first digits, in plain form

    /// Nothing is searched for: every row is shown.
    bool IsEmpty() const { return text.trimmed().isEmpty() && number.isEmpty(); }
    bool operator==(const SearchDescription &) const = default;
};

} // namespace host
