#include "tsql/parse/parser_impl.h"
#include "tsql/values/error.h"

using namespace Qt::StringLiterals;

namespace tsql {

QueryPtr Parser::subquery()
{
    const Depth depth(*this);
    expectSymbol(QLatin1String("("));
    auto result = std::make_unique<Query>(query());
    expectSymbol(QLatin1String(")"));
    return result;
}

Query Parser::query()
{
    Query result;
    result.line = peek().line;
    if (at(QLatin1String("WITH")))
        result.with = commonTables();
    result.body = unionBody();
    queryTail(result);
    return result;
}

void Parser::queryTail(Query &query)
{
    if (accept(QLatin1String("ORDER"))) {
        expect(QLatin1String("BY"));
        query.orderBy = orderItems();
        if (accept(QLatin1String("OFFSET"))) {
            query.offset = value();
            if (!accept(QLatin1String("ROWS")))
                expect(QLatin1String("ROW"));
            if (accept(QLatin1String("FETCH"))) {
                if (!accept(QLatin1String("NEXT")))
                    expect(QLatin1String("FIRST"));
                query.fetch = value();
                if (!accept(QLatin1String("ROWS")))
                    expect(QLatin1String("ROW"));
                expect(QLatin1String("ONLY"));
            }
        }
    }
    if (at(QLatin1String("FOR")))
        forXml(query);
    skipOptionClause();
}

void Parser::forXml(Query &query)
{
    expect(QLatin1String("FOR"));
    if (!at(QLatin1String("XML")))
        unsupported(u"FOR "_s + peek().text);
    take();
    if (!at(QLatin1String("PATH")))
        unsupported(u"FOR XML "_s + peek().text);
    take();
    query.forXml = true;
    query.xmlElement = u"row"_s;
    if (acceptSymbol(QLatin1String("("))) {
        query.xmlElement = fixedText();
        expectSymbol(QLatin1String(")"));
    }
    if (acceptSymbol(QLatin1String(",")))
        unsupported(u"FOR XML PATH, "_s + peek().text);
}

/// OPTION (…) asks for a plan, not for another answer; but MAXRECURSION is obeyed.
void Parser::skipOptionClause()
{
    if (!accept(QLatin1String("OPTION")))
        return;
    expectSymbol(QLatin1String("("));
    while (!atSymbol(QLatin1String(")"))) {
        if (atEnd())
            refuse();
        if (!at(QLatin1String("MAXRECURSION"))) {
            take();
            continue;
        }
        take();
        m_maxRecursion = static_cast<int>(fixedInteger());
    }
    take();
}

std::vector<CommonTable> Parser::commonTables()
{
    std::vector<CommonTable> tables;
    expect(QLatin1String("WITH"));
    do {
        CommonTable table;
        table.name = name();
        if (atSymbol(QLatin1String("(")))
            table.columns = nameList();
        expect(QLatin1String("AS"));
        table.query = subquery();
        tables.push_back(std::move(table));
    } while (acceptSymbol(QLatin1String(",")));
    return tables;
}

std::unique_ptr<QueryBody> Parser::unionBody()
{
    const Depth depth(*this);
    std::unique_ptr<QueryBody> left = intersectBody();
    int length = 0;
    while (at(QLatin1String("UNION")) || at(QLatin1String("EXCEPT"))) {
        chain(length);
        auto joined = std::make_unique<QueryBody>();
        if (accept(QLatin1String("EXCEPT"))) {
            joined->op = SetOperator::Except;
        } else {
            take();
            joined->op = accept(QLatin1String("ALL")) ? SetOperator::UnionAll : SetOperator::Union;
        }
        joined->left = std::move(left);
        joined->right = intersectBody();
        left = std::move(joined);
    }
    return left;
}

std::unique_ptr<QueryBody> Parser::intersectBody()
{
    std::unique_ptr<QueryBody> left = bodyPrimary();
    int length = 0;
    while (accept(QLatin1String("INTERSECT"))) {
        chain(length);
        auto joined = std::make_unique<QueryBody>();
        joined->op = SetOperator::Intersect;
        joined->left = std::move(left);
        joined->right = bodyPrimary();
        left = std::move(joined);
    }
    return left;
}

std::unique_ptr<QueryBody> Parser::bodyPrimary()
{
    if (acceptSymbol(QLatin1String("("))) {
        std::unique_ptr<QueryBody> inner = unionBody();
        expectSymbol(QLatin1String(")"));
        return inner;
    }
    auto body = std::make_unique<QueryBody>();
    body->core = selectCore();
    return body;
}

ExpressionPtr Parser::topClause(bool *percent)
{
    if (!accept(QLatin1String("TOP")))
        return {};
    ExpressionPtr count;
    if (acceptSymbol(QLatin1String("("))) {
        count = value();
        expectSymbol(QLatin1String(")"));
    } else if (peek().kind == TokenKind::Literal || peek().kind == TokenKind::Variable) {
        count = primary();
    } else {
        refuse();
    }
    if (at(QLatin1String("PERCENT"))) {
        if (percent == nullptr)
            unsupported(u"PERCENT"_s);
        take();
        *percent = true;
    }
    if (at(QLatin1String("WITH")) && at(QLatin1String("TIES"), 1))
        unsupported(u"WITH TIES"_s);
    return count;
}

std::unique_ptr<SelectCore> Parser::selectCore()
{
    auto core = std::make_unique<SelectCore>();
    core->line = peek().line;
    expect(QLatin1String("SELECT"));
    core->distinct = accept(QLatin1String("DISTINCT"));
    if (!core->distinct)
        accept(QLatin1String("ALL"));
    core->top = topClause(&core->topPercent);
    core->items = selectItems();
    if (accept(QLatin1String("INTO")))
        core->into = objectName();
    if (accept(QLatin1String("FROM")))
        core->from = tableSources();
    if (accept(QLatin1String("WHERE")))
        core->where = condition();
    if (accept(QLatin1String("GROUP"))) {
        expect(QLatin1String("BY"));
        core->groupBy = valueList();
        if (at(QLatin1String("WITH")))
            unsupported(u"GROUP BY … WITH "_s + peek(1).text);
    }
    if (accept(QLatin1String("HAVING")))
        core->having = condition();
    return core;
}

std::vector<SelectItem> Parser::selectItems()
{
    std::vector<SelectItem> items;
    do {
        items.push_back(selectItem());
    } while (acceptSymbol(QLatin1String(",")));
    return items;
}

SelectItem Parser::selectItem()
{
    SelectItem item;
    const std::size_t first = m_pos;
    const bool assigns = atSymbol(QLatin1String("="), 1);
    if (assigns && peek().kind == TokenKind::Variable) {
        item.variable = take().text;
        take();
        item.value = value();
        return item;
    }
    const bool quotedAlias = peek().kind == TokenKind::Literal && assigns;
    if (assigns && (atName() || quotedAlias)) {
        item.alias = quotedAlias ? fixedText() : take().text;
        take();
        item.value = value();
        return item;
    }
    item.value = value();
    item.text = textBetween(first);
    if (item.value->kind != ExpressionKind::Star)
        item.alias = acceptAlias();
    return item;
}

std::vector<SelectItem> Parser::outputClause()
{
    if (!accept(QLatin1String("OUTPUT")))
        return {};
    std::vector<SelectItem> items = selectItems();
    if (at(QLatin1String("INTO")))
        unsupported(u"OUTPUT … INTO"_s);
    return items;
}

TableSourcePtr Parser::tableSources()
{
    TableSourcePtr left = joinedTable();
    int length = 0;
    while (acceptSymbol(QLatin1String(","))) {
        chain(length);
        auto join = std::make_unique<TableSource>();
        join->kind = TableSource::Kind::Join;
        join->join = JoinKind::Cross;
        join->line = peek().line;
        join->left = std::move(left);
        join->right = joinedTable();
        left = std::move(join);
    }
    return left;
}

bool Parser::acceptJoin(JoinKind &kind)
{
    if (at(QLatin1String("CROSS"))) {
        if (at(QLatin1String("APPLY"), 1))
            unsupported(u"CROSS APPLY"_s);
        take();
        kind = JoinKind::Cross;
        expect(QLatin1String("JOIN"));
        return true;
    }
    if (at(QLatin1String("OUTER")) && at(QLatin1String("APPLY"), 1))
        unsupported(u"OUTER APPLY"_s);
    const bool outer = at(QLatin1String("LEFT")) || at(QLatin1String("RIGHT")) || at(QLatin1String("FULL"));
    if (outer) {
        kind = at(QLatin1String("LEFT"))    ? JoinKind::Left
               : at(QLatin1String("RIGHT")) ? JoinKind::Right
                                            : JoinKind::Full;
        take();
        accept(QLatin1String("OUTER"));
        expect(QLatin1String("JOIN"));
        return true;
    }
    kind = JoinKind::Inner;
    if (accept(QLatin1String("INNER"))) {
        expect(QLatin1String("JOIN"));
        return true;
    }
    return accept(QLatin1String("JOIN"));
}

TableSourcePtr Parser::joinedTable()
{
    const Depth depth(*this);
    TableSourcePtr left = tablePrimary();
    JoinKind kind = JoinKind::Inner;
    int length = 0;
    while (acceptJoin(kind)) {
        chain(length);
        auto join = std::make_unique<TableSource>();
        join->kind = TableSource::Kind::Join;
        join->line = peek().line;
        join->join = kind;
        join->left = std::move(left);
        if (kind == JoinKind::Cross) {
            join->right = tablePrimary();
        } else {
            // a JOIN b JOIN c ON … ON …: the inner pair closes first.
            join->right = tablePrimary();
            JoinKind inner = JoinKind::Inner;
            while (!at(QLatin1String("ON")) && acceptJoin(inner)) {
                chain(length);
                auto nested = std::make_unique<TableSource>();
                nested->kind = TableSource::Kind::Join;
                nested->line = peek().line;
                nested->join = inner;
                nested->left = std::move(join->right);
                nested->right = tablePrimary();
                if (inner != JoinKind::Cross) {
                    expect(QLatin1String("ON"));
                    nested->on = condition();
                }
                join->right = std::move(nested);
            }
            expect(QLatin1String("ON"));
            join->on = condition();
        }
        left = std::move(join);
    }
    return left;
}

TableSourcePtr Parser::derivedTable()
{
    auto source = std::make_unique<TableSource>();
    source->line = peek().line;
    if (at(QLatin1String("VALUES"), 1)) {
        expectSymbol(QLatin1String("("));
        take();
        source->kind = TableSource::Kind::Values;
        source->rows = rowValues();
        expectSymbol(QLatin1String(")"));
    } else {
        source->kind = TableSource::Kind::Derived;
        source->query = subquery();
    }
    source->alias = acceptAlias();
    if (source->alias.isEmpty())
        refuse();
    if (atSymbol(QLatin1String("(")))
        source->columnAliases = nameList();
    return source;
}

TableSourcePtr Parser::tablePrimary()
{
    if (atSymbol(QLatin1String("("))) {
        if (at(QLatin1String("SELECT"), 1) || at(QLatin1String("WITH"), 1) || at(QLatin1String("VALUES"), 1) ||
            (atSymbol(QLatin1String("("), 1) && at(QLatin1String("SELECT"), 2)))
            return derivedTable();
        const Depth depth(*this);
        take();
        TableSourcePtr inner = joinedTable();
        expectSymbol(QLatin1String(")"));
        return inner;
    }
    auto source = std::make_unique<TableSource>();
    source->line = peek().line;
    if (peek().kind == TokenKind::Variable)
        source->name.name = take().text;
    else
        source->name = objectName();
    // A parenthesis holds either the arguments of a table function or hints.
    const bool hint =
        at(QLatin1String("NOLOCK"), 1) || at(QLatin1String("UPDLOCK"), 1) || at(QLatin1String("HOLDLOCK"), 1);
    if (atSymbol(QLatin1String("(")) && !hint) {
        source->kind = TableSource::Kind::Function;
        take();
        if (!atSymbol(QLatin1String(")")))
            source->args = valueList();
        expectSymbol(QLatin1String(")"));
    }
    skipHints();
    source->alias = acceptAlias();
    skipHints();
    return source;
}

/// WITH (NOLOCK), (UPDLOCK, HOLDLOCK): a write takes the database's lock anyway.
void Parser::skipHints()
{
    static constexpr QLatin1String known[] = {
        QLatin1String("NOLOCK"),       QLatin1String("UPDLOCK"),        QLatin1String("HOLDLOCK"),
        QLatin1String("ROWLOCK"),      QLatin1String("TABLOCK"),        QLatin1String("READUNCOMMITTED"),
        QLatin1String("READPAST"),     QLatin1String("XLOCK"),          QLatin1String("TABLOCKX"),
        QLatin1String("SERIALIZABLE"), QLatin1String("PAGLOCK"),        QLatin1String("READCOMMITTED"),
        QLatin1String("NOWAIT"),       QLatin1String("REPEATABLEREAD"), QLatin1String("NOEXPAND"),
        QLatin1String("FORCESEEK"),
    };
    const auto isHint = [this](std::size_t ahead) {
        for (const QLatin1String word : known) {
            if (at(word, ahead))
                return true;
        }
        return false;
    };
    const std::size_t paren = at(QLatin1String("WITH")) ? 1 : 0;
    if (!atSymbol(QLatin1String("("), paren) || !isHint(paren + 1))
        return;
    m_pos += paren + 1;
    do {
        if (!isHint(0))
            refuse();
        take();
    } while (acceptSymbol(QLatin1String(",")) || isHint(0));
    expectSymbol(QLatin1String(")"));
}

std::vector<std::vector<ExpressionPtr>> Parser::rowValues()
{
    constexpr std::size_t MaxRows = 1000;
    std::vector<std::vector<ExpressionPtr>> rows;
    do {
        if (rows.size() == MaxRows)
            throw Error(10738, {}, peek().line);
        expectSymbol(QLatin1String("("));
        rows.push_back(valueList());
        expectSymbol(QLatin1String(")"));
        if (rows.back().size() != rows.front().size())
            throw Error(10709, {}, peek().line);
    } while (acceptSymbol(QLatin1String(",")));
    return rows;
}

} // namespace tsql
