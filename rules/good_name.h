#pragma once

#include <QString>

namespace goods {

/// The full name of a good as it is shown, stored and compared: name, type and index joined by single blanks, also
/// around empty parts, so that a full name may end in blanks.
inline QString ComposedName(const QString &name, const QString &type, const QString &index)
{
    return name + u' ' + type + u' ' + index;
}

} // namespace goods
