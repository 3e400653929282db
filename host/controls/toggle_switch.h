#pragma once

#include "host/host_export.h"

#include <QtWidgets/QAbstractButton>

namespace host {

/// A switch with its caption beside it, for settings that take effect with the record. Space toggles; it is checkable
/// and otherwise behaves as a check box (`isChecked`, `toggled`, `clicked`).
class HOST_EXPORT ToggleSwitch : public QAbstractButton
{
    Q_OBJECT

public:
    explicit ToggleSwitch(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
};

} // namespace host
