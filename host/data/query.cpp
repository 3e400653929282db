#include "host/data/query.h"

#include "host/data/database_error.h"
#include "host/data/statement.h"

#include <QSqlError>

#include <atomic>

using namespace Qt::StringLiterals;

namespace host {

namespace {

std::atomic<quint64> &Counter()
{
    static std::atomic<quint64> counter{0};
    return counter;
}

std::function<void(const QString &)> &Watch()
{
    static std::function<void(const QString &)> watch;
    return watch;
}

} // namespace

quint64 StatementsSent()
{
    return Counter().load();
}

void WatchStatements(std::function<void(const QString &text)> watch)
{
    Watch() = std::move(watch);
}

void Send(QSqlQuery &query, const QSqlDatabase &connection, const QString &statement)
{
    const QString text = WithWaiting(connection, statement);
    if (!connection.isOpen()) {
        throw DatabaseError(QSqlError(u"ارتباط با بانک اطلاعاتی برقرار نیست."_s, {}, QSqlError::ConnectionError), text);
    }
    query.setForwardOnly(true);
    query.setNumericalPrecisionPolicy(QSql::HighPrecision);
    ++Counter();
    if (Watch()) {
        Watch()(text);
    }
    if (!query.exec(text)) {
        throw DatabaseError(query.lastError(), text);
    }
}

void CheckRead(const QSqlQuery &query, const QString &text)
{
    if (query.lastError().isValid()) {
        throw DatabaseError(query.lastError(), text);
    }
}

bool SkipToRows(QSqlQuery &query, const QString &text)
{
    while (!query.isSelect()) {
        if (!query.nextResult()) {
            CheckRead(query, text);
            return false;
        }
    }
    return true;
}

void Finish(QSqlQuery &query, const QString &text)
{
    CheckRead(query, text);
    while (query.nextResult()) {
    }
    CheckRead(query, text);
}

Query::Query(const QSqlDatabase &connection) : m_connection(connection)
{}

Query::Query(const QSqlDatabase &connection, const QString &text) : m_connection(connection)
{
    Open(text);
}

void Query::Open(const QString &text)
{
    Close();
    QSqlQuery query(m_connection);
    Send(query, m_connection, text);
    if (SkipToRows(query, text)) {
        m_rows.SetColumns(query.record());
        m_rows.Read(query);
        Finish(query, text);
    }
}

int Query::Exec(const QString &text)
{
    Close();
    return host::Exec(m_connection, text);
}

void Query::Close()
{
    m_rows.Clear();
    m_row = 0;
}

QVariant Query::Value(QStringView field) const
{
    const int column = m_rows.ColumnIndex(field);
    if (column < 0) {
        throw DatabaseError(u"ستون %1 در نتیجه نیست."_s.arg(field));
    }
    return Value(column);
}

QVariant Query::Value(int column) const
{
    if (Eof() || column >= m_rows.ColumnCount()) {
        throw DatabaseError(u"نتیجه سطری ندارد."_s);
    }
    return m_rows.Value(m_row, column);
}

Quantity Query::Number(QStringView field) const
{
    return QuantityFromText(Value(field).toString());
}

Quantity Query::Number(int column) const
{
    return QuantityFromText(Value(column).toString());
}

QVariant Scalar(const QSqlDatabase &connection, const QString &text)
{
    const Query query(connection, text);
    return query.IsEmpty() ? QVariant() : query.Value(0);
}

bool Exists(const QSqlDatabase &connection, const QString &text)
{
    return MoreThan(connection, text, 0);
}

bool MoreThan(const QSqlDatabase &connection, const QString &text, int limit)
{
    QSqlQuery query(connection);
    Send(query, connection, text);
    int rows = 0;
    if (SkipToRows(query, text)) {
        while (rows <= limit && query.next()) {
            ++rows;
        }
        CheckRead(query, text);
    }
    return rows > limit;
}

int Exec(const QSqlDatabase &connection, const QString &text)
{
    QSqlQuery query(connection);
    Send(query, connection, text);
    // An error in a later statement of a batch shows only when its result is asked for.
    int affected = query.isSelect() ? 0 : query.numRowsAffected();
    while (query.nextResult()) {
        if (!query.isSelect()) {
            affected = query.numRowsAffected();
        }
    }
    CheckRead(query, text);
    return std::max(affected, 0);
}

} // namespace host
