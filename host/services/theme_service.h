#pragma once

class QColor;
class QFont;

namespace host {

/// The look that the host gives to every screen.
class ThemeService
{
public:
    virtual ~ThemeService() = default;

    /// The colour of panel captions.
    virtual QColor CaptionColor() const = 0;
    /// The font of titles such as a good's full name.
    virtual QFont TitleFont() const = 0;
};

} // namespace host
