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

    void RunBatch(const QString &text);

private:
    enum class Flow : quint8 { Next, Break, Continue, Return };
    using Statements = std::vector<StatementPtr>;

    static constexpr int DeepestNesting = 32;

    // Control flow
    void RunFrame(Frame &frame);
    Flow Run(const Statements &statements, Frame &frame);
    Flow Run(const Statement &statement, Frame &frame);
    Flow Dispatch(const Statement &statement, Frame &frame);
    void Say(const QString &message);
    Flow RunIf(const IfStatement &branch, Frame &frame);
    Flow RunLoop(const WhileStatement &loop, Frame &frame);
    Flow RunTry(const TryCatchStatement &statement, Frame &frame);
    void RunThrow(const RaiseStatement &statement, Frame &frame);
    void RunRaiseError(const RaiseStatement &statement, Frame &frame);
    void RunSetOption(const SetOptionStatement &statement);
    void setLockTimeout(const QString &value) const;
    void RunSetVariable(const SetVariableStatement &set, Frame &frame);
    void RunDeclare(const DeclareStatement &statement, Frame &frame);

    // Queries and rows
    CompileOptions OptionsOf(const Frame &frame) const;
    template <class Compiler>
    std::shared_ptr<CompiledEntry> EntryOf(const void *node, Frame &frame, const Compiler &compiler);
    std::shared_ptr<CompiledEntry> EntryOf(const Statement &statement, Frame &frame);
    void RunSelect(const Statement &statement, Frame &frame);
    void RunAssignment(const std::shared_ptr<CompiledEntry> &entry, Frame &frame);
    void RunAssignmentInTurn(const std::shared_ptr<CompiledEntry> &entry, Frame &frame);
    void RunChange(const Statement &statement, Frame &frame);
    void RunExchange(const UpdateStatement &statement, const class SqliteError &refusal, Frame &frame);
    void ReportRows(std::unique_ptr<Cursor> cursor);
    void ReportCount(qint64 rows);
    void RunInsertExecute(const InsertStatement &statement, Frame &frame);
    Value Scalar(const Expression &value, Frame &frame, const SqlType &target);
    bool Condition(const Expression &value, Frame &frame);
    QString text(const Expression &value, Frame &frame);
    void Bind(sqlite3_stmt *statement, const Compiled &compiled, Frame &frame, BoundBytes *bytes = nullptr);
    Value SystemValue(const QString &name, const Frame &frame) const;

    // Definitions
    void RunDefinition(const Statement &statement, Frame &frame);
    void DefineInto(const Compiled &compiled, Frame &frame);
    void AfterDefinition(const Statement &statement, Frame &frame);
    void DropTemporary(Frame &frame);

    // Procedures and dynamic text
    void RunExecute(const ExecuteStatement &statement, Frame &frame);
    void CallProcedure(const std::shared_ptr<const CreateProcedureStatement> &procedure,
                       const ExecuteStatement &statement, Frame &caller);
    void ExecuteSql(const ExecuteStatement &statement, Frame &caller);
    void RunText(const QString &text, const QString &scope, const std::vector<ParameterDefinition> &parameters,
                 QHash<QString, Value> &variables);
    void PassArguments(const std::vector<ParameterDefinition> &parameters, const QString &procedure,
                       const std::vector<ExecuteArgument> &arguments, size_t firstArgument, Frame &caller,
                       QHash<QString, Value> &values);
    void ReturnArguments(const std::vector<ParameterDefinition> &parameters,
                         const std::vector<ExecuteArgument> &arguments, size_t firstArgument, Frame &caller,
                         const QHash<QString, Value> &values) const;
    void Assign(const QString &variable, const Value &value, const SqlType &type, Frame &frame) const;

    Connection &m_connection;
    Outcome &m_outcome;
    int m_tries = 0;               ///< TRY blocks on the stack
    int m_countingFrames = 0;      ///< texts on the stack that ask for @@ROWCOUNT
    std::optional<Error> m_raised; ///< by RAISERROR outside of TRY: the batch goes on, then fails
    QString m_failedProcedure;     ///< where the error on its way was thrown
};

} // namespace tsql
