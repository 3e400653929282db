#include "desk/application/schema_check.h"

#include "desk/application/database_creation.h"
#include "desk/messages/catalogue.h"
#include "host/data/database_error.h"
#include "host/data/query.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

/// As many as a message can name.
constexpr int NamedDifferences = 5;

} // namespace

SchemaDifference CompareSchema(const QSqlDatabase &connection)
{
    const auto ask = [&connection](const QString &text) {
        QList<QStringList> rows;
        for (host::Query query(connection, text); !query.Eof(); query.Next()) {
            QStringList row;
            for (int column = 0; column < query.Rows().ColumnCount(); ++column)
                row << query.Value(column).toString();
            rows << row;
        }
        return rows;
    };
    static const Schema schema(DatabaseScript(u"schema.sql"_s), DatabaseScript(u"procedures.sql"_s));
    return schema.Compare(ask);
}

QString SchemaTrouble(const SchemaDifference &difference, const QString &name)
{
    if (difference.standing == SchemaStanding::Later)
        return MessageText(message::LaterDatabase, {name});
    if (difference.standing != SchemaStanding::Foreign)
        return {};
    QStringList strange;
    for (const QString &each : difference.strange.mid(0, NamedDifferences))
        strange << u"\u2066"_s + each + u'\u2069';
    if (difference.strange.size() > NamedDifferences)
        strange << u"…"_s;
    return MessageText(message::AnotherSchema, {name, MessageText(message::StrangeColumns, {strange.join(u"، "_s)})});
}

void UpgradeSchema(const QSqlDatabase &connection, const std::function<void(int done, int total)> &progress)
{
    host::Transaction transaction(connection);
    // Asked here again: another desk may have been quicker.
    const QStringList steps = CompareSchema(connection).steps;
    for (int done = 0; done < steps.size(); ++done) {
        if (progress)
            progress(done, static_cast<int>(steps.size()));
        host::Exec(connection, steps.at(done));
    }
    transaction.Commit();
}

} // namespace desk
