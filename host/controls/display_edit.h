#pragma once

#include "host/host_export.h"

#include <QLineEdit>

namespace host {

/// A line edit for numbers, dates and codes: typed in ASCII digits, from left to right; without the focus it shows
/// `DisplayText()`, Persian digits unless a derived edit says otherwise. `text()` is what was typed at all times.
class HOST_EXPORT DisplayEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit DisplayEdit(QWidget *parent = nullptr);

    /// What the edit shows while it has no focus.
    virtual QString DisplayText() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
};

} // namespace host
