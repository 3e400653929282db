// The tree of a parsed text: names, expressions and queries.
#pragma once

#include "tsql/text/lexer.h"
#include "tsql/values/types.h"

#include <memory>
#include <vector>

namespace tsql {

struct Expression;
struct Query;
struct TableSource;
using ExpressionPtr = std::unique_ptr<Expression>;
using QueryPtr = std::unique_ptr<Query>;
using TableSourcePtr = std::unique_ptr<TableSource>;

/// A possibly schema-qualified name; `dbo` and an empty schema are the same. Names compare without case.
struct ObjectName
{
    QString database; ///< only "tempdb" means anything
    QString schema;
    QString name;

    bool IsTemporary() const { return name.startsWith(u'#'); }
    bool IsGlobalTemporary() const { return name.startsWith(u"##"); }
    /// The catalogue key: folded case, without dbo: "goodinf", "market.product", "#gooddetails".
    QString KeyText() const;
    /// As messages write it: "GoodInf", "Market.Product".
    QString Display() const;
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
    bool rows = false; ///< ROWS UNBOUNDED PRECEDING: up to the row itself, not to the last of its equals
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

} // namespace tsql
