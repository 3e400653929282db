#pragma once

#include "screens/labels/label_painter.h"

#include <QPageLayout>
#include <QString>

#include <functional>

class QPagedPaintDevice;
class QPrinter;
class QWidget;

namespace labels {

/// Prints a job: on a printer, in its preview, or into a file. Everything is modal to `parent`; long jobs show their
/// progress and can be given up.
class LabelOutput
{
public:
    LabelOutput(const Job &job, const QString &title, QWidget *parent);

    /// Throws std::runtime_error, with the preview closed, when a printer chosen there takes nothing.
    void Preview();
    /// Asks for the printer. False when the user gave up; throws std::runtime_error when the printer takes nothing.
    bool Print();
    /// Writes the file as a whole or, given up, not at all; false then. Throws std::runtime_error when it cannot be
    /// written; a file of that name is as before then.
    bool WritePdf(const QString &path);

private:
    QPageLayout PageLayout() const;
    /// Paper and resolution of the layout; the printer dialog may have put in its own.
    void SetUp(QPrinter &printer) const;
    bool Print(QPrinter &printer);
    /// Paints every page. False when the user gave up; throws std::runtime_error when the device takes nothing.
    bool Paint(QPagedPaintDevice &device, int dotsPerInch, const std::function<void()> &giveUp);

    const Job &m_job;
    QString m_title;
    QWidget *m_parent;
};

} // namespace labels
