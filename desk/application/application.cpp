#include "desk/application/application.h"

#include "desk/application/backup.h"
#include "desk/application/database_opening.h"
#include "desk/application/desk_host.h"
#include "desk/application/desktop_look.h"
#include "desk/application/first_start.h"
#include "desk/application/goods_module.h"
#include "desk/messages/catalogue.h"
#include "desk/messages/message_box.h"
#include "desk/tour/tour.h"
#include "desk/window/main_window.h"
#include "host/controls/accessible_names.h"
#include "host/data/database_error.h"
#include "host/look/theme.h"

#include <QApplication>
#include <QFileInfo>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QScopeGuard>
#include <QTextStream>
#include <QTranslator>

#include <cstdio>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int Failed = 1;
constexpr int WrongCommandLine = 2;

void Print(FILE *stream, const QString &text)
{
    QTextStream(stream) << text << Qt::endl;
}

QtMessageHandler passOn = nullptr;

/// The platform without a screen says of each window what it cannot do; on a tour nobody needs to know.
void LeaveOutPlatformRemarks(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!text.startsWith(u"This plugin does not support"))
        passOn(type, context, text);
}

/// One run of the desk; `restore` is the copy that its user wants in place of the database.
int Work(QApplication &application, const Options &options, bool demo, QString &restore)
{
    const auto connections = OpenDatabase(options, demo);
    if (!connections)
        return 0;
    DeskHost desk(connections->Get());
    if (!desk.settings.SignIn(options.user)) {
        Print(stderr, MessageText(message::NoSuchUser, {QString::number(options.user)}));
        return WrongCommandLine;
    }
    host::install(desk.host);
    GoodsModule module;
    const bool loaded = module.Load();
    MainWindow window(desk, module, DatabaseName(options));
    // Screens that the module keeps go before the window that holds them and the services that they use.
    const auto unload = qScopeGuard([&module] { module.Unload(); });
    window.show();
    if (!options.tourFolder.isEmpty()) {
        if (!loaded)
            throw std::runtime_error(MessageText(message::ModuleMissing, {module.ErrorText()}).toStdString());
        return RunTour(application, window, desk, options.tourFolder);
    }
    if (!loaded)
        ShowBox(&window, MessageText(message::ModuleMissing, {module.ErrorText()}), host::MessageIcon::Error);
    if (!KeepsPersianLetters(connections->Get().ADOConnection1))
        ShowBox(&window, MessageText(message::CollationLoses), host::MessageIcon::Warning);
    const int code = application.exec();
    restore = window.WantedBackup();
    return code;
}

/// Puts a copy in the place of the database and tells what became of that. False when there is no database then.
bool BringBack(const QString &copy, const QString &file)
{
    try {
        const QString former = Restore(copy, file);
        if (!former.isEmpty())
            ShowBox(nullptr, MessageText(message::Restored, {former}), host::MessageIcon::Information);
    } catch (const host::DatabaseError &error) {
        ShowBox(nullptr, error.Text(), host::MessageIcon::Error);
    }
    return QFileInfo::exists(file);
}

/// Takes the desk through its runs: one, and another after each copy that is brought back.
int WorkOn(QApplication &application, const Options &options)
{
    if (!options.tourFolder.isEmpty())
        passOn = qInstallMessageHandler(LeaveOutPlatformRemarks);
    Beginning beginning{options.demo, {}};
    for (QString restore;;) {
        if (options.usual && !QFileInfo::exists(options.databaseFile)) {
            const auto asked = AskForBeginning(options.databaseFile);
            if (!asked)
                return 0;
            beginning = *asked;
            restore = beginning.backup;
        }
        if (!restore.isEmpty() && !BringBack(restore, options.databaseFile)) {
            if (!options.usual)
                return Failed;
            restore.clear();
            continue; // what to begin with is asked again
        }
        restore.clear();
        const int code = Work(application, options, beginning.demo, restore);
        if (restore.isEmpty())
            return code;
    }
}

/// Gives the application its look; one that is the desktop's changes with it.
void Dress(QApplication &application, host::theme::Look look)
{
    if (look == host::theme::Look::Desktop) {
        const auto *desktop = new DesktopLook(QDBusConnection::sessionBus(), &application);
        look = desktop->Wanted();
        QObject::connect(desktop, &DesktopLook::Changed, &application,
                         [&application](host::theme::Look wanted) { host::theme::Apply(application, wanted); });
    }
    host::theme::Apply(application, look);
}

/// The toolkit's own words in the language of the house.
void Translate(QApplication &application)
{
    auto *words = new QTranslator(&application);
    if (words->load(u"qtbase_fa"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(words);
}

/// Reads the command line; the exit code when there is nothing left to do.
std::optional<int> AnswerCommandLine(Options &options)
{
    try {
        options = ReadOptions(QCoreApplication::arguments());
    } catch (const OptionsError &error) {
        Print(stderr, QString::fromUtf8(error.what()) + u"\ndesk --help tells the options."_s);
        return WrongCommandLine;
    }
    if (!options.help && !options.version)
        return std::nullopt;
    Print(stdout, options.help ? HelpText() : VersionText());
    return 0;
}

} // namespace

int RunWithoutDisplay()
{
    Options options;
    if (const auto answered = AnswerCommandLine(options))
        return *answered;
    Print(stderr, u"There is no display. scripts/run works without one."_s);
    return Failed;
}

int Run(QApplication &application)
{
    QCoreApplication::setApplicationName(u"desk"_s);
    QCoreApplication::setOrganizationName(u"goods"_s);
    Options options;
    if (const auto answered = AnswerCommandLine(options))
        return *answered;
    Dress(application, options.look);
    host::AccessibleNames::Install();
    Translate(application);
    if (QFontDatabase::families(QFontDatabase::Arabic).isEmpty())
        Print(stderr, u"No font with Persian letters is installed (Debian: fonts-dejavu-core, fonts-dejavu-extra)."_s);
    QString trouble;
    try {
        return WorkOn(application, options);
    } catch (const host::DatabaseError &error) {
        trouble = MessageText(message::DatabaseFailed, {error.Text()});
    } catch (const std::exception &error) {
        trouble = QString::fromUtf8(error.what());
    }
    Print(stderr, trouble);
    if (options.tourFolder.isEmpty())
        ShowBox(nullptr, trouble, host::MessageIcon::Error);
    return Failed;
}

} // namespace desk
