#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace bench {

class Shop;

/// Something that a clerk waits for.
struct ClerkWork
{
    QString what;
    int runs = 1;                    ///< of which the median counts
    double limit = 0;                ///< milliseconds at a delay of up to 1 ms; 0: none
    std::function<void()> before;    ///< what each run needs, not measured; may be empty
    std::function<void()> run;       ///< the work
    std::function<void()> raw;       ///< what of it the database cannot be spared, by the bare driver; may be empty
    std::function<double()> slowest; ///< instead of `run`: milliseconds of the slowest of several steps
};

/// A clerk at a desk that is connected to a server.
class Clerk
{
public:
    /// `shop` outlives the clerk.
    explicit Clerk(Shop &shop);
    ~Clerk();

    /// What he does; valid as long as he lives. Each throws std::runtime_error when something else comes of it.
    std::vector<ClerkWork> Works() const;

private:
    class Screens;
    std::unique_ptr<Screens> m_screens;
};

} // namespace bench
