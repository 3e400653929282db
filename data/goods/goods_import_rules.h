#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

/// How the cells of a file are read, whatever they came from.
namespace goods {

/// A text as a Persian keyboard types it: Arabic yeh and kaf become Persian ones, blanks and line ends within become
/// single blanks, direction marks go.
QString ImportText(QStringView cell);

/// Without the apostrophe that keeps a sheet from taking a text for a formula, as our own lists are written.
QStringView WithoutGuard(QStringView cell);

/// "6.26E+12": a program has thrown digits away to make a long number fit its column.
bool HasExponent(QStringView cell);

/// A number from 0 with at most 15 digits before the point, in plain form with at most nine decimals; nothing for
/// anything else.
std::optional<QString> ImportNumber(QStringView cell);

/// The code of a good, 1 … 999999; nothing for anything else.
std::optional<int> ImportCode(QStringView cell);

/// The barcodes of a cell: as our lists write them (between "!" marks), or one below or beside the other with ";", ","
/// or "|" between.
QStringList ImportBarcodes(QStringView cell);

/// False when a barcode of 8 or 13 digits has another last digit than EAN-8 and EAN-13 demand.
bool CheckDigitFits(const QString &barcode);

} // namespace goods
