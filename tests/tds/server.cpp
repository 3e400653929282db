#include "tests/tds/server.h"

#include "tests/tds/loopback.h"
#include "tests/tds/session.h"
#include "tsql/values/error.h"

#include <QFile>
#include <QThread>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tds {

namespace {

tsql::Error ExistsAlready(const QString &name)
{
    return tsql::Error::Worded(1801, u"Database '%1' already exists. Choose a different database name."_s.arg(name));
}

} // namespace

std::shared_ptr<Database> Databases::enter(const QString &name)
{
    const QMutexLocker lock(&m_mutex);
    auto database = m_all.value(name.toLower());
    if (database)
        ++database->sessions;
    return database;
}

void Databases::leave(const std::shared_ptr<Database> &database)
{
    const QMutexLocker lock(&m_mutex);
    --database->sessions;
}

bool Databases::exists(const QString &name) const
{
    const QMutexLocker lock(&m_mutex);
    return m_all.contains(name.toLower());
}

void Databases::create(const QString &name, const QString &collation)
{
    const QMutexLocker lock(&m_mutex);
    auto &database = m_all[name.toLower()];
    if (database)
        throw ExistsAlready(name);
    database = std::make_shared<Database>(Database{name, nextFile(), Collation(collation), 0});
}

void Databases::copy(const QString &name, const QString &source)
{
    alone(source, [this, &name](const Database &original) {
        if (m_all.contains(name.toLower()))
            throw ExistsAlready(name);
        const QString file = nextFile();
        if (!QFile::copy(original.file, file))
            throw tsql::Error::Worded(
                1802, u"CREATE DATABASE failed. The file of '%1' cannot be copied."_s.arg(original.name));
        m_all[name.toLower()] = std::make_shared<Database>(Database{name, file, original.collation, 0});
    });
}

void Databases::drop(const QString &name)
{
    alone(name, [this](const Database &database) {
        for (const QString &tail : {QString(), u"-wal"_s, u"-shm"_s})
            QFile::remove(database.file + tail);
        m_all.remove(database.name.toLower());
    });
}

template <class Work> void Databases::alone(const QString &name, const Work &work)
{
    constexpr int Tries = 1000;
    for (int i = 0; i < Tries; ++i, QThread::msleep(5)) {
        const QMutexLocker lock(&m_mutex);
        auto database = m_all.value(name.toLower());
        if (!database)
            throw tsql::Error::Worded(3701,
                                      u"Cannot use the database '%1', because it does not exist or you do not have "
                                      "permission."_s.arg(name));
        if (database->sessions == 0)
            return work(*database);
    }
    throw tsql::Error::Worded(3702, u"Cannot use database \"%1\" because it is currently in use."_s.arg(name));
}

QString Databases::nextFile()
{
    return m_folder.filePath(QString::number(++m_made));
}

Server::Server()
{
    m_socket = Listen(m_port);
}

Server::~Server()
{
    ::close(m_socket);
}

void Server::serve()
{
    for (;;) {
        const int client = ::accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0)
            return;
        const int now = 1;
        ::setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &now, sizeof now);
        std::thread([this, client] { talk(client); }).detach();
    }
}

void Server::talk(int socket)
{
    try {
        Session session(socket, m_databases);
        if (!session.logIn())
            return;
        ++m_logins;
        session.serve();
    } catch (const Lost &) { // the usual end
    } catch (const std::exception &error) {
        qWarning("a session ended: %s", error.what());
    }
}

} // namespace tds
