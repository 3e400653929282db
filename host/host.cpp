#include "host/host.h"

#include <stdexcept>

namespace host {

namespace {
Host *current = nullptr;
}

void install(Host &host)
{
    current = &host;
}

Host &installed()
{
    if (!current)
        throw std::logic_error("no host is installed");
    return *current;
}

} // namespace host
