// What the machine does when nothing is computed: the speeds that the other figures are seen beside. Prints notes only.
#include "Interleaved.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char ** environ;

namespace {

constexpr std::size_t FIELD = std::size_t{1440} * 721 * 4; // octets
constexpr std::size_t FEED = 100'000'000;
constexpr std::size_t PIECE = std::size_t{1} << 18;
constexpr int ROUNDS = 21;
constexpr int CALLS = 10000;
constexpr double POINTS = FIELD / 4e9; // in thousands of millions, so that times are nanoseconds a point

void note(char const * what, double value, char const * unit)
{
    std::printf("# bare: %s, %s\n", what, bench::figure(value, 1, unit).c_str());
}

/// Reads the file from its start in pieces, into the same place again and again or one behind the other.
bool readAll(int file, std::vector<char> & to, bool in_place)
{
    std::size_t at = 0;
    ssize_t got = 0;
    while ((got = pread(file, to.data() + (in_place ? 0 : at), PIECE, static_cast<off_t>(at))) > 0)
        at += static_cast<std::size_t>(got);
    return got == 0 && at > 0;
}

bool writeAll(char const * name, std::vector<char> const & from, std::size_t count)
{
    int const file = open(name, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    bool const is_whole = write(file, from.data(), count) == static_cast<ssize_t>(count);
    return close(file) == 0 && is_whole;
}

void startProcess()
{
    std::array<char, 5> name{"true"};
    std::array<char *, 2> arguments{name.data(), nullptr};
    pid_t child = 0;
    if (posix_spawnp(&child, name.data(), nullptr, nullptr, arguments.data(), environ) == 0)
        waitpid(child, nullptr, 0);
}

/// The time that a job takes alone.
double timeOf(std::function<void()> const & job, double (*clock)() = bench::processorTime)
{
    return bench::medians(ROUNDS, {job}, clock)[0];
}

void measureMemory(std::vector<char> const & from, std::vector<char> & to)
{
    std::vector<float> field(FIELD / sizeof(float));
    double const copied = timeOf([&] {
        std::memcpy(to.data(), from.data(), FIELD);
        asm volatile("" : : "r"(to.data()) : "memory");
    });
    double const filled = timeOf([&] {
        std::ranges::fill(field, 1.5F);
        asm volatile("" : : "r"(field.data()) : "memory");
    });
    note("copy of a field of 1440 x 721 floats in memory", copied / POINTS, "ns/point");
    note("filling of such a field with one value", filled / POINTS, "ns/point");
}

bool measureFiles(std::string const & folder, std::vector<char> const & from, std::vector<char> & to)
{
    std::string const name = folder + "/field";
    std::string const feed = folder + "/feed";
    bool is_done = writeAll(name.c_str(), from, FIELD) && writeAll(feed.c_str(), from, FEED);
    int const field_file = open(name.c_str(), O_RDONLY);
    int const feed_file = open(feed.c_str(), O_RDONLY);
    double const fetched = timeOf([&] { is_done = readAll(field_file, to, false) && is_done; });
    double const written = timeOf([&] { is_done = writeAll(name.c_str(), from, FIELD) && is_done; });
    double const fed = timeOf([&] { is_done = readAll(feed_file, to, true) && is_done; });
    close(field_file);
    close(feed_file);
    note("read of such a field from the page cache", fetched / POINTS, "ns/point");
    note("write of such a field into a new file", written / POINTS, "ns/point");
    note("read of 100 MB from the page cache", FEED / 1e9 / fed, "GB/s");
    return is_done;
}

bool measureSearch(std::vector<char> const & from)
{
    void const * found = nullptr;
    double const searched = timeOf([&] { found = std::memchr(from.data(), 1, from.size()); });
    note("search of 100 MB for one octet", FEED / 1e9 / searched, "GB/s");
    return found == nullptr;
}

bool measureSystem(std::string const & absent)
{
    bool is_done = true;
    double const asked = timeOf([&] {
        struct stat info
        {
        };
        for (int i = 0; i < CALLS; ++i)
            is_done = stat(absent.c_str(), &info) != 0 && is_done;
    });
    double const started = timeOf(startProcess, bench::elapsedTime);
    note("stat of a file that is not there", asked / CALLS * 1e9, "ns");
    note("process that does nothing", started * 1e3, "ms");
    return is_done;
}

} // namespace

int main()
{
    std::string folder = (std::filesystem::temp_directory_path() / "yul-bench-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr)
        return 1;
    std::vector<char> const from(FEED, 'x');
    std::vector<char> to(FIELD + PIECE);
    measureMemory(from, to);
    bool const has_files = measureFiles(folder, from, to);
    bool const has_search = measureSearch(from);
    bool const has_system = measureSystem(folder + "/absent");
    std::filesystem::remove_all(folder);
    return has_files && has_search && has_system ? 0 : 1;
}
