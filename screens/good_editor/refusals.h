#pragma once

#include "host/screens/base_get.h"

#include <functional>
#include <optional>

/// The ways in which a check of the good editor refuses.
namespace goods {

using Refused = std::optional<host::Refusal>;

/// The boundary of errors for what a control does at once: runs the body as a command of the screen.
using Boundary = std::function<void(const std::function<void()> &body)>;

/// Runs a rule of leaving a field as a command of the screen; what it refuses is said, and the focus goes to the fault.
using RuleRunner = std::function<void(const std::function<Refused()> &rule)>;

inline Refused RequiredField(QWidget *control, const QString &caption)
{
    return host::Refusal{control, [caption](host::MessageService &messages) { messages.MsgRequiredField(caption); }};
}

/// Whoever found the fault has told the user already.
inline Refused ToldAlready(QWidget *control = nullptr)
{
    return host::Refusal{control, {}};
}

/// A message of the catalogue beside the control, for as long as it takes to read it.
inline Refused SmartMessage(QWidget *control, int number, const QStringList &parameters = {})
{
    return host::Refusal{
        control, [=](host::MessageService &messages) { messages.ShowSmartMessage(number, parameters, 3000, control); }};
}

} // namespace goods
