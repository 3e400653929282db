#include "host/screens/base_save.h"

#include "host/controls/entity_picker.h"
#include "host/controls/grid.h"
#include "host/controls/tags_panel.h"
#include "host/data/persian_text.h"
#include "host/screens/form_inputs.h"

#include <QComboBox>
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

TBaseSave_FRM::TBaseSave_FRM(Host &host, TSoftwarePart part, TFormMode mode, QWidget *parent)
    : TBaseDock_FRM(host, part, mode, parent),
      m_discardQuestion(u"تغییرات ذخیره نشده است. آیا بدون ذخیره خارج می شوید؟"_s)
{
    m_save = AddFooterButton(u"Save_BTN"_s, u"ذخيره F3"_s);
    m_exit = AddFooterButton(u"Exit_BTN"_s, u"خروج Esc"_s);
    SetLastButton(m_exit);
    Bind(m_save, QKeySequence(Qt::Key_F3), [this] { Save(); });
    Bind(m_exit, QKeySequence(Qt::Key_Escape), [this] { reject(); });
}

void TBaseSave_FRM::SetIsSaved(bool saved)
{
    m_saved = saved;
    ShowSaved(saved);
}

void TBaseSave_FRM::ShowSaved(bool saved)
{
    m_save->setEnabled(!saved);
}

void TBaseSave_FRM::Changed()
{
    if (!IsLoading() && m_saved && Mode() != TFormMode::Review)
        SetIsSaved(false);
}

void TBaseSave_FRM::WatchChanges()
{
    const auto inputs = Content()->findChildren<QWidget *>();
    for (QWidget *input : inputs) {
        if (input->property("watched").toBool() || IsInner(input, Content()))
            continue;
        input->setProperty("watched", true);
        Watch(input);
    }
}

void TBaseSave_FRM::Watch(QWidget *input)
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

bool TBaseSave_FRM::Refuse(const Refused &refused)
{
    if (!refused)
        return false;
    if (refused->say)
        refused->say(m_host.messages);
    if (refused->control)
        FocusControl(refused->control);
    return true;
}

bool TBaseSave_FRM::Allowed()
{
    if (Refuse(MaySave()))
        return false;
    BeforeChecks();
    const std::vector<Check> checks = Checks();
    return std::none_of(checks.cbegin(), checks.cend(), [this](const Check &check) { return Refuse(check.run()); });
}

bool TBaseSave_FRM::Save()
{
    if (m_saving || Mode() == TFormMode::Review)
        return false;
    const QScopedValueRollback saving(m_saving, true);
    bool written = false;
    Command(m_save->text(), [&] {
        if (!Allowed())
            return;
        Store();
        written = true;
        SetIsSaved(true);
    });
    if (!written)
        return false;
    Command(m_save->text(), [this] { AfterWrite(); });
    Command(m_save->text(), [this] { Proceed(); });
    return true;
}

void TBaseSave_FRM::Proceed()
{
    m_host.messages.MSGCompeletedSuccessfully(u"ذخیره‌سازی "_s + Title());
}

bool TBaseSave_FRM::MayDiscard()
{
    return m_saved || m_host.messages.Ask(m_discardQuestion, false);
}

void TBaseSave_FRM::reject()
{
    if (m_saving)
        return;
    for (QWidget *up = focusWidget(); up; up = up->parentWidget())
        if (auto *grid = qobject_cast<Grid *>(up))
            grid->CommitTyped();
    if (MayDiscard())
        TBaseDock_FRM::reject();
}

void TBaseSave_FRM::FocusControl(QWidget *control)
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

} // namespace host
