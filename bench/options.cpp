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
const QCommandLineOption Help{{u"h"_s, u"help"_s}, u"Print this text."_s};
const QString Engine = u"engine"_s;
const QString Import = u"import"_s;

void Describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        u"Measures what users wait for, beside SQLite's C API doing the same work on the same file, and how many\n"
        "statements a command sends. Ends with 1 when anything is over its limit."_s);
    parser.addOptions({Goods, Statements, Help});
    parser.addPositionalArgument(
        Engine, u"Measure the database alone (engine), or goods from a file and the memory that takes (import)."_s,
        u"[engine | import]"_s);
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
    if (!options.engineOnly && !options.importOnly && !parser.positionalArguments().isEmpty())
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

QString HelpText()
{
    QCommandLineParser parser;
    Describe(parser);
    return parser.helpText();
}

} // namespace bench
