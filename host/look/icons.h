#pragma once

#include "host/host_export.h"

#include <QColor>
#include <QIcon>

namespace host {

/// The pictures of commands and messages, drawn as outlines so that they are sharp at every scale.
enum class Glyph {
    Goods,
    AddGood,
    Choose,
    Details,
    Divide,
    Documents,
    Groups,
    Stores,
    Units,
    Rights,
    Settings,
    User,
    Exit,
    Photo,
    Plus,
    Information,
    Warning,
    Error,
    Question,
};

/// An icon in a colour of the house, which it follows when the look changes; paler when it is disabled.
HOST_EXPORT QIcon Icon(Glyph glyph, QColor (*color)());
/// In the colour of text.
HOST_EXPORT QIcon Icon(Glyph glyph);

} // namespace host
