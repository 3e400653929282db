#pragma once

#include "host/screens/base_dock.h"

#include <QVariant>

#include <optional>
#include <vector>

namespace host {

/// Why a check refuses to save: what to say to the user, and where the fault is.
struct Refusal
{
    /// The control to bring to front and to focus; null when the fault is in no single control.
    QWidget *control = nullptr;
    /// Shows the message; empty when whoever found the fault has told the user already.
    std::function<void(MessageService &)> say;
};

/// One named rule of saving; gives nothing when it holds.
struct Check
{
    QString name;
    std::function<std::optional<Refusal>()> run;
};

/// The base of every editor of one record.
///
/// The contract. Opening: `Open(key, mode)` clears the saved state, calls `Prepare` for a new record (mode 2) or `Load`
/// for an existing one (modes 3 and 4; in 4 the screen is for review and cannot save), then shows the screen modally.
/// While it prepares or loads, `IsLoading()` is true and handlers of change keep quiet. A screen that cannot open its
/// record (it is gone) calls `AbortOpening`, having told the user.
///
/// Saving (F3, `Save_BTN`): the checks of `Validate` run in order; the first that refuses says so, its control is
/// brought to front (through every tab page around it) and focused with its text selected, and nothing is written.
/// Then `Write` runs as one command: what it throws is shown and all input stays. After that `AfterWrite`, and the
/// screen closes with OK (1).
///
/// Leaving (Esc, `Exit_BTN`, the window's close button): asks before it loses changes. Enter goes to the next control
/// (a multi-line text takes it; a button is pressed by it).
class HOST_EXPORT TBaseGet_FRM : public TBaseDock_FRM
{
    Q_OBJECT

public:
    TBaseGet_FRM(Host &host, TSoftwarePart part, QWidget *parent = nullptr);

    /// Opens the screen on a record and shows it modally; the modal result, 0 when it gave up while opening.
    /// `parameterText` is the opening text for a new record.
    int Open(const QVariant &key, TFormMode mode, const QString &parameterText = {});
    /// The first half of `Open`: prepares or loads without showing. False when it gave up.
    bool OpenRecord(const QVariant &key, TFormMode mode, const QString &parameterText = {});
    /// The second half: shows what `OpenRecord` prepared.
    int ShowRecord();

    /// The key of the record; for a new one what `Write` set, empty before.
    QVariant Key() const { return m_key; }
    /// The key of the record written last since `OpenRecord`; empty when none was.
    QVariant SavedKey() const { return m_savedKey; }

    /// The record turned out to be deleted by another desk: lists that show it are old.
    bool RecordGone() const { return m_recordGone; }

    /// False after a change that is not written yet.
    bool IsSaved() const { return m_saved; }
    void SetIsSaved(bool saved);
    /// True while a record is prepared or loaded, until the screen stands.
    bool IsLoading() const { return m_loading > 0 || m_opening; }

    void reject() override;

signals:
    /// A record was written.
    void RecordSaved(const QVariant &key);

public slots:
    /// Runs the save cycle, as F3 does. True when the record was written.
    bool Save();

protected:
    /// Keeps handlers of change quiet while it lives.
    class Loading
    {
    public:
        explicit Loading(TBaseGet_FRM &screen) : m_screen(screen) { ++m_screen.m_loading; }
        ~Loading() { --m_screen.m_loading; }
        Loading(const Loading &) = delete;
        Loading &operator=(const Loading &) = delete;

    private:
        TBaseGet_FRM &m_screen;
    };

    /// Makes an empty record of the controls.
    virtual void Prepare() = 0;
    /// Shows the record `Key()`.
    virtual void Load() = 0;
    /// The checks in their order: the table of contents of what may be saved.
    virtual std::vector<Check> Validate() = 0;
    /// Writes the record, in one transaction; for a new record it calls `SetKey`.
    virtual void Write() = 0;
    /// After a successful write, before the screen closes or prepares the next record.
    virtual void AfterWrite() {}
    /// Makes the inputs editable or not (review). The base treats every edit, combo box, check box, switch and picker
    /// of the content area.
    virtual void SetReadOnly(bool readOnly);
    /// Where the focus stands when the screen appears; null leaves it to the tab order.
    virtual QWidget *FirstControl() const { return nullptr; }

    void SetKey(const QVariant &key) { m_key = key; }
    /// For `Load`, when it does not find the record.
    void SetRecordGone() { m_recordGone = true; }
    /// Every input of the content area clears the saved state when the user changes it. Called once by the base at the
    /// first opening; call it again after adding inputs.
    void WatchChanges();
    /// Brings the pages around `control` to front, focuses it and selects its text.
    static void FocusControl(QWidget *control);

    /// What follows a successful write; the base closes with OK.
    virtual void Proceed();

    /// The statement that finds the record being edited, by its key. Before an existing record is written it must give
    /// a row: otherwise another desk deleted the record, the user is told, and nothing is written. Empty skips it.
    virtual QString PrepareRecoveryQuery() const { return {}; }

    void FormShown() override;
    bool FormKeyDown(QKeyEvent *event) override;

    QPushButton *SaveButton() const { return m_save; }
    QPushButton *ExitButton() const { return m_exit; }

private:
    bool Allowed();
    bool RecordStillThere();
    void Changed();
    void Watch(QWidget *input);

    QVariant m_key;
    QVariant m_savedKey;
    bool m_saved = true;
    bool m_saving = false;
    bool m_watching = false;
    bool m_opening = false;
    bool m_readOnly = false;
    bool m_recordGone = false;
    int m_loading = 0;
    QPushButton *m_save = nullptr;
    QPushButton *m_exit = nullptr;
    QLabel *m_unsaved = nullptr;
};

} // namespace host
