// Literals on their way into a prepared statement.
#pragma once

#include "tsql/sqlite.h"
#include "tsql/writer.h"

namespace tsql {

/**
 * Binds a literal as the type that the parameter asks for, converting and refusing as the server does. The usual
 * cases (numbers, texts that fit) go without memory of their own: this runs for each value of each statement.
 */
void bindLiteral(sqlite3_stmt *statement, int index, const Literal &literal, const Parameter &parameter);

/** Binds a value of a variable or of the session. */
void bindConverted(sqlite3_stmt *statement, int index, const Value &value, const SqlType &type,
                   const Parameter &parameter);

} // namespace tsql
