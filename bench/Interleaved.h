// Ways of doing one job, timed in turns in one process, and the rows that say what came of it.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include <time.h>

namespace bench {

/// Processor time of this thread, in seconds: other programs on the machine matter less than for elapsed time.
inline double processorTime()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

/// Elapsed time in seconds, for jobs that other processes do.
inline double elapsedTime()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

inline double median(std::vector<double> times)
{
    std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2),
                     times.end());
    return times[times.size() / 2];
}

/// Median times of several ways of doing one job, in seconds, run in turns after one run of each that does not count.
/// The medians are those of the quicker half of the rounds: all are measured while the machine was disturbed least.
inline std::vector<double>
medians(int rounds, std::vector<std::function<void()>> const & jobs, double (*clock)() = processorTime)
{
    for (auto const & job : jobs)
        job();
    std::vector<std::vector<double>> times(static_cast<std::size_t>(rounds));
    for (auto & round : times)
        for (auto const & job : jobs) {
            double const start = clock();
            job();
            round.push_back(clock() - start);
        }
    std::ranges::sort(times, {},
                      [](auto const & round) { return std::accumulate(round.begin(), round.end(), 0.0); });
    times.resize((times.size() + 1) / 2);
    std::vector<double> result;
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        std::vector<double> column;
        for (auto const & round : times)
            column.push_back(round[i]);
        result.push_back(median(std::move(column)));
    }
    return result;
}

/// "12.3 ns/point"; `per_second` by how many of the unit make a second.
inline std::string figure(double seconds, double per_second, char const * unit)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.3g %s", seconds * per_second, unit);
    return text;
}

/// One row of the table. The ratio is the peer's cost by ours; `least` is what it has to reach, 0 when nothing is asked.
inline void printRow(std::string const & job,
                     std::string const & ours,
                     std::string const & peer,
                     double ratio,
                     double least = 0)
{
    std::printf("%s\t%s\t%s\t%.3g", job.c_str(), ours.c_str(), peer.c_str(), ratio);
    std::printf(least > 0 ? "\t>= %g\n" : "\n", least);
}

/// The row of a job whose cost is told by the item, in nanoseconds: ours first, then the peer's time for the same.
inline void printRow(std::string const & job,
                     std::string const & peer_name,
                     double ours,
                     double peer,
                     double items,
                     double least = 0)
{
    printRow(job, figure(ours / items, 1e9, "ns"), peer_name + " " + figure(peer / items, 1e9, "ns"),
             peer / ours, least);
}

} // namespace bench
