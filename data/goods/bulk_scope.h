#pragma once

#include "data/goods/good_bulk_records.h"

#include <QSqlDatabase>

#include <algorithm>
#include <utility>

namespace goods {

/// Codes that travel in one statement.
inline constexpr int CodesOfBlock = 1000;

/// Asks between the steps of a change whether to go on. A step that was not foreseen counts as the last one.
class BulkSteps
{
public:
    BulkSteps(BulkProgress progress, int total) : m_progress(std::move(progress)), m_total(total) {}

    /// There will be more steps than it seemed.
    void Expect(int more) { m_total += more; }
    /// One step more is done.
    bool GoOn() { return !m_progress || m_progress(std::min(++m_done, m_total), m_total); }

private:
    BulkProgress m_progress;
    int m_done = 0;
    int m_total;
};

/// How many steps Take() makes of these goods.
int StepsOf(const GoodsScope &scope);

/// Puts the goods of a scope into the working table `#BulkGoods` (`Code`, `Place`: their order) of the connection, each
/// once, in place of what it held. False when given up.
bool Take(const QSqlDatabase &main, const GoodsScope &scope, BulkSteps &steps);

/// Puts codes, each once, into a fresh working table of that name, as Take() does.
bool TakeCodes(const QSqlDatabase &main, const QString &table, const QList<int> &codes, BulkSteps &steps);

/// The text that drops a working table, if there is one.
QString DropTable(const QString &table);

} // namespace goods
