#include "host/screens/search_manager.h"

#include "host/data/dataset.h"

#include <QtCore/QSet>

namespace host {
namespace {

constexpr int blockRows = 1000;

} // namespace

struct TVelakSearchManager::Private
{
    explicit Private(const QSqlDatabase &database) : data(database) { data.SetBlockSize(blockRows); }

    Dataset data;
    QString script;
    QList<std::pair<QString, QString>> filters;
    std::function<QStringList()> customFilter;
    QStringList columns;
    QSet<QString> columnsOfLastRun;
};

TVelakSearchManager::TVelakSearchManager(const QSqlDatabase &database, QObject *parent)
    : QObject(parent), d(std::make_unique<Private>(database))
{}

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
        Run();
}

QString TVelakSearchManager::RequestedColumns() const
{
    return d->columns.join(u',');
}

QString TVelakSearchManager::Statement() const
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
    return d->script + clean.join(u',');
}

void TVelakSearchManager::Run()
{
    d->data.Open(Statement());
    d->columnsOfLastRun = QSet<QString>(d->columns.begin(), d->columns.end());
    emit Executed();
}

Dataset &TVelakSearchManager::Data()
{
    return d->data;
}

} // namespace host
