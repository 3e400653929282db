#include "tsql/parse/parser_impl.h"
#include "tsql/values/error.h"

using namespace Qt::StringLiterals;

namespace tsql {

ExpressionPtr Parser::make(ExpressionKind kind) const
{
    auto node = std::make_unique<Expression>();
    node->kind = kind;
    node->line = peek().line;
    return node;
}

ExpressionPtr Parser::orExpression()
{
    const Depth depth(*this);
    ExpressionPtr left = andExpression();
    int length = 0;
    while (at(QLatin1String("OR"))) {
        chain(length);
        ExpressionPtr node = make(ExpressionKind::Or);
        take();
        node->args.push_back(std::move(left));
        node->args.push_back(andExpression());
        left = std::move(node);
    }
    return left;
}

ExpressionPtr Parser::andExpression()
{
    ExpressionPtr left = notExpression();
    int length = 0;
    while (at(QLatin1String("AND"))) {
        chain(length);
        ExpressionPtr node = make(ExpressionKind::And);
        take();
        node->args.push_back(std::move(left));
        node->args.push_back(notExpression());
        left = std::move(node);
    }
    return left;
}

ExpressionPtr Parser::notExpression()
{
    const Depth depth(*this);
    if (!at(QLatin1String("NOT")))
        return predicate();
    ExpressionPtr node = make(ExpressionKind::Not);
    take();
    node->args.push_back(notExpression());
    return node;
}

ExpressionPtr Parser::predicate()
{
    if (at(QLatin1String("EXISTS"))) {
        ExpressionPtr node = make(ExpressionKind::Exists);
        take();
        node->query = subquery();
        return node;
    }
    return predicateTail(additive());
}

ExpressionPtr Parser::compareTail(ExpressionPtr left, const QString &op)
{
    ExpressionPtr node = make(ExpressionKind::Compare);
    take();
    if (op == u"!=")
        node->name = u"<>"_s;
    else if (op == u"!<")
        node->name = u">="_s;
    else if (op == u"!>")
        node->name = u"<="_s;
    else
        node->name = op;
    node->args.push_back(std::move(left));
    const bool all = at(QLatin1String("ALL"));
    if (all || at(QLatin1String("ANY")) || at(QLatin1String("SOME"))) {
        take();
        node->kind = ExpressionKind::Quantified;
        node->all = all;
        node->query = subquery();
        return node;
    }
    node->args.push_back(additive());
    return node;
}

ExpressionPtr Parser::predicateTail(ExpressionPtr left)
{
    static constexpr QStringView comparisons[] = {u"=", u"<>", u"<", u"<=", u">", u">=", u"!=", u"!<", u"!>"};
    if (peek().kind == TokenKind::Symbol) {
        const QString op = peek().text;
        for (const QStringView comparison : comparisons) {
            if (op == comparison)
                return compareTail(std::move(left), op);
        }
        return left;
    }
    if (at(QLatin1String("IS"))) {
        ExpressionPtr node = make(ExpressionKind::IsNull);
        take();
        node->negated = accept(QLatin1String("NOT"));
        expect(QLatin1String("NULL"));
        node->args.push_back(std::move(left));
        return node;
    }
    const std::size_t ahead = at(QLatin1String("NOT")) ? 1 : 0;
    ExpressionKind kind = ExpressionKind::Null;
    if (at(QLatin1String("LIKE"), ahead))
        kind = ExpressionKind::Like;
    else if (at(QLatin1String("BETWEEN"), ahead))
        kind = ExpressionKind::Between;
    else if (at(QLatin1String("IN"), ahead))
        kind = ExpressionKind::In;
    else
        return left;
    ExpressionPtr node = make(kind);
    node->negated = accept(QLatin1String("NOT"));
    take();
    node->args.push_back(std::move(left));
    if (kind == ExpressionKind::Like) {
        node->args.push_back(additive());
        if (accept(QLatin1String("ESCAPE")))
            node->args.push_back(additive());
    } else if (kind == ExpressionKind::Between) {
        node->args.push_back(additive());
        expect(QLatin1String("AND"));
        node->args.push_back(additive());
    } else if (atSymbol(QLatin1String("(")) && (at(QLatin1String("SELECT"), 1) || at(QLatin1String("WITH"), 1))) {
        node->query = subquery();
    } else {
        expectSymbol(QLatin1String("("));
        for (ExpressionPtr &item : valueList())
            node->args.push_back(std::move(item));
        expectSymbol(QLatin1String(")"));
    }
    return node;
}

ExpressionPtr Parser::additive()
{
    const Depth depth(*this);
    ExpressionPtr left = multiplicative();
    int length = 0;
    while (peek().kind == TokenKind::Symbol && peek().text.size() == 1 &&
           QStringView(u"+-&|^").contains(peek().text[0])) {
        chain(length);
        ExpressionPtr node = make(ExpressionKind::Arithmetic);
        node->name = take().text;
        node->args.push_back(std::move(left));
        node->args.push_back(multiplicative());
        left = std::move(node);
    }
    return left;
}

ExpressionPtr Parser::multiplicative()
{
    ExpressionPtr left = unary();
    int length = 0;
    while (peek().kind == TokenKind::Symbol && peek().text.size() == 1 &&
           QStringView(u"*/%").contains(peek().text[0])) {
        chain(length);
        ExpressionPtr node = make(ExpressionKind::Arithmetic);
        node->name = take().text;
        node->args.push_back(std::move(left));
        node->args.push_back(unary());
        left = std::move(node);
    }
    return left;
}

ExpressionPtr Parser::unary()
{
    const Depth depth(*this);
    if (acceptSymbol(QLatin1String("+")))
        return unary();
    if (atSymbol(QLatin1String("-")) || atSymbol(QLatin1String("~"))) {
        ExpressionPtr node = make(atSymbol(QLatin1String("-")) ? ExpressionKind::Negate : ExpressionKind::BitNot);
        take();
        node->args.push_back(unary());
        return node;
    }
    ExpressionPtr operand = primary();
    while (at(QLatin1String("COLLATE"))) {
        ExpressionPtr node = make(ExpressionKind::Collate);
        take();
        node->name = name();
        node->args.push_back(std::move(operand));
        operand = std::move(node);
    }
    return operand;
}

ExpressionPtr Parser::primary()
{
    const Token &token = peek();
    switch (token.kind) {
    case TokenKind::Literal:
        return literal();
    case TokenKind::Variable: {
        ExpressionPtr node = make(ExpressionKind::Variable);
        node->name = take().text;
        return node;
    }
    case TokenKind::Quoted:
        return columnReference();
    case TokenKind::Word:
        return primaryWord();
    case TokenKind::Symbol:
        if (token.text == u"(")
            return parenthesised();
        if (token.text == u"?") {
            ExpressionPtr node = make(ExpressionKind::Variable);
            take();
            node->name = u"?%1"_s.arg(++m_markers);
            return node;
        }
        if (token.text == u"*") {
            ExpressionPtr node = make(ExpressionKind::Star);
            take();
            return node;
        }
        break;
    case TokenKind::End:
        break;
    }
    refuse();
}

ExpressionPtr Parser::primaryWord()
{
    const QString word = peek().text.toUpper();
    if (word == u"NULL") {
        ExpressionPtr node = make(ExpressionKind::Null);
        take();
        return node;
    }
    if (word == u"DEFAULT") {
        ExpressionPtr node = make(ExpressionKind::Default);
        take();
        return node;
    }
    if (word == u"CASE")
        return caseExpression();
    if (word == u"CURRENT_TIMESTAMP") {
        ExpressionPtr node = make(ExpressionKind::Function);
        take();
        node->name = word;
        return node;
    }
    const bool call = atSymbol(QLatin1String("("), 1);
    if (call && (word == u"CAST" || word == u"TRY_CAST"))
        return castExpression(word != u"CAST");
    if (call && (word == u"CONVERT" || word == u"TRY_CONVERT"))
        return convertExpression(word != u"CONVERT");
    const bool reservedFunction = word == u"LEFT" || word == u"RIGHT" || word == u"COALESCE" || word == u"NULLIF";
    if (call && (reservedFunction || !isReserved(word)))
        return functionCall(word);
    return columnReference();
}

ExpressionPtr Parser::literal()
{
    ExpressionPtr node = make(ExpressionKind::Literal);
    node->literal = take().literal;
    node->value = m_tokens.literals[static_cast<std::size_t>(node->literal)];
    return node;
}

ExpressionPtr Parser::parenthesised()
{
    if (at(QLatin1String("SELECT"), 1) || at(QLatin1String("WITH"), 1)) {
        ExpressionPtr node = make(ExpressionKind::Scalar);
        node->query = subquery();
        return node;
    }
    expectSymbol(QLatin1String("("));
    ExpressionPtr inner = orExpression();
    expectSymbol(QLatin1String(")"));
    return inner;
}

ExpressionPtr Parser::caseExpression()
{
    ExpressionPtr node = make(ExpressionKind::Case);
    take();
    if (!at(QLatin1String("WHEN"))) {
        node->hasOperand = true;
        node->args.push_back(value());
    }
    if (!at(QLatin1String("WHEN")))
        refuse();
    while (accept(QLatin1String("WHEN"))) {
        node->args.push_back(node->hasOperand ? value() : condition());
        expect(QLatin1String("THEN"));
        node->args.push_back(value());
    }
    if (accept(QLatin1String("ELSE")))
        node->args.push_back(value());
    expect(QLatin1String("END"));
    return node;
}

ExpressionPtr Parser::castExpression(bool tryCast)
{
    ExpressionPtr node = make(ExpressionKind::Cast);
    take();
    node->tryCast = tryCast;
    expectSymbol(QLatin1String("("));
    node->args.push_back(value());
    expect(QLatin1String("AS"));
    node->type = type();
    expectSymbol(QLatin1String(")"));
    return node;
}

ExpressionPtr Parser::convertExpression(bool tryCast)
{
    ExpressionPtr node = make(ExpressionKind::Cast);
    take();
    node->tryCast = tryCast;
    expectSymbol(QLatin1String("("));
    node->type = type();
    expectSymbol(QLatin1String(","));
    node->args.push_back(value());
    if (acceptSymbol(QLatin1String(",")))
        node->args.push_back(value());
    expectSymbol(QLatin1String(")"));
    return node;
}

ExpressionPtr Parser::functionCall(const QString &name)
{
    ExpressionPtr node = make(ExpressionKind::Function);
    take();
    node->name = name;
    expectSymbol(QLatin1String("("));
    if (!atSymbol(QLatin1String(")"))) {
        node->distinct = accept(QLatin1String("DISTINCT"));
        if (!node->distinct)
            accept(QLatin1String("ALL"));
        // The first argument of IIF is a condition.
        node->args.push_back(name == u"IIF" ? condition() : value());
        while (acceptSymbol(QLatin1String(",")))
            node->args.push_back(value());
    }
    expectSymbol(QLatin1String(")"));
    if (accept(QLatin1String("OVER")))
        node->over = window();
    return node;
}

ExpressionPtr Parser::columnReference()
{
    ExpressionPtr node = make(ExpressionKind::Column);
    std::vector<QString> parts{name()};
    while (acceptSymbol(QLatin1String("."))) {
        if (acceptSymbol(QLatin1String("*"))) {
            node->kind = ExpressionKind::Star;
            node->qualifier = parts.back();
            return node;
        }
        parts.push_back(name());
    }
    if (atSymbol(QLatin1String("(")))
        unsupported(parts.back() + u"()"_s);
    node->name = parts.back();
    if (parts.size() > 1)
        node->qualifier = parts[parts.size() - 2];
    return node;
}

std::unique_ptr<Window> Parser::window()
{
    auto result = std::make_unique<Window>();
    expectSymbol(QLatin1String("("));
    if (accept(QLatin1String("PARTITION"))) {
        expect(QLatin1String("BY"));
        result->partition = valueList();
    }
    if (accept(QLatin1String("ORDER"))) {
        expect(QLatin1String("BY"));
        result->order = orderItems();
    }
    // Of the frames the running one alone.
    if (!result->order.empty() && accept(QLatin1String("ROWS"))) {
        expect(QLatin1String("UNBOUNDED"));
        expect(QLatin1String("PRECEDING"));
        result->rows = true;
    }
    if (at(QLatin1String("ROWS")) || at(QLatin1String("RANGE")))
        unsupported(peek().text.toUpper());
    expectSymbol(QLatin1String(")"));
    return result;
}

std::vector<ExpressionPtr> Parser::valueList()
{
    std::vector<ExpressionPtr> values;
    do {
        values.push_back(value());
    } while (acceptSymbol(QLatin1String(",")));
    return values;
}

std::vector<OrderItem> Parser::orderItems()
{
    std::vector<OrderItem> items;
    do {
        OrderItem item;
        item.value = value();
        item.descending = accept(QLatin1String("DESC"));
        if (!item.descending)
            accept(QLatin1String("ASC"));
        items.push_back(std::move(item));
    } while (acceptSymbol(QLatin1String(",")));
    return items;
}

} // namespace tsql
