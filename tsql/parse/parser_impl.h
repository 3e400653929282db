#pragma once

#include "tsql/parse/parser.h"

namespace tsql {

/// Recursive descent over the tokens of one batch. One object parses one text.
class Parser
{
public:
    explicit Parser(const QString &text);

    Batch batch();

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
    const Token &peek(std::size_t ahead = 0) const;
    const Token &take();
    bool at(QLatin1String word, std::size_t ahead = 0) const;
    bool atSymbol(QLatin1String symbol, std::size_t ahead = 0) const;
    bool accept(QLatin1String word);
    bool acceptSymbol(QLatin1String symbol);
    void expect(QLatin1String word);
    void expectSymbol(QLatin1String symbol);
    bool atName(std::size_t ahead = 0) const;
    bool atEnd() const { return peek().kind == TokenKind::End; }
    [[noreturn]] void refuse() const;
    [[noreturn]] void unsupported(const QString &what) const;
    QString textBetween(std::size_t firstToken) const;

    // Names, numbers and types
    QString name();
    ObjectName objectName();
    std::vector<QString> nameList();
    QString acceptAlias();
    qint64 fixedInteger();
    QString fixedText();
    SqlType type();
    SqlType sizedText(Kind kind);
    SqlType decimalType();

    // Expressions
    ExpressionPtr make(ExpressionKind kind) const;
    ExpressionPtr condition() { return orExpression(); }
    ExpressionPtr value() { return additive(); }
    ExpressionPtr orExpression();
    ExpressionPtr andExpression();
    ExpressionPtr notExpression();
    ExpressionPtr predicate();
    ExpressionPtr predicateTail(ExpressionPtr left);
    ExpressionPtr compareTail(ExpressionPtr left, const QString &op);
    ExpressionPtr additive();
    ExpressionPtr multiplicative();
    ExpressionPtr unary();
    ExpressionPtr primary();
    ExpressionPtr primaryWord();
    ExpressionPtr literal();
    ExpressionPtr parenthesised();
    ExpressionPtr caseExpression();
    ExpressionPtr castExpression(bool tryCast);
    ExpressionPtr convertExpression(bool tryCast);
    ExpressionPtr functionCall(const QString &name);
    ExpressionPtr columnReference();
    std::unique_ptr<Window> window();
    std::vector<ExpressionPtr> valueList();
    std::vector<OrderItem> orderItems();
    void chain(int &length) const;

    // Queries
    Query query();
    QueryPtr subquery();
    std::vector<CommonTable> commonTables();
    std::unique_ptr<QueryBody> unionBody();
    std::unique_ptr<QueryBody> intersectBody();
    std::unique_ptr<QueryBody> bodyPrimary();
    std::unique_ptr<SelectCore> selectCore();
    void queryTail(Query &query);
    void forXml(Query &query);
    SelectItem selectItem();
    std::vector<SelectItem> selectItems();
    std::vector<SelectItem> outputClause();
    ExpressionPtr topClause(bool *percent);
    TableSourcePtr tableSources();
    TableSourcePtr joinedTable();
    TableSourcePtr tablePrimary();
    TableSourcePtr derivedTable();
    bool acceptJoin(JoinKind &kind);
    void skipHints();
    void skipOptionClause();
    std::vector<std::vector<ExpressionPtr>> rowValues();

    // Statements
    StatementPtr statement();
    StatementPtr statementBody();
    StatementPtr withStatement();
    StatementPtr selectStatement(std::vector<CommonTable> with);
    StatementPtr insertStatement(std::vector<CommonTable> with);
    ObjectName changedTable();
    template <class Change> void changedRows(Change &change);
    void refuseUnsupported() const;
    StatementPtr updateStatement(std::vector<CommonTable> with);
    StatementPtr deleteStatement(std::vector<CommonTable> with);
    StatementPtr truncateStatement();
    StatementPtr declareStatement();
    StatementPtr setStatement();
    StatementPtr setVariable();
    StatementPtr setIdentityInsert();
    StatementPtr setOption();
    StatementPtr ifStatement();
    StatementPtr whileStatement();
    StatementPtr beginStatement();
    StatementPtr tryStatement();
    StatementPtr returnStatement();
    StatementPtr executeStatement(bool keyword);
    ExecuteArgument executeArgument();
    StatementPtr transaction(StatementKind kind);
    StatementPtr throwStatement();
    StatementPtr raiseErrorStatement();
    StatementPtr printStatement();
    std::vector<StatementPtr> statementsUntilEnd();
    bool atStatementEnd() const;

    // Definitions
    StatementPtr createStatement();
    StatementPtr alterStatement();
    StatementPtr createTable();
    void tableElements(CreateTableStatement &table);
    void tableElement(std::vector<ColumnDefinition> &columns, std::vector<TableConstraint> &constraints);
    bool atConstraint() const;
    TableConstraint constraint(const QString &forColumn);
    void keyColumns(TableConstraint &constraint);
    void foreignKey(TableConstraint &constraint);
    KeyAction keyAction();
    void columnDefinition(std::vector<ColumnDefinition> &columns, std::vector<TableConstraint> &constraints);
    void identity(ColumnDefinition &column);
    void skipIndexOptions();
    StatementPtr createIndex();
    StatementPtr createView(bool replace);
    StatementPtr createProcedure(bool replace);
    StatementPtr createFunction(bool replace);
    std::vector<ParameterDefinition> parameters();
    void skipModuleOptions();
    StatementPtr alterTable();
    StatementPtr dropStatement();

    QString m_text;
    Tokens m_tokens;
    std::size_t m_pos = 0;
    int m_depth = 0;
    int m_maxRecursion = Statement::DefaultRecursion; ///< of the statement at hand
    int m_markers = 0;                                ///< question marks so far
    std::vector<int> m_fixed;
};

/// Words that name no column, table or alias unless they are quoted.
bool isReserved(const QString &word);

} // namespace tsql
