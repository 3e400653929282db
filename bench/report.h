#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace bench {

/// What an operation of the product costs, beside the floor: the same work through SQLite's C API.
struct Line
{
    QString what;
    double milliseconds = 0;     ///< median of the runs
    std::optional<double> floor; ///< milliseconds; none where the C API has no such work
    std::optional<double> limit; ///< milliseconds that users should not have to exceed
    double statements = 0;       ///< statements sent for one operation
};

/// Collects lines and prints them as one table.
class Report
{
public:
    /// With limits, or only with what was measured.
    explicit Report(bool limits) : m_limits(limits) {}

    /// Runs `operation` `runs` times after one warm-up and keeps the median.
    void Measure(const QString &what, int runs, std::optional<double> limit, const std::function<void()> &operation,
                 const std::function<void()> &floor = {});
    void Add(const Line &line);
    /// The most memory that `what` took, in megabytes, and what it should not exceed.
    void AddMemory(const QString &what, double megabytes, double limit);
    void Print() const;
    /// Every line is within its limit.
    bool WithinLimits() const;

private:
    bool m_limits;
    std::vector<Line> m_lines;
    std::vector<Line> m_memory; ///< megabytes in place of milliseconds
};

/// Milliseconds that `work` takes, once.
double Timed(const std::function<void()> &work);

} // namespace bench
