#pragma once

#include "host/services/types.h"

namespace host {

/// Decides what a user may do. The host owns users and rights.
class PermissionService
{
public:
    virtual ~PermissionService() = default;

    /// True when `user` holds `permission` in `part`. With `inform` the service itself tells the user of a refusal,
    /// naming `text` when it is not empty; with `record` it may keep the refusal in the host's log.
    virtual bool HavePermission(const TUserInfo &user, TSoftwarePart part, TPermission permission, bool inform,
                                bool record, const QString &text) = 0;
};

} // namespace host
