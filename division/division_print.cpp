#include "division/division_print.h"

#include "division/sheet_layout.h"
#include "division/sheet_painter.h"
#include "host/controls/number_text.h"
#include "host/data/persian_text.h"
#include "host/look/theme.h"
#include "host/screens/print_page.h"

#include <QPainter>
#include <QPrinter>

#include <cmath>

using namespace Qt::StringLiterals;

namespace print = host::print;

namespace division {

namespace {

constexpr double TitleHeight = 34;
constexpr double LineHeight = 20;
constexpr double Gap = 12;
constexpr double SheetsHeight = 190;
constexpr double RollsHeight = 90;
constexpr int TitleSize = 14;
constexpr int HeadingSize = 10;
constexpr int LineSize = 9;

/// The columns of the parts, in the order and with the words of the screen.
struct Column
{
    const char16_t *caption;
    host::Quantity host::TAmounts::*amount;
};
constexpr Column Columns[] = {{u"طول", &host::TAmounts::Length},
                              {u"عرض", &host::TAmounts::Width},
                              {u"تعداد", &host::TAmounts::Amount3},
                              {u"مقدار2", &host::TAmounts::Amount2},
                              {u"مقدار", &host::TAmounts::Amount1}};

std::function<void(QPainter &, const QRectF &)> Line(const QString &text, int size, bool bold = false)
{
    return [text, size, bold](QPainter &painter, const QRectF &area) {
        painter.setPen(host::theme::Ink());
        painter.setFont(print::Font(size, bold));
        const QString shown = QFontMetricsF(painter.font()).elidedText(print::Text(text), Qt::ElideRight, area.width());
        painter.drawText(area, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, shown);
    };
}

int Pieces(host::Quantity count)
{
    return std::max(1, static_cast<int>(std::lround(count)));
}

host::TAmounts AmountsAt(const host::Dataset &rows, int place)
{
    const auto number = [&](QStringView field) {
        return host::QuantityFromText(rows.FieldAt(place, field).toString());
    };
    return {number(u"Amount1"), number(u"Amount2"), number(u"Amount1"),
            number(u"Length"),  number(u"Width"),   number(u"Amount3")};
}

} // namespace

DivisionPrinter::DivisionPrinter(const TDivision_DM &data, const host::TDivisionHeader &header)
    : m_data(data), m_header(header), m_parts(data.Parts())
{}

QString DivisionPrinter::Title() const
{
    return u"تقسیم جزئیات شماره "_s + host::PersianDigits(QString::number(m_header.Code));
}

/// "طول ۲٫۵، عرض ۱٫۵، تعداد ۲، مقدار ۷٫۵ متر مربع": what is not 0.
QString DivisionPrinter::Taken(int place) const
{
    const host::TAmounts taken = AmountsAt(m_data.Rows_QRY, place);
    const auto unit = [&](QStringView field) { return m_data.Rows_QRY.FieldAt(place, field).toString(); };
    QStringList said;
    for (const Column &column : Columns) {
        if (taken.*column.amount == 0)
            continue;
        QString text = QString::fromUtf16(column.caption) + u' ' + host::DisplayAmount(taken.*column.amount);
        if (column.amount == &host::TAmounts::Amount1)
            text += u' ' + unit(u"Unit1");
        else if (column.amount == &host::TAmounts::Amount2)
            text += u' ' + unit(u"Unit2");
        said << text.trimmed();
    }
    return u"برداشت: "_s + said.join(u"، ");
}

void DivisionPrinter::AddParts(std::vector<Block> &blocks, const QList<TPrintedPart> &parts) const
{
    std::vector<const Column *> shown;
    for (const Column &column : Columns)
        if (std::any_of(parts.cbegin(), parts.cend(),
                        [&](const TPrintedPart &part) { return part.Amounts.*column.amount != 0; }))
            shown.push_back(&column);
    const bool waste = std::any_of(parts.cbegin(), parts.cend(), [](const TPrintedPart &part) { return part.Waste; });
    QStringList captions{u"ردیف"_s};
    std::vector<double> widths{1};
    for (const Column *column : shown) {
        captions << QString::fromUtf16(column->caption);
        widths.push_back(2);
    }
    if (waste) {
        captions << u"ضایعات"_s;
        widths.push_back(1);
    }
    const auto row = [widths](const QStringList &texts, bool heading) {
        return [=](QPainter &painter, const QRectF &area) {
            if (heading)
                painter.fillRect(area, QColor(0xe4, 0xea, 0xee));
            print::TableRow(painter, area, widths, texts, heading);
        };
    };
    blocks.push_back({LineHeight, true, row(captions, true)});
    for (qsizetype number = 0; number < parts.size(); ++number) {
        QStringList texts{host::PersianDigits(QString::number(number + 1))};
        for (const Column *column : shown)
            texts << host::DisplayAmount(parts[number].Amounts.*column->amount);
        if (waste)
            texts << (parts[number].Waste ? u"✓"_s : QString());
        blocks.push_back({LineHeight, false, row(texts, false)});
    }
}

void DivisionPrinter::AddSheets(std::vector<Block> &blocks, const host::TAmounts &taken,
                                const QList<TPrintedPart> &parts, double pageHeight) const
{
    const bool sheets = taken.Length > 0 && taken.Width > 0;
    if (!sheets && (taken.Amount2 <= 0 || taken.Amount3 <= 0))
        return; // neither sheets nor rolls
    const auto stock = [sheets](const host::TAmounts &a) {
        return sheets ? SheetStock{a.Length, a.Width, Pieces(a.Amount3)} : SheetStock{a.Amount3, 0, Pieces(a.Amount2)};
    };
    QList<SheetPart> pieces;
    for (const TPrintedPart &part : parts) {
        const SheetStock cut = stock(part.Amounts);
        pieces << SheetPart{cut.Length, cut.Width, cut.Count, part.OperationRow, part.Waste};
    }
    const SheetPlan plan = PlanSheets(stock(taken), pieces);
    blocks.push_back({std::min(sheets ? SheetsHeight : RollsHeight, pageHeight), false,
                      [plan](QPainter &painter, const QRectF &area) {
                          painter.setFont(print::Font(LineSize));
                          PaintSheets(painter, area.adjusted(0, Gap / 2, 0, 0), plan);
                      }});
    if (const QString remark = PlanRemark(plan); !remark.isEmpty())
        blocks.push_back({LineHeight, false, Line(remark, LineSize)});
}

void DivisionPrinter::AddRow(std::vector<Block> &blocks, int place, double pageHeight) const
{
    const host::Dataset &rows = m_data.Rows_QRY;
    const auto text = [&](QStringView field) { return rows.FieldAt(place, field).toString().trimmed(); };
    QStringList names{text(u"GoodName"), text(u"GoodDetail"), u"انبار "_s + text(u"StoreName")};
    names.removeAll(QString());
    blocks.push_back({Gap, true, {}});
    blocks.push_back({LineHeight, true,
                      Line(host::PersianDigits(QString::number(place + 1)) + u"   ·   "_s + names.join(u"   ·   "),
                           HeadingSize, true)});
    blocks.push_back({LineHeight, true, Line(Taken(place), LineSize)});
    if (const QString comment = text(u"Comment"); !comment.isEmpty())
        blocks.push_back({LineHeight, true, Line(u"توضیحات: "_s + comment, LineSize)});
    QList<TPrintedPart> parts;
    const int row = rows.FieldAt(place, u"OperationRow").toInt();
    std::copy_if(m_parts.cbegin(), m_parts.cend(), std::back_inserter(parts),
                 [row](const TPrintedPart &part) { return part.DivisionRow == row; });
    AddParts(blocks, parts);
    AddSheets(blocks, AmountsAt(rows, place), parts, pageHeight);
}

std::vector<DivisionPrinter::Block> DivisionPrinter::Blocks(double pageHeight) const
{
    std::vector<Block> blocks;
    if (!m_header.Comment.isEmpty())
        blocks.push_back({LineHeight, false, Line(u"توضیحات: "_s + m_header.Comment, LineSize)});
    for (int place = 0; place < m_data.Rows_QRY.RecordCount(); ++place)
        AddRow(blocks, place, pageHeight);
    return blocks;
}

/// A page ends where the next block, with what must follow it, has no room.
std::vector<DivisionPrinter::Page> DivisionPrinter::Pages(double height) const
{
    std::vector<Page> pages(1);
    double used = 0;
    double together = 0;
    Page waiting;
    for (Block &block : Blocks(height)) {
        together += block.Height;
        waiting.push_back(std::move(block));
        if (waiting.back().Follows)
            continue;
        if (used > 0 && used + together > height) {
            pages.emplace_back();
            used = 0;
        }
        std::move(waiting.begin(), waiting.end(), std::back_inserter(pages.back()));
        waiting.clear();
        used += std::exchange(together, 0);
    }
    std::move(waiting.begin(), waiting.end(), std::back_inserter(pages.back()));
    return pages;
}

void DivisionPrinter::Print(QPrinter &printer) const
{
    QPainter painter(&printer);
    if (!painter.isActive())
        return;
    const QRectF paper = print::PageInPoints(painter, printer);
    const QRectF top(paper.topLeft(), QSizeF(paper.width(), TitleHeight));
    const QRectF body = paper.adjusted(0, TitleHeight, 0, -LineHeight);
    const QRectF foot(body.bottomLeft(), paper.bottomRight());
    const std::vector<Page> pages = Pages(body.height());
    for (size_t number = 0; number < pages.size(); ++number) {
        if (number > 0)
            printer.newPage();
        Line(Title(), TitleSize, true)(painter, top);
        painter.setFont(print::Font(LineSize));
        painter.drawText(top, Qt::AlignLeft | Qt::AlignVCenter, host::PersianDigits(m_header.Date));
        QRectF area(body.topLeft(), QSizeF(body.width(), 0));
        for (const Block &block : pages[number]) {
            area = QRectF(area.bottomLeft(), QSizeF(body.width(), block.Height));
            if (block.Paint)
                block.Paint(painter, area);
        }
        painter.setPen(host::theme::Ink());
        painter.setFont(print::Font(LineSize));
        painter.drawText(foot, Qt::AlignCenter,
                         print::Text(host::PersianDigits(u"صفحه %1 از %2"_s.arg(number + 1).arg(pages.size()))));
    }
}

} // namespace division
