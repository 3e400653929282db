#include "tsql/run/interpreter.h"

#include "tsql/run/sqlite_errors.h"

using namespace Qt::StringLiterals;

namespace tsql {

void Interpreter::RunBatch(const QString &text)
{
    std::vector<Literal> literals;
    const std::shared_ptr<Plan> plan = m_connection.m_plans.FindPlan(text, {}, literals);
    Frame frame{*plan, &literals, {}, {}, 0, {}};
    m_connection.m_session.caught.clear();
    RunFrame(frame);
    m_connection.m_plans.Recycle(std::move(literals));
    m_outcome.lastIdentity = frame.scopeIdentity;
    if (m_raised)
        throw *m_raised;
}

/** Runs a whole text and takes away what must not outlive it. */
void Interpreter::RunFrame(Frame &frame)
{
    const bool counts = frame.plan.AsksRowCount();
    m_countingFrames += counts;
    try {
        Run(frame.plan.Statements(), frame);
    } catch (...) {
        m_countingFrames -= counts;
        DropTemporary(frame);
        throw;
    }
    m_countingFrames -= counts;
    DropTemporary(frame);
}

Interpreter::Flow Interpreter::Run(const Statements &statements, Frame &frame)
{
    for (const StatementPtr &statement : statements) {
        const Flow flow = Run(*statement, frame);
        if (flow != Flow::Next)
            return flow;
    }
    return Flow::Next;
}

Interpreter::Flow Interpreter::Run(const Statement &statement, Frame &frame)
{
    Session &session = m_connection.m_session;
    try {
        return Dispatch(statement, frame);
    } catch (const SqliteError &error) {
        Error shown = Translated(error, VerbOf(statement), m_connection.m_catalogue);
        shown.setLine(statement.line);
        session.lastError = shown.Number();
        throw shown;
    } catch (Error &error) {
        if (error.Line() == 0)
            error.setLine(statement.line);
        session.lastError = error.Number();
        throw;
    }
}

Interpreter::Flow Interpreter::Dispatch(const Statement &statement, Frame &frame)
{
    switch (statement.kind) {
    case StatementKind::If:
        return RunIf(As<IfStatement>(statement), frame);
    case StatementKind::While:
        return RunLoop(As<WhileStatement>(statement), frame);
    case StatementKind::Block:
        return Run(As<BlockStatement>(statement).statements, frame);
    case StatementKind::TryCatch:
        return RunTry(As<TryCatchStatement>(statement), frame);
    case StatementKind::Break:
        return Flow::Break;
    case StatementKind::Continue:
        return Flow::Continue;
    case StatementKind::Return:
        if (const auto &value = As<ReturnStatement>(statement).value)
            frame.returnValue = Scalar(*value, frame, {Kind::Int, 0, 0, 0}).integer;
        return Flow::Return;
    case StatementKind::RaiseError:
        RunRaiseError(As<RaiseStatement>(statement), frame);
        return Flow::Next; // keeps its number in @@ERROR
    case StatementKind::Select:
        RunSelect(statement, frame);
        break;
    case StatementKind::Insert:
        if (As<InsertStatement>(statement).execute)
            RunInsertExecute(As<InsertStatement>(statement), frame);
        else
            RunChange(statement, frame);
        break;
    case StatementKind::Update:
    case StatementKind::Delete:
        RunChange(statement, frame);
        break;
    case StatementKind::Declare:
        RunDeclare(As<DeclareStatement>(statement), frame);
        break;
    case StatementKind::SetVariable:
        RunSetVariable(As<SetVariableStatement>(statement), frame);
        break;
    case StatementKind::SetOption:
        RunSetOption(As<SetOptionStatement>(statement));
        break;
    case StatementKind::Execute:
        RunExecute(As<ExecuteStatement>(statement), frame);
        break;
    case StatementKind::ExecuteText: {
        QHash<QString, Value> none;
        RunText(text(*As<ExecuteTextStatement>(statement).sql, frame), {}, {}, none);
        break;
    }
    case StatementKind::BeginTransaction:
        m_connection.BeginTransaction(As<TransactionStatement>(statement).name);
        break;
    case StatementKind::Commit:
        m_connection.Commit();
        break;
    case StatementKind::Rollback:
        m_connection.Rollback(As<TransactionStatement>(statement).name);
        break;
    case StatementKind::SaveTransaction:
        m_connection.SaveTransaction(As<TransactionStatement>(statement).name);
        break;
    case StatementKind::Throw:
        RunThrow(As<RaiseStatement>(statement), frame);
        break;
    case StatementKind::Print:
        Say(text(*As<PrintStatement>(statement).value, frame));
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
        RunDefinition(statement, frame);
        break;
    }
    m_connection.m_session.lastError = 0;
    return Flow::Next;
}

void Interpreter::Say(const QString &message)
{
    m_outcome.messages.push_back({message, m_outcome.results.size()});
}

Interpreter::Flow Interpreter::RunIf(const IfStatement &branch, Frame &frame)
{
    if (Condition(*branch.condition, frame))
        return Run(*branch.then, frame);
    return branch.otherwise ? Run(*branch.otherwise, frame) : Flow::Next;
}

Interpreter::Flow Interpreter::RunLoop(const WhileStatement &loop, Frame &frame)
{
    while (Condition(*loop.condition, frame)) {
        const Flow flow = Run(*loop.body, frame);
        if (flow == Flow::Break)
            break;
        if (flow == Flow::Return)
            return flow;
    }
    return Flow::Next;
}

Interpreter::Flow Interpreter::RunTry(const TryCatchStatement &statement, Frame &frame)
{
    Session &session = m_connection.m_session;
    const int nesting = session.nesting;
    ++m_tries;
    try {
        const Flow flow = Run(statement.tried, frame);
        --m_tries;
        return flow;
    } catch (const Error &error) {
        --m_tries;
        session.nesting = nesting;
        m_connection.NoticeLostTransaction();
        session.caught.push_back(
            {error.Number(), error.Line(), error.Severity(), error.State(), error.Text(), m_failedProcedure});
        m_failedProcedure.clear();
    }
    try {
        const Flow flow = Run(statement.caught, frame);
        session.caught.pop_back();
        return flow;
    } catch (const Error &) {
        session.caught.pop_back();
        throw;
    }
}

void Interpreter::RunThrow(const RaiseStatement &statement, Frame &frame)
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
    const auto code = int(Scalar(*statement.args[0], frame, number).integer);
    Error error = Error::Worded(code, text(*statement.args[1], frame));
    error.setSeverity(16, int(Scalar(*statement.args[2], frame, number).integer));
    throw error;
}

/** RAISERROR's marks: %s and %d take the values in turn, %% is a percent sign. */
static QString Formatted(const QString &format, const QStringList &values)
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

void Interpreter::RunRaiseError(const RaiseStatement &statement, Frame &frame)
{
    const SqlType number{Kind::Int, 0, 0, 0};
    QStringList values;
    for (size_t i = 3; i < statement.args.size(); ++i)
        values += text(*statement.args[i], frame);
    const QString message = Formatted(text(*statement.args[0], frame), values);
    const auto severity = int(Scalar(*statement.args[1], frame, number).integer);
    const auto state = int(Scalar(*statement.args[2], frame, number).integer);
    if (severity < 11) {
        Say(message);
        m_connection.m_session.lastError = 0;
        return;
    }
    Error error = Error::Worded(50000, message, statement.line);
    error.setSeverity(severity, state);
    if (m_tries > 0)
        throw error;
    m_connection.m_session.lastError = error.Number();
    if (!m_raised)
        m_raised = error;
}

/** Whether an option asks for what this database does anyway. */
static bool IsCustom(const SetOptionStatement &statement)
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

void Interpreter::RunSetOption(const SetOptionStatement &statement)
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
        const auto table = m_connection.m_catalogue.FindTable(statement.table);
        if (!table)
            throw Error(1088, {statement.table.Display()});
        if (on)
            session.options.identityInsert = {table->name.KeyText()};
        else
            session.options.identityInsert.remove(table->name.KeyText());
        m_connection.m_plans.clear(); // an INSERT means something else now
    } else if (!IsCustom(statement)) {
        throw NotSupported(u"SET %1 %2"_s.arg(statement.option, statement.value));
    }
}

void Interpreter::setLockTimeout(const QString &value) const
{
    bool number = false;
    const int milliseconds = value.toInt(&number);
    if (!number)
        throw Error(102, {value});
    m_connection.m_main.WaitForLocks(milliseconds < 0 ? SqliteHandle::BusyTimeout : milliseconds);
}

void Interpreter::RunSetVariable(const SetVariableStatement &set, Frame &frame)
{
    const QString key = VariableKey(set.variable);
    if (!frame.plan.Variables().contains(key))
        throw Error(137, {set.variable});
    frame.variables[key] = Scalar(*set.value, frame, frame.plan.Variables().value(key));
}

void Interpreter::RunDeclare(const DeclareStatement &statement, Frame &frame)
{
    for (const auto &variable : statement.variables) {
        if (variable.value)
            frame.variables[VariableKey(variable.name)] = Scalar(*variable.value, frame, variable.type);
    }
}

} // namespace tsql
