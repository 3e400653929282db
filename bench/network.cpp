#include "bench/network.h"

#include "bench/clerk_work.h"
#include "bench/options.h"
#include "bench/relay.h"
#include "bench/report.h"
#include "bench/shop.h"
#include "host/data/query.h"
#include "tools/goods_sql/databases.h"
#include "tools/goods_sql/script_runner.h"

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

/// The server of the tests, beside this program; its databases go with it.
class TestServer
{
public:
    TestServer()
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QCoreApplication::applicationDirPath() + u"/tds-server"_s, QStringList());
        if (!m_process.waitForReadyRead())
            throw std::runtime_error("tds-server: " + m_process.errorString().toStdString());
        m_port = m_process.readLine().trimmed().toInt();
    }
    ~TestServer()
    {
        m_process.closeWriteChannel(); // by which it knows that nobody is left
        m_process.waitForFinished();
    }
    QString Connection() const
    {
        return u"Driver=FreeTDS;Server=127.0.0.1;Port=%1;UID=test;PWD=test;TDS_Version=7.4"_s.arg(m_port);
    }

private:
    QProcess m_process;
    int m_port = 0;
};

/// A connection string, part by part.
class ConnectionText
{
public:
    explicit ConnectionText(const QString &text) : m_parts(text.split(u';', Qt::SkipEmptyParts)) {}

    QString Take(const QString &key)
    {
        QString value;
        m_parts.removeIf([&](const QString &part) {
            const bool is = part.section(u'=', 0, 0).trimmed().compare(key, Qt::CaseInsensitive) == 0;
            if (is)
                value = part.section(u'=', 1).trimmed();
            return is;
        });
        return value;
    }
    void Put(const QString &key, const QString &value) { m_parts << key + u'=' + value; }
    QString Text() const { return m_parts.join(u';'); }

private:
    QStringList m_parts;
};

/// The address that a connection string names is taken out: "host", "host,port", or both in parts of their own.
Relay RelayTo(ConnectionText &connection)
{
    const QString server = connection.Take(u"Server"_s);
    QString port = connection.Take(u"Port"_s);
    if (port.isEmpty())
        port = server.section(u',', 1).trimmed();
    if (server.isEmpty() || server.contains(u'\\'))
        throw std::runtime_error("The connection string has to name its server by host and port.");
    return Relay(server.section(u',', 0, 0).trimmed().toStdString(), port.isEmpty() ? "1433" : port.toStdString());
}

/// A database with the demo's content, dropped in the end.
class ServerDatabase
{
public:
    explicit ServerDatabase(const QString &connection) : m_target(connection)
    {
        const QString name = u"bench.making"_s;
        try {
            Initialise(m_target.Open(true, name), true);
        } catch (const ScriptError &error) {
            throw std::runtime_error(error.text.toStdString());
        }
        QSqlDatabase::database(name, false).close();
        QSqlDatabase::removeDatabase(name);
    }
    ~ServerDatabase()
    {
        try {
            m_target.DropOnServer();
        } catch (const ScriptError &error) {
            std::fprintf(stderr, "a database stays on the server: %s\n", qPrintable(error.text));
        }
    }
    ServerDatabase(const ServerDatabase &) = delete;
    ServerDatabase &operator=(const ServerDatabase &) = delete;

private:
    Target m_target;
};

/// One operation at each delay.
struct Row
{
    struct Time
    {
        double product = 0;
        std::optional<double> raw;
    };
    double statements = 0;
    double trips = 0;
    QList<Time> times;
};

double Median(QList<double> values)
{
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values.at(values.size() / 2);
}

void Measure(const ClerkWork &work, const Relay &relay, Row &row)
{
    QList<double> product;
    QList<double> raw;
    double statements = 0;
    double trips = 0;
    for (int run = 0; run < work.runs; ++run) {
        if (work.before)
            work.before();
        const quint64 sent = host::StatementsSent();
        const long gone = relay.RoundTrips();
        product << (work.slowest ? work.slowest() : Timed(work.run));
        statements += static_cast<double>(host::StatementsSent() - sent);
        trips += static_cast<double>(relay.RoundTrips() - gone);
        if (work.raw)
            raw << Timed(work.raw);
    }
    row.statements = statements / work.runs;
    row.trips = trips / work.runs;
    row.times << Row::Time{Median(product), raw.isEmpty() ? std::nullopt : std::optional<double>(Median(raw))};
}

/// The limits are those of 1 ms.
bool Print(const std::vector<ClerkWork> &works, const QList<Row> &rows, const Options &options)
{
    bool within = true;
    std::printf("%-56s %10s %11s", "what a clerk waits for", "statements", "round trips");
    for (const int delay : options.delays)
        std::printf("  %10s %8s", qPrintable(u"ms at %1"_s.arg(delay)), "raw ms");
    std::printf(" %9s\n", "limit");
    for (std::size_t i = 0; i < works.size(); ++i) {
        const ClerkWork &work = works[i];
        const Row &row = rows.at(static_cast<qsizetype>(i));
        std::printf("%-56s %10.1f %11.1f", qPrintable(work.what), row.statements, row.trips);
        bool over = false;
        for (qsizetype at = 0; at < row.times.size(); ++at) {
            const Row::Time &time = row.times.at(at);
            std::printf("  %10.1f %8s", time.product, time.raw ? qPrintable(QString::number(*time.raw, 'f', 1)) : "-");
            over = over || (work.limit > 0 && options.goods <= Options::UsualGoods && options.delays.at(at) <= 1 &&
                            time.product > work.limit);
        }
        std::printf(" %9s%s\n", work.limit > 0 ? qPrintable(QString::number(work.limit, 'f', 0)) : "-",
                    over ? "  over" : "");
        within = within && !over;
    }
    return within;
}

} // namespace

bool MeasureNetwork(const Options &options)
{
    const std::unique_ptr<TestServer> server = options.network ? std::make_unique<TestServer>() : nullptr;
    ConnectionText connection(server ? server->Connection() : options.connection);
    if (!connection.Take(u"Database"_s).isEmpty())
        throw std::runtime_error("The connection string names a database: one is made for the purpose.");
    Relay relay = RelayTo(connection);
    connection.Put(u"Server"_s, u"127.0.0.1"_s);
    connection.Put(u"Port"_s, QString::number(relay.Port()));
    connection.Put(u"Database"_s, u"goods_bench_%1"_s.arg(QCoreApplication::applicationPid()));
    const ServerDatabase database(connection.Text());
    Shop shop(options.goods, connection.Text());
    const double growing = Timed([&shop] {
        shop.Grow(1000);
        shop.Data().UpdateMogodiKala(255);
    });
    std::fprintf(stderr, "%d goods: %.0f ms\n", shop.Goods(), growing);

    const Clerk clerk(shop);
    const std::vector<ClerkWork> works = clerk.Works();
    QList<Row> rows(static_cast<qsizetype>(works.size()));
    for (const int delay : options.delays) {
        relay.SetDelay(std::chrono::milliseconds(delay));
        for (std::size_t i = 0; i < works.size(); ++i) {
            Row &row = rows[static_cast<qsizetype>(i)];
            Measure(works[i], relay, row);
            std::fprintf(stderr, "%d ms, %s: %.1f ms\n", delay, qPrintable(works[i].what), row.times.last().product);
        }
    }
    relay.SetDelay({});
    return Print(works, rows, options);
}

} // namespace bench
