#include "screens/labels/label_painter.h"

#include "host/look/theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTextLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace labels {

namespace {

constexpr double MillimetresPerInch = 25.4;
/// A line of text is this much of its height, the rest is room for what hangs below.
constexpr double FontOfLine = 0.78;
constexpr double DigitsHeight = 2.8; ///< millimetres
constexpr double DigitsShare = 0.3;  ///< of the height of the bars, where that is less
constexpr int SmallestFont = 6;      ///< dots

QFont FontOf(double pixels, bool bold)
{
    QFont font = host::theme::InterfaceFont();
    font.setPixelSize(std::max(SmallestFont, static_cast<int>(pixels)));
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// The font made smaller until the text fits.
QFont Fitting(QFont font, const QString &text, double width)
{
    const double needed = QFontMetricsF(font).horizontalAdvance(text);
    if (needed > width)
        font.setPixelSize(std::max(SmallestFont, static_cast<int>(font.pixelSize() * width / needed)));
    return font;
}

/// What is painted in one area, in dots.
class LabelPainter
{
public:
    LabelPainter(QPainter &painter, const QPoint &corner, int dotsPerInch)
        : m_painter(painter), m_corner(corner), m_dotsPerInch(dotsPerInch)
    {}

    void Name(const QString &name, const QRectF &area, int lines)
    {
        const QRect rect = Rect(area);
        const int height = rect.height() / std::max(1, lines);
        const QFont font = FontOf(height * FontOfLine, true);
        const QStringList texts = NameLines(name, font, rect.width(), lines);
        QRect line(rect.left(), rect.top() + (rect.height() - height * static_cast<int>(texts.size())) / 2,
                   rect.width(), height);
        for (const QString &text : texts) {
            Text(line, font, text);
            line.translate(0, height);
        }
    }

    void Price(const QString &price, const QRectF &area)
    {
        const QRect rect = Rect(area);
        Text(rect, Fitting(FontOf(rect.height() * FontOfLine, true), price, rect.width()), price);
    }

    void Barcode(const Label &label, const QRectF &area)
    {
        const QRect rect = Rect(area);
        const int module = label.symbol ? ModuleDots(*label.symbol, rect.width(), m_dotsPerInch) : 0;
        const int digits = Dots(std::min(DigitsHeight, area.height() * DigitsShare), m_dotsPerInch);
        if (module > 0) // bars that nobody could read would only look like some
            Bars(*label.symbol, rect, module, digits);
        else
            Digits(QRect(rect.left(), rect.center().y() - digits, rect.width(), 2 * digits), label.barcode);
    }

private:
    void Bars(const Symbol &symbol, const QRect &rect, int module, int digits)
    {
        // The quiet zones belong to the symbol: with them it is centred.
        const int first = rect.left() + (rect.width() - symbol.Width() * module) / 2 + symbol.quietLeft * module;
        const int height = rect.height() - digits;
        for (const Symbol::Bar &bar : symbol.bars)
            m_painter.fillRect(
                QRect(first + bar.left * module, rect.top(), bar.width * module, height + (bar.guard ? digits / 2 : 0)),
                Qt::black);
        for (const Symbol::Digits &part : symbol.digits) {
            const QRect place(first + part.left * module, rect.bottom() + 1 - digits, (part.right - part.left) * module,
                              digits);
            Digits(place, part.text);
        }
    }

    void Digits(const QRect &rect, const QString &text)
    {
        Draw(rect, Fitting(FontOf(rect.height() * FontOfLine, false), text, rect.width()), u"\u200E"_s + text);
    }

    void Text(const QRect &rect, const QFont &font, const QString &text) { Draw(rect, font, u"\u200F"_s + text); }

    /// Outlines, because a preview keeps runs of one direction apart and would put the signs between them elsewhere
    /// than the printer does. The mark in front says in which direction the text is read.
    void Draw(const QRect &rect, const QFont &font, const QString &text)
    {
        QPainterPath path;
        path.addText(QPointF(), font, text);
        const QFontMetricsF metrics(font);
        const double baseline = rect.top() + (rect.height() + metrics.ascent() - metrics.descent()) / 2;
        const QRectF drawn = path.boundingRect();
        m_painter.fillPath(path.translated(rect.left() + rect.width() / 2.0 - drawn.center().x(), baseline), Qt::black);
    }

    QRect Rect(const QRectF &area) const
    {
        const QPoint from(Dots(area.left(), m_dotsPerInch), Dots(area.top(), m_dotsPerInch));
        const QPoint to(Dots(area.right(), m_dotsPerInch) - 1, Dots(area.bottom(), m_dotsPerInch) - 1);
        return QRect(from, to).translated(m_corner);
    }

    QPainter &m_painter;
    QPoint m_corner;
    int m_dotsPerInch;
};

} // namespace

int Dots(double millimetres, int dotsPerInch)
{
    return qRound(millimetres * dotsPerInch / MillimetresPerInch);
}

bool BarsFit(const Label &label, const Choices &choices)
{
    if (label.barcode.isEmpty())
        return true;
    const Areas areas = AreasOf(choices.layout, PaperOf(choices).label);
    const int width =
        Dots(areas.barcode.right(), choices.dotsPerInch) - Dots(areas.barcode.left(), choices.dotsPerInch);
    return label.symbol && areas.barcode.height() > 0 && ModuleDots(*label.symbol, width, choices.dotsPerInch) > 0;
}

QStringList NameLines(const QString &name, const QFont &font, double width, int lines)
{
    static const QRegularExpression marks(u"[\\x{200E}\\x{200F}\\x{202A}-\\x{202E}\\x{2066}-\\x{2069}]"_s);
    const QString text = QString(name).remove(marks).simplified();
    if (text.isEmpty())
        return {};
    QTextOption option;
    option.setTextDirection(Qt::RightToLeft);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout(text, font);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList found;
    while (found.size() < lines) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        const bool last = found.size() == lines - 1;
        const QString rest = text.mid(line.textStart());
        found << (last ? QFontMetricsF(font).elidedText(rest, Qt::ElideRight, width)
                       : rest.first(line.textLength()).trimmed());
    }
    layout.endLayout();
    return found;
}

void PaintPage(QPainter &painter, const Job &job, int page, int dotsPerInch)
{
    const Paper paper = PaperOf(job.choices);
    const Areas areas = AreasOf(job.choices.layout, paper.label);
    const int before = std::clamp(job.choices.start, 1, paper.PerPage()) - 1; // places used up already
    const int first = std::max(0, page * paper.PerPage() - before);
    const int end = std::min(static_cast<int>(job.order.size()), (page + 1) * paper.PerPage() - before);
    for (int number = first; number < end; ++number) {
        const QPointF corner = SpotOf(paper, job.choices.start, number).at.topLeft();
        const Label &label = job.labels.at(job.order.at(number));
        LabelPainter one(painter, QPoint(Dots(corner.x(), dotsPerInch), Dots(corner.y(), dotsPerInch)), dotsPerInch);
        one.Name(label.name, areas.name, areas.nameLines);
        one.Price(label.price, areas.price);
        if (!label.barcode.isEmpty())
            one.Barcode(label, areas.barcode);
    }
}

} // namespace labels
