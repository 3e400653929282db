#pragma once

#include "host/host_export.h"

namespace host {

/// While one lives, no list reads on in idle time: what is at work has the connections to itself, and does not wait for
/// rows that it has locked.
class HOST_EXPORT ReadingPause
{
public:
    ReadingPause();
    ~ReadingPause();
    ReadingPause(const ReadingPause &) = delete;
    ReadingPause &operator=(const ReadingPause &) = delete;

    static bool IsOn();
};

} // namespace host
