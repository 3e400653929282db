// goods-sql: runs T-SQL on an embedded database or a server, creates databases, backs them up.

#include "tools/goods_sql/check.h"
#include "tools/goods_sql/databases.h"
#include "tools/goods_sql/explanation.h"
#include "tools/goods_sql/script_runner.h"
#include "tools/goods_sql/upgrade.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QString ReadAll(const QString &name)
{
    QFile file(name);
    const bool open = name == u"-"_s ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!open)
        throw ScriptError{u"%1: %2"_s.arg(name, file.errorString())};
    return QString::fromUtf8(file.readAll());
}

struct Options
{
    QCommandLineOption init{u"init"_s, u"Create the tables and procedures in an empty database."_s};
    QCommandLineOption demo{u"demo"_s, u"With --init: add the demo data."_s};
    QCommandLineOption upgrade{u"upgrade"_s,
                               u"Bring a database of an earlier version to this one; a file is copied beside first."_s};
    QCommandLineOption csv{u"csv"_s, u"Print result sets as comma-separated values."_s};
    QCommandLineOption explain{u"explain"_s, u"Print the SQLite text of each statement instead of running it."_s};
    QCommandLineOption backup{u"backup"_s, u"Copy the embedded database to FILE while it is in use."_s, u"FILE"_s};
    QCommandLineOption check{
        u"check"_s, u"Look for faults in documents, movements, stock and details; ends with 3 when there are any."_s};
    QCommandLineOption command{{u"c"_s, u"command"_s}, u"Run TEXT instead of a script."_s, u"TEXT"_s};
};

template <class Run> void ForEachScript(const QCommandLineParser &parser, const Options &options, const Run &run)
{
    if (parser.isSet(options.command))
        run(parser.value(options.command), u"command"_s);
    for (const QString &script : parser.positionalArguments().mid(1))
        run(ReadAll(script), script == u"-"_s ? u"input"_s : script);
}

/// The exit code when there are faults: 1 is for what could not be done, 2 for a wrong command line.
constexpr int FaultsFound = 3;

int Run(const QCommandLineParser &parser, const Options &options)
{
    const bool init = parser.isSet(options.init);
    const Target target(parser.positionalArguments().first());
    const QSqlDatabase database = target.Open(init, u"goods-sql"_s);
    QTextStream out(stdout);
    if (init)
        Initialise(database, parser.isSet(options.demo));
    if (parser.isSet(options.upgrade))
        Upgrade(database, target, out);
    if (parser.isSet(options.explain)) {
        Explanation explanation(database, out);
        ForEachScript(parser, options,
                      [&](const QString &script, const QString &name) { explanation.Run(script, name); });
    } else {
        TablePrinter printer(out, parser.isSet(options.csv));
        ScriptRunner runner(database, &printer);
        ForEachScript(parser, options, [&](const QString &script, const QString &name) { runner.Run(script, name); });
    }
    if (parser.isSet(options.backup))
        Backup(database, parser.value(options.backup));
    return parser.isSet(options.check) && CheckGoods(database, out) > 0 ? FaultsFound : 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"goods-sql"_s);
    QCoreApplication::setApplicationVersion(QString::fromLatin1(GOODS_VERSION));
    QCommandLineParser parser;
    const Options options;
    parser.setApplicationDescription(u"Runs T-SQL scripts (batches end at GO) and stops at the first error."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({options.init, options.demo, options.upgrade, options.csv, options.explain, options.backup,
                       options.check, options.command});
    parser.addPositionalArgument(u"database"_s, u"A database file, or an ODBC connection string."_s);
    parser.addPositionalArgument(u"scripts"_s, u"Files to run, - for standard input."_s, u"[scripts...]"_s);
    parser.process(application);
    if (parser.positionalArguments().isEmpty())
        parser.showHelp(2);
    try {
        return Run(parser, options);
    } catch (const ScriptError &error) {
        std::fprintf(stderr, "goods-sql: %s\n", qPrintable(error.text));
        return 1;
    }
}
