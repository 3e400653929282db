#pragma once

#include "division/division_dm.h"

#include <QRectF>

#include <functional>
#include <vector>

class QPainter;
class QPrinter;

namespace division {

/// A division on paper: its header, and for each row what is taken of which unit, the parts as a table, and of
/// sheets and rolls how the parts lie on them.
class DivisionPrinter
{
public:
    /// `data` has the rows open, and outlives the printer.
    DivisionPrinter(const TDivision_DM &data, const host::TDivisionHeader &header);

    /// Paints every page on `printer`.
    void Print(QPrinter &printer) const;

private:
    /// What is kept together on a page.
    struct Block
    {
        double Height = 0;    ///< in points
        bool Follows = false; ///< not the last block of its page: what belongs to it comes next
        std::function<void(QPainter &painter, const QRectF &area)> Paint;
    };

    using Page = std::vector<Block>;

    std::vector<Page> Pages(double height) const;
    std::vector<Block> Blocks(double pageHeight) const;
    void AddRow(std::vector<Block> &blocks, int place, double pageHeight) const;
    void AddParts(std::vector<Block> &blocks, const QList<TPrintedPart> &parts) const;
    void AddSheets(std::vector<Block> &blocks, const host::TAmounts &taken, const QList<TPrintedPart> &parts,
                   double pageHeight) const;
    QString Taken(int place) const;
    QString Title() const;

    const TDivision_DM &m_data;
    host::TDivisionHeader m_header;
    QList<TPrintedPart> m_parts;
};

} // namespace division
