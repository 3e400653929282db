#include "bench/report.h"

#include "host/data/query.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace bench {

double Timed(const std::function<void()> &work)
{
    QElapsedTimer clock;
    clock.start();
    work();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

namespace {

double Median(int runs, const std::function<void()> &work)
{
    std::vector<double> times;
    times.reserve(static_cast<std::size_t>(runs));
    work();
    for (int i = 0; i < runs; ++i)
        times.push_back(Timed(work));
    std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
    return times[static_cast<std::size_t>(runs / 2)];
}

} // namespace

void Report::Measure(const QString &what, int runs, std::optional<double> limit, const std::function<void()> &operation,
                     const std::function<void()> &floor)
{
    Line line{what, 0, {}, limit, 0};
    const quint64 before = host::StatementsSent();
    line.milliseconds = Median(runs, operation);
    line.statements = static_cast<double>(host::StatementsSent() - before) / (runs + 1);
    if (floor)
        line.floor = Median(runs, floor);
    Add(line);
}

void Report::Add(const Line &line)
{
    m_lines.push_back(line);
    if (!m_limits)
        m_lines.back().limit.reset();
    std::fprintf(stderr, "%s: %.2f ms\n", qPrintable(line.what), line.milliseconds);
}

void Report::AddMemory(const QString &what, double megabytes, double limit)
{
    m_memory.push_back({what, megabytes, {}, m_limits ? std::optional(limit) : std::nullopt, 0});
}

void Report::Print() const
{
    std::printf("%-58s %12s %12s %8s %10s %11s\n", "operation", "ms", "SQLite ms", "ratio", "limit ms", "statements");
    for (const Line &line : m_lines) {
        const QByteArray floor = line.floor ? QByteArray::number(*line.floor, 'f', 3) : QByteArray("-");
        const QByteArray ratio =
            line.floor ? QByteArray::number(line.milliseconds / *line.floor, 'f', 2) : QByteArray("-");
        const QByteArray limit = line.limit ? QByteArray::number(*line.limit, 'f', 0) : QByteArray("-");
        std::printf("%-58s %12.3f %12s %8s %10s %11.1f%s\n", qPrintable(line.what), line.milliseconds,
                    floor.constData(), ratio.constData(), limit.constData(), line.statements,
                    line.limit && line.milliseconds > *line.limit ? "  over" : "");
    }
    for (const Line &line : m_memory)
        std::printf("%-58s %9.0f MB %s\n", qPrintable(line.what + u": memory at most"_s), line.milliseconds,
                    line.limit ? qPrintable(u"(limit %1 MB)"_s.arg(*line.limit)) : "");
}

bool Report::WithinLimits() const
{
    const auto within = [](const Line &line) { return !line.limit || line.milliseconds <= *line.limit; };
    return std::all_of(m_lines.cbegin(), m_lines.cend(), within) &&
           std::all_of(m_memory.cbegin(), m_memory.cend(), within);
}

} // namespace bench
