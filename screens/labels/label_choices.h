#pragma once

#include <QByteArray>
#include <QtCore/qglobal.h>

namespace labels {

/// The ready layouts.
enum class Layout : quint8 {
    Shelf,   ///< 80 × 40 mm from a roll: name, large price, barcode
    Sticker, ///< 50 × 30 mm from a roll: name, barcode, price
    Sheet,   ///< A4, stickers in rows and columns
};

/// How many labels of each good.
enum class CountBy : quint8 {
    Same,  ///< as many of each
    Typed, ///< as typed beside each good
    Stock, ///< one for each piece on hand
};

inline constexpr int ConsumerPrice = -1;  ///< instead of a price level
inline constexpr int OwnDefaultLevel = 0; ///< the default level of each good

inline constexpr int MostRows = 20;
inline constexpr int MostColumns = 8;

/// What the user chooses about the labels; kept per user. Lengths are millimetres.
struct Choices
{
    Layout layout = Layout::Shelf;
    int priceLevel = OwnDefaultLevel; ///< 1 … 10, or one of the two above
    CountBy countBy = CountBy::Same;
    int count = 1;         ///< of each good, for CountBy::Same
    int dotsPerInch = 203; ///< of the printer: bars are whole numbers of its dots

    // The sheet.
    int rows = 8;
    int columns = 3;
    double topMargin = 0;  ///< above the first row and below the last
    double sideMargin = 0; ///< on both sides
    int start = 1;         ///< the first free place, counted from 1 in rows from the top right

    bool operator==(const Choices &) const = default;
};

/// The choices as they are kept. The place where a partly used sheet begins is not: the next sheet is another one.
QByteArray Kept(const Choices &choices);
/// What Kept() gave; the defaults for anything else.
Choices ChoicesOf(const QByteArray &kept);

} // namespace labels
