#pragma once

#include <QStringList>

class QWidget;

namespace desk {

/// What on a window keeps a person from using it: a control that a screen reader has no name for, a command that no
/// key reaches, a caption that is cut off, a window that needs more room than the smallest screen of the house has
/// (1280 x 720 logical pixels). Empty for a window that is fit for people, and on screens
/// that are smaller still.
QStringList Hindrances(const QWidget &window);

} // namespace desk
