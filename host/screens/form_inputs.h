#pragma once

#include <QStringList>
#include <QVariant>

class QWidget;

namespace host::inputs {

/// A check box, a radio button or a switch.
bool IsChoice(const QWidget *widget);

/// The edit inside a combo box, a picker or a search frame belongs to that control.
bool IsInner(const QWidget *widget, const QWidget *content);

/// Enter stops here on its way through a form.
bool TakesTyping(const QWidget *widget);

/// What the user entered into an input, as it is stored; invalid for a widget that is no input.
QVariant Value(const QWidget *input);
/// Shows a value that `Value` gave. An item that a combo box does not have any more leaves it as it is.
void SetValue(QWidget *input, const QVariant &value);

} // namespace host::inputs
