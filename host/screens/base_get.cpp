#include "host/screens/base_get.h"

#include "host/controls/entity_picker.h"
#include "host/controls/grid.h"
#include "host/controls/tags_panel.h"
#include "host/data/persian_text.h"
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
#include <QScrollArea>
#include <QTabWidget>
#include <QTextEdit>

#include <algorithm>

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

bool BreaksLine(QChar c)
{
    return c == u'\n' || c == u'\r' || c == u'\t' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

/// A cell copied from a sheet brings its line end along, which an edit of one line would keep unseen; an edit that is
/// full keeps half of a character.
void KeepOneLine(QLineEdit *edit)
{
    QString text = WholeCharacters(edit->text());
    if (text == edit->text() && std::none_of(text.cbegin(), text.cend(), BreaksLine))
        return;
    while (!text.isEmpty() && BreaksLine(text.back()))
        text.chop(1);
    std::replace_if(text.begin(), text.end(), BreaksLine, u' ');
    edit->setText(text);
    edit->setModified(true); // it was the user who entered it
}

} // namespace

TBaseGet_FRM::TBaseGet_FRM(Host &host, TSoftwarePart part, QWidget *parent)
    : TBaseDock_FRM(host, part, TFormMode::New, parent)
{
    m_save = AddFooterButton(u"Save_BTN"_s, u"ذخيره F3"_s);
    m_save->setProperty("primary", true);
    theme::Repolish(m_save);
    m_exit = AddFooterButton(u"Exit_BTN"_s, u"خروج Esc"_s);
    SetLastButton(m_exit);
    m_unsaved = new QLabel(u"● ذخیره نشده"_s, this);
    m_unsaved->setObjectName(u"Unsaved_LBL"_s);
    m_unsaved->hide();
    AddToHeader(m_unsaved);
    Bind(m_save, QKeySequence(Qt::Key_F3), [this] { Save(); });
    Bind(m_exit, QKeySequence(Qt::Key_Escape), [this] { reject(); });
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
    m_save->setVisible(mode != TFormMode::Review);
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

void TBaseGet_FRM::SetIsSaved(bool saved)
{
    m_saved = saved;
    m_unsaved->setVisible(!saved);
}

void TBaseGet_FRM::Changed()
{
    if (!IsLoading() && m_saved && Mode() != TFormMode::Review)
        SetIsSaved(false);
}

void TBaseGet_FRM::WatchChanges()
{
    const auto inputs = Content()->findChildren<QWidget *>();
    for (QWidget *input : inputs) {
        if (input->property("watched").toBool() || IsInner(input, Content()))
            continue;
        input->setProperty("watched", true);
        Watch(input);
    }
}

void TBaseGet_FRM::Watch(QWidget *input)
{
    const auto changed = [this] { Changed(); };
    if (auto *picker = qobject_cast<EntityPicker *>(input)) {
        connect(picker, &EntityPicker::Edited, this, changed);
        connect(picker, &EntityPicker::Changed, this, changed);
    } else if (auto *edit = qobject_cast<QLineEdit *>(input)) {
        connect(edit, &QLineEdit::textEdited, edit, [edit] { KeepOneLine(edit); });
        connect(edit, &QLineEdit::textChanged, this, changed);
    } else if (auto *combo = qobject_cast<QComboBox *>(input)) {
        if (QLineEdit *typed = combo->lineEdit())
            connect(typed, &QLineEdit::textEdited, typed, [typed] { KeepOneLine(typed); });
        connect(combo, &QComboBox::currentIndexChanged, this, changed);
        connect(combo, &QComboBox::editTextChanged, this, changed);
    } else if (auto *text = qobject_cast<QPlainTextEdit *>(input)) {
        connect(text, &QPlainTextEdit::textChanged, this, changed);
    } else if (auto *rich = qobject_cast<QTextEdit *>(input)) {
        connect(rich, &QTextEdit::textChanged, this, changed);
    } else if (auto *tags = qobject_cast<TagsPanel *>(input)) {
        connect(tags, &TagsPanel::Changed, this, changed);
    } else if (IsChoice(input)) {
        connect(qobject_cast<QAbstractButton *>(input), &QAbstractButton::toggled, this, changed);
    }
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

bool TBaseGet_FRM::Allowed()
{
    const std::vector<Check> checks = Validate();
    for (const Check &check : checks) {
        const std::optional<Refusal> refusal = check.run();
        if (!refusal)
            continue;
        if (refusal->say)
            refusal->say(m_host.messages);
        if (refusal->control)
            FocusControl(refusal->control);
        return false;
    }
    return true;
}

bool TBaseGet_FRM::RecordStillThere()
{
    const QString statement = PrepareRecoveryQuery();
    if (statement.isEmpty() || Exists(m_host.DM.ADOConnection1, statement))
        return true;
    m_recordGone = true;
    m_host.messages.ShowMessage(u"کاربر گرامی این رکورد توسط کاربر دیگری حذف شده است و قابل ذخیره نمی باشد"_s,
                                MessageIcon::Warning);
    return false;
}

bool TBaseGet_FRM::Save()
{
    if (m_saving || Mode() == TFormMode::Review)
        return false;
    const QScopedValueRollback saving(m_saving, true);
    bool written = false;
    Command(m_save->text(), [&] {
        if (!Allowed() || (Mode() == TFormMode::Edit && !RecordStillThere()))
            return;
        const QVariant before = m_key;
        try {
            Write();
        } catch (...) {
            m_key = before;
            throw;
        }
        written = true;
        m_savedKey = m_key;
        SetIsSaved(true);
    });
    if (!written)
        return false;
    emit RecordSaved(m_savedKey);
    Command(m_save->text(), [this] { AfterWrite(); });
    Command(m_save->text(), [this] { Proceed(); });
    return true;
}

void TBaseGet_FRM::Proceed()
{
    done(QDialog::Accepted);
}

void TBaseGet_FRM::reject()
{
    if (m_saving)
        return;
    for (QWidget *up = focusWidget(); up; up = up->parentWidget())
        if (auto *grid = qobject_cast<Grid *>(up))
            grid->CommitTyped();
    if (!m_saved && !m_host.messages.Ask(u"تغییرات ذخیره نشده است. آیا بدون ذخیره خارج می شوید؟"_s, false))
        return;
    TBaseDock_FRM::reject();
}

void TBaseGet_FRM::FocusControl(QWidget *control)
{
    for (QWidget *up = control->parentWidget(); up; up = up->parentWidget()) {
        if (auto *tabs = qobject_cast<QTabWidget *>(up)) {
            for (int page = 0; page < tabs->count(); ++page)
                if (tabs->widget(page)->isAncestorOf(control))
                    tabs->setCurrentIndex(page);
        } else if (auto *scroll = qobject_cast<QScrollArea *>(up)) {
            scroll->ensureWidgetVisible(control);
        }
    }
    control->setFocus(Qt::OtherFocusReason);
    QWidget *inner = control->focusProxy() ? control->focusProxy() : control;
    if (auto *combo = qobject_cast<QComboBox *>(inner); combo && combo->isEditable())
        inner = combo->lineEdit();
    if (auto *edit = qobject_cast<QLineEdit *>(inner))
        edit->selectAll();
    else if (auto *text = qobject_cast<QPlainTextEdit *>(inner))
        text->selectAll();
}

bool TBaseGet_FRM::FormKeyDown(QKeyEvent *event)
{
    return GoOnByEnter(event) || TBaseDock_FRM::FormKeyDown(event);
}

} // namespace host
