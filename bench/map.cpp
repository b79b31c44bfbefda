// Coastlines on a page: this library's program beside GMT's `coast` (in its classic mode `pscoast`), whole processes from start to finished page.
#include "Interleaved.h"
#include "core/Yul.h"
#include "geo/DomainTool.h"
#include "plot/MapPlot.h"
#include "plot/Plot.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern char ** environ;

namespace {

constexpr char const * PAGE = "bench_map.ps";
constexpr int RUNS = 9;

struct Job
{
    char const * name;
    char const * domain;            ///< ours
    char const * detail;            ///< ours
    std::vector<char const *> peer; ///< arguments of `gmt`
    double least;                   ///< ratio to reach
};

Job const JOBS[] = {
    {"coast of the world, 1:50 million, polar stereographic",
     "pstereo:90:0,90,0,101,101,8.87,8.87",
     "50",
     {"pscoast", "-R-180/180/-60/90", "-JS0/90/18c", "-Dl", "-W0.5p", "-B30g30"},
     4},
    {"coast of a region, 1:50 million, Lambert conformal",
     "lambert:50:10:40:60,50,10,61,41,0.4,0.4",
     "50",
     {"pscoast", "-R-6.5/41/26/57+r", "-Jl10/50/40/60/1:12000000", "-Dl", "-W0.5p", "-B5g5"},
     10},
};

/// What the child does: one page.
int draw(char const * domain_text, char const * detail)
{
    using namespace Yul;
    ::Yul::Yul::setDatabasePath(YUL_DATABASE);
    ::Yul::Yul::setMessageLevel("error");
    Domain domain;
    Plot plot;
    if (DomainTool::decode(domain_text, domain) == 0 ||
        plot.open((std::string(PAGE) + ",de=p").c_str()) == 0 || plot.setDomain(domain) == 0)
        return 1;
    MapPlot map;
    map.setParam("none,coast=black,grid");
    map.setParam((std::string("detail=") + detail).c_str());
    bool const is_drawn = map.draw(plot) != 0;
    plot.drawBorder();
    return plot.close() != 0 && is_drawn ? 0 : 1;
}

/// Runs a program in the present folder to its end. The kilobytes that it held at most, or 0 when it failed.
long run(std::vector<char const *> const & arguments, char const * output)
{
    std::vector<char *> list;
    for (char const * const argument : arguments)
        list.push_back(const_cast<char *>(argument));
    list.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, output, O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int const failure = posix_spawnp(&child, list[0], &actions, nullptr, list.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    bool const is_done = failure == 0 && wait4(child, &status, 0, &usage) == child && WIFEXITED(status) &&
                         WEXITSTATUS(status) == 0;
    return is_done ? usage.ru_maxrss : 0;
}

std::string megabytes(long kilobytes)
{
    return bench::figure(static_cast<double>(kilobytes), 1 / 1024.0, "MB");
}

std::size_t sizeOf(char const * name)
{
    std::error_code failure;
    auto const size = std::filesystem::file_size(name, failure);
    return failure ? 0 : static_cast<std::size_t>(size);
}

} // namespace

int main(int argc, char ** argv)
{
    if (argc == 4 && std::strcmp(argv[1], "draw") == 0)
        return draw(argv[2], argv[3]);
    std::string const self = std::filesystem::read_symlink("/proc/self/exe");
    auto const folder = std::filesystem::temp_directory_path() / ("yul_bench_map" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    std::filesystem::current_path(folder);
    bool const has_peer = run({"gmt", "--version"}, "/dev/null") > 0;
    if (!has_peer)
        std::printf("# GMT is not installed: no peer for maps\n");
    int status = 0;
    for (Job const & job : JOBS) {
        std::vector<char const *> const ours = {self.c_str(), "draw", job.domain, job.detail};
        std::vector<char const *> peer = {"gmt"};
        peer.insert(peer.end(), job.peer.begin(), job.peer.end());
        long const our_peak = run(ours, "/dev/null");
        long const peer_peak = has_peer ? run(peer, "peer.ps") : 0;
        bool const is_drawn = our_peak > 0 && sizeOf(PAGE) > 10000;
        bool const is_peer_drawn = !has_peer || (peer_peak > 0 && sizeOf("peer.ps") > 10000);
        if (!is_drawn || !is_peer_drawn) {
            std::printf("# %s: %s drew no page\n", job.name, is_drawn ? "GMT" : "this library");
            status = 1;
            continue;
        }
        if (has_peer) {
            auto const times = bench::medians(
                RUNS, {[&] { run(ours, "/dev/null"); }, [&] { run(peer, "peer.ps"); }}, bench::elapsedTime);
            bench::printRow(job.name, bench::figure(times[0], 1e3, "ms"),
                            "GMT " + bench::figure(times[1], 1e3, "ms"), times[1] / times[0], job.least);
            bench::printRow(std::string("memory, ") + job.name, megabytes(our_peak),
                            "GMT " + megabytes(peer_peak),
                            static_cast<double>(peer_peak) / static_cast<double>(our_peak));
            std::printf("# pages: ours %zu octets, GMT %zu\n", sizeOf(PAGE), sizeOf("peer.ps"));
        }
    }
    std::filesystem::current_path("/");
    std::filesystem::remove_all(folder);
    return status;
}
