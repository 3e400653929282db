#include "data/goods/bulk_scope.h"

#include "data/goods/good_lookups.h"
#include "host/data/query.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

const QString ScopeTable = u"#BulkGoods"_s;

QString FreshTable(const QString &table)
{
    return DropTable(table) + u" CREATE TABLE "_s + table + u" (Code int NOT NULL PRIMARY KEY, Place int NOT NULL)"_s;
}

} // namespace

QString DropTable(const QString &table)
{
    return u"IF OBJECT_ID('tempdb.."_s + table + u"') IS NOT NULL DROP TABLE "_s + table;
}

int StepsOf(const GoodsScope &scope)
{
    const auto codes = static_cast<int>(scope.codes.size());
    return scope.kind == ScopeKind::All ? 1 : std::max((codes + CodesOfBlock - 1) / CodesOfBlock, 1);
}

bool TakeCodes(const QSqlDatabase &main, const QString &table, const QList<int> &codes, BulkSteps &steps)
{
    host::Exec(main, FreshTable(table));
    QSet<int> taken;
    taken.reserve(codes.size());
    QString values;
    int place = 0;
    for (const int code : codes) {
        if (taken.contains(code)) {
            continue;
        }
        taken.insert(code);
        ++place;
        values += (values.isEmpty() ? u"("_s : u",("_s) + QString::number(code) + u',' + QString::number(place) + u')';
        if (place % CodesOfBlock == 0) {
            host::Exec(main, u"INSERT INTO "_s + table + u" (Code, Place) VALUES "_s + values);
            values.clear();
            if (!steps.GoOn()) {
                return false;
            }
        }
    }
    if (!values.isEmpty()) {
        host::Exec(main, u"INSERT INTO "_s + table + u" (Code, Place) VALUES "_s + values);
        return steps.GoOn();
    }
    return true;
}

bool Take(const QSqlDatabase &main, const GoodsScope &scope, BulkSteps &steps)
{
    if (scope.kind != ScopeKind::All) {
        return TakeCodes(main, ScopeTable, scope.codes, steps);
    }
    host::Exec(main, FreshTable(ScopeTable) +
                         u" INSERT INTO #BulkGoods (Code, Place) SELECT g.Code, g.Code FROM GoodInf g"_s +
                         GoodsShownTo(scope.deniedTo));
    return steps.GoOn();
}

} // namespace goods
