#pragma once

#include "screens/labels/label_sheet.h"
#include "screens/labels/label_symbol.h"

#include <QList>
#include <QString>
#include <QStringList>

class QFont;
class QPainter;

namespace labels {

/// What is printed on one label.
struct Label
{
    QString name;
    QString price;   ///< as it is read, in Persian digits; empty for none
    QString barcode; ///< empty for none
    std::optional<Symbol> symbol;
};

/// The labels of one print.
struct Job
{
    Choices choices;
    QList<Label> labels;
    QList<int> order; ///< a place of `labels` for each label that is printed

    int Pages() const { return PagesFor(PaperOf(choices), choices.start, static_cast<int>(order.size())); }
};

/// The bars of the label can be printed on this layout so that readers take them; also true for a label without any.
bool BarsFit(const Label &label, const Choices &choices);

/// The name in at most so many lines of `width`, the last one elided; without direction marks and line ends, which only
/// come along with pasted names.
QStringList NameLines(const QString &name, const QFont &font, double width, int lines);

/// Paints a page, from 0, of the job. The painter's unit is a dot of the printer, of which an inch has `dotsPerInch`;
/// its origin is the corner of the paper. Bars start and end on whole dots.
void PaintPage(QPainter &painter, const Job &job, int page, int dotsPerInch);

/// A length in dots, rounded to the nearest.
int Dots(double millimetres, int dotsPerInch);

} // namespace labels
