#include "desk/application/database_opening.h"

#include "desk/application/backup.h"
#include "desk/application/database_creation.h"
#include "desk/application/schema_check.h"
#include "desk/messages/catalogue.h"
#include "desk/messages/message_box.h"
#include "host/data/database_error.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QProgressDialog>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int ProgressWidth = 420;

/// Shows how far something is that has to end before the desk can begin.
template <typename Work> void ShowProgress(const QString &title, const Work &work)
{
    QProgressDialog progress(title, QString(), 0, 1);
    progress.setObjectName(u"Database_PRG"_s);
    progress.setWindowTitle(QString::fromUtf16(MessageCaption));
    progress.setMinimumDuration(0);
    progress.setMinimumWidth(ProgressWidth);
    progress.show();
    QApplication::processEvents();
    work([&progress](int done, int total) {
        progress.setMaximum(total);
        progress.setValue(done);
        QApplication::processEvents();
    });
}

void PrepareDatabase(const Options &options, bool demo)
{
    if (!options.connection.isEmpty() || QFileInfo::exists(options.databaseFile))
        return;
    ShowProgress(u"پایگاه داده ساخته می‌شود …"_s,
                 [&](const CreationProgress &progress) { CreateDatabase(options.databaseFile, demo, progress); });
}

/// Asks, takes the copy and does it. False when the user leaves; what fails is told, and the database is as it was.
bool OfferUpgrade(const Options &options, const QSqlDatabase &connection, const QString &copy)
{
    const QString name = DatabaseName(options);
    const QString question = copy.isEmpty()
                                 ? MessageText(message::EarlierOnServer, {name})
                                 : MessageText(message::EarlierDatabase, {name, QDir::toNativeSeparators(copy)});
    if (!AskBox(nullptr, question, true))
        return false;
    try {
        ShowProgress(u"پایگاه داده به‌روز می‌شود …"_s, [&](const CreationProgress &progress) {
            if (!copy.isEmpty())
                BackUp(connection, copy);
            UpgradeSchema(connection, progress);
        });
    } catch (const host::DatabaseError &error) {
        ShowBox(nullptr, MessageText(message::NotUpgraded, {error.Text()}), host::MessageIcon::Error);
    }
    return true;
}

} // namespace

QString DatabaseName(const Options &options)
{
    if (options.connection.isEmpty())
        return QFileInfo(options.databaseFile).fileName();
    // Of a connection string only the name of the server and of the database are shown: it may hold a password.
    QStringList shown;
    for (const QString &item : options.connection.split(u';')) {
        const QString key = item.section(u'=', 0, 0).trimmed().toLower();
        if (key == u"server" || key == u"database")
            shown << item.section(u'=', 1).trimmed();
    }
    return shown.join(u" / ");
}

std::unique_ptr<OpenConnections> OpenDatabase(const Options &options, bool demo)
{
    const bool isFile = options.connection.isEmpty();
    const QString name = isFile ? options.databaseFile : DatabaseName(options);
    const QString copy = isFile ? CopyBeside(options.databaseFile) : QString(); // one name, however often it is tried
    try {
        PrepareDatabase(options, demo);
        auto connections = std::make_unique<OpenConnections>(options);
        const QSqlDatabase connection = connections->Get().ADOConnection1;
        for (;;) {
            const SchemaDifference difference = CompareSchema(connection);
            if (const QString trouble = SchemaTrouble(difference, name); !trouble.isEmpty())
                throw std::runtime_error(trouble.toStdString());
            if (difference.standing == SchemaStanding::Current)
                return connections;
            if (!options.tourFolder.isEmpty()) // nobody sits there
                throw std::runtime_error(MessageText(message::EarlierUnattended, {name}).toStdString());
            if (!OfferUpgrade(options, connection, copy))
                return nullptr;
        }
    } catch (const host::DatabaseError &error) {
        throw std::runtime_error(MessageText(message::CannotOpen, {name, error.Text().simplified()}).toStdString());
    }
}

} // namespace desk
