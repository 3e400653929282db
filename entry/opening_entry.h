#pragma once

#include "screens/opening_stock/opening_details.h"

namespace entry {

/// The entry of details of opening rows, by the screen on which details come in. `host` outlives it.
DetailEntry OpeningDetailEntry(host::Host &host);

} // namespace entry
