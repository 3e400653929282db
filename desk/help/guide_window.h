#pragma once

#include <QDialog>

class QUrl;

namespace desk {

class GuideView;

/// The guide over the window of whoever asked for it, which goes on working. Esc closes it and gives the keys back.
class GuideWindow : public QDialog
{
    Q_OBJECT

public:
    /// Goes when `owner` goes or hides.
    explicit GuideWindow(QWidget *owner);

    void Open(const QUrl &page);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void done(int result) override;

private:
    GuideView *m_view;
};

} // namespace desk
