#pragma once

#include "data/goods/goods_import_table.h"

#include <QByteArray>

namespace goods_import {

/// The first sheet of an XLSX or ODS workbook that holds anything. A formula counts with its stored value, a date comes
/// as "2024-07-30", and a number of more than 15 digits in the form of its exponent, for the program that wrote it kept
/// no more. Throws std::runtime_error, whose text is for the user.
goods::ImportTable ReadBook(const QByteArray &bytes);

/// The rows of a file, by what it holds, whatever its name ends in. Throws as above.
goods::ImportTable ReadSheetFile(const QString &file);

} // namespace goods_import
