#include "tsql/parse/parser_impl.h"
#include "tsql/values/error.h"

using namespace Qt::StringLiterals;

namespace tsql {

ExpressionPtr Parser::Make(ExpressionKind kind) const
{
    auto node = std::make_unique<Expression>();
    node->kind = kind;
    node->line = Peek().line;
    return node;
}

ExpressionPtr Parser::OrExpression()
{
    const Depth depth(*this);
    ExpressionPtr left = AndExpression();
    int length = 0;
    while (At(QLatin1String("OR"))) {
        CheckChain(length);
        ExpressionPtr node = Make(ExpressionKind::Or);
        Take();
        node->args.push_back(std::move(left));
        node->args.push_back(AndExpression());
        left = std::move(node);
    }
    return left;
}

ExpressionPtr Parser::AndExpression()
{
    ExpressionPtr left = NotExpression();
    int length = 0;
    while (At(QLatin1String("AND"))) {
        CheckChain(length);
        ExpressionPtr node = Make(ExpressionKind::And);
        Take();
        node->args.push_back(std::move(left));
        node->args.push_back(NotExpression());
        left = std::move(node);
    }
    return left;
}

ExpressionPtr Parser::NotExpression()
{
    const Depth depth(*this);
    if (!At(QLatin1String("NOT")))
        return Predicate();
    ExpressionPtr node = Make(ExpressionKind::Not);
    Take();
    node->args.push_back(NotExpression());
    return node;
}

ExpressionPtr Parser::Predicate()
{
    if (At(QLatin1String("EXISTS"))) {
        ExpressionPtr node = Make(ExpressionKind::Exists);
        Take();
        node->query = Subquery();
        return node;
    }
    return PredicateTail(Additive());
}

ExpressionPtr Parser::CompareTail(ExpressionPtr left, const QString &op)
{
    ExpressionPtr node = Make(ExpressionKind::Compare);
    Take();
    if (op == u"!=")
        node->name = u"<>"_s;
    else if (op == u"!<")
        node->name = u">="_s;
    else if (op == u"!>")
        node->name = u"<="_s;
    else
        node->name = op;
    node->args.push_back(std::move(left));
    const bool all = At(QLatin1String("ALL"));
    if (all || At(QLatin1String("ANY")) || At(QLatin1String("SOME"))) {
        Take();
        node->kind = ExpressionKind::Quantified;
        node->all = all;
        node->query = Subquery();
        return node;
    }
    node->args.push_back(Additive());
    return node;
}

ExpressionPtr Parser::PredicateTail(ExpressionPtr left)
{
    static constexpr QStringView comparisons[] = {u"=", u"<>", u"<", u"<=", u">", u">=", u"!=", u"!<", u"!>"};
    if (Peek().kind == TokenKind::Symbol) {
        const QString op = Peek().text;
        for (const QStringView comparison : comparisons) {
            if (op == comparison)
                return CompareTail(std::move(left), op);
        }
        return left;
    }
    if (At(QLatin1String("IS"))) {
        ExpressionPtr node = Make(ExpressionKind::IsNull);
        Take();
        node->negated = Accept(QLatin1String("NOT"));
        Expect(QLatin1String("NULL"));
        node->args.push_back(std::move(left));
        return node;
    }
    const std::size_t ahead = At(QLatin1String("NOT")) ? 1 : 0;
    ExpressionKind kind = ExpressionKind::Null;
    if (At(QLatin1String("LIKE"), ahead))
        kind = ExpressionKind::Like;
    else if (At(QLatin1String("BETWEEN"), ahead))
        kind = ExpressionKind::Between;
    else if (At(QLatin1String("IN"), ahead))
        kind = ExpressionKind::In;
    else
        return left;
    ExpressionPtr node = Make(kind);
    node->negated = Accept(QLatin1String("NOT"));
    Take();
    node->args.push_back(std::move(left));
    if (kind == ExpressionKind::Like) {
        node->args.push_back(Additive());
        if (Accept(QLatin1String("ESCAPE")))
            node->args.push_back(Additive());
    } else if (kind == ExpressionKind::Between) {
        node->args.push_back(Additive());
        Expect(QLatin1String("AND"));
        node->args.push_back(Additive());
    } else if (AtSymbol(QLatin1String("(")) && (At(QLatin1String("SELECT"), 1) || At(QLatin1String("WITH"), 1))) {
        node->query = Subquery();
    } else {
        ExpectSymbol(QLatin1String("("));
        for (ExpressionPtr &item : ValueList())
            node->args.push_back(std::move(item));
        ExpectSymbol(QLatin1String(")"));
    }
    return node;
}

ExpressionPtr Parser::Additive()
{
    const Depth depth(*this);
    ExpressionPtr left = Multiplicative();
    int length = 0;
    while (Peek().kind == TokenKind::Symbol && Peek().text.size() == 1 &&
           QStringView(u"+-&|^").contains(Peek().text[0])) {
        CheckChain(length);
        ExpressionPtr node = Make(ExpressionKind::Arithmetic);
        node->name = Take().text;
        node->args.push_back(std::move(left));
        node->args.push_back(Multiplicative());
        left = std::move(node);
    }
    return left;
}

ExpressionPtr Parser::Multiplicative()
{
    ExpressionPtr left = Unary();
    int length = 0;
    while (Peek().kind == TokenKind::Symbol && Peek().text.size() == 1 &&
           QStringView(u"*/%").contains(Peek().text[0])) {
        CheckChain(length);
        ExpressionPtr node = Make(ExpressionKind::Arithmetic);
        node->name = Take().text;
        node->args.push_back(std::move(left));
        node->args.push_back(Unary());
        left = std::move(node);
    }
    return left;
}

ExpressionPtr Parser::Unary()
{
    const Depth depth(*this);
    if (AcceptSymbol(QLatin1String("+")))
        return Unary();
    if (AtSymbol(QLatin1String("-")) || AtSymbol(QLatin1String("~"))) {
        ExpressionPtr node = Make(AtSymbol(QLatin1String("-")) ? ExpressionKind::Negate : ExpressionKind::BitNot);
        Take();
        node->args.push_back(Unary());
        return node;
    }
    ExpressionPtr operand = Primary();
    while (At(QLatin1String("COLLATE"))) {
        ExpressionPtr node = Make(ExpressionKind::Collate);
        Take();
        node->name = Name();
        node->args.push_back(std::move(operand));
        operand = std::move(node);
    }
    return operand;
}

ExpressionPtr Parser::Primary()
{
    const Token &token = Peek();
    switch (token.kind) {
    case TokenKind::Literal:
        return ParseLiteral();
    case TokenKind::Variable: {
        ExpressionPtr node = Make(ExpressionKind::Variable);
        node->name = Take().text;
        return node;
    }
    case TokenKind::Quoted:
        return ColumnReference();
    case TokenKind::Word:
        return PrimaryWord();
    case TokenKind::Symbol:
        if (token.text == u"(")
            return Parenthesised();
        if (token.text == u"?") {
            ExpressionPtr node = Make(ExpressionKind::Variable);
            Take();
            node->name = u"?%1"_s.arg(++m_markers);
            return node;
        }
        if (token.text == u"*") {
            ExpressionPtr node = Make(ExpressionKind::Star);
            Take();
            return node;
        }
        break;
    case TokenKind::End:
        break;
    }
    Refuse();
}

ExpressionPtr Parser::PrimaryWord()
{
    const QString word = Peek().text.toUpper();
    if (word == u"NULL") {
        ExpressionPtr node = Make(ExpressionKind::Null);
        Take();
        return node;
    }
    if (word == u"DEFAULT") {
        ExpressionPtr node = Make(ExpressionKind::Default);
        Take();
        return node;
    }
    if (word == u"CASE")
        return CaseExpression();
    if (word == u"CURRENT_TIMESTAMP") {
        ExpressionPtr node = Make(ExpressionKind::Function);
        Take();
        node->name = word;
        return node;
    }
    const bool call = AtSymbol(QLatin1String("("), 1);
    if (call && (word == u"CAST" || word == u"TRY_CAST"))
        return CastExpression(word != u"CAST");
    if (call && (word == u"CONVERT" || word == u"TRY_CONVERT"))
        return ConvertExpression(word != u"CONVERT");
    const bool reservedFunction = word == u"LEFT" || word == u"RIGHT" || word == u"COALESCE" || word == u"NULLIF";
    if (call && (reservedFunction || !IsReserved(word)))
        return FunctionCall(word);
    return ColumnReference();
}

ExpressionPtr Parser::ParseLiteral()
{
    ExpressionPtr node = Make(ExpressionKind::Literal);
    node->literal = Take().literal;
    node->value = m_tokens.literals[static_cast<std::size_t>(node->literal)];
    return node;
}

ExpressionPtr Parser::Parenthesised()
{
    if (At(QLatin1String("SELECT"), 1) || At(QLatin1String("WITH"), 1)) {
        ExpressionPtr node = Make(ExpressionKind::Scalar);
        node->query = Subquery();
        return node;
    }
    ExpectSymbol(QLatin1String("("));
    ExpressionPtr inner = OrExpression();
    ExpectSymbol(QLatin1String(")"));
    return inner;
}

ExpressionPtr Parser::CaseExpression()
{
    ExpressionPtr node = Make(ExpressionKind::Case);
    Take();
    if (!At(QLatin1String("WHEN"))) {
        node->hasOperand = true;
        node->args.push_back(ParseValue());
    }
    if (!At(QLatin1String("WHEN")))
        Refuse();
    while (Accept(QLatin1String("WHEN"))) {
        node->args.push_back(node->hasOperand ? ParseValue() : Condition());
        Expect(QLatin1String("THEN"));
        node->args.push_back(ParseValue());
    }
    if (Accept(QLatin1String("ELSE")))
        node->args.push_back(ParseValue());
    Expect(QLatin1String("END"));
    return node;
}

ExpressionPtr Parser::CastExpression(bool tryCast)
{
    ExpressionPtr node = Make(ExpressionKind::Cast);
    Take();
    node->tryCast = tryCast;
    ExpectSymbol(QLatin1String("("));
    node->args.push_back(ParseValue());
    Expect(QLatin1String("AS"));
    node->type = Type();
    ExpectSymbol(QLatin1String(")"));
    return node;
}

ExpressionPtr Parser::ConvertExpression(bool tryCast)
{
    ExpressionPtr node = Make(ExpressionKind::Cast);
    Take();
    node->tryCast = tryCast;
    ExpectSymbol(QLatin1String("("));
    node->type = Type();
    ExpectSymbol(QLatin1String(","));
    node->args.push_back(ParseValue());
    if (AcceptSymbol(QLatin1String(",")))
        node->args.push_back(ParseValue());
    ExpectSymbol(QLatin1String(")"));
    return node;
}

ExpressionPtr Parser::FunctionCall(const QString &name)
{
    ExpressionPtr node = Make(ExpressionKind::Function);
    Take();
    node->name = name;
    ExpectSymbol(QLatin1String("("));
    if (!AtSymbol(QLatin1String(")"))) {
        node->distinct = Accept(QLatin1String("DISTINCT"));
        if (!node->distinct)
            Accept(QLatin1String("ALL"));
        // The first argument of IIF is a condition.
        node->args.push_back(name == u"IIF" ? Condition() : ParseValue());
        while (AcceptSymbol(QLatin1String(",")))
            node->args.push_back(ParseValue());
    }
    ExpectSymbol(QLatin1String(")"));
    if (Accept(QLatin1String("OVER")))
        node->over = ParseWindow();
    return node;
}

ExpressionPtr Parser::ColumnReference()
{
    ExpressionPtr node = Make(ExpressionKind::Column);
    std::vector<QString> parts{Name()};
    while (AcceptSymbol(QLatin1String("."))) {
        if (AcceptSymbol(QLatin1String("*"))) {
            node->kind = ExpressionKind::Star;
            node->qualifier = parts.back();
            return node;
        }
        parts.push_back(Name());
    }
    if (AtSymbol(QLatin1String("(")))
        Unsupported(parts.back() + u"()"_s);
    node->name = parts.back();
    if (parts.size() > 1)
        node->qualifier = parts[parts.size() - 2];
    return node;
}

std::unique_ptr<Window> Parser::ParseWindow()
{
    auto result = std::make_unique<Window>();
    ExpectSymbol(QLatin1String("("));
    if (Accept(QLatin1String("PARTITION"))) {
        Expect(QLatin1String("BY"));
        result->partition = ValueList();
    }
    if (Accept(QLatin1String("ORDER"))) {
        Expect(QLatin1String("BY"));
        result->order = OrderItems();
    }
    // Of the frames the running one alone.
    if (!result->order.empty() && Accept(QLatin1String("ROWS"))) {
        Expect(QLatin1String("UNBOUNDED"));
        Expect(QLatin1String("PRECEDING"));
        result->rows = true;
    }
    if (At(QLatin1String("ROWS")) || At(QLatin1String("RANGE")))
        Unsupported(Peek().text.toUpper());
    ExpectSymbol(QLatin1String(")"));
    return result;
}

std::vector<ExpressionPtr> Parser::ValueList()
{
    std::vector<ExpressionPtr> values;
    do {
        values.push_back(ParseValue());
    } while (AcceptSymbol(QLatin1String(",")));
    return values;
}

std::vector<OrderItem> Parser::OrderItems()
{
    std::vector<OrderItem> items;
    do {
        OrderItem item;
        item.value = ParseValue();
        item.descending = Accept(QLatin1String("DESC"));
        if (!item.descending)
            Accept(QLatin1String("ASC"));
        items.push_back(std::move(item));
    } while (AcceptSymbol(QLatin1String(",")));
    return items;
}

} // namespace tsql
