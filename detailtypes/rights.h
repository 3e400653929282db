#pragma once

#include "host/host.h"

namespace detail_types {

/// Whether the user has a right on detail types and their categories. The permission service has told him when not.
inline bool Granted(const host::Host &host, host::TPermission permission)
{
    return host.permissions.HavePermission(host.settings.UserInfo(), host::TSoftwarePart::DetailTypes, permission, true,
                                           true, {});
}

/// The same for the right that an editor opened in this mode needs.
inline bool MayWrite(const host::Host &host, host::TFormMode mode)
{
    return Granted(host, mode == host::TFormMode::New ? host::TPermission::Create : host::TPermission::Change);
}

} // namespace detail_types
