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

bool Granted(const Host &host, TSoftwarePart part, TPermission permission)
{
    return host.permissions.HavePermission(host.settings.UserInfo(), part, permission, true, true, {});
}

bool MayWrite(const Host &host, TSoftwarePart part, TFormMode mode)
{
    return Granted(host, part, mode == TFormMode::New ? TPermission::Create : TPermission::Change);
}

} // namespace host
