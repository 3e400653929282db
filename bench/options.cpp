#include "bench/options.h"

#include <QtCore/QCommandLineParser>

#include <stdexcept>

namespace bench {

namespace {

const QCommandLineOption Goods{
    QStringLiteral("goods"),
    QStringLiteral("Measure a shop of N goods, %1 to %2 (%3 when not given; limits are those of up to %3).")
        .arg(Options::LeastGoods)
        .arg(Options::MostGoods)
        .arg(Options::UsualGoods),
    QStringLiteral("N")};
const QCommandLineOption Statements{
    QStringLiteral("statements"),
    QStringLiteral("Print the texts that one opening of a good, one save and one opening of the list send.")};
const QCommandLineOption Help{{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Print this text.")};
const QString Engine = QStringLiteral("engine");

void describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Measures what users wait for, beside SQLite's C API doing the same work on the same file, and how many\n"
        "statements a command sends. Ends with 1 when anything is over its limit."));
    parser.addOptions({Goods, Statements, Help});
    parser.addPositionalArgument(Engine, QStringLiteral("Measure the database alone."), QStringLiteral("[engine]"));
}

} // namespace

Options readOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    describe(parser);
    if (!parser.parse(arguments))
        throw std::invalid_argument(parser.errorText().toStdString());
    Options options;
    options.help = parser.isSet(Help);
    options.statements = parser.isSet(Statements);
    options.engineOnly = parser.positionalArguments() == QStringList{Engine};
    if (!options.engineOnly && !parser.positionalArguments().isEmpty())
        throw std::invalid_argument("Unexpected argument: " + parser.positionalArguments().constFirst().toStdString());
    if (parser.isSet(Goods)) {
        bool number = false;
        options.goods = parser.value(Goods).toInt(&number);
        if (!number || options.goods < Options::LeastGoods || options.goods > Options::MostGoods)
            throw std::invalid_argument("--goods takes a number from " + std::to_string(Options::LeastGoods) + " to " +
                                        std::to_string(Options::MostGoods) + ".");
    }
    return options;
}

QString helpText()
{
    QCommandLineParser parser;
    describe(parser);
    return parser.helpText();
}

} // namespace bench
