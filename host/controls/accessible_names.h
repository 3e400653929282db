#pragma once

#include "host/host_export.h"

#include <QObject>

class QWidget;

namespace host {

/// Gives every control that takes keys the name that a screen reader says. Captions are written once, where they are
/// seen: the name of a control is the caption that belongs to it, as it stands at the moment, without key marks and
/// colons. A name that a form or a class has set stays.
class HOST_EXPORT AccessibleNames : public QObject
{
    Q_OBJECT

public:
    /// Names the controls of the application from now on, once however many screens ask for it.
    static void Install();

    /// What `control` is called: by its label, by what it says itself, by its tool tip or placeholder, by the caption
    /// beside it, in the end by the group, the page or the window that it stands in.
    static QString NameOf(const QWidget &control);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using QObject::QObject;
};

} // namespace host
