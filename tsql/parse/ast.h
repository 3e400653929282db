// The tree of a parsed text: statements. Names, expressions and queries are in ast_query.h.
#pragma once

#include "tsql/parse/ast_query.h"

namespace tsql {

struct Statement;
using StatementPtr = std::unique_ptr<Statement>;

enum class StatementKind : quint8 {
    Select,
    Insert,
    Update,
    Delete,
    Truncate,
    CreateTable,
    AlterTable,
    CreateIndex,
    CreateView,
    CreateProcedure,
    CreateFunction,
    CreateSchema,
    Drop,
    Declare,
    DeclareTable,
    SetVariable,
    SetOption,
    If,
    While,
    Block,
    Break,
    Continue,
    Return,
    Execute,
    ExecuteText,
    BeginTransaction,
    Commit,
    Rollback,
    SaveTransaction,
    TryCatch,
    Throw,
    RaiseError,
    Print,
};

struct Statement
{
    static constexpr int DefaultRecursion = 100;

    explicit Statement(StatementKind k) : kind(k) {}
    virtual ~Statement() = default;
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    const StatementKind kind;
    int line = 1;
    int maxRecursion = DefaultRecursion; ///< of OPTION (MAXRECURSION n); 0 for no limit
    QString text;                        ///< as written
};

/// The statement as its own type; the caller has looked at kind.
template <class T> const T &As(const Statement &statement)
{
    Q_ASSERT(dynamic_cast<const T *>(&statement));
    return static_cast<const T &>(statement);
}

struct SelectStatement : Statement
{
    SelectStatement() : Statement(StatementKind::Select) {}
    Query query;
};

struct ExecuteStatement;

struct InsertStatement : Statement
{
    InsertStatement() : Statement(StatementKind::Insert) {}
    std::vector<CommonTable> with;
    ObjectName table;
    std::vector<QString> columns; ///< empty: all but the identity
    std::vector<SelectItem> output;
    std::vector<std::vector<ExpressionPtr>> rows;
    QueryPtr query;
    std::unique_ptr<ExecuteStatement> execute;
    bool defaultValues = false;
};

struct Assignment
{
    QString column;
    ExpressionPtr value;
};

struct UpdateStatement : Statement
{
    UpdateStatement() : Statement(StatementKind::Update) {}
    std::vector<CommonTable> with;
    ObjectName target; ///< a table, or an alias of from
    ExpressionPtr top;
    std::vector<Assignment> assignments;
    std::vector<SelectItem> output;
    TableSourcePtr from;
    ExpressionPtr where;
};

struct DeleteStatement : Statement
{
    DeleteStatement() : Statement(StatementKind::Delete) {}
    std::vector<CommonTable> with;
    ObjectName target;
    ExpressionPtr top;
    std::vector<SelectItem> output;
    TableSourcePtr from;
    ExpressionPtr where;
};

struct TruncateStatement : Statement
{
    TruncateStatement() : Statement(StatementKind::Truncate) {}
    ObjectName table;
};

enum class KeyAction : quint8 { NoAction, Cascade, SetNull, SetDefault };

struct ForeignKey
{
    std::vector<QString> columns;
    ObjectName table;
    std::vector<QString> targets;
    KeyAction onDelete = KeyAction::NoAction;
    KeyAction onUpdate = KeyAction::NoAction;
};

struct ColumnDefinition
{
    QString name;
    SqlType type;
    bool nullable = true;
    bool identity = false;
    qint64 seed = 1;
    qint64 increment = 1;
    QString collation; ///< of COLLATE; empty for the database's own
    ExpressionPtr defaultValue;
};

struct TableConstraint
{
    enum class Kind : quint8 { PrimaryKey, Unique, Check, ForeignKey, Default };

    Kind kind = Kind::PrimaryKey;
    QString name;
    std::vector<QString> columns;
    ExpressionPtr value; ///< of Check and Default
    ForeignKey foreignKey;
};

struct CreateTableStatement : Statement
{
    CreateTableStatement() : Statement(StatementKind::CreateTable) {}
    ObjectName table;
    std::vector<ColumnDefinition> columns;
    std::vector<TableConstraint> constraints;
};

struct AlterTableStatement : Statement
{
    enum class Action : quint8 { Add, DropColumn, DropConstraint };

    AlterTableStatement() : Statement(StatementKind::AlterTable) {}
    ObjectName table;
    Action action = Action::Add;
    std::vector<ColumnDefinition> columns;
    std::vector<TableConstraint> constraints;
    std::vector<QString> names; ///< what is dropped
};

struct CreateIndexStatement : Statement
{
    CreateIndexStatement() : Statement(StatementKind::CreateIndex) {}
    QString name;
    ObjectName table;
    bool unique = false;
    std::vector<OrderItem> columns;
    std::vector<QString> include;
    ExpressionPtr where;
};

struct CreateViewStatement : Statement
{
    CreateViewStatement() : Statement(StatementKind::CreateView) {}
    ObjectName name;
    bool replace = false; ///< CREATE OR ALTER, ALTER
    std::vector<QString> columns;
    Query query;
};

struct ParameterDefinition
{
    QString name; ///< with its @
    SqlType type;
    ExpressionPtr defaultValue;
    bool output = false;
};

struct CreateProcedureStatement : Statement
{
    CreateProcedureStatement() : Statement(StatementKind::CreateProcedure) {}
    ObjectName name;
    bool replace = false;
    std::vector<ParameterDefinition> parameters;
    std::vector<StatementPtr> body;
};

/// An inline table function: RETURNS TABLE AS RETURN (query).
struct CreateFunctionStatement : Statement
{
    CreateFunctionStatement() : Statement(StatementKind::CreateFunction) {}
    ObjectName name;
    bool replace = false;
    std::vector<ParameterDefinition> parameters;
    Query query;
};

struct CreateSchemaStatement : Statement
{
    CreateSchemaStatement() : Statement(StatementKind::CreateSchema) {}
    QString name;
};

struct DropStatement : Statement
{
    enum class What : quint8 { Table, View, Procedure, Function, Index, Schema };

    DropStatement() : Statement(StatementKind::Drop) {}
    What what = What::Table;
    bool ifExists = false;
    std::vector<ObjectName> names;
    ObjectName onTable; ///< of an index
};

struct DeclareStatement : Statement
{
    struct Variable
    {
        QString name; ///< with its @
        SqlType type;
        ExpressionPtr value;
    };

    DeclareStatement() : Statement(StatementKind::Declare) {}
    std::vector<Variable> variables;
};

/// DECLARE @t TABLE (…): table.table is named "@t".
struct DeclareTableStatement : Statement
{
    DeclareTableStatement() : Statement(StatementKind::DeclareTable) {}
    std::unique_ptr<CreateTableStatement> table;
};

struct SetVariableStatement : Statement
{
    SetVariableStatement() : Statement(StatementKind::SetVariable) {}
    QString variable;
    ExpressionPtr value;
};

/// SET NOCOUNT ON and its like. `option` is in capitals; `table` only for IDENTITY_INSERT.
struct SetOptionStatement : Statement
{
    SetOptionStatement() : Statement(StatementKind::SetOption) {}
    QString option;
    ObjectName table;
    QString value; ///< "ON", "OFF" or what stood there, in capitals
};

struct IfStatement : Statement
{
    IfStatement() : Statement(StatementKind::If) {}
    ExpressionPtr condition;
    StatementPtr then;
    StatementPtr otherwise;
};

struct WhileStatement : Statement
{
    WhileStatement() : Statement(StatementKind::While) {}
    ExpressionPtr condition;
    StatementPtr body;
};

struct BlockStatement : Statement
{
    BlockStatement() : Statement(StatementKind::Block) {}
    std::vector<StatementPtr> statements;
};

/// BREAK, CONTINUE, and THROW without arguments.
struct PlainStatement : Statement
{
    using Statement::Statement;
};

struct ReturnStatement : Statement
{
    ReturnStatement() : Statement(StatementKind::Return) {}
    ExpressionPtr value;
};

struct ExecuteArgument
{
    QString name; ///< with its @; empty for a positional one
    ExpressionPtr value;
    bool output = false;
    bool useDefault = false;
};

struct ExecuteStatement : Statement
{
    ExecuteStatement() : Statement(StatementKind::Execute) {}
    QString returnVariable; ///< EXEC @r = name
    ObjectName procedure;   ///< without ;1
    std::vector<ExecuteArgument> arguments;
};

struct ExecuteTextStatement : Statement
{
    ExecuteTextStatement() : Statement(StatementKind::ExecuteText) {}
    ExpressionPtr sql;
};

/// BEGIN TRAN, COMMIT, ROLLBACK, SAVE TRAN: `name` is a savepoint's or empty.
struct TransactionStatement : Statement
{
    using Statement::Statement;
    QString name;
};

struct TryCatchStatement : Statement
{
    TryCatchStatement() : Statement(StatementKind::TryCatch) {}
    std::vector<StatementPtr> tried;
    std::vector<StatementPtr> caught;
};

/// THROW number, message, state or RAISERROR(message, severity, state, values …); no arguments for a bare THROW.
struct RaiseStatement : Statement
{
    using Statement::Statement;
    std::vector<ExpressionPtr> args;
};

struct PrintStatement : Statement
{
    PrintStatement() : Statement(StatementKind::Print) {}
    ExpressionPtr value;
};

/// A parsed text. The statements refer to the literals by index.
struct Batch
{
    QString text;
    std::vector<StatementPtr> statements;
    std::vector<Literal> literals;
    std::vector<int> fixedLiterals; ///< literals whose value the parser used up: lengths of types, quoted aliases …
};

} // namespace tsql
