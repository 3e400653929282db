#pragma once

#include "host/services/entity_service.h"

namespace host {

/// Lists of the accounting side that goods refer to.
class FinanceService
{
public:
    virtual ~FinanceService() = default;

    /// The asset classes that a good can belong to; code 0 means none.
    virtual QList<Entity> Fill_FinanceGoodTypes() = 0;
};

} // namespace host
