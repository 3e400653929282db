#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

QString OutputName(std::size_t position)
{
    return u"\"c%1\""_s.arg(position + 1);
}

QString ItemName(const SelectItem &item)
{
    if (!item.alias.isEmpty())
        return item.alias;
    return item.value->kind == ExpressionKind::Column ? item.value->name : QString();
}

/// Whether the rows, or something that cannot be foreseen, decide the value.
bool DependsOnRows(const Expression &node)
{
    if (node.kind == ExpressionKind::Column || node.kind == ExpressionKind::Function || node.query)
        return true;
    return std::any_of(node.args.begin(), node.args.end(),
                       [](const ExpressionPtr &argument) { return DependsOnRows(*argument); });
}

bool MentionsVariable(const Expression &node)
{
    return node.kind == ExpressionKind::Variable ||
           std::any_of(node.args.begin(), node.args.end(),
                       [](const ExpressionPtr &argument) { return MentionsVariable(*argument); });
}

/// ORDER BY something that is the same for all rows and is no number of a column.
void RefuseConstantOrder(const Expression &node, bool position, std::size_t index)
{
    if (position || DependsOnRows(node))
        return;
    if (MentionsVariable(node))
        throw Error(1008, {index}, node.line);
    throw Error(408, {index}, node.line);
}

} // namespace

void RefuseOrder(const Query &query)
{
    const bool limited = query.offset || query.forXml || (query.body->core && query.body->core->top);
    if (!query.orderBy.empty() && !limited)
        throw Error(1033, {}, query.line);
}

/// A query's text. Its columns are called c1, c2 … so that whoever reads from it needs no names.
QueryText Writer::WriteQuery(const Query &query, const Scope *outer, const std::vector<Target> *targets)
{
    Scope commons;
    commons.outer = outer;
    const QString with = CommonTables(query.with, commons);
    std::vector<CorePlan> plans;
    PlanBody(*query.body, &commons, plans);
    const std::vector<Target> types = OutputTargets(plans, query.forXml ? nullptr : targets, query.line);
    QueryText result;
    for (std::size_t i = 0; i < types.size(); ++i)
        result.columns.push_back({plans.front().names[i], types[i].type, plans.front().items[i].nullable,
                                  plans.size() == 1 ? plans.front().items[i].table : QString()});
    std::size_t next = 0;
    const bool compound = plans.size() > 1;
    QString body = compound ? BodyText(*query.body, plans, next, types) : CoreText(plans.front(), types);
    body += OrderText(query, plans);
    if (query.offset)
        body += TailText(query, *plans.front().scope);
    else if (!compound)
        body += plans.front().limit;
    result.sql = with + body;
    return query.forXml ? XmlText(query, result) : result;
}

QString Writer::TailText(const Query &query, const Scope &scope)
{
    const SqlType count{Kind::BigInt};
    const QString fetch = query.fetch ? ArgumentAs(*query.fetch, scope, count) : u"-1"_s;
    return u" LIMIT %1 OFFSET %2"_s.arg(fetch, ArgumentAs(*query.offset, scope, count));
}

/// What each output column is brought to: the wish of the reader, else what all parts of a UNION have in common.
std::vector<Target> Writer::OutputTargets(std::vector<CorePlan> &plans, const std::vector<Target> *targets, int line)
{
    const std::size_t count = plans.front().items.size();
    for (const CorePlan &plan : plans) {
        if (plan.items.size() != count)
            throw Error(205, {}, line);
    }
    if (targets != nullptr) {
        if (targets->size() != count)
            throw Error(targets->size() < count ? 121 : 120, {}, line);
        return *targets;
    }
    std::vector<Target> result;
    for (std::size_t i = 0; i < count; ++i) {
        SqlType type;
        for (CorePlan &plan : plans) {
            Operand &item = plan.items[i];
            if (item.pending && item.type.IsDecimal())
                Need(*item.pending, false);
            type = CommonType(type, item.type);
        }
        if (type.kind == Kind::Null)
            type.kind = Kind::Int;
        if (type.IsInteger())
            type.precision = 0;
        result.push_back({type, {}, {}, {}});
    }
    return result;
}

void Writer::PlanBody(const QueryBody &body, const Scope *outer, std::vector<CorePlan> &plans)
{
    if (body.core) {
        plans.push_back(PlanCore(*body.core, outer));
        return;
    }
    PlanBody(*body.left, outer, plans);
    PlanBody(*body.right, outer, plans);
}

CorePlan Writer::PlanCore(const SelectCore &core, const Scope *outer)
{
    CorePlan plan;
    plan.core = &core;
    plan.scope = std::make_unique<Scope>();
    Scope &scope = *plan.scope;
    scope.outer = outer;
    if (core.from)
        plan.from = u" FROM "_s + WriteSource(*core.from, scope, outer);
    if (core.where)
        plan.where = u" WHERE "_s + ConditionText(*core.where, scope);
    QStringList groups;
    for (const ExpressionPtr &item : core.groupBy) {
        if (!DependsOnRows(*item))
            throw Error(164, {}, item->line);
        Operand operand = WriteValue(*item, scope);
        groups += Collated(operand);
    }
    if (!groups.isEmpty())
        plan.groupBy = u" GROUP BY "_s + groups.join(u", "_s);
    bool aggregates = core.having != nullptr;
    for (const SelectItem &item : core.items)
        aggregates = aggregates || HasAggregate(*item.value);
    scope.groupBy = &core.groupBy;
    scope.grouped = aggregates || !core.groupBy.empty();
    scope.aggregatesAllowed = true;
    PlanItems(plan);
    if (core.having)
        plan.having = u" HAVING "_s + ConditionText(*core.having, scope);
    if (core.top && !core.topPercent) {
        plan.limit = LimitText(*core.top, scope);
    } else if (core.top) {
        const bool all = IsWhole(*core.top, 100);
        if (!all)
            throw Error(wording::TopPercent, {}, core.line);
        if (core.top->literal >= 0 && !m_constants)
            m_out.needs.push_back({core.top->literal, true});
    }
    return plan;
}

QString Writer::LimitText(const Expression &count, const Scope &scope)
{
    // SQLite takes a negative limit for none.
    const QString sql = ArgumentAs(count, scope, {Kind::BigInt});
    return u" LIMIT max(%1, 0)"_s.arg(sql);
}

void Writer::PlanItems(CorePlan &plan)
{
    if (plan.core == m_rowCore) {
        PlanRowItems(plan);
        return;
    }
    for (const SelectItem &item : plan.core->items)
        PlanItem(plan, item);
    if (plan.core == m_rowidCore)
        PlanRowid(plan);
}

/// The row number behind the other items, and which of those are the table's columns as they stand.
void Writer::PlanRowid(CorePlan &plan)
{
    const Source &source = plan.scope->sources.front();
    m_rowidColumns.assign(plan.items.size(), {});
    for (std::size_t i = 0; i < plan.items.size(); ++i) {
        for (const SourceColumn &column : source.columns) {
            if (column.sql == plan.itemTexts[i])
                m_rowidColumns[i] = column.name;
        }
    }
    plan.items.push_back(Made(source.columns.front().sql.section(u'.', 0, 0) + u"._rowid_"_s, {Kind::BigInt}));
    plan.names.push_back({});
    plan.itemTexts.push_back({});
    plan.itemValues.push_back(nullptr);
}

void Writer::PlanItem(CorePlan &plan, const SelectItem &item)
{
    if (item.value->kind == ExpressionKind::Star) {
        ExpandStar(plan, *item.value);
        return;
    }
    plan.items.push_back(WriteValue(*item.value, *plan.scope));
    plan.names.push_back(ItemName(item));
    plan.itemTexts.push_back(plan.items.back().column ? plan.items.back().sql : QString());
    plan.itemValues.push_back(item.value.get());
}

void Writer::ExpandStar(CorePlan &plan, const Expression &star)
{
    if (!plan.core->from)
        throw Error(263, {}, star.line);
    bool found = false;
    for (const Source &source : plan.scope->sources) {
        if (!star.qualifier.isEmpty() && !SameName(source.name, star.qualifier) &&
            !SameName(source.table, star.qualifier))
            continue;
        found = true;
        for (const SourceColumn &column : source.columns) {
            Operand operand = Made(column.sql, column.type);
            operand.column = true;
            operand.nullable = column.nullable;
            operand.table = column.table;
            plan.items.push_back(std::move(operand));
            plan.names.push_back(column.name);
            plan.itemTexts.push_back(column.sql);
            plan.itemValues.push_back(nullptr);
        }
    }
    if (!found)
        throw Error(107, {star.qualifier}, star.line);
}

QString Writer::ItemText(Operand &operand, const Target &target)
{
    const bool own = target.type.kind == Kind::Null ||
                     (target.type.kind == operand.type.kind && !operand.pending && target.type == operand.type);
    const bool bareColumn = operand.column;
    const QString before = operand.sql;
    const QString sql = own ? text(operand) : Convert(operand, target);
    const bool textual = (own ? operand.type : target.type).IsText();
    return textual && !(bareColumn && sql == before) && sql != u"NULL" ? sql + u" COLLATE TSQL_CI"_s : sql;
}

QString Writer::CoreText(CorePlan &plan, const std::vector<Target> &targets)
{
    QStringList list;
    for (std::size_t i = 0; i < plan.items.size(); ++i)
        list += ItemText(plan.items[i], targets[i]) + u" AS "_s + OutputName(i);
    if (!plan.level.isEmpty())
        list += plan.level;
    return u"SELECT "_s + (plan.core->distinct ? u"DISTINCT "_s : QString()) + list.join(u", "_s) + plan.from +
           plan.where + plan.groupBy + plan.having;
}

QString Writer::BodyText(const QueryBody &body, std::vector<CorePlan> &plans, std::size_t &next,
                         const std::vector<Target> &targets)
{
    if (body.core) {
        CorePlan &plan = plans[next++];
        const QString text = CoreText(plan, targets);
        return plan.limit.isEmpty() ? text : u"SELECT * FROM (%1%2)"_s.arg(text, plan.limit);
    }
    // SQLite joins from left to right without precedence: whatever stands right and is joined itself is closed off.
    const QString left = BodyText(*body.left, plans, next, targets);
    QString right = BodyText(*body.right, plans, next, targets);
    if (!body.right->core)
        right = u"SELECT * FROM (%1)"_s.arg(right);
    QString op;
    switch (body.op) {
    case SetOperator::Union:
        op = u" UNION "_s;
        break;
    case SetOperator::UnionAll:
        op = u" UNION ALL "_s;
        break;
    case SetOperator::Intersect:
        op = u" INTERSECT "_s;
        break;
    case SetOperator::Except:
        op = u" EXCEPT "_s;
        break;
    }
    return left + op + right;
}

/// The output column an ORDER BY item means: its number, its alias or the same expression.
std::optional<std::size_t> Writer::OutputPosition(const Expression &node, const CorePlan &plan)
{
    if (node.kind == ExpressionKind::Literal && LiteralOf(node).kind == LiteralKind::Integer) {
        const qint64 position = LiteralOf(node).integer;
        if (position < 1 || position > static_cast<qint64>(plan.items.size()))
            throw Error(108, {position}, node.line);
        if (node.literal >= 0 && !m_constants)
            m_out.needs.push_back({node.literal, true});
        return static_cast<std::size_t>(position - 1);
    }
    if (node.kind == ExpressionKind::Column && node.qualifier.isEmpty()) {
        for (std::size_t i = 0; i < plan.names.size(); ++i) {
            if (SameName(plan.names[i], node.name))
                return i;
        }
    }
    for (std::size_t i = 0; i < plan.itemValues.size(); ++i) {
        if (node.kind != ExpressionKind::Column && plan.itemValues[i] != nullptr &&
            SameExpression(*plan.itemValues[i], node))
            return i;
    }
    return {};
}

QString Writer::WriteOrderItem(const OrderItem &item, CorePlan &plan, bool compound)
{
    const QString direction = item.descending ? u" DESC"_s : QString();
    if (const std::optional<std::size_t> position = OutputPosition(*item.value, plan))
        return QString::number(*position + 1) + direction;
    if (compound)
        throw Error(104, {}, item.value->line);
    Operand operand = WriteValue(*item.value, *plan.scope);
    if (operand.column) {
        for (std::size_t i = 0; i < plan.itemTexts.size(); ++i) {
            if (plan.itemTexts[i] == operand.sql)
                return QString::number(i + 1) + direction;
        }
    }
    if (plan.core->distinct)
        throw Error(145, {}, item.value->line);
    return Collated(operand) + direction;
}

QString Writer::OrderText(const Query &query, std::vector<CorePlan> &plans)
{
    QStringList items;
    for (const OrderItem &item : query.orderBy) {
        const Expression &node = *item.value;
        const bool position = node.kind == ExpressionKind::Literal && LiteralOf(node).kind == LiteralKind::Integer;
        RefuseConstantOrder(node, position, static_cast<std::size_t>(items.size()) + 1);
        const QString text = WriteOrderItem(item, plans.front(), plans.size() > 1);
        items += text;
    }
    return items.isEmpty() ? QString() : u" ORDER BY "_s + items.join(u", "_s);
}

QueryText Writer::XmlText(const Query &query, const QueryText &rows) const
{
    const bool plain = query.xmlElement.isEmpty() && rows.columns.size() == 1 && rows.columns.front().name.isEmpty() &&
                       rows.columns.front().type.IsText();
    if (!plain)
        throw Error(wording::XmlOfColumns, {}, query.line);
    QueryText result;
    result.sql = u"SELECT tsql_xml_agg(\"c1\") AS \"c1\" FROM (%1)"_s.arg(rows.sql);
    result.columns.push_back({{}, SqlType::text(Kind::NVarChar, SqlType::Max), true, {}});
    return result;
}

namespace {

/// The conditions joined by AND, one by one.
void Conjuncts(const Expression &node, std::vector<const Expression *> &into)
{
    if (node.kind == ExpressionKind::And) {
        Conjuncts(*node.args[0], into);
        Conjuncts(*node.args[1], into);
    } else {
        into.push_back(&node);
    }
}

} // namespace

/// Whether WHERE gives the one-column primary key of the only table a single value.
bool Writer::PinnedByKey(const SelectCore &core) const
{
    if (!core.from || !core.where || core.from->kind != TableSource::Kind::Named)
        return false;
    const std::shared_ptr<const Table> table = m_catalogue.FindTable(core.from->name);
    if (!table || table->primaryKey.size() != 1)
        return false;
    const QString alias = core.from->alias.isEmpty() ? core.from->name.name : core.from->alias;
    std::vector<const Expression *> conditions;
    Conjuncts(*core.where, conditions);
    for (const Expression *condition : conditions) {
        if (condition->kind != ExpressionKind::Compare || condition->name != u"=")
            continue;
        for (std::size_t side = 0; side < 2; ++side) {
            const Expression &key = *condition->args[side];
            const Expression &other = *condition->args[1 - side];
            const bool isKey = key.kind == ExpressionKind::Column && SameName(key.name, table->primaryKey.front()) &&
                               (key.qualifier.isEmpty() || SameName(key.qualifier, alias));
            const bool outside = other.kind == ExpressionKind::Literal || other.kind == ExpressionKind::Variable ||
                                 (other.kind == ExpressionKind::Column && !other.qualifier.isEmpty() &&
                                  !SameName(other.qualifier, alias));
            if (isKey && outside)
                return true;
        }
    }
    return false;
}

/// Whether the query cannot give more than one row, so that it needs no guard as a value.
bool Writer::SingleRow(const Query &query)
{
    if (query.forXml)
        return true;
    if (!query.body->core)
        return false;
    const SelectCore &core = *query.body->core;
    if (core.top && !core.topPercent && IsWhole(*core.top, 1)) {
        if (core.top->literal >= 0 && !m_constants)
            m_out.needs.push_back({core.top->literal, true});
        return true;
    }
    if (!core.from)
        return true;
    bool aggregates = false;
    for (const SelectItem &item : core.items)
        aggregates = aggregates || HasAggregate(*item.value);
    return (aggregates && core.groupBy.empty()) || PinnedByKey(core);
}

void Writer::WriteSelect(const SelectStatement &statement)
{
    const Query &query = statement.query;
    const std::vector<Target> targets = AssignTargets(statement);
    if (!targets.empty() && AssignsInTurn(query)) {
        AssignInTurn(query, targets);
        return;
    }
    const QueryText text = this->WriteQuery(query, nullptr, targets.empty() ? nullptr : &targets);
    const SelectCore *core = query.body->core.get();
    if (core != nullptr && !core->into.name.isEmpty()) {
        SelectInto(statement, text);
        return;
    }
    m_out.sql = text.sql;
    m_out.columns = text.columns;
}

namespace {

QString Bracketed(const QString &name)
{
    return u'[' + QString(name).replace(u']', QLatin1String("]]")) + u']';
}

} // namespace

void Writer::SelectInto(const SelectStatement &statement, const QueryText &text)
{
    const ObjectName &into = statement.query.body->core->into;
    if (m_catalogue.FindTable(into))
        throw Error(2714, {into.Display()}, statement.line);
    QStringList parts;
    for (const ResultColumn &column : text.columns) {
        if (column.name.isEmpty())
            throw Error(1038, {}, statement.line);
        parts +=
            Bracketed(column.name) + u' ' + TypeName(column.type) + (column.nullable ? u" NULL"_s : u" NOT NULL"_s);
    }
    CreateTableStatement create;
    create.table = into;
    create.text = u"CREATE TABLE %1 (%2)"_s.arg(Bracketed(into.name), parts.join(u", "_s));
    const std::shared_ptr<Table> table = MakeTable(create);
    QStringList columns;
    for (const Column &column : table->columns)
        columns += ColumnText(*table, column, false);
    m_out.sql = u"CREATE TABLE %1 (%2)"_s.arg(table->sqliteName, columns.join(u", "_s));
    m_out.intoInsert = u"INSERT INTO %1 %2"_s.arg(table->sqliteName, text.sql);
    m_out.into = table;
    m_out.writes = true;
    m_out.cacheable = false;
}

} // namespace tsql
