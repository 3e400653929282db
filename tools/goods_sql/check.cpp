#include "tools/goods_sql/check.h"

#include "tools/goods_sql/databases.h"
#include "tools/goods_sql/script_runner.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace {

/** "what is wrong: GoodCode 120001, StoreCode 2, Stock 3, Ledger 2" */
QString FaultLine(const QSqlQuery &query)
{
    const QSqlRecord row = query.record();
    QStringList places;
    for (int column = 1; column < row.count(); ++column)
        places << row.fieldName(column) + u' ' + Printed(row.value(column), u"NULL"_s);
    return row.value(0).toString() + u": "_s + places.join(u", ");
}

} // namespace

int CheckGoods(const QSqlDatabase &database, QTextStream &out)
{
    int faults = 0;
    for (const tsql::ScriptBatch &batch : BatchesOf(EmbeddedScript(u"check.sql"_s), u"check.sql"_s)) {
        if (batch.text.trimmed().isEmpty())
            continue;
        QSqlQuery query(database);
        query.setForwardOnly(true);
        query.setNumericalPrecisionPolicy(QSql::HighPrecision);
        if (!query.exec(batch.text))
            throw ScriptError{u"check.sql:%1: %2"_s.arg(batch.firstLine).arg(query.lastError().databaseText())};
        for (; query.next(); ++faults)
            out << FaultLine(query) << u'\n';
        if (query.lastError().isValid())
            throw ScriptError{u"check.sql:%1: %2"_s.arg(batch.firstLine).arg(query.lastError().databaseText())};
    }
    return faults;
}
