#pragma once

#include "tsql/parse/ast.h"
#include "tsql/write/catalogue.h"

#include <QHash>
#include <QSet>

namespace tsql {

/// The types of the variables in reach, by folded name with the @. Table variables are tables of the catalogue.
using VariableTypes = QHash<QString, SqlType>;

/// How a value is brought to the type that a place asks for.
enum class Conversion : quint8 {
    Cast,   ///< overlong text is cut
    Assign, ///< overlong text is refused, naming table and column
};

/// The value behind ?1, ?2 … of a compiled statement, bound before each run.
struct Parameter
{
    enum class Source : quint8 {
        Literal,  ///< the literal of that index in the batch at hand
        Constant, ///< the literal in `value` (it stood in a view, a function, a default)
        Variable, ///< the local variable `name` (folded, with its @), of type variableType
        System,   ///< a value of the session, by `name`: see below
    };

    Source source = Source::Constant;
    int literal = -1;
    Literal value;        ///< of Constant; of Literal as it was when the statement was compiled
    bool negate = false;  ///< a minus stood before the number
    QString name;         ///< of Variable and System
    SqlType variableType; ///< of Variable
    SqlType type;         ///< bind as this type, converting (and refusing) as the server does
    Conversion conversion = Conversion::Cast;
    QString table;  ///< named by the message for an overlong text
    QString column; ///< named by the message for an overlong text
};
// System names: "@@rowcount" int, "@@identity" and "scope_identity" decimal(38,0), "@@trancount" int, "@@error" int,
// "@@version" nvarchar, "@@spid" int, "@@servername" nvarchar, "@@nestlevel" int, "@@fetch_status" int,
// "getdate", "getutcdate", "current_timestamp" datetime, "db_name", "suser_sname", "host_name", "app_name" nvarchar,
// "error_number", "error_line", "error_severity", "error_state", "xact_state" int, "error_message",
// "error_procedure" nvarchar.

struct ResultColumn
{
    QString name; ///< empty for an unnamed expression
    SqlType type;
    bool nullable = true;
    QString table; ///< the base table's name when the column comes from one
};

/// What a cached shape has to check before it reuses a compiled statement for other literals.
struct LiteralNeed
{
    int literal = 0;
    bool value = false; ///< the very value went into the SQL text; otherwise only its precision, scale or length
};

/// One statement as SQLite runs it.
struct Compiled
{
    QString sql;                       ///< one SQLite statement with parameters ?1 … ?n
    std::vector<QString> then;         ///< further statements without parameters (data definition)
    std::vector<Parameter> parameters; ///< of sql, in order
    std::vector<ResultColumn> columns; ///< empty when no rows come back
    std::vector<QString> assign;       ///< SELECT @x = …: the variable (folded) of each column; the last row counts
    std::vector<Compiled> inTurn;      ///< of assign when each row counts on the one before: the values, one by one
    QString target;                    ///< of an UPDATE: SQLite's name of the table
    std::vector<LiteralNeed> needs;
    bool writes = false;       ///< changes rows or definitions
    bool definition = false;   ///< changes the catalogue: apply the statement to it afterwards
    bool cacheable = true;     ///< the text may be reused for other literals
    bool countsRows = true;    ///< sets @@ROWCOUNT
    bool setsIdentity = false; ///< an INSERT into a table with an identity column
    // SELECT INTO: `sql` creates the table, intoInsert fills it.
    std::shared_ptr<Table> into; ///< the new table, to be added to the catalogue
    QString intoInsert;          ///< the INSERT; `parameters` are its parameters
};

/// Settings of the session that decide what a statement means.
struct CompileOptions
{
    QSet<QString> identityInsert; ///< keys of the tables with IDENTITY_INSERT ON
    /// The literals of the text at hand when the syntax tree was made from another text of the same shape.
    const std::vector<Literal> *literals = nullptr;
};

/// Compiles SELECT, INSERT, UPDATE, DELETE, TRUNCATE and the data definition statements.
/// Throws Error for unknown names, types that do not fit and constructs that are not supported.
Compiled Compile(const Statement &statement, const Catalogue &catalogue, const VariableTypes &variables,
                 const CompileOptions &options = {});

/// The rows that an UPDATE changes, without changing them: the number of each (as the first column, which `columns`
/// leaves out) and its new values, under the names of the table's columns.
Compiled CompileNewValues(const UpdateStatement &statement, const Catalogue &catalogue, const VariableTypes &variables,
                          const CompileOptions &options = {});

/// The type of a literal as it stands: an int has its number of digits as precision, a text its length.
SqlType LiteralType(const Literal &literal);

/// A value (SET @x, an argument, RETURN, PRINT …) as a SELECT of one row and one column, converted to `target`
/// unless that is Null.
Compiled CompileScalar(const Expression &value, const Catalogue &catalogue, const VariableTypes &variables,
                       const SqlType &target = {}, const CompileOptions &options = {});

/// The variable that holds column `column` of the row at hand while Compiled::inTurn is reckoned.
QString RowVariable(std::size_t column);

/// A condition (IF, WHILE) as a SELECT of one row and one column that holds 1 or 0.
Compiled CompileCondition(const Expression &condition, const Catalogue &catalogue, const VariableTypes &variables,
                          const CompileOptions &options = {});

} // namespace tsql
