#include "tsql/qt/result.h"

#include "tsql/qt/driver.h"
#include "tsql/qt/qt_types.h"
#include "tsql/values/error.h"

#include <QScopeGuard>
#include <QSqlField>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

/** What the server finds before it runs anything of a batch: columns that are not there, groups that make no sense. */
bool FoundBeforeRunning(const Error &error)
{
    constexpr int numbers[] = {207, 209, 4104, 8120};
    return std::find(std::begin(numbers), std::end(numbers), error.Number()) != std::end(numbers);
}

} // namespace

Result::Result(const Driver *driver) : QSqlResult(driver)
{}

Result::~Result()
{
    Close();
}

/** The cursors go before the connection whose handles they use. */
void Result::Close()
{
    m_cursor.reset();
    m_outcome.clear();
    m_nextResult = 0;
    m_passed.clear();
    m_connection.reset();
    m_cursorEnded = false;
    m_failure.reset();
}

bool Result::reset(const QString &sql)
{
    Close();
    setActive(false);
    setAt(QSql::BeforeFirstRow);
    const auto *owner = static_cast<const Driver *>(driver());
    m_connection = owner->SharedConnection();
    try {
        if (!m_connection)
            throw Error(0);
        const auto tell = qScopeGuard([&] { owner->m_messages.swap(m_outcome.messages); });
        m_connection->Execute(sql, m_outcome);
    } catch (const Error &error) {
        if (m_outcome.results.empty() || FoundBeforeRunning(error)) {
            setLastError(SqlError(error, QSqlError::StatementError));
            Close();
            return false;
        }
        m_failure = error;
    }
    ShowCurrent();
    setActive(true);
    return true;
}

/** Takes the next result set of the batch. */
void Result::ShowCurrent()
{
    m_cursor.reset();
    m_passed.clear();
    m_cursorEnded = false;
    setAt(QSql::BeforeFirstRow);
    if (m_nextResult < m_outcome.results.size())
        m_cursor = std::move(m_outcome.results[m_nextResult++]);
    setSelect(m_cursor != nullptr);
}

bool Result::nextResult()
{
    if (m_nextResult == m_outcome.results.size()) {
        m_cursor.reset();
        setSelect(false);
        if (const auto failure = std::exchange(m_failure, std::nullopt))
            setLastError(SqlError(*failure, QSqlError::StatementError));
        return false;
    }
    ShowCurrent();
    return true;
}

/** Moves the cursor one row on; a query that may go back keeps the row. */
bool Result::Advance()
{
    if (!m_cursor || m_cursorEnded)
        return false;
    try {
        m_cursorEnded = !m_cursor->Next();
    } catch (const Error &error) {
        setLastError(SqlError(error, QSqlError::StatementError));
        m_cursorEnded = true;
    }
    if (m_cursorEnded)
        return false;
    if (!isForwardOnly()) {
        std::vector<QVariant> row;
        const auto &columns = m_cursor->Columns();
        for (size_t i = 0; i < columns.size(); ++i)
            row.push_back(VariantOf(m_cursor->CellAt(int(i)), columns[i].type, numericalPrecisionPolicy()));
        m_passed.push_back(std::move(row));
    }
    return true;
}

bool Result::fetchNext()
{
    if (isForwardOnly()) {
        if (!Advance()) {
            setAt(QSql::AfterLastRow);
            return false;
        }
        setAt(at() < 0 ? 0 : at() + 1);
        return true;
    }
    return Seek(at() < 0 ? 0 : at() + 1);
}

bool Result::Seek(int row)
{
    if (row < 0) {
        setAt(QSql::BeforeFirstRow);
        return false;
    }
    while (m_passed.size() <= size_t(row)) {
        if (!Advance()) {
            setAt(QSql::AfterLastRow);
            return false;
        }
    }
    setAt(row);
    return true;
}

bool Result::fetch(int row)
{
    if (!isForwardOnly())
        return Seek(row);
    while (at() < row) {
        if (!fetchNext())
            return false;
    }
    return at() == row;
}

bool Result::fetchFirst()
{
    if (isForwardOnly())
        return at() == QSql::BeforeFirstRow && fetchNext();
    return Seek(0);
}

bool Result::fetchPrevious()
{
    return !isForwardOnly() && Seek(at() - 1);
}

bool Result::fetchLast()
{
    if (isForwardOnly())
        return false;
    while (Advance()) {
    }
    return !m_passed.empty() && Seek(int(m_passed.size()) - 1);
}

QVariant Result::data(int field)
{
    if (!m_cursor || field < 0 || size_t(field) >= m_cursor->Columns().size())
        return {};
    if (!isForwardOnly())
        return at() >= 0 && size_t(at()) < m_passed.size() ? m_passed[size_t(at())][size_t(field)] : QVariant();
    return VariantOf(m_cursor->CellAt(field), m_cursor->Columns()[size_t(field)].type, numericalPrecisionPolicy());
}

bool Result::isNull(int field)
{
    if (!isForwardOnly())
        return data(field).isNull();
    const bool known = m_cursor && field >= 0 && size_t(field) < m_cursor->Columns().size();
    return !known || m_cursor->CellAt(field).form == Value::Form::Null;
}

QVariant Result::handle() const
{
    if (!isForwardOnly())
        return {};
    return QVariant::fromValue(const_cast<host::RowFeed *>(static_cast<const host::RowFeed *>(this)));
}

bool Result::NextRow(std::vector<host::FedCell> &cells)
{
    if (!fetchNext())
        return false;
    const auto &columns = m_cursor->Columns();
    cells.resize(columns.size());
    for (size_t i = 0; i < columns.size(); ++i)
        cells[i] = FedCell(m_cursor->CellAt(int(i)), columns[i].type);
    return true;
}

QSqlRecord Result::record() const
{
    QSqlRecord record;
    if (m_cursor) {
        for (const ResultColumn &column : m_cursor->Columns())
            record.append(SqlField(column));
    }
    return record;
}

QVariant Result::lastInsertId() const
{
    return m_outcome.lastIdentity.IsNull() ? QVariant() : QVariant(m_outcome.lastIdentity.integer);
}

void Result::detachFromResultSet()
{
    m_cursor.reset();
    m_outcome.results.clear();
    m_nextResult = 0;
    m_passed.clear();
}

} // namespace tsql
