#include "tests/tds/session.h"

#include "tsql/values/error.h"

#include <QRegularExpression>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace tds {

namespace {

template <class Number> Number NumberAt(const QByteArray &bytes, qsizetype offset)
{
    if (offset < 0 || offset + qsizetype(sizeof(Number)) > bytes.size())
        throw Lost();
    return qFromLittleEndian<Number>(bytes.constData() + offset);
}

QString TextAt(const QByteArray &bytes, qsizetype offset, qsizetype letters)
{
    if (offset < 0 || letters < 0 || offset + 2 * letters > bytes.size())
        throw Lost();
    QString text(letters, Qt::Uninitialized);
    memcpy(text.data(), bytes.constData() + offset, size_t(2 * letters));
    return text;
}

/** Batches and requests begin with headers that say how long they are. */
qsizetype AfterHeaders(const QByteArray &body)
{
    return NumberAt<quint32>(body, 0);
}

QString Unquoted(QString text, QChar quote)
{
    return text.replace(QString(2, quote), quote);
}

/** The answer to the question that a client asks before it logs in: this version, no encryption, no more. */
QByteArray PreLoginAnswer()
{
    struct Option
    {
        char token;
        QByteArray value;
    };
    constexpr char NoEncryption = 2;
    const Option options[] = {{0, QByteArray("\x0d\x00\x00\x00\x00\x00", 6)},
                              {1, QByteArray(1, NoEncryption)},
                              {2, QByteArray(1, '\0')},
                              {4, QByteArray(1, '\0')}};
    QByteArray table;
    QByteArray values;
    const qsizetype tableSize = 5 * qsizetype(std::size(options)) + 1;
    for (const Option &option : options) {
        char place[4];
        qToBigEndian(quint16(tableSize + values.size()), place);
        qToBigEndian(quint16(option.value.size()), place + 2);
        table += option.token + QByteArray(place, 4);
        values += option.value;
    }
    return table + '\xff' + values;
}

} // namespace

bool Session::enter(const QString &name)
{
    std::shared_ptr<Database> database;
    if (name.compare(u"master", Qt::CaseInsensitive) != 0) {
        database = m_databases.enter(name);
        if (!database)
            return false;
    }
    leave();
    m_database = database;
    m_connection = std::make_unique<tsql::Connection>(database ? database->file : u":memory:"_s);
    return true;
}

void Session::leave()
{
    m_connection.reset();
    if (m_database)
        m_databases.leave(std::exchange(m_database, nullptr));
}

bool Session::logIn()
{
    constexpr qsizetype DatabasePlace = 68;
    Message message = m_wire.receive();
    if (message.type == MessageType::PreLogin) {
        m_wire.put(PreLoginAnswer());
        m_wire.finish();
        message = m_wire.receive();
    }
    if (message.type != MessageType::Login)
        throw Lost();
    const QByteArray &body = message.body;
    QString name = TextAt(body, NumberAt<quint16>(body, DatabasePlace), NumberAt<quint16>(body, DatabasePlace + 2));
    if (name.isEmpty())
        name = databaseName();
    if (!enter(name)) {
        PutMessage(m_wire, 4060, 11, 1, 1,
                   u"Cannot open database \"%1\" requested by the login. The login failed."_s.arg(name));
        PutDone(m_wire, DoneError);
        m_wire.finish();
        return false;
    }
    const auto packetSize = int(std::clamp(NumberAt<quint32>(body, 8), 512U, 32767U));
    PutDatabaseChange(m_wire, u"master"_s, databaseName());
    PutCollationChange(m_wire, collation());
    PutLoginAcknowledgement(m_wire, NumberAt<quint32>(body, 4));
    PutPacketSizeChange(m_wire, packetSize);
    PutDone(m_wire, 0);
    m_wire.finish();
    m_wire.setPacketSize(packetSize);
    return true;
}

void Session::serve()
{
    for (;;) {
        const Message message = m_wire.receive();
        if (message.type == MessageType::Attention)
            PutDone(m_wire, DoneAttention);
        else
            answer(message);
        m_wire.finish();
    }
}

/** What the engine refuses is told, with its line. */
template <class Work> void Session::guarded(const Work &work)
{
    try {
        work();
    } catch (const tsql::Error &error) {
        PutMessage(m_wire, error.Number(), error.Severity(), error.State(), error.Line(), error.Text());
        PutDone(m_wire, DoneError);
    }
}

void Session::answer(const Message &message)
{
    guarded([&] {
        const qsizetype start = AfterHeaders(message.body);
        switch (message.type) {
        case MessageType::Batch:
            return runBatch(TextAt(message.body, start, (message.body.size() - start) / 2));
        case MessageType::Transaction:
            return changeTransaction(message.body.mid(start));
        default:
            throw tsql::Error::Worded(2812, u"This test server takes batches only: no calls, cursors or prepared "
                                            "statements."_s);
        }
    });
}

void Session::runBatch(const QString &text)
{
    if (changedDatabases(text))
        return PutDone(m_wire, 0);
    if (m_transaction && !m_begun) {
        m_connection->BeginTransaction();
        m_begun = true;
    }
    tsql::Outcome outcome;
    try {
        const QString query = catalogueQuery(text);
        m_connection->Execute(query.isEmpty() ? text : query, outcome);
    } catch (const tsql::Error &) {
        sendOutcome(outcome); // what came before
        followTransaction(text);
        throw;
    }
    sendOutcome(outcome);
    followTransaction(text);
    PutDone(m_wire, 0);
}

/** The client is told of a transaction that a text has begun or ended. */
void Session::followTransaction(const QString &text)
{
    if (!text.contains(u"TRANSACTION"_s, Qt::CaseInsensitive))
        return;
    tsql::Outcome outcome;
    m_connection->Execute(u"SELECT 1 AS IsOpen WHERE @@TRANCOUNT > 0"_s, outcome);
    const bool open = outcome.results.front()->Next();
    if (open == m_begun)
        return;
    m_begun = open;
    if (open)
        m_transaction = ++m_lastTransaction;
    const quint8 ended = text.contains(u"COMMIT"_s, Qt::CaseInsensitive) ? 9 : 10;
    PutTransactionChange(m_wire, open ? 8 : ended, open ? m_transaction : std::exchange(m_transaction, 0));
}

/** Everything but the end of the batch, which says that nothing follows. */
void Session::sendOutcome(tsql::Outcome &outcome)
{
    for (const tsql::Message &said : outcome.messages)
        PutMessage(m_wire, 0, 0, 1, 1, said.text);
    bool called = false;
    for (const tsql::Report &report : outcome.reports) {
        if (std::exchange(called, report.inProcedure) && !called) {
            PutReturnStatus(m_wire, 0);
            PutDone(m_wire, DoneMore, 0, DoneKind::Procedure);
        }
        if (report.result >= 0)
            sendRows(*outcome.results[size_t(report.result)], report.inProcedure);
        else
            PutDone(m_wire, DoneMore | DoneCount, report.affected,
                    report.inProcedure ? DoneKind::InProcedure : DoneKind::Batch);
        if (m_wire.interrupted())
            return;
    }
}

void Session::sendRows(tsql::Cursor &cursor, bool inProcedure)
{
    PutColumns(m_wire, cursor.Columns(), collation());
    qint64 rows = 0;
    while (!m_wire.interrupted() && cursor.Next()) {
        PutRow(m_wire, cursor, collation());
        ++rows;
    }
    PutDone(m_wire, DoneMore | DoneCount, rows, inProcedure ? DoneKind::InProcedure : DoneKind::Batch);
}

/** CREATE DATABASE, DROP DATABASE and USE, which the engine does not know; false when the text is none of them. */
bool Session::changedDatabases(const QString &text)
{
    static const QRegularExpression pattern(
        uR"(^\s*(?:IF\s+DB_ID\s*\(\s*N?'((?:[^']|'')*)'\s*\)\s+IS\s+(NOT\s+)?NULL\s+)?(?:BEGIN\s+)?)"
        R"((CREATE\s+DATABASE|DROP\s+DATABASE|USE)\s+(?:\[((?:[^\]]|\]\])+)\]|(\w+)))"
        R"((?:\s+COLLATE\s+(\w+)|\s+AS\s+COPY\s+OF\s+\[([^\]]+)\])?)"
        R"((?:\s+ALTER\s+DATABASE\s+(?:\[(?:[^\]]|\]\])+\]|\w+)\s+SET\s+READ_COMMITTED_SNAPSHOT\s+ON\s+END)?\s*;?\s*$)"_s, // which it always is
        QRegularExpression::CaseInsensitiveOption);
    const auto match = pattern.match(text);
    if (!match.hasMatch())
        return false;
    const bool asks = match.hasCaptured(1);
    const bool wanted = !match.captured(2).isEmpty();
    if (asks && m_databases.exists(Unquoted(match.captured(1), u'\'')) != wanted)
        return true;
    const QString verb = match.captured(3).left(4).toUpper();
    const QString name = match.captured(4).isEmpty() ? match.captured(5) : Unquoted(match.captured(4), u']');
    if (verb == u"CREA" && match.hasCaptured(7))
        m_databases.copy(name, match.captured(7));
    else if (verb == u"CREA")
        m_databases.create(name, match.captured(6));
    else if (verb == u"DROP")
        m_databases.drop(name);
    else
        use(name);
    return true;
}

void Session::use(const QString &database)
{
    const QString before = databaseName();
    if (!enter(database))
        throw tsql::Error::Worded(
            911, u"Database '%1' does not exist. Make sure that the name is entered correctly."_s.arg(database));
    PutDatabaseChange(m_wire, before, databaseName());
    PutCollationChange(m_wire, collation());
}

/** What the catalogue's own views and procedures would answer, as a query of the engine; empty for any other text. */
QString Session::catalogueQuery(const QString &text) const
{
    if (text.contains(u"sp_datatype_info"))
        return u"SELECT 'datetime' AS TYPE_NAME, CAST(93 AS smallint) AS DATA_TYPE, 23 AS [PRECISION]"_s;
    const QString view = u"INFORMATION_SCHEMA.TABLES"_s;
    if (!text.contains(view))
        return {};
    QString rows = u"SELECT N'' AS TABLE_SCHEMA, N'' AS TABLE_NAME WHERE 1 = 0"_s;
    for (const tsql::ObjectName &table : m_connection->Names().TableNames())
        rows += u" UNION ALL SELECT N'%1', N'%2'"_s.arg(table.schema, table.name);
    return QString(text).replace(view, u"(%1) AS TABLES"_s.arg(rows));
}

/** Begin, commit (and perhaps begin again), roll back, as the driver's switch of automatic commits sends them. */
void Session::changeTransaction(const QByteArray &body)
{
    constexpr quint8 BeginAgain = 1;
    enum Request : quint16 { Begin = 5, Commit = 7, Rollback = 8 };
    const auto begin = [this] {
        m_transaction = ++m_lastTransaction;
        m_begun = false;
        PutTransactionChange(m_wire, 8, m_transaction);
    };
    switch (NumberAt<quint16>(body, 0)) {
    case Begin:
        begin();
        break;
    case Commit:
        endTransaction(9);
        if (NumberAt<quint8>(body, 3 + NumberAt<quint8>(body, 2)) & BeginAgain)
            begin();
        break;
    case Rollback:
        endTransaction(10);
        if (NumberAt<quint8>(body, 3 + NumberAt<quint8>(body, 2)) & BeginAgain)
            begin();
        break;
    default:
        throw tsql::Error::Worded(8501, u"This test server knows local transactions only."_s);
    }
    PutDone(m_wire, 0);
}

void Session::endTransaction(quint8 type)
{
    const quint64 transaction = std::exchange(m_transaction, 0);
    if (std::exchange(m_begun, false)) {
        if (type == 9)
            m_connection->Commit();
        else
            m_connection->Rollback();
    } else if (!transaction) {
        throw tsql::Error::Worded(type == 9 ? 3902 : 3903, u"The request has no corresponding BEGIN TRANSACTION."_s);
    }
    PutTransactionChange(m_wire, type, transaction);
}

} // namespace tds
