#pragma once

#include <QColor>
#include <QIcon>

namespace desk {

/// The pictures of commands and messages, drawn as outlines so that they are sharp at every scale.
enum class Glyph {
    Goods,
    AddGood,
    Choose,
    Details,
    Groups,
    Stores,
    Units,
    Rights,
    Settings,
    User,
    Exit,
    Photo,
    Information,
    Warning,
    Error,
    Question,
};

/// An icon in one colour; paler when it is disabled.
QIcon Icon(Glyph glyph, const QColor &color);
/// In the colour of text.
QIcon Icon(Glyph glyph);

} // namespace desk
