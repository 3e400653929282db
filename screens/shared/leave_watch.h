#pragma once

#include "host/screens/refusals.h"

#include <functional>

class QLineEdit;
class QWidget;

namespace goods {

enum class RuleTime {
    AtOnce,    ///< while the focus moves: for rules that only compute
    Afterwards ///< when the focus has arrived at its new place: for rules that show a message or send the focus back
};

/// What leaving `edit` computes or checks: the rule runs when the user leaves the edit for another control of the
/// window after having changed its text (typed, pasted, deleted or taken back). Passing through runs nothing, nor does
/// a text that the screen has set, nor an edit that cannot be changed: a loaded record comes through Tab as it was.
///
/// What the rule refuses is said by `run`, and the edit counts as changed until its rule is content. Whoever acts from
/// inside an edit (a save, a scanner's Enter) asks LeaveNow() first. An edit has one such rule. It goes by
/// QLineEdit::isModified(): a screen that fills in a text on the user's behalf calls setModified(true), and one that
/// shows a record calls setText() for every edit, also where the text is the same (clear() counts as a change).
void OnChanged(QLineEdit *edit, RuleTime time, host::RuleRunner run, std::function<host::Refused()> rule);
/// The same for a rule that only computes.
void OnChanged(QLineEdit *edit, RuleTime time, std::function<void()> rule);
/// What the rule of `edit` says to its being left now; nothing when it was not changed.
host::Refused LeaveNow(QLineEdit *edit);

/// Runs `action` each time the user leaves `widget` for another control of the window, changed or not: not when the
/// window loses the focus or closes, and not when a list or menu opens over it.
void OnLeave(QWidget *widget, RuleTime time, std::function<void()> action);
/// Runs `action` when the user comes to `widget`.
void OnEnter(QWidget *widget, std::function<void()> action);

} // namespace goods
