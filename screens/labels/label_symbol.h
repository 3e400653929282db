#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace labels {

/// How a barcode is drawn.
enum class Symbology : quint8 { Ean8, Ean13, Code128 };

/// EAN for eight or thirteen digits with the right check digit, Code 128 for any other ASCII text; nothing for a text
/// that has no bars (Persian short names).
std::optional<Symbology> SymbologyOf(const QString &barcode);

/// The barcode of a good that is printed, out of the stored text with its marks: the first that has bars. Empty when
/// none has.
QString PrintedBarcode(const QString &stored);

/// A barcode as bars. Widths and places are modules, the width of the narrowest bar, from the first bar on.
struct Symbol
{
    struct Bar
    {
        int left = 0;
        int width = 0;
        bool guard = false; ///< reaches down between the digits (EAN)
    };
    /// A piece of the text below the bars.
    struct Digits
    {
        QString text;
        int left = 0;
        int right = 0;
    };

    Symbology symbology = Symbology::Code128;
    QList<Bar> bars;
    QList<Digits> digits;
    int modules = 0;
    int quietLeft = 0; ///< blank modules that a reader needs before the first bar
    int quietRight = 0;

    int Width() const { return quietLeft + modules + quietRight; }
};

/// The bars of a text that has a symbology; nothing when it is too long for one.
std::optional<Symbol> Encode(const QString &barcode);

/// The width of a module in dots of the printer, for an area of `widthDots`: as wide as fits, up to the usual size.
/// 0 when even the narrowest that readers take does not fit.
int ModuleDots(const Symbol &symbol, int widthDots, int dotsPerInch);

} // namespace labels
