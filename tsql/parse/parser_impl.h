#pragma once

#include "tsql/parse/parser.h"

namespace tsql {

/// Recursive descent over the tokens of one batch. One object parses one text.
class Parser
{
public:
    explicit Parser(const QString &text);

    Batch ParseBatch();

private:
    /// Keeps a text of endless nesting from exhausting the stack.
    class Depth
    {
    public:
        explicit Depth(Parser &parser);
        ~Depth() { --m_parser.m_depth; }
        Depth(const Depth &) = delete;
        Depth &operator=(const Depth &) = delete;

    private:
        Parser &m_parser;
    };

    // Tokens
    const Token &Peek(std::size_t ahead = 0) const;
    const Token &Take();
    bool At(QLatin1String word, std::size_t ahead = 0) const;
    bool AtSymbol(QLatin1String symbol, std::size_t ahead = 0) const;
    bool Accept(QLatin1String word);
    bool AcceptSymbol(QLatin1String symbol);
    void Expect(QLatin1String word);
    void ExpectSymbol(QLatin1String symbol);
    bool AtName(std::size_t ahead = 0) const;
    bool AtEnd() const { return Peek().kind == TokenKind::End; }
    [[noreturn]] void Refuse() const;
    [[noreturn]] void Unsupported(const QString &what) const;
    QString TextBetween(std::size_t firstToken) const;

    // Names, numbers and types
    QString Name();
    ObjectName ParseObjectName();
    std::vector<QString> NameList();
    QString AcceptAlias();
    qint64 FixedInteger();
    QString FixedText();
    SqlType Type();
    SqlType SizedText(Kind kind);
    SqlType DecimalType();

    // Expressions
    ExpressionPtr Make(ExpressionKind kind) const;
    ExpressionPtr Condition() { return OrExpression(); }
    ExpressionPtr ParseValue() { return Additive(); }
    ExpressionPtr OrExpression();
    ExpressionPtr AndExpression();
    ExpressionPtr NotExpression();
    ExpressionPtr Predicate();
    ExpressionPtr PredicateTail(ExpressionPtr left);
    ExpressionPtr CompareTail(ExpressionPtr left, const QString &op);
    ExpressionPtr Additive();
    ExpressionPtr Multiplicative();
    ExpressionPtr Unary();
    ExpressionPtr Primary();
    ExpressionPtr PrimaryWord();
    ExpressionPtr ParseLiteral();
    ExpressionPtr Parenthesised();
    ExpressionPtr CaseExpression();
    ExpressionPtr CastExpression(bool tryCast);
    ExpressionPtr ConvertExpression(bool tryCast);
    ExpressionPtr FunctionCall(const QString &name);
    ExpressionPtr ColumnReference();
    std::unique_ptr<Window> ParseWindow();
    std::vector<ExpressionPtr> ValueList();
    std::vector<OrderItem> OrderItems();
    void CheckChain(int &length) const;

    // Queries
    Query ParseQuery();
    QueryPtr Subquery();
    std::vector<CommonTable> CommonTables();
    std::unique_ptr<QueryBody> UnionBody();
    std::unique_ptr<QueryBody> IntersectBody();
    std::unique_ptr<QueryBody> BodyPrimary();
    std::unique_ptr<SelectCore> ParseSelectCore();
    void QueryTail(Query &query);
    void ForXml(Query &query);
    SelectItem ParseSelectItem();
    std::vector<SelectItem> SelectItems();
    std::vector<SelectItem> OutputClause();
    ExpressionPtr TopClause(bool *percent);
    TableSourcePtr TableSources();
    TableSourcePtr JoinedTable();
    TableSourcePtr TablePrimary();
    TableSourcePtr DerivedTable();
    bool AcceptJoin(JoinKind &kind);
    void SkipHints();
    void SkipOptionClause();
    std::vector<std::vector<ExpressionPtr>> RowValues();

    // Statements
    StatementPtr ParseStatement();
    StatementPtr StatementBody();
    StatementPtr WithStatement();
    StatementPtr ParseSelectStatement(std::vector<CommonTable> with);
    StatementPtr ParseInsertStatement(std::vector<CommonTable> with);
    ObjectName ChangedTable();
    template <class Change> void ParseChangedRows(Change &change);
    void RefuseUnsupported() const;
    StatementPtr ParseUpdateStatement(std::vector<CommonTable> with);
    StatementPtr ParseDeleteStatement(std::vector<CommonTable> with);
    StatementPtr ParseTruncateStatement();
    StatementPtr ParseDeclareStatement();
    StatementPtr setStatement();
    StatementPtr setVariable();
    StatementPtr setIdentityInsert();
    StatementPtr setOption();
    StatementPtr ParseIfStatement();
    StatementPtr ParseWhileStatement();
    StatementPtr BeginStatement();
    StatementPtr TryStatement();
    StatementPtr ParseReturnStatement();
    StatementPtr ParseExecuteStatement(bool keyword);
    ExecuteArgument ParseExecuteArgument();
    StatementPtr Transaction(StatementKind kind);
    StatementPtr ThrowStatement();
    StatementPtr RaiseErrorStatement();
    StatementPtr ParsePrintStatement();
    std::vector<StatementPtr> StatementsUntilEnd();
    bool AtStatementEnd() const;

    // Definitions
    StatementPtr CreateStatement();
    StatementPtr AlterStatement();
    StatementPtr ParseCreateTable();
    void TableElements(CreateTableStatement &table);
    void TableElement(std::vector<ColumnDefinition> &columns, std::vector<TableConstraint> &constraints);
    bool AtConstraint() const;
    TableConstraint Constraint(const QString &forColumn);
    void KeyColumns(TableConstraint &constraint);
    void ParseForeignKey(TableConstraint &constraint);
    KeyAction ParseKeyAction();
    void ParseColumnDefinition(std::vector<ColumnDefinition> &columns, std::vector<TableConstraint> &constraints);
    void Identity(ColumnDefinition &column);
    void SkipIndexOptions();
    StatementPtr ParseCreateIndex();
    StatementPtr ParseCreateView(bool replace);
    StatementPtr ParseCreateProcedure(bool replace);
    StatementPtr ParseCreateFunction(bool replace);
    std::vector<ParameterDefinition> Parameters();
    void SkipModuleOptions();
    StatementPtr ParseAlterTable();
    StatementPtr ParseDropStatement();

    QString m_text;
    Tokens m_tokens;
    std::size_t m_pos = 0;
    int m_depth = 0;
    int m_maxRecursion = Statement::DefaultRecursion; ///< of the statement at hand
    int m_markers = 0;                                ///< question marks so far
    std::vector<int> m_fixed;
};

/// Words that name no column, table or alias unless they are quoted.
bool IsReserved(const QString &word);

} // namespace tsql
