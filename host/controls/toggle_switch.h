#pragma once

#include "host/host_export.h"

#include <QAbstractButton>
#include <QColor>

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

    /// Makes the caption follow the state: the texts stand as they are, an "&" in them marks no key.
    void SetStateCaptions(const QString &on, const QString &off);
    /// Paints the knob in a colour per state; invalid colours mean the house's own.
    void SetKnobColors(const QColor &on, const QColor &off);

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void checkStateSet() override;
    void nextCheckState() override;

private:
    void ShowState();
    QColor KnobColor() const;

    bool m_captionFollows = false;
    QString m_on;
    QString m_off;
    QColor m_onKnob;
    QColor m_offKnob;
};

} // namespace host
