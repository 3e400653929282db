#pragma once

#include <QSqlQuery>
#include <QVariant>

namespace host {

/// Reads the texts of a running query as they came from a server. Qt's ODBC driver reads them over FreeTDS in pieces of
/// as many UTF-8 bytes as the column has letters, and a Persian letter that lies across two pieces costs the whole
/// text; this reads UTF-16 from the same statement.
class OdbcText
{
public:
    /// Does nothing on the embedded database.
    explicit OdbcText(const QSqlQuery &query);

    /// Whether the query's texts are to be read here.
    bool IsNeeded() const { return m_statement != nullptr; }
    /// The text of a column of the current row, a null variant for NULL. Columns are read from left to right, each
    /// once and before QSqlQuery::value() reads it or one behind it.
    QVariant Read(int column) const;

private:
    void *m_statement = nullptr;
};

} // namespace host
