// tds-server: SQL Server's wire over the embedded engine, for tests of what happens between a client and a server.
// Without arguments it prints its port and serves until it is ended. With a program and its arguments it runs that
// program with GOODS_TEST_CONNECTION set to itself and ends with it.

#include "tests/tds/server.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

#include <cstdio>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

int RunProgram(const tds::Server &server, QStringList arguments)
{
    const QString connection =
        u"Driver=FreeTDS;Server=127.0.0.1;Port=%1;UID=test;PWD=test;TDS_Version=7.4"_s.arg(server.port());
    qputenv("GOODS_TEST_CONNECTION", connection.toUtf8());
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedChannels);
    program.start(arguments.takeFirst(), arguments);
    if (!program.waitForFinished(-1) || program.exitStatus() != QProcess::NormalExit) {
        std::fprintf(stderr, "tds-server: %s\n", qPrintable(program.errorString()));
        return 1;
    }
    if (server.logins() == 0) {
        std::fprintf(stderr, "tds-server: the program never came\n");
        return 1;
    }
    return program.exitCode();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    // Nothing here has to outlive the machine.
    if (argc > 1 && QFileInfo(u"/dev/shm"_s).isWritable())
        qputenv("TMPDIR", "/dev/shm");
    tds::Server server;
    std::thread([&server] { server.serve(); }).detach();
    int code = 0;
    if (argc > 1) {
        code = RunProgram(server, QCoreApplication::arguments().mid(1));
    } else {
        std::printf("%d\n", server.port());
        std::fflush(stdout);
        while (std::getchar() != EOF) { // whoever started it is still there
        }
    }
    server.clear();
    std::fflush(nullptr);
    ::_exit(code); // sessions may still be at work
}
