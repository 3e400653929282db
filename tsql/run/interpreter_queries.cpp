#include "tsql/run/binding.h"
#include "tsql/run/interpreter.h"
#include "tsql/run/key_conflict.h"
#include "tsql/run/key_exchange.h"
#include "tsql/run/sqlite_errors.h"
#include "tsql/values/dates.h"
#include "tsql/values/error.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

SqlType nvarchar()
{
    return SqlType::text(Kind::NVarChar, 4000);
}

SqlType systemType(const QString &name)
{
    if (name == u"getdate"_s || name == u"getutcdate"_s || name == u"current_timestamp"_s)
        return {Kind::DateTime, 0, 0, 0};
    static const QStringList texts = {u"@@version"_s, u"@@servername"_s, u"db_name"_s,       u"suser_sname"_s,
                                      u"host_name"_s, u"app_name"_s,     u"error_message"_s, u"error_procedure"_s};
    return texts.contains(name) ? nvarchar() : SqlType{Kind::BigInt, 0, 0, 0};
}

Value presentMoment()
{
    return Value::ofText(QByteArray::fromStdString(storageText(now(), Kind::DateTime)));
}

Value caughtValue(const QString &name, const std::vector<CaughtError> &errors)
{
    if (errors.empty())
        return {};
    const CaughtError &error = errors.back();
    if (name == u"error_number"_s)
        return Value::ofInteger(error.number);
    if (name == u"error_line"_s)
        return Value::ofInteger(error.line);
    if (name == u"error_severity"_s)
        return Value::ofInteger(error.severity);
    if (name == u"error_state"_s)
        return Value::ofInteger(error.state);
    if (name == u"error_message"_s)
        return Value::ofText(error.message);
    return error.procedure.isEmpty() ? Value() : Value::ofText(error.procedure);
}

} // namespace

Value Interpreter::systemValue(const QString &name, const Frame &frame) const
{
    const Session &session = m_connection.m_session;
    if (name == u"@@rowcount"_s)
        return Value::ofInteger(session.rowCount);
    if (name == u"scope_identity"_s)
        return frame.scopeIdentity;
    if (name == u"@@identity"_s)
        return session.identity;
    if (name == u"@@trancount"_s)
        return Value::ofInteger(session.transactions);
    if (name == u"@@error"_s)
        return Value::ofInteger(session.lastError);
    if (name == u"@@nestlevel"_s)
        return Value::ofInteger(session.nesting);
    if (name == u"@@spid"_s)
        return Value::ofInteger(QCoreApplication::applicationPid() % 32768);
    if (name == u"@@fetch_status"_s)
        return Value::ofInteger(-1);
    if (name == u"xact_state"_s)
        return Value::ofInteger(session.transactions > 0);
    if (name == u"getdate"_s || name == u"current_timestamp"_s)
        return presentMoment();
    if (name == u"getutcdate"_s) {
        const QDateTime utc = QDateTime::currentDateTimeUtc();
        return Value::ofText(utc.toString(u"yyyy-MM-dd hh:mm:ss.zzz"_s));
    }
    if (name.startsWith(u"error_"_s))
        return caughtValue(name, session.caught);
    if (name == u"@@version"_s)
        return Value::ofText(u"Embedded database"_s);
    if (name == u"db_name"_s)
        return Value::ofText(m_connection.m_path);
    if (name == u"app_name"_s)
        return Value::ofText(QCoreApplication::applicationName());
    if (name == u"suser_sname"_s)
        return Value::ofText(qEnvironmentVariable("USER"));
    return Value::ofText(QSysInfo::machineHostName());
}

void Interpreter::bind(sqlite3_stmt *statement, const Compiled &compiled, Frame &frame, BoundBytes *bytes)
{
    int index = 0;
    for (const Parameter &parameter : compiled.parameters) {
        ++index;
        switch (parameter.source) {
        case Parameter::Source::Literal:
            bindLiteral(statement, index,
                        frame.literals ? (*frame.literals)[size_t(parameter.literal)] : parameter.value, parameter,
                        bytes);
            break;
        case Parameter::Source::Constant:
            bindLiteral(statement, index, parameter.value, parameter, bytes);
            break;
        case Parameter::Source::Variable:
            bindConverted(statement, index, frame.variables.value(parameter.name), parameter.variableType, parameter);
            break;
        case Parameter::Source::System:
            bindConverted(statement, index, systemValue(parameter.name, frame), systemType(parameter.name), parameter);
            break;
        }
    }
}

/** The session's settings, with the literals of the text at hand: the tree may stem from another of its shape. */
CompileOptions Interpreter::optionsOf(const Frame &frame) const
{
    CompileOptions options = m_connection.m_session.options;
    options.literals = frame.literals;
    return options;
}

template <class Compiler>
std::shared_ptr<CompiledEntry> Interpreter::entryOf(const void *node, Frame &frame, const Compiler &compiler)
{
    const Catalogue &catalogue = m_connection.m_catalogue;
    if (auto found = frame.plan.find(node, frame.literals, catalogue.version()))
        return found;
    try {
        return frame.plan.add(node, frame.literals, catalogue.version(), compiler());
    } catch (const Error &) {
        // Another process may just have defined what this text names.
        if (!m_connection.definedElsewhere())
            throw;
    }
    return frame.plan.add(node, frame.literals, catalogue.version(), compiler());
}

std::shared_ptr<CompiledEntry> Interpreter::entryOf(const Statement &statement, Frame &frame)
{
    return entryOf(&statement, frame, [&] {
        return compile(statement, m_connection.m_catalogue, frame.plan.variables(), optionsOf(frame));
    });
}

void Interpreter::runSelect(const Statement &statement, Frame &frame)
{
    const auto entry = entryOf(statement, frame);
    if (entry->compiled.into)
        return defineInto(entry->compiled, frame);
    if (!entry->compiled.inTurn.empty())
        return runAssignmentInTurn(entry, frame);
    if (!entry->compiled.assign.empty())
        return runAssignment(entry, frame);
    const bool mayStream = m_connection.m_session.transactions == 0 && m_countingFrames == 0 && !entry->usesTemporary;
    const std::shared_ptr<Reader> reader = mayStream ? m_connection.freeReader() : nullptr;
    Lease lease(entry, reader ? reader->handle : m_connection.m_main);
    bind(lease.statement(), entry->compiled, frame);
    auto cursor = reader ? std::make_unique<Cursor>(std::move(lease), reader)
                         : std::make_unique<Cursor>(std::move(lease), m_connection.m_main);
    m_connection.m_session.rowCount = qint64(cursor->bufferedRows());
    reportRows(std::move(cursor));
}

void Interpreter::reportRows(std::unique_ptr<Cursor> cursor)
{
    m_outcome.reports.push_back({int(m_outcome.results.size()), -1, m_connection.m_session.nesting > 0});
    m_outcome.results.push_back(std::move(cursor));
}

void Interpreter::reportCount(qint64 rows)
{
    m_outcome.affected = rows;
    if (m_connection.m_session.counts)
        m_outcome.reports.push_back({-1, rows, m_connection.m_session.nesting > 0});
}

/** SELECT @x = …: each row assigns, so the last one counts; without rows the variables stay as they are. */
void Interpreter::runAssignment(const std::shared_ptr<CompiledEntry> &entry, Frame &frame)
{
    const Compiled &compiled = entry->compiled;
    const Lease lease(entry, m_connection.m_main);
    bind(lease.statement(), compiled, frame);
    qint64 rows = 0;
    std::vector<Value> last(compiled.assign.size());
    while (m_connection.m_main.step(lease.statement())) {
        ++rows;
        for (size_t i = 0; i < last.size(); ++i)
            last[i] = columnValue(lease.statement(), int(i));
    }
    for (size_t i = 0; rows > 0 && i < last.size(); ++i)
        assign(compiled.assign[i], last[i], compiled.columns[i].type, frame);
    m_connection.m_session.rowCount = rows;
}

/** SELECT @x = @x + column …: row after row, each value with what the assignments before it have left. */
void Interpreter::runAssignmentInTurn(const std::shared_ptr<CompiledEntry> &entry, Frame &frame)
{
    const Compiled &compiled = entry->compiled;
    const SqliteHandle &handle = m_connection.m_main;
    std::vector<PreparedStatement> values;
    for (const Compiled &value : compiled.inTurn)
        values.push_back(handle.prepare(value.sql.toUtf8()));
    const Lease rows(entry, handle);
    bind(rows.statement(), compiled, frame);
    Frame row{frame.plan, frame.literals, frame.variables, frame.scopeIdentity, 0, {}};
    qint64 count = 0;
    for (; handle.step(rows.statement()); ++count) {
        for (int i = 0; i < sqlite3_column_count(rows.statement()); ++i)
            row.variables[rowVariable(size_t(i))] = columnValue(rows.statement(), i);
        for (size_t i = 0; i < values.size(); ++i) {
            const StatementUse use(values[i].get());
            bind(values[i].get(), compiled.inTurn[i], row);
            handle.step(values[i].get());
            row.variables[compiled.assign[i]] = columnValue(values[i].get(), 0);
        }
    }
    for (const QString &name : compiled.assign)
        frame.variables[name] = row.variables.value(name);
    m_connection.m_session.rowCount = count;
}

void Interpreter::assign(const QString &variable, const Value &value, const SqlType &type, Frame &frame) const
{
    const QString key = variableKey(variable);
    const SqlType target = frame.plan.variables().value(key);
    frame.variables[key] = target == type ? value : convert(value, type, {target, false, {}, {}});
}

void Interpreter::runChange(const Statement &statement, Frame &frame)
{
    const auto entry = entryOf(statement, frame);
    const Compiled &compiled = entry->compiled;
    Session &session = m_connection.m_session;
    if (session.transactions == 0 && !entry->usesTemporary)
        m_connection.requireFile();
    SqliteHandle &handle = m_connection.m_main;
    BoundBytes bytes; // outlives the lease
    Lease lease(entry, handle);
    bind(lease.statement(), compiled, frame, &bytes);
    try {
        if (compiled.columns.empty()) {
            while (handle.step(lease.statement())) {
            }
        } else {
            reportRows(std::make_unique<Cursor>(std::move(lease), handle));
        }
    } catch (const SqliteError &error) {
        if (isDuplicate(error.code()) && statement.kind == StatementKind::Update) {
            lease.release();
            return runExchange(as<UpdateStatement>(statement), error, frame);
        }
        if (error.code() != SQLITE_CONSTRAINT_FOREIGNKEY)
            throw;
        // The way to the rows may have taken the statement along.
        lease.release();
        Lease again(entry, handle);
        bind(again.statement(), compiled, frame);
        throw keyConflict(handle, again.statement(), compiled, verbOf(statement), m_connection.m_catalogue);
    }
    session.rowCount = sqlite3_changes64(handle.get());
    if (compiled.columns.empty())
        reportCount(session.rowCount);
    else
        m_outcome.affected = session.rowCount;
    if (compiled.setsIdentity && session.rowCount > 0) {
        frame.scopeIdentity = Value::ofInteger(sqlite3_last_insert_rowid(handle.get()));
        session.identity = frame.scopeIdentity;
    }
}

/** An UPDATE in which a row may have met a key that another row was yet to give up. */
void Interpreter::runExchange(const UpdateStatement &statement, const SqliteError &refusal, Frame &frame)
{
    const SqliteHandle &handle = m_connection.m_main;
    const Catalogue &catalogue = m_connection.m_catalogue;
    const Compiled found = compileNewValues(statement, catalogue, frame.plan.variables(), optionsOf(frame));
    StatementScope scope(handle);
    const PreparedStatement values = handle.prepare(found.sql.toUtf8());
    bind(values.get(), found, frame);
    const qint64 rows = exchangeKeys(handle, values.get(), found, catalogue);
    if (rows < 2)
        throw refusal;
    if (!statement.output.empty())
        throw Error(wording::OutputOfExchange);
    scope.release();
    m_connection.m_session.rowCount = rows;
    reportCount(rows);
}

Value Interpreter::scalar(const Expression &value, Frame &frame, const SqlType &target)
{
    const auto entry = entryOf(&value, frame, [&] {
        return compileScalar(value, m_connection.m_catalogue, frame.plan.variables(), target, optionsOf(frame));
    });
    const Lease lease(entry, m_connection.m_main);
    bind(lease.statement(), entry->compiled, frame);
    return m_connection.m_main.step(lease.statement()) ? columnValue(lease.statement(), 0) : Value();
}

bool Interpreter::condition(const Expression &value, Frame &frame)
{
    const auto entry = entryOf(&value, frame, [&] {
        return compileCondition(value, m_connection.m_catalogue, frame.plan.variables(), optionsOf(frame));
    });
    const Lease lease(entry, m_connection.m_main);
    bind(lease.statement(), entry->compiled, frame);
    return m_connection.m_main.step(lease.statement()) && sqlite3_column_int(lease.statement(), 0) != 0;
}

QString Interpreter::text(const Expression &value, Frame &frame)
{
    return QString::fromUtf8(scalar(value, frame, SqlType::text(Kind::NVarChar, SqlType::Max)).bytes);
}

} // namespace tsql
