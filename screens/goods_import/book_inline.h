#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace goods_import {

/// Reports the texts that cells of an XLSX workbook hold themselves, which programs that write row by row prefer to
/// shared ones: the name of the sheet, the cell's address, and its text. liborcus passes them over.
void ReadInlineTexts(const QByteArray &book,
                     const std::function<void(const QString &sheet, const QString &cell, const QString &text)> &found);

} // namespace goods_import
