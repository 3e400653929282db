#include "tools/goods_sql/script_runner.h"

#include "tsql/error.h"
#include "tsql/lexer.h"

#include <QSqlError>

namespace {

/** "Line 12" of the embedded driver; other drivers do not tell: then it is the first line of the batch. */
int lineOf(const QSqlError &error)
{
    const QString text = error.driverText();
    return text.startsWith(u"Line "_qs) ? std::max(text.mid(5).toInt(), 1) : 1;
}

} // namespace

void ScriptRunner::run(const QString &script, const QString &name)
{
    std::vector<tsql::ScriptBatch> batches;
    try {
        batches = tsql::splitScript(script);
    } catch (const tsql::Error &error) {
        throw ScriptError{u"%1:%2: %3"_qs.arg(name, QString::number(error.line()), error.message())};
    }
    for (const tsql::ScriptBatch &batch : batches)
        runBatch(batch.text, batch.firstLine, name);
}

void ScriptRunner::runBatch(const QString &batch, int firstLine, const QString &name)
{
    if (batch.trimmed().isEmpty())
        return;
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    query.setNumericalPrecisionPolicy(QSql::HighPrecision);
    bool more = query.exec(batch);
    while (more && !query.lastError().isValid()) {
        if (m_printer && query.isSelect())
            m_printer->print(query);
        more = !query.lastError().isValid() && query.nextResult();
    }
    const QSqlError error = query.lastError();
    if (error.isValid()) {
        const QString number = error.nativeErrorCode().isEmpty() ? QString() : u" "_qs + error.nativeErrorCode();
        throw ScriptError{u"%1:%2: error%3: %4"_qs.arg(name, QString::number(firstLine + lineOf(error) - 1), number,
                                                       error.databaseText())};
    }
}
