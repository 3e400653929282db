#pragma once

#include "host/host_export.h"

#include <QString>

class QWidget;

namespace host {

class Grid;

/// Takes a list out of the program as it is shown: its visible columns in their order, its rows as they are filtered
/// and sorted, to a workbook, a CSV file or a PDF.
class HOST_EXPORT GridExport
{
public:
    /// `date` becomes part of the name that is offered.
    GridExport(Grid &grid, const QString &title, const QString &date);

    /// Asks for a file and writes it; what takes longer than half a second shows progress and may be given up, which
    /// leaves no file. False when the user left. Throws std::runtime_error with a text for the user.
    bool Run(QWidget *parent);
    /// The same without asking. The ending of `file` says what is written.
    bool Write(const QString &file, QWidget *parent);

private:
    bool WriteTable(const QString &file, QWidget *parent);

    Grid &m_grid;
    QString m_title;
    QString m_date;
};

} // namespace host
