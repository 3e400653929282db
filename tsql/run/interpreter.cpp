#include "tsql/run/interpreter.h"

#include "tsql/run/sqlite_errors.h"

using namespace Qt::StringLiterals;

namespace tsql {

void Interpreter::runBatch(const QString &text)
{
    std::vector<Literal> literals;
    const std::shared_ptr<Plan> plan = m_connection.m_plans.plan(text, {}, literals);
    Frame frame{*plan, &literals, {}, {}, 0, {}};
    m_connection.m_session.caught.clear();
    runFrame(frame);
    m_connection.m_plans.recycle(std::move(literals));
    m_outcome.lastIdentity = frame.scopeIdentity;
    if (m_raised)
        throw *m_raised;
}

/** Runs a whole text and takes away what must not outlive it. */
void Interpreter::runFrame(Frame &frame)
{
    const bool counts = frame.plan.asksRowCount();
    m_countingFrames += counts;
    try {
        run(frame.plan.statements(), frame);
    } catch (...) {
        m_countingFrames -= counts;
        dropTemporary(frame);
        throw;
    }
    m_countingFrames -= counts;
    dropTemporary(frame);
}

Interpreter::Flow Interpreter::run(const Statements &statements, Frame &frame)
{
    for (const StatementPtr &statement : statements) {
        const Flow flow = run(*statement, frame);
        if (flow != Flow::Next)
            return flow;
    }
    return Flow::Next;
}

Interpreter::Flow Interpreter::run(const Statement &statement, Frame &frame)
{
    Session &session = m_connection.m_session;
    try {
        return dispatch(statement, frame);
    } catch (const SqliteError &error) {
        Error shown = translated(error, verbOf(statement), m_connection.m_catalogue);
        shown.setLine(statement.line);
        session.lastError = shown.number();
        throw shown;
    } catch (Error &error) {
        if (error.line() == 0)
            error.setLine(statement.line);
        session.lastError = error.number();
        throw;
    }
}

Interpreter::Flow Interpreter::dispatch(const Statement &statement, Frame &frame)
{
    switch (statement.kind) {
    case StatementKind::If:
        return runIf(as<IfStatement>(statement), frame);
    case StatementKind::While:
        return runLoop(as<WhileStatement>(statement), frame);
    case StatementKind::Block:
        return run(as<BlockStatement>(statement).statements, frame);
    case StatementKind::TryCatch:
        return runTry(as<TryCatchStatement>(statement), frame);
    case StatementKind::Break:
        return Flow::Break;
    case StatementKind::Continue:
        return Flow::Continue;
    case StatementKind::Return:
        if (const auto &value = as<ReturnStatement>(statement).value)
            frame.returnValue = scalar(*value, frame, {Kind::Int, 0, 0, 0}).integer;
        return Flow::Return;
    case StatementKind::RaiseError:
        runRaiseError(as<RaiseStatement>(statement), frame);
        return Flow::Next; // keeps its number in @@ERROR
    case StatementKind::Select:
        runSelect(statement, frame);
        break;
    case StatementKind::Insert:
        if (as<InsertStatement>(statement).execute)
            runInsertExecute(as<InsertStatement>(statement), frame);
        else
            runChange(statement, frame);
        break;
    case StatementKind::Update:
    case StatementKind::Delete:
        runChange(statement, frame);
        break;
    case StatementKind::Declare:
        runDeclare(as<DeclareStatement>(statement), frame);
        break;
    case StatementKind::SetVariable:
        runSetVariable(as<SetVariableStatement>(statement), frame);
        break;
    case StatementKind::SetOption:
        runSetOption(as<SetOptionStatement>(statement));
        break;
    case StatementKind::Execute:
        runExecute(as<ExecuteStatement>(statement), frame);
        break;
    case StatementKind::ExecuteText: {
        QHash<QString, Value> none;
        runText(text(*as<ExecuteTextStatement>(statement).sql, frame), {}, {}, none);
        break;
    }
    case StatementKind::BeginTransaction:
        m_connection.beginTransaction(as<TransactionStatement>(statement).name);
        break;
    case StatementKind::Commit:
        m_connection.commit();
        break;
    case StatementKind::Rollback:
        m_connection.rollback(as<TransactionStatement>(statement).name);
        break;
    case StatementKind::SaveTransaction:
        m_connection.saveTransaction(as<TransactionStatement>(statement).name);
        break;
    case StatementKind::Throw:
        runThrow(as<RaiseStatement>(statement), frame);
        break;
    case StatementKind::Print:
        say(text(*as<PrintStatement>(statement).value, frame));
        break;
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
        runDefinition(statement, frame);
        break;
    }
    m_connection.m_session.lastError = 0;
    return Flow::Next;
}

void Interpreter::say(const QString &message)
{
    m_outcome.messages.push_back({message, m_outcome.results.size()});
}

Interpreter::Flow Interpreter::runIf(const IfStatement &branch, Frame &frame)
{
    if (condition(*branch.condition, frame))
        return run(*branch.then, frame);
    return branch.otherwise ? run(*branch.otherwise, frame) : Flow::Next;
}

Interpreter::Flow Interpreter::runLoop(const WhileStatement &loop, Frame &frame)
{
    while (condition(*loop.condition, frame)) {
        const Flow flow = run(*loop.body, frame);
        if (flow == Flow::Break)
            break;
        if (flow == Flow::Return)
            return flow;
    }
    return Flow::Next;
}

Interpreter::Flow Interpreter::runTry(const TryCatchStatement &statement, Frame &frame)
{
    Session &session = m_connection.m_session;
    const int nesting = session.nesting;
    ++m_tries;
    try {
        const Flow flow = run(statement.tried, frame);
        --m_tries;
        return flow;
    } catch (const Error &error) {
        --m_tries;
        session.nesting = nesting;
        m_connection.noticeLostTransaction();
        session.caught.push_back(
            {error.number(), error.line(), error.severity(), error.state(), error.message(), m_failedProcedure});
        m_failedProcedure.clear();
    }
    try {
        const Flow flow = run(statement.caught, frame);
        session.caught.pop_back();
        return flow;
    } catch (const Error &) {
        session.caught.pop_back();
        throw;
    }
}

void Interpreter::runThrow(const RaiseStatement &statement, Frame &frame)
{
    Session &session = m_connection.m_session;
    if (statement.args.empty()) {
        if (session.caught.empty())
            throw Error(10704);
        const CaughtError &caught = session.caught.back();
        Error error = Error::Worded(caught.number, caught.message, caught.line);
        error.setSeverity(caught.severity, caught.state);
        throw error;
    }
    const SqlType number{Kind::Int, 0, 0, 0};
    const auto code = int(scalar(*statement.args[0], frame, number).integer);
    Error error = Error::Worded(code, text(*statement.args[1], frame));
    error.setSeverity(16, int(scalar(*statement.args[2], frame, number).integer));
    throw error;
}

/** RAISERROR's marks: %s and %d take the values in turn, %% is a percent sign. */
static QString formatted(const QString &format, const QStringList &values)
{
    QString result;
    qsizetype used = 0;
    for (qsizetype i = 0; i < format.size(); ++i) {
        if (format[i] != u'%' || i + 1 == format.size()) {
            result += format[i];
            continue;
        }
        const QChar mark = format[++i];
        if (mark == u's' || mark == u'd' || mark == u'i' || mark == u'u')
            result += used < values.size() ? values[used++] : u"(null)"_s;
        else if (mark == u'%')
            result += mark;
        else
            result += u'%' + QString(mark);
    }
    return result;
}

void Interpreter::runRaiseError(const RaiseStatement &statement, Frame &frame)
{
    const SqlType number{Kind::Int, 0, 0, 0};
    QStringList values;
    for (size_t i = 3; i < statement.args.size(); ++i)
        values += text(*statement.args[i], frame);
    const QString message = formatted(text(*statement.args[0], frame), values);
    const auto severity = int(scalar(*statement.args[1], frame, number).integer);
    const auto state = int(scalar(*statement.args[2], frame, number).integer);
    if (severity < 11) {
        say(message);
        m_connection.m_session.lastError = 0;
        return;
    }
    Error error = Error::Worded(50000, message, statement.line);
    error.setSeverity(severity, state);
    if (m_tries > 0)
        throw error;
    m_connection.m_session.lastError = error.number();
    if (!m_raised)
        m_raised = error;
}

/** Whether an option asks for what this database does anyway. */
static bool isCustom(const SetOptionStatement &statement)
{
    static const QHash<QString, QStringList> customs = {
        {u"ANSI_NULLS"_s, {u"ON"_s}},
        {u"ANSI_NULL_DFLT_ON"_s, {u"ON"_s}},
        {u"ANSI_PADDING"_s, {u"ON"_s}},
        {u"ANSI_WARNINGS"_s, {u"ON"_s}},
        {u"ARITHABORT"_s, {u"ON"_s, u"OFF"_s}}, // OFF changes nothing under ANSI_WARNINGS
        {u"CONCAT_NULL_YIELDS_NULL"_s, {u"ON"_s}},
        {u"DATEFIRST"_s, {u"7"_s}},
        {u"DATEFORMAT"_s, {u"MDY"_s}},
        {u"LANGUAGE"_s, {u"US_ENGLISH"_s, u"ENGLISH"_s}},
        {u"NUMERIC_ROUNDABORT"_s, {u"OFF"_s}},
        {u"QUOTED_IDENTIFIER"_s, {u"ON"_s}},
    };
    // The others (isolation, waiting, size of texts) change no answer.
    const auto known = customs.constFind(statement.option);
    return known == customs.cend() || known->contains(statement.value);
}

void Interpreter::runSetOption(const SetOptionStatement &statement)
{
    Session &session = m_connection.m_session;
    const bool on = statement.value == u"ON"_s;
    if (statement.option == u"XACT_ABORT"_s) {
        session.abortOnError = on;
    } else if (statement.option == u"NOCOUNT"_s) {
        session.counts = !on;
    } else if (statement.option == u"LOCK_TIMEOUT"_s) {
        setLockTimeout(statement.value);
    } else if (statement.option == u"IDENTITY_INSERT"_s) {
        const auto table = m_connection.m_catalogue.table(statement.table);
        if (!table)
            throw Error(1088, {statement.table.display()});
        if (on)
            session.options.identityInsert = {table->name.key()};
        else
            session.options.identityInsert.remove(table->name.key());
        m_connection.m_plans.clear(); // an INSERT means something else now
    } else if (!isCustom(statement)) {
        throw notSupported(u"SET %1 %2"_s.arg(statement.option, statement.value));
    }
}

void Interpreter::setLockTimeout(const QString &value) const
{
    bool number = false;
    const int milliseconds = value.toInt(&number);
    if (!number)
        throw Error(102, {value});
    m_connection.m_main.waitForLocks(milliseconds < 0 ? SqliteHandle::BusyTimeout : milliseconds);
}

void Interpreter::runSetVariable(const SetVariableStatement &set, Frame &frame)
{
    const QString key = variableKey(set.variable);
    if (!frame.plan.variables().contains(key))
        throw Error(137, {set.variable});
    frame.variables[key] = scalar(*set.value, frame, frame.plan.variables().value(key));
}

void Interpreter::runDeclare(const DeclareStatement &statement, Frame &frame)
{
    for (const auto &variable : statement.variables) {
        if (variable.value)
            frame.variables[variableKey(variable.name)] = scalar(*variable.value, frame, variable.type);
    }
}

} // namespace tsql
