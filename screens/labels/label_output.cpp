#include "screens/labels/label_output.h"

#include <QFile>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProgressDialog>

#include <climits>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace labels {

namespace {

constexpr int LongJobPages = 40;
constexpr int ProgressMilliseconds = 500;

[[noreturn]] void Refuse(const QString &what)
{
    throw std::runtime_error(what.toStdString());
}

} // namespace

LabelOutput::LabelOutput(const Job &job, const QString &title, QWidget *parent)
    : m_job(job), m_title(title), m_parent(parent)
{}

void LabelOutput::SetUp(QPrinter &printer) const
{
    const Paper paper = PaperOf(m_job.choices);
    printer.setResolution(m_job.choices.dotsPerInch);
    printer.setFullPage(true);
    const QPageSize size =
        m_job.choices.layout == Layout::Sheet
            ? QPageSize(QPageSize::A4)
            : QPageSize(paper.page, QPageSize::Millimeter,
                        u"%1 × %2 mm"_s.arg(paper.page.width()).arg(paper.page.height()), QPageSize::ExactMatch);
    printer.setPageLayout(QPageLayout(size, QPageLayout::Portrait, QMarginsF()));
    printer.setDocName(m_title);
}

bool LabelOutput::Paint(QPrinter &printer)
{
    QPainter painter(&printer);
    if (!painter.isActive())
        Refuse(u"چاپگر یا فایل آماده نوشتن نیست."_s);
    painter.setRenderHint(QPainter::Antialiasing); // for what a preview makes smaller; bars end on whole dots
    const int pages = m_job.Pages();
    QProgressDialog progress(u"آماده سازی صفحات ..."_s, u"انصراف"_s, 0, pages, m_parent);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(pages > LongJobPages ? ProgressMilliseconds : INT_MAX);
    for (int page = 0; page < pages; ++page) {
        if (page > 0)
            printer.newPage();
        PaintPage(painter, m_job, page, printer.resolution());
        if (pages > LongJobPages)
            progress.setValue(page);
        if (progress.wasCanceled()) {
            printer.abort();
            return false;
        }
    }
    return true;
}

void LabelOutput::Preview()
{
    QPrinter printer(QPrinter::HighResolution);
    SetUp(printer);
    QPrintPreviewDialog preview(&printer, m_parent);
    preview.setWindowTitle(m_title);
    preview.resize(900, 700);
    preview.findChild<QPrintPreviewWidget *>()->setObjectName(u"LabelPages_PRV"_s);
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, [this](QPrinter *on) { Paint(*on); });
    preview.exec();
}

bool LabelOutput::Print()
{
    QPrinter printer(QPrinter::HighResolution);
    SetUp(printer);
    QPrintDialog dialog(&printer, m_parent);
    dialog.setWindowTitle(m_title);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    SetUp(printer);
    return Paint(printer);
}

bool LabelOutput::WritePdf(const QString &path)
{
    // A file of that name stays until the new one is complete.
    const QString part = path + u".part"_s;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(part);
    SetUp(printer);
    if (!Paint(printer)) {
        QFile::remove(part);
        return false;
    }
    if ((QFile::exists(path) && !QFile::remove(path)) || !QFile::rename(part, path))
        Refuse(u"فایل نوشته نشد: "_s + path);
    return true;
}

} // namespace labels
