#pragma once

#include <QStringList>

#include <vector>

namespace bench {

class Shop;

/// The texts that a command sends: over a network each costs a way there and back. The begin and the end of
/// transactions come on top.
struct RoundTrips
{
    const char *what;
    int most; ///< that users should not have to exceed
    QStringList texts;
};

/// Opens a good, saves it and opens the list, each once.
std::vector<RoundTrips> WatchRoundTrips(Shop &shop, int good);

/// Prints the counts, and the texts too if `all`; true when none is over its limit.
bool PrintRoundTrips(const std::vector<RoundTrips> &trips, bool all);

} // namespace bench
