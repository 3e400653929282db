#include "tsql/run/explain.h"

#include "tsql/parse/parser.h"
#include "tsql/values/error.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

QString SourceOf(const Parameter &parameter)
{
    switch (parameter.source) {
    case Parameter::Source::Literal:
    case Parameter::Source::Constant: {
        const LiteralKind kind = parameter.value.kind;
        const QString text =
            kind == LiteralKind::Integer ? QString::number(parameter.value.integer) : parameter.value.text;
        if (kind == LiteralKind::Text || kind == LiteralKind::Unicode)
            return u'\'' + QString(text).replace(u'\'', u"''"_s) + u'\'';
        return parameter.negate ? u'-' + text : text;
    }
    case Parameter::Source::Variable:
    case Parameter::Source::System:
        return parameter.name;
    }
    Q_UNREACHABLE();
}

} // namespace

void Explainer::Explain(const QString &batch, QStringList &lines)
{
    m_lines = &lines;
    const Plan plan(ParseBatch(batch));
    ExplainAll(plan.Statements(), plan.Variables());
}

void Explainer::ExplainAll(const std::vector<StatementPtr> &statements, const VariableTypes &variables)
{
    for (const StatementPtr &statement : statements) {
        try {
            ExplainOne(*statement, variables);
        } catch (Error &error) {
            if (error.Line() == 0)
                error.setLine(statement->line);
            throw;
        }
    }
}

void Explainer::ExplainOne(const Statement &statement, const VariableTypes &variables)
{
    switch (statement.kind) {
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
        return Define(statement, variables);
    case StatementKind::DeclareTable:
        return Define(*As<DeclareTableStatement>(statement).table, variables);
    case StatementKind::Declare:
        for (const auto &variable : As<DeclareStatement>(statement).variables)
            ExplainValue(variable.value.get(), variables);
        return;
    case StatementKind::SetVariable:
        return ExplainValue(As<SetVariableStatement>(statement).value.get(), variables);
    case StatementKind::Return:
        return ExplainValue(As<ReturnStatement>(statement).value.get(), variables);
    case StatementKind::Print:
        return ExplainValue(As<PrintStatement>(statement).value.get(), variables);
    case StatementKind::If: {
        const auto &branch = As<IfStatement>(statement);
        Print(CompileCondition(*branch.condition, m_catalogue, variables));
        ExplainOne(*branch.then, variables);
        if (branch.otherwise)
            ExplainOne(*branch.otherwise, variables);
        return;
    }
    case StatementKind::While:
        Print(CompileCondition(*As<WhileStatement>(statement).condition, m_catalogue, variables));
        return ExplainOne(*As<WhileStatement>(statement).body, variables);
    case StatementKind::Block:
        return ExplainAll(As<BlockStatement>(statement).statements, variables);
    case StatementKind::TryCatch:
        ExplainAll(As<TryCatchStatement>(statement).tried, variables);
        return ExplainAll(As<TryCatchStatement>(statement).caught, variables);
    case StatementKind::SetOption:
    case StatementKind::Break:
    case StatementKind::Continue:
    case StatementKind::Execute:
    case StatementKind::ExecuteText:
    case StatementKind::BeginTransaction:
    case StatementKind::Commit:
    case StatementKind::Rollback:
    case StatementKind::SaveTransaction:
    case StatementKind::Throw:
    case StatementKind::RaiseError:
        return Remark(statement);
    }
}

void Explainer::Define(const Statement &statement, const VariableTypes &variables)
{
    const bool called = statement.kind == StatementKind::Insert && As<InsertStatement>(statement).execute;
    if (called)
        return Remark(statement);
    const Compiled compiled = Compile(statement, m_catalogue, variables);
    if (compiled.sql.isEmpty() && compiled.then.empty())
        Remark(statement);
    Print(compiled);
    if (compiled.into)
        m_catalogue.AddTable(compiled.into);
    if (compiled.definition)
        m_catalogue.Apply(statement);
}

void Explainer::ExplainValue(const Expression *value, const VariableTypes &variables)
{
    if (value)
        Print(CompileScalar(*value, m_catalogue, variables));
}

void Explainer::Print(const Compiled &compiled)
{
    if (!compiled.sql.isEmpty())
        *m_lines += compiled.sql;
    if (!compiled.intoInsert.isEmpty())
        *m_lines += compiled.intoInsert;
    for (std::size_t i = 0; i < compiled.parameters.size(); ++i) {
        const Parameter &parameter = compiled.parameters[i];
        *m_lines += u"  -- ?%1 = %2 as %3"_s.arg(QString::number(i + 1), SourceOf(parameter), TypeName(parameter.type));
    }
    for (const QString &sql : compiled.then)
        *m_lines += sql;
    for (const Compiled &value : compiled.inTurn)
        Print(value);
}

void Explainer::Remark(const Statement &statement)
{
    *m_lines += u"-- "_s + statement.text.simplified();
}

} // namespace tsql
