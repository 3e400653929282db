#pragma once

#include "host/services/types.h"

namespace host {

/// Document numbers that several desks draw from.
class NumberService
{
public:
    virtual ~NumberService() = default;

    /// Takes the next number of a part and keeps it until it is deleted or used.
    virtual int Save_Global_ID(TSoftwarePart part) = 0;
    /// Registers a number that the part has chosen by itself; once more changes nothing.
    virtual void Save_Global_ID(TSoftwarePart part, int number) = 0;
    virtual void Delete_Global_ID(TSoftwarePart part, int number) = 0;
};

} // namespace host
