#pragma once

#include <QFrame>
#include <QString>

namespace desk {

/// A short text over the lower edge of a window, gone after a while or at a click. It takes no focus and stops
/// nothing; a new text replaces the one before it.
class Flash : public QFrame
{
    Q_OBJECT

public:
    static void Show(QWidget *window, const QString &text, int milliseconds);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    Flash(QWidget *window, const QString &text);
    void Place();
};

} // namespace desk
