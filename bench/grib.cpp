// Reading GRIB beside ecCodes and NCEP's g2c: one field of 1440 x 721 points by packing, and the headers of 200 messages.
//
// Every side opens a file, reads the field in it into memory that it keeps, and closes, several times in a row; all caches are
// warm, as they are for peers that are measured with a message in memory.
// The values are compared first. Figures are medians of processor time, in turns; the ratio is to the faster peer. JPEG 2000 and PNG
// are set beside the bare codec as well, which reads the same code stream from memory and throws the samples away.
#include "Interleaved.h"

#ifdef YUL_GRIB_PEERS // where ecCodes, g2c and the codecs are all installed
#include "grib/BareCodecs.h"
#include "grib/Messages.h"
#include "grib/Readers.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace bench::grib;

constexpr int MESSAGES = 200;
constexpr int ROUNDS = 5;
constexpr int PICTURES = 2; // decoded in a row
constexpr int FIELDS = 24;
constexpr int SIMPLE_FIELDS = 96; // the first six or so still find the caches as the other side left them

using Works = std::vector<std::function<void()>>;

/// One row: ours, the first of the times, beside the faster of the peers.
void report(std::string const & job,
            double ours,
            std::vector<double> const & times,
            double per_second,
            char const * unit,
            double least)
{
    double const peer = *std::min_element(times.begin() + 1, times.end());
    char const * const name = peer == times[1] ? "ecCodes " : "g2c ";
    bench::printRow(job, bench::figure(ours, per_second, unit), name + bench::figure(peer, per_second, unit),
                    peer / ours, least);
}

struct Job
{
    char const * name;
    Octets message;
    double least; ///< ratio to reach
    int fields = FIELDS;
    bool is_edition2 = true;
    void (*bare)(Octets const &) = nullptr;
    char const * bare_name = "";
};

void write(std::string const & name, Octets const & octets, int times)
{
    std::ofstream file(name, std::ios::binary);
    for (int i = 0; i < times; ++i)
        file.write(reinterpret_cast<char const *>(octets.data()),
                   static_cast<std::streamsize>(octets.size()));
}

void checkValues(char const * job)
{
    double worst = 0;
    for (std::size_t i = 0; i < POINTS; ++i)
        worst = std::max(worst, std::fabs(doubles[i] - static_cast<double>(grid.getValues()[i])));
    if (!(worst < 1e-3))
        fail(job);
}

/// The field with about a quarter of it missing, in patches.
std::vector<double> withHoles(std::vector<double> field)
{
    for (std::size_t i = 0; i < POINTS; ++i) {
        double const x = static_cast<double>(i % NX) / 100;
        double const y = static_cast<double>(i / NX) / 100;
        if (std::sin(x) * std::cos(1.5 * y) + 0.3 * std::sin(7 * x) * std::sin(6 * y) > 0.4)
            field[i] = MISS;
    }
    return field;
}

void runJob(std::string const & name, Job const & job)
{
    int const fields = job.fields;
    auto const inARow = [fields](auto const & read) {
        return [=] {
            for (int i = 0; i < fields; ++i)
                read();
        };
    };
    auto const ours = inARow([&] { readOurs(name); });
    double const per_point = 1e9 / (static_cast<double>(POINTS) * fields);
    write(name, job.message, 1);
    readOurs(name);
    readEccodes(name);
    checkValues(job.name);
    Works works{ours, inARow([&] { readEccodes(name); })};
    if (job.is_edition2)
        works.push_back(inARow([&] { readG2c(name); }));
    auto const times = bench::medians(ROUNDS, works);
    report(job.name, times[0], times, per_point, "ns/point", job.least);
    if (job.bare == nullptr)
        return;
    Octets const stream = codeStream(job.message);
    auto const both = bench::medians(ROUNDS, {ours, inARow([&] { job.bare(stream); })});
    bench::printRow(std::string(job.name) + ", bare codec", bench::figure(both[0], per_point, "ns/point"),
                    std::string(job.bare_name) + " " + bench::figure(both[1], per_point, "ns/point"),
                    both[1] / both[0], 0.9);
}

void runDecoding(std::string const & name, std::vector<double> const & field)
{
    auto const holed = withHoles(field);
    char const * const edition1 = "regular_ll_pl_grib1";
    char const * const edition2 = "regular_ll_pl_grib2";
    Job const jobs[] = {
        {"GRIB 2 simple, 8 bits", packByEccodes(field, NX, edition2, "grid_simple", 8, NO_DECIMAL), 6,
         SIMPLE_FIELDS},
        {"GRIB 2 simple, 12 bits", packByEccodes(field, NX, edition2, "grid_simple", 12, NO_DECIMAL), 6,
         SIMPLE_FIELDS},
        {"GRIB 2 simple, 16 bits", packByEccodes(field, NX, edition2, "grid_simple", 16, NO_DECIMAL), 6,
         SIMPLE_FIELDS},
        {"GRIB 2 complex", packByG2c(field, 0), 4.5},
        {"GRIB 2 differences, order 1", packByG2c(field, 1), 3},
        {"GRIB 2 differences, order 2", packByG2c(field, 2), 3},
        {"GRIB 1, 12 bits, bitmap", packByEccodes(holed, NX, edition1, "grid_simple", 12, NO_DECIMAL), 5,
         FIELDS, false},
        {"GRIB 2 JPEG 2000", packByEccodes(field, NX, edition2, "grid_jpeg", 16, 2), 0, PICTURES, true,
         decodeJpeg2000, "OpenJPEG"},
        {"GRIB 2 PNG", packByEccodes(field, NX, edition2, "grid_png", 16, 2), 0, PICTURES, true, decodePng,
         "libpng"},
    };
    for (auto const & job : jobs)
        runJob(name, job);
}

void runInventory(std::string const & name, std::vector<double> const & field)
{
    struct Size
    {
        char const * text;
        int nx;
        double least;
    };

    for (auto const & [text, nx, least] : {Size{"1 degree", NX / 4, 5}, {"0.25 degree", NX, 50}}) {
        auto const values = nx == NX ? field : makeField(nx, (NY - 1) / 4 + 1);
        write(name, packByEccodes(values, nx, "regular_ll_pl_grib2", "grid_simple", 16, NO_DECIMAL),
              MESSAGES);
        if (listOurs(name) != MESSAGES || listEccodes(name) != MESSAGES || listG2c(name) != MESSAGES ||
            describeOurs(name) != MESSAGES)
            fail("messages are missing");
        std::string const job = "headers of 200 messages, " + std::string(text);
        auto const times = bench::medians(ROUNDS, {[&] { listOurs(name); }, [&] { listEccodes(name); },
                                                   [&] { listG2c(name); }, [&] { describeOurs(name); }});
        std::vector<double> const sides(times.begin(), times.begin() + 3);
        report(job, times[0], sides, 1e6 / MESSAGES, "us/message", least);
        report(job + ", described as grids", times[3], sides, 1e6 / MESSAGES, "us/message", least);
    }
}

int measure(std::vector<double> const & field)
{
    auto const folder =
        std::filesystem::temp_directory_path() / ("yul-bench-" + std::to_string(std::random_device()()));
    std::filesystem::create_directory(folder);
    std::string const name = (folder / "field.grib").string();
    doubles.resize(POINTS);
    floats.resize(POINTS);
    runDecoding(name, field);
    runInventory(name, field);
    std::filesystem::remove_all(folder);
    return looked_at == 0 ? 1 : 0;
}

/// Writes a file for each packing that bench/memory.py reads, and one of many messages.
int writeSamples(std::string const & folder, std::vector<double> const & field)
{
    char const * const sample = "regular_ll_pl_grib2";
    Octets const simple = packByEccodes(field, NX, sample, "grid_simple", 16, NO_DECIMAL);
    write(folder + "/simple.grib", simple, 1);
    write(folder + "/differences.grib", packByG2c(field, 2), 1);
    write(folder + "/jpeg2000.grib", packByEccodes(field, NX, sample, "grid_jpeg", 16, 2), 1);
    write(folder + "/messages.grib", simple, MESSAGES);
    return 0;
}

/// One job of a peer and nothing else, for bench/memory.py.
int runPeer(std::string const & peer, std::string const & job, std::string const & name)
{
    bool const is_eccodes = peer == "ecCodes";
    if (job == "list")
        return (is_eccodes ? listEccodes(name) : listG2c(name)) > 0 ? 0 : 1;
    if (is_eccodes) {
        doubles.resize(POINTS);
        readEccodes(name);
    } else {
        floats.resize(POINTS);
        readG2c(name);
    }
    return 0;
}

} // namespace

/// grib                       measures
/// grib FOLDER                writes samples
/// grib PEER read|list FILE   lets a peer work
int main(int argc, char ** argv)
{
    if (argc == 4)
        return runPeer(argv[1], argv[2], argv[3]);
    auto const field = makeField(NX, NY);
    return argc == 2 ? writeSamples(argv[1], field) : measure(field);
}

#else

#include <cstdio>

int main(int argc, char **)
{
    std::printf("# grib: ecCodes (libeccodes-dev) and g2c (libg2c-dev) are not both installed: no peer\n");
    return argc == 1 ? 0 : 1;
}

#endif
