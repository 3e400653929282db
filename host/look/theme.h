#pragma once

#include "host/host_export.h"

#include <QColor>
#include <QFont>
#include <QSize>

class QApplication;
class QWidget;

namespace host::theme {

/// Colours of the house, shared by style sheet, controls and printing.
HOST_EXPORT QColor Ground();     ///< behind panels
HOST_EXPORT QColor Surface();    ///< inputs and grids
HOST_EXPORT QColor Line();       ///< borders and grid lines
HOST_EXPORT QColor Ink();        ///< text
HOST_EXPORT QColor InkSoft();    ///< captions and hints
HOST_EXPORT QColor Accent();     ///< the one colour that means "active"
HOST_EXPORT QColor AccentSoft(); ///< ground of the current row
HOST_EXPORT QColor Danger();     ///< refusals
HOST_EXPORT QColor Bar();        ///< title panels: white words stand on it
/// On paper, and on what shows paper, whatever the look of the screen.
HOST_EXPORT QColor PaperInk();
HOST_EXPORT QColor PaperLine();

/// Room for what a window manager draws around a window, in logical pixels.
constexpr QSize WindowFrame(16, 40);

/// The Persian interface font at `points`: DejaVu Sans Condensed where it is installed, otherwise what the system
/// offers for Arabic script.
HOST_EXPORT QFont InterfaceFont(double points = 10.5);
/// The font of titles.
HOST_EXPORT QFont TitleFont();
/// A tool tip that shows a name as it stands, whatever signs it holds; empty for an empty one.
HOST_EXPORT QString PlainToolTip(const QString &text);

/// Makes the style sheet see that a property of `widget` changed.
HOST_EXPORT void Repolish(QWidget *widget);

/// Light or dark; by default as the desktop is.
enum class Look { Desktop, Light, Dark };

/// Gives the application its font, palette, style sheet and right-to-left direction. A host calls it at start, and
/// again when the look changes while windows are open.
HOST_EXPORT void Apply(QApplication &application, Look look = Look::Desktop);

} // namespace host::theme
