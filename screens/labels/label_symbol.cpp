#include "screens/labels/label_symbol.h"

#include "rules/barcode_text.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <zint.h>

namespace labels {

namespace {

// Widths of a module in millimetres.
constexpr double WidestModule = 0.38;
constexpr double NarrowestEan = 0.25;
constexpr double NarrowestCode128 = 0.125;
constexpr double MillimetresPerInch = 25.4;

constexpr int Code128Quiet = 10;
constexpr int Ean8Quiet = 7;
constexpr int Ean13QuietLeft = 11;
constexpr int Ean13QuietRight = 7;

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool HasRightCheckDigit(const QString &digits)
{
    int sum = 0;
    for (qsizetype i = 0; i < digits.size(); ++i) // weights 1 and 3 in turns, the check digit has 1
        sum += (digits.at(i).unicode() - u'0') * ((digits.size() - 1 - i) % 2 ? 3 : 1);
    return sum % 10 == 0;
}

/// The digits of an EAN stand between its guards, the first of thirteen before them.
QList<Symbol::Digits> DigitsOf(const Symbol &symbol, const QString &text)
{
    switch (symbol.symbology) {
    case Symbology::Ean8:
        return {{text.first(4), 3, 31}, {text.last(4), 36, 64}};
    case Symbology::Ean13:
        return {{text.first(1), -Ean13QuietLeft, 0}, {text.mid(1, 6), 3, 45}, {text.last(6), 50, 92}};
    case Symbology::Code128:
        break;
    }
    return {{text, 0, symbol.modules}};
}

void SetQuietZones(Symbol &symbol)
{
    const bool ean13 = symbol.symbology == Symbology::Ean13;
    const int same = symbol.symbology == Symbology::Ean8 ? Ean8Quiet : Code128Quiet;
    symbol.quietLeft = ean13 ? Ean13QuietLeft : same;
    symbol.quietRight = ean13 ? Ean13QuietRight : same;
}

} // namespace

std::optional<Symbology> SymbologyOf(const QString &barcode)
{
    if (barcode.isEmpty() ||
        !std::all_of(barcode.cbegin(), barcode.cend(), [](QChar c) { return c >= u' ' && c <= u'~'; }))
        return {};
    const bool digits = std::all_of(barcode.cbegin(), barcode.cend(), IsDigit);
    if (digits && barcode.size() == 13 && HasRightCheckDigit(barcode))
        return Symbology::Ean13;
    if (digits && barcode.size() == 8 && HasRightCheckDigit(barcode))
        return Symbology::Ean8;
    return Symbology::Code128;
}

QString PrintedBarcode(const QString &stored)
{
    for (const QString &one : goods::UnpackBarcodes(stored))
        if (QString barcode = goods::CleanBarcode(one); SymbologyOf(barcode))
            return barcode;
    return {};
}

std::optional<Symbol> Encode(const QString &barcode)
{
    const std::optional<Symbology> symbology = SymbologyOf(barcode);
    const std::unique_ptr<zint_symbol, void (*)(zint_symbol *)> zint(ZBarcode_Create(), ZBarcode_Delete);
    if (!symbology || !zint)
        return {};
    const bool ean = *symbology != Symbology::Code128;
    zint->symbology = ean ? BARCODE_EANX : BARCODE_CODE128;
    zint->scale = 0.5F; // vectors count half modules otherwise
    zint->show_hrt = 0;
    zint->output_options = BARCODE_NO_QUIET_ZONES;
    const QByteArray text = (ean ? barcode.chopped(1) : barcode).toLatin1(); // zint adds the check digit
    const auto *bytes = reinterpret_cast<const unsigned char *>(text.constData());
    if (ZBarcode_Encode_and_Buffer_Vector(zint.get(), bytes, static_cast<int>(text.size()), 0) >= ZINT_ERROR)
        return {};
    Symbol symbol;
    symbol.symbology = *symbology;
    symbol.modules = zint->width;
    SetQuietZones(symbol);
    float lowest = zint->vector->height;
    for (const zint_vector_rect *bar = zint->vector->rectangles; bar; bar = bar->next)
        lowest = std::min(lowest, bar->height);
    for (const zint_vector_rect *bar = zint->vector->rectangles; bar; bar = bar->next)
        symbol.bars << Symbol::Bar{qRound(bar->x), qRound(bar->width), bar->height > lowest};
    symbol.digits = DigitsOf(symbol, barcode);
    return symbol;
}

int ModuleDots(const Symbol &symbol, int widthDots, int dotsPerInch)
{
    const double narrowest = symbol.symbology == Symbology::Code128 ? NarrowestCode128 : NarrowestEan;
    const double perMillimetre = dotsPerInch / MillimetresPerInch;
    const int least = std::max(1, static_cast<int>(std::ceil(narrowest * perMillimetre)));
    const int most = std::max(least, static_cast<int>(WidestModule * perMillimetre));
    const int fits = std::min(most, widthDots / std::max(1, symbol.Width()));
    return fits < least ? 0 : fits;
}

} // namespace labels
