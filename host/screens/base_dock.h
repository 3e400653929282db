#pragma once

#include "host/host.h"
#include "host/host_export.h"

#include <QDialog>
#include <QMainWindow>

#include <functional>
#include <optional>

class QAbstractButton;
class QBoxLayout;
class QDockWidget;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace host {

class Grid;
class SearchFrame;

/// The base of every screen: a title panel, a content area and a footer of commands, docked in the host's main window
/// or shown modally.
///
/// How a screen is made: the constructor builds it (`ui.setupUi(Content())`, footer buttons through `AdoptFooter` or
/// `AddFooterButton`, commands through `Bind`); each opening goes `SetFormTheme`, `SetFormMode`, then `ShowModally` or
/// `ShowDocked`, which call `FormShow`; closing calls `FormClose`. A screen may be opened again after it was closed.
///
/// Errors: whatever a command throws is caught by `Command`, shown to the user, and leaves the input in place. Code
/// below a command does not catch. The entity pickers of a screen get it as their boundary.
class HOST_EXPORT TBaseDock_FRM : public QDialog
{
    Q_OBJECT

public:
    /// `host` outlives the screen. The screen is made invisible and belongs to `parent` (or to its creator).
    TBaseDock_FRM(Host &host, TSoftwarePart part, TFormMode mode, QWidget *parent = nullptr);
    ~TBaseDock_FRM() override;

    TSoftwarePart SoftwarePart() const { return m_part; }
    TFormMode Mode() const { return m_mode; }
    /// Sets how the next opening behaves. Screens override to show and hide what a mode brings.
    virtual void SetFormMode(TFormMode mode);
    /// The caller's opening text (selection text, preset group …); its meaning is the screen's.
    void SetParameterText(const QString &text) { m_parameterText = text; }
    QString ParameterText() const { return m_parameterText; }

    /// The keyboard layout to go back to when the screen closes; empty leaves the keyboard alone.
    void SetKeyboardLayoutName(const QString &name) { m_keyboardLayoutName = name; }
    QString KeyboardLayoutName() const { return m_keyboardLayoutName; }

    /// Takes colours and fonts from the host's theme.
    virtual void SetFormTheme();
    /// The caption of the title panel, of the window and of its dock.
    void SetTitle(const QString &title);
    QString Title() const;

    /// A docked screen that is nevertheless to be shown modally (the host has no room for it).
    void SetRunModally(bool modally) { m_runModally = modally; }
    bool RunModally() const { return m_runModally; }

    /// Opens the screen modally; the modal result (1 is OK), 0 when it gave up while opening.
    int ShowModally();
    /// Opens the screen docked in the host's main window and returns: as a page when its central widget is a
    /// QTabWidget, as a dock otherwise, as a window of its own when there is no main window. Shows it modally when
    /// `RunModally`. False when it gave up while opening.
    bool ShowDocked();
    /// True between opening and closing; a slot that holds such a screen is busy.
    bool IsShowing() const { return m_showing; }

    /// Called by `FormShow` (or what it calls) to give up: the screen is not shown.
    void AbortOpening() { m_aborted = true; }
    /// The last opening gave up.
    bool Aborted() const { return m_aborted; }

    /// The one boundary of errors: runs `body` and returns true; what it throws is shown to the user under `name` (the
    /// command's caption) and gives false. While another desk writes, a transaction that `body` begins waits for it,
    /// and the user sees that and may give up.
    bool Command(const QString &name, const std::function<void()> &body);

    /// Shows the print preview of the grid given by `PrintedGrid`.
    void PreviewGrid();
    /// Asks for a file and takes that grid there (workbook, CSV, PDF).
    void ExportGrid();
    /// Opens the page of this screen in the host's guide, as F1 does.
    void ShowHelp();

    void done(int result) override;

signals:
    /// The screen closed, docked or modal, with its result.
    void Closed(int result);

protected:
    /// Where the screen's form goes.
    QWidget *Content() const { return m_content; }
    /// Moves a panel of buttons from the form into the footer, before the base's own buttons.
    void AdoptFooter(QWidget *panel);
    /// Adds a command to the footer, on the side where reading begins.
    QPushButton *AddFooterCommand(const QString &objectName, const QString &caption);
    /// Adds a button to the far side of the footer; the one named by `SetLastButton` stays behind it.
    QPushButton *AddFooterButton(const QString &objectName, const QString &caption);
    void SetLastButton(QPushButton *button) { m_lastButton = button; }
    /// Something beside the title (a status, a filter).
    void AddToHeader(QWidget *widget);

    /// A press of `button`, or of `key`, runs `command` inside `Command`. The key works only while the button is
    /// visible and enabled.
    void Bind(QAbstractButton *button, const QKeySequence &key, std::function<void()> command);
    /// A key of the whole screen without a button.
    void BindKey(const QKeySequence &key, const QString &name, std::function<void()> command);

    /// `edit` searches `list`: Down goes into the list, Enter runs `take` inside `Command`, Esc empties the field
    /// before it closes the screen.
    void BindSearch(QLineEdit *edit, QWidget *list, std::function<void()> take);

    /// Layout and control settings of `grid` are restored on opening and stored on closing, under its object name.
    void RememberLayout(Grid *grid);

    /// Called on each opening, before the screen is visible, inside a command: open row sets, set up by mode.
    virtual void FormShow() {}
    /// Tells what a command threw. Screens that are scanned into keep what arrives meanwhile.
    virtual void ShowError(const QString &text, const QString &caption);
    /// Forgets that an opening gave up; for bases that open in two steps.
    void ClearAborted() { m_aborted = false; }
    /// Called after `FormShow` when the screen is about to appear.
    virtual void FormShown() {}
    /// Called on each closing, whatever the result, and after giving up while opening, inside a command: drop working
    /// rows.
    virtual void FormClose() {}
    /// Keys that no control took, before the base's own. True when the key was used.
    virtual bool FormKeyDown(QKeyEvent *event);
    /// Enter on a form: presses the button with the focus, goes on to the next control otherwise. False for any other
    /// key.
    bool GoOnByEnter(const QKeyEvent *event);
    /// Enter on a button presses it. False for any other key or control.
    bool PressButton(const QKeyEvent *event);
    /// Moves the focus as Enter does: to the next input that takes typing.
    virtual void NextControl();
    /// The search over the screen's list at the moment, for screens with one: Esc empties it before it closes the
    /// screen.
    virtual SearchFrame *ListSearch() const { return nullptr; }
    /// The grid that F9 prints and Ctrl+F9 takes to a file; null for screens without one.
    virtual Grid *PrintedGrid() const { return nullptr; }
    /// Further state to keep between openings for the user, beside grid layouts. A user for whom nothing is stored yet
    /// begins with what `SaveState` gave before the first opening.
    virtual QByteArray SaveState() const { return {}; }
    virtual void RestoreState(const QByteArray &state) { Q_UNUSED(state) }
    /// The screen is about to open for another user than the last time: forget what it kept without storing it (a
    /// chosen group, the row it stood on).
    virtual void UserChanged() {}

    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;
    /// Takes back what the signed-in user left on this screen, as each opening does first.
    void LoadState();

    Host &m_host;

private:
    bool Begin();
    void StoreState();
    void EnterDock();
    void LeaveDock();
    void Place();
    QString ClassName() const;
    QString StateName() const;
    QString CaptionOf(const QString &column) const;
    void BuildFrame();
    void BuildExport();
    bool TakeOut(const QKeyEvent *event);

    TSoftwarePart m_part;
    TFormMode m_mode;
    QString m_parameterText;
    QString m_keyboardLayoutName;
    bool m_runModally = false;
    bool m_showing = false;
    bool m_aborted = false;
    bool m_closing = false;
    bool m_stands = false; ///< opened, and not about to close: what was entered stays
    QWidget *m_header = nullptr;
    QLabel *m_title = nullptr;
    QBoxLayout *m_headerRow = nullptr;
    QToolButton *m_export = nullptr; ///< stands while there is a grid to take out
    QWidget *m_content = nullptr;
    QWidget *m_footer = nullptr;
    QBoxLayout *m_footerRow = nullptr;
    int m_footerCommands = 0;
    QPushButton *m_lastButton = nullptr;
    QDockWidget *m_dock = nullptr;
    QList<Grid *> m_remembered;
    std::optional<int> m_user; ///< code of the user who opened it last
    QByteArray m_firstState;
    bool m_placed = false;
};

} // namespace host
