#pragma once

#include "host/screens/base_dock.h"
#include "host/screens/refusals.h"

#include <vector>

namespace host {

/// The base of every screen that saves: what its controls show is written as a whole.
///
/// Saving (F3, `Save_BTN`): `MaySave` first; then `BeforeChecks` brings the controls up to date; then the checks run in
/// order. The first that refuses says so, its control is brought to front (through every tab page around it) and
/// focused with its text selected, and nothing is written. Then `Write` runs as one command: what it throws is shown
/// and all input stays. After that `AfterWrite` and `Proceed`.
///
/// Leaving (Esc, `Exit_BTN`, the window's close button): asks before it loses changes.
class HOST_EXPORT TBaseSave_FRM : public TBaseDock_FRM
{
    Q_OBJECT

public:
    TBaseSave_FRM(Host &host, TSoftwarePart part, TFormMode mode, QWidget *parent = nullptr);

    /// False after a change that is not written yet.
    bool IsSaved() const { return m_saved; }
    void SetIsSaved(bool saved);
    /// True while the controls are filled by the screen and not by the user.
    virtual bool IsLoading() const { return m_loading > 0; }

    void reject() override;

public slots:
    /// Runs the save cycle, as F3 does. True when it was written.
    bool Save();

protected:
    /// Keeps handlers of change quiet while it lives.
    class Loading
    {
    public:
        explicit Loading(TBaseSave_FRM &screen) : m_screen(screen) { ++m_screen.m_loading; }
        ~Loading() { --m_screen.m_loading; }
        Loading(const Loading &) = delete;
        Loading &operator=(const Loading &) = delete;

    private:
        TBaseSave_FRM &m_screen;
    };

    /// The rights: asked before anything is touched.
    virtual Refused MaySave() { return {}; }
    /// What acts: typed values are taken over, empty numbers become zero. Refuses nothing.
    virtual void BeforeChecks() {}
    /// The checks in their order: the table of contents of what may be saved. They change nothing.
    virtual std::vector<Check> Validate() { return {}; }
    /// Writes what the controls show, in one transaction.
    virtual void Write() = 0;
    /// After a successful write, before `Proceed`.
    virtual void AfterWrite() {}
    /// What follows a successful write; the base says that it is done, and stays.
    virtual void Proceed();
    /// Shows whether there are changes; the base lets nobody save without one.
    virtual void ShowSaved(bool saved);

    /// `Validate()` and what a base adds behind it.
    virtual std::vector<Check> Checks() { return Validate(); }
    /// `Write()` and what a base keeps with it.
    virtual void Store() { Write(); }

    /// Says what is refused and goes to where the fault is. False when nothing is.
    bool Refuse(const Refused &refused);
    /// True when nothing is lost by going on: all is saved, or the user lets the changes go.
    bool MayDiscard();
    /// The question of `MayDiscard` in the program's own words.
    void SetDiscardQuestion(const QString &question) { m_discardQuestion = question; }
    /// Every input of the content area clears the saved state when the user changes it. Call it again after adding
    /// inputs.
    void WatchChanges();
    /// Brings the pages around `control` to front, focuses it and selects its text.
    static void FocusControl(QWidget *control);

    QPushButton *SaveButton() const { return m_save; }
    QPushButton *ExitButton() const { return m_exit; }

private:
    bool Allowed();
    void Changed();
    void Watch(QWidget *input);

    bool m_saved = true;
    bool m_saving = false;
    int m_loading = 0;
    QString m_discardQuestion;
    QPushButton *m_save = nullptr;
    QPushButton *m_exit = nullptr;
};

} // namespace host
