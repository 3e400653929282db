#include "desk/levels/level_store.h"

#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace desk {

namespace {
constexpr int DiscountLevels = 4;
constexpr int GoodPrices = 1; ///< CostLevel.CostType
} // namespace

QList<LevelTitle> LevelStore::Titles() const
{
    const bool cost = m_kind == LevelKind::Cost;
    QList<LevelTitle> titles;
    for (int code = 1; !cost && code <= DiscountLevels; ++code)
        titles << LevelTitle{code, {}};
    host::Query query(m_connection,
                      cost ? u"SELECT Code, Name FROM CostLevel WHERE CostType = %1 ORDER BY Code"_s.arg(GoodPrices)
                           : u"SELECT Code, Name FROM DiscountLevel ORDER BY Code"_s);
    for (; !query.Eof(); query.Next()) {
        const LevelTitle level{query.Int(u"Code"), query.Text(u"Name")};
        if (cost)
            titles << level;
        else if (level.code >= 1 && level.code <= DiscountLevels)
            titles[level.code - 1] = level;
    }
    return titles;
}

void LevelStore::Save(const QList<LevelTitle> &changed)
{
    host::Transaction transaction(m_connection);
    for (const LevelTitle &level : changed) {
        if (m_kind == LevelKind::Cost) {
            host::Run(m_connection, u"UPDATE CostLevel SET Name = "_s + host::NQuotedStr(level.title) +
                                        u" WHERE CostType = %1 AND Code = %2"_s.arg(GoodPrices).arg(level.code));
            continue;
        }
        host::Run(m_connection, u"DELETE FROM DiscountLevel WHERE Code = %1"_s.arg(level.code));
        if (!level.title.isEmpty())
            host::Run(m_connection, u"INSERT INTO DiscountLevel (Code, Name) VALUES (%1, "_s.arg(level.code) +
                                        host::NQuotedStr(level.title) + u')');
    }
    transaction.Commit();
}

} // namespace desk
