// Runs the statements of a batch.
#pragma once

#include "tsql/run/connection.h"
#include "tsql/values/convert.h"
#include "tsql/values/error.h"

namespace tsql {

class BoundBytes;

/** One batch, procedure call or dynamic text on the stack. */
struct Frame
{
    Plan &plan;
    const std::vector<Literal> *literals; ///< null in a procedure: they stand in the statements
    QHash<QString, Value> variables;      ///< by folded name
    Value scopeIdentity;
    qint64 returnValue = 0;
    std::vector<ObjectName> temporaryTables; ///< to be dropped when a procedure ends; table variables always
};

/** Walks the syntax tree; queries are compiled, bound and stepped on the connection's handles. */
class Interpreter
{
public:
    Interpreter(Connection &connection, Outcome &outcome) : m_connection(connection), m_outcome(outcome) {}

    void runBatch(const QString &text);

private:
    enum class Flow : quint8 { Next, Break, Continue, Return };
    using Statements = std::vector<StatementPtr>;

    static constexpr int DeepestNesting = 32;

    // Control flow
    void runFrame(Frame &frame);
    Flow run(const Statements &statements, Frame &frame);
    Flow run(const Statement &statement, Frame &frame);
    Flow dispatch(const Statement &statement, Frame &frame);
    void say(const QString &message);
    Flow runIf(const IfStatement &branch, Frame &frame);
    Flow runLoop(const WhileStatement &loop, Frame &frame);
    Flow runTry(const TryCatchStatement &statement, Frame &frame);
    void runThrow(const RaiseStatement &statement, Frame &frame);
    void runRaiseError(const RaiseStatement &statement, Frame &frame);
    void runSetOption(const SetOptionStatement &statement);
    void setLockTimeout(const QString &value) const;
    void runSetVariable(const SetVariableStatement &set, Frame &frame);
    void runDeclare(const DeclareStatement &statement, Frame &frame);

    // Queries and rows
    CompileOptions optionsOf(const Frame &frame) const;
    template <class Compiler>
    std::shared_ptr<CompiledEntry> entryOf(const void *node, Frame &frame, const Compiler &compiler);
    std::shared_ptr<CompiledEntry> entryOf(const Statement &statement, Frame &frame);
    void runSelect(const Statement &statement, Frame &frame);
    void runAssignment(const std::shared_ptr<CompiledEntry> &entry, Frame &frame);
    void runAssignmentInTurn(const std::shared_ptr<CompiledEntry> &entry, Frame &frame);
    void runChange(const Statement &statement, Frame &frame);
    void runExchange(const UpdateStatement &statement, const class SqliteError &refusal, Frame &frame);
    void reportRows(std::unique_ptr<Cursor> cursor);
    void reportCount(qint64 rows);
    void runInsertExecute(const InsertStatement &statement, Frame &frame);
    Value scalar(const Expression &value, Frame &frame, const SqlType &target);
    bool condition(const Expression &value, Frame &frame);
    QString text(const Expression &value, Frame &frame);
    void bind(sqlite3_stmt *statement, const Compiled &compiled, Frame &frame, BoundBytes *bytes = nullptr);
    Value systemValue(const QString &name, const Frame &frame) const;

    // Definitions
    void runDefinition(const Statement &statement, Frame &frame);
    void defineInto(const Compiled &compiled, Frame &frame);
    void afterDefinition(const Statement &statement, Frame &frame);
    void dropTemporary(Frame &frame);

    // Procedures and dynamic text
    void runExecute(const ExecuteStatement &statement, Frame &frame);
    void callProcedure(const std::shared_ptr<const CreateProcedureStatement> &procedure,
                       const ExecuteStatement &statement, Frame &caller);
    void executeSql(const ExecuteStatement &statement, Frame &caller);
    void runText(const QString &text, const QString &scope, const std::vector<ParameterDefinition> &parameters,
                 QHash<QString, Value> &variables);
    void passArguments(const std::vector<ParameterDefinition> &parameters, const QString &procedure,
                       const std::vector<ExecuteArgument> &arguments, size_t firstArgument, Frame &caller,
                       QHash<QString, Value> &values);
    void returnArguments(const std::vector<ParameterDefinition> &parameters,
                         const std::vector<ExecuteArgument> &arguments, size_t firstArgument, Frame &caller,
                         const QHash<QString, Value> &values) const;
    void assign(const QString &variable, const Value &value, const SqlType &type, Frame &frame) const;

    Connection &m_connection;
    Outcome &m_outcome;
    int m_tries = 0;               ///< TRY blocks on the stack
    int m_countingFrames = 0;      ///< texts on the stack that ask for @@ROWCOUNT
    std::optional<Error> m_raised; ///< by RAISERROR outside of TRY: the batch goes on, then fails
    QString m_failedProcedure;     ///< where the error on its way was thrown
};

} // namespace tsql
