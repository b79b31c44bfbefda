// Fields, and messages of them that the peers pack.
#pragma once

#include <eccodes.h>

extern "C" {
#include <grib2.h>
}

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <utility>
#include <vector>

namespace bench::grib {

constexpr int NX = 1440;
constexpr int NY = 721;
constexpr std::size_t POINTS = std::size_t{NX} * NY;
constexpr double MISS = -9999;
constexpr int NO_DECIMAL = -1;

using Octets = std::vector<unsigned char>;

[[noreturn]] inline void fail(char const * what)
{
    std::printf("# grib: %s\n", what);
    std::exit(1);
}

/// A temperature field: a gradient, planetary to mesoscale waves, a little noise.
inline std::vector<double> makeField(int nx, int ny)
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
inline Octets packByEccodes(std::vector<double> const & field,
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
inline Octets packByG2c(std::vector<double> const & field, int order)
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

} // namespace bench::grib
