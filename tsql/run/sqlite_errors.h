// SQLite's refusals in the words of SQL Server.
#pragma once

#include "tsql/values/error.h"

namespace tsql {

class Catalogue;
struct Statement;

/** Numbers of the errors that concern the file, not the statement. */
inline constexpr int DeviceErrorNumber = 823;
inline constexpr int NoSpaceNumber = 1105;

/** What SQLite said, before anyone has put it into the server's words. */
class SqliteError : public Error
{
public:
    /** `code` is SQLite's extended result code. */
    SqliteError(int code, const QString &message);

    int Code() const { return m_code; }
    /** True when the trouble is with the file or the disk, not with the statement. */
    bool ConcernsFile() const;

private:
    int m_code;
};

/** The first word of a statement, as the server's messages name it. */
QString VerbOf(const Statement &statement);

/** The error to show; `verb` is INSERT, UPDATE, DELETE or another statement's first word. */
Error Translated(const SqliteError &error, const QString &verb, const Catalogue &catalogue);

/// Whether SQLite's code says that a unique key has the value already.
bool IsDuplicate(int code);

} // namespace tsql
