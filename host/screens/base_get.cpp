#include "host/screens/base_get.h"

#include "host/controls/entity_picker.h"
#include "host/controls/tags_panel.h"
#include "host/data/query.h"
#include "host/look/theme.h"
#include "host/screens/form_inputs.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace host {

using inputs::IsChoice;
using inputs::IsInner;

namespace {

const char *const lockedProperty = "lockedForReview";

/// Locks or unlocks one input; false when there was nothing to change.
bool Lock(QWidget *widget, bool lock)
{
    const auto change = [&](auto *input) {
        if (input->isReadOnly() == lock)
            return false;
        input->setReadOnly(lock);
        theme::Repolish(input);
        return true;
    };
    if (auto *edit = qobject_cast<QLineEdit *>(widget))
        return change(edit);
    if (auto *text = qobject_cast<QPlainTextEdit *>(widget))
        return change(text);
    if (auto *text = qobject_cast<QTextEdit *>(widget))
        return change(text);
    if (auto *tags = qobject_cast<TagsPanel *>(widget)) {
        if (tags->isReadOnly() == lock)
            return false;
        tags->setReadOnly(lock);
        return true;
    }
    if (auto *picker = qobject_cast<EntityPicker *>(widget)) {
        if (picker->IsReadOnly() == lock)
            return false;
        picker->SetReadOnly(lock);
        return true;
    }
    if (qobject_cast<QComboBox *>(widget) || IsChoice(widget)) {
        if (widget->isEnabledTo(widget->parentWidget()) != lock)
            return false;
        widget->setEnabled(!lock);
        return true;
    }
    return false;
}

} // namespace

TBaseGet_FRM::TBaseGet_FRM(Host &host, TSoftwarePart part, QWidget *parent)
    : TBaseSave_FRM(host, part, TFormMode::New, parent)
{
    SaveButton()->setProperty("primary", true);
    theme::Repolish(SaveButton());
    m_unsaved = new QLabel(u"● ذخیره نشده"_s, this);
    m_unsaved->setObjectName(u"Unsaved_LBL"_s);
    m_unsaved->hide();
    AddToHeader(m_unsaved);
}

int TBaseGet_FRM::Open(const QVariant &key, TFormMode mode, const QString &parameterText)
{
    return OpenRecord(key, mode, parameterText) ? ShowRecord() : 0;
}

bool TBaseGet_FRM::OpenRecord(const QVariant &key, TFormMode mode, const QString &parameterText)
{
    if (IsShowing())
        return false;
    SetFormMode(mode);
    SetParameterText(parameterText);
    m_key = mode == TFormMode::New ? QVariant() : key;
    m_savedKey.clear();
    m_recordGone = false;
    ClearAborted();
    SaveButton()->setVisible(mode != TFormMode::Review);
    // Before loading, which locks what this record does not allow.
    if (m_readOnly)
        SetReadOnly(false);
    const bool loaded = Command(Title(), [this, mode] {
        const Loading quiet(*this);
        if (mode == TFormMode::New)
            Prepare();
        else
            Load();
    });
    if (!loaded)
        AbortOpening();
    if (Aborted()) {
        Command(Title(), [this] { FormClose(); });
        return false;
    }
    SetReadOnly(mode == TFormMode::Review);
    if (!m_watching)
        WatchChanges();
    m_watching = true;
    SetIsSaved(true);
    return true;
}

int TBaseGet_FRM::ShowRecord()
{
    const QScopedValueRollback opening(m_opening, true);
    return ShowModally();
}

void TBaseGet_FRM::FormShown()
{
    m_opening = false;
    SetIsSaved(true);
    if (QWidget *first = FirstControl())
        FocusControl(first);
}

bool TBaseGet_FRM::IsLoading() const
{
    return TBaseSave_FRM::IsLoading() || m_opening;
}

void TBaseGet_FRM::ShowSaved(bool saved)
{
    m_unsaved->setVisible(!saved);
}

bool TBaseGet_FRM::RefuseOpening(const Refused &refused)
{
    if (!Refuse(refused))
        return false;
    AbortOpening();
    return true;
}

void TBaseGet_FRM::SetReadOnly(bool readOnly)
{
    if (readOnly == m_readOnly)
        return;
    m_readOnly = readOnly;
    const auto inputs = Content()->findChildren<QWidget *>();
    for (QWidget *input : inputs) {
        if (IsInner(input, Content()))
            continue;
        // What was locked before the review stays locked after it.
        if (readOnly)
            input->setProperty(lockedProperty, Lock(input, true));
        else if (input->property(lockedProperty).toBool())
            Lock(input, false);
    }
}

std::vector<Check> TBaseGet_FRM::Checks()
{
    std::vector<Check> checks = Validate();
    if (Mode() == TFormMode::Edit)
        checks.push_back({u"RecordStillThere"_s, [this] { return RecordStillThere(); }});
    return checks;
}

Refused TBaseGet_FRM::RecordStillThere()
{
    const QString statement = PrepareRecoveryQuery();
    if (statement.isEmpty() || Exists(m_host.DM.ADOConnection1, statement))
        return {};
    m_recordGone = true;
    return Warning(nullptr, u"کاربر گرامی این رکورد توسط کاربر دیگری حذف شده است و قابل ذخیره نمی باشد"_s);
}

void TBaseGet_FRM::Store()
{
    const QVariant before = m_key;
    try {
        Write();
    } catch (...) {
        m_key = before;
        throw;
    }
    m_savedKey = m_key;
}

void TBaseGet_FRM::Proceed()
{
    done(QDialog::Accepted);
}

bool TBaseGet_FRM::FormKeyDown(QKeyEvent *event)
{
    return GoOnByEnter(event) || TBaseSave_FRM::FormKeyDown(event);
}

} // namespace host
