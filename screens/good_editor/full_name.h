#pragma once

#include <QString>

namespace goods {

/// The full name of a good as it is shown, stored and compared: name, type and index joined by single blanks, also
/// around empty parts, so that a full name may end in blanks.
inline QString FullName(const QString &name, const QString &type, const QString &index)
{
    return name + QLatin1Char(' ') + type + QLatin1Char(' ') + index;
}

} // namespace goods
