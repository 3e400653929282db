#pragma once

#include "host/host_export.h"

#include <QLineEdit>

namespace host {

/// A line edit for numbers, dates and codes, from left to right. It shows Persian digits at all times, whichever were
/// typed or pasted; without the focus it shows `DisplayText()`, which a derived edit may set out differently.
///
/// `text()` is the plain form, in ASCII digits. It hides that of QLineEdit, which gives what is shown: through a
/// pointer to the base use `PlainText`. What is copied from the edit is plain, for a sheet or a calculator to read.
class HOST_EXPORT DisplayEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit DisplayEdit(QWidget *parent = nullptr);

    QString text() const { return Plain(QLineEdit::text()); }
    void setText(const QString &text);

    /// What the edit shows while it has no focus.
    virtual QString DisplayText() const;

protected:
    /// The plain form of what is shown or typed.
    virtual QString Plain(const QString &shown) const;
    /// A plain text as it is shown while it is typed: as many characters as the plain one.
    virtual QString Shown(const QString &plain) const;

    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    friend class DigitsValidator;

    void CopyPlain(const QString &copied) const;
};

/// What the user entered into a line edit, of whichever class.
HOST_EXPORT QString PlainText(const QLineEdit &edit);

} // namespace host
