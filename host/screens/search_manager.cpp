#include "host/screens/search_manager.h"

#include "host/controls/reading_pause.h"
#include "host/data/dataset.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTimer>

namespace host {
namespace {

/// What a person does not notice: a run behind that takes no longer ends before its command does.
constexpr int atOnceMilliseconds = 60;
constexpr int portionMilliseconds = 8;

} // namespace

struct TVelakSearchManager::Private
{
    explicit Private(const QSqlDatabase &database) : data(database), behind(database)
    {
        data.ReadInBlocks();
        behind.ReadInBlocks();
        idle.setInterval(1);
    }

    void GiveUpBehind()
    {
        idle.stop();
        behind.Close();
    }

    Dataset data;
    Dataset behind; ///< open while a run behind is being read
    QTimer idle;
    QString script;
    QList<std::pair<QString, QString>> filters;
    std::function<QStringList()> customFilter;
    QStringList columns;
    QSet<QString> columnsOfLastRun;
};

TVelakSearchManager::TVelakSearchManager(const QSqlDatabase &database, QObject *parent)
    : QObject(parent), d(std::make_unique<Private>(database))
{
    connect(&d->idle, &QTimer::timeout, this, &TVelakSearchManager::ReadBehind);
    // A block that is fetched in idle time cannot throw; what it met is told this way.
    connect(&d->behind, &Dataset::Failed, this, [this](const QString &text) {
        d->GiveUpBehind();
        d->columnsOfLastRun.clear(); // what was wanted did not come: asked for again, it is read again
        emit Failed(text);
    });
}

TVelakSearchManager::~TVelakSearchManager() = default;

void TVelakSearchManager::SetScript(const QString &script)
{
    d->script = script;
}

void TVelakSearchManager::SetFilter(const QString &name, const QString &parameterText)
{
    for (auto &[known, text] : d->filters)
        if (known == name) {
            text = parameterText;
            return;
        }
    d->filters.append({name, parameterText});
}

void TVelakSearchManager::SetCustomFilter(std::function<QStringList()> filter)
{
    d->customFilter = std::move(filter);
}

void TVelakSearchManager::SetRequestedColumns(const QStringList &columns)
{
    d->columns = columns;
    const QSet<QString> wanted(columns.begin(), columns.end());
    if (d->data.IsOpen() && !d->columnsOfLastRun.contains(wanted))
        RunBehind();
}

QString TVelakSearchManager::RequestedColumns() const
{
    return d->columns.join(u',');
}

QString TVelakSearchManager::ParameterText() const
{
    QStringList parameters;
    for (const auto &[name, text] : d->filters)
        parameters << text;
    if (d->customFilter)
        parameters << d->customFilter();
    // A text may bring its own leading or trailing comma.
    QStringList clean;
    for (QString text : std::as_const(parameters)) {
        text = text.trimmed();
        while (text.startsWith(u','))
            text = text.mid(1).trimmed();
        while (text.endsWith(u','))
            text = text.chopped(1).trimmed();
        if (!text.isEmpty())
            clean << text;
    }
    return clean.join(u',');
}

QString TVelakSearchManager::Statement() const
{
    return d->script + ParameterText();
}

void TVelakSearchManager::Run()
{
    d->GiveUpBehind();
    d->data.Open(Statement());
    d->columnsOfLastRun = QSet<QString>(d->columns.begin(), d->columns.end());
    emit Executed();
}

void TVelakSearchManager::RunBehind()
{
    d->GiveUpBehind();
    d->behind.Open(Statement());
    d->columnsOfLastRun = QSet<QString>(d->columns.begin(), d->columns.end());
    QElapsedTimer clock;
    clock.start();
    while (!d->behind.FetchedAll() && clock.elapsed() < atOnceMilliseconds)
        d->behind.fetchMore({});
    if (!d->behind.IsOpen())
        return; // it failed on the way
    if (d->behind.FetchedAll())
        Finish();
    else
        d->idle.start();
}

void TVelakSearchManager::ReadBehind()
{
    if (ReadingPause::IsOn())
        return;
    QElapsedTimer clock;
    clock.start();
    while (d->behind.canFetchMore({}) && clock.elapsed() < portionMilliseconds)
        d->behind.fetchMore({});
    if (d->behind.IsOpen() && d->behind.FetchedAll())
        Finish();
}

bool TVelakSearchManager::IsRunningBehind() const
{
    return d->behind.IsOpen();
}

void TVelakSearchManager::Finish()
{
    if (!d->behind.IsOpen())
        return;
    d->idle.stop();
    d->behind.FetchAll();
    emit Renewing();
    d->data.TakeRows(d->behind);
    emit Executed();
}

void TVelakSearchManager::Close()
{
    d->GiveUpBehind();
    d->data.Close();
}

Dataset &TVelakSearchManager::Data()
{
    return d->data;
}

} // namespace host
