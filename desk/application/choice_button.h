#pragma once

#include <QCommandLinkButton>

namespace desk {

/// A way to go on: its name, and what comes of it. The toolkit's own leaves the icon on the left of a right-to-left
/// screen and the words at the very edge.
class ChoiceButton : public QCommandLinkButton
{
    Q_OBJECT

public:
    using QCommandLinkButton::QCommandLinkButton;

    QSize sizeHint() const override;
    bool hasHeightForWidth() const override { return false; }

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace desk
