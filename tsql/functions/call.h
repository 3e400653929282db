// How the SQL functions are written down and called.
#pragma once

#include "tsql/values/decimal.h"

#include <QString>

#include <span>
#include <sqlite3.h>
#include <string>
#include <string_view>

namespace tsql {

/** One call: its arguments and its result. A result that is never set is NULL. */
class Call
{
public:
    Call(sqlite3_context *context, int count, sqlite3_value **values)
        : m_context(context), m_values(values, size_t(count))
    {}

    int Count() const { return int(m_values.size()); }
    bool IsNull(int i) const { return sqlite3_value_type(m_values[size_t(i)]) == SQLITE_NULL; }
    qint64 IntegerAt(int i) const { return sqlite3_value_int64(m_values[size_t(i)]); }
    int Number(int i) const { return sqlite3_value_int(m_values[size_t(i)]); }
    double RealAt(int i) const { return sqlite3_value_double(m_values[size_t(i)]); }
    /** UTF-8, valid until the call ends. */
    std::string_view text(int i) const
    {
        const auto *bytes = reinterpret_cast<const char *>(sqlite3_value_text(m_values[size_t(i)]));
        return {bytes, size_t(sqlite3_value_bytes(m_values[size_t(i)]))};
    }
    std::string_view BlobAt(int i) const
    {
        const auto *bytes = static_cast<const char *>(sqlite3_value_blob(m_values[size_t(i)]));
        return {bytes, size_t(sqlite3_value_bytes(m_values[size_t(i)]))};
    }
    QString String(int i) const
    {
        const std::string_view utf8 = text(i);
        return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
    }
    Decimal DecimalAt(int i, int scale) const
    {
        const std::string_view bytes = BlobAt(i);
        return Decimal::FromBlob(bytes.data(), int(bytes.size()), scale);
    }

    sqlite3_context *Context() const { return m_context; }
    sqlite3_value *ValueAt(int i) const { return m_values[size_t(i)]; }

    void Give(qint64 value) const { sqlite3_result_int64(m_context, value); }
    void Give(double value) const { sqlite3_result_double(m_context, value); }
    void Give(std::string_view utf8) const
    {
        sqlite3_result_text64(m_context, utf8.data(), utf8.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    void Give(const QString &text) const
    {
        const QByteArray utf8 = text.toUtf8();
        Give(std::string_view(utf8.constData(), size_t(utf8.size())));
    }
    void Give(const Decimal &value) const
    {
        unsigned char buffer[17];
        sqlite3_result_blob(m_context, buffer, value.ToBlob(buffer), SQLITE_TRANSIENT);
    }
    void GiveBlob(std::string_view bytes) const
    {
        sqlite3_result_blob64(m_context, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
    }
    void GiveArgument(int i) const { sqlite3_result_value(m_context, m_values[size_t(i)]); }

private:
    sqlite3_context *m_context;
    std::span<sqlite3_value *> m_values;
};

/** One line of a table of functions. */
struct Function
{
    const char *name;
    void (*body)(Call &);
    int args;               ///< -1 for any number
    bool takesNull = false; ///< otherwise a NULL argument makes the result NULL without a call
    bool steady = true;     ///< same arguments, same result
};

/** One call of a function from SQLite: NULL arguments, then the body, whose Error fails the statement. */
void CallFunction(const Function &function, sqlite3_context *context, int count, sqlite3_value **values);

/** Registers the functions; `functions` outlives the handle. An Error thrown by a body fails the statement. */
void AddFunctions(sqlite3 *db, std::span<const Function> functions);

/** Hands an Error through SQLite: throwError of sqlite.h unpacks it. */
void RaiseError(sqlite3_context *context, const class Error &error);

void AddDecimalFunctions(sqlite3 *db);
void AddNumberFunctions(sqlite3 *db);
void AddAggregates(sqlite3 *db);
void AddTextFunctions(sqlite3 *db);
void AddDateFunctions(sqlite3 *db);
void AddGuards(sqlite3 *db);

} // namespace tsql
