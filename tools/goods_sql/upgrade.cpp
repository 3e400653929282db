#include "tools/goods_sql/upgrade.h"

#include "desk/database/schema.h"
#include "host/data/odbc_text.h"
#include "tools/goods_sql/script_runner.h"

#include <QScopeGuard>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace {

QList<QStringList> Ask(const QSqlDatabase &database, const QString &text)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(text))
        throw ScriptError{query.lastError().text()};
    const QSqlRecord record = query.record();
    const host::OdbcText texts(query);
    QList<QStringList> rows;
    while (query.next()) {
        QStringList row;
        for (int column = 0; column < record.count(); ++column) {
            const bool asText = texts.IsNeeded() && record.field(column).metaType().id() == QMetaType::QString;
            row << (asText ? texts.Read(column) : query.value(column)).toString();
        }
        rows << row;
    }
    if (query.lastError().isValid())
        throw ScriptError{query.lastError().text()};
    return rows;
}

desk::SchemaDifference Compare(const QSqlDatabase &database)
{
    const desk::Schema schema(EmbeddedScript(u"schema.sql"_s), EmbeddedScript(u"procedures.sql"_s));
    desk::SchemaDifference difference =
        schema.Compare([&database](const QString &text) { return Ask(database, text); });
    if (difference.standing == desk::SchemaStanding::Later)
        throw ScriptError{u"a later version made this database: it is left as it is"_s};
    if (difference.standing == desk::SchemaStanding::Foreign)
        throw ScriptError{u"the database is left as it is; missing or of another type: "_s +
                          difference.strange.join(u", "_s)};
    return difference;
}

} // namespace

void Upgrade(QSqlDatabase database, const Target &target, QTextStream &out)
{
    if (Compare(database).standing == desk::SchemaStanding::Current) {
        out << u"the database is of this version\n"_s;
        return;
    }
    if (!target.IsServer()) {
        const QString copy = desk::CopyBeside(target.Name());
        Backup(database, copy);
        out << u"copy: "_s << copy << Qt::endl;
    }
    if (!database.transaction())
        throw ScriptError{database.lastError().text()};
    auto takeBack = qScopeGuard([&] { database.rollback(); });
    // Asked here again: somebody else may have been quicker.
    const QStringList steps = Compare(database).steps;
    for (const QString &step : steps)
        ScriptRunner(database, nullptr).Run(step, u"upgrade"_s);
    if (!database.commit())
        throw ScriptError{database.lastError().text()};
    takeBack.dismiss();
    out << u"brought up to date\n"_s;
}
