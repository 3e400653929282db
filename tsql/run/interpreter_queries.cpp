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

SqlType Nvarchar()
{
    return SqlType::text(Kind::NVarChar, 4000);
}

SqlType SystemType(const QString &name)
{
    if (name == u"getdate"_s || name == u"getutcdate"_s || name == u"current_timestamp"_s)
        return {Kind::DateTime, 0, 0, 0};
    static const QStringList texts = {u"@@version"_s, u"@@servername"_s, u"db_name"_s,       u"suser_sname"_s,
                                      u"host_name"_s, u"app_name"_s,     u"error_message"_s, u"error_procedure"_s};
    return texts.contains(name) ? Nvarchar() : SqlType{Kind::BigInt, 0, 0, 0};
}

Value PresentMoment()
{
    return Value::OfText(QByteArray::fromStdString(StorageText(Now(), Kind::DateTime)));
}

Value CaughtValue(const QString &name, const std::vector<CaughtError> &errors)
{
    if (errors.empty())
        return {};
    const CaughtError &error = errors.back();
    if (name == u"error_number"_s)
        return Value::OfInteger(error.number);
    if (name == u"error_line"_s)
        return Value::OfInteger(error.line);
    if (name == u"error_severity"_s)
        return Value::OfInteger(error.severity);
    if (name == u"error_state"_s)
        return Value::OfInteger(error.state);
    if (name == u"error_message"_s)
        return Value::OfText(error.message);
    return error.procedure.isEmpty() ? Value() : Value::OfText(error.procedure);
}

} // namespace

Value Interpreter::SystemValue(const QString &name, const Frame &frame) const
{
    const Session &session = m_connection.m_session;
    if (name == u"@@rowcount"_s)
        return Value::OfInteger(session.rowCount);
    if (name == u"scope_identity"_s)
        return frame.scopeIdentity;
    if (name == u"@@identity"_s)
        return session.identity;
    if (name == u"@@trancount"_s)
        return Value::OfInteger(session.transactions);
    if (name == u"@@error"_s)
        return Value::OfInteger(session.lastError);
    if (name == u"@@nestlevel"_s)
        return Value::OfInteger(session.nesting);
    if (name == u"@@spid"_s)
        return Value::OfInteger(QCoreApplication::applicationPid() % 32768);
    if (name == u"@@fetch_status"_s)
        return Value::OfInteger(-1);
    if (name == u"xact_state"_s)
        return Value::OfInteger(session.transactions > 0);
    if (name == u"getdate"_s || name == u"current_timestamp"_s)
        return PresentMoment();
    if (name == u"getutcdate"_s) {
        const QDateTime utc = QDateTime::currentDateTimeUtc();
        return Value::OfText(utc.toString(u"yyyy-MM-dd hh:mm:ss.zzz"_s));
    }
    if (name.startsWith(u"error_"_s))
        return CaughtValue(name, session.caught);
    if (name == u"@@version"_s)
        return Value::OfText(u"Embedded database"_s);
    if (name == u"db_name"_s)
        return Value::OfText(m_connection.m_path);
    if (name == u"app_name"_s)
        return Value::OfText(QCoreApplication::applicationName());
    if (name == u"suser_sname"_s)
        return Value::OfText(qEnvironmentVariable("USER"));
    return Value::OfText(QSysInfo::machineHostName());
}

void Interpreter::Bind(sqlite3_stmt *statement, const Compiled &compiled, Frame &frame, BoundBytes *bytes)
{
    int index = 0;
    for (const Parameter &parameter : compiled.parameters) {
        ++index;
        switch (parameter.source) {
        case Parameter::Source::Literal:
            BindLiteral(statement, index,
                        frame.literals ? (*frame.literals)[size_t(parameter.literal)] : parameter.value, parameter,
                        bytes);
            break;
        case Parameter::Source::Constant:
            BindLiteral(statement, index, parameter.value, parameter, bytes);
            break;
        case Parameter::Source::Variable:
            BindConverted(statement, index, frame.variables.value(parameter.name), parameter.variableType, parameter);
            break;
        case Parameter::Source::System:
            BindConverted(statement, index, SystemValue(parameter.name, frame), SystemType(parameter.name), parameter);
            break;
        }
    }
}

/** The session's settings, with the literals of the text at hand: the tree may stem from another of its shape. */
CompileOptions Interpreter::OptionsOf(const Frame &frame) const
{
    CompileOptions options = m_connection.m_session.options;
    options.literals = frame.literals;
    return options;
}

template <class Compiler>
std::shared_ptr<CompiledEntry> Interpreter::EntryOf(const void *node, Frame &frame, const Compiler &compiler)
{
    const Catalogue &catalogue = m_connection.m_catalogue;
    if (auto found = frame.plan.Find(node, frame.literals, catalogue.Version()))
        return found;
    try {
        return frame.plan.Add(node, frame.literals, catalogue.Version(), compiler());
    } catch (const Error &) {
        // Another process may just have defined what this text names.
        if (!m_connection.DefinedElsewhere())
            throw;
    }
    return frame.plan.Add(node, frame.literals, catalogue.Version(), compiler());
}

std::shared_ptr<CompiledEntry> Interpreter::EntryOf(const Statement &statement, Frame &frame)
{
    return EntryOf(&statement, frame, [&] {
        return Compile(statement, m_connection.m_catalogue, frame.plan.Variables(), OptionsOf(frame));
    });
}

void Interpreter::RunSelect(const Statement &statement, Frame &frame)
{
    const auto entry = EntryOf(statement, frame);
    if (entry->compiled.into)
        return DefineInto(entry->compiled, frame);
    if (!entry->compiled.inTurn.empty())
        return RunAssignmentInTurn(entry, frame);
    if (!entry->compiled.assign.empty())
        return RunAssignment(entry, frame);
    const bool mayStream = m_connection.m_session.transactions == 0 && m_countingFrames == 0 && !entry->usesTemporary;
    const std::shared_ptr<Reader> reader = mayStream ? m_connection.FreeReader() : nullptr;
    Lease lease(entry, reader ? reader->handle : m_connection.m_main);
    Bind(lease.Prepared(), entry->compiled, frame);
    auto cursor = reader ? std::make_unique<Cursor>(std::move(lease), reader)
                         : std::make_unique<Cursor>(std::move(lease), m_connection.m_main);
    m_connection.m_session.rowCount = qint64(cursor->BufferedRows());
    ReportRows(std::move(cursor));
}

void Interpreter::ReportRows(std::unique_ptr<Cursor> cursor)
{
    m_outcome.reports.push_back({int(m_outcome.results.size()), -1, m_connection.m_session.nesting > 0});
    m_outcome.results.push_back(std::move(cursor));
}

void Interpreter::ReportCount(qint64 rows)
{
    m_outcome.affected = rows;
    if (m_connection.m_session.counts)
        m_outcome.reports.push_back({-1, rows, m_connection.m_session.nesting > 0});
}

/** SELECT @x = …: each row assigns, so the last one counts; without rows the variables stay as they are. */
void Interpreter::RunAssignment(const std::shared_ptr<CompiledEntry> &entry, Frame &frame)
{
    const Compiled &compiled = entry->compiled;
    const Lease lease(entry, m_connection.m_main);
    Bind(lease.Prepared(), compiled, frame);
    qint64 rows = 0;
    std::vector<Value> last(compiled.assign.size());
    while (m_connection.m_main.Step(lease.Prepared())) {
        ++rows;
        for (size_t i = 0; i < last.size(); ++i)
            last[i] = ColumnValue(lease.Prepared(), int(i));
    }
    for (size_t i = 0; rows > 0 && i < last.size(); ++i)
        Assign(compiled.assign[i], last[i], compiled.columns[i].type, frame);
    m_connection.m_session.rowCount = rows;
}

/** SELECT @x = @x + column …: row after row, each value with what the assignments before it have left. */
void Interpreter::RunAssignmentInTurn(const std::shared_ptr<CompiledEntry> &entry, Frame &frame)
{
    const Compiled &compiled = entry->compiled;
    const SqliteHandle &handle = m_connection.m_main;
    std::vector<PreparedStatement> values;
    for (const Compiled &value : compiled.inTurn)
        values.push_back(handle.Prepare(value.sql.toUtf8()));
    const Lease rows(entry, handle);
    Bind(rows.Prepared(), compiled, frame);
    Frame row{frame.plan, frame.literals, frame.variables, frame.scopeIdentity, 0, {}};
    qint64 count = 0;
    for (; handle.Step(rows.Prepared()); ++count) {
        for (int i = 0; i < sqlite3_column_count(rows.Prepared()); ++i)
            row.variables[RowVariable(size_t(i))] = ColumnValue(rows.Prepared(), i);
        for (size_t i = 0; i < values.size(); ++i) {
            const StatementUse use(values[i].get());
            Bind(values[i].get(), compiled.inTurn[i], row);
            handle.Step(values[i].get());
            row.variables[compiled.assign[i]] = ColumnValue(values[i].get(), 0);
        }
    }
    for (const QString &name : compiled.assign)
        frame.variables[name] = row.variables.value(name);
    m_connection.m_session.rowCount = count;
}

void Interpreter::Assign(const QString &variable, const Value &value, const SqlType &type, Frame &frame) const
{
    const QString key = VariableKey(variable);
    const SqlType target = frame.plan.Variables().value(key);
    frame.variables[key] = target == type ? value : Convert(value, type, {target, false, {}, {}});
}

void Interpreter::RunChange(const Statement &statement, Frame &frame)
{
    const auto entry = EntryOf(statement, frame);
    const Compiled &compiled = entry->compiled;
    Session &session = m_connection.m_session;
    if (session.transactions == 0 && !entry->usesTemporary)
        m_connection.RequireFile();
    SqliteHandle &handle = m_connection.m_main;
    BoundBytes bytes; // outlives the lease
    Lease lease(entry, handle);
    Bind(lease.Prepared(), compiled, frame, &bytes);
    try {
        if (compiled.columns.empty()) {
            while (handle.Step(lease.Prepared())) {
            }
        } else {
            ReportRows(std::make_unique<Cursor>(std::move(lease), handle));
        }
    } catch (const SqliteError &error) {
        if (IsDuplicate(error.Code()) && statement.kind == StatementKind::Update) {
            lease.Release();
            return RunExchange(As<UpdateStatement>(statement), error, frame);
        }
        if (error.Code() != SQLITE_CONSTRAINT_FOREIGNKEY)
            throw;
        // The way to the rows may have taken the statement along.
        lease.Release();
        Lease again(entry, handle);
        Bind(again.Prepared(), compiled, frame);
        throw KeyConflict(handle, again.Prepared(), compiled, VerbOf(statement), m_connection.m_catalogue);
    }
    session.rowCount = sqlite3_changes64(handle.Get());
    if (compiled.columns.empty())
        ReportCount(session.rowCount);
    else
        m_outcome.affected = session.rowCount;
    if (compiled.setsIdentity && session.rowCount > 0) {
        frame.scopeIdentity = Value::OfInteger(sqlite3_last_insert_rowid(handle.Get()));
        session.identity = frame.scopeIdentity;
    }
}

/** An UPDATE in which a row may have met a key that another row was yet to give up. */
void Interpreter::RunExchange(const UpdateStatement &statement, const SqliteError &refusal, Frame &frame)
{
    const SqliteHandle &handle = m_connection.m_main;
    const Catalogue &catalogue = m_connection.m_catalogue;
    const Compiled found = CompileNewValues(statement, catalogue, frame.plan.Variables(), OptionsOf(frame));
    StatementScope scope(handle);
    const PreparedStatement values = handle.Prepare(found.sql.toUtf8());
    Bind(values.get(), found, frame);
    const qint64 rows = ExchangeKeys(handle, values.get(), found, catalogue);
    if (rows < 2)
        throw refusal;
    if (!statement.output.empty())
        throw Error(wording::OutputOfExchange);
    scope.Release();
    m_connection.m_session.rowCount = rows;
    ReportCount(rows);
}

Value Interpreter::Scalar(const Expression &value, Frame &frame, const SqlType &target)
{
    const auto entry = EntryOf(&value, frame, [&] {
        return CompileScalar(value, m_connection.m_catalogue, frame.plan.Variables(), target, OptionsOf(frame));
    });
    const Lease lease(entry, m_connection.m_main);
    Bind(lease.Prepared(), entry->compiled, frame);
    return m_connection.m_main.Step(lease.Prepared()) ? ColumnValue(lease.Prepared(), 0) : Value();
}

bool Interpreter::Condition(const Expression &value, Frame &frame)
{
    const auto entry = EntryOf(&value, frame, [&] {
        return CompileCondition(value, m_connection.m_catalogue, frame.plan.Variables(), OptionsOf(frame));
    });
    const Lease lease(entry, m_connection.m_main);
    Bind(lease.Prepared(), entry->compiled, frame);
    return m_connection.m_main.Step(lease.Prepared()) && sqlite3_column_int(lease.Prepared(), 0) != 0;
}

QString Interpreter::text(const Expression &value, Frame &frame)
{
    return QString::fromUtf8(Scalar(value, frame, SqlType::text(Kind::NVarChar, SqlType::Max)).bytes);
}

} // namespace tsql
