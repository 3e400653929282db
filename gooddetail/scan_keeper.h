#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

namespace good_detail {

/// Keeps what a scanner sends while a message stands over a screen: it types on, whoever reads. While the object lives,
/// characters typed into another window than the screen are held back; Enter still closes the message. Blanks before
/// the first character are left to the message, where they press its button.
class ScanKeeper : public QObject
{
    Q_OBJECT

public:
    explicit ScanKeeper(QWidget *screen);
    ~ScanKeeper() override;

    /// Runs `message`, which stands over `screen` until it is answered. What was scanned meanwhile, and what was begun
    /// behind it, goes to `take` once the screen has the keys again; never when the screen is gone by then.
    static void Over(QWidget *screen, const std::function<void()> &message,
                     std::function<void(const QStringList &scans, const QString &begun)> take);

    /// The texts that Enter or Tab ended.
    const QStringList &Scans() const { return m_scans; }
    /// What was begun behind them.
    const QString &Begun() const { return m_begun; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *m_screen;
    QStringList m_scans;
    QString m_begun;
};

} // namespace good_detail
