#include "desk/application/options.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QStandardPaths>

namespace desk {

namespace {

const QCommandLineOption Database{u"database"_qs, u"The embedded database file; created when missing."_qs, u"FILE"_qs};
const QCommandLineOption Connection{u"connection"_qs, u"Work on SQL Server through this ODBC connection string."_qs,
                                    u"TEXT"_qs};
const QCommandLineOption Demo{u"demo"_qs, u"Fill a newly created database with demo data."_qs};
const QCommandLineOption User{u"user"_qs, u"Code of the user who signs in (1 when not given)."_qs, u"CODE"_qs};
const QCommandLineOption Tour{
    u"tour"_qs, u"Work through the main screens by itself, on demo data, and leave pictures in FOLDER."_qs,
    u"FOLDER"_qs};
const QCommandLineOption Help{QStringList{u"h"_qs, u"help"_qs}, u"Print this text."_qs};

void AddOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(u"The desk: a host application for the goods module."_qs);
    parser.addOptions({Database, Connection, Demo, User, Tour, Help});
}

QString DefaultDatabaseFile()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).filePath(u"goods.db"_qs);
}

[[noreturn]] void Refuse(const QString &text)
{
    throw OptionsError(text.toStdString());
}

} // namespace

Options ReadOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    AddOptions(parser);
    if (!parser.parse(arguments))
        Refuse(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        Refuse(u"Unexpected argument: "_qs + parser.positionalArguments().constFirst());
    Options options;
    options.help = parser.isSet(Help);
    options.demo = parser.isSet(Demo);
    options.tourFolder = parser.value(Tour);
    options.connection = parser.value(Connection);
    options.databaseFile = parser.isSet(Database) ? parser.value(Database) : DefaultDatabaseFile();
    if (parser.isSet(Connection) && parser.isSet(Database))
        Refuse(u"--database and --connection exclude each other."_qs);
    if (parser.isSet(User)) {
        bool number = false;
        options.user = parser.value(User).toInt(&number);
        if (!number || options.user <= 0)
            Refuse(u"--user takes the code of a user, a positive number."_qs);
    }
    return options;
}

QString HelpText()
{
    QCommandLineParser parser;
    AddOptions(parser);
    return parser.helpText();
}

} // namespace desk
