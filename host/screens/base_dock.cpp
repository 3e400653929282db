#include "host/screens/base_dock.h"

#include "host/controls/accessible_names.h"
#include "host/controls/entity_picker.h"
#include "host/controls/search_frame.h"
#include "host/data/database_error.h"
#include "host/data/lock_wait.h"
#include "host/data/sql_text.h"
#include "host/look/theme.h"
#include "host/screens/form_inputs.h"
#include "host/screens/list_keys.h"
#include "host/screens/search_keys.h"

#include <QApplication>
#include <QDockWidget>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLoggingCategory>
#include <QMainWindow>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QScreen>
#include <QShortcut>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace host {
namespace {

bool IsEnter(const QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    return enter && !(event->modifiers() & ~Qt::KeypadModifier);
}

Q_LOGGING_CATEGORY(screenLog, "host.screen")

constexpr int AttemptMilliseconds = 250;

/// A caption without its mnemonic mark, its colon and blanks, for message boxes.
QString PlainCaption(QString caption)
{
    return caption.remove(u'&').remove(u':').trimmed();
}

QPushButton *MakeButton(QWidget *parent, const QString &name, const QString &caption)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

/// Tells the user that another desk is writing, until `attempt` succeeds; true when he gave up before.
bool WaitForLock(const QString &title, QWidget *parent, const LockWait::Attempt &attempt)
{
    QProgressDialog dialog(u"پایگاه داده مشغول است. در انتظار پایان کار دیگران ..."_s, {}, 0, 0, parent);
    // Only Esc and the mouse give up: a scanner sends the next Enter while the user waits.
    QPushButton *cancel = MakeButton(&dialog, u"Cancel_BTN"_s, u"انصراف Esc"_s);
    cancel->setFocusPolicy(Qt::NoFocus);
    dialog.setCancelButton(cancel);
    dialog.setObjectName(u"LockWait_PRG"_s);
    dialog.setWindowTitle(title);
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.setMinimumDuration(0);
    dialog.setAutoReset(false);
    QTimer attempts;
    QObject::connect(&attempts, &QTimer::timeout, &dialog, [&] {
        if (attempt())
            dialog.accept();
    });
    attempts.start(AttemptMilliseconds);
    return dialog.exec() != QDialog::Accepted;
}

} // namespace

TBaseDock_FRM::TBaseDock_FRM(Host &host, TSoftwarePart part, TFormMode mode, QWidget *parent)
    : QDialog(parent), m_host(host), m_part(part), m_mode(mode)
{
    setLayoutDirection(Qt::RightToLeft);
    ListKeys::Install();
    AccessibleNames::Install();
    BuildFrame();
    BindKey(Qt::Key_F1, u"راهنما"_s, [this] { ShowHelp(); });
}

TBaseDock_FRM::~TBaseDock_FRM()
{
    LeaveDock();
}

void TBaseDock_FRM::BuildFrame()
{
    m_header = new QWidget(this);
    m_header->setObjectName(u"Header_PNL"_s);
    m_header->setAttribute(Qt::WA_StyledBackground);
    m_title = new QLabel(m_header);
    m_title->setObjectName(u"Title_LBL"_s);
    m_title->setTextFormat(Qt::PlainText); // a title may name a record
    m_headerRow = new QHBoxLayout(m_header);
    m_headerRow->setContentsMargins(12, 4, 12, 4);
    m_headerRow->addWidget(m_title);
    m_headerRow->addStretch(1);
    BuildExport();

    m_content = new QWidget(this);
    m_content->setObjectName(u"Content"_s);

    m_footer = new QWidget(this);
    m_footer->setObjectName(u"Footer_PNL"_s);
    m_footer->setAttribute(Qt::WA_StyledBackground);
    m_footerRow = new QHBoxLayout(m_footer);
    m_footerRow->setContentsMargins(8, 6, 8, 6);
    m_footerRow->setSpacing(6);
    m_footerRow->addStretch(1);
    m_footer->hide();

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_header);
    column->addWidget(m_content, 1);
    column->addWidget(m_footer);
}

void TBaseDock_FRM::SetFormMode(TFormMode mode)
{
    m_mode = mode;
}

void TBaseDock_FRM::SetFormTheme()
{
    const QColor ground = m_host.theme.CaptionColor();
    const bool dark = ground.lightnessF() < 0.6F;
    m_header->setStyleSheet(u"QWidget#Header_PNL { background: %1; } QLabel, QToolButton { color: %2; }"_s.arg(
        ground.name(), dark ? u"#ffffff"_s : u"#182430"_s));
    m_title->setFont(m_host.theme.TitleFont());
}

void TBaseDock_FRM::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange && m_showing)
        SetFormTheme(); // the look changed
}

void TBaseDock_FRM::SetTitle(const QString &title)
{
    m_title->setText(title.trimmed());
    setWindowTitle(title.trimmed());
    if (m_dock)
        m_dock->setWindowTitle(title.trimmed());
}

QString TBaseDock_FRM::Title() const
{
    return m_title->text();
}

bool TBaseDock_FRM::Begin()
{
    if (m_showing)
        return false;
    m_aborted = false;
    setResult(0);
    const auto buttons = findChildren<QPushButton *>();
    for (QPushButton *button : buttons)
        button->setAutoDefault(false); // Enter belongs to the screen, not to whichever button comes first
    const auto pickers = findChildren<EntityPicker *>();
    for (EntityPicker *picker : pickers)
        picker->SetBoundary([this](const std::function<void()> &body) { return Command(Title(), body); });
    SetFormTheme();
    m_showing = true;
    const bool shown = Command(Title(), [this] {
        LoadState();
        FormShow();
    });
    if (!shown)
        m_aborted = true;
    if (m_aborted) {
        Command(Title(), [this] { FormClose(); });
        m_showing = false;
        return false;
    }
    m_export->setVisible(PrintedGrid() != nullptr);
    m_stands = true;
    Command(Title(), [this] { FormShown(); });
    return true;
}

int TBaseDock_FRM::ShowModally()
{
    if (!Begin())
        return 0;
    setWindowModality(Qt::ApplicationModal);
    Place();
    const QPointer<QWidget> owner = QApplication::activeWindow();
    const int result = exec();
    // Some window managers lose the keys when a screen closes together with the question above it.
    if (owner && owner->isVisible())
        owner->activateWindow();
    return result;
}

bool TBaseDock_FRM::ShowDocked()
{
    if (m_runModally) {
        ShowModally();
        return !m_aborted;
    }
    if (!Begin())
        return false;
    setWindowModality(Qt::NonModal);
    QWidget *first = focusWidget();
    EnterDock();    // a page or a dock that comes to the front does not take the keyboard along
    SetFormTheme(); // a widget that joins a window takes over the window's fonts
    show();
    activateWindow();
    if (first)
        first->setFocus(Qt::OtherFocusReason);
    return true;
}

/// Centres the window on the one that is active, and ties it to that one so that it stays above.
void TBaseDock_FRM::Place()
{
    const QWidget *owner = QApplication::activeWindow();
    if (!owner || owner == this)
        owner = m_host.mainWindow;
    if (owner && owner->windowHandle()) {
        winId();
        windowHandle()->setTransientParent(owner->windowHandle());
    }
    if (m_placed)
        return;
    m_placed = true;
    if (!testAttribute(Qt::WA_Resized))
        adjustSize(); // a window that was never shown has no size of its own yet
    const QRect around = owner ? owner->frameGeometry() : screen()->availableGeometry();
    const QRect inside = screen()->availableGeometry();
    resize(size().boundedTo(inside.size() - theme::WindowFrame));
    QRect place = QRect(QPoint(), size().boundedTo(inside.size()));
    place.moveCenter(around.center());
    move(qBound(inside.left(), place.left(), inside.right() + 1 - place.width()),
         qBound(inside.top(), place.top(), inside.bottom() + 1 - place.height()));
}

void TBaseDock_FRM::EnterDock()
{
    QMainWindow *window = m_host.mainWindow;
    if (!window)
        return;
    if (auto *pages = qobject_cast<QTabWidget *>(window->centralWidget())) {
        pages->setCurrentIndex(pages->addTab(this, Title()));
        return;
    }
    m_dock = new QDockWidget(Title(), window);
    m_dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    m_dock->setTitleBarWidget(new QWidget(m_dock)); // the screen has a title panel of its own
    m_dock->setWidget(this);
    window->addDockWidget(Qt::RightDockWidgetArea, m_dock);
}

void TBaseDock_FRM::LeaveDock()
{
    if (isWindow())
        return;
    hide();
    setParent(nullptr, Qt::Dialog);
    if (m_dock)
        m_dock->deleteLater();
    m_dock = nullptr;
}

void TBaseDock_FRM::done(int result)
{
    if (m_closing || !m_showing) {
        if (!m_closing)
            QDialog::done(result);
        return;
    }
    const QScopedValueRollback closing(m_closing, true);
    m_stands = false;
    Command(Title(), [this] { FormClose(); });
    Command(Title(), [this] { StoreState(); });
    if (!m_keyboardLayoutName.isEmpty())
        m_host.keyboard.LoadKeyboardLayout(m_keyboardLayoutName);
    m_showing = false;
    QDialog::done(result);
    LeaveDock();
    emit Closed(result);
}

bool TBaseDock_FRM::Command(const QString &name, const std::function<void()> &body)
{
    QString text;
    bool givenUp = false;
    const LockWait waiting([&](const LockWait::Attempt &attempt) {
        givenUp = WaitForLock(PlainCaption(name), isVisible() ? this : nullptr, attempt);
    });
    try {
        body();
        return true;
    } catch (const DatabaseError &error) {
        qCWarning(screenLog).noquote() << error.LogText();
        if (givenUp && error.Fault() == DatabaseFault::Locked)
            return false; // as the user wished
        text = error.Text(CaptionOf(error.Column()));
        if (error.ConnectionLost())
            text = (m_stands ? u"ارتباط با پایگاه داده قطع شد. آنچه وارد کرده اید در فرم باقی است.\n"_s
                             : u"ارتباط با پایگاه داده قطع شد.\n"_s) +
                   text;
    } catch (const RefusedText &error) {
        text = error.Text();
    } catch (const std::exception &error) {
        qCWarning(screenLog) << error.what();
        text = QString::fromUtf8(error.what());
    }
    ShowError(text, PlainCaption(name));
    return false;
}

void TBaseDock_FRM::ShowError(const QString &text, const QString &caption)
{
    m_host.messages.ShowMessage(text, MessageIcon::Error, caption);
}

QString TBaseDock_FRM::CaptionOf(const QString &column) const
{
    const QRegularExpression name(u"^%1_[A-Za-z]+$"_s.arg(QRegularExpression::escape(column)),
                                  QRegularExpression::CaseInsensitiveOption);
    const auto labels = m_content->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        if (!column.isEmpty() && label->buddy() && name.match(label->buddy()->objectName()).hasMatch())
            return PlainCaption(label->text());
    return {};
}

void TBaseDock_FRM::AdoptFooter(QWidget *panel)
{
    panel->setAttribute(Qt::WA_StyledBackground, false);
    m_footerRow->insertWidget(m_footerCommands++, panel);
    panel->show();
    m_footer->show();
}

QPushButton *TBaseDock_FRM::AddFooterCommand(const QString &objectName, const QString &caption)
{
    QPushButton *button = MakeButton(m_footer, objectName, caption);
    m_footerRow->insertWidget(m_footerCommands++, button);
    m_footer->show();
    return button;
}

QPushButton *TBaseDock_FRM::AddFooterButton(const QString &objectName, const QString &caption)
{
    QPushButton *button = MakeButton(m_footer, objectName, caption);
    const int last = m_lastButton ? m_footerRow->indexOf(m_lastButton) : -1;
    m_footerRow->insertWidget(last, button);
    if (m_lastButton)
        QWidget::setTabOrder(button, m_lastButton);
    m_footer->show();
    return button;
}

void TBaseDock_FRM::AddToHeader(QWidget *widget)
{
    m_headerRow->addWidget(widget);
}

void TBaseDock_FRM::Bind(QAbstractButton *button, const QKeySequence &key, std::function<void()> command)
{
    connect(button, &QAbstractButton::clicked, this,
            [this, button, command = std::move(command)] { Command(button->text(), command); });
    if (key.isEmpty())
        return;
    QList<QKeySequence> keys{key};
    if (key == QKeySequence(Qt::Key_Return))
        keys << QKeySequence(Qt::Key_Enter);
    for (const QKeySequence &one : std::as_const(keys)) {
        auto *shortcut = new QShortcut(one, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, button, [button] {
            if (button->isVisible() && button->isEnabled())
                button->click();
        });
    }
}

void TBaseDock_FRM::BindKey(const QKeySequence &key, const QString &name, std::function<void()> command)
{
    auto *shortcut = new QShortcut(key, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this,
            [this, name, command = std::move(command)] { Command(name, command); });
}

void TBaseDock_FRM::BindSearch(QLineEdit *edit, QWidget *list, std::function<void()> take)
{
    new SearchKeys(edit, list, [this, take = std::move(take)] { Command(Title(), take); });
}

QString TBaseDock_FRM::ClassName() const
{
    return QString::fromLatin1(metaObject()->className()).section(u':', -1);
}

void TBaseDock_FRM::ShowHelp()
{
    m_host.help.Show(ClassName());
}

bool TBaseDock_FRM::FormKeyDown(QKeyEvent *event)
{
    if (TakeOut(event) || PressButton(event))
        return true;
    if (event->key() == Qt::Key_Escape)
        if (SearchFrame *search = ListSearch(); search && search->GiveUp())
            return true;
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        reject();
        return true;
    }
    return false;
}

bool TBaseDock_FRM::PressButton(const QKeyEvent *event)
{
    auto *button = qobject_cast<QAbstractButton *>(focusWidget());
    if (!IsEnter(event) || !button || inputs::IsChoice(button))
        return false;
    button->click();
    return true;
}

bool TBaseDock_FRM::GoOnByEnter(const QKeyEvent *event)
{
    if (!IsEnter(event))
        return false;
    if (!PressButton(event))
        NextControl();
    return true;
}

void TBaseDock_FRM::NextControl()
{
    const QWidget *from = focusWidget();
    for (int steps = 0; steps < 200; ++steps) {
        if (!focusNextChild() || focusWidget() == from || inputs::TakesTyping(focusWidget()))
            return;
    }
}

void TBaseDock_FRM::keyPressEvent(QKeyEvent *event)
{
    bool used = false;
    Command(Title(), [&] { used = FormKeyDown(event); });
    event->setAccepted(used);
}

} // namespace host
