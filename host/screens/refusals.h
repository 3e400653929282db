#pragma once

#include "host/host.h"
#include "host/host_export.h"

#include <functional>
#include <optional>

/// The ways in which a check refuses to save. One copy of each: a screen says which of them, where and of what.
namespace host {

/// Why a check refuses to save: what to say to the user, and where the fault is.
struct Refusal
{
    /// The control to bring to front and to focus; null when the fault is in no single control.
    QWidget *control = nullptr;
    /// Shows the message; empty when whoever found the fault has told the user already.
    std::function<void(MessageService &)> say;
};

/// Nothing when a rule holds.
using Refused = std::optional<Refusal>;

/// One named rule of saving.
struct Check
{
    QString name;
    std::function<Refused()> run;
};

/// The boundary of errors for what a control does at once: runs the body as a command of the screen.
using Boundary = std::function<void(const std::function<void()> &body)>;

/// Runs a rule of leaving a field as a command of the screen; what it refuses is said, and the focus goes to the fault.
using RuleRunner = std::function<void(const std::function<Refused()> &rule)>;

/// The refusal when there is a fault, nothing otherwise.
inline Refused When(bool fault, Refusal refusal)
{
    return fault ? Refused(std::move(refusal)) : std::nullopt;
}

/// A field that must be filled.
HOST_EXPORT Refusal Required(QWidget *control, const QString &caption);
/// Another record of kind `entity` has the same `field`.
HOST_EXPORT Refusal Repeated(QWidget *control, const QString &field, const QString &entity);
/// Another record has the same code.
HOST_EXPORT Refusal RepeatedCode(QWidget *control, const QString &caption);
/// A message of the catalogue beside the control, for as long as it takes to read it.
HOST_EXPORT Refusal SmartMessage(QWidget *control, int number, const QStringList &parameters = {});
/// A box with a text of its own.
HOST_EXPORT Refusal Warning(QWidget *control, const QString &text);
/// The record that was to be opened is not there any more; `kind` is what the user calls it.
HOST_EXPORT Refusal RecordGone(const QString &kind);
/// Whoever found the fault has told the user already.
HOST_EXPORT Refusal ToldAlready(QWidget *control = nullptr);

/// Refuses without the right that an editor in this mode needs; the permission service has told the user.
HOST_EXPORT Refused CheckRight(const Host &host, TSoftwarePart part, TFormMode mode);

} // namespace host
