#include "division/sheet_painter.h"

#include "host/controls/number_text.h"
#include "host/look/palette.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace division {

namespace {

/// What is cut is drawn as on paper, in whichever look the screen is.
const host::Palette &Paper()
{
    return host::Palette::Light();
}

constexpr int MostDrawn = 12;        ///< sheets
constexpr double Gap = 10;           ///< between sheets, logical pixels
constexpr double BarHeight = 56;     ///< at most
constexpr double SmallestText = 0.6; ///< of the font; measures that would be smaller are left out
constexpr double TextMargin = 6;
constexpr int MeasureDecimals = 4;

QString Measure(double value)
{
    return host::DisplayNumber(host::QuantityToText(static_cast<host::Quantity>(value), MeasureDecimals), false);
}

/// Length first where reading begins.
QString Measures(double length, double width)
{
    return Measure(length) + u" × "_s + Measure(width);
}

/// Writes a measure into a place, smaller or upright where it would not fit, or not at all.
void Write(QPainter &painter, const QRectF &place, const QString &text, const QColor &ink)
{
    const QFontMetricsF metrics(painter.font(), painter.device());
    const QSizeF needed(metrics.horizontalAdvance(text) + TextMargin, metrics.height());
    const auto room = [&](const QSizeF &size) {
        return std::min({1.0, size.width() / needed.width(), size.height() / needed.height()});
    };
    const bool along = room(place.size()) >= room(place.size().transposed());
    const double scale = along ? room(place.size()) : room(place.size().transposed());
    if (scale < SmallestText)
        return;
    painter.save();
    painter.setPen(ink);
    painter.translate(place.center());
    if (!along)
        painter.rotate(-90);
    painter.scale(scale, scale);
    painter.drawText(QRectF(QPointF(-needed.width() / 2, -needed.height() / 2), needed), Qt::AlignCenter, text);
    painter.restore();
}

/// Equal pieces have one tint; neighbours in the list differ.
QColor Tint(int row)
{
    constexpr int Tints = 6;
    const QColor accent = Paper().Accent;
    const double hue = accent.hslHueF() + static_cast<double>(row % Tints) * 0.61803;
    return QColor::fromHslF(static_cast<float>(hue - static_cast<int>(hue)), 0.45F, 0.87F);
}

void PaintPiece(QPainter &painter, const QRectF &place, const PlacedPiece &piece, bool isBar, int current)
{
    const bool typed = piece.Row == 0;
    const bool stands = piece.Row == current;
    painter.setPen(
        QPen(typed || stands ? Paper().Accent : Paper().InkSoft, stands ? 2 : 1, typed ? Qt::DashLine : Qt::SolidLine));
    painter.setBrush(typed ? Paper().Surface : stands ? Paper().AccentSoft.darker(108) : Tint(piece.Row));
    painter.drawRect(place);
    if (piece.Waste) {
        painter.setBrush(QBrush(Paper().InkSoft, Qt::BDiagPattern));
        painter.drawRect(place);
    }
    const double along = piece.Turned ? piece.Place.height() : piece.Place.width();
    const double across = piece.Turned ? piece.Place.width() : piece.Place.height();
    Write(painter, place.adjusted(1, 1, -1, -1), isBar ? Measure(along) : Measures(along, across), Paper().Ink);
}

/// Where the sheets stand: columns, rows and the scale that lets all of them be seen.
struct Arrangement
{
    int Columns = 1;
    int Rows = 1;
    double ScaleX = 0;
    double ScaleY = 0;
};

Arrangement Arrange(const QSizeF &area, const QSizeF &sheet, int sheets, double caption, bool isBar)
{
    Arrangement best;
    for (int columns = 1; columns <= (isBar ? 1 : sheets); ++columns) {
        const int rows = (sheets + columns - 1) / columns;
        const double width = (area.width() - caption - Gap * (columns - 1)) / columns;
        const double height = (area.height() - Gap * (rows - 1)) / rows - caption;
        if (width <= 0 || height <= 0)
            continue;
        const double x = width / sheet.width();
        const double y = isBar ? std::min(height, BarHeight) : height / sheet.height();
        const double scale = std::min(x, y);
        if (!isBar && scale <= best.ScaleX)
            continue;
        best = isBar ? Arrangement{columns, rows, x, y} : Arrangement{columns, rows, scale, scale};
    }
    return best;
}

void PaintSheet(QPainter &painter, const QRectF &place, const SheetPlan &plan, int number, int current)
{
    painter.setPen(QPen(Paper().Ink, 1.4));
    painter.setBrush(Paper().Surface);
    painter.drawRect(place);
    const bool bar = plan.Sheet.IsBar();
    const double scaleX = place.width() / static_cast<double>(plan.Sheet.Length);
    const double scaleY = bar ? place.height() : place.height() / static_cast<double>(plan.Sheet.Width);
    const auto drawn = [&](const QRectF &piece) {
        return QRectF(place.right() - piece.right() * scaleX, place.top() + piece.top() * scaleY,
                      piece.width() * scaleX, piece.height() * scaleY);
    };
    if (number >= plan.Sheets.size())
        return;
    const auto paint = [&](bool highlighted) {
        for (const PlacedPiece &piece : plan.Sheets[number])
            if ((piece.Row == current) == highlighted)
                PaintPiece(painter, drawn(piece.Place), piece, bar, current);
    };
    paint(false);
    paint(true); // over the lines of its neighbours
}

} // namespace

void PaintSheets(QPainter &painter, const QRectF &area, const SheetPlan &plan, int current)
{
    const int sheets = std::clamp(plan.Sheet.Count, 0, MostDrawn);
    if (plan.Sheet.Length <= 0 || sheets == 0 || plan.TooMany)
        return;
    painter.save();
    painter.setLayoutDirection(Qt::RightToLeft);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool bar = plan.Sheet.IsBar();
    const QSizeF sheet(static_cast<double>(plan.Sheet.Length), bar ? 1 : static_cast<double>(plan.Sheet.Width));
    const double caption = QFontMetricsF(painter.font(), painter.device()).height() + 2;
    const Arrangement to = Arrange(area.size(), sheet, sheets, caption, bar);
    const QSizeF size(sheet.width() * to.ScaleX, sheet.height() * to.ScaleY);
    for (int i = 0; i < sheets && to.ScaleX > 0; ++i) {
        const int row = i / to.Columns;
        const double right = area.right() - (i % to.Columns) * (size.width() + Gap);
        const double top = area.top() + row * (size.height() + caption + Gap) + caption;
        const QRectF place(right - size.width(), top, size.width(), size.height());
        PaintSheet(painter, place, plan, i, current);
        Write(painter, {place.left(), place.top() - caption, place.width(), caption}, Measure(sheet.width()),
              Paper().InkSoft);
        if (!bar && i % to.Columns == to.Columns - 1)
            Write(painter, {place.left() - caption, place.top(), caption, place.height()}, Measure(sheet.height()),
                  Paper().InkSoft);
    }
    painter.restore();
}

QString PlanRemark(const SheetPlan &plan)
{
    if (plan.TooMany)
        return u"قطعه ها برای نمایش بیش از اندازه است."_s;
    QStringList left;
    for (const SheetPart &part : plan.Left) {
        const auto length = static_cast<double>(part.Length);
        const QString piece = plan.Sheet.IsBar() ? Measure(length) : Measures(length, static_cast<double>(part.Width));
        left << Measure(part.Count) + u" قطعه "_s + piece;
    }
    if (!left.isEmpty())
        return u"با این برش جا نمی شود: "_s + left.join(u"، "_s);
    if (plan.Sheet.Count > MostDrawn)
        return u"%1 برگ از %2 برگ نمایش داده شده است."_s.arg(Measure(MostDrawn), Measure(plan.Sheet.Count));
    return {};
}

} // namespace division
