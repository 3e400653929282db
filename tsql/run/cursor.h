// A result set on its way to the client.
#pragma once

#include "tsql/run/plan.h"

namespace tsql {

/** A handle that streams one result set at a time from its own picture of the file. */
struct Reader
{
    SqliteHandle handle;
    bool busy = false;
};

/** One value of the current row; the bytes are valid until the next row. */
struct Cell
{
    Value::Form form = Value::Form::Null;
    qint64 integer = 0;
    double real = 0;
    std::string_view bytes;
};

/**
 * Rows one after the other, forward only. A streaming cursor steps the statement of a reader as rows are asked for;
 * a buffered one holds all rows.
 */
class Cursor
{
public:
    using Row = std::vector<Value>;

    /** Streams; the first row is fetched here so that a failing statement fails at once. */
    Cursor(Lease lease, std::shared_ptr<Reader> reader);
    /** Reads all rows and lets go of the statement. */
    Cursor(Lease lease, const SqliteHandle &handle);
    ~Cursor();
    Cursor(const Cursor &) = delete;
    Cursor &operator=(const Cursor &) = delete;

    const std::vector<ResultColumn> &Columns() const { return m_entry->compiled.columns; }
    /** Moves to the next row; false behind the last. Throws Error when the statement fails on the way. */
    bool Next();
    Cell CellAt(int column) const;

    /** The rows of a buffered cursor; a streaming one does not know. */
    size_t BufferedRows() const { return m_rows.size(); }

private:
    void ReadAll(const SqliteHandle &handle);
    void Finish();

    std::shared_ptr<CompiledEntry> m_entry; ///< for the columns
    Lease m_lease;
    std::shared_ptr<Reader> m_reader;
    bool m_stepped = false;  ///< the statement stands on a row that nobody has fetched yet
    std::vector<Row> m_rows; ///< of a buffered cursor
    size_t m_nextRow = 0;
};

} // namespace tsql
