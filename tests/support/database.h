#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>

namespace test {

/// A database of a test's own, made by the scripts that make the real one, and open connections to it. It is gone with
/// the object. The scripts run once per process; every further database is a copy of the first.
///
/// When GOODS_TEST_CONNECTION holds an ODBC connection string without a database, it is a database on that server
/// instead, where copies are made if the server can.
///
/// A statement that fails makes the test fail with the driver's words: a test that expects a refusal uses Refusal().
class Database
{
public:
    enum class Content {
        Empty, ///< tables, procedures and the rows without which no screen works
        Demo,  ///< with the demo data
    };

    explicit Database(Content content = Content::Empty);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    /// Whether tests run on a server. Tests that are about the embedded file skip then.
    static bool OnServer();
    /// The file of the embedded database, or the connection string of the server's.
    const QString &Name() const { return m_name; }
    /// How a program is told to work on it.
    QStringList DeskArguments() const;
    /// The connections of a host.
    QSqlDatabase Main() const { return QSqlDatabase::database(m_main); }
    QSqlDatabase GoodsList() const { return QSqlDatabase::database(m_goodsList); }
    QSqlDatabase Scales() const { return QSqlDatabase::database(m_scales); }
    /// A further connection, as another desk on the same database has it.
    QSqlDatabase AnotherConnection();
    /// The same under a name of the caller's, who removes it: for another thread.
    QSqlDatabase Connect(const QString &connectionName) const;

    /// Runs a text on the main connection, all its statements.
    void Exec(const QString &text) const;
    /// The first field of the first row; invalid when there is none.
    QVariant Scalar(const QString &text) const;
    /// The rows of the first result as texts, fields joined by "|", NULL as "NULL", decimals without needless zeros,
    /// bits as "true" and "false".
    QStringList Rows(const QString &text) const;
    /// The names of the columns of the first result.
    QStringList Columns(const QString &text) const;
    /// The words with which a text is refused; empty when it is not.
    QString Refusal(const QString &text) const;

private:
    QString Connect();

    QTemporaryDir m_folder;
    QString m_name;
    QStringList m_names;
    QString m_main;
    QString m_goodsList;
    QString m_scales;
};

} // namespace test
