#pragma once

#include <QString>

namespace host {

/// The keyboard layout of the desk. Layouts have the names of the desktop system, eight hexadecimal digits.
class KeyboardService
{
public:
    static constexpr const char16_t *English = u"00000409";
    static constexpr const char16_t *Persian = u"00000429";

    virtual ~KeyboardService() = default;

    virtual QString GetKeyboardLayoutName() = 0;
    /// Makes a layout active at once.
    virtual void LoadKeyboardLayout(const QString &name) = 0;
};

} // namespace host
