// A place on this machine where clients are waited for.
#pragma once

namespace tds {

/// A socket that listens on the loopback at a port of the system's choice, which goes into `port`. The caller closes
/// it. std::system_error when there is none.
int Listen(int &port);

} // namespace tds
