#pragma once

#include "host/host_export.h"

#include <QColor>

namespace host {

/// The colours of one look of the house. What is read stands out from what it is read on by 4.5 : 1 at least.
struct HOST_EXPORT Palette
{
    QColor Ground;      ///< behind panels
    QColor Surface;     ///< inputs and grids
    QColor Panel;       ///< groups and pages
    QColor Footer;      ///< the bar of commands
    QColor Head;        ///< captions of columns
    QColor Stripe;      ///< every second row
    QColor ReadOnly;    ///< inputs that take nothing
    QColor Current;     ///< the current row where the keys are
    QColor AccentSoft;  ///< the current row elsewhere, what the mouse is over
    QColor Fill;        ///< white words stand on it
    QColor Bar;         ///< title panel and tips: white words stand on it
    QColor Line;        ///< borders of panels
    QColor GridLine;    ///< between cells
    QColor Border;      ///< of inputs
    QColor Handle;      ///< of scroll bars
    QColor Ink;         ///< text
    QColor InkSoft;     ///< captions and hints
    QColor Placeholder; ///< what an empty input says
    QColor Disabled;    ///< words that do nothing at the moment
    QColor Accent;      ///< the one colour that means "active"
    QColor AccentInk;   ///< words in that colour
    QColor Danger;      ///< refusals

    static const Palette &Light();
    static const Palette &Dark();
};

} // namespace host
