#include "desk/help/guide_window.h"

#include "desk/help/guide_view.h"
#include "host/look/theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTextBlock>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr QSize Usual(760, 640);
const QString Guide = u"راهنما"_s;

} // namespace

GuideWindow::GuideWindow(QWidget *owner) : QDialog(owner), m_view(new GuideView(this))
{
    setObjectName(u"Guide_FRM"_s);
    setLayoutDirection(Qt::RightToLeft);
    setAttribute(Qt::WA_DeleteOnClose);
    resize(Usual.boundedTo(screen()->availableSize() - host::theme::WindowFrame));
    auto *commands = new QHBoxLayout;
    commands->setContentsMargins(8, 6, 8, 6);
    commands->setSpacing(6);
    const auto add = [&](const QString &name, const QString &caption, const QList<QKeySequence> &keys, auto run) {
        auto *button = new QPushButton(caption, this);
        button->setObjectName(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, run);
        for (const QKeySequence &key : keys)
            connect(new QShortcut(key, this), &QShortcut::activated, button, [button] { button->click(); });
        commands->addWidget(button);
        return button;
    };
    add(u"Contents_BTN"_s, u"فهرست F1"_s, {Qt::Key_F1}, [this] { Open(QUrl(u"qrc:/desk/guide/index.md"_s)); });
    QPushButton *back = add(u"Back_BTN"_s, u"بازگشت Backspace"_s,
                            {Qt::Key_Backspace, QKeySequence(Qt::ALT | Qt::Key_Right)}, [this] { m_view->backward(); });
    commands->addStretch(1);
    add(u"Exit_BTN"_s, u"خروج Esc"_s, {}, [this] { reject(); });
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_view, 1);
    column->addLayout(commands);
    back->setEnabled(false);
    connect(m_view, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
    connect(m_view, &QTextBrowser::sourceChanged, this, [this] {
        const QString page = m_view->document()->firstBlock().text();
        setWindowTitle(page == Guide ? page : Guide + u": "_s + page);
    });
    if (owner)
        owner->installEventFilter(this);
}

void GuideWindow::Open(const QUrl &page)
{
    show(); // pictures are as wide as the view is
    m_view->setSource(page);
    raise();
    activateWindow();
    m_view->setFocus();
}

bool GuideWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parent() && event->type() == QEvent::Hide)
        close();
    return QDialog::eventFilter(watched, event);
}

void GuideWindow::done(int result)
{
    QWidget *owner = parentWidget();
    QDialog::done(result);
    if (owner && owner->isVisible())
        owner->activateWindow(); // with the focus where it was
}

} // namespace desk
