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

    bool IsNull() const { return type.kind == Kind::Null; }
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
struct FunctionRow // NOLINT(clang-analyzer-optin.performance.Padding): in the order in which a row is read
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

    Compiled WriteStatement(const Statement &statement);
    Compiled Scalar(const Expression &value, const SqlType &target);
    Compiled Condition(const Expression &condition);
    Compiled NewValues(const UpdateStatement &statement);

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
    QString AddParameter(Parameter parameter);
    QString ConstantText(const Parameter &parameter) const;
    void Need(const Parameter &parameter, bool value);
    const Literal &LiteralOf(const Expression &node) const;
    bool IsWhole(const Expression &node, qint64 value) const;
    Operand WriteLiteral(const Expression &node);
    Operand WriteVariable(const Expression &node);
    Operand VariableOf(const QString &name, const SqlType &type) const;
    Operand System(const QString &name, const SqlType &type);
    QString text(Operand &operand);
    QString Collated(Operand &operand);
    QString Convert(Operand &operand, const Target &target);
    QString Converted(const Operand &operand, const Target &target);
    QString FromInteger(const Operand &operand, const Target &target);
    QString FromDecimal(const Operand &operand, const Target &target);
    QString FromReal(const Operand &operand, const Target &target);
    QString FromText(const Operand &operand, const Target &target);
    QString FromDate(const Operand &operand, const Target &target);
    static QString NumberText(const QString &sql, const SqlType &from, int width, const Target &target);
    QString Fitted(const QString &sql, const SqlType &from, const Target &target);
    [[noreturn]] void NoConversion(const SqlType &from, const SqlType &to) const;

    // Expressions
    Operand WriteValue(const Expression &node, const Scope &scope);
    Operand Repeated(const Expression &node, const Scope &scope);
    Operand ValueNode(const Expression &node, const Scope &scope);
    Operand WriteColumn(const Expression &node, const Scope &scope);
    Operand Collate(const Expression &node, const Scope &scope);
    Operand Negate(const Expression &node, const Scope &scope);
    Operand Arithmetic(const Expression &node, const Scope &scope);
    Operand ArithmeticOf(QChar op, Operand &left, Operand &right);
    Operand Chained(const Operand &left, const QString &a, const QString &b, Chain::Form form, const QString &operation,
                    const SqlType &type) const;
    Operand Concatenation(Operand &left, Operand &right);
    Operand IntegerArithmetic(QChar op, Operand &left, Operand &right, const SqlType &type);
    Operand DecimalArithmetic(QChar op, Operand &left, Operand &right);
    Operand DateArithmetic(QChar op, Operand &left, Operand &right);
    Operand CaseValue(const Expression &node, const Scope &scope);
    Operand WriteCast(const Expression &node, const Scope &scope);
    Operand ScalarSubquery(const Expression &node, const Scope &scope);
    Operand Made(QString sql, const SqlType &type) const;
    SqlType DecimalTypeOf(Operand &operand);
    bool SameExpression(const Expression &left, const Expression &right);
    bool IsGrouped(const Expression &node, const Scope &scope);
    bool GroupedAway(const Expression &node, const Scope &scope);

    // Conditions
    QString ConditionText(const Expression &node, const Scope &scope);
    QString JoinedConditions(const Expression &node, const Scope &scope);
    QString Compare(const QString &op, Operand &left, Operand &right);
    SqlType ComparisonType(Operand &left, Operand &right);
    QString InList(const Expression &node, const Scope &scope);
    QString InQuery(const Expression &node, const Scope &scope);
    QString Like(const Expression &node, const Scope &scope);
    QString Between(const Expression &node, const Scope &scope);
    QString Quantified(const Expression &node, const Scope &scope);

    // Functions
    friend bool IsAggregate(const Expression &node);
    static const FunctionRow *FunctionNamed(const QString &name);
    Operand Called(const FunctionRow &row, const Expression &node, const Scope &scope);
    Operand WriteFunction(const Expression &node, const Scope &scope);
    Operand IsNullFunction(const Expression &node, const Scope &scope);
    Operand Coalesce(const Expression &node, const Scope &scope);
    Operand NullIf(const Expression &node, const Scope &scope);
    Operand Iif(const Expression &node, const Scope &scope);
    Operand Concat(const Expression &node, const Scope &scope);
    Operand DataLength(const Expression &node, const Scope &scope);
    Operand Str(const Expression &node, const Scope &scope);
    Operand MathFunction(const Expression &node, const Scope &scope);
    Operand Power(const Expression &node, const Scope &scope);
    Operand DateAdd(const Expression &node, const Scope &scope);
    Operand SystemFunction(const Expression &node, const Scope &scope);
    Operand WriteAggregate(const Expression &node, const Scope &scope);
    Operand AggregateOf(const Expression &node, Operand &argument, const QString &window);
    Operand WriteRanking(const Expression &node, const Scope &scope);
    QString WindowText(const Window &window, const Scope &scope);
    QString DatePart(const Expression &node) const;
    QString ArgumentAs(const Expression &node, const Scope &scope, const SqlType &type);

    // Queries
    QueryText WriteQuery(const Query &query, const Scope *outer, const std::vector<Target> *targets = nullptr);
    QueryText RecursiveText(const CommonTable &table, const Scope &scope);
    QString LevelText(const CommonTable &table, const CorePlan &plan) const;
    QString CommonTables(const std::vector<CommonTable> &tables, Scope &scope);
    static bool RefersTo(const TableSource &source, const QString &name);
    static bool RefersTo(const QueryBody &body, const QString &name);
    void PlanBody(const QueryBody &body, const Scope *outer, std::vector<CorePlan> &plans);
    CorePlan PlanCore(const SelectCore &core, const Scope *outer);
    void PlanItems(CorePlan &plan);
    void PlanRowid(CorePlan &plan);
    void PlanItem(CorePlan &plan, const SelectItem &item);
    void ExpandStar(CorePlan &plan, const Expression &star);
    QString LimitText(const Expression &count, const Scope &scope);
    QString BodyText(const QueryBody &body, std::vector<CorePlan> &plans, std::size_t &next,
                     const std::vector<Target> &targets);
    std::vector<Target> OutputTargets(std::vector<CorePlan> &plans, const std::vector<Target> *targets, int line);
    QString TailText(const Query &query, const Scope &scope);
    QString ItemText(Operand &operand, const Target &target);
    QString CoreText(CorePlan &plan, const std::vector<Target> &targets);
    QString OrderText(const Query &query, std::vector<CorePlan> &plans);
    QString WriteOrderItem(const OrderItem &item, CorePlan &plan, bool compound);
    std::optional<std::size_t> OutputPosition(const Expression &node, const CorePlan &plan);
    QueryText XmlText(const Query &query, const QueryText &rows) const;
    QueryText SchemaView(const QString &view) const;
    bool SingleRow(const Query &query);
    bool PinnedByKey(const SelectCore &core) const;
    static bool HasAggregate(const Expression &node);

    // Tables
    QString WriteSource(const TableSource &source, Scope &scope, const Scope *outer);
    QString WriteNamed(const TableSource &source, Scope &scope);
    QString TableFunction(const TableSource &source, Scope &scope, const Scope *outer);
    QString WriteDerived(const TableSource &source, Scope &scope, const Scope *outer);
    QString WriteValues(const TableSource &source, Scope &scope, const Scope *outer);
    QString WriteJoin(const TableSource &source, Scope &scope, const Scope *outer);
    void AddSource(Scope &scope, Source source, int line) const;
    QString NextAlias() { return QString::fromUtf16(u"t%1").arg(++m_aliases); }
    static Source SourceOf(const Table &table, const QString &alias, const QString &qualifier);
    const CommonShape *FindCommon(const QString &name, const Scope &scope) const;
    QueryText ModuleQuery(const Query &query, const std::vector<QString> &columns);

    // Statements
    void WriteSelect(const SelectStatement &statement);
    std::vector<Target> AssignTargets(const SelectStatement &statement);
    bool AssignsInTurn(const Query &query);
    void AssignInTurn(const Query &query, const std::vector<Target> &targets);
    void PlanRowItems(CorePlan &plan);
    void SelectInto(const SelectStatement &statement, const QueryText &text);
    void WriteInsert(const InsertStatement &statement);
    QString InsertRows(const InsertStatement &statement, const Table &table, const std::vector<const Column *> &columns,
                       const std::vector<const Column *> &defaults);
    QString InsertQuery(const InsertStatement &statement, const Table &table,
                        const std::vector<const Column *> &columns, const std::vector<const Column *> &defaults,
                        const Scope &scope);
    std::vector<const Column *> InsertColumns(const InsertStatement &statement, const Table &table) const;
    std::vector<const Column *> DefaultedColumns(const std::vector<const Column *> &given, const Table &table) const;
    QString Assigned(Operand &operand, const Column &column, const Table &table, const QString &verb);
    QString DefaultText(const Column &column, const Table &table, const QString &verb);
    void WriteUpdate(const UpdateStatement &statement);
    void Remove(const DeleteStatement &statement);
    void WriteTruncate(const TruncateStatement &statement);
    QString Returning(const std::vector<SelectItem> &items, const Table &table, const QString &allowed);
    std::shared_ptr<const Table> WritableTable(const ObjectName &name, int line) const;
    template <class Change> ChangedRows FindChangedRows(const Change &statement, Scope &scope);
    ChangedRows RowsOfQuery(const Query &query, const std::vector<QString> &names, const QString &alias, Scope &scope);
    bool LooksAtChanges(const Table &table) const;
    static QString RowsFoundFirst(const Table &table, const QString &where, const QString &limit);
    QString UpdateInPlace(const UpdateStatement &statement, const ChangedRows &rows, const Scope &scope);
    void FindAlone(ChangedRows &rows, Scope &scope);
    QString FoundValues(const UpdateStatement &statement, const ChangedRows &rows, const Scope &scope,
                        QStringList &columns);
    QString UpdateFound(const UpdateStatement &statement, const ChangedRows &rows, const Scope &scope);
    QString WriteAssignment(const Assignment &assignment, const ChangedRows &rows, const Scope &scope, QString &column);

    // Definitions
    void WriteCreateTable(const CreateTableStatement &statement);
    QString ColumnText(const Table &table, const Column &column, bool withDefault);
    QString ConstraintText(const Table &table, const TableConstraint &constraint);
    QString ForeignKeyText(const Table &table, const ForeignKey &key);
    void WriteCreateIndex(const CreateIndexStatement &statement);
    void WriteAlterTable(const AlterTableStatement &statement);
    QStringList AddedConstraint(const Table &table, const TableConstraint &constraint) const;
    void WriteDrop(const DropStatement &statement);
    void Module(const Statement &statement);
    Scope ColumnScope(const Table &table) const;

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
Source ShapeSource(const std::vector<ResultColumn> &columns, const QString &alias, const QString &name);
/// Gives the columns of a derived, common or view table the names that its definition lists, if it does.
void RenameColumns(std::vector<ResultColumn> &columns, const std::vector<QString> &names, const QString &owner,
                   int line);
/// "name" with inner quotes doubled.
QString QuotedName(const QString &name);
/// 'text' with inner quotes doubled.
QString QuotedText(const QString &text);
bool SameName(QStringView a, QStringView b);
/// COUNT, SUM … without a window.
bool IsAggregate(const Expression &node);
/// The list of names as "a","b".
QString NameListText(const std::vector<QString> &names);
/// Refuses an order that nobody would see: of a query inside of another one, without TOP or OFFSET.
void RefuseOrder(const Query &query);
/// Texts are searched in the database's own collation: any other is refused.
void RefuseCollation(const Expression &node, const QString &where);
[[noreturn]] void RefuseTwice(const QString &column, int line);
/// Whether a foreign key of another table, but for those that are dropped before, points to the table.
bool IsReferenced(const Table &table, const Catalogue &catalogue, const QSet<QString> &dropped);
/// The type of a system value, or nothing when there is none of that name.
std::optional<SqlType> SystemType(const QString &name);
/// How messages and SQL call a kind: its number.
QString KindNumber(Kind kind);

} // namespace tsql
