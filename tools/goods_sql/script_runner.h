// Runs scripts batch by batch.
#pragma once

#include "tools/goods_sql/table_printer.h"
#include "tsql/text/lexer.h"

#include <QSqlDatabase>

/** Thrown at the first batch that is refused: says where and why, in one line. */
struct ScriptError
{
    QString text;
};

/** A script by its GO lines. Throws ScriptError; `name` is the file as messages call it. */
std::vector<tsql::ScriptBatch> BatchesOf(const QString &script, const QString &name);

/** Sends the batches between GO lines to a database and prints what comes back. */
class ScriptRunner
{
public:
    ScriptRunner(const QSqlDatabase &database, TablePrinter *printer) : m_database(database), m_printer(printer) {}

    /** `name` is the file as messages call it. Without a printer the results are dropped. */
    void Run(const QString &script, const QString &name);

private:
    void RunBatch(const QString &batch, int firstLine, const QString &name);

    QSqlDatabase m_database;
    TablePrinter *m_printer;
};
