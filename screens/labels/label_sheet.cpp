#include "screens/labels/label_sheet.h"

#include <algorithm>
#include <cmath>

namespace labels {

namespace {

constexpr QSizeF ShelfLabel(80, 40);
constexpr QSizeF StickerLabel(50, 30);
constexpr QSizeF A4(210, 297);

/// Smaller labels have no room for a name above the bars of the shortest code.
constexpr QSizeF SmallestLabel(25, 14);

/// Stock beyond this is no number of labels.
constexpr int MostOfStock = 1'000'000;

/// Room between the edge of a label and what is printed on it: rolls and sheets are never fed to the hair.
constexpr double Padding = 2;
constexpr double SmallPadding = 1;
constexpr double Gap = 0.8;

/// The line of a name, as a share of the label's height, and between which heights it stays legible and modest.
constexpr double LineShare = 0.147;
constexpr double LowestLine = 3;
constexpr double HighestLine = 9;
constexpr double ShelfPrice = 1.7; ///< on the shelf it is read from afar
constexpr double Price = 1.1;
constexpr double LowLabel = 24;    ///< lower ones have one line for the name
constexpr double HighestBars = 25; ///< higher ones are no easier to read

} // namespace

Paper PaperOf(const Choices &choices)
{
    switch (choices.layout) {
    case Layout::Shelf:
        return {ShelfLabel, ShelfLabel};
    case Layout::Sticker:
        return {StickerLabel, StickerLabel};
    case Layout::Sheet:
        break;
    }
    const int columns = std::clamp(choices.columns, 1, MostColumns);
    const int rows = std::clamp(choices.rows, 1, MostRows);
    const QSizeF label((A4.width() - 2 * choices.sideMargin) / columns, (A4.height() - 2 * choices.topMargin) / rows);
    return {A4, label, columns, rows, choices.topMargin, choices.sideMargin};
}

bool IsUsable(const Paper &paper)
{
    return paper.label.width() >= SmallestLabel.width() && paper.label.height() >= SmallestLabel.height();
}

Spot SpotOf(const Paper &paper, int start, int number)
{
    const int place = std::clamp(start, 1, paper.PerPage()) - 1 + number;
    const int onPage = place % paper.PerPage();
    const int fromRight = onPage % paper.columns;
    const double left = paper.page.width() - paper.sideMargin - (fromRight + 1) * paper.label.width();
    const int fromTop = onPage / paper.columns;
    const double top = paper.topMargin + fromTop * paper.label.height();
    return {place / paper.PerPage(), QRectF(QPointF(left, top), paper.label)};
}

int PagesFor(const Paper &paper, int start, int labels)
{
    return labels <= 0 ? 0 : SpotOf(paper, start, labels - 1).page + 1;
}

int CountOfStock(host::Quantity stock)
{
    if (stock <= 0)
        return 0;
    return stock >= MostOfStock ? MostOfStock : static_cast<int>(std::ceil(stock));
}

Areas AreasOf(Layout layout, const QSizeF &label)
{
    const bool shelf = layout == Layout::Shelf;
    const bool low = label.height() < LowLabel;
    const double padding = low ? SmallPadding : Padding;
    const double line = std::clamp(label.height() * LineShare, LowestLine, HighestLine);
    const double width = label.width() - 2 * padding;
    const double price = line * (shelf ? ShelfPrice : Price);
    Areas areas;
    areas.nameLines = low ? 1 : 2;
    const double name = areas.nameLines * line;
    const double room = label.height() - 2 * padding - name - price - 2 * Gap;
    const double bars = std::min(room, HighestBars);
    double top = padding + (room - bars) / 2; // what is left over stands above and below
    const auto next = [&](double height) {
        const QRectF area(padding, top, width, height);
        top += height + Gap;
        return area;
    };
    areas.name = next(name);
    if (shelf)
        areas.price = next(price);
    areas.barcode = next(bars);
    if (!shelf)
        areas.price = next(price);
    return areas;
}

} // namespace labels
