#include "tsql/run/cursor.h"

namespace tsql {

Cursor::Cursor(Lease lease, std::shared_ptr<Reader> reader)
    : m_entry(lease.SharedEntry()), m_lease(std::move(lease)), m_reader(std::move(reader))
{
    Q_ASSERT_X(m_lease && m_reader && !m_reader->busy, "Cursor", "a reader carries one result set at a time");
    m_reader->busy = true;
    try {
        m_stepped = m_reader->handle.Step(m_lease.Prepared());
    } catch (...) {
        Finish();
        throw;
    }
    if (!m_stepped)
        Finish();
}

Cursor::Cursor(Lease lease, const SqliteHandle &handle) : m_entry(lease.SharedEntry()), m_lease(std::move(lease))
{
    Q_ASSERT(m_lease);
    ReadAll(handle);
    Finish();
}

Cursor::~Cursor()
{
    Finish();
}

void Cursor::Finish()
{
    m_lease.Release();
    if (m_reader)
        m_reader->busy = false;
    m_reader.reset();
}

void Cursor::ReadAll(const SqliteHandle &handle)
{
    sqlite3_stmt *statement = m_lease.Prepared();
    const int count = sqlite3_column_count(statement);
    while (handle.Step(statement)) {
        Row row;
        row.reserve(size_t(count));
        for (int i = 0; i < count; ++i)
            row.push_back(ColumnValue(statement, i));
        m_rows.push_back(std::move(row));
    }
}

bool Cursor::Next()
{
    if (!m_lease)
        return m_nextRow < m_rows.size() && m_nextRow++ < m_rows.size();
    if (m_stepped) {
        m_stepped = false;
        return true;
    }
    Q_ASSERT_X(m_reader && m_reader->busy, "Cursor", "only a streaming cursor keeps its lease");
    bool more = false;
    try {
        more = m_reader->handle.Step(m_lease.Prepared());
    } catch (...) {
        Finish();
        throw;
    }
    if (!more)
        Finish();
    return more;
}

Cell Cursor::CellAt(int column) const
{
    Q_ASSERT_X(!m_stepped, "Cursor", "next() comes before the first cell");
    Q_ASSERT(column >= 0 && size_t(column) < Columns().size());
    if (!m_lease) {
        if (m_nextRow == 0 || m_rows.empty())
            return {};
        const Value &value = m_rows[m_nextRow - 1][size_t(column)];
        return {value.form, value.integer, value.real, {value.bytes.constData(), size_t(value.bytes.size())}};
    }
    sqlite3_stmt *statement = m_lease.Prepared();
    Cell cell;
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
        cell.form = Value::Form::Integer;
        cell.integer = sqlite3_column_int64(statement, column);
        break;
    case SQLITE_FLOAT:
        cell.form = Value::Form::Real;
        cell.real = sqlite3_column_double(statement, column);
        break;
    case SQLITE_TEXT: {
        cell.form = Value::Form::Text;
        const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
        cell.bytes = {text, size_t(sqlite3_column_bytes(statement, column))};
        break;
    }
    case SQLITE_BLOB: {
        cell.form = Value::Form::Blob;
        const auto *bytes = static_cast<const char *>(sqlite3_column_blob(statement, column));
        cell.bytes = {bytes, size_t(sqlite3_column_bytes(statement, column))};
        break;
    }
    default:
        break;
    }
    return cell;
}

} // namespace tsql
