// Literals on their way into a prepared statement.
#pragma once

#include "tsql/run/sqlite.h"
#include "tsql/write/writer.h"

#include <array>
#include <utility>

namespace tsql {

/** Holds what is bound to a statement that ends before this does: SQLite then makes no copy of its own. */
class BoundBytes
{
public:
    /** Room for `size` bytes, or null when it is used up. */
    char *Take(qsizetype size)
    {
        if (size > m_end - m_next)
            return nullptr;
        return std::exchange(m_next, m_next + size);
    }

private:
    std::array<char, 2048> m_bytes;
    char *m_next = m_bytes.data();
    char *m_end = m_bytes.data() + m_bytes.size();
};

/**
 * Binds a literal as the type that the parameter asks for, converting and refusing as the server does. The usual
 * cases (numbers, texts that fit) go without memory of their own: this runs for each value of each statement.
 */
void BindLiteral(sqlite3_stmt *statement, int index, const Literal &literal, const Parameter &parameter,
                 BoundBytes *bytes = nullptr);

/** Binds a value of a variable or of the session. */
void BindConverted(sqlite3_stmt *statement, int index, const Value &value, const SqlType &type,
                   const Parameter &parameter);

} // namespace tsql
