#include "host/screens/grid_export.h"

#include "host/controls/grid.h"
#include "host/screens/documents_folder.h"
#include "host/screens/grid_print.h"
#include "host/screens/table_writer.h"

#include <QFileDialog>
#include <QProgressDialog>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int ProgressAfter = 500; // milliseconds
constexpr int RowsBetweenLooks = 500;

} // namespace

GridExport::GridExport(Grid &grid, const QString &title, const QString &date)
    : m_grid(grid), m_title(title), m_date(date)
{}

bool GridExport::Run(QWidget *parent)
{
    const QStringList kinds{u"برگه‌ی اکسل \u2066(*.xlsx)"_s, u"متن جداشده با ویرگول \u2066(*.csv)"_s,
                            u"PDF (*.pdf)"_s};
    QFileDialog dialog(parent, u"خروجی فهرست"_s, DocumentsFolder(), kinds.join(u";;"));
    dialog.setObjectName(u"Export_DLG"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    const auto endingOf = [](const QString &kind) { return kind.section(u"*."_s, 1).chopped(1); };
    dialog.setDefaultSuffix(endingOf(kinds.first()));
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                     [&](const QString &kind) { dialog.setDefaultSuffix(endingOf(kind)); });
    dialog.selectFile(u"%1 %2"_s.arg(m_title, m_date).replace(u'/', u'-').simplified());
    if (dialog.exec() != QDialog::Accepted)
        return false;
    return Write(dialog.selectedFiles().constFirst(), parent);
}

bool GridExport::Write(const QString &file, QWidget *parent)
{
    if (!m_grid.FetchAll())
        throw std::runtime_error(
            u"همه‌ی سطرها خوانده نشد و فایلی نوشته نشد."_s.toStdString());
    if (file.endsWith(u".pdf", Qt::CaseInsensitive)) {
        GridPrinter(m_grid, m_title, m_date).WritePdf(file);
        return true;
    }
    return WriteTable(file, parent);
}

bool GridExport::WriteTable(const QString &file, QWidget *parent)
{
    const int rows = m_grid.RowCount();
    QProgressDialog progress(u"فهرست نوشته می‌شود …"_s, u"انصراف"_s, 0, rows, parent);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(ProgressAfter);
    const auto writer = TableWriter::For(file);
    writer->Begin(m_title, m_grid.VisibleColumns());
    for (int row = 0; row < rows; ++row) {
        if (row % RowsBetweenLooks == 0) {
            progress.setValue(row);
            if (progress.wasCanceled())
                return false;
        }
        writer->AddRow(m_grid.VisiblePlainTexts(row));
    }
    writer->Finish();
    return true;
}

} // namespace host
