#include "tsql/run/plan.h"

#include "tsql/parse/parser.h"
#include "tsql/write/storage.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

/** Careful on the safe side: a column that happens to be called so costs nothing but the streaming. */
bool NamesTemporary(const QString &sql)
{
    return sql.contains(u"temp."_s) || sql.contains(QLatin1String(GlobalSchema));
}

bool NamesRowCount(const QString &text)
{
    return text.contains(u"@@ROWCOUNT"_s, Qt::CaseInsensitive);
}

bool IsDefinition(StatementKind kind)
{
    const bool creates = kind >= StatementKind::CreateTable && kind <= StatementKind::Drop;
    return creates || kind == StatementKind::DeclareTable;
}

} // namespace

CompiledEntry::CompiledEntry(Compiled made, quint64 version)
    : compiled(std::move(made)), catalogueVersion(version), sql(compiled.sql.toUtf8()),
      usesTemporary(NamesTemporary(compiled.sql))
{}

Lease::Lease(std::shared_ptr<CompiledEntry> entry, const SqliteHandle &handle)
    : m_entry(std::move(entry)), m_handle(handle.Get())
{
    Q_ASSERT(m_entry && m_handle);
    for (auto &slot : m_entry->m_idle) {
        if (slot.handle == m_handle) {
            m_statement = std::move(slot.statement);
            std::swap(slot, m_entry->m_idle.back());
            m_entry->m_idle.pop_back();
            Q_ASSERT_X(!sqlite3_stmt_busy(m_statement.get()), "Lease", "an idle statement was given back unreset");
            return;
        }
    }
    m_statement = handle.Prepare(m_entry->sql, m_entry->compiled.cacheable);
}

Lease &Lease::operator=(Lease &&other) noexcept
{
    if (this != &other) {
        Release();
        m_entry = std::move(other.m_entry);
        m_statement = std::move(other.m_statement);
        m_handle = other.m_handle;
    }
    return *this;
}

void Lease::Release()
{
    if (!m_statement)
        return;
    Q_ASSERT_X(m_entry, "Lease", "a statement without the entry that it goes back to");
    sqlite3_reset(m_statement.get());
    for (const auto &slot : m_entry->m_idle) {
        if (slot.handle == m_handle) {
            m_statement.reset();
            return;
        }
    }
    m_entry->m_idle.push_back({m_handle, std::move(m_statement)});
}

QString VariableKey(const QString &name)
{
    return name.toCaseFolded();
}

Plan::Plan(Batch batch) : m_batch(std::move(batch)), m_asksRowCount(NamesRowCount(m_batch.text))
{
    Collect(m_batch.statements);
}

bool Plan::Serves(const std::vector<Literal> &literals) const
{
    Q_ASSERT_X(!m_procedure && literals.size() == m_batch.literals.size(), "Plan", "not a text of this shape");
    const auto same = [&](int i) { return literals[size_t(i)].text == m_batch.literals[size_t(i)].text; };
    if (!m_defines)
        return std::all_of(m_batch.fixedLiterals.begin(), m_batch.fixedLiterals.end(), same);
    for (int i = 0; i < int(literals.size()); ++i) {
        if (!same(i))
            return false;
    }
    return true;
}

Plan::Plan(std::shared_ptr<const CreateProcedureStatement> procedure)
    : m_procedure(std::move(procedure)), m_asksRowCount(NamesRowCount(m_procedure->text))
{
    for (const ParameterDefinition &parameter : m_procedure->parameters)
        AddVariable(parameter.name, parameter.type);
    Collect(m_procedure->body);
}

const std::vector<StatementPtr> &Plan::Statements() const
{
    return m_procedure ? m_procedure->body : m_batch.statements;
}

void Plan::AddVariable(const QString &name, const SqlType &type)
{
    m_variables.insert(VariableKey(name), type);
}

void Plan::Collect(const std::vector<StatementPtr> &statements)
{
    for (const StatementPtr &statement : statements)
        Collect(*statement);
}

/** A DECLARE counts for the whole text wherever it stands. */
void Plan::Collect(const Statement &statement)
{
    m_defines = m_defines || IsDefinition(statement.kind);
    switch (statement.kind) {
    case StatementKind::Declare:
        for (const auto &variable : As<DeclareStatement>(statement).variables)
            AddVariable(variable.name, variable.type);
        break;
    case StatementKind::If: {
        const auto &branch = As<IfStatement>(statement);
        Collect(*branch.then);
        if (branch.otherwise)
            Collect(*branch.otherwise);
        break;
    }
    case StatementKind::While:
        Collect(*As<WhileStatement>(statement).body);
        break;
    case StatementKind::Block:
        Collect(As<BlockStatement>(statement).statements);
        break;
    case StatementKind::TryCatch:
        Collect(As<TryCatchStatement>(statement).tried);
        Collect(As<TryCatchStatement>(statement).caught);
        break;
    case StatementKind::Select:
    case StatementKind::Insert:
    case StatementKind::Update:
    case StatementKind::Delete:
    case StatementKind::Truncate:
    case StatementKind::CreateTable:
    case StatementKind::AlterTable:
    case StatementKind::CreateIndex:
    case StatementKind::CreateView:
    case StatementKind::CreateProcedure:
    case StatementKind::CreateFunction:
    case StatementKind::CreateSchema:
    case StatementKind::Drop:
    case StatementKind::DeclareTable:
    case StatementKind::SetVariable:
    case StatementKind::SetOption:
    case StatementKind::Break:
    case StatementKind::Continue:
    case StatementKind::Return:
    case StatementKind::Execute:
    case StatementKind::ExecuteText:
    case StatementKind::BeginTransaction:
    case StatementKind::Commit:
    case StatementKind::Rollback:
    case StatementKind::SaveTransaction:
    case StatementKind::Throw:
    case StatementKind::RaiseError:
    case StatementKind::Print:
        break; // nothing stands inside
    }
}

bool Plan::Fits(const Variant &variant, const std::vector<Literal> *literals)
{
    if (!literals)
        return true;
    const auto &needs = variant.entry->compiled.needs;
    Q_ASSERT(variant.literals.size() == needs.size());
    for (size_t i = 0; i < needs.size(); ++i) {
        const Literal &now = (*literals)[size_t(needs[i].literal)];
        const Literal &then = variant.literals[i];
        if (LiteralType(now) != LiteralType(then) || (needs[i].value && now.text != then.text))
            return false;
    }
    return true;
}

std::shared_ptr<CompiledEntry> Plan::Find(const void *node, const std::vector<Literal> *literals, quint64 version) const
{
    const auto found = m_entries.find(node);
    if (found == m_entries.end())
        return {};
    for (const Variant &variant : found->second) {
        if (variant.entry->catalogueVersion == version && Fits(variant, literals))
            return variant.entry;
    }
    return {};
}

std::shared_ptr<CompiledEntry> Plan::Add(const void *node, const std::vector<Literal> *literals, quint64 version,
                                         Compiled compiled)
{
    Q_ASSERT_X(!Find(node, literals, version), "Plan", "compiled although the plan has it");
    auto made = std::make_shared<CompiledEntry>(std::move(compiled), version);
    if (literals && !made->compiled.cacheable)
        return made;
    std::vector<Variant> &variants = m_entries[node];
    std::erase_if(variants, [&](const Variant &variant) { return variant.entry->catalogueVersion != version; });
    if (variants.size() == MaxVariants)
        variants.erase(variants.begin());
    Variant variant{made, {}};
    if (literals) {
        for (const LiteralNeed &need : made->compiled.needs)
            variant.literals.push_back((*literals)[size_t(need.literal)]);
    }
    variants.push_back(std::move(variant));
    return made;
}

std::shared_ptr<Plan> PlanCache::FindPlan(const QString &text, const QString &scope, std::vector<Literal> &literals)
{
    TakeShape(text, m_shape);
    const bool keep = !m_shape.key.isEmpty() && text.size() <= LongestKept;
    if (keep && m_last && scope.isEmpty() && m_shape.key == m_lastKey && m_last->Serves(m_shape.literals)) {
        literals.swap(m_shape.literals);
        return m_last;
    }
    const QString key = scope.isEmpty() ? m_shape.key : scope + u'\n' + m_shape.key;
    if (keep) {
        const auto *found = m_plans.object(key);
        if (found && (*found)->Serves(m_shape.literals)) {
            literals.swap(m_shape.literals);
            m_last = *found;
            m_lastKey = key;
            return *found;
        }
    }
    Batch batch = ParseBatch(text);
    literals = batch.literals;
    auto made = std::make_shared<Plan>(std::move(batch));
    if (keep)
        m_plans.insert(key, new std::shared_ptr<Plan>(made));
    return made;
}

std::shared_ptr<Plan> PlanCache::FindPlan(const std::shared_ptr<const CreateProcedureStatement> &procedure)
{
    std::shared_ptr<Plan> &plan = m_procedures[procedure->name.KeyText()];
    if (!plan || plan->Procedure() != procedure.get())
        plan = std::make_shared<Plan>(procedure);
    return plan;
}

void PlanCache::clear()
{
    m_plans.clear();
    m_last.reset();
    m_procedures.clear();
}

} // namespace tsql
