#include "host/screens/print_page.h"

#include "host/look/theme.h"

#include <QAction>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QScreen>
#include <QToolBar>
#include <QToolButton>

#include <numeric>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace host::print {

namespace {
constexpr double PointsPerInch = 72.0;
constexpr QSize PreviewSize(900, 700);
constexpr int MarginMillimetres = 10;
constexpr int CellPoints = 9;
constexpr double PadPoints = 4.0;

void SetUp(QPrinter &printer, const QString &title, QPageLayout::Orientation orientation)
{
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageMargins(QMarginsF(MarginMillimetres, MarginMillimetres, MarginMillimetres, MarginMillimetres),
                           QPageLayout::Millimeter);
    printer.setPageOrientation(orientation);
    printer.setDocName(title);
}

} // namespace

QRectF PageInPoints(QPainter &painter, const QPrinter &printer)
{
    const double scale = printer.resolution() / PointsPerInch;
    painter.scale(scale, scale);
    return {QPointF(), printer.pageLayout().paintRectPoints().size()};
}

QFont Font(int points, bool bold)
{
    QFont font = theme::InterfaceFont();
    font.setPixelSize(points); // of which the painter makes points
    font.setBold(bold);
    return font;
}

QString Text(const QString &text)
{
    constexpr auto option = QRegularExpression::UseUnicodePropertiesOption;
    static const QRegularExpression beforeNumber(u"(?<=\\p{Arabic}) (?=\\p{Nd})"_s, option);
    static const QRegularExpression afterNumber(u"(?<=\\p{Nd}) (?=\\p{Arabic})"_s, option);
    return QString(text).replace(beforeNumber, u" \u200F"_s).replace(afterNumber, u"\u200F "_s);
}

void TableRow(QPainter &painter, const QRectF &row, const std::vector<double> &widths, const QStringList &texts,
              bool heading)
{
    const QFont font = Font(CellPoints, heading);
    const QFontMetricsF metrics(font);
    painter.setFont(font);
    const double total = std::accumulate(widths.begin(), widths.end(), 0.0);
    double right = row.right();
    for (size_t column = 0; column < widths.size(); ++column) {
        const double width = row.width() * widths[column] / total;
        const QRectF cell(right - width, row.top(), width, row.height());
        painter.setPen(QPen(theme::PaperLine(), 0.5));
        painter.drawRect(cell);
        painter.setPen(theme::PaperInk());
        const QRectF inside = cell.adjusted(PadPoints, 0, -PadPoints, 0);
        const QString text =
            metrics.elidedText(Text(texts.value(static_cast<qsizetype>(column))), Qt::ElideRight, inside.width());
        painter.drawText(inside, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text);
        right -= width;
    }
}

void WritePdf(const QString &title, QPageLayout::Orientation orientation, const QString &file,
              const std::function<void(QPrinter &printer)> &paint)
{
    const QString draft = file + u".new"_s;
    const auto sweep = qScopeGuard([&draft] { QFile::remove(draft); });
    {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(draft);
        SetUp(printer, title, orientation);
        paint(printer);
    }
    QFile::remove(file);
    if (!QFile::rename(draft, file))
        throw std::runtime_error(u"فایل «%1» نوشته نشد: در این جا نمی‌توان نوشت"_s
                                     .arg(QFileInfo(file).fileName())
                                     .toStdString());
}

void SetUpPreview(QPrintPreviewDialog &preview)
{
    preview.resize(PreviewSize.boundedTo(preview.screen()->availableSize() - theme::WindowFrame));
    const auto bars = preview.findChildren<QToolBar *>();
    for (const QToolBar *bar : bars)
        for (QAction *action : bar->actions()) {
            QWidget *button = bar->widgetForAction(action);
            if (!qobject_cast<QToolButton *>(button))
                continue;
            button->setFocusPolicy(Qt::TabFocus);
            if (action->text() == QCoreApplication::translate("QPrintPreviewDialog", "Print"))
                action->setShortcut(QKeySequence::Print);
        }
}

void Preview(const QString &title, QPageLayout::Orientation orientation, QWidget *parent,
             const std::function<void(QPrinter &printer)> &paint)
{
    QPrinter printer(QPrinter::HighResolution);
    SetUp(printer, title, orientation);
    QPrintPreviewDialog preview(&printer, parent);
    preview.setWindowTitle(title);
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, [&](QPrinter *on) { paint(*on); });
    SetUpPreview(preview);
    preview.exec();
}

} // namespace host::print
