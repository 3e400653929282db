#pragma once

namespace bench {

struct Options;

/// What a clerk waits for on a server, with a delay added to every round trip: once through for each of
/// Options::delays. Makes a database of its own there and drops it. Prints one table; true when all is within its
/// limit.
bool MeasureNetwork(const Options &options);

} // namespace bench
