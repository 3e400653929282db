// Which foreign key a refused statement offended.
#pragma once

#include "tsql/run/sqlite.h"
#include "tsql/values/error.h"
#include "tsql/write/catalogue.h"
#include "tsql/write/writer.h"

namespace tsql {

/**
 * The server's refusal, with the names of the constraint, table and column that SQLite keeps to itself: carries the
 * statement out once more with keys checked at the end, looks for the row without its counterpart, and takes everything
 * back. `statement` has its values bound. Costs a reading of every table that has foreign keys.
 */
Error KeyConflict(const SqliteHandle &handle, sqlite3_stmt *statement, const Compiled &compiled, const QString &verb,
                  const Catalogue &catalogue);
/** The same for a statement that has been carried out with its keys unchecked. `target` is what an UPDATE changed. */
Error PresentConflict(const SqliteHandle &handle, const QString &target, const QString &verb,
                      const Catalogue &catalogue);

} // namespace tsql
