// Hot operations, each in a function of its own, for bench/instructions/compare.py to count.
//
// Where several forms are there for several processors and one can be chosen, it is the plain one. The input is made
// here, the same on every machine; the exit status is 1 when an operation does not give what it should.
#include "core/Yul.h"
#include "geo/Domain.h"
#include "geo/DomainTool.h"
#include "graphics/PsNumber.h"
#include "grid/GribFile.h"
#include "grid/GridYulFile.h"
#include "grid/Grids.h"
#include "grid/ObjectAnal.h"
#include "grid/grib/packing/Unpack.h"
#include "plot/CellSweep.h"
#include "surface/WmoParse.h"
#include "surface/WmoProduct.h"
#include "time/Date.h"
#include "time/DateTool.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <string>
#include <vector>

#include <stdlib.h>

// What is counted: callgrind collects between the beginning and the end of these.
#define COUNTED extern "C" [[gnu::noinline]] int

using namespace Yul;

namespace {

constexpr int NX = 181;
constexpr int NY = 91;
constexpr std::size_t POINTS = std::size_t{NX} * NY;
constexpr int MESSAGES = 40;
constexpr int BULLETINS = 300;
constexpr int STATIONS = 300;

/// Numbers that are the same everywhere, 0 to 1.
class Sequence
{
public:
    float next()
    {
        state = state * 6364136223846793005U + 1442695040888963407U;
        return static_cast<float>(state >> 40U) * 0x1p-24F;
    }

private:
    std::uint64_t state = 1;
};

/// Waves with a little noise, as a height field has them.
std::vector<float> makeField()
{
    Sequence noise;
    std::vector<float> field;
    for (int row = 0; row < NY; ++row)
        for (int column = 0; column < NX; ++column) {
            auto const x = static_cast<float>(column % 60 - 30);
            auto const y = static_cast<float>(row % 40 - 20);
            field.push_back(5500 + x * x / 9 * (column % 120 < 60 ? 1.F : -1.F) - y * y / 4 + noise.next());
        }
    return field;
}

struct Input
{
    std::string folder;
    std::vector<float> field = makeField();
    std::vector<std::uint8_t> octets;
    std::vector<std::uint32_t> base, width, length;
    std::vector<std::uint32_t> integers = std::vector<std::uint32_t>(POINTS + detail::grib::GROUP_SLACK);
    std::vector<float> values = std::vector<float>(POINTS);
    std::vector<float> column_x = std::vector<float>(NX);
    std::vector<float> row_y = std::vector<float>(NY);
    std::vector<float> levels = std::vector<float>(12);
    Domain lambert{"lamb:40:-95:30:60,40,-95,2,2,1"};
    EarthPoints earth;
    Points points;
    std::vector<char> text = std::vector<char>(POINTS * detail::NUMBER_ROOM);
    Grid grid;
    StationData stations{1};
    Grids analysed;
    ObjectAnal analysis;

    Input();

    ~Input() { std::filesystem::remove_all(folder); }

    Input(Input const &) = delete;
    Input & operator=(Input const &) = delete;

    [[nodiscard]] std::string path(char const * name) const { return folder + "/" + name; }

private:
    void makePacked();
    void makeFeed() const;
    void makeGrib() const;
};

Input::Input()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "yul-count-XXXXXX").string();
    folder = mkdtemp(pattern.data());
    std::iota(column_x.begin(), column_x.end(), 0.F);
    std::iota(row_y.rbegin(), row_y.rend(), 0.F);
    for (std::size_t i = 0; i < levels.size(); ++i)
        levels[i] = 5360 + 20 * static_cast<float>(i);
    Sequence place;
    for (std::size_t i = 0; i < POINTS; ++i)
        earth.add(EarthPoint(15 + 60 * place.next(), -150 + 110 * place.next()));

    Domain world;
    DomainTool::decode("latlon,0,0,181,91,2,2", world);
    grid.setDomain(world);
    grid.setVar("HGT");
    grid.setLevel("500 mb");
    Date date;
    DateTool::decode("12:00:00Z 15 NOV 2026", date);
    grid.setDate(date);
    std::copy(field.begin(), field.end(), grid.prepareData(NX, NY));

    Domain region;
    DomainTool::decode("latlon,40,-95,61,61,1,1", region);
    analysis.set(1, 6, 2, 0.01F);
    analysis.setDomain(region);
    for (int i = 0; i < STATIONS; ++i) {
        stations.add(EarthPoint(12 + 56 * place.next(), -123 + 56 * place.next()));
        stations.setValue(i, 0, 10 + place.next());
    }
    makePacked();
    makeFeed();
    makeGrib();
}

/// Random octets, and groups of numbers as operational fields have them: 0 to 12 bits, about 20 numbers each.
void Input::makePacked()
{
    Sequence random;
    for (std::size_t i = 0; i < POINTS * 3 / 2; ++i)
        octets.push_back(static_cast<std::uint8_t>(random.next() * 256));
    for (std::uint32_t left = POINTS; left > 0; left -= length.back()) {
        base.push_back(static_cast<std::uint32_t>(random.next() * 1000));
        width.push_back(static_cast<std::uint32_t>(random.next() * 13));
        length.push_back(std::min(left, 1 + static_cast<std::uint32_t>(random.next() * 40)));
    }
}

void Input::makeFeed() const
{
    std::ofstream feed(path("feed"), std::ios::binary);
    for (int i = 0; i < BULLETINS; ++i) {
        feed << "\x01\r\r\n" << i << " \r\r\nSAUS" << 10 + i % 89 << " KWBC 060000\r\r\nMTRDEN\r\r\n";
        for (int line = 0; line < 3 + i % 17; ++line)
            feed << "KDEN 060053Z 24010KT 10SM FEW120 SCT250 07/M05 A3017 RMK AO2 SLP197 T00721050=\r\r\n";
        feed << "\x03";
    }
}

void Input::makeGrib() const
{
    GribFile file;
    file.open(path("fields.grib").c_str(), 1);
    for (int i = 0; i < MESSAGES; ++i)
        file.write(grid);
    file.close();
}

} // namespace

COUNTED count_simple_unpacking(Input & in)
{
    detail::grib::plainForm().scaled(in.octets, 0, 12, {250, 0.0625, 0.1}, in.values);
    return 1;
}

COUNTED count_group_unpacking(Input & in)
{
    detail::grib::plainForm().groups(in.octets, 0,
                                     {in.base.data(), in.width.data(), in.length.data(), in.base.size()},
                                     in.integers.data());
    return 1;
}

COUNTED count_contours(Input & in)
{
    std::size_t lines = 0;
    detail::sweepCells({in.field.data(), NX, NY, 0, NX - 1, 0, NY - 1}, in.levels, 0,
                       detail::ColumnRowPlaces(in.column_x, in.row_y),
                       [&](int, int, int, detail::CellLine const &) { ++lines; });
    return lines > POINTS / 10;
}

COUNTED count_lambert_forward(Input & in)
{
    return in.lambert.tran(in.earth, in.points);
}

COUNTED count_lambert_inverse(Input & in)
{
    return in.lambert.tran(in.points, in.earth);
}

COUNTED count_bulletins(Input & in)
{
    WmoParse feed;
    WmoProduct product;
    int count = 0;
    feed.open(in.path("feed").c_str());
    while (feed.getProduct(product) != 0)
        ++count;
    return count == BULLETINS;
}

COUNTED count_number_text(Input & in)
{
    char * out = in.text.data();
    for (auto const & point : in.points.all())
        out = detail::writeFixed2(detail::writeFixed2(out, point.x), point.y);
    return out > in.text.data() + 2 * POINTS;
}

COUNTED count_date_texts(Input &)
{
    constexpr std::array<char const *, 4> TEXTS{"12:00:00Z 15 NOV 2026", "15 NOV 2026 1200Z", "2026111512",
                                                "2026-11-15 12:00"};
    Date date;
    int count = 0;
    for (int i = 0; i < 500; ++i)
        for (char const * const text : TEXTS)
            count += DateTool::decode(text, date);
    return count == 2000;
}

COUNTED count_native_write(Input & in)
{
    GridYulFile file;
    return file.open(in.path("native").c_str(), GridYulFile::WRITE, GridYulFile::BINARY) != 0 &&
           file.write(in.grid) != 0 && file.close() != 0;
}

COUNTED count_analysis(Input & in)
{
    return in.analysis.compute(in.stations, in.analysed);
}

COUNTED count_grib_inventory(Input & in)
{
    GribFile file(in.path("fields.grib").c_str());
    Grid grid;
    int count = 0;
    while (file.peek(grid) != 0 && file.next() != 0)
        ++count;
    return count == MESSAGES;
}

struct Operation
{
    char const * name;
    int (*run)(Input &);
};

constexpr Operation OPERATIONS[] = {
    {"simple_unpacking", count_simple_unpacking},
    {"group_unpacking", count_group_unpacking},
    {"contours", count_contours},
    {"lambert_forward", count_lambert_forward},
    {"lambert_inverse", count_lambert_inverse},
    {"bulletins", count_bulletins},
    {"number_text", count_number_text},
    {"date_texts", count_date_texts},
    {"native_write", count_native_write},
    {"analysis", count_analysis},
    {"grib_inventory", count_grib_inventory},
};

int main()
{
    ::Yul::Yul::setDatabasePath(YUL_DATABASE);
    ::Yul::Yul::setMessageLevel("warn");
    Input in;
    int status = 0;
    for (auto const & [name, operation] : OPERATIONS)
        if (operation(in) == 0) {
            std::printf("%s: wrong result\n", name);
            status = 1;
        }
    return status;
}
