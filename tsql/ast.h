#pragma once

#include "tsql/lexer.h"
#include "tsql/types.h"

#include <memory>
#include <vector>

namespace tsql {

struct Expression;
struct Query;
struct Statement;
struct TableSource;
using ExpressionPtr = std::unique_ptr<Expression>;
using QueryPtr = std::unique_ptr<Query>;
using StatementPtr = std::unique_ptr<Statement>;
using TableSourcePtr = std::unique_ptr<TableSource>;

/// A possibly schema-qualified name; `dbo` and an empty schema are the same. Names compare without case.
struct ObjectName
{
    QString database; ///< only "tempdb" means anything
    QString schema;
    QString name;

    bool isTemporary() const { return name.startsWith(u'#'); }
    bool isGlobalTemporary() const { return name.startsWith(u"##"); }
    /// The catalogue key: folded case, without dbo: "goodinf", "market.product", "#gooddetails".
    QString key() const;
    /// As messages write it: "GoodInf", "Market.Product".
    QString display() const;
};

struct OrderItem
{
    ExpressionPtr value;
    bool descending = false;
};

enum class ExpressionKind : quint8 {
    Literal,
    Null,
    Default,    ///< DEFAULT in VALUES or SET
    Column,     ///< qualifier.name; qualifier may be empty
    Star,       ///< * or qualifier.*
    Variable,   ///< @x, @@rowcount
    Negate,     ///< - args[0]
    BitNot,     ///< ~ args[0]
    Arithmetic, ///< name is + - * / % & | ^
    Compare,    ///< name is = <> < <= > >=
    And,
    Or,
    Not,
    IsNull,     ///< args[0] IS [NOT] NULL
    Like,       ///< args[0] LIKE args[1] [ESCAPE args[2]]
    Between,    ///< args[0] BETWEEN args[1] AND args[2]
    In,         ///< args[0] IN (args[1..] or query)
    Exists,     ///< EXISTS (query)
    Quantified, ///< args[0] name ANY/ALL (query); all tells which
    Scalar,     ///< (query) as a value
    Case,       ///< [args[0] when hasOperand], then pairs when, then; a trailing ELSE when the rest is odd
    Cast,       ///< CAST / CONVERT to type; args[1] is CONVERT's style
    Function,   ///< name(args) with name in capitals; over holds a window
    Collate,    ///< args[0] COLLATE name
};

struct Window
{
    std::vector<ExpressionPtr> partition;
    std::vector<OrderItem> order;
};

struct Expression
{
    ExpressionKind kind = ExpressionKind::Null;
    int line = 1;
    QString name;            ///< column, variable with its @, function, operator
    QString qualifier;       ///< table or alias of a column or star
    bool negated = false;    ///< NOT IN, NOT LIKE, IS NOT NULL …
    bool distinct = false;   ///< COUNT(DISTINCT x)
    bool hasOperand = false; ///< CASE x WHEN
    bool tryCast = false;    ///< TRY_CAST / TRY_CONVERT: NULL instead of an error
    bool all = false;        ///< ALL of a quantified comparison
    SqlType type;            ///< of a Cast
    int literal = -1;        ///< index into the literals of the text
    Literal value;           ///< of a Literal
    std::vector<ExpressionPtr> args;
    QueryPtr query;
    std::unique_ptr<Window> over;
};

struct SelectItem
{
    ExpressionPtr value;
    QString alias;
    QString variable; ///< SELECT @x = value
    QString text;     ///< as written
};

enum class JoinKind : quint8 { Inner, Left, Right, Full, Cross };

struct TableSource
{
    enum class Kind : quint8 { Named, Function, Derived, Values, Join };

    Kind kind = Kind::Named;
    int line = 1;
    ObjectName name; ///< of Named and Function; a table variable has name "@t"
    QString alias;
    std::vector<QString> columnAliases;           ///< of Derived and Values
    std::vector<ExpressionPtr> args;              ///< of Function
    QueryPtr query;                               ///< of Derived
    std::vector<std::vector<ExpressionPtr>> rows; ///< of Values
    JoinKind join = JoinKind::Inner;
    TableSourcePtr left;
    TableSourcePtr right;
    ExpressionPtr on;
};

/// One SELECT without its set operators and ORDER BY.
struct SelectCore
{
    int line = 1;
    bool distinct = false;
    ExpressionPtr top;
    bool topPercent = false;
    std::vector<SelectItem> items;
    ObjectName into;
    TableSourcePtr from; ///< comma-separated tables are Cross joins
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;
};

enum class SetOperator : quint8 { Union, UnionAll, Intersect, Except };

/// A select core, or two bodies joined by a set operator.
struct QueryBody
{
    std::unique_ptr<SelectCore> core;
    SetOperator op = SetOperator::Union;
    std::unique_ptr<QueryBody> left;
    std::unique_ptr<QueryBody> right;
};

struct CommonTable
{
    QString name;
    std::vector<QString> columns;
    QueryPtr query;
};

struct Query
{
    int line = 1;
    std::vector<CommonTable> with;
    std::unique_ptr<QueryBody> body;
    std::vector<OrderItem> orderBy;
    ExpressionPtr offset;
    ExpressionPtr fetch;
    bool forXml = false;
    QString xmlElement; ///< of PATH('element'); empty for PATH('')
};

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
    explicit Statement(StatementKind k) : kind(k) {}
    virtual ~Statement() = default;
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    const StatementKind kind;
    int line = 1;
    QString text; ///< as written
};

/// The statement as its own type; the caller has looked at kind.
template <class T> const T &as(const Statement &statement)
{
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
