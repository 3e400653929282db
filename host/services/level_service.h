#pragma once

#include <QStringList>

namespace host {

/// The titles of price levels (`CostLevel`) and of the four discount levels; the host keeps them.
class LevelService
{
public:
    virtual ~LevelService() = default;

    /// Opens the titles of the price levels and returns when they are closed; true when any was changed, so that
    /// captions are to be read anew. Asks for the right itself.
    virtual bool Open_CostLevels() = 0;
    /// The same for the discount levels.
    virtual bool Open_DiscountLevels() = 0;
    /// The titles of the discount levels 1 to 4 in their order; empty for one that has none, which goes by its number.
    virtual QStringList DiscountLevels() = 0;
};

} // namespace host
