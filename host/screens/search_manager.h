#pragma once

#include "host/host_export.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtSql/QSqlDatabase>

#include <functional>
#include <memory>

namespace host {

class Dataset;

/// Runs a list procedure with its filter: the script, then the parameter texts joined with commas. The result is a
/// Dataset that fetches in blocks of 1000 rows.
class HOST_EXPORT TVelakSearchManager : public QObject
{
    Q_OBJECT

public:
    /// `database` must carry no other open result while the list scrolls.
    explicit TVelakSearchManager(const QSqlDatabase &database, QObject *parent = nullptr);
    ~TVelakSearchManager() override;

    /// The text before the parameters ("Exec GoodInf_List_SP ").
    void SetScript(const QString &script);
    /// A filter that stays until it is set again; parameter texts come in the order in which their names were first
    /// set. An empty text takes it out.
    void SetFilter(const QString &name, const QString &parameterText);
    /// The screen's own parameter texts, asked each time the list runs; they come after the named ones.
    void SetCustomFilter(std::function<QStringList()> filter);
    /// Columns that the list must return, in the order of the grid. When the set grows the list runs again at once (if
    /// it is open); the order alone does not matter.
    void SetRequestedColumns(const QStringList &columns);
    QString RequestedColumns() const;

    /// The statement that `Run` would send now.
    QString Statement() const;
    /// Runs the list anew. Throws DatabaseError.
    void Run();
    /// The rows; owned by the manager and the same object for its whole life.
    Dataset &Data();

signals:
    /// The list ran and its first block is there.
    void Executed();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace host
