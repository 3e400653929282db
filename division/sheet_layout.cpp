#include "division/sheet_layout.h"

#include <algorithm>

namespace division {

namespace {

/// Measures are told to nine decimals; what differs by less is the same.
constexpr double Least = 1e-9;

/// One piece to be placed: its part and its longer and shorter side.
struct Piece
{
    qsizetype Part = 0;
    double Longer = 0;
    double Shorter = 0;
};

/// A free rectangle of a sheet. Free ones never overlap, for every piece is cut out by full cuts.
struct Free
{
    int Sheet = 0;
    QRectF Place;
};

bool Fits(const QRectF &place, double length, double width)
{
    return length <= place.width() + Least && width <= place.height() + Least;
}

/// Free rectangles of all sheets, of which the one that is left with the least is taken first.
class Cutter
{
public:
    Cutter(SheetPlan &plan, const QList<SheetPart> &parts) : m_plan(plan), m_parts(parts) {}

    bool Place(const Piece &piece)
    {
        const SheetPart &part = m_parts[piece.Part];
        const bool bar = m_plan.Sheet.IsBar();
        const auto length = static_cast<double>(part.Length);
        const double width = bar ? 1 : static_cast<double>(part.Width);
        const QRectF whole = Whole();
        if (!Fits(whole, length, width) && (bar || !Fits(whole, width, length)))
            return false;
        while (true) {
            Choice best;
            for (qsizetype at = 0; at < m_free.size(); ++at) {
                Consider(best, at, length, width, false);
                if (!bar && length != width)
                    Consider(best, at, width, length, true);
            }
            if (best.At >= 0) {
                Cut(best, part);
                return true;
            }
            if (!OpenSheet())
                return false;
        }
    }

private:
    struct Choice
    {
        qsizetype At = -1;
        double Rest = 0; ///< of the shorter side of the free rectangle
        bool Turned = false;
        double Length = 0;
        double Width = 0;
    };

    void Consider(Choice &best, qsizetype at, double length, double width, bool turned) const
    {
        const QRectF &place = m_free[at].Place;
        if (!Fits(place, length, width))
            return;
        const double rest = std::min(place.width() - length, place.height() - width);
        if (best.At < 0 || rest < best.Rest - Least)
            best = {at, rest, turned, length, width};
    }

    QRectF Whole() const
    {
        const double width = m_plan.Sheet.IsBar() ? 1 : static_cast<double>(m_plan.Sheet.Width);
        return {0, 0, static_cast<double>(m_plan.Sheet.Length), width};
    }

    bool OpenSheet()
    {
        if (m_plan.Sheets.size() >= m_plan.Sheet.Count)
            return false;
        m_plan.Sheets << QList<PlacedPiece>();
        m_free << Free{static_cast<int>(m_plan.Sheets.size()) - 1, Whole()};
        return true;
    }

    /// The rest falls apart by the cut that leaves the larger piece whole.
    void Cut(const Choice &choice, const SheetPart &part)
    {
        const Free from = m_free.takeAt(choice.At);
        const QRectF &place = from.Place;
        m_plan.Sheets[from.Sheet] << PlacedPiece{
            {place.x(), place.y(), choice.Length, choice.Width}, choice.Turned, part.Row, part.Waste};
        const double right = place.width() - choice.Length;
        const double below = place.height() - choice.Width;
        const bool along = right * place.height() < below * place.width();
        Keep(from.Sheet, {place.x() + choice.Length, place.y(), right, along ? choice.Width : place.height()});
        Keep(from.Sheet, {place.x(), place.y() + choice.Width, along ? place.width() : choice.Length, below});
    }

    void Keep(int sheet, const QRectF &place)
    {
        if (place.width() > Least && place.height() > Least)
            m_free << Free{sheet, place};
    }

    SheetPlan &m_plan;
    const QList<SheetPart> &m_parts;
    QList<Free> m_free;
};

QList<Piece> PiecesOf(const SheetPlan &plan, const QList<SheetPart> &parts)
{
    QList<Piece> pieces;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const auto length = static_cast<double>(parts[i].Length);
        const double width = plan.Sheet.IsBar() ? 1 : static_cast<double>(parts[i].Width);
        if (length > 0 && width > 0)
            pieces.append(
                QList<Piece>(std::max(parts[i].Count, 0), Piece{i, std::max(length, width), std::min(length, width)}));
    }
    std::stable_sort(pieces.begin(), pieces.end(), [](const Piece &a, const Piece &b) {
        return a.Longer != b.Longer ? a.Longer > b.Longer : a.Shorter > b.Shorter;
    });
    return pieces;
}

bool AreTooMany(const QList<SheetPart> &parts)
{
    qint64 pieces = 0;
    for (const SheetPart &part : parts)
        pieces += std::max(part.Count, 0);
    return pieces > MostPieces;
}

} // namespace

SheetPlan PlanSheets(const SheetStock &sheet, const QList<SheetPart> &parts)
{
    SheetPlan plan{sheet, {}, {}, AreTooMany(parts)};
    if (plan.TooMany || sheet.Length <= 0)
        return plan;
    Cutter cutter(plan, parts);
    QList<int> left(parts.size(), 0);
    for (const Piece &piece : PiecesOf(plan, parts))
        if (!cutter.Place(piece))
            ++left[piece.Part];
    for (qsizetype i = 0; i < parts.size(); ++i) {
        if (left[i] == 0)
            continue;
        SheetPart missed = parts[i];
        missed.Count = left[i];
        plan.Left << missed;
    }
    return plan;
}

} // namespace division
