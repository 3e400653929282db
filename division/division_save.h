#pragma once

#include "host/host.h"

#include <stdexcept>

/// The division may not be written as it stands: what the user is to be told. Nothing was written.
class DivisionRefused : public std::runtime_error
{
public:
    explicit DivisionRefused(const QString &text) : std::runtime_error(text.toStdString()), m_text(text) {}
    const QString &Text() const { return m_text; }

private:
    QString m_text;
};

namespace division {

/// Writes a division out of the working tables of the connection: header, rows, parts, their movements in the detail
/// ledger and in stock, in one transaction. A division that another desk has saved since it was read, of which a part
/// that is used would go, or whose day lies before its units came or after its parts were used, is refused. Keeps the
/// working tables; who is done with them drops them. Throws DivisionRefused and DatabaseError.
void Save(host::Host &host, const host::TDivisionHeader &header, host::TFormMode mode);

/// Removes a division with all its movements, in one transaction. Throws as above.
void Delete(host::Host &host, int code);

/// The code of a new division: behind those that are used or that an open editor has reserved. Throws DatabaseError.
int NewCode(host::Host &host);

/// What to tell when a division, a row or a part of it may not go because something was done with it since, naming unit
/// and document; empty when it may. 0 for row and part means all. Throws DatabaseError.
QString UsedText(host::Host &host, int code, int operationRow, int part);

} // namespace division
