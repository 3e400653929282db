#pragma once

#include "host/controls/grid_column.h"
#include "host/host_export.h"

#include <QStringList>

#include <memory>

namespace host {

/// Writes a table to a file that another program opens. Cells come as plain texts: numbers with ASCII digits and a
/// point. What a cell begins with never makes a formula of it. All throw std::runtime_error, whose text is for the
/// user; the file appears under its name only by `Finish`.
class HOST_EXPORT TableWriter
{
public:
    virtual ~TableWriter() = default;

    /// The row of captions.
    virtual void Begin(const QString &title, const QList<GridColumn> &columns) = 0;
    virtual void AddRow(const QStringList &cells) = 0;
    virtual void Finish() = 0;

    /// By the ending of the name: ".csv" (UTF-8 with its mark, comma, CRLF), otherwise an XLSX workbook whose sheet
    /// reads from right to left. A number of more than 15 digits goes into a workbook as text, so that none is lost.
    static std::unique_ptr<TableWriter> For(const QString &file);
};

} // namespace host
