// SELECT @x = …: what is assigned once, and what is assigned row after row.

#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

bool MentionsVariable(const Expression &node, const QString &name)
{
    if (node.kind == ExpressionKind::Variable && SameName(node.name, name))
        return true;
    return std::any_of(node.args.begin(), node.args.end(),
                       [&name](const ExpressionPtr &argument) { return MentionsVariable(*argument, name); });
}

bool MentionsAny(const Expression &node, const std::vector<QString> &names)
{
    return std::any_of(names.begin(), names.end(),
                       [&node](const QString &name) { return MentionsVariable(node, name); });
}

[[noreturn]] void RefuseRunning(const QString &what, int line)
{
    throw Error(wording::RunningAssignment, {what}, line);
}

bool IsConstant(const Expression &node)
{
    return node.kind == ExpressionKind::Literal || node.kind == ExpressionKind::Null ||
           node.kind == ExpressionKind::Variable;
}

bool IsCondition(const Expression &node)
{
    return node.kind >= ExpressionKind::Compare && node.kind <= ExpressionKind::Quantified;
}

/// The largest parts of an item that do not change while its row is assigned.
void RowValues(const Expression &node, const std::vector<QString> &assigned, std::vector<const Expression *> &into)
{
    if (IsConstant(node))
        return;
    if (IsCondition(node) && node.query)
        RefuseRunning(u"A subquery in a condition"_s, node.line);
    const bool changes = MentionsAny(node, assigned);
    if (!changes && !IsCondition(node)) {
        into.push_back(&node);
        return;
    }
    if (changes && IsAggregate(node))
        RefuseRunning(u"A variable in an aggregate"_s, node.line);
    for (const ExpressionPtr &argument : node.args)
        RowValues(*argument, assigned, into);
}

} // namespace

QString RowVariable(std::size_t column)
{
    return u"@ row%1"_s.arg(column); // the blank keeps it apart from the names that a text can spell
}

std::vector<Target> Writer::AssignTargets(const SelectStatement &statement)
{
    std::vector<Target> targets;
    const SelectCore *core = statement.query.body->core.get();
    if (core == nullptr)
        return targets;
    for (const SelectItem &item : core->items) {
        if (item.variable.isEmpty())
            continue;
        const QString name = item.variable.toCaseFolded();
        const auto type = m_variables.constFind(name);
        if (type == m_variables.cend())
            throw Error(137, {item.variable}, item.value->line);
        m_out.assign.push_back(name);
        targets.push_back({*type, Conversion::Cast, {}, {}});
    }
    if (!targets.empty() && targets.size() < core->items.size())
        throw Error(141, {}, statement.line);
    return targets;
}

/// Whether an item reads what an assignment before it, or of the row before it, has left.
bool Writer::AssignsInTurn(const Query &query)
{
    if (!query.body->core)
        return false;
    const auto &items = query.body->core->items;
    const bool oneRow = SingleRow(query);
    for (std::size_t i = 0; i < items.size(); ++i) {
        for (std::size_t j = 0; j < (oneRow ? i : items.size()); ++j) {
            if (MentionsVariable(*items[i].value, items[j].variable))
                return true;
        }
    }
    return false;
}

/// The statement gives the parts of the items that the rows decide; the rest is reckoned from them row after row.
void Writer::AssignInTurn(const Query &query, const std::vector<Target> &targets)
{
    const SelectCore &core = *query.body->core;
    if (core.distinct)
        RefuseRunning(u"DISTINCT"_s, core.line);
    for (const OrderItem &item : query.orderBy) {
        if (item.value->kind == ExpressionKind::Literal)
            RefuseRunning(u"ORDER BY a position"_s, item.value->line);
    }
    std::vector<const Expression *> values;
    for (const SelectItem &item : core.items)
        RowValues(*item.value, m_out.assign, values);
    m_rowCore = &core;
    m_rowItems = values;
    const QueryText rows = this->WriteQuery(query, nullptr);
    m_out.sql = rows.sql;
    VariableTypes types = m_variables;
    for (std::size_t i = 0; i < values.size(); ++i)
        types.insert(RowVariable(i), rows.columns[i].type);
    for (std::size_t i = 0; i < core.items.size(); ++i) {
        Writer writer(m_catalogue, types, m_options);
        for (std::size_t k = 0; k < values.size(); ++k)
            writer.m_rowValues.insert(values[k], RowVariable(k));
        Compiled value = writer.Scalar(*core.items[i].value, targets[i].type);
        m_out.needs.insert(m_out.needs.end(), value.needs.begin(), value.needs.end());
        m_out.inTurn.push_back(std::move(value));
    }
}

/// The items of the statement that gives the rows: at least one column, so that rows are counted.
void Writer::PlanRowItems(CorePlan &plan)
{
    const std::size_t before = m_out.parameters.size();
    for (const Expression *node : m_rowItems) {
        plan.items.push_back(WriteValue(*node, *plan.scope));
        plan.itemValues.push_back(node);
    }
    if (m_rowItems.empty()) {
        plan.items.push_back(Made(u"1"_s, {Kind::Int}));
        plan.itemValues.push_back(nullptr);
    }
    plan.names.resize(plan.items.size());
    plan.itemTexts.resize(plan.items.size());
    for (std::size_t i = before; i < m_out.parameters.size(); ++i) {
        const QString &name = m_out.parameters[i].name;
        if (std::find(m_out.assign.begin(), m_out.assign.end(), name) != m_out.assign.end())
            RefuseRunning(u"The variable '%1' in a subquery"_s.arg(name), plan.core->line);
    }
}

} // namespace tsql
