#include "tools/goods_sql/script_runner.h"

#include "tsql/qt/driver.h"
#include "tsql/values/error.h"

#include <QSqlError>

using namespace Qt::StringLiterals;

namespace {

/** "Line 12" of the embedded driver; other drivers do not tell: then it is the first line of the batch. */
int LineOf(const QSqlError &error)
{
    const QString text = error.driverText();
    return text.startsWith(u"Line "_s) ? std::max(text.mid(5).toInt(), 1) : 1;
}

/** What a batch of the embedded database says between its result sets. A server's driver keeps it to itself. */
class Messages
{
public:
    explicit Messages(const QSqlDatabase &database)
    {
        if (const auto *driver = qobject_cast<tsql::Driver *>(database.driver()))
            m_all = driver->Messages();
    }

    /** Those before the next result set. */
    void PrintNext(TablePrinter &printer)
    {
        while (m_next < m_all.size() && m_all[m_next].resultsBefore <= m_results)
            printer.Say(m_all[m_next++].text);
        ++m_results;
    }

    void PrintRest(TablePrinter &printer)
    {
        while (m_next < m_all.size())
            printer.Say(m_all[m_next++].text);
    }

private:
    std::vector<tsql::Message> m_all;
    size_t m_next = 0;
    size_t m_results = 0;
};

} // namespace

std::vector<tsql::ScriptBatch> BatchesOf(const QString &script, const QString &name)
{
    try {
        return tsql::SplitScript(script);
    } catch (const tsql::Error &error) {
        throw ScriptError{u"%1:%2: %3"_s.arg(name, QString::number(error.Line()), error.Text())};
    }
}

void ScriptRunner::Run(const QString &script, const QString &name)
{
    for (const tsql::ScriptBatch &batch : BatchesOf(script, name))
        RunBatch(batch.text, batch.firstLine, name);
}

void ScriptRunner::RunBatch(const QString &batch, int firstLine, const QString &name)
{
    if (batch.trimmed().isEmpty())
        return;
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    query.setNumericalPrecisionPolicy(QSql::HighPrecision);
    bool more = query.exec(batch);
    Messages messages(m_database);
    while (more && !query.lastError().isValid()) {
        if (m_printer && query.isSelect()) {
            messages.PrintNext(*m_printer);
            m_printer->Print(query);
        }
        more = !query.lastError().isValid() && query.nextResult();
    }
    if (m_printer)
        messages.PrintRest(*m_printer);
    const QSqlError error = query.lastError();
    if (error.isValid()) {
        const QString number = error.nativeErrorCode().isEmpty() ? QString() : u" "_s + error.nativeErrorCode();
        throw ScriptError{u"%1:%2: error%3: %4"_s.arg(name, QString::number(firstLine + LineOf(error) - 1), number,
                                                      error.databaseText())};
    }
}
