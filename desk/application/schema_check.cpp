#include "desk/application/schema_check.h"

#include "desk/application/database_creation.h"
#include "host/data/query.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace desk {

QStringList ColumnProbes(const QString &script)
{
    // A table ends with a bracket at the beginning of a line; a column stands on a line of its own, its type behind it.
    static const QRegularExpression table(u"^CREATE TABLE ([\\w.]+) \\(\\n(.*?)^\\)"_s,
                                          QRegularExpression::MultilineOption |
                                              QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression column(u"^    \\[?(?!CONSTRAINT\\b)([\\w-]+)\\]? +[a-z]"_s,
                                           QRegularExpression::MultilineOption);
    QStringList probes;
    for (auto tables = table.globalMatch(script); tables.hasNext();) {
        const QRegularExpressionMatch found = tables.next();
        QStringList columns;
        for (auto lines = column.globalMatch(found.captured(2)); lines.hasNext();)
            columns << u'[' + lines.next().captured(1) + u']';
        probes << u"SELECT TOP 0 "_s + columns.join(u", "_s) + u" FROM "_s + found.captured(1);
    }
    return probes;
}

void CheckSchema(const QSqlDatabase &connection)
{
    // One text: over a network it is the number of texts that is waited for.
    host::Exec(connection, ColumnProbes(DatabaseScript(u"schema.sql"_s)).join(u'\n'));
}

} // namespace desk
