#pragma once

#include "host/host_export.h"

#include <QObject>
#include <QSqlDatabase>
#include <QStringList>

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
    /// Columns that the list must return, in the order of the grid. When the set grows the list runs again, behind the
    /// rows shown (if it is open); the order alone does not matter.
    void SetRequestedColumns(const QStringList &columns);
    QString RequestedColumns() const;

    /// The parameter texts joined with commas, without the script.
    QString ParameterText() const;
    /// The statement that `Run` would send now.
    QString Statement() const;
    /// Runs the list anew: its first block is shown. Throws DatabaseError.
    void Run();
    /// Runs the list anew while the rows stay as they are; the new ones take their place in one step when all of them
    /// are read: before this returns when they are few, in idle time otherwise. For a list whose filter did not change,
    /// so that nobody waits for rows that are mostly those already shown. Throws DatabaseError.
    void RunBehind();
    /// Brings a run behind to its end now; nothing without one. Throws DatabaseError.
    void Finish();
    bool IsRunningBehind() const;
    /// Lets go of the rows, and of a run behind.
    void Close();
    /// The rows; owned by the manager and the same object for its whole life.
    Dataset &Data();

signals:
    /// The list ran and its first block is there, or all its rows after a run behind.
    void Executed();
    /// The rows of a run behind are there and about to replace those shown.
    void Renewing();
    /// A run behind could not be read to its end: the rows shown stay as they are.
    void Failed(const QString &text);

private:
    void ReadBehind();

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace host
