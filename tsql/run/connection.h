// One connection to an embedded database: what a session of the server is.
#pragma once

#include "tsql/run/cursor.h"
#include "tsql/run/message.h"
#include "tsql/run/shared_file.h"

namespace tsql {

/** What one statement of a batch tells its client. Under SET NOCOUNT ON only those with rows do. */
struct Report
{
    int result = -1;      ///< index into Outcome::results; -1 for none
    qint64 affected = -1; ///< rows changed; -1 when they are not counted
    bool inProcedure = false;
};

/** What a batch left behind. */
struct Outcome
{
    std::vector<std::unique_ptr<Cursor>> results; ///< the result sets in their order
    std::vector<Report> reports;                  ///< of the statements that ran
    std::vector<Message> messages;                ///< of PRINT and of RAISERROR below severity 11
    qint64 affected = -1;                         ///< rows changed by the last INSERT, UPDATE or DELETE; -1 for none
    Value lastIdentity;                           ///< as SCOPE_IDENTITY() of the batch: an integer, or null

    /** Forgets everything but the memory. */
    void clear()
    {
        results.clear();
        reports.clear();
        messages.clear();
        affected = -1;
        lastIdentity = {};
    }
};

/** The error that a CATCH block asks about. */
struct CaughtError
{
    int number = 0;
    int line = 0;
    int severity = 0;
    int state = 0;
    QString message;
    QString procedure;
};

/** A savepoint and what the database knew then. */
struct Savepoint
{
    QString name;
    Catalogue catalogue;
};

/** A table variable with its rows, which a rollback does not touch. */
struct KeptTable
{
    std::shared_ptr<const Table> table;
    std::vector<QByteArray> definitions; ///< of the table and its indexes, for SQLite
    std::vector<std::vector<Value>> rows;
};

/** What the statements of a session remember from one to the next. */
struct Session
{
    qint64 rowCount = 0;
    int lastError = 0;
    Value identity;            ///< @@IDENTITY
    int transactions = 0;      ///< @@TRANCOUNT
    int nesting = 0;           ///< procedures on the stack
    bool abortOnError = false; ///< SET XACT_ABORT
    bool counts = true;        ///< SET NOCOUNT OFF
    CompileOptions options;
    std::vector<CaughtError> caught; ///< the innermost last
};

/**
 * Executes batches on one database file (":memory:" for a private database). Writing goes through one handle; result
 * sets outside of a transaction are streamed through readers of their own, so that an open list neither blocks a
 * writer nor shows this connection yesterday's rows. Not for use by two threads at once.
 */
class Connection
{
public:
    /** Opens the file and makes it when it does not exist. Throws Error. */
    explicit Connection(const QString &path);
    /** Rolls back what is open and drops the temporary tables. */
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /** Runs a batch to its end. Throws the first Error that no CATCH took. */
    Outcome Execute(const QString &batch);
    /** The same; `outcome` holds what came before the Error. */
    void Execute(const QString &batch, Outcome &outcome);

    void BeginTransaction(const QString &name = {});
    void Commit();
    /** Rolls back to the savepoint, or the whole transaction when the name is empty. */
    void Rollback(const QString &savepoint = {});
    void SaveTransaction(const QString &name);

    const Catalogue &Names() const { return m_catalogue; }
    const SqliteHandle &Handle() const { return m_main; }
    /** Copies the database, as it is after the last commit, to a new file while others go on working. */
    void Backup(const QString &path);

private:
    friend class Interpreter;

    static constexpr size_t MaxReaders = 8;

    void RenewOrder();
    void LoadDefinitions();
    void SyncCatalogue();
    bool DefinedElsewhere();
    void KeepDefinition(const QString &text);
    void AnnounceDefinitions();
    void RequireFile() const;
    std::shared_ptr<Reader> FreeReader();
    void NoticeLostTransaction();
    void RestoreCatalogue(const Catalogue &picture);
    void RestoreTableVariables(const std::vector<KeptTable> &variables);
    std::vector<KeptTable> TableVariables() const;
    void EndTransaction();

    const QString m_path;
    std::shared_ptr<SharedFile> m_shared;
    SqliteHandle m_main;
    Catalogue m_catalogue;
    Catalogue m_catalogueAtBegin;
    PlanCache m_plans;
    Session m_session;
    QString m_transactionName;
    std::vector<Savepoint> m_savepoints;
    std::vector<std::shared_ptr<Reader>> m_readers;
    PreparedStatement m_lock;        ///< takes the writer's lock of the file
    PreparedStatement m_readVersion; ///< of the definitions, counted across processes
    quint64 m_definitionsSeen = 0;   ///< of SharedFile::definitions
    quint64 m_sharedTablesSeen = 0;  ///< of SharedFile::tablesVersion
    qint64 m_userVersion = 0;        ///< as it was when the definitions were loaded
    bool m_definedInTransaction = false;
};

} // namespace tsql
