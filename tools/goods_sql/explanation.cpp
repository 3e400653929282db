#include "tools/goods_sql/explanation.h"

#include "tools/goods_sql/script_runner.h"
#include "tsql/qt/driver.h"
#include "tsql/run/connection.h"
#include "tsql/values/error.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

const tsql::Catalogue &CatalogueOf(const QSqlDatabase &database)
{
    const auto *driver = qobject_cast<tsql::Driver *>(database.driver());
    if (!driver)
        throw ScriptError{u"--explain is for the embedded database; a server has SET SHOWPLAN_TEXT"_s};
    return driver->SharedConnection()->Names();
}

} // namespace

Explanation::Explanation(const QSqlDatabase &database, QTextStream &out)
    : m_explainer(CatalogueOf(database)), m_out(out)
{}

void Explanation::Run(const QString &script, const QString &name)
{
    for (const tsql::ScriptBatch &batch : BatchesOf(script, name)) {
        QStringList lines;
        const auto print = qScopeGuard([&] {
            for (const QString &line : std::as_const(lines))
                m_out << line << u'\n';
        });
        try {
            m_explainer.Explain(batch.text, lines);
        } catch (const tsql::Error &error) {
            const int line = batch.firstLine + std::max(error.Line(), 1) - 1;
            throw ScriptError{u"%1:%2: error %3: %4"_s.arg(name, QString::number(line), QString::number(error.Number()),
                                                           error.Text())};
        }
    }
}
