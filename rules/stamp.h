#pragma once

#include <QString>

/// The user as the audit columns name one: name and code. Time and date of the stamp are the host's clock's.
namespace goods {

inline QString StampUser(const QString &name, int code)
{
    return QString::fromUtf16(u"%1 (%2)").arg(name, QString::number(code));
}

} // namespace goods
