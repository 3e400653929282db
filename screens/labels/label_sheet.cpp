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

constexpr double LineHeight = 4.4; ///< of a name on a sticker
constexpr double SmallLineHeight = 3.4;
constexpr double LowLabel = 24; ///< lower ones have one line for the name

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
    const double top = paper.topMargin + onPage / paper.columns * paper.label.height();
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
    const QRectF inside = QRectF(QPointF(), label).adjusted(padding, padding, -padding, -padding);
    const int lines = low ? 1 : 2;
    const double nameHeight = lines * (shelf ? LineHeight * 1.3 : low ? SmallLineHeight : LineHeight);
    const double priceHeight = shelf ? LineHeight * 2.2 : low ? SmallLineHeight : LineHeight * 1.1;
    Areas areas;
    areas.nameLines = lines;
    areas.name = QRectF(inside.topLeft(), QSizeF(inside.width(), nameHeight));
    if (shelf) { // the price is read from afar, the barcode from near
        areas.price = QRectF(inside.left(), areas.name.bottom() + Gap, inside.width(), priceHeight);
        areas.barcode = QRectF(QPointF(inside.left(), areas.price.bottom() + Gap), inside.bottomRight());
    } else {
        areas.price = QRectF(inside.left(), inside.bottom() - priceHeight, inside.width(), priceHeight);
        areas.barcode =
            QRectF(QPointF(inside.left(), areas.name.bottom() + Gap), QPointF(inside.right(), areas.price.top() - Gap));
    }
    return areas;
}

} // namespace labels
