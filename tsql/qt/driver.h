// The embedded database as a Qt SQL driver.
#pragma once

#include "tsql/run/message.h"

#include <QSqlDriver>
#include <QSqlResult>

#include <memory>
#include <vector>

namespace tsql {

class Connection;
class Cursor;

/**
 * QSqlDatabase::addDatabase(new tsql::Driver, name); the database name is the path of the file, ":memory:" for a
 * private database. Statements are T-SQL. Several connections of a process, and several processes, may have one file
 * open: writers wait for each other, readers never wait.
 *
 * Values come as SQL Server's ODBC driver gives them: int kinds up to 32 bits as int, bigint as qlonglong, bit as
 * bool, float as double, texts as QString, decimals as QString ("12.500000000") unless another precision policy is
 * set, date as QDate, datetime as QDateTime, binaries as QByteArray.
 *
 * A failed statement gives QSqlError::StatementError with the server's number as nativeErrorCode, its text as
 * databaseText and "Line n" as driverText; ConnectionError when the file itself is gone, broken or full.
 */
class Driver : public QSqlDriver
{
    Q_OBJECT

public:
    explicit Driver(QObject *parent = nullptr);
    ~Driver() override;

    bool hasFeature(DriverFeature feature) const override;
    bool open(const QString &database, const QString &user, const QString &password, const QString &host, int port,
              const QString &options) override;
    void close() override;
    QSqlResult *createResult() const override;

    bool beginTransaction() override;
    bool commitTransaction() override;
    bool rollbackTransaction() override;

    QStringList tables(QSql::TableType type) const override;
    QSqlRecord record(const QString &table) const override;
    QSqlIndex primaryIndex(const QString &table) const override;
    QString escapeIdentifier(const QString &identifier, IdentifierType type) const override;
    QString formatValue(const QSqlField &field, bool trimStrings) const override;

    /** The open connection, or null. */
    const std::shared_ptr<Connection> &SharedConnection() const { return m_connection; }
    /** Copies the database to a new file while it is in use. Returns false and sets lastError on failure. */
    bool Backup(const QString &path);

    /** What the batch that ran last has to say (PRINT), whether it was refused or not. */
    const std::vector<Message> &Messages() const { return m_messages; }

private:
    friend class Result;

    template <class Work> bool Attempt(const Work &work);

    std::shared_ptr<Connection> m_connection;
    mutable std::vector<Message> m_messages; ///< written by the results that this object makes
};

} // namespace tsql
