#include "bench/options.h"

#include <QCommandLineParser>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

const QCommandLineOption Goods{
    u"goods"_s,
    u"Measure a shop of N goods, %1 to %2 (%3 when not given; limits are those of up to %3)."_s.arg(Options::LeastGoods)
        .arg(Options::MostGoods)
        .arg(Options::UsualGoods),
    u"N"_s};
const QCommandLineOption Statements{
    u"statements"_s, u"Print the texts that one opening of a good, one save and one opening of the list send."_s};
const QCommandLineOption Connection{
    u"connection"_s,
    u"Measure what a clerk waits for on SQL Server, through this ODBC connection string without a Database: one is "
    "made there and dropped."_s,
    u"TEXT"_s};
const QCommandLineOption Delay{
    u"delay"_s, u"Add so many milliseconds to each round trip to the server; may be given several times."_s, u"MS"_s};
const QCommandLineOption Help{{u"h"_s, u"help"_s}, u"Print this text."_s};
const QString Engine = u"engine"_s;
const QString Import = u"import"_s;
const QString Network = u"network"_s;

void Describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        u"Measures what users wait for, beside SQLite's C API doing the same work on the same file, and how many\n"
        "statements a command sends. Ends with 1 when anything is over its limit."_s);
    parser.addOptions({Goods, Statements, Connection, Delay, Help});
    parser.addPositionalArgument(
        Engine,
        u"Measure the database alone (engine), goods from a file and the memory that takes (import), or what a clerk "
        "waits for on the server of the tests, 0, 1 and 10 ms away (network)."_s,
        u"[engine | import | network]"_s);
}

int NumberOf(const QString &option, const QString &text, int least, int most)
{
    bool number = false;
    const int value = text.toInt(&number);
    if (!number || value < least || value > most)
        throw std::invalid_argument(
            u"--%1 takes a number from %2 to %3."_s.arg(option).arg(least).arg(most).toStdString());
    return value;
}

void ReadServer(const QCommandLineParser &parser, Options &options)
{
    constexpr int MostDelay = 10000;
    options.connection = parser.value(Connection);
    if (parser.isSet(Connection) && !parser.positionalArguments().isEmpty())
        throw std::invalid_argument("--connection names a server of its own.");
    if (options.network)
        options.delays = {0, 1, 10};
    if (!parser.isSet(Delay))
        return;
    if (!options.network && !parser.isSet(Connection))
        throw std::invalid_argument("--delay is for a server.");
    options.delays.clear();
    for (const QString &delay : parser.values(Delay))
        options.delays << NumberOf(u"delay"_s, delay, 0, MostDelay);
}

} // namespace

Options ReadOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    Describe(parser);
    if (!parser.parse(arguments))
        throw std::invalid_argument(parser.errorText().toStdString());
    Options options;
    options.help = parser.isSet(Help);
    options.statements = parser.isSet(Statements);
    options.engineOnly = parser.positionalArguments() == QStringList{Engine};
    options.importOnly = parser.positionalArguments() == QStringList{Import};
    options.network = parser.positionalArguments() == QStringList{Network};
    if (!options.engineOnly && !options.importOnly && !options.network && !parser.positionalArguments().isEmpty())
        throw std::invalid_argument("Unexpected argument: " + parser.positionalArguments().constFirst().toStdString());
    ReadServer(parser, options);
    if (parser.isSet(Goods))
        options.goods = NumberOf(u"goods"_s, parser.value(Goods), Options::LeastGoods, Options::MostGoods);
    return options;
}

QString HelpText()
{
    QCommandLineParser parser;
    Describe(parser);
    return parser.helpText();
}

} // namespace bench
