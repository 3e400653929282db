#pragma once

#include "data/goods/goods_import_table.h"

#include <QByteArray>

/// Reading text files as other programs write them. What cannot be read throws std::runtime_error, whose text is for
/// the user.
namespace goods_import {

/// The text of the bytes: UTF-8 and UTF-16 with or without their marks, else Windows-1256. Refuses what is no text, and
/// a text that ends within a character.
QString DecodeText(const QByteArray &bytes);

/// The rows of a text with a separator, which is found out: comma, semicolon, tab or "|". Cells in quotes may hold the
/// separator, line ends and doubled quotes. Refuses a cell whose quotes never end.
goods::ImportTable ReadSeparated(const QString &text);

} // namespace goods_import
