#pragma once

#include "host/screens/base_save.h"

#include <QVariant>

namespace host {

/// The base of every editor of one record.
///
/// The contract. Opening: `Open(key, mode)` clears the saved state, calls `Prepare` for a new record (mode 2) or `Load`
/// for an existing one (modes 3 and 4; in 4 the screen is for review and cannot save), then shows the screen modally.
/// While it prepares or loads, `IsLoading()` is true and handlers of change keep quiet. A screen that cannot open its
/// record (it is gone) calls `AbortOpening`, having told the user.
///
/// Saving goes as in every screen that saves; the screen closes with OK (1). Enter goes to the next control (a
/// multi-line text takes it; a button is pressed by it).
class HOST_EXPORT TBaseGet_FRM : public TBaseSave_FRM
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

    /// True while a record is prepared or loaded, until the screen stands.
    bool IsLoading() const override;

protected:
    /// Makes an empty record of the controls.
    virtual void Prepare() = 0;
    /// Shows the record `Key()`.
    virtual void Load() = 0;
    std::vector<Check> Validate() override = 0;
    /// Writes the record, in one transaction; for a new record it calls `SetKey`.
    void Write() override = 0;
    /// Makes the inputs editable or not (review). The base treats every edit, combo box, check box, switch and picker
    /// of the content area.
    virtual void SetReadOnly(bool readOnly);
    /// Where the focus stands when the screen appears; null leaves it to the tab order.
    virtual QWidget *FirstControl() const { return nullptr; }

    void SetKey(const QVariant &key) { m_key = key; }
    /// For `Load`, when it does not find the record.
    void SetRecordGone() { m_recordGone = true; }
    /// Tells why the record does not open and gives up opening. False when nothing is refused.
    bool RefuseOpening(const Refused &refused);

    /// What follows a successful write; the base closes with OK.
    void Proceed() override;
    void ShowSaved(bool saved) override;
    std::vector<Check> Checks() override;
    void Store() override;

    /// The statement that finds the record being edited, by its key. Before an existing record is written it must give
    /// a row: otherwise another desk deleted the record, the user is told, and nothing is written. Empty skips it.
    virtual QString PrepareRecoveryQuery() const { return {}; }

    void FormShown() override;
    bool FormKeyDown(QKeyEvent *event) override;

private:
    Refused RecordStillThere();

    QVariant m_key;
    QVariant m_savedKey;
    bool m_watching = false;
    bool m_opening = false;
    bool m_readOnly = false;
    bool m_recordGone = false;
    QLabel *m_unsaved = nullptr;
};

} // namespace host
