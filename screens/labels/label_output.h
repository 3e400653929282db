#pragma once

#include "screens/labels/label_painter.h"

#include <QString>

class QPrinter;
class QWidget;

namespace labels {

/// Prints a job: on a printer, in its preview, or into a file. Everything is modal to `parent`; long jobs show their
/// progress and can be given up.
class LabelOutput
{
public:
    LabelOutput(const Job &job, const QString &title, QWidget *parent);

    void Preview();
    /// Asks for the printer. False when the user gave up.
    bool Print();
    /// Writes the file as a whole or, given up, not at all; false then. Throws std::runtime_error when it cannot be
    /// written.
    bool WritePdf(const QString &path);

    /// Paints every page. False when the user gave up; throws std::runtime_error when the printer takes nothing.
    bool Paint(QPrinter &printer);

private:
    /// Paper and resolution of the layout; the printer dialog may have put in its own.
    void SetUp(QPrinter &printer) const;

    const Job &m_job;
    QString m_title;
    QWidget *m_parent;
};

} // namespace labels
