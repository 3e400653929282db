// The results of one executed text, for QSqlQuery.
#pragma once

#include "host/data/row_feed.h"
#include "tsql/run/connection.h"
#include "tsql/values/error.h"

#include <QSqlRecord>
#include <QSqlResult>

#include <optional>

namespace tsql {

class Driver;

/**
 * Rows are handed on as they are fetched when the query is forward only; otherwise the rows passed so far are kept, so
 * that previous() and seek() work.
 */
class Result : public QSqlResult, private host::RowFeed
{
public:
    explicit Result(const Driver *driver);
    ~Result() override;

    /** The feed of a query that is forward only; nothing otherwise. */
    QVariant handle() const override;

protected:
    bool reset(const QString &sql) override;
    QVariant data(int field) override;
    bool isNull(int field) override;
    bool fetch(int row) override;
    bool fetchFirst() override;
    bool fetchLast() override;
    bool fetchNext() override;
    bool fetchPrevious() override;
    int size() override { return -1; }
    int numRowsAffected() override { return int(m_outcome.affected); }
    QSqlRecord record() const override;
    QVariant lastInsertId() const override;
    bool nextResult() override;
    void detachFromResultSet() override;

private:
    bool NextRow(std::vector<host::FedCell> &cells) override;
    bool Advance();
    bool Seek(int row);
    void ShowCurrent();
    void Close();

    std::shared_ptr<Connection> m_connection; ///< as long as a cursor reads from it
    Outcome m_outcome;
    size_t m_nextResult = 0; ///< of the outcome's result sets
    std::unique_ptr<Cursor> m_cursor;
    std::vector<std::vector<QVariant>> m_passed; ///< of a query that may go back
    bool m_cursorEnded = false;
    std::optional<Error> m_failure; ///< where the batch stopped behind its last result set
};

} // namespace tsql
