#pragma once

#include <QObject>

namespace host {

/// Keys belong to the list or menu that is open over a screen before they belong to the screen. Without this the list
/// of a combo box would close at Esc, and the screen with it.
class ListKeys : public QObject
{
    Q_OBJECT

public:
    /// Watches the keys of the application from now on, once however many screens ask for it.
    static void Install();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using QObject::QObject;

    static void PutOffersAway(int key);

    bool m_taken = false; ///< the key being pressed went to an open list
};

} // namespace host
