// goods-sql: runs T-SQL on an embedded database or a server, creates databases, backs them up.

#include "tools/goods_sql/databases.h"
#include "tools/goods_sql/script_runner.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <cstdio>

namespace {

QString readAll(const QString &name)
{
    QFile file(name);
    const bool open = name == u"-"_qs ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!open)
        throw ScriptError{u"%1: %2"_qs.arg(name, file.errorString())};
    return QString::fromUtf8(file.readAll());
}

struct Options
{
    QCommandLineOption init{u"init"_qs, u"Create the tables and procedures in an empty database."_qs};
    QCommandLineOption demo{u"demo"_qs, u"With --init: add the demo data."_qs};
    QCommandLineOption csv{u"csv"_qs, u"Print result sets as comma-separated values."_qs};
    QCommandLineOption backup{u"backup"_qs, u"Copy the embedded database to FILE while it is in use."_qs, u"FILE"_qs};
    QCommandLineOption command{{u"c"_qs, u"command"_qs}, u"Run TEXT instead of a script."_qs, u"TEXT"_qs};
};

void run(const QCommandLineParser &parser, const Options &options)
{
    const QStringList arguments = parser.positionalArguments();
    const bool init = parser.isSet(options.init);
    const Target target(arguments.first());
    const QSqlDatabase database = target.open(init, u"goods-sql"_qs);
    QTextStream out(stdout);
    if (init)
        initialise(database, parser.isSet(options.demo));
    TablePrinter printer(out, parser.isSet(options.csv));
    ScriptRunner runner(database, &printer);
    if (parser.isSet(options.command))
        runner.run(parser.value(options.command), u"command"_qs);
    for (const QString &script : arguments.mid(1))
        runner.run(readAll(script), script == u"-"_qs ? u"input"_qs : script);
    if (parser.isSet(options.backup))
        backup(database, parser.value(options.backup));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"goods-sql"_qs);
    QCommandLineParser parser;
    const Options options;
    parser.setApplicationDescription(u"Runs T-SQL scripts (batches end at GO) and stops at the first error."_qs);
    parser.addHelpOption();
    parser.addOptions({options.init, options.demo, options.csv, options.backup, options.command});
    parser.addPositionalArgument(u"database"_qs, u"A database file, or an ODBC connection string."_qs);
    parser.addPositionalArgument(u"scripts"_qs, u"Files to run, - for standard input."_qs, u"[scripts...]"_qs);
    parser.process(application);
    if (parser.positionalArguments().isEmpty())
        parser.showHelp(2);
    try {
        run(parser, options);
    } catch (const ScriptError &error) {
        std::fprintf(stderr, "goods-sql: %s\n", qPrintable(error.text));
        return 1;
    }
    return 0;
}
