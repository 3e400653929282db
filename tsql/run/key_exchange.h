// Updates whose rows take over unique values from each other.
#pragma once

#include "tsql/run/sqlite.h"
#include "tsql/write/catalogue.h"
#include "tsql/write/writer.h"

namespace tsql {

/**
 * Carries an UPDATE out that SQLite refused because it compares unique keys row by row, the server at the statement's
 * end: the rows first give up their keys for values that no row has, then take the new ones. `values` gives the
 * number of each row and its new values, its values are bound; `found` describes it. Throws as SQLite does when two
 * rows still have one key in the end, and as the server does for a foreign key. Returns the number of rows.
 *
 * To be run in a StatementScope, which takes back what an error leaves half done.
 */
qint64 ExchangeKeys(const SqliteHandle &handle, sqlite3_stmt *values, const Compiled &found,
                    const Catalogue &catalogue);

} // namespace tsql
