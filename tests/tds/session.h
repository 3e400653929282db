// One client of the test server.
#pragma once

#include "tests/tds/server.h"
#include "tsql/run/connection.h"

using namespace Qt::StringLiterals;

namespace tds {

class Session
{
public:
    Session(int socket, Databases &databases) : m_wire(socket), m_databases(databases) {}
    ~Session() { leave(); }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /** Any name and password will do. False, with an error said, when there is no such database. */
    bool logIn();
    /** Answers until the client goes: throws Lost. */
    void serve();

private:
    bool enter(const QString &database);
    void leave();
    QString databaseName() const { return m_database ? m_database->name : u"master"_s; }
    const Collation &collation() const { return m_database ? m_database->collation : m_masterCollation; }

    void answer(const Message &message);
    template <class Work> void guarded(const Work &work);
    void runBatch(const QString &text);
    void followTransaction(const QString &text);
    void sendOutcome(tsql::Outcome &outcome);
    void sendRows(tsql::Cursor &cursor, bool inProcedure);
    bool changedDatabases(const QString &text);
    void use(const QString &database);
    QString catalogueQuery(const QString &text) const;
    void changeTransaction(const QByteArray &body);
    void endTransaction(quint8 type);

    Wire m_wire;
    Databases &m_databases;
    std::shared_ptr<Database> m_database; ///< null in master
    Collation m_masterCollation;
    std::unique_ptr<tsql::Connection> m_connection;
    quint64 m_transaction = 0; ///< its number while one is open that the client began
    bool m_begun = false;      ///< the engine knows of it: it begins with the first statement
    quint64 m_lastTransaction = 0;
};

} // namespace tds
