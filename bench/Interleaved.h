// Two ways of doing one job, timed in turn in one process.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <utility>
#include <vector>

#include <time.h>

namespace bench {

/// Median wall times, in nanoseconds, of runs made in turn after one run of each that does not count.
struct Medians
{
    double ours;
    double peer;
};

inline double median(std::vector<double> times)
{
    std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2),
                     times.end());
    return times[times.size() / 2];
}

template <class Job> double nanoseconds(Job const & job)
{
    auto const start = std::chrono::steady_clock::now();
    job();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
}

template <class Ours, class Peer> Medians interleaved(int runs, Ours const & ours, Peer const & peer)
{
    ours();
    peer();
    std::vector<double> our_times;
    std::vector<double> peer_times;
    for (int i = 0; i < runs; ++i) {
        our_times.push_back(nanoseconds(ours));
        peer_times.push_back(nanoseconds(peer));
    }
    return {median(our_times), median(peer_times)};
}

/// Processor time of this thread, so that other programs on the machine matter less.
template <class Job> double cpuSeconds(Job const & job)
{
    auto const now = [] {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
    };
    double const start = now();
    job();
    return now() - start;
}

/// Median processor times of several ways of doing one job, in seconds, run in turn after one run of each that does not
/// count.
inline std::vector<double> medianCpuSeconds(std::vector<std::function<void()>> const & jobs, int rounds)
{
    std::vector<std::vector<double>> times(jobs.size());
    for (auto const & job : jobs)
        job();
    for (int round = 0; round < rounds; ++round)
        for (std::size_t i = 0; i < jobs.size(); ++i)
            times[i].push_back(cpuSeconds(jobs[i]));
    std::vector<double> medians;
    for (auto & column : times)
        medians.push_back(median(std::move(column)));
    return medians;
}

/// One row of the table: costs of one item in nanoseconds, and the ratio peer by ours with what it should keep to.
inline void
printRow(char const * job, char const * peer_name, Medians const & medians, double items, char const * limit)
{
    std::printf("%s\t%.4g ns\t%s %.4g ns\t%.3g\t%s\n", job, medians.ours / items, peer_name,
                medians.peer / items, medians.peer / medians.ours, limit);
}

} // namespace bench
