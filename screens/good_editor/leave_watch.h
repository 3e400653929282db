#pragma once

#include <functional>

class QWidget;

namespace goods {

enum class RuleTime {
    AtOnce,    ///< while the focus moves: for rules that only compute
    Afterwards ///< when the focus has arrived at its new place: for rules that show a message or send the focus back
};

/// Runs `rule` when the user leaves `edit` for another control of the window: not when the window loses the focus or
/// closes, and not when a list or menu opens over it.
void OnLeave(QWidget *edit, RuleTime time, std::function<void()> rule);
/// Runs `rule` when the user comes to `edit`.
void OnEnter(QWidget *edit, std::function<void()> rule);

} // namespace goods
