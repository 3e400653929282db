#include "desk/application/options.h"

#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QCommandLineOption Database{u"database"_s, u"The embedded database file; created when missing."_s, u"FILE"_s};
const QCommandLineOption Connection{u"connection"_s, u"Work on SQL Server through this ODBC connection string."_s,
                                    u"TEXT"_s};
const QCommandLineOption Demo{u"demo"_s, u"Fill a newly created database with demo data."_s};
const QCommandLineOption User{u"user"_s, u"Code of the user who signs in (1 when not given)."_s, u"CODE"_s};
const QCommandLineOption Tour{
    u"tour"_s, u"Work through the main screens by itself, on demo data, and leave pictures in FOLDER."_s, u"FOLDER"_s};
const QCommandLineOption LookOption{u"look"_s, u"Be light or dark, whatever the desktop is."_s, u"light|dark"_s};
const QCommandLineOption Version{QStringList{u"v"_s, u"version"_s}, u"Print the version."_s};
const QCommandLineOption Help{QStringList{u"h"_s, u"help"_s}, u"Print this text."_s};

void AddOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(u"The desk: a host application for the goods module."_s);
    parser.addOptions({Database, Connection, Demo, User, Tour, LookOption, Version, Help});
}

QString DefaultDatabaseFile()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).filePath(u"goods.db"_s);
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
        Refuse(u"Unexpected argument: "_s + parser.positionalArguments().constFirst());
    Options options;
    options.help = parser.isSet(Help);
    options.version = parser.isSet(Version);
    options.usual = !parser.isSet(Database) && !parser.isSet(Connection) && !parser.isSet(Demo) && !parser.isSet(Tour);
    options.demo = parser.isSet(Demo);
    options.tourFolder = parser.value(Tour);
    options.connection = parser.value(Connection);
    options.databaseFile = parser.isSet(Database) ? parser.value(Database) : DefaultDatabaseFile();
    if (parser.isSet(Connection) && parser.isSet(Database))
        Refuse(u"--database and --connection exclude each other."_s);
    if (parser.isSet(User)) {
        bool number = false;
        options.user = parser.value(User).toInt(&number);
        if (!number || options.user <= 0)
            Refuse(u"--user takes the code of a user, a positive number."_s);
    }
    if (parser.isSet(LookOption)) {
        const QString look = parser.value(LookOption);
        if (look != u"light" && look != u"dark")
            Refuse(u"--look takes light or dark."_s);
        options.look = look == u"dark" ? host::theme::Look::Dark : host::theme::Look::Light;
    }
    return options;
}

QString HelpText()
{
    QCommandLineParser parser;
    AddOptions(parser);
    return parser.helpText();
}

QString VersionText()
{
    return u"desk %1"_s.arg(QString::fromLatin1(GOODS_VERSION));
}

} // namespace desk
