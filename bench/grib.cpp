// Reading GRIB beside ecCodes and NCEP's g2c: one field of 1440 x 721 points by packing, and the headers of 200 messages.
//
// Every side opens a file, reads the field in it into memory that it keeps, and closes, several times in a row; all caches are
// warm, as they are for peers that are measured with a message in memory.
// The values are compared first. Figures are medians of processor time, in turns; the ratio is to the faster peer. JPEG 2000 and PNG
// are set beside the bare codec as well, which reads the same code stream from memory and throws the samples away.
#include "Interleaved.h"
#include "grid/GribFile.h"
#include "grid/Grid.h"

#ifdef YUL_GRIB_PEERS // where ecCodes, g2c and the codecs are all installed
#include <eccodes.h>
#include <openjpeg.h>
#include <png.h>

extern "C" {
#include <grib2.h>
}
#endif

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

#ifdef YUL_GRIB_PEERS

namespace {

constexpr int NX = 1440;
constexpr int NY = 721;
constexpr std::size_t POINTS = std::size_t{NX} * NY;
constexpr int MESSAGES = 200;
constexpr int ROUNDS = 5;
constexpr int FIELDS = 24; // decoded in a row
constexpr int PICTURES = 2;
constexpr double MISS = -9999;
constexpr int NO_DECIMAL = -1;

using Octets = std::vector<unsigned char>;

// Data -----------------------------------------------------------------------------------------------------

/// A temperature field: a gradient, planetary to mesoscale waves, a little noise.
std::vector<double> makeField(int nx, int ny)
{
    std::mt19937 random(42);
    std::normal_distribution<double> noise(0, 0.02);
    std::uniform_real_distribution<double> phase(0, 6.28);
    std::vector<double> field(static_cast<std::size_t>(nx) * static_cast<std::size_t>(ny));
    for (auto & value : field)
        value = 250 + noise(random);
    for (int wave = 1; wave <= 24; ++wave) {
        double const amplitude = 9 / (1 + 0.35 * wave);
        double const across = phase(random);
        double const along = phase(random);
        for (int y = 0; y < ny; ++y) {
            double const lat = (0.5 - static_cast<double>(y) / (ny - 1)) * 3.14159;
            double const height = amplitude * std::cos(lat) * std::sin((1 + 0.6 * wave) * lat + along);
            for (int x = 0; x < nx; ++x)
                field[static_cast<std::size_t>(y) * static_cast<std::size_t>(nx) +
                      static_cast<std::size_t>(x)] += height * std::cos(wave * 6.28318 * x / nx + across) +
                                                      (wave == 1 ? 45 * std::cos(lat) : 0);
        }
    }
    return field;
}

[[noreturn]] void fail(char const * what)
{
    std::printf("# grib: %s\n", what);
    std::exit(1);
}

struct Handle
{
    explicit Handle(codes_handle * opened) : handle(opened)
    {
        if (handle == nullptr)
            fail("ecCodes opens nothing");
    }

    ~Handle() { codes_handle_delete(handle); }

    Handle(Handle const &) = delete;
    Handle & operator=(Handle const &) = delete;

    codes_handle * handle;
};

/// A field packed by ecCodes. With decimal places the bits follow from them.
Octets packByEccodes(std::vector<double> const & field,
                     int nx,
                     char const * sample,
                     char const * packing,
                     int bits,
                     int places)
{
    Handle const h(codes_handle_new_from_samples(nullptr, sample));
    int const ny = static_cast<int>(field.size()) / nx;
    double const step = 360.0 / nx;
    std::pair<char const *, double> const keys[] = {
        {"Ni", nx},
        {"Nj", ny},
        {"latitudeOfFirstGridPointInDegrees", 90},
        {"latitudeOfLastGridPointInDegrees", -90},
        {"longitudeOfFirstGridPointInDegrees", 0},
        {"longitudeOfLastGridPointInDegrees", 360 - step},
        {"iDirectionIncrementInDegrees", step},
        {"jDirectionIncrementInDegrees", step},
        {"level", 850},
        {"missingValue", MISS},
        {"bitmapPresent", std::count(field.begin(), field.end(), MISS) > 0},
        {"bitsPerValue", bits}};
    for (auto const & [key, value] : keys)
        if (codes_set_double(h.handle, key, value) != 0)
            fail(key);
    if (codes_set_double_array(h.handle, "values", field.data(), field.size()) != 0)
        fail("values");
    if (places != NO_DECIMAL)
        codes_set_long(h.handle, "changeDecimalPrecision", places);
    std::size_t length = std::strlen(packing);
    if (codes_set_string(h.handle, "packingType", packing, &length) != 0)
        fail(packing);
    void const * message = nullptr;
    codes_get_message(h.handle, &message, &length);
    auto const * const octets = static_cast<unsigned char const *>(message);
    return {octets, octets + length};
}

/// Complex packing by g2c, whose groups are those of operational files. order  0 for template 5.2.
Octets packByG2c(std::vector<double> const & field, int order)
{
    Octets octets(field.size() * 4 + 10000);
    g2int s0[2] = {0, 2};
    g2int s1[13] = {7, 0, 2, 1, 1, 2026, 1, 15, 0, 0, 0, 0, 1};
    g2int s3[5] = {0, static_cast<g2int>(field.size()), 0, 0, 0};
    g2int grid[19] = {6,  0,        0, 0,  0,         0,         0,      NX,     NY, 0,
                      -1, 90000000, 0, 48, -90000000, 359750000, 250000, 250000, 0};
    g2int product[15] = {0, 0, 2, 0, 96, 0, 0, 1, 6, 100, 0, 85000, 255, 0, 0};
    g2int data[18] = {0, 0, 2, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, order, 0};
    std::vector<float> values(field.begin(), field.end());
    g2int length = g2_create(octets.data(), s0, s1);
    length = length > 0 ? g2_addgrid(octets.data(), s3, grid, nullptr, 0) : length;
    length = length > 0 ? g2_addfield(octets.data(), 0, product, nullptr, 0, order == 0 ? 2 : 3, data,
                                      values.data(), static_cast<g2int>(values.size()), 255, nullptr)
                        : length;
    length = length > 0 ? g2_gribend(octets.data()) : length;
    if (length <= 0)
        fail("g2c packs nothing");
    octets.resize(static_cast<std::size_t>(length));
    return octets;
}

// Decoders -------------------------------------------------------------------------------------------------

Yul::Grid grid;
std::vector<double> doubles;
Octets whole;
std::vector<float> floats;

void readOurs(std::string const & name)
{
    Yul::GribFile file(name.c_str());
    if (file.read(grid) != 1)
        fail("ours reads nothing");
}

struct Stream
{
    explicit Stream(std::string const & name) : file(std::fopen(name.c_str(), "rb")) {}

    ~Stream() { std::fclose(file); }

    Stream(Stream const &) = delete;
    Stream & operator=(Stream const &) = delete;

    std::FILE * file;
};

void readEccodes(std::string const & name)
{
    Stream const stream(name);
    int error = 0;
    while (codes_handle * const handle =
               codes_handle_new_from_file(nullptr, stream.file, PRODUCT_GRIB, &error)) {
        Handle const h(handle);
        codes_set_double(handle, "missingValue", MISS);
        std::size_t count = doubles.size();
        if (codes_get_double_array(handle, "values", doubles.data(), &count) != 0)
            fail("ecCodes reads nothing");
    }
}

/// The next message of edition 2, whole; false at the end.
bool readMessage(std::FILE * file)
{
    whole.resize(16);
    if (std::fread(whole.data(), 1, 16, file) != 16)
        return false;
    std::size_t length = 0;
    for (int i = 8; i < 16; ++i)
        length = length << 8 | whole[static_cast<std::size_t>(i)];
    whole.resize(length);
    return std::fread(whole.data() + 16, 1, length - 16, file) == length - 16;
}

void readG2c(std::string const & name)
{
    Stream const stream(name);
    while (readMessage(stream.file)) {
        gribfield * field = nullptr;
        if (g2_getfld(whole.data(), 1, 1, 1, &field) != 0)
            fail("g2c reads nothing");
        std::copy_n(field->fld, floats.size(), floats.begin());
        g2_free(field);
    }
}

// Bare codecs ----------------------------------------------------------------------------------------------

Octets codeStream(Octets const & message)
{
    std::size_t at = 16;
    for (;;) {
        std::size_t length = 0;
        for (std::size_t i = 0; i < 4; ++i)
            length = length << 8 | message[at + i];
        auto const begin = message.begin() + static_cast<std::ptrdiff_t>(at);
        if (message[at + 4] == 7)
            return {begin + 5, begin + static_cast<std::ptrdiff_t>(length)};
        at += length;
    }
}

struct Source
{
    unsigned char const * at;
    std::size_t left;
};

std::size_t take(Source & source, void * to, std::size_t count)
{
    count = std::min(count, source.left);
    std::memcpy(to, source.at, count);
    source.at += count;
    source.left -= count;
    return count;
}

void decodeJpeg2000(Octets const & stream)
{
    Source source{stream.data(), stream.size()};
    opj_stream_t * const input = opj_stream_default_create(OPJ_STREAM_READ);
    opj_stream_set_user_data(input, &source, nullptr);
    opj_stream_set_user_data_length(input, stream.size());
    opj_stream_set_read_function(input, [](void * to, OPJ_SIZE_T count, void * data) -> OPJ_SIZE_T {
        std::size_t const got = take(*static_cast<Source *>(data), to, count);
        return got > 0 ? got : static_cast<OPJ_SIZE_T>(-1);
    });
    opj_codec_t * const codec = opj_create_decompress(OPJ_CODEC_J2K);
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    opj_setup_decoder(codec, &parameters);
    opj_image_t * image = nullptr;
    if (opj_read_header(input, codec, &image) == OPJ_FALSE || opj_decode(codec, input, image) == OPJ_FALSE)
        fail("OpenJPEG reads nothing");
    opj_image_destroy(image);
    opj_destroy_codec(codec);
    opj_stream_destroy(input);
}

void decodePng(Octets const & stream)
{
    Source source{stream.data(), stream.size()};
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_read_fn(png, &source, [](png_structp from, png_bytep to, png_size_t count) {
        take(*static_cast<Source *>(png_get_io_ptr(from)), to, count);
    });
    png_read_info(png, info);
    static Octets row;
    row.resize(png_get_rowbytes(png, info));
    for (png_uint_32 y = png_get_image_height(png, info); y > 0; --y)
        png_read_row(png, row.data(), nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
}

// Headers --------------------------------------------------------------------------------------------------

/// Each side looks at parameter, level, date, forecast time and size.
long looked_at = 0;

int listOurs(std::string const & name)
{
    Yul::GribFile file(name.c_str());
    int count = 0;
    for (; file.next() != 0; ++count) {
        Yul::GribPDB const & header = file.getHeader();
        looked_at += *header.getVar().getName() + header.getLevel().getType() + header.getDate().getHour() +
                     static_cast<long>(header.getForeTime().getHours());
    }
    return count;
}

int describeOurs(std::string const & name)
{
    Yul::GribFile file(name.c_str());
    Yul::Grid header;
    int count = 0;
    for (; file.peek(header) != 0; ++count, file.next())
        looked_at += header.getNx();
    return count;
}

int listEccodes(std::string const & name)
{
    Stream const stream(name);
    int count = 0;
    int error = 0;
    while (codes_handle * const handle =
               codes_handle_new_from_file(nullptr, stream.file, PRODUCT_GRIB, &error)) {
        Handle const h(handle);
        char text[64];
        long number = 0;
        for (char const * key : {"shortName", "typeOfLevel", "stepRange"}) {
            std::size_t length = sizeof text;
            codes_get_string(handle, key, text, &length);
        }
        for (char const * key : {"level", "dataDate", "dataTime", "Ni", "Nj"}) {
            codes_get_long(handle, key, &number);
            looked_at += number;
        }
        ++count;
    }
    return count;
}

int listG2c(std::string const & name)
{
    Stream const stream(name);
    int count = 0;
    for (; readMessage(stream.file); ++count) {
        gribfield * field = nullptr;
        if (g2_getfld(whole.data(), 1, 0, 0, &field) != 0)
            fail("g2c lists nothing");
        looked_at += field->ipdtmpl[1] + field->idsect[5] + field->igdtmpl[7];
        g2_free(field);
    }
    return count;
}

// Table ----------------------------------------------------------------------------------------------------

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

void runDecoding(std::string const & name, std::vector<double> const & field)
{
    auto holed = field;
    for (std::size_t i = 0; i < POINTS; ++i) { // about a quarter missing, in patches
        double const x = static_cast<double>(i % NX) / 100;
        double const y = static_cast<double>(i / NX) / 100;
        if (std::sin(x) * std::cos(1.5 * y) + 0.3 * std::sin(7 * x) * std::sin(6 * y) > 0.4)
            holed[i] = MISS;
    }
    char const * const edition1 = "regular_ll_pl_grib1";
    char const * const edition2 = "regular_ll_pl_grib2";
    Job const jobs[] = {
        {"GRIB 2 simple, 8 bits", packByEccodes(field, NX, edition2, "grid_simple", 8, NO_DECIMAL), 6},
        {"GRIB 2 simple, 12 bits", packByEccodes(field, NX, edition2, "grid_simple", 12, NO_DECIMAL), 6},
        {"GRIB 2 simple, 16 bits", packByEccodes(field, NX, edition2, "grid_simple", 16, NO_DECIMAL), 6},
        {"GRIB 2 complex", packByG2c(field, 0), 4.5},
        {"GRIB 2 differences, order 1", packByG2c(field, 1), 3},
        {"GRIB 2 differences, order 2", packByG2c(field, 2), 3},
        {"GRIB 1, 12 bits, bitmap", packByEccodes(holed, NX, edition1, "grid_simple", 12, NO_DECIMAL), 5,
         false},
        {"GRIB 2 JPEG 2000", packByEccodes(field, NX, edition2, "grid_jpeg", 16, 2), 0, true, decodeJpeg2000,
         "OpenJPEG"},
        {"GRIB 2 PNG", packByEccodes(field, NX, edition2, "grid_png", 16, 2), 0, true, decodePng, "libpng"},
    };
    for (auto const & job : jobs) {
        int const fields = job.bare == nullptr ? FIELDS : PICTURES;
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
            continue;
        Octets const stream = codeStream(job.message);
        auto const both = bench::medians(ROUNDS, {ours, inARow([&] { job.bare(stream); })});
        bench::printRow(std::string(job.name) + ", bare codec", bench::figure(both[0], per_point, "ns/point"),
                        std::string(job.bare_name) + " " + bench::figure(both[1], per_point, "ns/point"),
                        both[1] / both[0], 0.9);
    }
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

int main(int argc, char **)
{
    std::printf("# grib: ecCodes (libeccodes-dev) and g2c (libg2c-dev) are not both installed: no peer\n");
    return argc == 1 ? 0 : 1;
}

#endif
