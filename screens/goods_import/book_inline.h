#pragma once

#include <QByteArray>
#include <QStringList>

#include <functional>

namespace goods_import {

/// The texts that cells of an XLSX workbook share, by their numbers. liborcus gives an empty one the words of the text
/// before it.
QStringList ReadSharedTexts(const QByteArray &book);

/// Reports the texts that cells of an XLSX workbook hold themselves, which programs that write row by row prefer to
/// shared ones: the name of the sheet, the cell's address, and its text. liborcus passes them over.
void ReadInlineTexts(const QByteArray &book,
                     const std::function<void(const QString &sheet, const QString &cell, const QString &text)> &found);

} // namespace goods_import
