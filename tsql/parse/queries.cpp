#include "tsql/parse/parser_impl.h"
#include "tsql/values/error.h"

using namespace Qt::StringLiterals;

namespace tsql {

QueryPtr Parser::Subquery()
{
    const Depth depth(*this);
    ExpectSymbol(QLatin1String("("));
    auto result = std::make_unique<Query>(ParseQuery());
    ExpectSymbol(QLatin1String(")"));
    return result;
}

Query Parser::ParseQuery()
{
    Query result;
    result.line = Peek().line;
    if (At(QLatin1String("WITH")))
        result.with = CommonTables();
    result.body = UnionBody();
    QueryTail(result);
    return result;
}

void Parser::QueryTail(Query &query)
{
    if (Accept(QLatin1String("ORDER"))) {
        Expect(QLatin1String("BY"));
        query.orderBy = OrderItems();
        if (Accept(QLatin1String("OFFSET"))) {
            query.offset = ParseValue();
            if (!Accept(QLatin1String("ROWS")))
                Expect(QLatin1String("ROW"));
            if (Accept(QLatin1String("FETCH"))) {
                if (!Accept(QLatin1String("NEXT")))
                    Expect(QLatin1String("FIRST"));
                query.fetch = ParseValue();
                if (!Accept(QLatin1String("ROWS")))
                    Expect(QLatin1String("ROW"));
                Expect(QLatin1String("ONLY"));
            }
        }
    }
    if (At(QLatin1String("FOR")))
        ForXml(query);
    SkipOptionClause();
}

void Parser::ForXml(Query &query)
{
    Expect(QLatin1String("FOR"));
    if (!At(QLatin1String("XML")))
        Unsupported(u"FOR "_s + Peek().text);
    Take();
    if (!At(QLatin1String("PATH")))
        Unsupported(u"FOR XML "_s + Peek().text);
    Take();
    query.forXml = true;
    query.xmlElement = u"row"_s;
    if (AcceptSymbol(QLatin1String("("))) {
        query.xmlElement = FixedText();
        ExpectSymbol(QLatin1String(")"));
    }
    if (AcceptSymbol(QLatin1String(",")))
        Unsupported(u"FOR XML PATH, "_s + Peek().text);
}

/// OPTION (…) asks for a plan, not for another answer; but MAXRECURSION is obeyed.
void Parser::SkipOptionClause()
{
    if (!Accept(QLatin1String("OPTION")))
        return;
    ExpectSymbol(QLatin1String("("));
    while (!AtSymbol(QLatin1String(")"))) {
        if (AtEnd())
            Refuse();
        if (!At(QLatin1String("MAXRECURSION"))) {
            Take();
            continue;
        }
        Take();
        m_maxRecursion = static_cast<int>(FixedInteger());
    }
    Take();
}

std::vector<CommonTable> Parser::CommonTables()
{
    std::vector<CommonTable> tables;
    Expect(QLatin1String("WITH"));
    do {
        CommonTable table;
        table.name = Name();
        if (AtSymbol(QLatin1String("(")))
            table.columns = NameList();
        Expect(QLatin1String("AS"));
        table.query = Subquery();
        tables.push_back(std::move(table));
    } while (AcceptSymbol(QLatin1String(",")));
    return tables;
}

std::unique_ptr<QueryBody> Parser::UnionBody()
{
    const Depth depth(*this);
    std::unique_ptr<QueryBody> left = IntersectBody();
    int length = 0;
    while (At(QLatin1String("UNION")) || At(QLatin1String("EXCEPT"))) {
        CheckChain(length);
        auto joined = std::make_unique<QueryBody>();
        if (Accept(QLatin1String("EXCEPT"))) {
            joined->op = SetOperator::Except;
        } else {
            Take();
            joined->op = Accept(QLatin1String("ALL")) ? SetOperator::UnionAll : SetOperator::Union;
        }
        joined->left = std::move(left);
        joined->right = IntersectBody();
        left = std::move(joined);
    }
    return left;
}

std::unique_ptr<QueryBody> Parser::IntersectBody()
{
    std::unique_ptr<QueryBody> left = BodyPrimary();
    int length = 0;
    while (Accept(QLatin1String("INTERSECT"))) {
        CheckChain(length);
        auto joined = std::make_unique<QueryBody>();
        joined->op = SetOperator::Intersect;
        joined->left = std::move(left);
        joined->right = BodyPrimary();
        left = std::move(joined);
    }
    return left;
}

std::unique_ptr<QueryBody> Parser::BodyPrimary()
{
    if (AcceptSymbol(QLatin1String("("))) {
        std::unique_ptr<QueryBody> inner = UnionBody();
        ExpectSymbol(QLatin1String(")"));
        return inner;
    }
    auto body = std::make_unique<QueryBody>();
    body->core = ParseSelectCore();
    return body;
}

ExpressionPtr Parser::TopClause(bool *percent)
{
    if (!Accept(QLatin1String("TOP")))
        return {};
    ExpressionPtr count;
    if (AcceptSymbol(QLatin1String("("))) {
        count = ParseValue();
        ExpectSymbol(QLatin1String(")"));
    } else if (Peek().kind == TokenKind::Literal || Peek().kind == TokenKind::Variable) {
        count = Primary();
    } else {
        Refuse();
    }
    if (At(QLatin1String("PERCENT"))) {
        if (percent == nullptr)
            Unsupported(u"PERCENT"_s);
        Take();
        *percent = true;
    }
    if (At(QLatin1String("WITH")) && At(QLatin1String("TIES"), 1))
        Unsupported(u"WITH TIES"_s);
    return count;
}

std::unique_ptr<SelectCore> Parser::ParseSelectCore()
{
    auto core = std::make_unique<SelectCore>();
    core->line = Peek().line;
    Expect(QLatin1String("SELECT"));
    core->distinct = Accept(QLatin1String("DISTINCT"));
    if (!core->distinct)
        Accept(QLatin1String("ALL"));
    core->top = TopClause(&core->topPercent);
    core->items = SelectItems();
    if (Accept(QLatin1String("INTO")))
        core->into = ParseObjectName();
    if (Accept(QLatin1String("FROM")))
        core->from = TableSources();
    if (Accept(QLatin1String("WHERE")))
        core->where = Condition();
    if (Accept(QLatin1String("GROUP"))) {
        Expect(QLatin1String("BY"));
        core->groupBy = ValueList();
        if (At(QLatin1String("WITH")))
            Unsupported(u"GROUP BY … WITH "_s + Peek(1).text);
    }
    if (Accept(QLatin1String("HAVING")))
        core->having = Condition();
    return core;
}

std::vector<SelectItem> Parser::SelectItems()
{
    std::vector<SelectItem> items;
    do {
        items.push_back(ParseSelectItem());
    } while (AcceptSymbol(QLatin1String(",")));
    return items;
}

SelectItem Parser::ParseSelectItem()
{
    SelectItem item;
    const std::size_t first = m_pos;
    const bool assigns = AtSymbol(QLatin1String("="), 1);
    if (assigns && Peek().kind == TokenKind::Variable) {
        item.variable = Take().text;
        Take();
        item.value = ParseValue();
        return item;
    }
    const bool quotedAlias = Peek().kind == TokenKind::Literal && assigns;
    if (assigns && (AtName() || quotedAlias)) {
        item.alias = quotedAlias ? FixedText() : Take().text;
        Take();
        item.value = ParseValue();
        return item;
    }
    item.value = ParseValue();
    item.text = TextBetween(first);
    if (item.value->kind != ExpressionKind::Star)
        item.alias = AcceptAlias();
    return item;
}

std::vector<SelectItem> Parser::OutputClause()
{
    if (!Accept(QLatin1String("OUTPUT")))
        return {};
    std::vector<SelectItem> items = SelectItems();
    if (At(QLatin1String("INTO")))
        Unsupported(u"OUTPUT … INTO"_s);
    return items;
}

TableSourcePtr Parser::TableSources()
{
    TableSourcePtr left = JoinedTable();
    int length = 0;
    while (AcceptSymbol(QLatin1String(","))) {
        CheckChain(length);
        auto join = std::make_unique<TableSource>();
        join->kind = TableSource::Kind::Join;
        join->join = JoinKind::Cross;
        join->line = Peek().line;
        join->left = std::move(left);
        join->right = JoinedTable();
        left = std::move(join);
    }
    return left;
}

bool Parser::AcceptJoin(JoinKind &kind)
{
    if (At(QLatin1String("CROSS"))) {
        if (At(QLatin1String("APPLY"), 1))
            Unsupported(u"CROSS APPLY"_s);
        Take();
        kind = JoinKind::Cross;
        Expect(QLatin1String("JOIN"));
        return true;
    }
    if (At(QLatin1String("OUTER")) && At(QLatin1String("APPLY"), 1))
        Unsupported(u"OUTER APPLY"_s);
    const bool outer = At(QLatin1String("LEFT")) || At(QLatin1String("RIGHT")) || At(QLatin1String("FULL"));
    if (outer) {
        kind = At(QLatin1String("LEFT"))    ? JoinKind::Left
               : At(QLatin1String("RIGHT")) ? JoinKind::Right
                                            : JoinKind::Full;
        Take();
        Accept(QLatin1String("OUTER"));
        Expect(QLatin1String("JOIN"));
        return true;
    }
    kind = JoinKind::Inner;
    if (Accept(QLatin1String("INNER"))) {
        Expect(QLatin1String("JOIN"));
        return true;
    }
    return Accept(QLatin1String("JOIN"));
}

TableSourcePtr Parser::JoinedTable()
{
    const Depth depth(*this);
    TableSourcePtr left = TablePrimary();
    JoinKind kind = JoinKind::Inner;
    int length = 0;
    while (AcceptJoin(kind)) {
        CheckChain(length);
        auto join = std::make_unique<TableSource>();
        join->kind = TableSource::Kind::Join;
        join->line = Peek().line;
        join->join = kind;
        join->left = std::move(left);
        if (kind == JoinKind::Cross) {
            join->right = TablePrimary();
        } else {
            // a JOIN b JOIN c ON … ON …: the inner pair closes first.
            join->right = TablePrimary();
            JoinKind inner = JoinKind::Inner;
            while (!At(QLatin1String("ON")) && AcceptJoin(inner)) {
                CheckChain(length);
                auto nested = std::make_unique<TableSource>();
                nested->kind = TableSource::Kind::Join;
                nested->line = Peek().line;
                nested->join = inner;
                nested->left = std::move(join->right);
                nested->right = TablePrimary();
                if (inner != JoinKind::Cross) {
                    Expect(QLatin1String("ON"));
                    nested->on = Condition();
                }
                join->right = std::move(nested);
            }
            Expect(QLatin1String("ON"));
            join->on = Condition();
        }
        left = std::move(join);
    }
    return left;
}

TableSourcePtr Parser::DerivedTable()
{
    auto source = std::make_unique<TableSource>();
    source->line = Peek().line;
    if (At(QLatin1String("VALUES"), 1)) {
        ExpectSymbol(QLatin1String("("));
        Take();
        source->kind = TableSource::Kind::Values;
        source->rows = RowValues();
        ExpectSymbol(QLatin1String(")"));
    } else {
        source->kind = TableSource::Kind::Derived;
        source->query = Subquery();
    }
    source->alias = AcceptAlias();
    if (source->alias.isEmpty())
        Refuse();
    if (AtSymbol(QLatin1String("(")))
        source->columnAliases = NameList();
    return source;
}

TableSourcePtr Parser::TablePrimary()
{
    if (AtSymbol(QLatin1String("("))) {
        if (At(QLatin1String("SELECT"), 1) || At(QLatin1String("WITH"), 1) || At(QLatin1String("VALUES"), 1) ||
            (AtSymbol(QLatin1String("("), 1) && At(QLatin1String("SELECT"), 2)))
            return DerivedTable();
        const Depth depth(*this);
        Take();
        TableSourcePtr inner = JoinedTable();
        ExpectSymbol(QLatin1String(")"));
        return inner;
    }
    auto source = std::make_unique<TableSource>();
    source->line = Peek().line;
    if (Peek().kind == TokenKind::Variable)
        source->name.name = Take().text;
    else
        source->name = ParseObjectName();
    // A parenthesis holds either the arguments of a table function or hints.
    const bool hint =
        At(QLatin1String("NOLOCK"), 1) || At(QLatin1String("UPDLOCK"), 1) || At(QLatin1String("HOLDLOCK"), 1);
    if (AtSymbol(QLatin1String("(")) && !hint) {
        source->kind = TableSource::Kind::Function;
        Take();
        if (!AtSymbol(QLatin1String(")")))
            source->args = ValueList();
        ExpectSymbol(QLatin1String(")"));
    }
    SkipHints();
    source->alias = AcceptAlias();
    SkipHints();
    return source;
}

/// WITH (NOLOCK), (UPDLOCK, HOLDLOCK): a write takes the database's lock anyway.
void Parser::SkipHints()
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
            if (At(word, ahead))
                return true;
        }
        return false;
    };
    const std::size_t paren = At(QLatin1String("WITH")) ? 1 : 0;
    if (!AtSymbol(QLatin1String("("), paren) || !isHint(paren + 1))
        return;
    m_pos += paren + 1;
    do {
        if (!isHint(0))
            Refuse();
        Take();
    } while (AcceptSymbol(QLatin1String(",")) || isHint(0));
    ExpectSymbol(QLatin1String(")"));
}

std::vector<std::vector<ExpressionPtr>> Parser::RowValues()
{
    constexpr std::size_t MaxRows = 1000;
    std::vector<std::vector<ExpressionPtr>> rows;
    do {
        if (rows.size() == MaxRows)
            throw Error(10738, {}, Peek().line);
        ExpectSymbol(QLatin1String("("));
        rows.push_back(ValueList());
        ExpectSymbol(QLatin1String(")"));
        if (rows.back().size() != rows.front().size())
            throw Error(10709, {}, Peek().line);
    } while (AcceptSymbol(QLatin1String(",")));
    return rows;
}

} // namespace tsql
