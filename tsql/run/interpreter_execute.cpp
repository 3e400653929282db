#include "tsql/parse/parser.h"
#include "tsql/run/interpreter.h"
#include "tsql/run/key_conflict.h"
#include "tsql/run/sqlite_errors.h"
#include "tsql/values/error.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

/** The parameters that sp_executesql's second argument declares. */
std::vector<ParameterDefinition> parsedParameters(const QString &declaration)
{
    StatementPtr parsed = parseDefinition(u"CREATE PROCEDURE parameters "_s + declaration + u" AS RETURN"_s);
    return std::move(static_cast<CreateProcedureStatement &>(*parsed).parameters);
}

int parameterNamed(const std::vector<ParameterDefinition> &parameters, const QString &name)
{
    for (size_t i = 0; i < parameters.size(); ++i) {
        if (parameters[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    return -1;
}

/** Which parameter the argument at `position` is for. */
int parameterOf(const std::vector<ParameterDefinition> &parameters, const QString &procedure,
                const ExecuteArgument &argument, size_t position)
{
    if (argument.name.isEmpty()) {
        if (position >= parameters.size())
            throw Error(8144, {procedure});
        return int(position);
    }
    const int index = parameterNamed(parameters, argument.name);
    if (index < 0)
        throw Error(8145, {argument.name, procedure});
    return index;
}

} // namespace

void Interpreter::runExecute(const ExecuteStatement &statement, Frame &frame)
{
    if (statement.procedure.name.compare(u"sp_executesql"_s, Qt::CaseInsensitive) == 0)
        return executeSql(statement, frame);
    m_connection.definedElsewhere();
    const auto procedure = m_connection.m_catalogue.procedure(statement.procedure);
    if (!procedure)
        throw Error(2812, {statement.procedure.display()});
    callProcedure(procedure, statement, frame);
}

void Interpreter::callProcedure(const std::shared_ptr<const CreateProcedureStatement> &procedure,
                                const ExecuteStatement &statement, Frame &caller)
{
    Session &session = m_connection.m_session;
    if (session.nesting >= DeepestNesting)
        throw Error(217, {DeepestNesting});
    const std::shared_ptr<Plan> plan = m_connection.m_plans.plan(procedure);
    Frame inner{*plan, nullptr, {}, {}, 0, {}};
    passArguments(procedure->parameters, procedure->name.display(), statement.arguments, 0, caller, inner.variables);
    ++session.nesting;
    const bool counts = session.counts;
    try {
        runFrame(inner);
    } catch (const Error &) {
        --session.nesting;
        session.counts = counts;
        if (m_failedProcedure.isEmpty())
            m_failedProcedure = procedure->name.display();
        throw;
    }
    --session.nesting;
    session.counts = counts;
    returnArguments(procedure->parameters, statement.arguments, 0, caller, inner.variables);
    if (!statement.returnVariable.isEmpty())
        assign(statement.returnVariable, Value::ofInteger(inner.returnValue), {Kind::Int, 0, 0, 0}, caller);
}

void Interpreter::passArguments(const std::vector<ParameterDefinition> &parameters, const QString &procedure,
                                const std::vector<ExecuteArgument> &arguments, size_t firstArgument, Frame &caller,
                                QHash<QString, Value> &values)
{
    std::vector<bool> given(parameters.size());
    for (size_t i = firstArgument; i < arguments.size(); ++i) {
        const int index = parameterOf(parameters, procedure, arguments[i], i - firstArgument);
        if (arguments[i].useDefault)
            continue;
        const ParameterDefinition &parameter = parameters[size_t(index)];
        values[variableKey(parameter.name)] = scalar(*arguments[i].value, caller, parameter.type);
        given[size_t(index)] = true;
    }
    for (size_t i = 0; i < parameters.size(); ++i) {
        if (given[i])
            continue;
        if (!parameters[i].defaultValue)
            throw Error(201, {procedure, parameters[i].name});
        Frame constants{caller.plan, nullptr, {}, {}, 0, {}};
        values[variableKey(parameters[i].name)] = scalar(*parameters[i].defaultValue, constants, parameters[i].type);
    }
}

/** Gives OUTPUT parameters back to the variables that were passed for them. */
void Interpreter::returnArguments(const std::vector<ParameterDefinition> &parameters,
                                  const std::vector<ExecuteArgument> &arguments, size_t firstArgument, Frame &caller,
                                  const QHash<QString, Value> &values) const
{
    for (size_t i = firstArgument; i < arguments.size(); ++i) {
        const ExecuteArgument &argument = arguments[i];
        if (!argument.output || argument.value->kind != ExpressionKind::Variable)
            continue;
        const ParameterDefinition &parameter =
            parameters[size_t(parameterOf(parameters, {}, argument, i - firstArgument))];
        if (!parameter.output)
            throw Error(8162, {parameter.name});
        assign(argument.value->name, values.value(variableKey(parameter.name)), parameter.type, caller);
    }
}

/** sp_executesql @stmt, @params, values …: a text with parameters of its own. */
void Interpreter::executeSql(const ExecuteStatement &statement, Frame &caller)
{
    const auto &arguments = statement.arguments;
    if (arguments.empty())
        throw Error(201, {u"sp_executesql"_s, u"@statement"_s});
    const QString sql = text(*arguments[0].value, caller);
    const QString declaration = arguments.size() > 1 ? text(*arguments[1].value, caller).trimmed() : QString();
    std::vector<ParameterDefinition> parameters;
    if (!declaration.isEmpty())
        parameters = parsedParameters(declaration);
    QHash<QString, Value> values;
    const size_t first = std::min<size_t>(2, arguments.size());
    passArguments(parameters, u"sp_executesql"_s, arguments, first, caller, values);
    runText(sql, declaration, parameters, values);
    returnArguments(parameters, arguments, first, caller, values);
    if (!statement.returnVariable.isEmpty())
        assign(statement.returnVariable, Value::ofInteger(0), {Kind::Int, 0, 0, 0}, caller);
}

void Interpreter::runText(const QString &text, const QString &scope, const std::vector<ParameterDefinition> &parameters,
                          QHash<QString, Value> &variables)
{
    Session &session = m_connection.m_session;
    if (session.nesting >= DeepestNesting)
        throw Error(217, {DeepestNesting});
    std::vector<Literal> literals;
    const std::shared_ptr<Plan> plan = m_connection.m_plans.plan(text, scope, literals);
    for (const ParameterDefinition &parameter : parameters)
        plan->addVariable(parameter.name, parameter.type);
    Frame inner{*plan, &literals, variables, {}, 0, {}};
    ++session.nesting;
    try {
        runFrame(inner);
    } catch (const Error &) {
        --session.nesting;
        throw;
    }
    --session.nesting;
    variables = inner.variables;
}

namespace {

QString resultVariable(size_t column)
{
    return u"@result%1"_s.arg(column);
}

/** INSERT of one row whose values are the variables of a result set's columns. */
std::unique_ptr<InsertStatement> insertOfVariables(const InsertStatement &statement, size_t columns)
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
        variable->name = resultVariable(i);
        variable->line = statement.line;
        row.push_back(std::move(variable));
    }
    insert->rows.push_back(std::move(row));
    return insert;
}

Value valueOf(const Cell &cell)
{
    return {cell.form, cell.integer, cell.real, QByteArray(cell.bytes.data(), qsizetype(cell.bytes.size()))};
}

} // namespace

/** INSERT … EXEC: the rows of all result sets of the call go into the table, or none. */
void Interpreter::runInsertExecute(const InsertStatement &statement, Frame &frame)
{
    auto earlier = std::exchange(m_outcome.results, {});
    const auto reports = m_outcome.reports;
    runExecute(*statement.execute, frame);
    const auto results = std::exchange(m_outcome.results, std::move(earlier));
    m_outcome.reports = reports;
    const SqliteHandle &handle = m_connection.m_main;
    StatementScope scope(handle);
    qint64 rows = 0;
    for (const auto &result : results) {
        const auto &columns = result->columns();
        const auto insert = insertOfVariables(statement, columns.size());
        VariableTypes types;
        for (size_t i = 0; i < columns.size(); ++i)
            types.insert(resultVariable(i), columns[i].type);
        const Compiled compiled = compile(*insert, m_connection.m_catalogue, types, m_connection.m_session.options);
        const PreparedStatement prepared = handle.prepare(compiled.sql.toUtf8());
        Frame row{frame.plan, nullptr, {}, {}, 0, {}};
        for (; result->next(); ++rows) {
            for (size_t i = 0; i < columns.size(); ++i)
                row.variables[resultVariable(i)] = valueOf(result->cell(int(i)));
            bind(prepared.get(), compiled, row);
            const StatementUse use(prepared.get());
            try {
                handle.step(prepared.get());
            } catch (const SqliteError &error) {
                if (error.code() != SQLITE_CONSTRAINT_FOREIGNKEY)
                    throw;
                throw keyConflict(handle, prepared.get(), compiled, verbOf(statement), m_connection.m_catalogue);
            }
        }
        if (compiled.setsIdentity && rows > 0)
            frame.scopeIdentity = Value::ofInteger(sqlite3_last_insert_rowid(handle.get()));
    }
    scope.release();
    m_connection.m_session.rowCount = rows;
    reportCount(rows);
}

} // namespace tsql
