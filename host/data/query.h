#pragma once

#include "host/data/quantity.h"
#include "host/data/row_store.h"
#include "host/host_export.h"

#include <QSqlDatabase>
#include <QString>
#include <QVariant>

namespace host {

/// The scratch query: set a text, open, read. The whole result is read when it is opened, so the connection is free
/// for the next statement at once. The last text and result stay until the next Open().
class HOST_EXPORT Query
{
public:
    /// Runs on `connection`, which must be open for as long as statements are sent.
    explicit Query(const QSqlDatabase &connection);
    /// Runs the text at once.
    Query(const QSqlDatabase &connection, const QString &text);

    /// Runs the text and reads the first result that has columns; stands on its first row.
    /// Throws DatabaseError; the former result is gone then.
    void Open(const QString &text);
    /// Runs a text of which no rows are wanted, all its statements; returns the number of rows of the last one that
    /// counts rows. Throws DatabaseError.
    int Exec(const QString &text);
    void Close();

    int RecordCount() const { return m_rows.RowCount(); }
    bool IsEmpty() const { return m_rows.RowCount() == 0; }
    bool Eof() const { return m_row >= m_rows.RowCount(); }
    /// To the next row; false when there is none.
    bool Next() { return ++m_row < m_rows.RowCount(); }
    void First() { m_row = 0; }

    /// A field of the current row by name (case-insensitive). Throws DatabaseError when there is no such field or row.
    QVariant Value(QStringView field) const;
    QVariant Value(int column) const;
    bool IsNull(QStringView field) const { return Value(field).isNull(); }
    int Int(QStringView field) const { return Value(field).toInt(); }
    int Int(int column) const { return Value(column).toInt(); }
    bool Bool(QStringView field) const { return Value(field).toBool(); }
    QString Text(QStringView field) const { return Value(field).toString(); }
    /// NULL is 0.
    Quantity Number(QStringView field) const;
    Quantity Number(int column) const;

    const RowStore &Rows() const { return m_rows; }
    const QSqlDatabase &Connection() const { return m_connection; }

private:
    QSqlDatabase m_connection;
    RowStore m_rows;
    int m_row = 0;
};

/// First column of the first row; an invalid variant when there is no row.
HOST_EXPORT QVariant Scalar(const QSqlDatabase &connection, const QString &text);
/// Whether a SELECT yields at least one row.
HOST_EXPORT bool Exists(const QSqlDatabase &connection, const QString &text);
/// Whether a SELECT yields more than `limit` rows; none behind that is read.
HOST_EXPORT bool MoreThan(const QSqlDatabase &connection, const QString &text, int limit);
/// Runs a statement or batch without result; returns the number of rows of its last counting statement.
HOST_EXPORT int Exec(const QSqlDatabase &connection, const QString &text);

/// How many statements this process has sent since it started: over a network that is what users wait for.
HOST_EXPORT quint64 StatementsSent();

} // namespace host
