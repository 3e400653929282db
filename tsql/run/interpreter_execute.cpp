#include "tsql/parse/parser.h"
#include "tsql/run/interpreter.h"
#include "tsql/run/key_conflict.h"
#include "tsql/run/sqlite_errors.h"
#include "tsql/values/error.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

/** The parameters that sp_executesql's second argument declares. */
std::vector<ParameterDefinition> ParsedParameters(const QString &declaration)
{
    StatementPtr parsed = ParseDefinition(u"CREATE PROCEDURE parameters "_s + declaration + u" AS RETURN"_s);
    return std::move(static_cast<CreateProcedureStatement &>(*parsed).parameters);
}

int ParameterNamed(const std::vector<ParameterDefinition> &parameters, const QString &name)
{
    for (size_t i = 0; i < parameters.size(); ++i) {
        if (parameters[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    return -1;
}

/** Which parameter the argument at `position` is for. */
int ParameterOf(const std::vector<ParameterDefinition> &parameters, const QString &procedure,
                const ExecuteArgument &argument, size_t position)
{
    if (argument.name.isEmpty()) {
        if (position >= parameters.size())
            throw Error(8144, {procedure});
        return int(position);
    }
    const int index = ParameterNamed(parameters, argument.name);
    if (index < 0)
        throw Error(8145, {argument.name, procedure});
    return index;
}

} // namespace

void Interpreter::RunExecute(const ExecuteStatement &statement, Frame &frame)
{
    if (statement.procedure.name.compare(u"sp_executesql"_s, Qt::CaseInsensitive) == 0)
        return ExecuteSql(statement, frame);
    m_connection.DefinedElsewhere();
    const auto procedure = m_connection.m_catalogue.FindProcedure(statement.procedure);
    if (!procedure)
        throw Error(2812, {statement.procedure.Display()});
    CallProcedure(procedure, statement, frame);
}

void Interpreter::CallProcedure(const std::shared_ptr<const CreateProcedureStatement> &procedure,
                                const ExecuteStatement &statement, Frame &caller)
{
    Session &session = m_connection.m_session;
    if (session.nesting >= DeepestNesting)
        throw Error(217, {DeepestNesting});
    const std::shared_ptr<Plan> plan = m_connection.m_plans.FindPlan(procedure);
    Frame inner{*plan, nullptr, {}, {}, 0, {}};
    PassArguments(procedure->parameters, procedure->name.Display(), statement.arguments, 0, caller, inner.variables);
    ++session.nesting;
    const bool counts = session.counts;
    try {
        RunFrame(inner);
    } catch (const Error &) {
        --session.nesting;
        session.counts = counts;
        if (m_failedProcedure.isEmpty())
            m_failedProcedure = procedure->name.Display();
        throw;
    }
    --session.nesting;
    session.counts = counts;
    ReturnArguments(procedure->parameters, statement.arguments, 0, caller, inner.variables);
    if (!statement.returnVariable.isEmpty())
        Assign(statement.returnVariable, Value::OfInteger(inner.returnValue), {Kind::Int, 0, 0, 0}, caller);
}

void Interpreter::PassArguments(const std::vector<ParameterDefinition> &parameters, const QString &procedure,
                                const std::vector<ExecuteArgument> &arguments, size_t firstArgument, Frame &caller,
                                QHash<QString, Value> &values)
{
    std::vector<bool> given(parameters.size());
    for (size_t i = firstArgument; i < arguments.size(); ++i) {
        const int index = ParameterOf(parameters, procedure, arguments[i], i - firstArgument);
        if (arguments[i].useDefault)
            continue;
        const ParameterDefinition &parameter = parameters[size_t(index)];
        values[VariableKey(parameter.name)] = Scalar(*arguments[i].value, caller, parameter.type);
        given[size_t(index)] = true;
    }
    for (size_t i = 0; i < parameters.size(); ++i) {
        if (given[i])
            continue;
        if (!parameters[i].defaultValue)
            throw Error(201, {procedure, parameters[i].name});
        Frame constants{caller.plan, nullptr, {}, {}, 0, {}};
        values[VariableKey(parameters[i].name)] = Scalar(*parameters[i].defaultValue, constants, parameters[i].type);
    }
}

/** Gives OUTPUT parameters back to the variables that were passed for them. */
void Interpreter::ReturnArguments(const std::vector<ParameterDefinition> &parameters,
                                  const std::vector<ExecuteArgument> &arguments, size_t firstArgument, Frame &caller,
                                  const QHash<QString, Value> &values) const
{
    for (size_t i = firstArgument; i < arguments.size(); ++i) {
        const ExecuteArgument &argument = arguments[i];
        if (!argument.output || argument.value->kind != ExpressionKind::Variable)
            continue;
        const ParameterDefinition &parameter =
            parameters[size_t(ParameterOf(parameters, {}, argument, i - firstArgument))];
        if (!parameter.output)
            throw Error(8162, {parameter.name});
        Assign(argument.value->name, values.value(VariableKey(parameter.name)), parameter.type, caller);
    }
}

/** sp_executesql @stmt, @params, values …: a text with parameters of its own. */
void Interpreter::ExecuteSql(const ExecuteStatement &statement, Frame &caller)
{
    const auto &arguments = statement.arguments;
    if (arguments.empty())
        throw Error(201, {u"sp_executesql"_s, u"@statement"_s});
    const QString sql = text(*arguments[0].value, caller);
    const QString declaration = arguments.size() > 1 ? text(*arguments[1].value, caller).trimmed() : QString();
    std::vector<ParameterDefinition> parameters;
    if (!declaration.isEmpty())
        parameters = ParsedParameters(declaration);
    QHash<QString, Value> values;
    const size_t first = std::min<size_t>(2, arguments.size());
    PassArguments(parameters, u"sp_executesql"_s, arguments, first, caller, values);
    RunText(sql, declaration, parameters, values);
    ReturnArguments(parameters, arguments, first, caller, values);
    if (!statement.returnVariable.isEmpty())
        Assign(statement.returnVariable, Value::OfInteger(0), {Kind::Int, 0, 0, 0}, caller);
}

void Interpreter::RunText(const QString &text, const QString &scope, const std::vector<ParameterDefinition> &parameters,
                          QHash<QString, Value> &variables)
{
    Session &session = m_connection.m_session;
    if (session.nesting >= DeepestNesting)
        throw Error(217, {DeepestNesting});
    std::vector<Literal> literals;
    const std::shared_ptr<Plan> plan = m_connection.m_plans.FindPlan(text, scope, literals);
    for (const ParameterDefinition &parameter : parameters)
        plan->AddVariable(parameter.name, parameter.type);
    Frame inner{*plan, &literals, variables, {}, 0, {}};
    ++session.nesting;
    try {
        RunFrame(inner);
    } catch (const Error &) {
        --session.nesting;
        throw;
    }
    --session.nesting;
    variables = inner.variables;
}

namespace {

QString ResultVariable(size_t column)
{
    return u"@result%1"_s.arg(column);
}

/** INSERT of one row whose values are the variables of a result set's columns. */
std::unique_ptr<InsertStatement> InsertOfVariables(const InsertStatement &statement, size_t columns)
{
    auto insert = std::make_unique<InsertStatement>();
    insert->line = statement.line;
    insert->text = statement.text;
    insert->table = statement.table;
    insert->columns = statement.columns;
    std::vector<ExpressionPtr> row;
    for (size_t i = 0; i < columns; ++i) {
        auto variable = std::make_unique<Expression>();
        variable->kind = ExpressionKind::Variable;
        variable->name = ResultVariable(i);
        variable->line = statement.line;
        row.push_back(std::move(variable));
    }
    insert->rows.push_back(std::move(row));
    return insert;
}

Value ValueOf(const Cell &cell)
{
    return {cell.form, cell.integer, cell.real, QByteArray(cell.bytes.data(), qsizetype(cell.bytes.size()))};
}

} // namespace

/** INSERT … EXEC: the rows of all result sets of the call go into the table, or none. */
void Interpreter::RunInsertExecute(const InsertStatement &statement, Frame &frame)
{
    auto earlier = std::exchange(m_outcome.results, {});
    const auto reports = m_outcome.reports;
    RunExecute(*statement.execute, frame);
    const auto results = std::exchange(m_outcome.results, std::move(earlier));
    m_outcome.reports = reports;
    const SqliteHandle &handle = m_connection.m_main;
    StatementScope scope(handle);
    qint64 rows = 0;
    for (const auto &result : results) {
        const auto &columns = result->Columns();
        const auto insert = InsertOfVariables(statement, columns.size());
        VariableTypes types;
        for (size_t i = 0; i < columns.size(); ++i)
            types.insert(ResultVariable(i), columns[i].type);
        const Compiled compiled = Compile(*insert, m_connection.m_catalogue, types, m_connection.m_session.options);
        const PreparedStatement prepared = handle.Prepare(compiled.sql.toUtf8());
        Frame row{frame.plan, nullptr, {}, {}, 0, {}};
        for (; result->Next(); ++rows) {
            for (size_t i = 0; i < columns.size(); ++i)
                row.variables[ResultVariable(i)] = ValueOf(result->CellAt(int(i)));
            Bind(prepared.get(), compiled, row);
            const StatementUse use(prepared.get());
            try {
                handle.Step(prepared.get());
            } catch (const SqliteError &error) {
                if (error.Code() != SQLITE_CONSTRAINT_FOREIGNKEY)
                    throw;
                throw KeyConflict(handle, prepared.get(), compiled, VerbOf(statement), m_connection.m_catalogue);
            }
        }
        if (compiled.setsIdentity && rows > 0)
            frame.scopeIdentity = Value::OfInteger(sqlite3_last_insert_rowid(handle.Get()));
    }
    scope.Release();
    m_connection.m_session.rowCount = rows;
    ReportCount(rows);
}

} // namespace tsql
