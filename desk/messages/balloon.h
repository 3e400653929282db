#pragma once

#include <QPointer>
#include <QWidget>

namespace desk {

/// A message in a balloon whose tip points at a control. Not modal: the user goes on typing, and it goes after its
/// time, at a click, or with the control.
class Balloon : public QWidget
{
    Q_OBJECT

public:
    static void Show(QWidget *anchor, const QString &text, int milliseconds);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    Balloon(QWidget *anchor, const QString &text);
    void Place();

    QPointer<QWidget> m_anchor;
    bool m_below = true; ///< the balloon stands below its anchor, its tip upwards
    int m_tip = 0;       ///< where the tip is, from the left edge
};

} // namespace desk
