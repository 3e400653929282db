#pragma once

namespace host {

/// The weighing scales of a shop, reached through a database of their own.
class ScaleService
{
public:
    virtual ~ScaleService() = default;

    /// True when the shop has scales, so that their items are kept in step with the goods.
    virtual bool Enabled() const = 0;
};

} // namespace host
