#include "tsql/run/sqlite.h"

#include "tsql/run/sqlite_errors.h"
#include "tsql/write/nesting.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

// How SQLite says that a text is too deep for its parser, or for what it makes of it.
constexpr char StackOverflow[] = "parser stack overflow";
constexpr char TreeTooLarge[] = "Expression tree is too large";

} // namespace

void SqliteHandle::Open(const QString &path, bool readOnly)
{
    // Counting every allocation costs a lock each; nobody asks for the counts.
    static const int configured = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    Q_UNUSED(configured)
    const int flags = readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    const int code =
        sqlite3_open_v2(path.toUtf8().constData(), &m_db, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_URI, nullptr);
    if (code != SQLITE_OK) {
        const QString reason = QString::fromUtf8(m_db ? sqlite3_errmsg(m_db) : sqlite3_errstr(code));
        Close();
        throw Error(4060, {path, reason});
    }
    sqlite3_extended_result_codes(m_db, 1);
    sqlite3_busy_timeout(m_db, BusyTimeout);
    // Double-quoted words are names, never texts.
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    if (!readOnly)
        Execute("PRAGMA journal_mode = WAL");
    Execute("PRAGMA synchronous = FULL");
    Execute("PRAGMA foreign_keys = ON");
    Execute("PRAGMA temp_store = MEMORY");
    Execute("PRAGMA cache_size = -32768");
}

void SqliteHandle::Close()
{
    sqlite3_close_v2(m_db);
    m_db = nullptr;
}

void SqliteHandle::Execute(const char *sql) const
{
    if (sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        ThrowLastError();
}

PreparedStatement SqliteHandle::Prepare(const QByteArray &sql, bool keep) const
{
    sqlite3_stmt *statement = nullptr;
    const unsigned flags = keep ? SQLITE_PREPARE_PERSISTENT : 0;
    int code = sqlite3_prepare_v3(m_db, sql.constData(), int(sql.size()) + 1, flags, &statement, nullptr);
    if (code != SQLITE_OK && qstrcmp(sqlite3_errmsg(m_db), StackOverflow) == 0) {
        const QByteArray flat = Flattened(sql);
        code = sqlite3_prepare_v3(m_db, flat.constData(), int(flat.size()) + 1, flags, &statement, nullptr);
    }
    if (code != SQLITE_OK)
        ThrowLastError();
    return PreparedStatement(statement);
}

bool SqliteHandle::Step(sqlite3_stmt *statement) const
{
    const int code = sqlite3_step(statement);
    if (code == SQLITE_ROW)
        return true;
    if (code != SQLITE_DONE)
        ThrowLastError();
    return false;
}

qint64 SqliteHandle::ScalarInteger(const char *sql) const
{
    const PreparedStatement statement = Prepare(sql);
    return Step(statement.get()) ? sqlite3_column_int64(statement.get(), 0) : 0;
}

bool SqliteHandle::FileIsGone() const
{
    int gone = 0;
    sqlite3_file_control(m_db, "main", SQLITE_FCNTL_HAS_MOVED, &gone);
    return gone != 0;
}

namespace {

/** An Error of one of our own functions, as raiseError packed it. */
bool Unpack(const QByteArray &message, int &number, QString &text)
{
    if (!message.startsWith('\x01'))
        return false;
    const qsizetype colon = message.indexOf(':');
    number = message.mid(1, colon - 1).toInt();
    text = QString::fromUtf8(message.mid(colon + 1));
    return true;
}

} // namespace

void SqliteHandle::ThrowLastError() const
{
    const int code = sqlite3_extended_errcode(m_db);
    const QByteArray message = sqlite3_errmsg(m_db);
    int number = 0;
    QString text;
    if (Unpack(message, number, text))
        throw Error::Worded(number, text);
    if (message == StackOverflow || message.startsWith(TreeTooLarge))
        throw NestedTooDeeply();
    throw SqliteError(code, QString::fromUtf8(message));
}

StatementScope::~StatementScope()
{
    if (!m_done && m_handle.InTransaction())
        sqlite3_exec(m_handle.Get(), "ROLLBACK TO statement; RELEASE statement", nullptr, nullptr, nullptr);
}

void StatementScope::Release()
{
    m_handle.Execute("RELEASE statement");
    m_done = true;
}

void BindValue(sqlite3_stmt *statement, int index, const Value &value)
{
    const auto size = sqlite3_uint64(value.bytes.size());
    switch (value.form) {
    case Value::Form::Null:
        sqlite3_bind_null(statement, index);
        break;
    case Value::Form::Integer:
        sqlite3_bind_int64(statement, index, value.integer);
        break;
    case Value::Form::Real:
        sqlite3_bind_double(statement, index, value.real);
        break;
    case Value::Form::Text:
        sqlite3_bind_text64(statement, index, value.bytes.constData(), size, SQLITE_TRANSIENT, SQLITE_UTF8);
        break;
    case Value::Form::Blob:
        sqlite3_bind_blob64(statement, index, value.bytes.constData(), size, SQLITE_TRANSIENT);
        break;
    }
}

Value ColumnValue(sqlite3_stmt *statement, int column)
{
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
        return Value::OfInteger(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT:
        return Value::OfReal(sqlite3_column_double(statement, column));
    case SQLITE_TEXT: {
        const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
        return Value::OfText(QByteArray(text, sqlite3_column_bytes(statement, column)));
    }
    case SQLITE_BLOB: {
        const auto *bytes = static_cast<const char *>(sqlite3_column_blob(statement, column));
        return Value::OfBlob(QByteArray(bytes, sqlite3_column_bytes(statement, column)));
    }
    default:
        return {};
    }
}

} // namespace tsql
