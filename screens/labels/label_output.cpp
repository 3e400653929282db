#include "screens/labels/label_output.h"

#include "host/screens/print_page.h"

#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProgressDialog>
#include <QSaveFile>

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

QPageLayout LabelOutput::PageLayout() const
{
    const Paper paper = PaperOf(m_job.choices);
    const QPageSize size =
        m_job.choices.layout == Layout::Sheet
            ? QPageSize(QPageSize::A4)
            : QPageSize(paper.page, QPageSize::Millimeter,
                        u"%1 × %2 mm"_s.arg(paper.page.width()).arg(paper.page.height()), QPageSize::ExactMatch);
    return QPageLayout(size, QPageLayout::Portrait, QMarginsF());
}

void LabelOutput::SetUp(QPrinter &printer) const
{
    printer.setResolution(m_job.choices.dotsPerInch);
    printer.setFullPage(true);
    printer.setPageLayout(PageLayout());
    printer.setDocName(m_title);
}

bool LabelOutput::Print(QPrinter &printer)
{
    return Paint(printer, printer.resolution(), [&printer] { printer.abort(); });
}

bool LabelOutput::Paint(QPagedPaintDevice &device, int dotsPerInch, const std::function<void()> &giveUp)
{
    QPainter painter(&device);
    if (!painter.isActive())
        Refuse(u"چاپگر یا فایل آماده نوشتن نیست."_s);
    painter.setRenderHint(QPainter::Antialiasing); // for what a preview makes smaller; bars end on whole dots
    const int pages = m_job.Pages();
    QProgressDialog progress(u"آماده سازی صفحات ..."_s, u"انصراف"_s, 0, pages, m_parent);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(pages > LongJobPages ? ProgressMilliseconds : INT_MAX);
    for (int page = 0; page < pages; ++page) {
        if (page > 0 && !device.newPage())
            Refuse(u"چاپگر یا فایل صفحه بعد را نپذیرفت."_s);
        PaintPage(painter, m_job, page, dotsPerInch);
        if (pages > LongJobPages)
            progress.setValue(page);
        if (progress.wasCanceled()) {
            giveUp();
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
    preview.findChild<QPrintPreviewWidget *>()->setObjectName(u"LabelPages_PRV"_s);
    QString failure;
    QObject::connect(
        &preview, &QPrintPreviewDialog::paintRequested, &preview, [this, &preview, &failure](QPrinter *on) {
            try {
                Print(*on);
            } catch (const std::exception &error) {
                failure = QString::fromUtf8(error.what());
                QMetaObject::invokeMethod(&preview, &QDialog::reject, Qt::QueuedConnection); // it may be opening still
            }
        });
    host::print::SetUpPreview(preview);
    preview.exec();
    if (!failure.isEmpty())
        Refuse(failure);
}

bool LabelOutput::Print()
{
    QPrinter printer(QPrinter::HighResolution);
    SetUp(printer);
    QPrintDialog dialog(&printer, m_parent);
    dialog.setWindowTitle(m_title);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false); // every label of the job is printed
    if (dialog.exec() != QDialog::Accepted)
        return false;
    SetUp(printer);
    return Print(printer);
}

bool LabelOutput::WritePdf(const QString &path)
{
    // A file of that name stays until the new one is complete.
    QSaveFile file(path);
    const auto refuse = [&file, &path] { Refuse(u"فایل نوشته نشد: %1\n%2"_s.arg(path, file.errorString())); };
    if (!file.open(QIODevice::WriteOnly))
        refuse();
    {
        QPdfWriter pdf(&file);
        pdf.setResolution(m_job.choices.dotsPerInch);
        pdf.setPageLayout(PageLayout());
        pdf.setTitle(m_title);
        if (!Paint(pdf, m_job.choices.dotsPerInch, [&file] { file.cancelWriting(); }))
            return false;
    }
    if (!file.commit())
        refuse();
    return true;
}

} // namespace labels
