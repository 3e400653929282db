#include "desk/services/levels.h"

#include "desk/levels/level_titles.h"

namespace desk {

bool Levels::Open_CostLevels()
{
    return TLevel_Titles_FRM(*m_host, LevelKind::Cost).Change();
}

bool Levels::Open_DiscountLevels()
{
    return TLevel_Titles_FRM(*m_host, LevelKind::Discount).Change();
}

QStringList Levels::DiscountLevels()
{
    QStringList titles;
    for (const LevelTitle &level : LevelStore(m_connection, LevelKind::Discount).Titles())
        titles << level.title;
    return titles;
}

} // namespace desk
