// The test server: databases of the embedded engine behind the wire that SQL Server's clients speak.
#pragma once

#include "tests/tds/tokens.h"

#include <QHash>
#include <QMutex>
#include <QTemporaryDir>

#include <atomic>
#include <memory>
#include <optional>

namespace tds {

/** One database: a file, its collation, and the sessions that are in it. */
struct Database
{
    QString name;
    QString file;
    Collation collation;
    int sessions = 0;
};

/** The databases of a server by name, regardless of case. For use by all threads. */
class Databases
{
public:
    /** Enters a session; null when there is no such database. */
    std::shared_ptr<Database> enter(const QString &name);
    void leave(const std::shared_ptr<Database> &database);
    bool exists(const QString &name) const;
    /** Throws tsql::Error when there is one of that name. */
    void create(const QString &name, const QString &collation);
    /** Creates one with the content and the collation of another, in which nobody may be. */
    void copy(const QString &name, const QString &source);
    /** Waits for sessions that are on their way out. Throws tsql::Error when somebody stays or there is none. */
    void drop(const QString &name);
    /** Removes all files. */
    void clear() { m_folder.remove(); }

private:
    /** Does something with a database that no session is in, under the lock; see drop(). */
    template <class Work> void alone(const QString &name, const Work &work);
    QString nextFile();

    mutable QMutex m_mutex;
    QTemporaryDir m_folder;
    QHash<QString, std::shared_ptr<Database>> m_all;
    int m_made = 0;
};

/** Listens on this machine only, on a port of the system's choice, with a thread for each client. */
class Server
{
public:
    /** Throws std::system_error. */
    Server();
    ~Server();
    Server(const Server &) = delete;
    Server &operator=(const Server &) = delete;

    int port() const { return m_port; }
    /** How many have come in with a name and a password. */
    int logins() const { return m_logins; }
    /** Takes clients until the socket is closed. */
    void serve();
    /** Removes all databases: nobody may be served any more. */
    void clear() { m_databases.clear(); }

private:
    void talk(int socket);

    int m_socket = -1;
    int m_port = 0;
    std::atomic<int> m_logins = 0;
    Databases m_databases;
};

} // namespace tds
