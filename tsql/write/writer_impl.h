#pragma once

#include "tsql/write/writer.h"

#include <optional>

namespace tsql {

struct Scope;

/// The terms of an expression written from left to right, as long as more can be added: SQLite nests a hundred
/// parentheses or calls at most, so that a long sum has to be one call and a long text one pair of parentheses.
struct Chain
{
    enum class Form : quint8 { Integer, Decimal, Real, Text };

    Form form = Form::Text;
    QString closed; ///< groups of a text that are full
    QString terms;
    QString operations; ///< what the function of the form reads
    int count = 0;      ///< of the terms in `terms`
};

/// An expression on its way into SQL text.
struct Operand
{
    QString sql;
    SqlType type;
    std::shared_ptr<Chain> chain;     ///< set when `sql` is a chain that can go on
    std::optional<Parameter> pending; ///< a literal or a variable that is bound as soon as its target type is known
    bool column = false;              ///< a column, which brings its collation with it
    bool nullable = true;
    QString table; ///< of a base table's column
    QString whole; ///< of joined texts: before their end is cut off

    bool isNull() const { return type.kind == Kind::Null; }
};

/// One column that a table in FROM offers.
struct SourceColumn
{
    QString name;
    SqlType type;
    QString sql; ///< qualified and quoted
    bool nullable = true;
    QString table;
};

/// One table in FROM.
struct Source
{
    QString name;  ///< alias, or the table's own name
    QString table; ///< the table's name for "table.column" without an alias; empty when there is an alias
    std::vector<SourceColumn> columns;
};

/// What a subquery in FROM, a view or a common table offers.
struct CommonShape
{
    QString sqliteName;
    std::vector<ResultColumn> columns;
};

/// The names that an expression may use.
struct Scope
{
    const Scope *outer = nullptr;
    std::vector<Source> sources;
    QHash<QString, CommonShape> commons;
    const std::vector<ExpressionPtr> *groupBy = nullptr; ///< set while a grouped list is written
    bool grouped = false;
    bool inAggregate = false;
    bool aggregatesAllowed = false;
};

/// The argument that stands for a parameter of a table function.
struct Substitution
{
    const Expression *argument = nullptr;
    SqlType type;
    const Scope *scope = nullptr;
    bool constant = false;
};

/// Where a value is going.
struct Target
{
    SqlType type;
    Conversion conversion = Conversion::Cast;
    QString table;
    QString column;
};

/// One core of a query with its items still open to conversion.
struct CorePlan
{
    const SelectCore *core = nullptr;
    std::unique_ptr<Scope> scope;
    QString from;
    QString where;
    std::vector<Operand> items;
    std::vector<QString> names;
    std::vector<QString> itemTexts; ///< of plain columns, to find ORDER BY items again
    std::vector<const Expression *> itemValues;
    QString groupBy;
    QString having;
    QString limit;
    QString level; ///< of a recursive common table: how many steps the row is away from its beginning
};

/// A rendered query.
struct QueryText
{
    QString sql;
    std::vector<ResultColumn> columns;
};

/// The rows that UPDATE or DELETE changes.
struct ChangedRows
{
    std::shared_ptr<const Table> table;
    QString from;                    ///< what they are looked for in; empty when that is the table alone
    QString rowid;                   ///< the number of a row there
    bool throughQuery = false;       ///< `columns` tells what can be assigned
    QHash<QString, QString> columns; ///< of a query, folded: the table's column, empty for a reckoned one
};

class Writer;

/// A function of the dialect.
struct FunctionRow
{
    enum class Gives : quint8 {
        Own,     ///< what the body says
        OfFirst, ///< the type of the first argument
        Int,
        Float,
        Text, ///< as long as a text can be, of Unicode when an argument is
        UnicodeText,
        Letter,
        UnicodeLetter,
        Identifier,
    };
    /// Aggregates and rankings go with OVER; aggregates alone group.
    enum class Role : quint8 { Value, Aggregate, Ranking };

    const char16_t *name; ///< in capitals
    std::size_t least;    ///< arguments
    std::size_t most;
    /// One letter for each argument: t a text in the database's own collation, w any text, i a whole number, f a
    /// floating point number, d a moment, p the name of a part of a date, c a condition, e any value.
    const char *arguments;
    Gives gives;
    const char16_t *sql;                                                  ///< %* all arguments, %1 the first
    Operand (Writer::*body)(const Expression &, const Scope &) = nullptr; ///< instead of `sql`
    Role role = Role::Value;
};

/// Writes one statement. One object compiles one statement.
class Writer
{
public:
    Writer(const Catalogue &catalogue, const VariableTypes &variables, const CompileOptions &options)
        : m_catalogue(catalogue), m_variables(variables), m_options(options)
    {}

    Compiled statement(const Statement &statement);
    Compiled scalar(const Expression &value, const SqlType &target);
    Compiled condition(const Expression &condition);
    Compiled newValues(const UpdateStatement &statement);

private:
    /// While views, functions and defaults are written, literals are constants of the catalogue.
    class Constants
    {
    public:
        Constants(Writer &writer, bool on) : m_writer(writer), m_before(writer.m_constants) { writer.m_constants = on; }
        ~Constants() { m_writer.m_constants = m_before; }
        Constants(const Constants &) = delete;
        Constants &operator=(const Constants &) = delete;

    private:
        Writer &m_writer;
        bool m_before;
    };

    // Values (writer.cpp, convert.cpp)
    QString parameter(Parameter parameter);
    QString constantText(const Parameter &parameter) const;
    void need(const Parameter &parameter, bool value);
    const Literal &literalOf(const Expression &node) const;
    bool isWhole(const Expression &node, qint64 value) const;
    Operand literal(const Expression &node);
    Operand variable(const Expression &node);
    Operand variableOf(const QString &name, const SqlType &type) const;
    Operand system(const QString &name, const SqlType &type);
    QString text(Operand &operand);
    QString collated(Operand &operand);
    QString convert(Operand &operand, const Target &target);
    QString converted(const Operand &operand, const Target &target);
    QString fromInteger(const Operand &operand, const Target &target);
    QString fromDecimal(const Operand &operand, const Target &target);
    QString fromReal(const Operand &operand, const Target &target);
    QString fromText(const Operand &operand, const Target &target);
    QString fromDate(const Operand &operand, const Target &target);
    static QString numberText(const QString &sql, const SqlType &from, int width, const Target &target);
    QString fitted(const QString &sql, const SqlType &from, const Target &target);
    [[noreturn]] void noConversion(const SqlType &from, const SqlType &to) const;

    // Expressions
    Operand value(const Expression &node, const Scope &scope);
    Operand repeated(const Expression &node, const Scope &scope);
    Operand valueNode(const Expression &node, const Scope &scope);
    Operand column(const Expression &node, const Scope &scope);
    Operand collate(const Expression &node, const Scope &scope);
    Operand negate(const Expression &node, const Scope &scope);
    Operand arithmetic(const Expression &node, const Scope &scope);
    Operand arithmeticOf(QChar op, Operand &left, Operand &right);
    Operand chained(const Operand &left, const QString &a, const QString &b, Chain::Form form, const QString &operation,
                    const SqlType &type) const;
    Operand concatenation(Operand &left, Operand &right);
    Operand integerArithmetic(QChar op, Operand &left, Operand &right, const SqlType &type);
    Operand decimalArithmetic(QChar op, Operand &left, Operand &right);
    Operand dateArithmetic(QChar op, Operand &left, Operand &right);
    Operand caseValue(const Expression &node, const Scope &scope);
    Operand cast(const Expression &node, const Scope &scope);
    Operand scalarSubquery(const Expression &node, const Scope &scope);
    Operand made(QString sql, const SqlType &type) const;
    SqlType decimalTypeOf(Operand &operand);
    bool sameExpression(const Expression &left, const Expression &right);
    bool isGrouped(const Expression &node, const Scope &scope);
    bool groupedAway(const Expression &node, const Scope &scope);

    // Conditions
    QString conditionText(const Expression &node, const Scope &scope);
    QString joinedConditions(const Expression &node, const Scope &scope);
    QString compare(const QString &op, Operand &left, Operand &right);
    SqlType comparisonType(Operand &left, Operand &right);
    QString inList(const Expression &node, const Scope &scope);
    QString inQuery(const Expression &node, const Scope &scope);
    QString like(const Expression &node, const Scope &scope);
    QString between(const Expression &node, const Scope &scope);
    QString quantified(const Expression &node, const Scope &scope);

    // Functions
    friend bool isAggregate(const Expression &node);
    static const FunctionRow *functionNamed(const QString &name);
    Operand called(const FunctionRow &row, const Expression &node, const Scope &scope);
    Operand function(const Expression &node, const Scope &scope);
    Operand isNullFunction(const Expression &node, const Scope &scope);
    Operand coalesce(const Expression &node, const Scope &scope);
    Operand nullIf(const Expression &node, const Scope &scope);
    Operand iif(const Expression &node, const Scope &scope);
    Operand concat(const Expression &node, const Scope &scope);
    Operand dataLength(const Expression &node, const Scope &scope);
    Operand str(const Expression &node, const Scope &scope);
    Operand mathFunction(const Expression &node, const Scope &scope);
    Operand power(const Expression &node, const Scope &scope);
    Operand dateAdd(const Expression &node, const Scope &scope);
    Operand systemFunction(const Expression &node, const Scope &scope);
    Operand aggregate(const Expression &node, const Scope &scope);
    Operand aggregateOf(const Expression &node, Operand &argument, const QString &window);
    Operand ranking(const Expression &node, const Scope &scope);
    QString windowText(const Window &window, const Scope &scope);
    QString datePart(const Expression &node) const;
    QString argumentAs(const Expression &node, const Scope &scope, const SqlType &type);

    // Queries
    QueryText query(const Query &query, const Scope *outer, const std::vector<Target> *targets = nullptr);
    QueryText recursiveText(const CommonTable &table, const Scope &scope);
    QString levelText(const CommonTable &table, const CorePlan &plan) const;
    QString commonTables(const std::vector<CommonTable> &tables, Scope &scope);
    static bool refersTo(const TableSource &source, const QString &name);
    static bool refersTo(const QueryBody &body, const QString &name);
    void planBody(const QueryBody &body, const Scope *outer, std::vector<CorePlan> &plans);
    CorePlan planCore(const SelectCore &core, const Scope *outer);
    void planItems(CorePlan &plan);
    void planRowid(CorePlan &plan);
    void planItem(CorePlan &plan, const SelectItem &item);
    void expandStar(CorePlan &plan, const Expression &star);
    QString limitText(const Expression &count, const Scope &scope);
    QString bodyText(const QueryBody &body, std::vector<CorePlan> &plans, std::size_t &next,
                     const std::vector<Target> &targets);
    std::vector<Target> outputTargets(std::vector<CorePlan> &plans, const std::vector<Target> *targets, int line);
    QString tailText(const Query &query, const Scope &scope);
    QString itemText(Operand &operand, const Target &target);
    QString coreText(CorePlan &plan, const std::vector<Target> &targets);
    QString orderText(const Query &query, std::vector<CorePlan> &plans);
    QString orderItem(const OrderItem &item, CorePlan &plan, bool compound);
    std::optional<std::size_t> outputPosition(const Expression &node, const CorePlan &plan);
    QueryText xmlText(const Query &query, const QueryText &rows) const;
    QueryText schemaView(const QString &view) const;
    bool singleRow(const Query &query);
    bool pinnedByKey(const SelectCore &core) const;
    static bool hasAggregate(const Expression &node);

    // Tables
    QString source(const TableSource &source, Scope &scope, const Scope *outer);
    QString named(const TableSource &source, Scope &scope);
    QString tableFunction(const TableSource &source, Scope &scope, const Scope *outer);
    QString derived(const TableSource &source, Scope &scope, const Scope *outer);
    QString values(const TableSource &source, Scope &scope, const Scope *outer);
    QString join(const TableSource &source, Scope &scope, const Scope *outer);
    void addSource(Scope &scope, Source source, int line) const;
    QString nextAlias() { return QString::fromUtf16(u"t%1").arg(++m_aliases); }
    static Source tableSource(const Table &table, const QString &alias, const QString &qualifier);
    const CommonShape *findCommon(const QString &name, const Scope &scope) const;
    QueryText moduleQuery(const Query &query, const std::vector<QString> &columns);

    // Statements
    void select(const SelectStatement &statement);
    std::vector<Target> assignTargets(const SelectStatement &statement);
    bool assignsInTurn(const Query &query);
    void assignInTurn(const Query &query, const std::vector<Target> &targets);
    void planRowItems(CorePlan &plan);
    void selectInto(const SelectStatement &statement, const QueryText &text);
    void insert(const InsertStatement &statement);
    QString insertRows(const InsertStatement &statement, const Table &table, const std::vector<const Column *> &columns,
                       const std::vector<const Column *> &defaults);
    QString insertQuery(const InsertStatement &statement, const Table &table,
                        const std::vector<const Column *> &columns, const std::vector<const Column *> &defaults,
                        const Scope &scope);
    std::vector<const Column *> insertColumns(const InsertStatement &statement, const Table &table) const;
    std::vector<const Column *> defaultedColumns(const std::vector<const Column *> &given, const Table &table) const;
    QString assigned(Operand &operand, const Column &column, const Table &table, const QString &verb);
    QString defaultText(const Column &column, const Table &table, const QString &verb);
    void update(const UpdateStatement &statement);
    void remove(const DeleteStatement &statement);
    void truncate(const TruncateStatement &statement);
    QString returning(const std::vector<SelectItem> &items, const Table &table, const QString &allowed);
    std::shared_ptr<const Table> writableTable(const ObjectName &name, int line) const;
    template <class Change> ChangedRows changedRows(const Change &statement, Scope &scope);
    ChangedRows rowsOfQuery(const Query &query, const std::vector<QString> &names, const QString &alias, Scope &scope);
    bool looksAtChanges(const Table &table) const;
    static QString rowsFoundFirst(const Table &table, const QString &where, const QString &limit);
    QString updateInPlace(const UpdateStatement &statement, const ChangedRows &rows, const Scope &scope);
    void findAlone(ChangedRows &rows, Scope &scope);
    QString foundValues(const UpdateStatement &statement, const ChangedRows &rows, const Scope &scope,
                        QStringList &columns);
    QString updateFound(const UpdateStatement &statement, const ChangedRows &rows, const Scope &scope);
    QString assignment(const Assignment &assignment, const ChangedRows &rows, const Scope &scope, QString &column);

    // Definitions
    void createTable(const CreateTableStatement &statement);
    QString columnText(const Table &table, const Column &column, bool withDefault);
    QString constraintText(const Table &table, const TableConstraint &constraint);
    QString foreignKeyText(const Table &table, const ForeignKey &key);
    void createIndex(const CreateIndexStatement &statement);
    void alterTable(const AlterTableStatement &statement);
    QStringList addedConstraint(const Table &table, const TableConstraint &constraint) const;
    void drop(const DropStatement &statement);
    void module(const Statement &statement);
    Scope columnScope(const Table &table) const;

    const Catalogue &m_catalogue;
    const VariableTypes &m_variables;
    const CompileOptions &m_options;
    Compiled m_out;
    QHash<QString, Substitution> m_substitutions;
    const SelectCore *m_rowCore = nullptr;            ///< assigned row after row: it gives m_rowItems
    std::vector<const Expression *> m_rowItems;       ///< what the rows decide in it
    QHash<const Expression *, QString> m_rowValues;   ///< parts that are variables of the row here
    std::vector<std::shared_ptr<const Table>> m_read; ///< the tables that queries of the statement look at
    const SelectCore *m_rowidCore = nullptr;          ///< it gives the row numbers of its table as last column
    std::vector<QString> m_rowidColumns;              ///< the table's columns behind its other ones, empty for values
    bool m_constants = false;                         ///< literals belong to the catalogue, not to the batch
    bool m_inline = false;                            ///< literals are written into the text: data definition
    int m_aliases = 0;
    int m_repeated = 0;
    int m_moduleDepth = 0;
    int m_maxRecursion = Statement::DefaultRecursion;
};

/// What a query offers under an alias to the one that reads from it.
Source shapeSource(const std::vector<ResultColumn> &columns, const QString &alias, const QString &name);
/// Gives the columns of a derived, common or view table the names that its definition lists, if it does.
void renameColumns(std::vector<ResultColumn> &columns, const std::vector<QString> &names, const QString &owner,
                   int line);
/// "name" with inner quotes doubled.
QString quotedName(const QString &name);
/// 'text' with inner quotes doubled.
QString quotedText(const QString &text);
bool sameName(QStringView a, QStringView b);
/// COUNT, SUM … without a window.
bool isAggregate(const Expression &node);
/// The list of names as "a","b".
QString nameListText(const std::vector<QString> &names);
/// Refuses an order that nobody would see: of a query inside of another one, without TOP or OFFSET.
void refuseOrder(const Query &query);
/// Texts are searched in the database's own collation: any other is refused.
void refuseCollation(const Expression &node, const QString &where);
[[noreturn]] void refuseTwice(const QString &column, int line);
/// Whether a foreign key of another table, but for those that are dropped before, points to the table.
bool isReferenced(const Table &table, const Catalogue &catalogue, const QSet<QString> &dropped);
/// The type of a system value, or nothing when there is none of that name.
std::optional<SqlType> systemType(const QString &name);
/// How messages and SQL call a kind: its number.
QString kindNumber(Kind kind);

} // namespace tsql
